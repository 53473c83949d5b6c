// A project whose background image is a folder opens whole, under its own title, with the
// picture dropped; Save then writes it under its own name.
#include <gtest/gtest.h>

#include <QAction>
#include <QDir>

#include "QtTestSupport.h"
#include "files/ProjectFile.h"
#include "render/RenderTestSupport.h"
#include "qt/MainWindow.h"
#include "qt/Wiring.h"

namespace fw::qt {
namespace {

using OpenWhole = QtSessionTest;

TEST_F(OpenWhole, APictureThatIsAFolderIsDroppedAndTheProjectOpensUnderItsTitle)
{
    const std::string folder = Temp("charts");
    ASSERT_TRUE(QDir().mkpath(QString::fromStdString(folder)));
    const std::string path = Temp("field.fwt");
    ASSERT_TRUE(test::WriteProjectNamingImage(path, folder));

    MainWindow w(session, ui);
    WireFileCommands(w, session, Temp("Fieldwright.cfg"), [] {});
    w.Load();
    scripted.files = {path};
    w.action("MnuFopen")->trigger();
    EXPECT_EQ(scripted.Messages(), std::vector<std::string>{"Unable to load Bitmap!\n'" + folder + "': Is a directory"});
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [field.fwt]");
    EXPECT_EQ(session.projectPath, path);
    EXPECT_EQ(session.stores.ShapeStore.size(), 1u);
    EXPECT_TRUE(session.showFlags.BackImagePath.empty());
    EXPECT_EQ(session.showFlags.ShowBackPicture, 0);

    session.dirty = 1;
    w.action("MnuFsave")->trigger();
    EXPECT_EQ(session.dirty, 0);
    ProjectData back;
    ASSERT_TRUE(ReadProjectFile(path, back, nullptr));
    EXPECT_TRUE(back.showFlags.BackImagePath.empty());
    EXPECT_EQ(back.shapes.size(), 1u);
}

} // namespace
} // namespace fw::qt
