// Shared helpers of the files tests: fixtures, scratch folders, sample records.
#pragma once

#include <filesystem>
#include <string>

#include "core/Records.h"
#include "core/Stores.h"
#include "files/ProjectFile.h"

namespace fw::test {

inline std::string Fixture(const std::string& name)
{
    return std::string(FW_FIXTURES) + "/files/" + name;
}

std::string ReadText(const std::string& path);
void WriteText(const std::string& path, const std::string& text);
// "a\nb\n" -> "a\r\nb\r\n"
std::string Crlf(const std::string& lf);

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

// One shape of every type and one object of every type, with non-default values in every field
// that the file keeps.
ProjectData SampleProject(const std::string& programFolder);

} // namespace fw::test
