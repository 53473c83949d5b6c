// A project built in code, its export as text, the structure check and the golden comparison
// (tests/fixtures/export, and export2 for trees, runways, navigation, objects and signs).
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

#include "core/Config.h"
#include "core/Records.h"
#include "core/Stores.h"
#include "export/ExportDriver.h"
#include "export/ScasmCheck.h"
#include "files/ProjectFile.h"
#include "support/ScriptedUi.h"

namespace fw::test {

struct TestProject {
    ProjectRecord project;
    ConfigRecord config;
    Stores stores;
    char separator = '.';
    ScriptedUi ui;

    TestProject()
    {
        ResetProject(project);
        project.LatitudeDegree = 48.5;
        project.LongitudeDegree = 11.25;
        ResetConfig(config, "/opt/fieldwright/");
    }

    ShapeRecord& Shape(int type, const PointList& pts)
    {
        ShapeRecord s;
        ResetShape(s, type);
        AppendShape(stores, s, pts);
        return stores.ShapeStore.back();
    }

    ObjectRecord& Object(int type, std::int32_t x = 0, std::int32_t y = 0)
    {
        AppendObject(stores, type, x, y, 0, "/opt/fieldwright/");
        return stores.ObjectStore.back();
    }

    ExportInput Input() const
    {
        return ExportInput{project, config, stores.PointStore, stores.ShapeStore, stores.ObjectStore, separator,
                           const_cast<ScriptedUi*>(&ui)};
    }

    std::vector<std::string> Lines(const std::string& excludePrefix = {}) const
    {
        ExportBuffer buffer;
        BuildExportText(Input(), excludePrefix, buffer);
        return buffer.lines();
    }

    // The message the export stops with, or "" when it runs through.
    std::string Fault() const
    {
        try {
            Lines();
        } catch (const OperationFault& e) {
            return e.what();
        }
        return {};
    }
};

// A fresh folder under the system's temporary folder, removed again at the end.
struct Scratch {
    std::filesystem::path dir;
    explicit Scratch(const std::string& name)
        : dir(std::filesystem::temp_directory_path() / (name + " " + std::to_string(::getpid())))
    {
        std::filesystem::remove_all(dir);
        std::filesystem::create_directories(dir);
    }
    ~Scratch() { std::filesystem::remove_all(dir); }
    std::string operator/(const std::string& name) const { return (dir / name).string(); }
};

// Writes the records as a project file, for the batch tool.
inline bool SaveProject(const std::string& path, const ProjectRecord& project, const Stores& stores)
{
    ProjectData data;
    data.version = 1;
    ResetShowFlags(data.showFlags);
    data.project = project;
    data.points = stores.PointStore;
    data.shapes = stores.ShapeStore;
    data.objects = stores.ObjectStore;
    return WriteProjectFile(path, data, nullptr);
}

inline std::string Join(const std::vector<std::string>& lines)
{
    std::string out;
    for (const auto& l : lines)
        out += l + "\r\n";
    return out;
}

inline std::string ReadBytes(const std::string& path)
{
    std::stringstream ss;
    ss << std::ifstream(path, std::ios::binary).rdbuf();
    return ss.str();
}

inline void ExpectWellFormed(const std::string& text)
{
    const auto problems = CheckScasmText(text);
    EXPECT_TRUE(problems.empty()) << FormatProblems(problems);
}

// Compares with tests/fixtures/<folder>/<name>.txt byte for byte, after the structure check.
// FW_WRITE_GOLDEN=1 writes the file instead, to be read line by line before it is committed.
inline void ExpectGolden(const std::string& name, const std::string& text, const std::string& folder = "export")
{
    ExpectWellFormed(text);
    const std::string path = std::string(FW_FIXTURES) + "/" + folder + "/" + name + ".txt";
    if (const char* w = std::getenv("FW_WRITE_GOLDEN"); w && std::string(w) == "1") {
        std::ofstream(path, std::ios::binary) << text;
        return;
    }
    const std::string golden = ReadBytes(path);
    ASSERT_FALSE(golden.empty()) << "no golden file " << path;
    EXPECT_EQ(golden, text) << "golden " << name;
}

inline std::string ExportOf(const TestProject& t, const std::string& excludePrefix = {})
{
    return Join(t.Lines(excludePrefix));
}

// A golden text's name and the project it is the export of.
struct GoldenCase {
    const char* name;
    std::function<void(TestProject&)> build;
};

inline void ExpectGoldens(const std::vector<GoldenCase>& cases, const std::string& folder = "export")
{
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TestProject t;
        c.build(t);
        ExpectGolden(c.name, ExportOf(t), folder);
    }
}

// The lines of an export, without their CR LF.
inline std::vector<std::string> SplitLines(const std::string& text)
{
    std::vector<std::string> out;
    for (std::size_t pos = 0, end; pos < text.size(); pos = end + 2) {
        end = std::min(text.find("\r\n", pos), text.size());
        out.push_back(text.substr(pos, end - pos));
    }
    return out;
}

inline std::size_t CountLines(const std::string& text, const std::string& part)
{
    std::size_t n = 0;
    for (const auto& l : SplitLines(text))
        n += l.find(part) != std::string::npos;
    return n;
}

// Each part found in the text after the one before it.
inline void ExpectInOrder(const std::string& text, const std::vector<std::string>& parts)
{
    std::size_t at = 0;
    for (const auto& part : parts) {
        const std::size_t found = text.find(part, at);
        ASSERT_NE(found, std::string::npos) << part;
        at = found;
    }
}

} // namespace fw::test
