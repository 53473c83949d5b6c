// The test program's entry: one QApplication on the offscreen platform for every test.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    app.setOrganizationName("Fieldwright");
    app.setApplicationName("Fieldwright");
    return RUN_ALL_TESTS();
}
