#include "osm/OsmRead.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <limits>
#include <set>
#include <string_view>

#include <osmium/area/assembler.hpp>
#include <osmium/area/multipolygon_manager.hpp>
#include <osmium/handler.hpp>
#include <osmium/handler/node_locations_for_ways.hpp>
#include <osmium/index/map/flex_mem.hpp>
#include <osmium/io/any_input.hpp>
#include <osmium/osm/area.hpp>
#include <osmium/osm/node.hpp>
#include <osmium/osm/relation.hpp>
#include <osmium/osm/way.hpp>
#include <osmium/relations/relations_manager.hpp>
#include <osmium/tags/tags_filter.hpp>
#include <osmium/visitor.hpp>

namespace fw {

namespace {

using Index = osmium::index::map::FlexMem<osmium::unsigned_object_id_type, osmium::Location>;
using LocationHandler = osmium::handler::NodeLocationsForWays<Index>;

// The features the mapping can use; everything else is only counted.
bool Wanted(const osmium::TagList& tags)
{
    const char* aeroway = tags["aeroway"];
    if (aeroway) {
        const std::string_view a = aeroway;
        if (a == "runway" || a == "taxiway" || a == "taxilane" || a == "apron" || a == "aerodrome")
            return true;
    }
    return tags.has_tag("natural", "wood") || tags.has_tag("landuse", "forest");
}

// The features a multipolygon can be: the areas of the mapping.
bool WantedArea(const osmium::TagList& tags)
{
    return tags.has_tag("aeroway", "apron") || tags.has_tag("aeroway", "aerodrome") ||
           tags.has_tag("natural", "wood") || tags.has_tag("landuse", "forest");
}

osmium::TagsFilter AreaFilter()
{
    osmium::TagsFilter f{false};
    f.add_rule(true, "aeroway", "apron");
    f.add_rule(true, "aeroway", "aerodrome");
    f.add_rule(true, "natural", "wood");
    f.add_rule(true, "landuse", "forest");
    return f;
}

OsmTags CopyTags(const osmium::TagList& tags)
{
    OsmTags out;
    for (const auto& t : tags)
        out.emplace(t.key(), t.value());
    return out;
}

struct Box {
    double minLat = std::numeric_limits<double>::max();
    double maxLat = std::numeric_limits<double>::lowest();
    double minLon = std::numeric_limits<double>::max();
    double maxLon = std::numeric_limits<double>::lowest();
    bool empty() const { return minLat > maxLat; }
    void add(const GeoPoint& p)
    {
        minLat = std::min(minLat, p.lat);
        maxLat = std::max(maxLat, p.lat);
        minLon = std::min(minLon, p.lon);
        maxLon = std::max(maxLon, p.lon);
    }
    GeoPoint centre() const { return {(minLat + maxLat) / 2, (minLon + maxLon) / 2}; }
};

bool IsAerodrome(const OsmTags& tags)
{
    auto it = tags.find("aeroway");
    return it != tags.end() && it->second == "aerodrome";
}

// Takes nodes, ways and relations in file order; the multipolygons come from the assembler.
class ExtractHandler : public osmium::handler::Handler {
public:
    explicit ExtractHandler(OsmExtract& out) : out_(out) {}

    void node(const osmium::Node& n)
    {
        if (n.location().valid())
            nodes_.add({n.location().lat(), n.location().lon()});
        if (n.tags().empty())
            return;
        if (n.tags().has_tag("aeroway", "aerodrome") && n.location().valid()) {
            if (!out_.aerodrome)
                out_.aerodrome = GeoPoint{n.location().lat(), n.location().lon()};
            return;
        }
        ++out_.otherNodes;
    }

    void way(const osmium::Way& w)
    {
        if (w.tags().empty())
            return;
        if (!Wanted(w.tags())) {
            ++out_.otherWays;
            return;
        }
        OsmFeature f;
        f.id = w.id();
        f.tags = CopyTags(w.tags());
        for (const auto& nr : w.nodes()) {
            if (!nr.location().valid()) {
                f.missingNode = true;
                continue;
            }
            f.points.push_back({nr.location().lat(), nr.location().lon()});
        }
        f.closed = w.nodes().size() >= 2 && w.nodes().front().ref() == w.nodes().back().ref();
        if (IsAerodrome(f.tags)) {
            NoteAerodrome(f.points);
            return;
        }
        out_.features.push_back(std::move(f));
    }

