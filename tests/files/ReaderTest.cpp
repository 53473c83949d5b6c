#include <gtest/gtest.h>

#include "FilesTestSupport.h"
#include "files/ProjectFile.h"
#include "files/ProjectJson.h"
#include "files/ShapeBlocks.h"
#include "files/TextFile.h"
#include "files/ValueReaders.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

using test::Fixture;

struct ReadResult {
    bool ok = false;
    ProjectData data;
    ScriptedUi ui;
};

void Read(const std::string& name, ReadResult& r)
{
    r.ok = ReadProjectFile(Fixture(name), r.data, &r.ui, "/opt/fw/");
}

using V = std::vector<std::string>;

// Only "=" and a leading quote divide; a run of "=" is stepped over whole; a comment counts only at
// the start of a token.
TEST(Tokeniser, LinesIntoTokens)
{
    const std::pair<const char*, V> cases[] = {
        {"", {}},
        {"ShowPoly= 1", {"ShowPoly", " 1"}},
        {"gComment=\"a=b;c\"", {"gComment", "\"a=b;c\""}},
        {"   Poly(", {"   Poly("}},
        {"Name=x\"y\"=z", {"Name", "x\"y\"", "z"}},
        {"\"open", {"\"open"}},
        {"\"a\"b", {"\"a\"", "b"}},
        {"Name=", {"Name"}},
        {"gComment==\"x\"", {"gComment", "\"x\""}},
        {"vRange==1234", {"vRange", "1234"}},
        {"a===b", {"a", "b"}},
        {"==a", {"a"}},
        {"a==", {"a"}},
        {"===", {}},
        {"a=b==c", {"a", "b", "c"}},
        {";comment", {}},
        {"Name=;x", {"Name"}},
        {"Name==;comment", {"Name"}},
        {"Name=a;b", {"Name", "a;b"}},
        {"Name=\";quoted\"", {"Name", "\";quoted\""}}};
    for (const auto& [line, tokens] : cases)
        EXPECT_EQ(test::TokensOf(line), tokens) << line;
    // The buffer form of the same walk.
    CBufferS b;
    TokeniseLine("gComment==\"x\"", b);
    EXPECT_EQ(b.lines(), (V{"gComment", "\"x\""}));
}

TEST(Tokeniser, TextWithEitherLineEnd)
{
    fw::Tokens crlf, lf;
    TokeniseText("A= 1\r\nB=\"x\"\r\n\r\n", crlf);
    TokeniseText("A= 1\nB=\"x\"\n\n", lf);
    EXPECT_EQ(V(crlf.begin(), crlf.end()), (V{"A", " 1", "B", "\"x\""}));
    EXPECT_EQ(V(lf.begin(), lf.end()), V(crlf.begin(), crlf.end()));
}

TEST(ValueReaders, BoundsAndForms)
{
    std::uint8_t b = 9;
    EXPECT_TRUE(ReadByteValue(" 1", 0, 1, b));
    EXPECT_EQ(b, 1);
    EXPECT_TRUE(ReadByteValue("1", 0, 1, b)); // the blank is not required
    EXPECT_FALSE(ReadByteValue(" 2", 0, 1, b));
    EXPECT_FALSE(ReadByteValue("256", 0, 255, b));
    EXPECT_FALSE(ReadByteValue("-1", -5, 255, b));
    EXPECT_FALSE(ReadByteValue("x", 0, 255, b));
    EXPECT_TRUE(ReadByteValue(" 2.5", 0, 255, b)); // ties to even
    EXPECT_EQ(b, 2);
    EXPECT_TRUE(ReadByteValue("3.5", 0, 255, b));
    EXPECT_EQ(b, 4);

    std::int16_t s = 0;
    EXPECT_TRUE(ReadShortValue("-32768", -40000, 40000, s));
    EXPECT_FALSE(ReadShortValue("32768", -40000, 40000, s));
    EXPECT_FALSE(ReadShortValue("12abc", 0, 100, s));

    std::int32_t l = 0;
    EXPECT_TRUE(ReadLongValue("-2147483648", l));
    EXPECT_EQ(l, INT32_MIN);
    EXPECT_FALSE(ReadLongValue("2147483648", l));
    EXPECT_TRUE(ReadLongValue(" 1E+3", l));
    EXPECT_EQ(l, 1000);

    double d = 7;
    EXPECT_TRUE(ReadDoubleValue("x", -1, 1, d)); // no numeric prefix reads as 0
    EXPECT_EQ(d, 0);
    EXPECT_FALSE(ReadDoubleValue("x", 0.001, 1, d));
    EXPECT_TRUE(ReadDoubleValue(" 1.5abc", 0, 2, d));
    EXPECT_EQ(d, 1.5);
    EXPECT_TRUE(ReadDoubleValue("1e15", 0, 1e16, d));
    EXPECT_EQ(d, 1e15);
    EXPECT_TRUE(ReadDoubleValue(" 1E+15", 0, 1e16, d));
    EXPECT_TRUE(ReadDoubleValue(" 32", 0.01, 32, d)); // both ends included
    EXPECT_FALSE(ReadDoubleValue(" 32.0001", 0.01, 32, d));

    std::string t = "keep";
    EXPECT_FALSE(ReadStringValue("\"", t));
    EXPECT_EQ(t, "keep");
    EXPECT_TRUE(ReadStringValue("\"\"", t));
    EXPECT_EQ(t, "");
    EXPECT_TRUE(ReadStringValue("xaby", t)); // the quotes are not checked
    EXPECT_EQ(t, "ab");
}

