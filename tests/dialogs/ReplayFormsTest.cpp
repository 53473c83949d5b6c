// The batch tool's replay answers the property dialogs with field values.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

namespace {

std::string ReadAll(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// A fixture script run by the batch tool where it stands, or a script of the given text; what it
// writes goes to a scratch folder.
struct FixtureRun {
    explicit FixtureRun(const std::string& script, const std::string& text = {})
        : out(std::filesystem::temp_directory_path() / ("fw_replay_dialogs_" + std::to_string(::getpid()))),
          path(text.empty() ? std::string(FW_FIXTURES) + "/dialogs/" + script : (out / script).string())
    {
        std::filesystem::remove_all(out);
        std::filesystem::create_directories(out);
        if (!text.empty())
            std::ofstream(path) << text;
        const std::string cmd = "XDG_STATE_HOME='" + (out / "state").string() + "' " + std::string(FW_CLI) +
                                " replay '" + path + "' --out '" + out.string() + "' 2>/dev/null";
        code = std::system(cmd.c_str());
    }
    ~FixtureRun() { std::filesystem::remove_all(out); }
    std::string Read(const std::string& name) const { return ReadAll((out / name).string()); }
    std::filesystem::path out;
    std::string path;
    int code = -1;
};

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(ReplayForms, EveryMenuCommandRunsByItsName)
{
    FixtureRun run("every_command.txt");
    ASSERT_EQ(run.code, 0);
    const std::string running = run.Read("running.json");
    const std::string ended = run.Read("ended.json");
    // The dialogs without an answer are closed; the commands of the export and the image ran.
    for (const char* expected :
         {"\"kind\": \"preferences\", \"text\": \"Preferences\", \"answer\": \"cancel\"",
          "\"kind\": \"converter\", \"text\": \"Converter\", \"answer\": \"shown\"",
          "\"kind\": \"about\"", "\"text\": \"Text format (*.txt)|*.txt\"",
          "\"text\": \"FS scenery (*.bgl)|*.bgl\"", "\"text\": \"Bitmap picture (*.bmp)|*.bmp\""})
        EXPECT_TRUE(Has(running, expected)) << expected;
    // Exit asked to save; cancelled it goes on, "no" ends the program.
    EXPECT_FALSE(Has(running, "\"kind\": \"exit\""));
    EXPECT_TRUE(Has(ended, "\"answer\": \"no\", \"queued\": true},\n    {\"kind\": \"exit\""));
    // Nothing beside the script.
    EXPECT_FALSE(std::filesystem::exists(std::string(FW_FIXTURES) + "/dialogs/running.json"));
    EXPECT_FALSE(std::filesystem::exists(std::string(FW_FIXTURES) + "/dialogs/ended.json"));
}

TEST(ReplayForms, AfterExitOnlyTheStateIsWritten)
{
    FixtureRun run("script.txt", "command MnuFexit\nstate ended.json\ntool poly\n");
    EXPECT_NE(run.code, 0) << "the tool after the end is refused";
    EXPECT_TRUE(Has(run.Read("ended.json"), "\"kind\": \"exit\""));
}

TEST(ReplayForms, SettingsOutsideNewOptimizeOptionsAndTheConverter)
{
    FixtureRun run("settings_options_converter.txt");
    ASSERT_EQ(run.code, 0);
    const std::string state = run.Read("dialogs.json");
    // The checks and messages of each dialog, in their order; a refused answer keeps the dialog
    // open for the next.
    for (const char* expected :
         {"You entered a wrong value for the longitude (degrees)!",
          "form FormSettings Text1=Fieldtown Settings Converter Text5=179 ok", "You entered a wrong value for visibility step 2!",
          "You entered a wrong value for grid spacing 1!",
          "OpenGL rendering will only be enabled/disabled after restarting Fieldwright...",
          "\"kind\": \"folder\", \"text\": \"Set Fieldwright's texture directory."})
        EXPECT_TRUE(Has(state, expected)) << expected;
    // The preferences and both tabs of the converter in the state.
    EXPECT_TRUE(Has(state, "\"GridDist\": [20, 200, 1000]"));
    EXPECT_TRUE(Has(state, "\"EnableOpenGL\": 1"));
    EXPECT_TRUE(Has(state, "\"TEXPath\": \"" + (run.out / "textures").string() + "/\""));
    EXPECT_TRUE(Has(state, "\"converter\": {\"dist\": {\"Text3\": \"1000\", \"InputUnit\": 0, \"OutputUnit\": 2, "
                           "\"Text4\": \"3280.8\"}, \"lat\": {\"Text1\": \"N40 30 15\", \"OutputFormat\": 1, "
                           "\"Text2\": \"40 30.25'\"}}"));
    // The project settings and the optimisation settings were stored; the tree line took the
    // default shape changed in the preferences.
    const std::string project = run.Read("dialogs.fwt");
    for (const char* expected : {"Name=\"Fieldtown\"", "LongitudeDegree= 179", "Distance1= 150",
                                 "Texture1=\"grass.bmp\"", "mNumBands= 4", "mBandHeight= 12.5"})
        EXPECT_TRUE(Has(project, expected)) << expected;
}

} // namespace
