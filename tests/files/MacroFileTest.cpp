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
    // Nine values: the last one is lost, four points remain.
    EXPECT_EQ(h.designLast, 3);
    EXPECT_EQ(h.designPoints[0], (Point{-10, 10}));
    EXPECT_EQ(h.designPoints[3], (Point{-10, -10}));
    EXPECT_EQ(h.designPoints[4], (Point{-50, 50})); // the rest of the default stays
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

ObjectRecord Api(const std::string& param6, const std::string& param7)
{
    ObjectRecord o;
    ResetObject(o, kApi, "/opt/fw/");
    o.Param6() = param6;
    o.Param7() = param7;
    return o;
}

TEST(MacroOutline, AdjustableMacrosTakeTheirSizeFromTheParameters)
{
    MacroHeader h;
    ResetMacroHeader(h);
    h.adjustable = 1;
    for (const char* p : {"40", "41"}) {
        ObjectRecord o = Api(p, "7");
        SetOutlineFromHeader(o, h, '.');
        EXPECT_EQ(o.DesignLast, 3);
        EXPECT_EQ(o.DesignPoints[0], (Point{-40, 40}));
        EXPECT_EQ(o.DesignPoints[2], (Point{40, -40}));
    }
    ObjectRecord big = Api("43", "");
    SetOutlineFromHeader(big, h, '.');
    EXPECT_EQ(big.DesignPoints[3], (Point{44, 44}));
    for (const char* bad : {"0", "1", "abc", "", "-2147483648"}) {
        ObjectRecord o = Api(bad, "7");
        SetOutlineFromHeader(o, h, '.');
        EXPECT_EQ(o.DesignLast, 12) << bad;
    }

    h.adjustable = 2;
    ObjectRecord r = Api("20", "60");
    SetOutlineFromHeader(r, h, '.');
    EXPECT_EQ(r.DesignLast, 3);
    EXPECT_EQ(r.DesignPoints[0], (Point{-60, 20}));
    EXPECT_EQ(r.DesignPoints[1], (Point{-60, -20}));
    ObjectRecord half = Api("20", "x");
    SetOutlineFromHeader(half, h, '.');
    EXPECT_EQ(half.DesignLast, 12);

    h.adjustable = 0;
    h.designLast = 2;
    h.designPoints[0] = {1, 2};
    ObjectRecord plain = Api("20", "20");
    SetOutlineFromHeader(plain, h, '.');
    EXPECT_EQ(plain.DesignLast, 2);
    EXPECT_EQ(plain.DesignPoints[0], (Point{1, 2}));
}

TEST(MacroOutline, RebuiltOnlyWhenTheMacroExists)
{
    ObjectRecord o = Api("40", "40");
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
    test::ScratchFolder dir;
    std::filesystem::create_directories(dir.path("Api"));
    ConfigRecord c;
    ResetConfig(c, dir.folder());
    ObjectRecord o = Api("40", "40");
    o.Path() = "C:\\Program Files\\Old\\API\\FWT_B737.api";
    EXPECT_EQ(ReRootMacroPath(o, c, dir.folder()), 2);
    EXPECT_EQ(o.Path(), dir.folder() + "Api/fwt_b737.api");

    o.Path() = "/home/u/macros/hangar.api";
    EXPECT_EQ(ReRootMacroPath(o, c, dir.folder()), -1);
    EXPECT_EQ(o.Path(), "/home/u/macros/hangar.api");

    test::ScratchFolder bare;
    o.Path() = "fwt_building2.api";
    EXPECT_EQ(ReRootMacroPath(o, c, bare.folder()), 1);
    EXPECT_EQ(o.Path(), bare.folder() + "API/fwt_building2.api");
}

} // namespace
} // namespace fw
