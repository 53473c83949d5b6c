#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "core/Helpers.h"
#include "core/Numbers.h"
#include "core/PathCase.h"
#include "core/Recent.h"
#include "core/Session.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

TEST(NumberForms, RealFileFormAndRounding)
{
    const std::pair<double, const char*> reals[] = {
        {0.5, " .5"},        {-0.25, "-.25"},        {0, " 0"},          {-0.0, " 0"},
        {-8.5, "-8.5"},      {123.45, " 123.45"},    {1e15, " 1E+15"},   {1.5e-7, " 1.5E-07"},
        {0.1 + 0.2, " .3"},  {-123456789.125, "-123456789.125"}};
    for (const auto& [v, text] : reals)
        EXPECT_EQ(Real(v), text) << v;
    EXPECT_EQ(FormatInt(0), " 0");
    EXPECT_EQ(FormatInt(-50), "-50");
    EXPECT_EQ(LocalReal(0.5, ','), "0,5");
    EXPECT_EQ(LocalReal(108.2, '.'), "108.2");

    const std::pair<const char*, double> prefixes[] = {{" .5", 0.5}, {"-8.5xyz", -8.5}, {" 1E+15", 1e15},
                                                       {"abc", 0},   {"1E", 1},          {"1e999", 0}};
    for (const auto& [text, v] : prefixes)
        EXPECT_DOUBLE_EQ(ParseFileNumber(text), v) << text;

    EXPECT_EQ(RoundToInt32(2.5), 2); // half to even
    EXPECT_EQ(RoundToInt32(3.5), 4);
    EXPECT_EQ(RoundToInt32(-2.5), -2);
    EXPECT_FALSE(RoundToInt32(3e9).has_value());
    EXPECT_FALSE(RoundToInt16(40000).has_value());
}

class Checks : public ::testing::Test {
protected:
    ScriptedUi ui;
    ValueContext dot{'.', &ui};
    ValueContext comma{',', &ui};
};

TEST_F(Checks, ValuesOfEachKind)
{
    std::int16_t v = 0;
    EXPECT_TRUE(CheckInteger(dot, "3.5", 0, 10, "the value", v)); // half to even before the bounds
    EXPECT_EQ(v, 4);
    EXPECT_TRUE(CheckInteger(dot, "2.5", 0, 10, "the value", v));
    EXPECT_EQ(v, 2);
    EXPECT_TRUE(CheckInteger(dot, "10.4", 0, 10, "the value", v));
    EXPECT_FALSE(CheckInteger(dot, "10.6", 0, 10, "the value", v));
    EXPECT_FALSE(CheckInteger(dot, "40000", -1e9, 1e9, "the value", v));
    std::uint8_t b = 0;
    EXPECT_TRUE(CheckByte(dot, "255", 0, 255, "", b));
    EXPECT_EQ(b, 255);
    EXPECT_FALSE(CheckByte(dot, "256", 0, 1000, "", b));
    EXPECT_FALSE(CheckByte(dot, "-1", -5, 5, "", b));
    std::int32_t l = 0;
    EXPECT_TRUE(CheckLong(dot, "-2147483648", "", l));
    EXPECT_EQ(l, INT32_MIN);
    EXPECT_FALSE(CheckLong(dot, "2147483648", "the colour", l));

    // The session's decimal separator; both bounds included.
    double d = 0;
    EXPECT_TRUE(CheckDouble(comma, "1,5", 0, 10, "", d));
    EXPECT_DOUBLE_EQ(d, 1.5);
    EXPECT_FALSE(CheckDouble(comma, "1.5", 0, 10, "", d));
    EXPECT_TRUE(CheckDouble(dot, " -2.25 ", -10, 10, "", d));
    EXPECT_DOUBLE_EQ(d, -2.25);
    EXPECT_TRUE(CheckDouble(dot, "10", 0, 10, "", d));
    EXPECT_FALSE(CheckDouble(dot, "10.01", 0, 10, "", d));

    // The wrong-value message only with a name; the value is kept.
    ui.calls.clear();
    d = 7;
    EXPECT_FALSE(CheckDouble(dot, "", 0, 10, "the scale", d));
    EXPECT_FALSE(CheckDouble(dot, "abc", 0, 10, "", d));
    ASSERT_EQ(ui.calls.size(), 1u);
    EXPECT_EQ(ui.calls[0].text, "You entered a wrong value for the scale!");
    EXPECT_EQ(ui.calls[0].style, MessageStyle::Information);
    EXPECT_DOUBLE_EQ(d, 7);
}

