// The frame that polygons and lines share: box, layer wrapper, reference point, time switch, tail.
#pragma once

#include <string>

#include "export/ScasmWriter.h"

namespace fw {

struct ShapeFrame {
    std::string I;    // the indent inside the frame (widened in a layer)
    std::string tail; // "Return" in a layer
    std::int32_t layer = 0;
};

// Writes the box and comment, the layer wrapper, the RefPoint line and the time switch.
// afterSwitch is the blank that follows the switch: I + "  " for polygons, I for lines.
ShapeFrame OpenShapeFrame(ExportContext& ctx, const ShapeRecord& shape, const char* titleLine,
                          const ShapeGeometry& g, double scale, const std::string& indent, int n, bool lineBlank);
// The label ending the RefPoint block, the tail, and the layer's EndA.
void CloseShapeFrame(ExportContext& ctx, const ShapeFrame& f, int n);

} // namespace fw
