// A run of "=", the shape's own point walk, files in which no block word
// stands, and a head of many blocks read in one pass (design.md, "Fine points the team has settled").
#include <gtest/gtest.h>

#include "FilesTestSupport.h"
#include "files/ProjectFile.h"
#include "files/ShapeBlocks.h"
#include "files/TextFile.h"
#include "support/ScriptedUi.h"
#include "support/Deadline.h"

namespace fw {
namespace {

using V = std::vector<std::string>;

// Item 1: after a "=" the walk looks afresh, so a run of them is stepped over whole (the
// tokeniser's own cases are in ReaderTest).
TEST(TokeniserEquals, DoubledEqualsSetTheValue)
{
    ProjectData d;
    ASSERT_TRUE(ReadProjectText("Poly(\r\ngComment==\"x\"\r\nvRange==1234\r\nData[\r\n 1, 1\r\n]\r\n)\r\n"
                                "Project(\r\nName===\"n\"\r\n)\r\n",
                                d, nullptr));
    ASSERT_EQ(d.shapes.size(), 1u);
    EXPECT_EQ(d.shapes[0].gComment, "x");
    EXPECT_EQ(d.shapes[0].vRange, 1234);
    EXPECT_EQ(d.project.Name, "n");
}

struct Read {
    bool ok = false;
    ProjectData data;
    ScriptedUi ui;
    explicit Read(const std::string& lf)
    {
        data.project.Name = "untouched";
        ok = ReadProjectText(test::Crlf(lf), data, &ui);
    }
};

// Item 2: a key loop that took ")" as a value doesn't pull the next block's points in.
TEST(PointWalk, EndsAtTheFirstCloseOutsideAList)
{
    // mBandHeight reads ")" as 0; the key loop runs on into the Poly, the point walk doesn't.
    Read r("TreeLine(\nmBandHeight\n)\nPoly(\ngComment=\"second\"\nData[\n 5, 5\n]\n)\n");
    ASSERT_TRUE(r.ok);
    EXPECT_TRUE(r.data.shapes.empty()); // the tree line has no points; the Poly was swallowed

    Read own("TreeLine(\nData[\n 1, 1\n 2, 2\n]\nmBandHeight\n)\nPoly(\ngComment=\"second\"\nData[\n 5, 5\n]\n)\n");
    ASSERT_TRUE(own.ok);
    ASSERT_EQ(own.data.shapes.size(), 1u);
    EXPECT_EQ(own.data.shapes[0].gType, kTreeLine);
    EXPECT_EQ(own.data.shapes[0].gComment, "second"); // the keys are still swallowed
    EXPECT_EQ(own.data.points[0], (PointList{{1, 1}, {2, 2}}));
}

TEST(PointWalk, InsideAListACloseIsATokenThatFailsThePointTest)
{
    // The first block's key loop ends at the ")" inside its list; its point walk runs to "]".
    Read r("Poly(\nData[\n 1, 1\n)\nPoly(\nData[\n 2, 2\n]\n)\n");
    ASSERT_TRUE(r.ok);
    ASSERT_EQ(r.data.shapes.size(), 2u);
    EXPECT_EQ(r.data.points[0], (PointList{{1, 1}, {2, 2}}));
    EXPECT_EQ(r.data.points[1], (PointList{{2, 2}}));

    // A list the tokens end in ends with them.
    Read end("Flatten(\nData[\n 1, 1\n)\n 3, 4\n");
    ASSERT_TRUE(end.ok);
    ASSERT_EQ(end.data.shapes.size(), 1u);
    EXPECT_EQ(end.data.points[0], (PointList{{1, 1}, {3, 4}}));
}

// The walk as design.md words it, token by token.
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
TEST(PointWalk, BothWaysOfWalkingAgreeWithTheReference)
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
            const PointList expected = ReferenceWalk(t, start);
            PointList got;
            ASSERT_TRUE(walks.Read(start, 1000, got));
            ASSERT_EQ(got, expected) << "round " << round << " start " << start;
            PointList single;
            ReadShapePoints(t, start, single);
            ASSERT_EQ(single, expected) << "round " << round << " start " << start;
            for (std::size_t close = start; close < t.size(); ++close) {
                if (t[close] != ")")
                    continue;
                PointList within;
                if (ReadShapePointsWithin(t, start, close, 1000, within) == PointWalkEnd::Done) {
                    ASSERT_EQ(within, expected) << "round " << round << " start " << start << " close " << close;
                }
            }
        }
    }
}

