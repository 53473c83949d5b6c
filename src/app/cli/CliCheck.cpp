#include <cstdio>
#include <string>

#include "app/cli/Commands.h"
#include "check/DesignCheck.h"
#include "core/Helpers.h"
#include "core/Session.h"
#include "export/Compile.h"
#include "files/ConfigFile.h"
#include "files/ProjectJson.h"
#include "files/TextFile.h"
#include "ports/Ui.h"

namespace fw::cli {

namespace {

// The user's texture folder and macro list, when the program has a configuration; none is created.
void ReadConfigurationIfAny(Session& s)
{
    std::string text;
    const std::string path = ConfigFilePath(s.programFolder);
    if (!FileExists(path) || !ReadWholeFile(path, text))
        return;
    Session read; // the recent list and its messages stay out of it
    read.programFolder = s.programFolder;
    ReadConfigText(read, text);
    s.config = read.config;
}

} // namespace

// 0: no problem but the set-up's; 1: problems; 2: the project can't be read or the arguments are wrong.
int Check(const Args& args)
{
    const bool json = args.size() == 2 && args[1] == "--json";
    if (args.size() != 1 && !json) {
        std::fputs("usage: fieldwright-cli check FILE.fwt [--json]\n", stderr);
        return 2;
    }
    ClosedUi ui(true);
    Session s;
    if (!LoadProject(args[0], s, ui))
        return 2;
    ReadConfigurationIfAny(s);
    const auto problems = CheckDesign(s, ProbeCompilerSetup(s.programFolder, CompilerFromEnvironment()));
    if (json) {
        const std::string text = ProblemsJson(problems);
        std::fwrite(text.data(), 1, text.size(), stdout);
    } else {
        for (const Problem& p : problems)
            std::printf("%s\n", Cp1252ToUtf8(ProblemLine(p)).c_str());
    }
    for (const Problem& p : problems)
        if (p.kind != ProblemKind::Setup)
            return 1;
    return 0;
}

} // namespace fw::cli
