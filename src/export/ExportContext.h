// What every item exporter receives: the project, the scale factors and the text being built.
#pragma once

#include <string>
#include <string_view>
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
    // One line from its pieces, built in place without temporaries: the rows of the big shapes.
    template <class... Parts>
    void addJoined(const Parts&... parts)
    {
        const std::string_view views[] = {std::string_view(parts)...};
        std::size_t size = 0;
        for (std::string_view v : views)
            size += v.size();
        std::string& text = lines.newLine();
        text.reserve(size);
        for (std::string_view v : views)
            text += v;
    }
    // Without a generator the middle of the range: nothing is shaken.
    double nextRandom() { return random ? random->Next() : 0.5; }
    LatLon latLon(double x, double y, double divisor) const { return PointToLatLon(geo, x, y, divisor); }
};

} // namespace fw
