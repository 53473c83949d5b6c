// The 3-D object dialog: the fields its macro's marks enable, OK by use, and unreadable macros.
#include <gtest/gtest.h>

#include <fstream>

#include "core/Config.h"
#include "dialogs/FormOapi.h"
#include "editor/EditorTestSupport.h"
#include "support/ScriptedUi.h"

namespace fw::test {
namespace {

struct Oapi : ::testing::Test {
    TempFolder dir{std::string("oapi_") + ::testing::UnitTest::GetInstance()->current_test_info()->name()};
    std::string folder = dir.path.string() + "/";
    ConfigRecord config;
    ScriptedUi ui;
    ValueContext ctx{'.', &ui};
    ObjectRecord o;
    FormOapi f;

    void SetUp() override
    {
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
        ResetObject(o, kApi, folder);
    }
};

TEST_F(Oapi, FieldsFollowTheMarksAndOkStoresByUse)
{
    o.Path() = "C:\\elsewhere\\BOX.api"; // a listed macro is re-rooted
    f.Show_(o, config, folder, '.');
    EXPECT_EQ(f.macroList, (std::vector<std::string>{"<User 3-D object (browse)>", "A box"}));
    EXPECT_EQ(f.values.Int("Combo1"), 1);
    // %3, %5 only in a comment, %4, %6, %15.
    EXPECT_EQ((std::array{f.enabled[0], f.enabled[1], f.enabled[3], f.enabled[5], f.enabled[9]}),
              (std::array{true, false, true, true, false}));
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
    EXPECT_EQ((std::tuple{o.Rotation, o.Scale(), o.Range(), o.DesignLast}), (std::tuple{-1.0, 2.0, 100, 3}));
    EXPECT_EQ(o.DesignPoints[0], (Point{-40, 40})); // 41 halves to 20.5, which rounds to 20
    EXPECT_EQ(config.macroComboPosition, 1);
}

TEST_F(Oapi, KeysPastesAndClosingWithoutAMacro)
{
    EXPECT_EQ(ParamKey(6, 'q'), 0);
    EXPECT_EQ(ParamKey(7, 'q'), 'q');
    EXPECT_EQ(ParamKey(8, ';'), 0);
    o.Path().clear();
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
    f.Show_(o, config, folder, '.');
    f.ChooseMacro(1);
    const FormOapi before = f;
    ASSERT_FALSE(before.path.empty());
    // A folder by the name of a macro: it exists, but there is no header to read; or no file.
    std::filesystem::create_directories(folder + "API/folder.api");
    for (const char* name : {"API/folder.api", "API/none.api"}) {
        EXPECT_FALSE(f.LoadMacro(folder + name)) << name;
        EXPECT_EQ(f.path, before.path);
        EXPECT_EQ(f.enabled, before.enabled);
        EXPECT_EQ(f.values.Text("Label35"), before.values.Text("Label35"));
        EXPECT_EQ(f.values.Text("Text2"), before.values.Text("Text2"));
        EXPECT_EQ(f.description, "A box");
    }
    std::ofstream(folder + "API/other.api") << ";macrodesc Another\r\nArea( 5 %3 )\r\n";
    EXPECT_TRUE(f.LoadMacro(folder + "API/other.api"));
    EXPECT_EQ(f.values.Text("Label35"), "other.api");
    EXPECT_EQ(f.description, "Another");
    EXPECT_TRUE(ui.Messages().empty());
}

} // namespace
} // namespace fw::test