// A damaged file fails with the message of the stage that found it and changes nothing.
TEST(Reader, DamagedFilesFailWithTheirStagesMessage)
{
    const std::string head = "Unable to open file! Corrupted file header...";
    const std::pair<const char*, std::string> cases[] = {
        {"head_version_not_number.fwt", head},
        {"head_settings_unclosed.fwt", head},
        {"head_project_unclosed.fwt", head},
        {"head_version_last_token.fwt", head},
        {"empty.fwt", head},
        {"only_comments.fwt", head},
        {"no such file.fwt", head + "\n'" + Fixture("no such file.fwt") + "': No such file or directory"},
        {"shape_unclosed_at_end.fwt", "Unable to open file! Corrupted shape structure..."},
        {"object_unclosed.fwt", "Unable to open file! Corrupted object structure..."}};
    for (const auto& [name, message] : cases) {
        SCOPED_TRACE(name);
        ReadResult r;
        r.data.project.Name = "untouched";
        Read(name, r);
        EXPECT_FALSE(r.ok);
        EXPECT_EQ(r.data.project.Name, "untouched");
        EXPECT_TRUE(r.data.shapes.empty());
        ASSERT_EQ(r.ui.calls.size(), 1u);
        EXPECT_EQ(r.ui.calls[0].text, message);
        EXPECT_EQ(r.ui.calls[0].style, MessageStyle::Critical);
    }
}

// Stage 1: the head.
TEST(ReaderHead, WithoutHeadBlocksTheRecordsStayZeroFilled)
{
    ReadResult r;
    Read("no_head_blocks.fwt", r);
    ASSERT_TRUE(r.ok);
    EXPECT_TRUE(r.ui.calls.empty());
    EXPECT_EQ(r.data.version, 0);
    EXPECT_EQ(r.data.showFlags.ShowPoly, 0);
    EXPECT_EQ(r.data.showFlags.ShowGrid, 0);
    EXPECT_EQ(r.data.showFlags.ShowForest, 0);
    EXPECT_EQ(r.data.showFlags.BackImagescale, 0);
    EXPECT_EQ(r.data.project.Name, "");
    EXPECT_EQ(r.data.project.PolyScale, 0);
    ASSERT_EQ(r.data.objects.size(), 1u);
    EXPECT_EQ(r.data.objects[0].PosX, 7);
}

TEST(ReaderHead, BlocksMayStandAnywhere)
{
    ReadResult r;
    Read("blocks_swapped.fwt", r);
    ASSERT_TRUE(r.ok);
    EXPECT_EQ(r.data.version, 1);
    EXPECT_EQ(r.data.project.Name, "Moved");
    EXPECT_EQ(r.data.project.MagVar, 3);
    EXPECT_EQ(r.data.project.Comment, "[Enter comment]"); // defaults under the keys
    EXPECT_EQ(r.data.showFlags.ShowGrid, 0);
    EXPECT_EQ(r.data.showFlags.ShowPoly, 1);
    EXPECT_EQ(r.data.showFlags.ShowSign, 1); // never saved, on after a load
    ASSERT_EQ(r.data.shapes.size(), 1u);
    EXPECT_EQ(r.data.shapes[0].gComment, "first");
    ASSERT_EQ(r.data.objects.size(), 1u);
    EXPECT_EQ(r.data.objects[0].NavName(), "Beacon");
}

// Stage 2: the version.
TEST(ReaderVersion, NewerVersionSaysUnableAndReadsOn)
{
    ReadResult r;
    Read("newer_version.fwt", r);
    EXPECT_TRUE(r.ok);
    ASSERT_EQ(r.ui.calls.size(), 1u);
    EXPECT_EQ(r.ui.calls[0].text, "Unable to open file! It has been made with a newer Fieldwright version...");
    EXPECT_EQ(r.ui.calls[0].style, MessageStyle::Information);
    EXPECT_EQ(r.data.version, 2);
    ASSERT_EQ(r.data.shapes.size(), 1u);
    EXPECT_EQ(r.data.points[0], (PointList{{5, 6}}));
}

