#include <clocale>
#include <cstdio>
#include <string>

#include "app/cli/Commands.h"
#include "core/Helpers.h"
#include "core/Session.h"
#include "files/ProjectFlows.h"
#include "export/Compile.h"
#include "export/ExportDriver.h"
#include "export/ScasmCheck.h"
#include "files/MacroFile.h"
#include "files/ProjectFile.h"
#include "files/TextFile.h"
#include "posix/PosixProcess.h"
#include "ports/Ui.h"

namespace fw::cli {

namespace {

// Messages go to stderr; the compiler's log is shown there while it still exists.
class ExportUi : public ClosedUi {
public:
    ExportUi() : ClosedUi(true) {}
    void ShowScasmStatus(const std::string& text, const std::string& logPath) override
    {
        std::fprintf(stderr, "SCASM status: %s\n", text.c_str());
        std::string log;
        if (ReadWholeFile(logPath, log, kMaxLogBytes) && !log.empty())
            std::fwrite(log.data(), 1, log.size(), stderr);
    }
};

// "." or "," from the process locale.
bool LocaleSeparator(char& out)
{
    std::setlocale(LC_NUMERIC, "");
    const char* point = std::localeconv()->decimal_point;
    std::setlocale(LC_NUMERIC, "C");
    if (point && (point[0] == '.' || point[0] == ',') && point[1] == '\0') {
        out = point[0];
        return true;
    }
    return false;
}

} // namespace

bool ReadProjectInto(const std::string& path, Session& s, Ui& ui)
{
    if (!FileExists(path)) {
        ui.Message(DoesNotExistMessage(path), MessageStyle::Information);
        return false;
    }
    ProjectData data;
    if (!ReadProjectFile(path, data, &ui, s.programFolder))
        return false;
    TakeProjectData(s, std::move(data), path);
    return true;
}

// The project as the Open command leaves it in the session.
bool LoadProject(const std::string& path, Session& s, Ui& ui)
{
    ResetAtStart(s);
    s.programFolder = ProgramFolder();
    s.ui = &ui;
    ResetConfig(s.config, s.programFolder);
    if (!ReadProjectInto(path, s, ui))
        return false;
    // Built-in macros live in this program's macro folder, wherever the project was made.
    MacroOutlines outlines(s.config, s.programFolder, s.decimalSeparator);
    for (ObjectRecord& o : s.stores.ObjectStore)
        if (o.oType == kApi)
            outlines.Apply(o);
    return true;
}

int Export(const Args& args)
{
    if (args.size() != 2 && !(args.size() == 4 && args[2] == "--decimal-separator")) {
        std::fputs("usage: fieldwright-cli export FILE.fwt OUT.txt [--decimal-separator C]\n", stderr);
        return 2;
    }
    ExportUi ui;
    Session s;
    if (args.size() == 4) {
        if (args[3] != "." && args[3] != ",") {
            std::fputs("The decimal separator must be \".\" or \",\".\n", stderr);
            return 2;
        }
        s.decimalSeparator = args[3][0];
    } else if (!LocaleSeparator(s.decimalSeparator)) {
        std::fputs("The system's decimal separator is neither \".\" nor \",\".\n", stderr);
        return 1;
    }
    if (!LoadProject(args[0], s, ui))
        return 1;
    return ExportTextFile(ExportInputOf(s), args[1], kExportText, {}) ? 0 : 1;
}

int Compile(const Args& args)
{
    if (args.size() != 2) {
        std::fputs("usage: fieldwright-cli compile FILE.fwt OUT.bgl\n", stderr);
        return 2;
    }
    ExportUi ui;
    Session s;
    if (!LocaleSeparator(s.decimalSeparator)) {
        std::fputs("The system's decimal separator is neither \".\" nor \",\".\n", stderr);
        return 1;
    }
    if (!LoadProject(args[0], s, ui))
        return 1;
    PosixProcess process;
    return fw::Compile(ExportInputOf(s), s.programFolder, args[1], process, CompilerFromEnvironment()) ? 0 : 1;
}

int CheckScasm(const Args& args)
{
    if (args.size() != 1) {
        std::fputs("usage: fieldwright-cli check-scasm FILE.txt\n", stderr);
        return 2;
    }
    std::string text;
    std::string reason;
    if (!ReadWholeFile(args[0], text, kMaxScasmBytes, &reason)) {
        std::fprintf(stderr, "%s\n", WithFileReason("Unable to read " + args[0], args[0], reason).c_str());
        return 1;
    }
    const auto problems = CheckScasmText(text);
    for (const auto& p : problems)
        std::fprintf(stdout, "%s:%d: %s\n", args[0].c_str(), p.line, p.text.c_str());
    return problems.empty() ? 0 : 1;
}

} // namespace fw::cli
