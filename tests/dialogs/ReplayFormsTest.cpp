// The batch tool's replay answers the dialogs with field values. The dialogs' checks are the forms'
// own tests; here the commands and the answers reach them, and what they store is written out.
#include <gtest/gtest.h>

#include <cstdlib>

#include "editor/EditorTestSupport.h"

namespace fw::test {
namespace {

// Runs a script with the batch tool where it stands; what it writes goes to a scratch folder.
struct CliRun {
    CliRun(const std::string& script, const std::string& name)
        : out(name), code(std::system(("XDG_STATE_HOME='" + (out / "state") + "' " FW_CLI " replay '" + script + "' --out '" +
                            out.path.string() + "' 2>/dev/null")
                               .c_str()))
    {
    }
    std::string Read(const std::string& name) const { return ReadFileText(out / name); }
    TempFolder out;
    int code;
};

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
const std::string kFixtures = std::string(FW_FIXTURES) + "/dialogs/";

TEST(ReplayForms, EveryMenuCommandRunsByItsNameAndNothingRunsAfterExit)
{
    CliRun run(kFixtures + "every_command.txt", "every_command");
    ASSERT_EQ(run.code, 0);
    const std::string running = run.Read("running.json");
    // The dialogs without an answer are closed; the commands of the export and the image ran.
    for (const char* expected :
         {"\"kind\": \"preferences\", \"text\": \"Preferences\", \"answer\": \"cancel\"",
          "\"kind\": \"converter\", \"text\": \"Converter\", \"answer\": \"shown\"", "\"kind\": \"about\"",
          "\"text\": \"Text format (*.txt)|*.txt\"", "\"text\": \"FS scenery (*.bgl)|*.bgl\"",
          "\"text\": \"Bitmap picture (*.bmp)|*.bmp\""})
        EXPECT_TRUE(Has(running, expected)) << expected;
    // Exit asked to save; cancelled it goes on, "no" ends the program.
    EXPECT_FALSE(Has(running, "\"kind\": \"exit\""));
    EXPECT_TRUE(Has(run.Read("ended.json"), "\"answer\": \"no\", \"queued\": true},\n    {\"kind\": \"exit\""));
    EXPECT_FALSE(std::filesystem::exists(kFixtures + "running.json")) << "nothing beside the script";

    const TempFolder dir("replay_exit");
    std::ofstream(dir / "script.txt") << "command MnuFexit\nstate ended.json\ntool poly\n";
    CliRun after(dir / "script.txt", "after_exit");
    EXPECT_NE(after.code, 0) << "the tool after the end is refused";
    EXPECT_TRUE(Has(after.Read("ended.json"), "\"kind\": \"exit\""));
}

TEST(ReplayForms, SettingsOutsideNewOptimizeOptionsAndTheConverter)
{
    CliRun run(kFixtures + "settings_options_converter.txt", "settings");
    ASSERT_EQ(run.code, 0);
    const std::string state = run.Read("dialogs.json");
    // A refused answer keeps the dialog open for the next.
    for (const char* expected :
         {"You entered a wrong value for the longitude (degrees)!",
          "form FormSettings Text1=Fieldtown Settings Converter Text5=179 ok",
          "You entered a wrong value for visibility step 2!", "You entered a wrong value for grid spacing 1!",
          "\"kind\": \"folder\", \"text\": \"Set Fieldwright's texture directory."})
        EXPECT_TRUE(Has(state, expected)) << expected;
    // The preferences and both tabs of the converter in the state.
    EXPECT_TRUE(Has(state, "\"GridDist\": [20, 200, 1000]"));
    EXPECT_TRUE(Has(state, "\"EnableOpenGL\": 1"));
    EXPECT_TRUE(Has(state, "\"TEXPath\": \"" + (run.out / "textures") + "/\""));
    EXPECT_TRUE(Has(state, "\"converter\": {\"dist\": {\"Text3\": \"1000\", \"InputUnit\": 0, \"OutputUnit\": 2, "
                           "\"Text4\": \"3280.8\"}, \"lat\": {\"Text1\": \"N40 30 15\", \"OutputFormat\": 1, "
                           "\"Text2\": \"40 30.25'\"}}"));
    // The project and optimisation settings were stored; the tree line took the changed default.
    const std::string project = run.Read("dialogs.fwt");
    for (const char* expected : {"Name=\"Fieldtown\"", "LongitudeDegree= 179", "Distance1= 150",
                                 "Texture1=\"grass.bmp\"", "mNumBands= 4", "mBandHeight= 12.5"})
        EXPECT_TRUE(Has(project, expected)) << expected;
}

} // namespace
} // namespace fw::test
