// Reads an OpenStreetMap extract (.osm, .osm.bz2, .osm.pbf) into the import's plain records.
#pragma once

#include <string>

#include "osm/OsmExtract.h"

namespace fw {

struct OsmReadResult {
    bool ok = false;
    bool cancelled = false;
    std::string reason;   // why the file couldn't be read, as the library or the host said it
    OsmExtract extract;
};

// Only regular files are opened. The format follows the file's ending.
OsmReadResult ReadOsmExtract(const std::string& path, const ReadProgress& progress = {});

} // namespace fw
