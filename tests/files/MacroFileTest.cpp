#include <gtest/gtest.h>

#include <filesystem>

#include "FilesTestSupport.h"
#include "core/Config.h"
#include "files/MacroFile.h"

namespace fw {
namespace {

std::string Macro(const std::string& name) { return test::Fixture("macros/" + name); }

TEST(MacroHeader, DescriptionPass)
{
    MacroHeader h;
    ASSERT_TRUE(ReadMacroDescriptions(Macro("hangar.api"), '.', h));
    EXPECT_EQ(h.description, "Hangar with two doors");
    EXPECT_EQ(h.params[0], "Length (m)");
    EXPECT_EQ(h.params[1], " Width (m,cm)");
    EXPECT_EQ(h.params[2], "");
    // Nine values: the last one is lost, four points remain, the rest of the default stays.
    EXPECT_EQ(h.designLast, 3);
    EXPECT_EQ(h.designPoints[0], (Point{-10, 10}));
    EXPECT_EQ(h.designPoints[3], (Point{-10, -10}));
    EXPECT_EQ(h.designPoints[4], (Point{-50, 50}));
    EXPECT_EQ(h.adjustable, 0);
    EXPECT_EQ(h.scale, 1.0); // defaults are not this pass's matter

    ASSERT_TRUE(ReadMacroDescriptions(Macro("square.api"), '.', h));
    EXPECT_EQ(h.description, "[None available]");
    EXPECT_EQ(h.adjustable, 1);
    EXPECT_EQ(h.designLast, 12); // two points are too few: ignored

    // Several keywords on a line; more than twelve points are cut to twelve; "x" reads as 0.
    ASSERT_TRUE(ReadMacroDescriptions(Macro("rectangle.api"), '.', h));
    EXPECT_EQ(h.adjustable, 2);
    EXPECT_EQ(h.designLast, 11);
    EXPECT_EQ(h.designPoints[3], (Point{0, 3}));
    EXPECT_EQ(h.designPoints[11], (Point{11, 11}));
    EXPECT_EQ(h.description, "[No description]");
}

TEST(MacroHeader, DefaultsPass)
{
    MacroHeader h;
    ASSERT_TRUE(ReadMacroDefaults(Macro("hangar.api"), '.', h));
    EXPECT_EQ(h.scale, 0.5);
    EXPECT_EQ(h.range, 1200);
    EXPECT_EQ(h.density, 4);
    EXPECT_EQ(h.params[0], "40");
    EXPECT_EQ(h.params[1], "1"); // the empty entry disappears
    EXPECT_EQ(h.params[2], "");
    // The numbers are in the dialog's form: a point fails on a comma system.
    ASSERT_TRUE(ReadMacroDefaults(Macro("hangar.api"), ',', h));
    EXPECT_EQ(h.scale, -1.0);
    EXPECT_EQ(h.range, 1200);
    ASSERT_TRUE(ReadMacroDefaults(Macro("square.api"), '.', h));
    EXPECT_EQ(h.scale, -1.0);
    EXPECT_EQ(h.range, -1);
    EXPECT_EQ(h.density, -1);

    MacroHeader d;
    ParseMacroDefaults(";defaultdensity sparse\n;defaultscale 0.0001\n", '.', d);
    EXPECT_EQ(d.density, 1);
    EXPECT_EQ(d.scale, 0.0001);
}

TEST(MacroHeader, UsePassLooksAtCodeOnly)
{
    MacroHeader h;
    ASSERT_TRUE(ReadMacroUses(Macro("hangar.api"), h));
    EXPECT_EQ(h.range, 1);       // %3, and %30 counts as %3 too
    EXPECT_EQ(h.heading, 1.0);   // %5
    EXPECT_EQ(h.scale, 0.0);     // %4 stands in a comment only
    EXPECT_EQ(h.elevation, 1.0); // %11
    EXPECT_EQ(h.density, 1);     // %12
    EXPECT_EQ(h.params[0], "1"); // %6
    EXPECT_EQ(h.params[1], "0");
    EXPECT_EQ(h.params[9], "1"); // %20
    ASSERT_FALSE(ReadMacroUses(Macro("missing.api"), h));
    EXPECT_EQ(h.range, 0);
    EXPECT_EQ(h.params[0], "0");
}

// An adjustable square takes its size from parameter 6 (its half rounded half to even), a rectangle
// its sides from 6 and 7; a parameter that is no size leaves the default outline of 12.
TEST(MacroOutline, AdjustableMacrosTakeTheirSizeFromTheParameters)
{
    struct Case {
        int adjustable;
        const char *p6, *p7;
        int last;
        int point;
        Point at;
    };
    const Case cases[] = {{1, "40", "7", 3, 0, {-40, 40}}, {1, "41", "7", 3, 2, {40, -40}}, {1, "43", "", 3, 3, {44, 44}},
                          {1, "0", "7", 12, 0, {}},         {1, "1", "7", 12, 0, {}},        {1, "abc", "7", 12, 0, {}},
                          {1, "", "7", 12, 0, {}},          {1, "-2147483648", "7", 12, 0, {}},
                          {2, "20", "60", 3, 0, {-60, 20}}, {2, "20", "60", 3, 1, {-60, -20}}, {2, "20", "x", 12, 0, {}},
                          {0, "20", "20", 2, 0, {1, 2}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.adjustable << " " << c.p6 << " " << c.p7);
        MacroHeader h;
        ResetMacroHeader(h);
        h.adjustable = c.adjustable;
        h.designLast = 2; // the macro's own outline, for one that isn't adjustable
        h.designPoints[0] = {1, 2};
        ObjectRecord o;
        ResetObject(o, kApi, "/opt/fw/");
        o.Param6() = c.p6;
        o.Param7() = c.p7;
        SetOutlineFromHeader(o, h, '.');
        EXPECT_EQ(o.DesignLast, c.last);
        if (c.last != 12) {
            EXPECT_EQ(o.DesignPoints[c.point], c.at);
        }
    }

    ObjectRecord o; // rebuilt only when the macro exists
    ResetObject(o, kApi, "/opt/fw/");
    o.Path() = Macro("missing.api");
    EXPECT_FALSE(RebuildOutline(o, '.'));
    EXPECT_EQ(o.DesignLast, 12);
    o.Path() = Macro("hangar.api");
    EXPECT_TRUE(RebuildOutline(o, '.'));
    EXPECT_EQ(o.DesignLast, 3);
    EXPECT_EQ(o.DesignPoints[1], (Point{10, 10}));
}

TEST(MacroPath, BuiltInMacrosAreReRooted)
{
    test::ScratchFolder dir, bare;
    std::filesystem::create_directories(dir.path("Api"));
    ConfigRecord c;
    ResetConfig(c, dir.folder());
    ObjectRecord o;
    ResetObject(o, kApi, "/opt/fw/");
    o.Path() = "C:\\Program Files\\Old\\API\\FWT_B737.api";
    EXPECT_EQ(ReRootMacroPath(o, c, dir.folder()), 2);
    EXPECT_EQ(o.Path(), dir.folder() + "Api/fwt_b737.api");
    o.Path() = "/home/u/macros/hangar.api";
    EXPECT_EQ(ReRootMacroPath(o, c, dir.folder()), -1);
    EXPECT_EQ(o.Path(), "/home/u/macros/hangar.api");
    o.Path() = "fwt_building2.api";
    EXPECT_EQ(ReRootMacroPath(o, c, bare.folder()), 1);
    EXPECT_EQ(o.Path(), bare.folder() + "API/fwt_building2.api");
}

} // namespace
} // namespace fw