TEST_F(Checks, FixFloatLimits)
{
    EXPECT_DOUBLE_EQ(FixFloat(9999, 5, dot), 9999);
    EXPECT_DOUBLE_EQ(FixFloat(1.23456789, 3, dot), 1.235);
    EXPECT_DOUBLE_EQ(FixFloat(0.0005, 3, dot), 0.0); // half to even at the cut
    EXPECT_DOUBLE_EQ(FixFloat(-50000.5, 0, dot), -50000);
    EXPECT_TRUE(ui.Messages().empty());
    EXPECT_DOUBLE_EQ(FixFloat(9999.5, 6, comma), 0);
    ASSERT_EQ(ui.Messages().size(), 1u);
    EXPECT_EQ(ui.Messages()[0], "FixFloat Violation: 9999,5");
    EXPECT_EQ(ui.calls[0].style, MessageStyle::Critical);
    EXPECT_THROW(FixFloat(5000, 6, dot), OperationFault);
}

TEST(KeyFilters, NumberRemoveAndMap)
{
    EXPECT_EQ(KeyNumber(',', true), '.');
    EXPECT_EQ(KeyNumber('.', false), 0);
    EXPECT_EQ(KeyNumber('5', false), '5');
    EXPECT_EQ(KeyNumber(8, false), 8);
    EXPECT_EQ(KeyNumber('-', false), '-');
    EXPECT_EQ(KeyNumber('a', true), 0);
    EXPECT_EQ(KeyNumber(9, true), 0);
    EXPECT_EQ(KeyRemove('"', "\"="), 0);
    EXPECT_EQ(KeyRemove('a', "\"="), 'a');
    EXPECT_EQ(KeyMap('.', ",.", ",,"), ',');
    EXPECT_EQ(KeyMap('x', ",.", ",,"), 'x');
}

TEST(Paths, TakingPathsApart)
{
    ScriptedUi ui;
    EXPECT_EQ(GetNameFromPath("C:\\a.b\\file", false), "file");
    EXPECT_EQ(GetNameFromPath("/home/u/x.y/plan.fwt", false), "plan");
    EXPECT_EQ(GetNameFromPath("/home/u/plan.v2.fwt", true), "plan.v2.fwt");
    EXPECT_EQ(GetNameFromPath("/home/u/plan.v2.fwt", false), "plan.v2");
    EXPECT_EQ(GetNameFromPath("", true, &ui), "");
    EXPECT_TRUE(ui.Messages().empty());
    EXPECT_EQ(GetNameFromPath("", false, &ui), "");
    ASSERT_EQ(ui.Messages().size(), 1u);
    EXPECT_EQ(ui.Messages()[0], "Error: 'GetNameFromPath' => empty filename!");
    EXPECT_EQ(GetFolderFromPath("C:\\scenery\\a.fwt"), "C:\\scenery\\");
    EXPECT_EQ(GetFolderFromPath("/srv/a.fwt"), "/srv/");
    EXPECT_EQ(GetFolderFromPath("a.fwt"), "/");
    EXPECT_EQ(AddBackslash("/srv"), "/srv/");
    EXPECT_EQ(AddBackslash("C:\\x\\"), "C:\\x\\");
    EXPECT_FALSE(FileExists(""));
    EXPECT_TRUE(FileExists("/"));

    // Folders and files spelled in another case, with the back slashes of a Windows project; with
    // nothing to find the path comes back with "/" separators only.
    const std::filesystem::path root =
        std::filesystem::temp_directory_path() / ("fw_pathcase_" + std::to_string(getpid()));
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root / "Resource");
    std::filesystem::create_directories(root / "API");
    std::ofstream(root / "Resource" / "fs5.pal") << "x";
    const std::string base = root.string();
    const std::pair<std::string, std::string> cases[] = {
        {"/Resource/fs5.pal", "/Resource/fs5.pal"},  {"/resource/FS5.PAL", "/Resource/fs5.pal"},
        {"\\RESOURCE\\fs5.pal", "/Resource/fs5.pal"}, {"/Api/", "/API/"},
        {"\\Texture\\taxi.bmp", "/Texture/taxi.bmp"},  {"/resource/missing.pal", "/resource/missing.pal"}};
    for (const auto& [spelled, found] : cases)
        EXPECT_EQ(FindPathNoCase(base + spelled), base + found) << spelled;
    EXPECT_EQ(FindPathNoCase(""), "");
    std::filesystem::remove_all(root);
}