// Stage 3: shapes.
TEST(ReaderShapes, ClosingBracketMissingInTheMiddleSwallowsTheNextBlock)
{
    ReadResult r;
    Read("shape_unclosed_in_middle.fwt", r);
    ASSERT_TRUE(r.ok);
    ASSERT_EQ(r.data.shapes.size(), 2u);
    // The keys of the second Poly land in the first; its points replace the first list.
    EXPECT_EQ(r.data.shapes[0].gComment, "second");
    EXPECT_EQ(r.data.points[0], (PointList{{2, 2}, {3, 3}}));
    EXPECT_EQ(r.data.shapes[1].gType, kTreeLine);
}

TEST(ReaderShapes, EdgeCasesOfKeysAndPoints)
{
    ReadResult r;
    Read("shape_edges.fwt", r);
    ASSERT_TRUE(r.ok);
    EXPECT_TRUE(r.ui.calls.empty());
    ASSERT_EQ(r.data.shapes.size(), 5u);
    const auto& poly = r.data.shapes[0];
    EXPECT_EQ(poly.gType, kPoly);
    EXPECT_EQ(poly.gComment, "Poly(");     // a quoted word opens nothing
    EXPECT_EQ(poly.vRange, 10000);         // "abc" rejected, then skipped as a key
    EXPECT_EQ(poly.mTexMap[0], 0);         // a TexPoly key in a Poly block
    EXPECT_EQ(poly.cColor, RGB(180, 180, 160));
    EXPECT_EQ(poly.vTime, 0);              // no vTime key: no time of day
    EXPECT_EQ(r.data.points[0], (PointList{{1, 1}}));

    const auto& line = r.data.shapes[1];
    EXPECT_EQ(line.gType, kWideLine);
    EXPECT_EQ(line.vLayer, 0);    // forced for a wide line
    EXPECT_EQ(line.gLineType, 0); // "road" is no match

    const auto& trees = r.data.shapes[2];
    EXPECT_EQ(trees.mNumBands, 8);
    EXPECT_EQ(trees.mSelectedBand(), 2);
    EXPECT_EQ(trees.cColor, 99); // a generic key counts in any block
    EXPECT_EQ(trees.vTime, 0);   // the letters are case-sensitive
    EXPECT_EQ(trees.tLoadflag, (std::array<std::uint8_t, 4>{1, 1, 0, 0}));
    EXPECT_EQ(trees.gComment, "");

    // The dotted line's points were all damaged: it is gone.
    const auto& flat = r.data.shapes[3];
    EXPECT_EQ(flat.gType, kFlatten);
    EXPECT_EQ(flat.gComment, "");
    EXPECT_EQ(flat.vTime, 0);
    EXPECT_EQ(flat.gLimits, (std::array<std::int32_t, 4>{1, 3, 1, 4}));
    EXPECT_EQ(flat.gIsConcave, 0);

    const auto& forest = r.data.shapes[4];
    EXPECT_EQ(forest.vTime, kTimeDay | kTimeDusk);
    EXPECT_EQ(r.data.points[4], (PointList{{8, 8}})); // the later Data[ wins
}

TEST(ReaderShapes, PointLines)
{
    Point p;
    EXPECT_TRUE(ParsePoint(" 100,-200", p));
    EXPECT_EQ(p, (Point{100, -200}));
    EXPECT_TRUE(ParsePoint("1,2", p));
    EXPECT_TRUE(ParsePoint(" 1.5, 2.5", p)); // rounded half to even
    EXPECT_EQ(p, (Point{2, 2}));
    for (const char* bad : {"100", ",5", "5,", "1,2,3", "1,", "a,b", " 1, 2x", "3000000000,1"})
        EXPECT_FALSE(ParsePoint(bad, p)) << bad;
}

