#include <gtest/gtest.h>

#include "FilesTestSupport.h"
#include "files/ProjectFile.h"
#include "files/ProjectJson.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

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

TEST(RoundTrip, EveryTypeKeepsEverySavedField)
{
    const ProjectData in = test::SampleProject("/opt/fw/");
    const ProjectData out = WriteAndRead(in);
    ASSERT_EQ(out.shapes.size(), 7u);
    ASSERT_EQ(out.objects.size(), 7u);
    EXPECT_EQ(ProjectToJson(out), ProjectToJson(in));
}

TEST(RoundTrip, DefaultsOfEveryTypeSurvive)
{
    ProjectData in;
    in.version = 1;
    ResetShowFlags(in.showFlags);
    in.showFlags.BackImagescale = 1;
    ResetProject(in.project);
    for (int type = kPoly; type <= kForest; ++type) {
        ShapeRecord s;
        ResetShape(s, type);
        PointList pts{{-3, 4}, {5, 6}, {7, -8}, {0, 0}};
        UpdateShapeGeometry(s, pts);
        in.shapes.push_back(s);
        in.points.push_back(pts);
    }
    for (int type : {kRunway, kApi, kVor, kNdb, kInit, kExclude, kSign}) {
        ObjectRecord o;
        ResetObject(o, type, "/opt/fw/");
        in.objects.push_back(o);
    }
    // An Api elevation of 0 is below the reader's bound: it comes back as the default 0 anyway.
    EXPECT_EQ(ProjectToJson(WriteAndRead(in)), ProjectToJson(in));
}

TEST(RoundTrip, LosesExactlyWhatTheFormatLoses)
{
    ProjectData in = test::SampleProject("/opt/fw/");
    ProjectData expected = in;

    in.showFlags.ShowForest = 0; // no key
    in.showFlags.ShowSign = 0;
    in.shapes[2].vLayer = 4;     // a wide line keeps no layer
    in.shapes[0].mTexMap[0] = 77; // a Poly writes no mapping
    in.shapes[0].gKeep = 1;

    ObjectRecord& rwy = in.objects[0];
    rwy.Surface() = kSurfaceTar;
    expected.objects[0].Surface() = kSurfaceAsphalt;
    rwy.Ils3dObjectN() = 1;
    rwy.Ils3dObjectF() = 1;
    rwy.IlsGlideSlopeN() = 0;
    rwy.IlsGlideSlopeF() = 0;
    rwy.flags[11] = 5; // no meaning, no key
    rwy.oKeep = 1;

    ObjectRecord& api = in.objects[1];
    api.DesignLast = 3;
    api.DesignPoints[0] = {1, 1};
    api.Rotation = -1;   // a macro without heading; rejected on reading
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

// Through the text in memory, without a file.
ProjectData Reread(const ProjectData& in)
{
    CBufferS buffer;
    BuildProjectText(buffer, in);
    ProjectData out;
    EXPECT_TRUE(ReadProjectText(JoinLines(buffer.lines()), out, nullptr));
    return out;
}

// Every time mask and load-flag set, every layer and every line type come back as written.
TEST(RoundTrip, DerivedStringsAndEnumeratedNames)
{
    ProjectData in;
    for (int mask = 0; mask < 8; ++mask)
        for (int flags = 0; flags < 16; ++flags) {
            ShapeRecord s;
            ResetShape(s, kTreeLine);
            s.vTime = static_cast<std::uint8_t>(mask);
            for (int i = 0; i < 4; ++i)
                s.tLoadflag[i] = (flags >> i) & 1;
            in.shapes.push_back(s);
        }
    for (int layer = 0; layer < 10; ++layer) {
        ShapeRecord s;
        ResetShape(s, kPoly);
        s.vLayer = static_cast<std::uint8_t>(layer);
        in.shapes.push_back(s);
    }
    for (int lt = 0; lt < 4; ++lt) {
        ShapeRecord w;
        ResetShape(w, kWideLine);
        w.gLineType = static_cast<std::uint8_t>(lt);
        in.shapes.push_back(w);
    }
    in.points.assign(in.shapes.size(), PointList{{1, 1}});
    const ProjectData out = Reread(in);
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
