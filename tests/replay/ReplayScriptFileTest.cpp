// A replay script that is a folder, a device or a pipe ends the run with its
// message instead of blocking or reading without end. Read in a child with a deadline.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>

#include "editor/EditorTestSupport.h"
#include "replay/Replay.h"
#include "support/Deadline.h"

namespace fw {
namespace {

TEST(ReplayScriptFile, OnlyARegularFileIsRun)
{
    const test::TempFolder dir("replay_file");
    std::filesystem::create_directories(dir / "folder");
    const std::string fifo = dir / "pipe";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const std::string script = dir / "script.txt";
    std::ofstream(script, std::ios::binary) << "command MnuBshowgrid\r\n\r\nbogus\r\n";

    const std::pair<std::string, std::string> cases[] = {{dir / "folder", "Is a directory"},
                                                         {"/dev/zero", "Not a regular file (a device)"},
                                                         {fifo, "Not a regular file (a named pipe)"}};
    for (const auto& [path, reason] : cases) {
        SCOPED_TRACE(path);
        const auto outcome = test::RunWithDeadline(30, [&] {
            ReplaySession r(FW_PROGRAM_DIR, dir.path.string());
            std::ostringstream err;
            return r.RunFile(path, err) == 2 &&
                   err.str() == "unable to read '" + path + "'\n'" + path + "': " + reason + "\n";
        });
        EXPECT_EQ(outcome, test::ChildOutcome::Passed) << test::OutcomeName(outcome);
    }
    // A plain script still runs line by line, and its lines keep their numbers.
    ReplaySession r(FW_PROGRAM_DIR, dir.path.string());
    std::ostringstream err;
    EXPECT_EQ(r.RunFile(script, err), 1);
    EXPECT_EQ(err.str(), script + ":3: unknown command 'bogus'\n");
}

} // namespace
} // namespace fw
