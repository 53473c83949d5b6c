#include <gtest/gtest.h>

#include "FilesTestSupport.h"
#include "files/ProjectFile.h"
#include "files/ShapeBlocks.h"
#include "files/TextFile.h"
#include "files/ValueReaders.h"
#include "support/Deadline.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

using test::Fixture;
using V = std::vector<std::string>;
const std::string kHeadMessage = "Unable to open file! Corrupted file header...";
const std::string kShapeMessage = "Unable to open file! Corrupted shape structure...";

struct Read {
    bool ok = false;
    ProjectData data;
    ScriptedUi ui;
    // A fixture by name, or text with LF line ends read as CR LF.
    explicit Read(const std::string& nameOrText, bool fixture = false)
    {
        data.project.Name = "untouched";
        ok = fixture ? ReadProjectFile(Fixture(nameOrText), data, &ui, "/opt/fw/")
                     : ReadProjectText(test::Crlf(nameOrText), data, &ui);
    }
};

// Only "=" and a leading quote divide; a run of "=" is stepped over whole; a comment counts only at
// the start of a token.
TEST(Tokeniser, LinesIntoTokens)
{
    const std::pair<const char*, V> cases[] = {
        {"", {}}, {"ShowPoly= 1", {"ShowPoly", " 1"}}, {"gComment=\"a=b;c\"", {"gComment", "\"a=b;c\""}},
        {"   Poly(", {"   Poly("}}, {"Name=x\"y\"=z", {"Name", "x\"y\"", "z"}}, {"\"open", {"\"open"}},
        {"\"a\"b", {"\"a\"", "b"}}, {"Name=", {"Name"}}, {"gComment==\"x\"", {"gComment", "\"x\""}},
        {"==a", {"a"}}, {"a==", {"a"}}, {"===", {}}, {"a=b==c", {"a", "b", "c"}}, {";comment", {}},
        {"Name=;x", {"Name"}}, {"Name==;comment", {"Name"}}, {"Name=a;b", {"Name", "a;b"}},
        {"Name=\";quoted\"", {"Name", "\";quoted\""}}};
    for (const auto& [line, tokens] : cases)
        EXPECT_EQ(test::TokensOf(line), tokens) << line;
    CBufferS b; // the buffer form of the same walk
    TokeniseLine("gComment==\"x\"", b);
    EXPECT_EQ(b.lines(), (V{"gComment", "\"x\""}));

    Tokens crlf, lf;
    TokeniseText("A= 1\r\nB=\"x\"\r\n\r\n", crlf);
    TokeniseText("A= 1\nB=\"x\"\n\n", lf);
    EXPECT_EQ(V(crlf.begin(), crlf.end()), (V{"A", " 1", "B", "\"x\""}));
    EXPECT_EQ(V(lf.begin(), lf.end()), V(crlf.begin(), crlf.end()));
}

TEST(ValueReaders, BoundsAndForms)
{
    std::uint8_t b = 9;
    EXPECT_TRUE(ReadByteValue("1", 0, 1, b)); // the blank is not required
    EXPECT_EQ(b, 1);
    EXPECT_FALSE(ReadByteValue(" 2", 0, 1, b));
    for (const char* bad : {"256", "-1", "x"}) // beyond a byte whatever the bounds, or no number
        EXPECT_FALSE(ReadByteValue(bad, -5, 1000, b)) << bad;
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
    EXPECT_TRUE(ReadDoubleValue(" 1E+15", 0, 1e16, d));
    EXPECT_EQ(d, 1e15);
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

void ExpectRefused(const Read& r, const std::string& message)
{
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.data.project.Name, "untouched");
    EXPECT_TRUE(r.data.shapes.empty());
    ASSERT_EQ(r.ui.calls.size(), 1u);
    EXPECT_EQ(r.ui.calls[0].text, message);
    EXPECT_EQ(r.ui.calls[0].style, MessageStyle::Critical);
}

// A damaged file fails with the message of the stage that found it and changes nothing.
TEST(Reader, DamagedFilesFailWithTheirStagesMessage)
{
    const std::pair<const char*, std::string> cases[] = {
        {"head_version_not_number.fwt", kHeadMessage}, {"head_settings_unclosed.fwt", kHeadMessage},
        {"head_project_unclosed.fwt", kHeadMessage}, {"head_version_last_token.fwt", kHeadMessage},
        {"empty.fwt", kHeadMessage}, {"only_comments.fwt", kHeadMessage},
        {"no such file.fwt", kHeadMessage + "\n'" + Fixture("no such file.fwt") + "': No such file or directory"},
        {"shape_unclosed_at_end.fwt", kShapeMessage},
        {"object_unclosed.fwt", "Unable to open file! Corrupted object structure..."}};
    for (const auto& [name, message] : cases) {
        SCOPED_TRACE(name);
        ExpectRefused(Read(name, true), message);
    }
}

