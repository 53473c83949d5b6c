// What the import takes from an OpenStreetMap extract, in plain records: the reader fills them,
// the mapping turns them into shapes and objects. No type of the map library shows here.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fw {

struct GeoPoint {
    double lat = 0;
    double lon = 0;
};

using OsmTags = std::map<std::string, std::string>;

// A tagged way, or one outer ring of a multipolygon relation.
struct OsmFeature {
    std::int64_t id = 0;
    bool relation = false;         // an outer ring of a multipolygon
    OsmTags tags;
    std::vector<GeoPoint> points;
    bool missingNode = false;      // names a node the extract doesn't hold
    bool closed = false;           // first and last node are the same node
};

struct OsmExtract {
    std::vector<OsmFeature> features;   // in file order: ways first, then multipolygons
    std::optional<GeoPoint> aerodrome;  // the centre of the first aerodrome
    std::optional<GeoPoint> centre;     // the centre of the extract's bounds or of its nodes
    int otherNodes = 0;                 // tagged nodes outside the mapping
    int otherWays = 0;                  // tagged ways outside the mapping
    int otherRelations = 0;             // relations outside the mapping
    int brokenMultipolygons = 0;        // multipolygons whose rings couldn't be built
};

// Called while reading with the bytes read and the file's size; false cancels the read.
using ReadProgress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

} // namespace fw