// Damaged files whose walks overlap cost no more than the points they return, and what all shapes
// hold together stays bounded.
TEST(PointWalk, OverlappingWalksStayCheapAndBounded)
{
    std::string many;
    for (int i = 0; i < 20000; ++i)
        many += "Poly(\nData[\n)\n";
    std::string junk;
    for (int i = 0; i < 20000; ++i)
        junk += "x\n";
    const auto outcome = test::RunWithDeadline(60, [&] {
        ProjectData d;
        // Every list runs to the one "]": nothing but junk in it, so no shape stays.
        if (!ReadProjectText(many + junk + "]\n)\n", d, nullptr) || !d.shapes.empty())
            return false;
        // Each of 20000 shapes would hold the same 100 points: more than the file has and a
        // million more. Refused as a broken shape structure.
        std::string points;
        for (int i = 0; i < 100; ++i)
            points += " 1, 1\n";
        ScriptedUi ui;
        if (ReadProjectText(many + points + "]\n)\n", d, &ui) ||
            ui.Messages() != V{"Unable to open file! Corrupted shape structure..."})
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

// Item 3: a file in which no block word stands gets the corrupted-header message.
TEST(NoBlockWord, BinaryUtf16AndNulFilesHaveACorruptedHeader)
{
    std::string binary;
    for (int k = 0; k < 40; ++k)
        for (int c = 0; c < 256; ++c)
            binary += static_cast<char>(c);
    std::string utf16 = "\xFF\xFE";
    for (char c : test::Crlf("Version(\n 1\n)\nProject(\nName=\"x\"\n)\nPoly(\nData[\n 1, 1\n]\n)\n")) {
        utf16 += c;
        utf16 += '\0';
    }
    const std::string cases[] = {binary, utf16, std::string(1000, '\0'), "hello=world\r\nPoly\r\n",
                                 "   Poly(\r\nData[\r\n 1, 1\r\n]\r\n)\r\n", "\"Project(\"\r\n"};
    for (const std::string& text : cases) {
        SCOPED_TRACE(text.substr(0, 20));
        ProjectData d;
        d.project.Name = "untouched";
        ScriptedUi ui;
        EXPECT_FALSE(ReadProjectText(text, d, &ui));
        EXPECT_EQ(d.project.Name, "untouched");
        ASSERT_EQ(ui.calls.size(), 1u);
        EXPECT_EQ(ui.calls[0].text, "Unable to open file! Corrupted file header...");
        EXPECT_EQ(ui.calls[0].style, MessageStyle::Critical);
    }
}

TEST(NoBlockWord, AnyOneBlockWordIsEnough)
{
    for (const char* text : {"Version(\r\n 1\r\n)\r\n", "Settings(\r\n)\r\n", "Project(\r\n)\r\n",
                             "Forest(\r\n)\r\n", "Exclude(\r\n)\r\n"}) {
        SCOPED_TRACE(text);
        ProjectData d;
        ScriptedUi ui;
        EXPECT_TRUE(ReadProjectText(text, d, &ui));
        EXPECT_TRUE(ui.calls.empty());
    }
    // What the writer makes of an empty project always has its head blocks.
    CBufferS b;
    BuildProjectText(b, ProjectData{});
    ProjectData back;
    EXPECT_TRUE(ReadProjectText(JoinLines(b.lines()), back, nullptr));
}

// Item 4: only the last block of each kind counts, and the head is read in one pass.
TEST(HeadInOnePass, OnlyTheLastBlockOfEachKindCounts)
{
    // The first block's loop takes ")" for MagVar and runs into the second; the second wins all
    // the same.
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
        Read bad(text);
        EXPECT_FALSE(bad.ok);
        EXPECT_EQ(bad.ui.Messages(), V{"Unable to open file! Corrupted file header..."});
        EXPECT_EQ(bad.data.project.Name, "untouched");
    }
}

// 90000 blocks that each close only at the end: 1 MB read in one pass (it took minutes). The
// read runs in a child with a deadline far above what it needs, so a regression fails instead of
// holding the test run.
TEST(HeadInOnePass, NinetyThousandBlocksAreReadWithoutRewalking)
{
    for (const std::string word : {"Project(", "Settings("}) {
        SCOPED_TRACE(word);
        std::string text;
        for (int i = 0; i < 90000; ++i)
            text += word + "\r\n";
        text += ")\r\n";
        const auto outcome = test::RunWithDeadline(60, [&] {
            ProjectData d;
            ScriptedUi ui;
            ProjectRecord fresh;
            ResetProject(fresh);
            return ReadProjectText(text, d, &ui) && ui.calls.empty() && d.project.Name ==
                   (word == "Project(" ? fresh.Name : std::string());
        });
        EXPECT_EQ(outcome, test::ChildOutcome::Passed) << test::OutcomeName(outcome);
    }
}

} // namespace
} // namespace fw