TEST(Strings, CutAndSplit)
{
    std::string s = "abc;def";
    CutAtCharacter(s, ';');
    EXPECT_EQ(s, "abc");
    s = ";x";
    CutAtCharacter(s, ';');
    EXPECT_EQ(s, "");

    std::vector<std::string> parts;
    EXPECT_EQ(SplitString("a,,b \"c,d\" e", ", ", "\"", "\"", parts), 1);
    EXPECT_EQ(parts, (std::vector<std::string>{"a", "b", "\"c,d\"", "e"}));
    EXPECT_EQ(SplitString("", ",", "", "", parts), 0);
    EXPECT_EQ(parts, (std::vector<std::string>{""}));
    SplitString("Length (m), Width (m,cm)", ",", "(", ")", parts);
    EXPECT_EQ(parts, (std::vector<std::string>{"Length (m)", " Width (m,cm)"}));
}

TEST(Recent, FourNewestFirst)
{
    CRecent r;
    EXPECT_EQ(r.nEntries(), -1);
    EXPECT_EQ(r.getEntry(0), "");
    r.addPath("a");
    r.addPath("b");
    EXPECT_EQ(r.getEntry(3), "a");
    r.addPath("a"); // opened again: moves to the top, once
    EXPECT_EQ(r.nEntries(), 1);
    EXPECT_EQ(r.getEntry(0), "a");
    r.addPath("A"); // case counts
    EXPECT_EQ(r.nEntries(), 2);
    for (auto p : {"c", "d"})
        r.addPath(p);
    EXPECT_EQ(r.nEntries(), 3);
    EXPECT_EQ(r.getEntry(3), "a"); // the fifth distinct path pushed out the oldest, "b"
    r.addPath("");
    EXPECT_EQ(r.getEntry(0), "d");
}

TEST(SessionState, TitleAndResets)
{
    Session s;
    s.showFlags.BackImagescale = 3;
    ResetAtStart(s);
    EXPECT_EQ(Title(s), "Fieldwright - [Unsaved document]");
    EXPECT_EQ(s.projectPath, "New project.fwt");
    s.canPaste = 1;
    s.recent.addPath("/x/a.fwt");
    ResetForLoadedProject(s, "/x/b.fwt");
    EXPECT_EQ(Title(s), "Fieldwright - [b.fwt]");
    EXPECT_EQ(s.canPaste, 1);
    EXPECT_EQ(s.recent.nEntries(), 0);
    EXPECT_DOUBLE_EQ(s.showFlags.BackImagescale, 3);
    ResetAtStart(s);
    EXPECT_EQ(s.canPaste, 0);
    EXPECT_EQ(s.recent.nEntries(), -1);
    EXPECT_DOUBLE_EQ(s.view.zoom(), 0.25);
}

} // namespace
} // namespace fw