// Stage 4: objects.
TEST(ReaderObjects, EdgeCasesOfTheObjectBlocks)
{
    ReadResult r;
    Read("object_edges.fwt", r);
    ASSERT_TRUE(r.ok);
    ASSERT_EQ(r.data.objects.size(), 9u);
    const auto& o = r.data.objects;
    EXPECT_EQ(o[0].oType, kInit);
    EXPECT_EQ(o[0].InitName(), "Start");
    EXPECT_EQ(o[0].doubles[0], 123.4); // Frequency is no Init key
    EXPECT_EQ(o[1].Caption(), "");
    EXPECT_EQ(o[1].Style(), "FlatLighted");
    EXPECT_EQ(o[2].DetailLevel(), 2);
    EXPECT_EQ(o[2].Elevation(), 0);     // below the reader's lower bound of 1
    EXPECT_EQ(o[2].Scale(), 32000);
    EXPECT_EQ(o[2].Path(), "/opt/fw/fwt_building1.api");
    EXPECT_EQ(o[2].DesignLast, 12);
    EXPECT_EQ(o[3].DetailLevel(), 2);
    EXPECT_EQ(o[3].Elevation(), 0);
    EXPECT_EQ(o[4].Range(), 45);

    const auto& tar = o[5];
    EXPECT_EQ(tar.Surface(), kSurfaceAsphalt); // "Tar" is written but "tar" is read
    EXPECT_EQ(tar.RwyNumber(), 36);
    EXPECT_EQ(tar.RwyDesignator(), 3);
    EXPECT_EQ(tar.Length(), 9000);
    EXPECT_EQ(tar.IlsFreqN(), 123.45);
    EXPECT_EQ(tar.ThrOffN(), 0);
    EXPECT_EQ(tar.ExtN(), 0); // ExtF is never read
    EXPECT_EQ(tar.LightIntensityLow, -1);
    EXPECT_EQ(tar.LightIntensityHigh, 0);

    EXPECT_EQ(o[6].RwyNumber(), 0);
    EXPECT_EQ(o[6].RwyDesignator(), 3);
    EXPECT_EQ(o[6].IlsFreqF(), 135.75);
    EXPECT_EQ(o[6].Surface(), kSurfaceTar);

    EXPECT_EQ(o[7].RwyNumber(), 0);
    EXPECT_EQ(o[7].RwyDesignator(), 0);
    EXPECT_EQ(o[7].LightIntensityLow, 0);
    EXPECT_EQ(o[7].LightIntensityHigh, -1);
    EXPECT_EQ(o[7].Surface(), kSurfaceSnow);

    EXPECT_EQ(o[8].RwyNumber(), 12);
    EXPECT_EQ(o[8].RwyDesignator(), 2);
    EXPECT_EQ(o[8].Surface(), kSurfaceGrass1);
    EXPECT_EQ(o[8].LightIntensityLow, 0); // the last value wins
    EXPECT_EQ(o[8].LightIntensityHigh, -1);
}


// Counts and point indices are 16-bit: a file beyond them is refused, not wrapped.
TEST(ReaderLimits, MoreThanTheCountsCanHoldIsRefused)
{
    std::string text = "Poly(\nData[\n";
    for (int i = 0; i < 32768; ++i)
        text += " 1, 2\n";
    ProjectData d;
    ASSERT_TRUE(ReadProjectText(text + "]\n)\n", d, nullptr));
    EXPECT_EQ(d.points[0].size(), 32768u);
    ScriptedUi ui;
    EXPECT_FALSE(ReadProjectText(text + " 3, 4\n]\n)\n", d, &ui));
    EXPECT_EQ(ui.Messages(), std::vector<std::string>{"Unable to open file! Corrupted shape structure..."});

    std::string shapes, objects;
    for (int i = 0; i < 32767; ++i) {
        shapes += "Flatten(\nData[\n 1, 1\n]\n)\n";
        objects += "Init(\n)\n";
    }
    ASSERT_TRUE(ReadProjectText(shapes + objects, d, nullptr));
    EXPECT_EQ(d.shapes.size(), 32767u);
    EXPECT_EQ(d.objects.size(), 32767u);
    EXPECT_FALSE(ReadProjectText(shapes + "Poly(\nData[\n 1, 1\n]\n)\n", d, nullptr));
    ScriptedUi ui2;
    EXPECT_FALSE(ReadProjectText(objects + "VOR(\n)\n", d, &ui2));
    EXPECT_EQ(ui2.Messages(), std::vector<std::string>{"Unable to open file! Corrupted object structure..."});
}

TEST(Writer, RecordsOfNoKnownTypeAreLeftOut)
{
    ProjectData d;
    ShapeRecord bad;
    bad.gType = 9;
    ObjectRecord none;
    none.oType = 14;
    d.shapes = {bad};
    d.points = {{{1, 1}}};
    d.objects = {none};
    CBufferS b;
    BuildSelectionText(b, d.points, d.shapes, d.objects);
    ProjectData back;
    ASSERT_TRUE(ReadProjectText(JoinLines(b.lines()), back, nullptr));
    EXPECT_TRUE(back.shapes.empty());
    EXPECT_TRUE(back.objects.empty());
}

} // namespace
} // namespace fw
