#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include <osmium/io/any_input.hpp>
#include <osmium/io/any_output.hpp>

#include "editor/Undo.h"
#include "export/ScasmForms.h"
#include "files/ProjectFile.h"
#include "osm/OsmImport.h"
#include "osm/OsmTestSupport.h"

namespace fw::test {
namespace {

constexpr double kLat = 48.35;
constexpr double kLon = 11.78;

// Nodes placed by metres east and north of the reference point.
struct Plan {
    OsmXml xml;
    WorldFrame frame = MakeWorldFrame(kLat, kLon);
    long at(double east, double north, const OsmXml::Tags& tags = {})
    {
        return xml.node(kLat + north * frame.LatDegPerMetre, kLon + east * frame.LonDegPerMetre, tags);
    }
};

// The airport of the tests: an aerodrome at the reference point and one feature of every row.
Plan Airport()
{
    Plan p;
    p.at(0, 0, {{"aeroway", "aerodrome"}, {"name", "Test Field"}});
    // 04L/22R: from its north-east end to its south-west end, so the heading must turn round.
    const long r1 = p.at(600, 600), r2 = p.at(-600, -600);
    p.xml.way({r1, r2}, {{"aeroway", "runway"}, {"ref", "04L/22R"}, {"width", "45"}, {"surface", "concrete"}});
    const long g1 = p.at(-300, 400), g2 = p.at(-300, -400);
    p.xml.way({g1, g2}, {{"aeroway", "runway"}, {"ref", "18"}, {"surface", "grass"}});
    const long t1 = p.at(0, 100), t2 = p.at(100, 100), t3 = p.at(200, 150);
    p.xml.way({t1, t2, t3}, {{"aeroway", "taxiway"}, {"ref", "A"}});
    const long l1 = p.at(0, -100), l2 = p.at(50, -100);
    p.xml.way({l1, l2}, {{"aeroway", "taxilane"}, {"name", "Lane &quot;B&quot; S\xC3\xBC" "d"}, {"width", "12.5 m"}});
    const long a1 = p.at(100, 0), a2 = p.at(300, 0), a3 = p.at(300, -200), a4 = p.at(100, -200);
    p.xml.way({a1, a2, a3, a4, a1}, {{"aeroway", "apron"}, {"name", "Main apron"}});
    const long w1 = p.at(-900, 900), w2 = p.at(-700, 900), w3 = p.at(-800, 700);
    p.xml.way({w1, w2, w3, w1}, {{"natural", "wood"}});
    const long f1 = p.at(-900, -900), f2 = p.at(-700, -900), f3 = p.at(-800, -700);
    p.xml.way({f1, f2, f3, f1}, {{"landuse", "forest"}});
    p.xml.way({a1, t1}, {{"highway", "service"}});
    p.at(10, 10, {{"aeroway", "windsock"}});
    return p;
}

const ShapeRecord* ByComment(const Session& s, const std::string& comment)
{
    for (const auto& sh : s.stores.ShapeStore)
        if (sh.gComment == comment)
            return &sh;
    return nullptr;
}

double Parse(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

TEST(OsmImport, EveryRowOfTheMapping)
{
    Scratch dir;
    Plan p = Airport();
    p.xml.save(dir.path("field.osm"));
    Session s;
    NewSession(s);
    s.config.defaultShapes[DefaultShapeIndex(kPoly)].cColor = RGB(1, 2, 3);

    const OsmImportResult r = ImportOsm(s, dir.path("field.osm"));
    ASSERT_TRUE(r.changed) << r.message;
    // The project had no reference point: it takes the aerodrome's.
    EXPECT_NEAR(s.project.LatitudeDegree, kLat, 1e-7);
    EXPECT_NEAR(s.project.LongitudeDegree, kLon, 1e-7);
    EXPECT_EQ(r.report.runways, 2);
    EXPECT_EQ(r.report.taxiways, 2);
    EXPECT_EQ(r.report.aprons, 1);
    EXPECT_EQ(r.report.forests, 2);
    EXPECT_EQ(r.report.otherWays, 1);
    EXPECT_EQ(r.report.otherNodes, 1);

    // Paint order: forests, then the apron, then the lines.
    ASSERT_EQ(s.stores.ShapeCount(), 5);
    EXPECT_EQ(s.stores.ShapeStore[0].gType, kForest);
    EXPECT_EQ(s.stores.ShapeStore[1].gType, kForest);
    EXPECT_EQ(s.stores.ShapeStore[2].gType, kPoly);

    const ShapeRecord* apron = ByComment(s, "Main apron");
    ASSERT_NE(apron, nullptr);
    EXPECT_EQ(apron->cColor, RGB(1, 2, 3)); // the configuration's default
    EXPECT_EQ(s.stores.PointStore[2].size(), 4u); // the closing node not repeated
    EXPECT_EQ(s.stores.PointStore[2][0], (Point{200, 0}));
    EXPECT_EQ(s.stores.PointStore[2][2], (Point{600, 400}));

    const ShapeRecord* taxiway = ByComment(s, "A");
    ASSERT_NE(taxiway, nullptr);
    EXPECT_EQ(taxiway->gType, kWideLine);
    EXPECT_EQ(taxiway->gLineWidth, 15.0);
    const ShapeRecord* lane = ByComment(s, "Lane 'B' S\xFC" "d");
    ASSERT_NE(lane, nullptr);
    EXPECT_EQ(lane->gLineWidth, 12.5);

    ASSERT_EQ(s.stores.ObjectCount(), 2);
    const ObjectRecord& rwy = s.stores.ObjectStore[0];
    EXPECT_EQ(rwy.oType, kRunway);
    EXPECT_EQ(rwy.PosX, 0);
    EXPECT_EQ(rwy.PosY, 0);
    EXPECT_NEAR(rwy.Rotation, 45.0, 0.01);
    EXPECT_EQ(rwy.Length(), static_cast<std::int16_t>(std::nearbyint(1200 * std::sqrt(2.0) * 3.2808)));
    EXPECT_EQ(rwy.RwyWidth(), 148); // 45 m
    EXPECT_EQ(rwy.RwyNumber(), 4);
    EXPECT_EQ(rwy.RwyDesignator(), 1);
    EXPECT_EQ(rwy.Surface(), kSurfaceConcrete);
    const ObjectRecord& grass = s.stores.ObjectStore[1];
    EXPECT_NEAR(grass.Rotation, 180.0, 0.01);
    EXPECT_EQ(grass.RwyWidth(), 150); // the record's default
    EXPECT_EQ(grass.RwyDesignator(), 0);
    EXPECT_EQ(grass.Surface(), kSurfaceGrass1);
    EXPECT_EQ(grass.PosX, -600);

    // All of it selected; one undo takes it back, a second brings it again.
    EXPECT_EQ(s.editor.selection.state(), 1);
    EXPECT_EQ(s.editor.selection.SelShapeCount(), 5);
    EXPECT_EQ(s.editor.selection.SelObjectCount(), 2);
    Undo(s);
    EXPECT_EQ(s.stores.ShapeCount(), 0);
    EXPECT_EQ(s.stores.ObjectCount(), 0);
    Undo(s);
    EXPECT_EQ(s.stores.ShapeCount(), 5);
}

TEST(OsmImport, PointsComeBackOutOfTheExportWithinAQuarterMetre)
{
    Scratch dir;
    OsmXml xml;
    // Positions that fall between world units, around a reference point far from the equator.
    std::vector<long> ids;
    std::vector<GeoPoint> where;
    for (int i = 0; i < 12; ++i) {
        const GeoPoint g{60.123456 + i * 0.00037131, 24.654321 - i * 0.00052917};
        where.push_back(g);
        ids.push_back(xml.node(g.lat, g.lon));
    }
    xml.way(ids, {{"aeroway", "taxiway"}});
    xml.save(dir.path("line.osm"));
    Session s;
    NewSession(s, 60.125, 24.65);
    ASSERT_TRUE(ImportOsm(s, dir.path("line.osm")).changed);

    GeoFrame frame;
    frame.scale = ComputeExportScale(s.project.LatitudeDegree);
    frame.latitude = s.project.LatitudeDegree;
    frame.longitude = s.project.LongitudeDegree;
    const PointList& pts = s.stores.PointStore.at(0);
    ASSERT_EQ(pts.size(), where.size());
    // A quarter metre on each axis from the half-metre grid, and what the six decimals add.
    const double northSlack = 0.25 + 0.5e-6 / frame.scale.LatDegPerMetre;
    const double eastSlack = 0.25 + 0.5e-6 / frame.scale.LonDegPerMetre;
    const WorldFrame inverse = MakeWorldFrame(frame.latitude, frame.longitude);
    for (std::size_t i = 0; i < pts.size(); ++i) {
        const LatLon out = PointToLatLon(frame, pts[i].X, pts[i].Y, 2.0);
        const double north = (Parse(out.lat) - where[i].lat) / frame.scale.LatDegPerMetre;
        const double east = (Parse(out.lon) - where[i].lon) / frame.scale.LonDegPerMetre;
        EXPECT_LE(std::fabs(north), northSlack) << "point " << i;
        EXPECT_LE(std::fabs(east), eastSlack) << "point " << i;
        // Before rounding the import is the export's rule run backwards.
        const PlanePoint w = ToWorld(inverse, where[i]);
        EXPECT_NEAR(w.x / 2 * frame.scale.LonDegPerMetre + frame.longitude, where[i].lon, 1e-9);
        EXPECT_NEAR(-w.y / 2 * frame.scale.LatDegPerMetre + frame.latitude, where[i].lat, 1e-9);
    }
}

TEST(OsmImport, RunwayHeadingFromEitherDirectionOfTheWay)
{
    Scratch dir;
    Plan p;
    const long a = p.at(0, -1000), b = p.at(173.6, -15.2); // about 085 degrees from a to b
    p.xml.way({a, b}, {{"aeroway", "runway"}, {"ref", "09/27"}});
    p.xml.way({b, a}, {{"aeroway", "runway"}, {"ref", "09/27"}});
    p.xml.way({b, a}, {{"aeroway", "runway"}, {"ref", "27R/09L"}});
    p.xml.way({a, b}, {{"aeroway", "runway"}}); // no ref: the way's own direction
    p.xml.save(dir.path("rwy.osm"));
    Session s;
    NewSession(s, kLat, kLon);
    ASSERT_TRUE(ImportOsm(s, dir.path("rwy.osm")).changed);
    ASSERT_EQ(s.stores.ObjectCount(), 4);
    const double h = std::atan2(173.6, 984.8) * 180 / kExportPi;
    EXPECT_NEAR(s.stores.ObjectStore[0].Rotation, h, 0.05);
    EXPECT_NEAR(s.stores.ObjectStore[1].Rotation, h, 0.05);
    EXPECT_NEAR(s.stores.ObjectStore[2].Rotation, h + 180, 0.05);
    EXPECT_EQ(s.stores.ObjectStore[2].RwyNumber(), 27);
    EXPECT_EQ(s.stores.ObjectStore[2].RwyDesignator(), 3);
    EXPECT_NEAR(s.stores.ObjectStore[3].Rotation, h, 0.05);
}

TEST(OsmImport, LongWaysAreThinnedToThePointLimit)
{
    Scratch dir;
    Plan p;
    std::vector<long> line, ring;
    for (int i = 0; i < 120; ++i)
        line.push_back(p.at(-1000 + i * 15, 200 * std::sin(i / 10.0)));
    for (int i = 0; i < 150; ++i)
        ring.push_back(p.at(400 * std::cos(i * 2 * kExportPi / 150), 300 * std::sin(i * 2 * kExportPi / 150)));
    ring.push_back(ring.front());
    p.xml.way(line, {{"aeroway", "taxiway"}});
    p.xml.way(ring, {{"aeroway", "apron"}});
    p.xml.save(dir.path("long.osm"));
    Session s;
    NewSession(s, kLat, kLon);
    const OsmImportResult r = ImportOsm(s, dir.path("long.osm"));
    ASSERT_TRUE(r.changed);
    EXPECT_EQ(r.report.simplified, 2);
    EXPECT_GT(r.report.largestDeviation, 0);
    EXPECT_LT(r.report.largestDeviation, 5);
    EXPECT_NE(r.report.Text().find("Simplified: 2 ways"), std::string::npos);
    const PointList& apron = s.stores.PointStore[0];
    const PointList& taxiway = s.stores.PointStore[1];
    EXPECT_EQ(apron.size(), 80u);
    EXPECT_EQ(taxiway.size(), 80u);
    EXPECT_EQ(taxiway.front(), (Point{-2000, 0}));
    EXPECT_EQ(taxiway.back().X, -2000 + 119 * 30);
}

TEST(OsmImport, LeftOutFeaturesAreCountedWithTheirReason)
{
    Scratch dir;
    Plan p;
    const long a = p.at(0, 0), b = p.at(100, 0), c = p.at(100, 100), far = p.at(6000, 0);
    p.xml.way({a, b, 999}, {{"aeroway", "taxiway"}});         // a node the extract doesn't hold
    p.xml.way({a, far}, {{"aeroway", "taxiway"}});            // 6 km east: outside the work area
    p.xml.way({a, b, c}, {{"aeroway", "apron"}});             // not closed
    p.xml.way({a, b, c, a}, {{"natural", "wood"}});
    p.xml.way({a, b, c, a}, {{"aeroway", "runway"}});          // an outline has no two ends
    p.xml.way({a, b}, {{"building", "hangar"}});
    p.xml.save(dir.path("bad.osm"));
    Session s;
    NewSession(s, kLat, kLon);
    // The project can take one more shape only.
    for (int i = 0; i < kMaxShapes - 1; ++i) {
        ShapeRecord sh;
        ResetShape(sh, kPoly);
        AppendShape(s.stores, sh, {{0, 0}, {1, 0}, {0, 1}});
    }
    p.xml.way({a, c}, {{"aeroway", "taxiway"}});
    p.xml.save(dir.path("bad.osm"));
    const OsmImportResult r = ImportOsm(s, dir.path("bad.osm"));
    ASSERT_TRUE(r.changed);
    EXPECT_EQ(s.stores.ShapeCount(), kMaxShapes);
    EXPECT_EQ(r.report.forests, 1);
    const auto& k = r.report.skipped;
    EXPECT_EQ(k.at({"taxiway", kSkipMissingNode}), 1);
    EXPECT_EQ(k.at({"taxiway", kSkipOutside}), 1);
    EXPECT_EQ(k.at({"apron", kSkipNotClosed}), 1);
    EXPECT_EQ(k.at({"runway", kSkipRunwayArea}), 1);
    EXPECT_EQ(k.at({"taxiway", kSkipShapesFull}), 1);
    EXPECT_EQ(r.report.otherWays, 1);
    const std::string text = r.report.Text();
    EXPECT_NE(text.find("Skipped: 1 taxiway: names a node the extract doesn't hold."), std::string::npos) << text;
    EXPECT_NE(text.find("Skipped: 1 apron: is not a closed way."), std::string::npos) << text;
}

TEST(OsmImport, MultipolygonApronTakesItsOuterRing)
{
    Scratch dir;
    Plan p;
    const long n1 = p.at(0, 0), n2 = p.at(200, 0), n3 = p.at(200, 200), n4 = p.at(0, 200);
    const long i1 = p.at(50, 50), i2 = p.at(100, 50), i3 = p.at(100, 100);
    const long w1 = p.xml.way({n1, n2, n3}, {});
    const long w2 = p.xml.way({n3, n4, n1}, {});
    const long w3 = p.xml.way({i1, i2, i3, i1}, {});
    p.xml.multipolygon({{w1, "outer"}, {w2, "outer"}, {w3, "inner"}}, {{"aeroway", "apron"}, {"ref", "P1"}});
    p.xml.save(dir.path("mp.osm"));
    Session s;
    NewSession(s, kLat, kLon);
    const OsmImportResult r = ImportOsm(s, dir.path("mp.osm"));
    ASSERT_TRUE(r.changed) << r.report.Text();
    ASSERT_EQ(s.stores.ShapeCount(), 1);
    EXPECT_EQ(s.stores.ShapeStore[0].gType, kPoly);
    EXPECT_EQ(s.stores.ShapeStore[0].gComment, "P1");
    const PointList& pts = s.stores.PointStore[0];
    ASSERT_EQ(pts.size(), 4u);
    for (const Point& q : {Point{0, 0}, Point{400, 0}, Point{400, -400}, Point{0, -400}})
        EXPECT_NE(std::find(pts.begin(), pts.end(), q), pts.end()) << q.X << "," << q.Y;
}

TEST(OsmImport, DamagedOrForeignFilesChangeNothing)
{
    Scratch dir;
    Plan p = Airport();
    const std::string text = p.xml.text();
    std::ofstream(dir.path("cut.osm"), std::ios::binary) << text.substr(0, text.size() / 2);
    std::ofstream(dir.path("project.osm"), std::ios::binary) << "Version( 1 )\r\n";
    std::filesystem::create_directory(dir.path("folder.osm"));
    for (const char* name : {"cut.osm", "project.osm", "folder.osm", "missing.osm"}) {
        Session s;
        NewSession(s);
        const OsmImportResult r = ImportOsm(s, dir.path(name));
        EXPECT_FALSE(r.read) << name;
        EXPECT_FALSE(r.changed);
        EXPECT_EQ(r.message.rfind(kOsmReadFailed, 0), 0u) << r.message;
        EXPECT_NE(r.message.find(name), std::string::npos) << r.message;
        EXPECT_EQ(s.stores.ShapeCount(), 0);
        EXPECT_EQ(s.project.LatitudeDegree, 0);
        EXPECT_EQ(s.canUndo, 0);
        EXPECT_EQ(s.dirty, 0);
    }
}

TEST(OsmImport, ProgressRunsOnceToTheEndAndACancelChangesNothing)
{
    Scratch dir;
    Airport().xml.save(dir.path("field.osm"));
    Session s;
    NewSession(s);
    std::uint64_t last = 0, total = 0;
    OsmImportOptions watch;
    watch.progress = [&](std::uint64_t done, std::uint64_t size) {
        EXPECT_GE(done, last);
        last = done;
        total = size;
        return true;
    };
    ASSERT_TRUE(ImportOsm(s, dir.path("field.osm"), watch).changed);
    EXPECT_GT(total, 0u);
    EXPECT_EQ(last, total);

    Session cancelled;
    NewSession(cancelled);
    OsmImportOptions cancel;
    cancel.progress = [](std::uint64_t, std::uint64_t) { return false; };
    const OsmImportResult r = ImportOsm(cancelled, dir.path("field.osm"), cancel);
    EXPECT_FALSE(r.read);
    EXPECT_TRUE(r.message.empty());
    EXPECT_EQ(cancelled.stores.ShapeCount(), 0);
    EXPECT_EQ(cancelled.project.LatitudeDegree, 0);
    EXPECT_EQ(cancelled.canUndo, 0);
}

// The same extract as .osm.pbf and .osm.bz2, written by the library from the XML.
TEST(OsmImport, PbfAndBzip2ReadAsTheXmlDoes)
{
    Scratch dir;
    Airport().xml.save(dir.path("field.osm"));
    Session xml;
    NewSession(xml);
    ASSERT_TRUE(ImportOsm(xml, dir.path("field.osm")).changed);
    for (const char* name : {"field.osm.pbf", "field.osm.bz2"}) {
        {
            osmium::io::Reader in{dir.path("field.osm")};
            osmium::io::Writer out{dir.path(name)};
            while (osmium::memory::Buffer b = in.read())
                out(std::move(b));
            out.close();
            in.close();
        }
        Session s;
        NewSession(s);
        const OsmImportResult r = ImportOsm(s, dir.path(name));
        ASSERT_TRUE(r.changed) << name << ": " << r.message;
        EXPECT_EQ(s.stores.PointStore, xml.stores.PointStore) << name;
        ASSERT_EQ(s.stores.ObjectCount(), xml.stores.ObjectCount());
        EXPECT_EQ(s.stores.ObjectStore[0].PosX, xml.stores.ObjectStore[0].PosX);
        EXPECT_EQ(s.stores.ObjectStore[0].Rotation, xml.stores.ObjectStore[0].Rotation);
    }
}

TEST(OsmImport, CommandLineWritesTheProjectOrNothing)
{
    Scratch dir;
    Airport().xml.save(dir.path("field.osm"));
    std::ofstream(dir.path("cut.osm"), std::ios::binary) << "<osm version=\"0.6\"><node id=\"1\" lat=";
    ProjectData empty;
    ResetProject(empty.project);
    ResetShowFlags(empty.showFlags);
    ASSERT_TRUE(WriteProjectFile(dir.path("new.fwt"), empty, nullptr));
    const std::string cli = std::string("FIELDWRIGHT_HOME=") + FW_PROGRAM_DIR + " " + FW_CLI + " import-osm ";
    const std::string ok = cli + dir.path("new.fwt") + " " + dir.path("field.osm") + " " + dir.path("out.fwt") +
                           " > " + dir.path("report.txt");
    ASSERT_EQ(std::system(ok.c_str()), 0);
    ProjectData out;
    ASSERT_TRUE(ReadProjectFile(dir.path("out.fwt"), out, nullptr));
    EXPECT_EQ(out.shapes.size(), 5u);
    EXPECT_EQ(out.objects.size(), 2u);
    EXPECT_NEAR(out.project.LatitudeDegree, kLat, 1e-6);
    std::ifstream report(dir.path("report.txt"));
    const std::string printed((std::istreambuf_iterator<char>(report)), {});
    EXPECT_NE(printed.find("Imported: 2 runways, 2 taxiways, 1 apron, 2 forests."), std::string::npos) << printed;

    const std::string bad = cli + dir.path("new.fwt") + " " + dir.path("cut.osm") + " " + dir.path("bad.fwt") +
                            " 2> " + dir.path("err.txt");
    EXPECT_NE(std::system(bad.c_str()), 0);
    EXPECT_FALSE(std::filesystem::exists(dir.path("bad.fwt")));
}

} // namespace
} // namespace fw::test
