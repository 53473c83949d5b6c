// The import of an OpenStreetMap extract into the open project, as one undo step.
#pragma once

#include <functional>
#include <string>

#include "core/Session.h"
#include "osm/OsmExtract.h"
#include "osm/OsmMap.h"

namespace fw {

constexpr const char* kOsmFilter =
    "OpenStreetMap data (*.osm *.osm.bz2 *.osm.pbf *.pbf)|*.osm;*.osm.bz2;*.osm.pbf;*.pbf|All files (*.*)|*.*";
constexpr const char* kOsmReadFailed = "Unable to read the OpenStreetMap data! The file is damaged or of another kind.";
constexpr const char* kOsmTakeAerodrome =
    "The project has no reference point yet. Take the airport's centre as the project's reference point?";
constexpr const char* kOsmTakeCentre =
    "The project has no reference point yet. Take the centre of the OpenStreetMap data as the project's reference point?";
constexpr const char* kOsmNothing = "There is nothing in the OpenStreetMap data that can be imported.";

struct OsmImportOptions {
    ReadProgress progress;
    // The project's reference point is 0, 0: may the import take this one, the aerodrome's centre
    // or else the extract's? Without it, it does.
    std::function<bool(const GeoPoint&, bool aerodrome)> takeReference;
};

struct OsmImportResult {
    bool read = false;      // the extract was read (not cancelled, not damaged)
    bool changed = false;   // shapes or objects went into the project
    std::string message;    // why it couldn't be read; empty otherwise
    ImportReport report;
};

// Reads the extract, maps it and appends what it gives in one undo step; the imported records end
// up selected. A file that can't be read changes nothing. Tells nobody: the caller shows the
// message or the report.
OsmImportResult ImportOsm(Session& s, const std::string& path, const OsmImportOptions& options = {});

// The menu command: file dialog, the question about the reference point, the import, and the
// report or the message through s.ui.
bool MnuFimportosm(Session& s, const OsmImportOptions& options = {});

} // namespace fw
