// An outline from a macro's size parameters or ;designshape near 2^31 is held
// in range, with no undefined behaviour (the test build stops at any signed overflow).
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "files/MacroFile.h"
#include "files/ProjectFile.h"
#include "files/ProjectFlows.h"
#include "render/Geometry.h"
#include "render/Paint.h"
#include "render/RenderTestSupport.h"

namespace fw {
namespace {

ObjectRecord Api(std::initializer_list<Point> outline, double scale = 1.0)
{
    ObjectRecord o;
    ResetObject(o, kApi, "/opt/fw/");
    int i = 0;
    for (const Point& p : outline)
        o.DesignPoints[i++] = p;
    o.DesignLast = static_cast<std::uint8_t>(i - 1);
    o.Scale() = scale;
    return o;
}

TEST(HugeOutline, DoublingAnOutlineNearTwoToTheThirtyOneIsHeldAtTheWorldsEdge)
{
    const ObjectRecord o = Api({{INT32_MAX, INT32_MIN}, {INT32_MIN, INT32_MAX}, {1 << 30, -(1 << 30)}, {3, -4}}, 32);
    LineSet lines;
    BuildApiGeometry(lines, o);
    ASSERT_EQ(lines.size(), 1u);
    ASSERT_EQ(lines[0].size(), 5u);
    EXPECT_EQ(lines[0][0], (Point{INT32_MAX, INT32_MAX}));
    EXPECT_EQ(lines[0][1], (Point{INT32_MIN, INT32_MIN}));
    EXPECT_EQ(lines[0][2], (Point{INT32_MAX, INT32_MAX}));
    EXPECT_EQ(lines[0][3], (Point{192, 256}));
    EXPECT_EQ(lines[0][4], lines[0][0]);

    // Ordinary outlines are what they were: twice the stored numbers, Y turned.
    BuildApiGeometry(lines, Api({{10, 20}, {-30, 5}, {0, 0}}));
    EXPECT_EQ(lines[0], (PointList{{20, -40}, {-60, -10}, {0, 0}, {20, -40}}));
}

TEST(HugeOutline, SizeParametersPastThirtyTwoBitsAreRefused)
{
    MacroHeader h;
    ResetMacroHeader(h);
    h.adjustable = 1;
    ObjectRecord o;
    ResetObject(o, kApi, "/opt/fw/");
    const auto outline = o.DesignPoints;
    o.Param6() = "2147483647"; // halved, rounded and doubled: 2^31
    SetOutlineFromHeader(o, h, '.');
    EXPECT_EQ(o.DesignPoints, outline);
    o.Param6() = "2147483646";
    SetOutlineFromHeader(o, h, '.');
    EXPECT_EQ(o.DesignLast, 3);
    EXPECT_EQ(o.DesignPoints[0], (Point{-2147483646, 2147483646}));
    LineSet lines;
    BuildApiGeometry(lines, o);
    EXPECT_EQ(lines[0][0], (Point{INT32_MIN, INT32_MIN}));
}

// The whole way: a project whose macros say sizes near 2^31 opens and paints.
TEST(HugeOutline, AProjectOfSuchMacrosOpensAndPaints)
{
    namespace fs = std::filesystem;
    const fs::path dir = fs::temp_directory_path() / ("fw_huge_" + std::to_string(::getpid()));
    fs::create_directories(dir);
    const std::string shape = (dir / "huge.api").string();
    const std::string square = (dir / "square.api").string();
    std::ofstream(shape, std::ios::binary)
        << ";designshape 2147483647,-2147483648,2147483647,2147483647,-2147483648,2147483647,-2147483648,-2147483648\r\n"
        << "Area( 5 %1 %2 %3 )\r\n";
    std::ofstream(square, std::ios::binary) << ";fwtadjustable square\r\nArea( 5 %1 %2 %3 %6 )\r\n";
    ProjectData d;
    ResetShowFlags(d.showFlags);
    ResetProject(d.project);
    ObjectRecord a;
    ResetObject(a, kApi, "/opt/fw/");
    a.Path() = shape;
    ObjectRecord b = a;
    b.Path() = square;
    b.Param6() = "2147483646";
    b.Scale() = 32;
    d.objects = {a, b};
    const std::string project = (dir / "huge.fwt").string();
    ASSERT_TRUE(WriteProjectFile(project, d, nullptr));

    Session s = test::MakeSession(320, 240, 0.0625);
    ASSERT_TRUE(LoadProject(s, project));
    ASSERT_EQ(s.stores.ObjectStore.size(), 2u);
    EXPECT_EQ(s.stores.ObjectStore[0].DesignLast, 3);
    EXPECT_EQ(s.stores.ObjectStore[0].DesignPoints[0], (Point{INT32_MAX, INT32_MIN}));
    EXPECT_EQ(s.stores.ObjectStore[1].DesignPoints[3], (Point{2147483646, 2147483646}));
    RecordingCanvas window(320, 240), back(320, 240);
    PaintFrame(s, window, back);
    EXPECT_FALSE(back.calls.empty());
    std::error_code ec;
    fs::remove_all(dir, ec);
}

} // namespace
} // namespace fw
