// The design check: what the export, the compiler or the simulator would stumble over, found before
// they run. It reads the session, the texture and macro files and the export's own item code, and
// changes nothing.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace fw {

struct Session;
struct CompilerCommand;

enum class ProblemKind { Shape, Object, Project, Setup };

// "shape", "object", "project", "setup".
const char* ProblemKindName(ProblemKind kind);

struct Problem {
    std::string rule;  // "self-crossing", "export-fault", ...
    ProblemKind kind = ProblemKind::Project;
    int index = -1;    // in its store from 0; -1 for the project and the set-up
    std::string message;
};

// What the host offers for a compiler run.
struct CompilerSetup {
    std::string programFolder; // ends in a separator
    std::string nativeProgram; // FIELDWRIGHT_SCASM: run in place of wine and scasm.exe
    bool nativeRuns = false;   // that program exists and may be run
    bool wine = false;         // "wine" on the PATH
    bool wine32 = false;       // and its 32-bit part
    bool scasm = false;        // scasm.exe in the program folder
};

// Looks at the PATH, wine's folders and the program folder.
CompilerSetup ProbeCompilerSetup(const std::string& programFolder, const CompilerCommand& command);

// Every problem of the design, the project's and the set-up's first, then the shapes' and the
// objects' by index.
std::vector<Problem> CheckDesign(const Session& s, const CompilerSetup& setup);

// What the check reads, copied, for a check beside an editor that goes on changing the session.
std::unique_ptr<Session> CheckSnapshot(const Session& s);

// True for a problem the compiler run would meet: an export fault or the set-up.
bool StopsCompile(const Problem& p);

// The question asked before a compiler run that export faults or the set-up would stop; empty
// when there are none.
std::string CompileWarning(const std::vector<Problem>& problems);

// "rule: message", one line of a listing.
std::string ProblemLine(const Problem& p);
// {"problems": [{"rule": ..., "kind": ..., "index": ..., "message": ...}, ...]}, strings as UTF-8.
std::string ProblemsJson(const std::vector<Problem>& problems);

} // namespace fw
