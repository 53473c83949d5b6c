// The OpenStreetMap import of a town-sized extract (about 100,000 nodes, 10,000 streets, 300
// taxiways, aprons and woods) against the yardstick of the same library: one pass that only
// gives the ways their node locations and counts them, as any reader of the file must.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include <osmium/handler.hpp>
#include <osmium/handler/node_locations_for_ways.hpp>
#include <osmium/index/map/flex_mem.hpp>
#include <osmium/io/any_input.hpp>
#include <osmium/io/any_output.hpp>
#include <osmium/visitor.hpp>

#include "core/Session.h"
#include "core/Stores.h"
#include "osm/OsmImport.h"

namespace {

std::string Folder()
{
    return (std::filesystem::temp_directory_path() / "fw-bench-osm").string();
}

// Streets on a grid, the airport's features in the middle of it.
void WriteExtract(const std::string& xml)
{
    std::ofstream out(xml);
    out << "<?xml version='1.0' encoding='UTF-8'?>\n<osm version=\"0.6\">\n";
    const int side = 316;
    for (int r = 0; r < side; ++r)
        for (int c = 0; c < side; ++c)
            out << "<node id=\"" << r * side + c + 1 << "\" version=\"1\" lat=\"" << 50.0 + r * 0.0001
                << "\" lon=\"" << 8.0 + c * 0.00015 << "\"/>\n";
    long way = 1;
    for (int r = 0; r < side; ++r)
        for (int c = 0; c + 10 < side; c += 10) {
            out << "<way id=\"" << way++ << "\" version=\"1\">";
            for (int k = 0; k <= 10; ++k)
                out << "<nd ref=\"" << r * side + c + k + 1 << "\"/>";
            const int mid = side / 2;
            const bool airport = std::abs(r - mid) < 40 && std::abs(c - mid) < 40;
            const char* tag = !airport ? "<tag k=\"highway\" v=\"residential\"/>"
                              : r % 3 == 0 ? "<tag k=\"aeroway\" v=\"taxiway\"/>"
                                           : "<tag k=\"landuse\" v=\"meadow\"/>";
            out << tag << "</way>\n";
        }
    for (int r = 0; r + 1 < side; r += 30)
        for (int c = 0; c + 1 < side; c += 30) {
            const long a = r * side + c + 1;
            out << "<way id=\"" << way++ << "\" version=\"1\"><nd ref=\"" << a << "\"/><nd ref=\"" << a + 1
                << "\"/><nd ref=\"" << a + side + 1 << "\"/><nd ref=\"" << a + side << "\"/><nd ref=\"" << a
                << "\"/><tag k=\"" << ((r + c) % 60 ? "natural\" v=\"wood" : "aeroway\" v=\"apron")
                << "\"/></way>\n";
        }
    out << "</osm>\n";
}

const std::string& Extract(const char* ending)
{
    static const std::string xml = [] {
        std::filesystem::create_directories(Folder());
        const std::string path = Folder() + "/town.osm";
        WriteExtract(path);
        osmium::io::Reader in{path};
        osmium::io::Writer out{Folder() + "/town.osm.pbf", osmium::io::overwrite::allow};
        while (osmium::memory::Buffer b = in.read())
            out(std::move(b));
        out.close();
        in.close();
        return path;
    }();
    static const std::string pbf = Folder() + "/town.osm.pbf";
    return std::string(ending) == "pbf" ? pbf : xml;
}

void Import(benchmark::State& state, const char* ending)
{
    const std::string& path = Extract(ending);
    for (auto _ : state) {
        fw::Session s;
        fw::ResetAtStart(s);
        fw::ResetConfig(s.config, "/tmp/");
        s.project.LatitudeDegree = 50.0158;
        s.project.LongitudeDegree = 8.0237;
        const fw::OsmImportResult r = fw::ImportOsm(s, path);
        if (!r.changed)
            state.SkipWithError("nothing imported");
        benchmark::DoNotOptimize(s.stores.ShapeStore.data());
    }
}

struct CountWays : osmium::handler::Handler {
    long ways = 0;
    void way(const osmium::Way&) { ++ways; }
};

void Yardstick(benchmark::State& state, const char* ending)
{
    const std::string& path = Extract(ending);
    for (auto _ : state) {
        using Index = osmium::index::map::FlexMem<osmium::unsigned_object_id_type, osmium::Location>;
        Index index;
        osmium::handler::NodeLocationsForWays<Index> locations{index};
        CountWays count;
        osmium::io::Reader reader{path, osmium::io::read_meta::no};
        osmium::apply(reader, locations, count);
        reader.close();
        benchmark::DoNotOptimize(count.ways);
    }
}

BENCHMARK_CAPTURE(Import, xml, "osm")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Yardstick, xml, "osm")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Import, pbf, "pbf")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Yardstick, pbf, "pbf")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
