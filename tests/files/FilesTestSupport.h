// Shared helpers of the files tests: fixtures, scratch folders, sample records.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Records.h"
#include "core/Session.h"
#include "core/Stores.h"
#include "files/ProjectFile.h"

namespace fw::test {

inline std::string Fixture(const std::string& name) { return std::string(FW_FIXTURES) + "/files/" + name; }

std::string ReadText(const std::string& path);
void WriteText(const std::string& path, const std::string& text);
std::string Crlf(const std::string& lf); // "a\nb\n" -> "a\r\nb\r\n"

// A fresh, empty folder under the system's temporary folder, removed on destruction.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    std::string path(const std::string& name) const { return (root_ / name).string(); }
    std::string folder() const { return root_.string() + "/"; }

private:
    std::filesystem::path root_;
};

std::vector<std::string> TokensOf(std::string_view line);

// Sets an environment variable for the life of the object and puts the old value back.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const std::string& value);
    ~ScopedEnv();
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    const char* name_;
    std::optional<std::string> old_;
};

// One run of the batch tool under a deadline, so that a command that blocks fails its test.
struct CliRun {
    int code = -1;
    std::string out;
    std::string err;
};
CliRun RunCli(const ScratchFolder& dir, const std::string& args);
inline std::string Quoted(const std::string& path) { return "'" + path + "'"; }

// The program started in dir as its program folder, talking to ui.
void StartIn(Session& s, Ui& ui, const ScratchFolder& dir);
// A polygon added and the project marked changed, as after drawing it.
void Edit(Session& s);

// One shape of every type and one object of every type, with non-default values in every field
// that the file keeps.
ProjectData SampleProject(const std::string& programFolder);

} // namespace fw::test