    void relation(const osmium::Relation& r)
    {
        const bool multipolygon = r.tags().has_tag("type", "multipolygon");
        if (multipolygon && WantedArea(r.tags()))
            multipolygons_.insert(r.id());
        else
            ++out_.otherRelations;
    }

    // One feature per outer ring of an assembled multipolygon.
    void area(const osmium::Area& a)
    {
        if (a.from_way())
            return;
        assembled_.insert(a.orig_id());
        const OsmTags tags = CopyTags(a.tags());
        std::vector<GeoPoint> all;
        for (const auto& ring : a.outer_rings()) {
            OsmFeature f;
            f.id = a.orig_id();
            f.relation = true;
            f.tags = tags;
            f.closed = true;
            for (const auto& nr : ring)
                f.points.push_back({nr.location().lat(), nr.location().lon()});
            all.insert(all.end(), f.points.begin(), f.points.end());
            if (!IsAerodrome(tags))
                areas_.push_back(std::move(f));
        }
        if (IsAerodrome(tags))
            NoteAerodrome(all);
    }

    void finish(const osmium::Box& header)
    {
        for (auto& f : areas_)
            out_.features.push_back(std::move(f));
        for (auto id : multipolygons_)
            if (!assembled_.count(id))
                ++out_.brokenMultipolygons;
        if (header.valid())
            out_.centre = GeoPoint{(header.bottom_left().lat() + header.top_right().lat()) / 2,
                                   (header.bottom_left().lon() + header.top_right().lon()) / 2};
        else if (!nodes_.empty())
            out_.centre = nodes_.centre();
    }

private:
    void NoteAerodrome(const std::vector<GeoPoint>& points)
    {
        if (out_.aerodrome || points.empty())
            return;
        Box b;
        for (const auto& p : points)
            b.add(p);
        out_.aerodrome = b.centre();
    }

    OsmExtract& out_;
    Box nodes_;
    std::vector<OsmFeature> areas_;
    std::set<std::int64_t> multipolygons_;
    std::set<std::int64_t> assembled_;
};

bool ReadAll(const osmium::io::File& file, OsmExtract& out, const ReadProgress& progress)
{
    osmium::area::Assembler::config_type config;
    config.create_empty_areas = false;
    osmium::area::MultipolygonManager<osmium::area::Assembler> manager{config, AreaFilter()};
    // Two passes over the file: the relations first, so that the second can build their rings.
    // Each reports half of the way.
    auto report = [&progress](std::uint64_t pass, std::uint64_t done, std::uint64_t size) {
        return !progress || progress(pass * size + done, 2 * size);
    };
    {
        osmium::io::Reader relations{file, osmium::osm_entity_bits::relation, osmium::io::read_meta::no};
        while (osmium::memory::Buffer buffer = relations.read()) {
            osmium::apply(buffer, manager);
            if (!report(0, relations.offset(), relations.file_size())) {
                relations.close();
                return false;
            }
        }
        relations.close();
        manager.prepare_for_lookup();
    }

    Index index;
    LocationHandler locations{index};
    locations.ignore_errors(); // a way naming a missing node is told by the mapping
    ExtractHandler handler{out};

    osmium::io::Reader reader{file, osmium::io::read_meta::no};
    const osmium::Box header = reader.header().box();
    auto& second = manager.handler([&handler](osmium::memory::Buffer&& buffer) {
        osmium::apply(buffer, handler);
    });
    while (osmium::memory::Buffer buffer = reader.read()) {
        osmium::apply(buffer, locations, handler, second);
        if (!report(1, reader.offset(), reader.file_size())) {
            reader.close();
            return false;
        }
    }
    reader.close();
    handler.finish(header);
    return true;
}

} // namespace

OsmReadResult ReadOsmExtract(const std::string& path, const ReadProgress& progress)
{
    OsmReadResult r;
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) {
        r.reason = ec ? ec.message() : "not a regular file";
        return r;
    }
    try {
        const osmium::io::File file{path};
        r.cancelled = !ReadAll(file, r.extract, progress);
        r.ok = !r.cancelled;
    } catch (const std::exception& e) {
        r.extract = {};
        r.reason = e.what();
    }
    return r;
}

} // namespace fw
