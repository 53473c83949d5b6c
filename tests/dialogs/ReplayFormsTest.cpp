// The batch tool's replay answers the property dialogs with field values.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

std::string ReadAll(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(ReplayForms, RefusedValuesKeepTheDialogOpenUntilAnAnswerPasses)
{
    const auto folder = std::filesystem::temp_directory_path() / "fw_replay_forms";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "script.txt") << "canvas 800 600\n"
                                            "answer form FormSettings cancel\n"
                                            "answer form FormSettings Text5=180 ok\n"
                                            "answer form FormSettings Text1=Fieldtown Text5=179 ok\n"
                                            "command MnuFnew\n"
                                            "tool ndb\n"
                                            "answer form FormOvor ok\n"
                                            "answer form FormOndb Text1=526.6 ok\n"
                                            "answer form FormOndb Text1=526.5 Text4=My_NDB ok\n"
                                            "down L 400 300\n"
                                            "up L 400 300\n"
                                            "save out.fwt\n"
                                            "state out.json\n";
    const std::string cmd = std::string(FW_CLI) + " replay '" + (folder / "script.txt").string() + "'";
    ASSERT_EQ(std::system(cmd.c_str()), 0);
    const std::string state = ReadAll((folder / "out.json").string());
    for (const char* expected :
         {"a new project's settings close only with OK", "You entered a wrong value for the longitude (degrees)!",
          "the dialog open is FormOndb, not FormOvor", "You entered a wrong value for the frequency!",
          "form FormOndb Text1=526.5 Text4=My_NDB ok"})
        EXPECT_NE(state.find(expected), std::string::npos) << expected;
    const std::string project = ReadAll((folder / "out.fwt").string());
    EXPECT_NE(project.find("Fieldtown"), std::string::npos);
    EXPECT_NE(project.find("My_NDB"), std::string::npos);
    EXPECT_NE(project.find("526.5"), std::string::npos);
    std::filesystem::remove_all(folder);
}

} // namespace
