// In the desktop program, a project whose background image is a folder opens
// whole, under its own title, with the picture dropped; Save then writes it under its own name.
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "core/Config.h"
#include "core/Session.h"
#include "files/ProjectFile.h"
#include "render/RenderTestSupport.h"
#include "support/ScriptedUi.h"
#include "qt/MainWindow.h"
#include "qt/QtUi.h"
#include "qt/Wiring.h"

namespace fw::qt {
namespace {

TEST(OpenWhole, APictureThatIsAFolderIsDroppedAndTheProjectOpensUnderItsTitle)
{
    QTemporaryDir dir;
    const std::string folder = dir.filePath("charts").toStdString();
    ASSERT_TRUE(QDir().mkpath(QString::fromStdString(folder)));
    const std::string path = dir.filePath("field.fwt").toStdString();
    ASSERT_TRUE(test::WriteProjectNamingImage(path, folder));

    Session session;
    ResetAtStart(session);
    ResetConfig(session.config, "/tmp/fw/");
    ScriptedUi scripted;
    session.ui = &scripted;
    QtUi ui;
    MainWindow w(session, ui);
    WireFileCommands(w, session, dir.filePath("Fieldwright.cfg").toStdString(), [] {});
    w.Load();
    scripted.files = {path};
    w.action("MnuFopen")->trigger();

    EXPECT_EQ(scripted.Messages(), std::vector<std::string>{"Unable to load Bitmap!\n'" + folder + "': Is a directory"});
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [field.fwt]");
    EXPECT_EQ(session.projectPath, path);
    EXPECT_EQ(session.hasName, 1);
    EXPECT_EQ(session.stores.ShapeStore.size(), 1u);
    EXPECT_TRUE(session.showFlags.BackImagePath.empty());
    EXPECT_EQ(session.showFlags.ShowBackPicture, 0);

    // Save writes the project under its own name, without the picture.
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
