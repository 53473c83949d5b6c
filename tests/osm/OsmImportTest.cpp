#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <tuple>

#include <gtest/gtest.h>
#include <unistd.h>

#include <osmium/io/any_input.hpp>
#include <osmium/io/any_output.hpp>

#include "core/Session.h"
#include "editor/Undo.h"
#include "export/ScasmForms.h"
#include "files/ProjectFile.h"
#include "osm/OsmImport.h"

namespace fw::test {
namespace {

constexpr double kLat = 48.35;
constexpr double kLon = 11.78;
using Tags = std::map<std::string, std::string>;

// An extract in OSM XML, its nodes placed by metres east and north of the reference point.
// Node ids from 1, way ids from 100, relation ids from 1000.
struct Plan {
    WorldFrame frame = MakeWorldFrame(kLat, kLon);
    std::string nodes, ways, relations;
    long nextNode = 1, nextWay = 100, nextRelation = 1000;

    static std::string TagLines(const Tags& tags)
    {
        std::string lines;
        for (const auto& [k, v] : tags)
            lines += "<tag k=\"" + k + "\" v=\"" + v + "\"/>\n";
        return lines;
    }
    long node(double lat, double lon, const Tags& tags = {})
    {
        char head[128];
        std::snprintf(head, sizeof head, "<node id=\"%ld\" version=\"1\" lat=\"%.7f\" lon=\"%.7f\">\n", nextNode, lat,
                      lon);
        nodes += head + TagLines(tags) + "</node>\n";
        return nextNode++;
    }
    long at(double east, double north, const Tags& tags = {})
    {
        return node(kLat + north * frame.LatDegPerMetre, kLon + east * frame.LonDegPerMetre, tags);
    }
    long way(const std::vector<long>& refs, const Tags& tags)
    {
        ways += "<way id=\"" + std::to_string(nextWay) + "\" version=\"1\">\n";
        for (long n : refs)
            ways += "<nd ref=\"" + std::to_string(n) + "\"/>\n";
        ways += TagLines(tags) + "</way>\n";
        return nextWay++;
    }
    void multipolygon(const std::vector<std::pair<long, std::string>>& members, Tags tags)
    {
        tags["type"] = "multipolygon";
        relations += "<relation id=\"" + std::to_string(nextRelation++) + "\" version=\"1\">\n";
        for (const auto& [w, role] : members)
            relations += "<member type=\"way\" ref=\"" + std::to_string(w) + "\" role=\"" + role + "\"/>\n";
        relations += TagLines(tags) + "</relation>\n";
    }
    std::string text() const
    {
        return "<?xml version='1.0' encoding='UTF-8'?>\n<osm version=\"0.6\" generator=\"test\">\n" + nodes + ways +
               relations + "</osm>\n";
    }
};

// A folder of its own under the system's temporary folder, gone after the test.
struct Scratch {
    std::string root = (std::filesystem::temp_directory_path() / "fw-osm-XXXXXX").string();
    Scratch() { ::mkdtemp(root.data()); }
    ~Scratch() { std::filesystem::remove_all(root); }
    std::string path(const std::string& name) const { return root + "/" + name; }
    std::string write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }
};

void NewSession(Session& s, double lat = 0, double lon = 0)
{
    ResetAtStart(s);
    s.programFolder = FW_PROGRAM_DIR;
    ResetConfig(s.config, s.programFolder);
    ClearStores(s.stores);
    s.project.LatitudeDegree = lat;
    s.project.LongitudeDegree = lon;
}

OsmImportResult Import(Session& s, const Plan& p, double lat = kLat, double lon = kLon)
{
    Scratch dir;
    NewSession(s, lat, lon);
    return ImportOsm(s, dir.write("extract.osm", p.text()));
}

// The airport of the tests: an aerodrome at the reference point and one feature of every row.
std::string Airport()
{
    Plan p;
    p.at(0, 0, {{"aeroway", "aerodrome"}, {"name", "Test Field"}});
    // 04L/22R: from its north-east end to its south-west end, so the heading must turn round.
    p.way({p.at(600, 600), p.at(-600, -600)},
          {{"aeroway", "runway"}, {"ref", "04L/22R"}, {"width", "45"}, {"surface", "concrete"}});
    p.way({p.at(-300, 400), p.at(-300, -400)}, {{"aeroway", "runway"}, {"ref", "18"}, {"surface", "grass"}});
    const long t1 = p.at(0, 100);
    p.way({t1, p.at(100, 100), p.at(200, 150)}, {{"aeroway", "taxiway"}, {"ref", "A"}});
    p.way({p.at(0, -100), p.at(50, -100)},
          {{"aeroway", "taxilane"}, {"name", "Lane &quot;B&quot; S\xC3\xBC" "d"}, {"width", "12.5 m"}});
    const long a1 = p.at(100, 0);
    p.way({a1, p.at(300, 0), p.at(300, -200), p.at(100, -200), a1}, {{"aeroway", "apron"}, {"name", "Main apron"}});
    const long w1 = p.at(-900, 900);
    p.way({w1, p.at(-700, 900), p.at(-800, 700), w1}, {{"natural", "wood"}});
    const long f1 = p.at(-900, -900);
    p.way({f1, p.at(-700, -900), p.at(-800, -700), f1}, {{"landuse", "forest"}});
    p.way({a1, t1}, {{"highway", "service"}});
    p.at(10, 10, {{"aeroway", "windsock"}});
    return p.text();
}

// The same extract as .osm, .osm.pbf and .osm.bz2, the last two written by the library from the XML.
TEST(OsmImport, EveryRowOfTheMappingInEveryFormat)
{
    Scratch dir;
    const std::string field = dir.write("field.osm", Airport());
    for (const char* name : {"field.osm.pbf", "field.osm.bz2"}) {
        osmium::io::Reader in{field};
        osmium::io::Writer out{dir.path(name)};
        while (osmium::memory::Buffer b = in.read())
            out(std::move(b));
        out.close();
        in.close();
    }
    for (const char* name : {"field.osm", "field.osm.pbf", "field.osm.bz2"}) {
        SCOPED_TRACE(name);
        Session s;
        NewSession(s);
        s.config.defaultShapes[DefaultShapeIndex(kPoly)].cColor = RGB(1, 2, 3);
        // The read reports its progress, never backwards, up to the end.
        std::uint64_t last = 0, total = 0;
        OsmImportOptions watch;
        watch.progress = [&](std::uint64_t done, std::uint64_t size) {
            EXPECT_GE(done, last);
            last = done;
            total = size;
            return true;
        };
        const OsmImportResult r = ImportOsm(s, dir.path(name), watch);
        ASSERT_TRUE(r.changed) << r.message;
        EXPECT_GT(total, 0u);
        EXPECT_EQ(last, total);
        // The project had no reference point: it takes the aerodrome's.
        EXPECT_NEAR(s.project.LatitudeDegree, kLat, 1e-7);
        EXPECT_NEAR(s.project.LongitudeDegree, kLon, 1e-7);
        const ImportReport& n = r.report;
        EXPECT_EQ((std::array{n.runways, n.taxiways, n.aprons, n.forests, n.otherWays, n.otherNodes}),
                  (std::array{2, 2, 1, 2, 1, 1}));

        // Paint order: forests, the apron (its closing node not repeated), then the lines, whose widths
        // are the taxiway's default and a width tag with its unit; the polygon takes the default colour.
        std::vector<std::tuple<int, std::string, std::size_t, double>> shapes;
        for (int i = 0; i < s.stores.ShapeCount(); ++i) {
            const ShapeRecord& sh = s.stores.ShapeStore[i];
            shapes.emplace_back(sh.gType, sh.gComment, s.stores.PointStore[i].size(),
                                sh.gType == kWideLine ? sh.gLineWidth : 0);
        }
        EXPECT_EQ(shapes, (decltype(shapes){{kForest, "", 3, 0},
                                            {kForest, "", 3, 0},
                                            {kPoly, "Main apron", 4, 0},
                                            {kWideLine, "A", 3, 15.0},
                                            {kWideLine, "Lane 'B' S\xFC" "d", 2, 12.5}}));
        EXPECT_EQ(s.stores.ShapeStore[2].cColor, RGB(1, 2, 3));
        EXPECT_EQ(s.stores.PointStore[2], (PointList{{200, 0}, {600, 0}, {600, 400}, {200, 400}}));

        // The runways' headings are RunwayHeading's; here their type, centre, width (45 m, or the
        // record's default), number, designator and surface.
        std::vector<std::array<int, 7>> runways;
        for (const ObjectRecord& o : s.stores.ObjectStore)
            runways.push_back({o.oType, o.PosX, o.PosY, o.RwyWidth(), o.RwyNumber(), o.RwyDesignator(), o.Surface()});
        EXPECT_EQ(runways, (decltype(runways){{kRunway, 0, 0, 148, 4, 1, kSurfaceConcrete},
                                              {kRunway, -600, 0, 150, 18, 0, kSurfaceGrass1}}));
        EXPECT_EQ(s.stores.ObjectStore[0].Length(), std::int16_t(std::nearbyint(1200 * std::sqrt(2.0) * 3.2808)));

        // All of it selected; one undo takes it back, a second brings it again.
        const auto& sel = s.editor.selection;
        EXPECT_EQ((std::array<int, 3>{sel.state(), sel.SelShapeCount(), sel.SelObjectCount()}), (std::array{1, 5, 2}));
        Undo(s);
        EXPECT_EQ(s.stores.ShapeCount() + s.stores.ObjectCount(), 0);
        Undo(s);
        EXPECT_EQ(s.stores.ShapeCount(), 5);
    }
}

TEST(OsmImport, PointsComeBackOutOfTheExportWithinAQuarterMetre)
{
    // Positions that fall between world units, around a reference point far from the equator.
    Plan p;
    std::vector<long> ids;
    std::vector<GeoPoint> where;
    for (int i = 0; i < 12; ++i) {
        where.push_back({60.123456 + i * 0.00037131, 24.654321 - i * 0.00052917});
        ids.push_back(p.node(where.back().lat, where.back().lon));
    }
    p.way(ids, {{"aeroway", "taxiway"}});
    Session s;
    ASSERT_TRUE(Import(s, p, 60.125, 24.65).changed);

    const GeoFrame frame{ComputeExportScale(60.125), 60.125, 24.65, {}};
    const PointList& pts = s.stores.PointStore.at(0);
    ASSERT_EQ(pts.size(), where.size());
    // A quarter metre on each axis from the half-metre grid, and what the six decimals add.
    const double northSlack = 0.25 + 0.5e-6 / frame.scale.LatDegPerMetre;
    const double eastSlack = 0.25 + 0.5e-6 / frame.scale.LonDegPerMetre;
    for (std::size_t i = 0; i < pts.size(); ++i) {
        const LatLon out = PointToLatLon(frame, pts[i].X, pts[i].Y, 2.0);
        const double north = (std::strtod(out.lat.c_str(), nullptr) - where[i].lat) / frame.scale.LatDegPerMetre;
        const double east = (std::strtod(out.lon.c_str(), nullptr) - where[i].lon) / frame.scale.LonDegPerMetre;
        EXPECT_LE(std::fabs(north), northSlack) << "point " << i;
        EXPECT_LE(std::fabs(east), eastSlack) << "point " << i;
    }
}

TEST(OsmImport, RunwayHeadingFromEitherDirectionOfTheWay)
{
    Plan p;
    const long a = p.at(0, -1000), b = p.at(173.6, -15.2); // about 085 degrees from a to b
    const double h = std::atan2(173.6, 984.8) * 180 / kExportPi;
    const struct {
        long from, to;
        const char* ref; // none: the way's own direction
        double heading;
    } cases[] = {{a, b, "09/27", h}, {b, a, "09/27", h}, {b, a, "27R/09L", h + 180}, {a, b, nullptr, h}};
    for (const auto& c : cases)
        p.way({c.from, c.to}, c.ref ? Tags{{"aeroway", "runway"}, {"ref", c.ref}} : Tags{{"aeroway", "runway"}});
    Session s;
    ASSERT_TRUE(Import(s, p).changed);
    ASSERT_EQ(s.stores.ObjectCount(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_NEAR(s.stores.ObjectStore[i].Rotation, cases[i].heading, 0.05) << i;
    EXPECT_EQ(s.stores.ObjectStore[2].RwyNumber(), 27);
    EXPECT_EQ(s.stores.ObjectStore[2].RwyDesignator(), 3);
}

TEST(OsmImport, LongWaysAreThinnedToThePointLimit)
{
    Plan p;
    std::vector<long> line, ring;
    for (int i = 0; i < 120; ++i)
        line.push_back(p.at(-1000 + i * 15, 200 * std::sin(i / 10.0)));
    for (int i = 0; i < 150; ++i)
        ring.push_back(p.at(400 * std::cos(i * 2 * kExportPi / 150), 300 * std::sin(i * 2 * kExportPi / 150)));
    ring.push_back(ring.front());
    p.way(line, {{"aeroway", "taxiway"}});
    p.way(ring, {{"aeroway", "apron"}});
    Session s;
    const OsmImportResult r = Import(s, p);
    ASSERT_TRUE(r.changed);
    EXPECT_GT(r.report.largestDeviation, 0);
    EXPECT_LT(r.report.largestDeviation, 5);
    EXPECT_NE(r.report.Text().find("Simplified: 2 ways"), std::string::npos);
    const PointList& taxiway = s.stores.PointStore[1];
    EXPECT_EQ(s.stores.PointStore[0].size(), 80u);
    EXPECT_EQ(taxiway.size(), 80u);
    EXPECT_EQ(taxiway.front(), (Point{-2000, 0}));
    EXPECT_EQ(taxiway.back().X, -2000 + 119 * 30);
}

TEST(OsmImport, LeftOutFeaturesAreCountedWithTheirReason)
{
    Plan p;
    const long a = p.at(0, 0), b = p.at(100, 0), c = p.at(100, 100), far = p.at(6000, 0);
    p.way({a, b, c, a}, {{"natural", "wood"}}); // takes the project's last free shape
    p.way({a, b}, {{"building", "hangar"}});
    const struct {
        std::vector<long> nodes;
        const char* aeroway;
        const char* reason;
    } cases[] = {
        {{a, b, 999}, "taxiway", kSkipMissingNode},
        {{a, far}, "taxiway", kSkipOutside}, // 6 km east
        {{a, b, c}, "apron", kSkipNotClosed},
        {{a, b, c, a}, "runway", kSkipRunwayArea}, // an outline has no two ends
        {{a, c}, "taxiway", kSkipShapesFull},
    };
    for (const auto& k : cases)
        p.way(k.nodes, {{"aeroway", k.aeroway}});
    Session s;
    NewSession(s, kLat, kLon);
    for (int i = 0; i < kMaxShapes - 1; ++i) {
        ShapeRecord sh;
        ResetShape(sh, kPoly);
        AppendShape(s.stores, sh, {{0, 0}, {1, 0}, {0, 1}});
    }
    Scratch dir;
    const OsmImportResult r = ImportOsm(s, dir.write("bad.osm", p.text()));
    ASSERT_TRUE(r.changed);
    EXPECT_EQ(s.stores.ShapeCount(), kMaxShapes);
    EXPECT_EQ(r.report.forests, 1);
    EXPECT_EQ(r.report.otherWays, 1);
    for (const auto& k : cases)
        EXPECT_EQ(r.report.skipped.at({k.aeroway, k.reason}), 1) << k.reason;
    const std::string text = r.report.Text();
    EXPECT_NE(text.find("Skipped: 1 apron: is not a closed way."), std::string::npos) << text;
}

TEST(OsmImport, MultipolygonApronTakesItsOuterRing)
{
    Plan p;
    const long n1 = p.at(0, 0), n3 = p.at(200, 200), i1 = p.at(50, 50);
    const long w1 = p.way({n1, p.at(200, 0), n3}, {});
    const long w2 = p.way({n3, p.at(0, 200), n1}, {});
    const long w3 = p.way({i1, p.at(100, 50), p.at(100, 100), i1}, {});
    p.multipolygon({{w1, "outer"}, {w2, "outer"}, {w3, "inner"}}, {{"aeroway", "apron"}, {"ref", "P1"}});
    Session s;
    const OsmImportResult r = Import(s, p);
    ASSERT_TRUE(r.changed) << r.report.Text();
    ASSERT_EQ(s.stores.ShapeCount(), 1);
    EXPECT_EQ(s.stores.ShapeStore[0].gType, kPoly);
    EXPECT_EQ(s.stores.ShapeStore[0].gComment, "P1");
    const PointList& pts = s.stores.PointStore[0];
    ASSERT_EQ(pts.size(), 4u);
    for (const Point& q : {Point{0, 0}, Point{400, 0}, Point{400, -400}, Point{0, -400}})
        EXPECT_NE(std::find(pts.begin(), pts.end(), q), pts.end()) << q.X << "," << q.Y;
}

// A damaged, foreign, missing or cancelled read leaves the session as it was.
TEST(OsmImport, DamagedForeignOrCancelledReadsChangeNothing)
{
    Scratch dir;
    const std::string text = Airport();
    dir.write("cut.osm", text.substr(0, text.size() / 2));
    dir.write("project.osm", "Version( 1 )\r\n");
    std::filesystem::create_directory(dir.path("folder.osm"));
    dir.write("field.osm", text);
    OsmImportOptions cancel;
    cancel.progress = [](std::uint64_t, std::uint64_t) { return false; };
    for (const std::string name : {"cut.osm", "project.osm", "folder.osm", "missing.osm", "field.osm"}) {
        const bool cancelled = name == "field.osm";
        Session s;
        NewSession(s);
        const OsmImportResult r = ImportOsm(s, dir.path(name), cancelled ? cancel : OsmImportOptions{});
        EXPECT_FALSE(r.read) << name;
        EXPECT_FALSE(r.changed);
        if (cancelled)
            EXPECT_TRUE(r.message.empty()) << r.message;
        else
            EXPECT_TRUE(r.message.starts_with(kOsmReadFailed) && r.message.find(name) != std::string::npos)
                << r.message;
        EXPECT_EQ((std::array<double, 4>{double(s.stores.ShapeCount()), s.project.LatitudeDegree, double(s.canUndo),
                                         double(s.dirty)}),
                  (std::array<double, 4>{}));
    }
}

TEST(OsmImport, CommandLineWritesTheProjectOrNothing)
{
    Scratch dir;
    ProjectData empty;
    ResetProject(empty.project);
    ResetShowFlags(empty.showFlags);
    ASSERT_TRUE(WriteProjectFile(dir.path("new.fwt"), empty, nullptr));
    const std::string cli =
        std::string("FIELDWRIGHT_HOME=") + FW_PROGRAM_DIR + " " + FW_CLI + " import-osm " + dir.path("new.fwt") + " ";
    const std::string ok =
        cli + dir.write("field.osm", Airport()) + " " + dir.path("out.fwt") + " > " + dir.path("report.txt");
    ASSERT_EQ(std::system(ok.c_str()), 0);
    ProjectData out;
    ASSERT_TRUE(ReadProjectFile(dir.path("out.fwt"), out, nullptr));
    EXPECT_EQ(out.shapes.size(), 5u);
    EXPECT_EQ(out.objects.size(), 2u);
    EXPECT_NEAR(out.project.LatitudeDegree, kLat, 1e-6);
    std::ifstream report(dir.path("report.txt"));
    const std::string printed((std::istreambuf_iterator<char>(report)), {});
    EXPECT_NE(printed.find("Imported: 2 runways, 2 taxiways, 1 apron, 2 forests."), std::string::npos) << printed;

    const std::string bad = cli + dir.write("cut.osm", "<osm version=\"0.6\"><node id=\"1\" lat=") + " " +
                            dir.path("bad.fwt") + " 2> " + dir.path("err.txt");
    EXPECT_NE(std::system(bad.c_str()), 0);
    EXPECT_FALSE(std::filesystem::exists(dir.path("bad.fwt")));
}

} // namespace
} // namespace fw::test
