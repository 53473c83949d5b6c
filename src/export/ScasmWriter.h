// Statements that more than one exporter writes: file head, banners, switches, tables, polygons.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/Records.h"
#include "export/ExportContext.h"

namespace fw {

// Title lines of the shape boxes.
namespace ShapeTitle {
inline constexpr const char* Poly = ";///           Polygon - Poly()           ///";
inline constexpr const char* TexPoly = ";///         Polygon - TexPoly()          ///";
inline constexpr const char* LineRoad = ";///              Line/Road               ///";
inline constexpr const char* DottedLine = ";///             Dotted line              ///";
inline constexpr const char* TreeLine = ";///               Tree Line              ///";
inline constexpr const char* Forest = ";///               Forest                 ///";
inline constexpr const char* TaxiwaySign = ";///             Taxiway sign             ///";
} // namespace ShapeTitle

inline constexpr const char* kNoComment = "[No comment]";

void WriteFileHead(ExportContext& ctx, int type, int buf, int areamx);
void WriteCopyright(ExportContext& ctx, const std::string& text);
void WriteSectionBanner(ExportContext& ctx, double latitude, double longitude, int level, int radius,
                        const std::string& indent, const std::string& title, bool noArea);
void WriteSectionFooter(ExportContext& ctx, const std::string& indent, bool noArea);
// Three blank lines, the box with its title line, and the comment unless it is the default.
void WriteShapeBanner(ExportContext& ctx, const std::string& indent, const char* titleLine,
                      const std::string& comment);
void WriteTimeSwitch(ExportContext& ctx, int vTime, const std::string& indent, int n);
void WriteDistanceSwitch(ExportContext& ctx, std::int64_t base, const std::string& indent, int n);
void WriteMenu(ExportContext& ctx, const std::string& text, const std::string& indent);

void WritePoints(ExportContext& ctx, const PointList& local, const std::string& indent);
void WriteRRStart(ExportContext& ctx, const std::string& kind, const std::string& half, const Point& p,
                  const std::string& indent);
void WriteRoadCont(ExportContext& ctx, const Point& p, const std::string& indent);

// "5" always last, after the letters of the set flags in the order L, W, F, S.
std::string LoadBitmapFlags(const std::array<std::uint8_t, 4>& loadflag);
void WriteLoadBitmap(ExportContext& ctx, const std::string& flags, int transparency, std::int32_t color,
                     const std::string& name, const std::string& indent);
void WriteRGBSColor(ExportContext& ctx, std::int32_t color, int transparency, const std::string& indent);
void WriteLineColor(ExportContext& ctx, std::int64_t index, const std::string& indent);

void WritePolyStatement(ExportContext& ctx, const std::vector<std::uint8_t>& indices, const std::string& indent,
                        int shaded, int concave);
struct TexCoord {
    std::int32_t U = 0;
    std::int32_t V = 0;
};
void WriteTexPolyStatement(ExportContext& ctx, const std::vector<std::uint8_t>& indices,
                           const std::vector<TexCoord>& uv, const std::string& indent, int shaded, int concave);

// A shape's points in local units around the centre of their box.
struct ShapeGeometry {
    PointList local;
    std::uint8_t concave = 0;
    std::int32_t cx = 0;
    std::int32_t cy = 0;
    std::int32_t r = 0;
    LatLon centre;
};

ShapeGeometry PrepareShapeGeometry(const ExportContext& ctx, const PointList& points, double scale);

// "Area( 5 lat lon km )" with the radius in kilometres from the visibility range.
std::string ShapeAreaLine(const LatLon& centre, std::int16_t vRange);
// "  RefPoint( rel  :RefEnd<n> ..." ; label is the whole label text, e.g. ":RefEnd3".
std::string RefPointLine(const std::string& label, double scale, const LatLon& centre, std::int16_t vRange,
                         std::int32_t r);

} // namespace fw
