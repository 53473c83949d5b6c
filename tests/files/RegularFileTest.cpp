// Every reader opens only regular files and reads no more than its format can hold. Pipes and
// devices are looked at in a child process with a deadline, so that a reader that blocks or reads
// without end fails its test instead of holding the run.
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "FilesTestSupport.h"
#include "files/ConfigFile.h"
#include "files/MacroFile.h"
#include "files/ProjectFile.h"
#include "files/ProjectFlows.h"
#include "files/RegularFile.h"
#include "support/Deadline.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

void ExpectPassedInTime(const std::function<bool()>& work)
{
    const test::ChildOutcome o = test::RunWithDeadline(30, work);
    EXPECT_EQ(o, test::ChildOutcome::Passed) << test::OutcomeName(o);
}

class HostileFiles : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
        std::filesystem::create_directory(folder);
    }
    test::ScratchFolder dir;
    std::string fifo = dir.path("pipe"), folder = dir.path("folder");
};

TEST_F(HostileFiles, OnlyRegularFilesOpenAndEachSaysWhy)
{
    const std::string plain = dir.path("plain.txt"), link = dir.path("link.txt");
    test::WriteText(plain, "abc");
    std::filesystem::create_symlink(plain, link);
    ExpectPassedInTime([&] {
        RegularFile f;
        std::string text, why;
        bool ok = f.Open(link) && f.size() == 3 && f.ReadAll(3, text) && text == "abc";
        ok = ok && !f.ReadAll(2, text) && text.empty() && f.reason() == "File too large (more than 2 bytes)";
        ok = ok && !f.Open(dir.path("missing")) && f.reason() == "No such file or directory" && !f.isOpen();
        ok = ok && !f.Open(folder) && f.reason() == "Is a directory";
        ok = ok && !f.Open("/dev/zero") && f.reason() == "Not a regular file (a device)";
        ok = ok && !f.Open(fifo) && f.reason() == "Not a regular file (a named pipe)";
        ok = ok && !f.Open("") && f.reason() == "No such file or directory";
        ok = ok && !ReadRegularFile("/dev/urandom", 100, text, &why) && why == "Not a regular file (a device)";
        return ok && ReadRegularFile(plain, 3, text, &why) && text == "abc";
    });

    // A sparse file far larger than memory: refused from its size, not read.
    const std::string big = dir.path("big.fwt");
    test::WriteText(big, "Version(\r\n 1\r\n)\r\n");
    if (::truncate(big.c_str(), static_cast<off_t>(64ull << 30)) != 0)
        GTEST_SKIP() << "no sparse files here";
    ExpectPassedInTime([&] {
        std::string text, why;
        ProjectData d;
        ScriptedUi ui;
        return !ReadRegularFile(big, kMaxProjectBytes, text, &why) && text.empty() &&
               why == "File too large (more than 67108864 bytes)" && !ReadProjectFile(big, d, &ui) &&
               ui.Messages() == std::vector<std::string>{"Unable to open file! Corrupted file header...\n'" + big +
                                                         "': File too large (more than 67108864 bytes)"};
    });
}

// The project reader fails as on a broken head and open and import leave the session as it was; a
// macro reads as a missing one; the configuration takes the defaults and leaves the path alone.
TEST_F(HostileFiles, EveryReaderRefusesWhatIsNoFile)
{
    for (const std::string& path : {folder, std::string("/dev/zero"), std::string("/dev/urandom"), fifo}) {
        SCOPED_TRACE(path);
        ExpectPassedInTime([&] {
            ProjectData d;
            d.project.Name = "untouched";
            ScriptedUi reader;
            const bool read = ReadProjectFile(path, d, &reader);
            const auto m = reader.Messages();
            if (read || d.project.Name != "untouched" || m.size() != 1 ||
                m[0].rfind("Unable to open file! Corrupted file header...\n'" + path + "': ", 0) != 0)
                return false;
            Session s;
            ScriptedUi ui;
            s.ui = &ui;
            s.programFolder = dir.folder();
            ResetAtStart(s);
            s.projectPath = dir.path("before.fwt");
            s.hasName = s.dirty = 1;
            if (LoadProject(s, path) || ImportSelection(s, path) || s.projectPath != dir.path("before.fwt") ||
                s.dirty != 1 || ui.Messages().size() != 2)
                return false;

            MacroHeader h;
            ObjectRecord o;
            ResetObject(o, kApi, "/opt/fw/");
            o.Path() = path;
            const auto outline = o.DesignPoints;
            if (ReadMacroDescriptions(path, '.', h) || h.description != "[No description]" ||
                ReadMacroDefaults(path, '.', h) || ReadMacroUses(path, h) || RebuildOutline(o, '.') ||
                o.DesignPoints != outline)
                return false;

            s.config.WinWidth = 1;
            ReadConfigFile(s, path);
            ConfigRecord fresh;
            ResetConfig(fresh, s.programFolder);
            struct stat st {};
            return s.config.WinWidth == fresh.WinWidth && s.config.FWTPath == fresh.FWTPath &&
                   ::lstat(path.c_str(), &st) == 0 && !S_ISREG(st.st_mode);
        });
    }
}

} // namespace
} // namespace fw