// A file in which no block word stands has a corrupted header: binary, UTF-16, NULs, indented words.
TEST(Reader, WithoutABlockWordTheHeaderIsCorrupted)
{
    std::string binary;
    for (int k = 0; k < 40; ++k)
        for (int c = 0; c < 256; ++c)
            binary += static_cast<char>(c);
    std::string utf16 = "\xFF\xFE";
    for (char c : test::Crlf("Version(\n 1\n)\nProject(\nName=\"x\"\n)\nPoly(\nData[\n 1, 1\n]\n)\n"))
        utf16 += std::string{c, '\0'};
    for (const std::string& text : {binary, utf16, std::string(1000, '\0'), std::string("hello=world\nPoly\n"),
                                    std::string("   Poly(\nData[\n 1, 1\n]\n)\n"), std::string("\"Project(\"\n")}) {
        SCOPED_TRACE(text.substr(0, 20));
        ExpectRefused(Read(text), kHeadMessage);
    }
    for (const char* text : {"Version(\n 1\n)\n", "Settings(\n)\n", "Project(\n)\n", "Forest(\n)\n", "Exclude(\n)\n"}) {
        Read r(text); // any one block word is enough
        EXPECT_TRUE(r.ok && r.ui.calls.empty()) << text;
    }
}

TEST(Reader, HeadBlocks)
{
    Read none("no_head_blocks.fwt", true); // the records stay zero-filled
    ASSERT_TRUE(none.ok);
    EXPECT_TRUE(none.ui.calls.empty());
    EXPECT_EQ(none.data.version, 0);
    EXPECT_EQ(none.data.showFlags.ShowPoly + none.data.showFlags.ShowGrid + none.data.showFlags.ShowForest, 0);
    EXPECT_EQ(none.data.showFlags.BackImagescale, 0);
    EXPECT_EQ(none.data.project.Name, "");
    EXPECT_EQ(none.data.project.PolyScale, 0);
    ASSERT_EQ(none.data.objects.size(), 1u);
    EXPECT_EQ(none.data.objects[0].PosX, 7);

    Read r("blocks_swapped.fwt", true); // blocks may stand anywhere
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

    Read newer("newer_version.fwt", true); // says it can't, and reads on
    EXPECT_TRUE(newer.ok);
    ASSERT_EQ(newer.ui.calls.size(), 1u);
    EXPECT_EQ(newer.ui.calls[0].text, "Unable to open file! It has been made with a newer Fieldwright version...");
    EXPECT_EQ(newer.ui.calls[0].style, MessageStyle::Information);
    EXPECT_EQ(newer.data.version, 2);
    ASSERT_EQ(newer.data.shapes.size(), 1u);
    EXPECT_EQ(newer.data.points[0], (PointList{{5, 6}}));
}

// Only the last block of each kind counts, and the head is read in one pass.
TEST(Reader, OnlyTheLastHeadBlockOfEachKindCounts)
{
    // The first block's loop takes ")" for MagVar and runs into the second; the second wins all the same.
    Read r("Project(\nMagVar\n)\nName=\"x\"\nProject(\nComment=\"c\"\n)\n"
           "Settings(\nShowGrid= 0\n)\nSettings(\nShowPoly= 0\n)\nVersion(\n 3\n)\nVersion(\n 1\n)\n");
    ASSERT_TRUE(r.ok);
    ProjectRecord fresh;
    ResetProject(fresh);
    EXPECT_EQ(r.data.project.Name, fresh.Name);
    EXPECT_EQ(r.data.project.Comment, "c");
    EXPECT_EQ(r.data.showFlags.ShowGrid, 1);
    EXPECT_EQ(r.data.showFlags.ShowPoly, 0);
    EXPECT_EQ(r.data.version, 1);
    EXPECT_TRUE(r.ui.calls.empty());

    // An earlier block fails exactly when the last one does, and any bad version fails.
    for (const char* text : {"Project(\nName=\"a\"\n)\nProject(\n", "Settings(\n)\nSettings(\nShowPoly= 1\n",
                             "Version(\n x\n)\nVersion(\n 1\n)\nProject(\n)\n"}) {
        SCOPED_TRACE(text);
        ExpectRefused(Read(text), kHeadMessage);
    }

    // 90000 blocks that each close only at the end: 1 MB read in one pass (it took minutes).
    for (const std::string word : {"Project(", "Settings("}) {
        std::string text;
        for (int i = 0; i < 90000; ++i)
            text += word + "\r\n";
        text += ")\r\n";
        const auto outcome = test::RunWithDeadline(60, [&] {
            ProjectData d;
            ScriptedUi ui;
            return ReadProjectText(text, d, &ui) && ui.calls.empty() &&
                   d.project.Name == (word == "Project(" ? fresh.Name : std::string());
        });
        EXPECT_EQ(outcome, test::ChildOutcome::Passed) << word << test::OutcomeName(outcome);
    }
}

