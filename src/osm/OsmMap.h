// The mapping from OpenStreetMap features to this program's shapes and objects.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/Config.h"
#include "core/Records.h"
#include "osm/OsmExtract.h"
#include "osm/Simplify.h"

namespace fw {

// World position of a node at (lat, lon): half metres east and south of the reference point,
// the inverse of the export's rule, before rounding.
struct WorldFrame {
    double latitude = 0;
    double longitude = 0;
    double LonDegPerMetre = 0;
    double LatDegPerMetre = 0;
};
WorldFrame MakeWorldFrame(double latitude, double longitude);
PlanePoint ToWorld(const WorldFrame& f, const GeoPoint& p);

struct ImportReport {
    int runways = 0;
    int taxiways = 0;
    int aprons = 0;
    int forests = 0;
    int simplified = 0;
    double largestDeviation = 0; // metres
    // (kind, reason) -> count, for features of the mapping that were left out.
    std::map<std::pair<std::string, std::string>, int> skipped;
    int otherNodes = 0;
    int otherWays = 0;
    int otherRelations = 0;
    int imported() const { return runways + taxiways + aprons + forests; }
    // The report the user reads: imported, simplified and skipped, and why.
    std::string Text() const;
};

struct ImportBatch {
    std::vector<PointList> points;
    std::vector<ShapeRecord> shapes;   // paint order: forests, aprons, taxiways
    std::vector<ObjectRecord> objects;
    ImportReport report;
};

struct MapContext {
    WorldFrame frame;
    const ConfigRecord* config = nullptr;
    std::string programFolder;
    int shapeRoom = 0;   // shapes the project can still take
    int objectRoom = 0;
};

ImportBatch MapExtract(const OsmExtract& extract, const MapContext& context);

// Reasons a feature of the mapping is left out.
inline constexpr const char* kSkipMissingNode = "names a node the extract doesn't hold";
inline constexpr const char* kSkipOutside = "has a point outside the work area";
inline constexpr const char* kSkipNotClosed = "is not a closed way";
inline constexpr const char* kSkipFewPoints = "has too few points";
inline constexpr const char* kSkipRunwayArea = "is drawn as an area, not along its centre line";
inline constexpr const char* kSkipTooLong = "is longer than a runway record holds";
inline constexpr const char* kSkipShapesFull = "the project holds 800 shapes";
inline constexpr const char* kSkipObjectsFull = "the project holds 800 objects";
inline constexpr const char* kSkipBrokenRings = "its rings couldn't be built";

} // namespace fw
