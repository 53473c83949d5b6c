#include "export/Compile.h"

#include <cstdlib>
#include <filesystem>

#include "core/Helpers.h"
#include "core/Session.h"
#include "files/ConfigFile.h"
#include "files/RegularFile.h"
#include "ports/Process.h"
#include "ports/Ui.h"

namespace fw {

namespace {

void RemoveFile(const std::string& path)
{
    std::error_code ec;
    std::filesystem::remove(path, ec);
}

std::string LogHead(const std::string& path)
{
    RegularFile f;
    char buf[100];
    std::size_t got = 0;
    if (!f.Open(path) || !f.ReadAt(0, buf, sizeof buf, got))
        return {};
    return std::string(buf, got);
}

// "winepath -w" prints the Windows form of a host path on its first line.
bool WinePath(Process& process, const std::string& path, std::string& out)
{
    std::string output;
    int code = -1;
    if (!process.RunAndCapture("winepath", {"-w", path}, output, code) || code != 0)
        return false;
    const std::size_t end = output.find_first_of("\r\n");
    out = output.substr(0, end);
    return !out.empty();
}

bool StartCompiler(Process& process, const CompilerCommand& command, const std::string& compilerPath,
                   const std::string& tempPath, const std::string& bglPath)
{
    if (!command.nativeProgram.empty())
        return process.RunHiddenAndWait(command.nativeProgram, {tempPath, bglPath, "-l"}, {}).started;
    if (!FileExists(compilerPath))
        return false;
    std::string winTemp, winBgl;
    if (!WinePath(process, tempPath, winTemp) || !WinePath(process, bglPath, winBgl))
        return false;
    return process.RunHiddenAndWait("wine", {compilerPath, winTemp, winBgl, "-l"}, {}).started;
}

} // namespace

CompilerCommand CompilerFromEnvironment()
{
    CompilerCommand c;
    if (const char* p = std::getenv("FIELDWRIGHT_SCASM"))
        c.nativeProgram = p;
    return c;
}

bool Compile(const ExportInput& in, const std::string& programFolder, const std::string& bglPath, Process& process,
             const CompilerCommand& command)
{
    if (programFolder.empty() || bglPath.empty())
        return false;
    // An installed program folder can't take the temporary file nor a compiler added by the user:
    // both then live in the user's folder.
    const std::string userFolder = UserFolder(programFolder);
    const std::string tempPath = userFolder + kTempName;
    std::string compilerPath = programFolder + kCompilerName;
    if (!FileExists(compilerPath) && FileExists(userFolder + kCompilerName))
        compilerPath = userFolder + kCompilerName;
    const std::string logPath = GetFolderFromPath(bglPath) + kLogName;

    if (!ExportTextFile(in, tempPath, kExportCompile, bglPath))
        return false;
    if (!StartCompiler(process, command, compilerPath, tempPath, bglPath)) {
        if (in.ui)
            in.ui->Message(kCompilerMissing, MessageStyle::Exclamation);
        RemoveFile(tempPath);
        return false;
    }
    // Only the head of the log tells; the exit code and the .bgl are never looked at.
    const bool ok = LogHead(logPath).find(kCompileSuccess) != std::string::npos;
    if (!ok && in.ui)
        in.ui->ShowScasmStatus(kCompileFailed, logPath);
    RemoveFile(tempPath);
    RemoveFile(logPath);
    return ok;
}

std::string CompileNotice()
{
    return "You are about to generate the FS scenery files...\r\n\r\n"
           "These files must be saved in the directory named 'SCENERY' inside the scenery's folder. Don't forget "
           "to copy all textures needed by shapes/objects to the 'TEXTURE' directory (see help for more info).";
}

bool MnuFexport(Session& s)
{
    if (!s.ui)
        return false;
    FileDialogRequest r;
    r.filter = "Text format (*.txt)|*.txt";
    r.startFolder = GetFolderFromPath(s.config.SCAPath);
    r.defaultName = GetNameFromPath(s.projectPath, false) + ".txt";
    r.save = true;
    std::string path;
    if (!s.ui->ChooseFile(r, path))
        return false;
    s.config.SCAPath = path;
    s.ui->SetWaitCursor(true);
    const bool ok = ExportTextFile(ExportInputOf(s), path, kExportText, {});
    s.ui->SetWaitCursor(false);
    return ok;
}

bool MnuFbgl(Session& s, Process& process)
{
    return MnuFbgl(s, process, CompilerFromEnvironment());
}

bool MnuFbgl(Session& s, Process& process, const CompilerCommand& command)
{
    if (!s.ui)
        return false;
    // The notice has no cancel: the command always goes on.
    s.config.MessageCompile = static_cast<std::uint8_t>(s.ui->ShowTip(CompileNotice(), s.config.MessageCompile));
    FileDialogRequest r;
    r.filter = "FS scenery (*.bgl)|*.bgl";
    r.startFolder = GetFolderFromPath(s.config.BGLPath);
    r.defaultName = s.project.Name + ".bgl";
    r.save = true;
    std::string path;
    if (!s.ui->ChooseFile(r, path))
        return false;
    s.config.BGLPath = path;
    s.ui->SetWaitCursor(true);
    const bool ok = Compile(ExportInputOf(s), s.programFolder, path, process, command);
    s.ui->SetWaitCursor(false);
    return ok;
}

} // namespace fw