TEST(ReaderShapes, EdgeCasesOfKeysAndPoints)
{
    Read r("shape_edges.fwt", true);
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

    EXPECT_EQ(r.data.shapes[4].vTime, kTimeDay | kTimeDusk);
    EXPECT_EQ(r.data.points[4], (PointList{{8, 8}})); // the later Data[ wins

    Point p;
    EXPECT_TRUE(ParsePoint(" 100,-200", p));
    EXPECT_EQ(p, (Point{100, -200}));
    EXPECT_TRUE(ParsePoint(" 1.5, 2.5", p)); // rounded half to even
    EXPECT_EQ(p, (Point{2, 2}));
    for (const char* bad : {"100", ",5", "5,", "1,2,3", "a,b", " 1, 2x", "3000000000,1"})
        EXPECT_FALSE(ParsePoint(bad, p)) << bad;
}

// A key loop that took ")" as a value swallows the next block's keys, but the point walk ends at
// the first ")" outside a list; inside a list a ")" is a token that fails the point test.
TEST(ReaderShapes, WhereThePointWalkEnds)
{
    Read middle("shape_unclosed_in_middle.fwt", true);
    ASSERT_TRUE(middle.ok);
    ASSERT_EQ(middle.data.shapes.size(), 2u);
    EXPECT_EQ(middle.data.shapes[0].gComment, "second");
    EXPECT_EQ(middle.data.points[0], (PointList{{2, 2}, {3, 3}}));
    EXPECT_EQ(middle.data.shapes[1].gType, kTreeLine);

    Read r("TreeLine(\nmBandHeight\n)\nPoly(\ngComment=\"second\"\nData[\n 5, 5\n]\n)\n");
    ASSERT_TRUE(r.ok);
    EXPECT_TRUE(r.data.shapes.empty()); // the tree line has no points; the Poly was swallowed
    Read own("TreeLine(\nData[\n 1, 1\n 2, 2\n]\nmBandHeight\n)\nPoly(\ngComment=\"second\"\nData[\n 5, 5\n]\n)\n");
    ASSERT_TRUE(own.ok);
    ASSERT_EQ(own.data.shapes.size(), 1u);
    EXPECT_EQ(own.data.shapes[0].gComment, "second");
    EXPECT_EQ(own.data.points[0], (PointList{{1, 1}, {2, 2}}));

    Read inside("Poly(\nData[\n 1, 1\n)\nPoly(\nData[\n 2, 2\n]\n)\n");
    ASSERT_TRUE(inside.ok);
    ASSERT_EQ(inside.data.shapes.size(), 2u);
    EXPECT_EQ(inside.data.points[0], (PointList{{1, 1}, {2, 2}}));
    EXPECT_EQ(inside.data.points[1], (PointList{{2, 2}}));
    Read end("Flatten(\nData[\n 1, 1\n)\n 3, 4\n"); // a list the tokens end in ends with them
    ASSERT_EQ(end.data.points.size(), 1u);
    EXPECT_EQ(end.data.points[0], (PointList{{1, 1}, {3, 4}}));
}

// The walk as the team words it, token by token.
PointList ReferenceWalk(const Tokens& t, std::size_t start)
{
    PointList points;
    for (std::size_t i = start; i < t.size() && t[i] != ")"; ++i) {
        if (t[i] != "Data[")
            continue;
        points.clear();
        for (++i; i < t.size() && t[i] != "]"; ++i)
            if (Point p; ParsePoint(t[i], p))
                points.push_back(p);
        if (i >= t.size())
            break;
    }
    return points;
}

