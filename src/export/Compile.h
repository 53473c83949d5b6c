// The run of the scenery compiler on the exported text, and the two menu commands of the export.
#pragma once

#include <string>

#include "export/ExportDriver.h"

namespace fw {

class Process;
class Ui;
struct Session;

inline constexpr const char* kCompilerMissing = "Unable to compile scenery! SCASM.EXE not found or corrupted...";
inline constexpr const char* kCompileFailed = "Unable to generate BGL file. One or more errors occured...";
inline constexpr const char* kCompileSuccess = "Scasm compilation status: ok";
inline constexpr const char* kTempName = "exp.temp01";
inline constexpr const char* kCompilerName = "scasm.exe";
inline constexpr const char* kLogName = "SCAERROR.LOG";

// How the compiler is started. Empty nativeProgram: "scasm.exe" (see Compile) through wine, with
// paths converted by "winepath -w". Otherwise that program is run directly with the host's paths.
struct CompilerCommand {
    std::string nativeProgram;
};

// FIELDWRIGHT_SCASM names a native program to run in place of wine and scasm.exe.
CompilerCommand CompilerFromEnvironment();

// Exports into UserFolder + "exp.temp01" (the program folder unless that is installed), runs the
// compiler (program folder + "scasm.exe", else the user folder's), reads the first 100 bytes of its
// log and shows the status dialog unless they report success; then removes the temporary file and the log.
// True when the log reported success.
bool Compile(const ExportInput& in, const std::string& programFolder, const std::string& bglPath, Process& process,
             const CompilerCommand& command);

// "Generate SCASM files...": asks for a .txt path and writes the text there.
bool MnuFexport(Session& s);
// Shows the notice, asks for a .bgl path and runs the compiler.
bool MnuFbgl(Session& s, Process& process);
bool MnuFbgl(Session& s, Process& process, const CompilerCommand& command);

// The notice shown before a compiler run.
std::string CompileNotice();

} // namespace fw
