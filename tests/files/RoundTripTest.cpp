#include <gtest/gtest.h>

#include "FilesTestSupport.h"
#include "files/ProjectFile.h"
#include "files/ProjectJson.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

using test::Fixture;

// The golden text was checked line by line against the format's key tables.
TEST(ProjectWriter, EveryTypeMatchesTheGoldenText)
{
    const ProjectData data = test::SampleProject("/opt/fw/");
    CBufferS buffer;
    BuildProjectText(buffer, data);
    const std::string text = JoinLines(buffer.lines());
    if (std::getenv("FW_WRITE_GOLDEN"))
        test::WriteText(Fixture("all_types.fwt"), text);
    const std::string golden = test::ReadText(Fixture("all_types.fwt"));
    EXPECT_EQ(text, golden);
    // The same bytes joined as they are made, in memory and on disk.
    EXPECT_EQ(ProjectText(ViewOf(data)), golden);
    test::ScratchFolder dir;
    ASSERT_TRUE(WriteProjectFile(dir.path("out.fwt"), data, nullptr));
    EXPECT_EQ(test::ReadText(dir.path("out.fwt")), golden);

    // Records of no known type are left out.
    ProjectData bad;
    bad.shapes.resize(1);
    bad.shapes[0].gType = 9;
    bad.points = {{{1, 1}}};
    bad.objects.resize(1);
    bad.objects[0].oType = 14;
    buffer = {};
    BuildSelectionText(buffer, bad.points, bad.shapes, bad.objects);
    ProjectData back;
    ASSERT_TRUE(ReadProjectText(JoinLines(buffer.lines()), back, nullptr));
    EXPECT_TRUE(back.shapes.empty());
    EXPECT_TRUE(back.objects.empty());
}

ProjectData WriteAndRead(const ProjectData& in)
{
    test::ScratchFolder dir;
    ScriptedUi ui;
    EXPECT_TRUE(WriteProjectFile(dir.path("p.fwt"), in, &ui));
    ProjectData out;
    EXPECT_TRUE(ReadProjectFile(dir.path("p.fwt"), out, &ui, "/opt/fw/"));
    EXPECT_TRUE(ui.calls.empty());
    return out;
}

// Every field the sample sets and every default come back; exactly what the format loses is lost.
TEST(RoundTrip, KeepsEverySavedFieldAndLosesExactlyWhatTheFormatLoses)
{
    ProjectData in = test::SampleProject("/opt/fw/");
    EXPECT_EQ(ProjectToJson(WriteAndRead(in)), ProjectToJson(in));

    ProjectData defaults;
    defaults.version = 1;
    ResetShowFlags(defaults.showFlags);
    defaults.showFlags.BackImagescale = 1;
    ResetProject(defaults.project);
    for (int type = kPoly; type <= kForest; ++type) {
        ShapeRecord s;
        ResetShape(s, type);
        PointList pts{{-3, 4}, {5, 6}, {7, -8}, {0, 0}};
        UpdateShapeGeometry(s, pts);
        defaults.shapes.push_back(s);
        defaults.points.push_back(pts);
    }
    for (int type : {kRunway, kApi, kVor, kNdb, kInit, kExclude, kSign}) {
        defaults.objects.emplace_back();
        ResetObject(defaults.objects.back(), type, "/opt/fw/");
    }
    // An Api elevation of 0 is below the reader's bound: it comes back as the default 0 anyway.
    EXPECT_EQ(ProjectToJson(WriteAndRead(defaults)), ProjectToJson(defaults));

    ProjectData expected = in;
    in.showFlags.ShowForest = in.showFlags.ShowSign = 0; // no key
    in.shapes[2].vLayer = 4;                             // a wide line keeps no layer
    in.shapes[0].mTexMap[0] = 77;                        // a Poly writes no mapping
    in.shapes[0].gKeep = 1;
    ObjectRecord& rwy = in.objects[0];
    rwy.Surface() = kSurfaceTar;
    expected.objects[0].Surface() = kSurfaceAsphalt;
    rwy.Ils3dObjectN() = rwy.Ils3dObjectF() = 1;
    rwy.IlsGlideSlopeN() = rwy.IlsGlideSlopeF() = 0;
    rwy.flags[11] = 5; // no meaning, no key
    rwy.oKeep = 1;
    ObjectRecord& api = in.objects[1];
    api.DesignLast = 3;
    api.DesignPoints[0] = {1, 1};
    api.Rotation = -1; // a macro without heading; rejected on reading
    expected.objects[1].Rotation = 0;
    api.Elevation() = 0.5;
    expected.objects[1].Elevation() = 0;
    api.DetailLevel() = 0; // "Very sparse" is written and rejected
    expected.objects[1].DetailLevel() = 2;
    in.objects[4].doubles = {1, 2, 3, 4}; // Init's doubles are not saved
    ProjectData out = WriteAndRead(in);
    EXPECT_EQ(out.shapes[0].gKeep, 0);
    EXPECT_EQ(out.objects[0].oKeep, 0);
    EXPECT_EQ(ProjectToJson(out), ProjectToJson(expected));
}

// Every time mask and load-flag set, every layer and every line type come back as written.
TEST(RoundTrip, DerivedStringsAndEnumeratedNames)
{
    ProjectData in;
    auto add = [&](int type) -> ShapeRecord& {
        in.shapes.emplace_back();
        ResetShape(in.shapes.back(), type);
        return in.shapes.back();
    };
    for (int mask = 0; mask < 8; ++mask)
        for (int flags = 0; flags < 16; ++flags) {
            ShapeRecord& s = add(kTreeLine);
            s.vTime = static_cast<std::uint8_t>(mask);
            for (int i = 0; i < 4; ++i)
                s.tLoadflag[i] = (flags >> i) & 1;
        }
    for (int layer = 0; layer < 10; ++layer)
        add(kPoly).vLayer = static_cast<std::uint8_t>(layer);
    for (int lt = 0; lt < 4; ++lt)
        add(kWideLine).gLineType = static_cast<std::uint8_t>(lt);
    in.points.assign(in.shapes.size(), PointList{{1, 1}});
    CBufferS buffer;
    BuildProjectText(buffer, in);
    ProjectData out;
    ASSERT_TRUE(ReadProjectText(JoinLines(buffer.lines()), out, nullptr));
    ASSERT_EQ(out.shapes.size(), in.shapes.size());
    for (std::size_t i = 0; i < in.shapes.size(); ++i) {
        EXPECT_EQ(out.shapes[i].vTime, in.shapes[i].vTime) << i;
        EXPECT_EQ(out.shapes[i].tLoadflag, in.shapes[i].tLoadflag) << i;
        EXPECT_EQ(out.shapes[i].vLayer, in.shapes[i].gType == kWideLine ? 0 : in.shapes[i].vLayer) << i;
        EXPECT_EQ(out.shapes[i].gLineType, in.shapes[i].gLineType) << i;
    }
}

} // namespace
} // namespace fw