// The walks worked out for the whole array, the walk on its own, and the walk within a block where it
// ends there, are the reference walk from every start in every arrangement of the tokens that matter.
TEST(ReaderShapes, EveryWayOfWalkingAgreesWithTheReference)
{
    const std::string_view alphabet[] = {"Data[", "]", ")", " 1, 2", " 3,-4", "x", "Poly(", ",5"};
    std::uint32_t seed = 12345;
    auto next = [&seed] { return (seed = seed * 1103515245u + 12345u) >> 16; };
    for (int round = 0; round < 3000; ++round) {
        Tokens t;
        const std::size_t n = next() % 24;
        for (std::size_t k = 0; k < n; ++k)
            t.push_back(alphabet[next() % std::size(alphabet)]);
        const ShapePointWalks walks(t);
        for (std::size_t start = 0; start <= t.size(); ++start) {
            SCOPED_TRACE(::testing::Message() << "round " << round << " start " << start);
            const PointList expected = ReferenceWalk(t, start);
            PointList got, single;
            ASSERT_TRUE(walks.Read(start, 1000, got));
            ASSERT_EQ(got, expected);
            ReadShapePoints(t, start, single);
            ASSERT_EQ(single, expected);
            for (std::size_t close = start; close < t.size(); ++close) {
                PointList within;
                if (t[close] == ")" && ReadShapePointsWithin(t, start, close, 1000, within) == PointWalkEnd::Done) {
                    ASSERT_EQ(within, expected) << "close " << close;
                }
            }
        }
    }
}

// Counts and point indices are 16-bit: a file beyond them is refused, not wrapped. Damaged files
// whose walks overlap cost no more than the points they return, and all shapes together stay bounded.
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
    EXPECT_EQ(ui.Messages(), V{kShapeMessage});

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
    EXPECT_EQ(ui2.Messages(), V{"Unable to open file! Corrupted object structure..."});

    std::string many, junk, points;
    for (int i = 0; i < 20000; ++i)
        many += "Poly(\nData[\n)\n", junk += "x\n";
    for (int i = 0; i < 100; ++i)
        points += " 1, 1\n";
    const auto outcome = test::RunWithDeadline(60, [&] {
        ProjectData d;
        // Every list runs to the one "]": nothing but junk in it, so no shape stays.
        if (!ReadProjectText(many + junk + "]\n)\n", d, nullptr) || !d.shapes.empty())
            return false;
        // 20000 shapes each holding the same 100 points: refused as a broken shape structure.
        ScriptedUi ui;
        if (ReadProjectText(many + points + "]\n)\n", d, &ui) || ui.Messages() != V{kShapeMessage})
            return false;
        // A few shapes sharing a list all get it.
        std::string few;
        for (int i = 0; i < 50; ++i)
            few += "Poly(\nData[\n)\n";
        return ReadProjectText(few + points + "]\n)\n", d, nullptr) && d.shapes.size() == 50 &&
               d.points[49].size() == 100 && d.points[0].size() == 100;
    });
    EXPECT_EQ(outcome, test::ChildOutcome::Passed) << test::OutcomeName(outcome);
}

TEST(ReaderObjects, EdgeCasesOfTheObjectBlocks)
{
    Read r("object_edges.fwt", true);
    ASSERT_TRUE(r.ok);
    ASSERT_EQ(r.data.objects.size(), 9u);
    const auto& o = r.data.objects;
    EXPECT_EQ(o[0].oType, kInit);
    EXPECT_EQ(o[0].InitName(), "Start");
    EXPECT_EQ(o[0].doubles[0], 123.4); // Frequency is no Init key
    EXPECT_EQ(o[1].Caption(), "");
    EXPECT_EQ(o[1].Style(), "FlatLighted");
    EXPECT_EQ(o[2].DetailLevel(), 2);
    EXPECT_EQ(o[2].Elevation(), 0); // below the reader's lower bound of 1
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

    // Runway number, designator, intensities low and high, surface; the last value wins.
    const std::tuple<int, int, int, int, int> runways[] = {
        {0, 3, 0, -1, kSurfaceTar}, {0, 0, 0, -1, kSurfaceSnow}, {12, 2, 0, -1, kSurfaceGrass1}};
    for (int i = 0; i < 3; ++i) {
        const auto& w = o[6 + i];
        EXPECT_EQ(std::make_tuple(int(w.RwyNumber()), int(w.RwyDesignator()), int(w.LightIntensityLow),
                                  int(w.LightIntensityHigh), int(w.Surface())), runways[i]) << i;
    }
    EXPECT_EQ(o[6].IlsFreqF(), 135.75);
}

} // namespace
} // namespace fw
