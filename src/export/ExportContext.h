// What every item exporter receives: the project, the scale factors and the text being built.
#pragma once

#include <string>
#include <vector>

#include "core/Config.h"
#include "core/Random.h"
#include "core/Records.h"
#include "export/ScasmForms.h"
#include "files/TextFile.h"

namespace fw {

// The exporter's own line buffer: nothing reaches the disk before the text is complete.
using ExportBuffer = CBufferS;

struct ExportContext {
    const ProjectRecord& project;
    const ConfigRecord& config;
    GeoFrame geo;
    ExportBuffer& lines;
    // Folder source of the exclude files: the chosen .bgl path in a compiler run, else empty.
    std::string excludePrefix;
    // The session's generator: forests draw from it, and it is never reset between exports.
    RandomSource* random = nullptr;

    void add(std::string text) { lines.addLine(std::move(text)); }
    // Without a generator the middle of the range: nothing is shaken.
    double nextRandom() { return random ? random->Next() : 0.5; }
    LatLon latLon(double x, double y, double divisor) const { return PointToLatLon(geo, x, y, divisor); }
};

} // namespace fw
