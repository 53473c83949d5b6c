#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "core/Config.h"
#include "dialogs/FormOapi.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

struct Oapi : ::testing::Test {
    std::string folder;
    ConfigRecord config;
    ScriptedUi ui;
    ValueContext ctx{'.', &ui};

    void SetUp() override
    {
        folder = (std::filesystem::temp_directory_path() /
                  ("fw_oapi_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "_" +
                   ::testing::UnitTest::GetInstance()->current_test_info()->name()))
                     .string() + "/";
        std::filesystem::create_directories(folder + "API");
        std::ofstream(folder + "API/box.api") << ";macrodesc A box\r\n"
                                                 ";paramdescr Size (m), Colour\r\n"
                                                 ";fwtadjustable square\r\n"
                                                 ";defaultrange 3000\r\n"
                                                 ";defaultparams 40,,7\r\n"
                                                 "Area( 5 %3 )\r\n"
                                                 "Scale( %4 ) ; %5 in a comment\r\n"
                                                 "Box( %6 %7 )\r\n";
        ResetConfig(config, folder);
        config.numMacros = 1;
        config.macroFiles[0] = "box.api";
        config.macroDescriptions[0] = "A box";
    }
    void TearDown() override { std::filesystem::remove_all(folder); }
};

TEST_F(Oapi, FieldsFollowTheMarksAndOkStoresByUse)
{
    ObjectRecord o;
    ResetObject(o, kApi, folder);
    o.Path() = "C:\\elsewhere\\BOX.api"; // a listed macro is re-rooted
    FormOapi f;
    f.Show_(o, config, folder, '.');
    EXPECT_EQ(f.macroList, (std::vector<std::string>{"<User 3-D object (browse)>", "A box"}));
    EXPECT_EQ(f.values.Int("Combo1"), 1);
    EXPECT_TRUE(f.enabled[0]);   // %3
    EXPECT_FALSE(f.enabled[1]);  // %5 only in a comment
    EXPECT_TRUE(f.enabled[3]);   // %4
    EXPECT_TRUE(f.enabled[5]);   // %6
    EXPECT_FALSE(f.enabled[9]);  // %15
    EXPECT_EQ(f.paramLabels[0], "Size (m)");
    EXPECT_EQ(f.paramLabels[1], " Colour");

    f.ChooseMacro(1);
    EXPECT_EQ(f.values.Text("Text2"), "3000");
    EXPECT_EQ(f.values.Text("Text6"), "40");
    EXPECT_EQ(f.values.Text("Text7"), "7"); // the empty entry moves up
    f.values["Text6"] = "41";
    f.values["Text2"] = "0";
    f.values["Text5"] = "33";
    EXPECT_EQ(f.Ok(ctx, o, config), OkResult::Refused);
    f.values["Text2"] = "100";
    EXPECT_EQ(f.Ok(ctx, o, config), OkResult::Refused);
    f.values["Text5"] = "2";
    ASSERT_EQ(f.Ok(ctx, o, config), OkResult::Stored);
    EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"You entered a wrong value for the visual range!",
                                                       "You entered a wrong value for the scale!"}));
    EXPECT_EQ(o.Rotation, -1.0);
    EXPECT_EQ(o.Scale(), 2.0);
    EXPECT_EQ(o.Range(), 100);
    EXPECT_EQ(o.DesignLast, 3);
    EXPECT_EQ(o.DesignPoints[0], (Point{-40, 40})); // 41 halves to 20.5, which rounds to 20
    EXPECT_EQ(config.macroComboPosition, 1);
}

TEST_F(Oapi, KeysPastesAndClosingWithoutAMacro)
{
    EXPECT_EQ(ParamKey(6, 'q'), 0);
    EXPECT_EQ(ParamKey(7, 'q'), 'q');
    EXPECT_EQ(ParamKey(8, ';'), 0);
    ObjectRecord o;
    ResetObject(o, kApi, folder);
    o.Path().clear();
    FormOapi f;
    f.Show_(o, config, folder, '.');
    EXPECT_FALSE(f.CanClose(&ui));
    EXPECT_EQ(ui.Messages(), std::vector<std::string>{"You first must at select a macro!"});
    f.currentField = 8;
    f.PasteColor(128, 128, 128);
    EXPECT_EQ(f.values.Text("Text8"), " 128 128 128");
    f.PastePalette(16);
    EXPECT_EQ(f.values.Text("Text8"), "10");
}

TEST_F(Oapi, AFileWhoseHeaderCantBeReadIsRefusedAndChangesNothing)
{
    ObjectRecord o;
    ResetObject(o, kApi, folder);
    FormOapi f;
    f.Show_(o, config, folder, '.');
    f.ChooseMacro(1);
    const std::string before = f.path;
    const auto enabled = f.enabled;
    const std::string label = f.values.Text("Label35");
    const std::string range = f.values.Text("Text2");
    ASSERT_FALSE(before.empty());
    // A folder by the name of a macro: it exists, but there is no header to read.
    std::filesystem::create_directories(folder + "API/folder.api");
    EXPECT_FALSE(f.LoadMacro(folder + "API/folder.api"));
    EXPECT_EQ(f.path, before);
    EXPECT_EQ(f.enabled, enabled);
    EXPECT_EQ(f.values.Text("Label35"), label);
    EXPECT_EQ(f.values.Text("Text2"), range);
    EXPECT_EQ(f.description, "A box");
    // A missing file, as before.
    EXPECT_FALSE(f.LoadMacro(folder + "API/none.api"));
    EXPECT_EQ(f.path, before);
    // A readable one loads.
    std::ofstream(folder + "API/other.api") << ";macrodesc Another\r\nArea( 5 %3 )\r\n";
    EXPECT_TRUE(f.LoadMacro(folder + "API/other.api"));
    EXPECT_EQ(f.values.Text("Label35"), "other.api");
    EXPECT_EQ(f.description, "Another");
    EXPECT_TRUE(ui.Messages().empty());
}

} // namespace
} // namespace fw
