// Inputs the fuzz targets found faults with (tests/fixtures/fuzz/export): each gives its clean result.
#include "ExportTestSupport.h"

#include <algorithm>
#include <filesystem>

#include "core/Numbers.h"
#include "files/ProjectFile.h"

namespace fw::test {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> Findings(const std::string& target)
{
    std::vector<fs::path> out;
    std::error_code ec;
    for (fs::directory_iterator it(std::string(FW_FIXTURES) + "/fuzz/" + target, ec), end; !ec && it != end;
         it.increment(ec))
        if (it->is_regular_file())
            out.push_back(it->path());
    std::sort(out.begin(), out.end());
    return out;
}

// fuzz_export: a project that reads exports with either separator, as text and for the compiler,
// or stops with its message; every text it makes passes the structure check.
TEST(FuzzFindings, ExportsOfReadableProjectsAreWellFormed)
{
    const auto files = Findings("export");
    ASSERT_FALSE(files.empty());
    ConfigRecord config;
    ResetConfig(config, "/opt/fieldwright/");
    for (const auto& file : files) {
        SCOPED_TRACE(file.filename().string());
        ProjectData d;
        ASSERT_TRUE(ReadProjectText(ReadBytes(file.string()), d, nullptr, "/opt/fieldwright/"));
        for (char separator : {'.', ','})
            for (const std::string prefix : {"", "/scenery/x.bgl"}) {
                ScriptedUi ui;
                ExportBuffer buffer;
                try {
                    BuildExportText(ExportInput{d.project, config, d.points, d.shapes, d.objects, separator, &ui},
                                    prefix, buffer);
                } catch (const OperationFault& e) {
                    EXPECT_NE(std::string(e.what()), "");
                    continue;
                }
                ExpectWellFormed(std::string(buffer.text()));
            }
    }
}

// The first of them: a 3-D object's user parameter with a bracket, longer than its column. The
// line is cut with its closing quote, as the format has it, and the macro's brackets still close.
TEST(FuzzFindings, CutUserParameterWithABracket)
{
    ProjectData d;
    ASSERT_TRUE(ReadProjectText(ReadBytes(std::string(FW_FIXTURES) + "/fuzz/export/macro_param_cut_bracket.fwt"), d,
                                nullptr, "/opt/fieldwright/"));
    ASSERT_EQ(d.objects.size(), 1u);
    TestProject t;
    t.stores.ObjectStore = d.objects;
    const std::string text = ExportOf(t);
    EXPECT_NE(text.find("         \"p6DB(", 0), std::string::npos) << text;
    EXPECT_NE(text.find(";User param6\r\n"), std::string::npos) << text;
    ExpectWellFormed(text);
}

} // namespace
} // namespace fw::test
