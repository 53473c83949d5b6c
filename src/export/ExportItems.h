// The item exporters the driver calls, one per kind. Each appends its lines to ctx.lines.
// indent is the driver's two blanks; n is the section's item counter where the kind numbers labels.
#pragma once

#include <string>

#include "core/Records.h"
#include "export/ExportContext.h"

namespace fw {

// Polygons (types 1 and 2): ExportPoly.cpp.
void ExportPolygon(ExportContext& ctx, const ShapeRecord& shape, const PointList& points,
                   const std::string& indent, int n);

// Wide lines and roads (type 3) and dotted lines (type 4): ExportLines.cpp.
void ExportWideLine(ExportContext& ctx, const ShapeRecord& shape, const PointList& points,
                    const std::string& indent, int n);
void ExportDotLine(ExportContext& ctx, const ShapeRecord& shape, const PointList& points,
                   const std::string& indent, int n);
// The dotted line of lights that a centre-line type of wide line also exports as.
ShapeRecord CentreLineCopy(const ShapeRecord& wideLine);
bool HasCentreLine(const ShapeRecord& shape);

// Tree lines and forests (types 5 and 7), one area each: ExportTrees.cpp.
void ExportTreeLine(ExportContext& ctx, const ShapeRecord& shape, const PointList& points,
                    const std::string& indent);
void ExportForest(ExportContext& ctx, const ShapeRecord& shape, const PointList& points,
                  const std::string& indent);

// Runways (type 8) in their section, and their ILS and marker blocks in "NAVIGATION": ExportRunway.cpp.
void ExportRunway(ExportContext& ctx, const ObjectRecord& runway, const std::string& indent, int n);
// True when the runway has an ILS or a marker at either end, so it belongs in "NAVIGATION".
bool RunwayHasNavigation(const ObjectRecord& runway);
void ExportIls(ExportContext& ctx, const ObjectRecord& runway, const std::string& indent);
void ExportMarkers(ExportContext& ctx, const ObjectRecord& runway, const std::string& indent);

// VOR, NDB, 3-D objects, initial locations, exclude areas, the flatten polygon: ExportNav.cpp.
void ExportVor(ExportContext& ctx, const ObjectRecord& vor, const std::string& indent);
void ExportNdb(ExportContext& ctx, const ObjectRecord& ndb, const std::string& indent);
void ExportApi(ExportContext& ctx, const ObjectRecord& object, const std::string& indent);
void ExportMenuEntry(ExportContext& ctx, const ObjectRecord& init, const std::string& indent);
// k is the section counter; it numbers the exclude files.
void ExportGenExcl(ExportContext& ctx, const ObjectRecord& area, const std::string& indent, int k);
void ExportFlatten(ExportContext& ctx, const ShapeRecord& shape, const PointList& points,
                   const std::string& indent);

// Taxiway signs (type 15): ExportSigns.cpp.
void ExportSign(ExportContext& ctx, const ObjectRecord& sign, const std::string& indent, int n);

} // namespace fw
