// Number forms, positions, the statement writers and the index lists.
#include "ExportTestSupport.h"

#include <cmath>
#include <cstdint>
#include <string_view>

#include "export/Optimize.h"
#include "export/ScasmWriter.h"

namespace fw::test {
namespace {

TEST(NumberForms, IntFixAndHex)
{
    EXPECT_EQ(Int(0), "0");
    EXPECT_EQ(Fix6(-50), "-50   ");
    EXPECT_EQ(Fix6(1000000), "100000"); // the seventh character is cut
    EXPECT_EQ(Fix6(-123456), "-12345");
    EXPECT_EQ(Fix3(7), "7  ");
    EXPECT_EQ(Fix3(-1234), "-12");
    EXPECT_EQ(Fix12(" 48.5"), " 48.5       ");
    EXPECT_EQ(Fix20("UNLAYERED WIDE LINES+"), "UNLAYERED WIDE LINES");
    EXPECT_EQ(Hex(0) + Hex(15) + " " + Hex(16) + " " + Hex(-1), "0F 10 FFFFFFFF");
    // Short integers are written from digit pairs, longer ones the general way: every length.
    std::int64_t power = 1;
    for (int digits = 1; digits <= 18; ++digits, power *= 10) {
        const std::string nines(static_cast<std::size_t>(digits), '9');
        EXPECT_EQ(Int(power), "1" + std::string(static_cast<std::size_t>(digits - 1), '0'));
        EXPECT_EQ(Int(power * 10 - 1), nines);
        EXPECT_EQ(Int(-(power * 10 - 1)), "-" + nines);
    }
    EXPECT_EQ(Int(4070), "4070");
    EXPECT_EQ(Int(INT64_MIN), "-9223372036854775808");
}

GeoFrame Frame(double lat, double lon, ScriptedUi* ui = nullptr)
{
    GeoFrame f;
    f.scale = ComputeExportScale(lat);
    f.latitude = lat;
    f.longitude = lon;
    f.values = ValueContext{'.', ui};
    return f;
}

TEST(Positions, DegreesPerMetreAndLatLon)
{
    const ExportScale s = ComputeExportScale(48.5);
    EXPECT_NEAR(s.LatDegPerMetre, 8.994627867e-6, 1e-15);
    EXPECT_NEAR(s.LonDegPerMetre, 1.357433704e-5, 1e-14);
    // A pole still gives a usable, huge factor.
    for (double pole : {90.0, -90.0}) {
        const ExportScale p = ComputeExportScale(pole);
        EXPECT_TRUE(std::isfinite(p.LonDegPerMetre));
        EXPECT_GT(p.LonDegPerMetre, 5.0);
    }
    const LatLon origin = PointToLatLon(Frame(0.5, -0.25), 0, 0, 2.0);
    EXPECT_EQ(origin.lat, " .5");
    EXPECT_EQ(origin.lon, "-.25");
    // Minus Y is north; the divisor turns plan units into metres.
    const LatLon north = PointToLatLon(Frame(48.5, 11.25), 0, -2000, 2.0);
    EXPECT_EQ(north.lat, " 48.508995");
    EXPECT_EQ(north.lon, " 11.25");
}

TEST(Positions, BeyondSixDecimalsTheExportStops)
{
    // Near the pole the longitude factor is so large that six decimals leave 32 bits.
    ScriptedUi ui;
    const GeoFrame f = Frame(90, 0, &ui);
    EXPECT_THROW(PointToLatLon(f, 800, 0, 2.0), OperationFault);
    // Above 9999 FixFloat itself reports and gives 0.
    const LatLon big = PointToLatLon(f, 5000000, 0, 2.0);
    EXPECT_EQ(big.lon, " 0");
    EXPECT_EQ(ui.Messages().size(), 1u);
}

TEST(Writer, AreaRadiusAndReferencePointRoundHalfToEven)
{
    const LatLon c{" 48.5", " 11.25"};
    EXPECT_EQ(ShapeAreaLine(c, 0), "Area( 5  48.5  11.25 6 )");
    EXPECT_EQ(ShapeAreaLine(c, 500), "Area( 5  48.5  11.25 6 )");
    EXPECT_EQ(ShapeAreaLine(c, 1500), "Area( 5  48.5  11.25 8 )");
    EXPECT_EQ(ShapeAreaLine(c, 2500), "Area( 5  48.5  11.25 8 )");
    EXPECT_EQ(RefPointLine(":RefEnd3", 0.5, c, 10000, 141), "  RefPoint( rel  :RefEnd3  .5  48.5  11.25 v1= 10000 v2= 70 )");
}

struct WriterFixture : ::testing::Test {
    TestProject t;
    ExportBuffer buffer;
    ExportContext ctx{t.project, t.config, Frame(48.5, 11.25), buffer, {}};
    std::vector<std::string> Take()
    {
        auto l = buffer.lines();
        buffer.reset();
        return l;
    }
};

// Joined lines copy number forms whole and quoted texts by their compiled length: each piece kind
// must give the plain forms, for every length of number, cut or padded, across the buffer's growth.
TEST_F(WriterFixture, JoinedLinesGiveThePlainForms)
{
    const std::int64_t values[] = {0,         7,         -7,         42,          -99,       100,
                                   9999,      10000,     -123456,    1000000,     2147483647, -2147483648LL,
                                   INT64_MAX, INT64_MIN, 1234567890123LL};
    const std::string indent = "    ";
    std::string expected;
    int lines = 0;
    for (int round = 0; round < 400; ++round)
        for (const std::int64_t v : values) {
            const NumberText stored = Fix6Text(v);
            const std::int64_t negated = v == INT64_MIN ? v : -v;
            const std::string text = Int(v);
            ctx.addJoined(indent, IntText(v), " ", Fix6Text(v), ";", Fix3Text(v), stored, "|", text,
                          std::string_view("x"), Fix6Text(negated));
            expected += indent + Int(v) + " " + Fix6(v) + ";" + Fix3(v) + Fix6(v) + "|" + text + "x" +
                        Fix6(negated) + "\r\n";
            ++lines;
        }
    ASSERT_EQ(buffer.count(), lines);
    EXPECT_EQ(buffer.text(), expected);
}

TEST_F(WriterFixture, TimeOfDaySwitch)
{
    const std::vector<std::vector<std::string>> expected = {
        {"  Jump( :RefEnd4 )"},
        {"  IfVarAnd( :RefEnd4 28C 1 )"},
        {"  IfVarAnd( :RefEnd4 28C 4 )"},
        {"  IfVarAnd( :Visible4 28C 2 )", "  Jump( :RefEnd4 )", "  :Visible4"},
        {"  IfVarAnd( :RefEnd4 28C 2 )"},
        {"  IfVarAnd( :Visible4 28C 4 )", "  Jump( :RefEnd4 )", "  :Visible4"},
        {"  IfVarAnd( :Visible4 28C 1 )", "  Jump( :RefEnd4 )", "  :Visible4"},
        {},
        {},
    };
    for (int v = 0; v <= 8; ++v) {
        WriteTimeSwitch(ctx, v, "  ", 4);
        EXPECT_EQ(Take(), expected[v]) << "vTime " << v;
    }
}

// The goldens pin the banners and boxes; a centre past five decimals is rounded at the area only.
TEST_F(WriterFixture, SectionAreaCentreHasFiveDecimals)
{
    WriteSectionBanner(ctx, 48.123456789, 11.25, 5, 40, "", "X", false);
    EXPECT_EQ(Take().back(), "Area( 5  48.12346  11.25 40 )");
}

TEST_F(WriterFixture, PolyStatementWrapsAfterSixtyFourCharacters)
{
    std::vector<std::uint8_t> indices;
    for (int i = 0; i < 40; ++i)
        indices.push_back(static_cast<std::uint8_t>(i));
    WritePolyStatement(ctx, indices, "    ", 0, 1);
    const auto l = Take();
    ASSERT_EQ(l.size(), 3u);
    EXPECT_EQ(l[0], "    ConcavePoly");
    // The test comes before each index, so the first line passes 64 by one index.
    EXPECT_EQ(l[1], "    Poly( au 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 ");
    EXPECT_EQ(l[2], "    21 22 23 24 25 26 27 28 29 30 31 32 33 34 35 36 37 38 39 )");
    EXPECT_EQ(l[1].size(), 66u);
}

TEST(Writer, LoadBitmapFlags)
{
    EXPECT_EQ(LoadBitmapFlags({0, 0, 0, 0}), "5");
    EXPECT_EQ(LoadBitmapFlags({1, 1, 1, 1}), "LWFS5");
    EXPECT_EQ(LoadBitmapFlags({2, 0, 0, 1}), "S5"); // only exactly 1 counts
}

TEST(IndexLists, CollinearFilter)
{
    // A square with one point in the middle of an edge.
    const PointList square{{-50, -50}, {0, -50}, {50, -50}, {50, 50}, {-50, 50}};
    EXPECT_EQ(ReducedIndices(square, 0, true), (IndexList{0, 2, 3, 4}));
    EXPECT_EQ(ReducedIndices(square, 0, false), (IndexList{0, 1, 2, 3, 4}));
    // Three points on a line keep nothing.
    IndexList out{9};
    EXPECT_EQ(RemoveCollinear({{0, 0}, {10, 10}, {20, 20}}, {0, 1, 2}, out), 0);
    EXPECT_EQ(out, (IndexList{9}));
    // Fewer than three entries: untouched, result 0.
    EXPECT_EQ(RemoveCollinear({{0, 0}, {10, 0}}, {0, 1}, out), 0);
    EXPECT_EQ(out, (IndexList{9}));
    // A repeated point is collinear with its neighbours too.
    EXPECT_EQ(ReducedIndices({{0, 0}, {10, 0}, {10, 0}, {10, 10}}, 0, true), (IndexList{0, 3}));
}

TEST(IndexLists, FarLevelsAndTooManyPointsFault)
{
    const PointList tri{{0, 0}, {10, 0}, {0, 10}};
    for (int level : {1, 2, 3}) {
        EXPECT_THROW(ReducedIndices(tri, level, true), PointReductionFault);
        EXPECT_THROW(ReducedIndices(tri, level, false), PointReductionFault);
    }
    PointList many;
    for (int i = 0; i < 257; ++i)
        many.push_back({i, i * i});
    EXPECT_THROW(ReducedIndices(many, 0, true), OperationFault);
    many.pop_back();
    EXPECT_EQ(ReducedIndices(many, 0, false).back(), 255);
}

} // namespace
} // namespace fw::test
