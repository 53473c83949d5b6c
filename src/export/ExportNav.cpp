#include <algorithm>
#include <cmath>

#include "export/ExportItems.h"
#include "export/ItemGeometry.h"
#include "export/ScasmWriter.h"

namespace fw {

namespace {

std::string Fix17(const std::string& text) { return FixN(text, 17); }

// An empty parameter still passes a value; a long one is cut at 17 columns, its closing quote included.
std::string UserParam(const std::string& text) { return "\"" + (text.empty() ? std::string("0") : text) + "\""; }

void Blanks(ExportContext& ctx, const std::string& I, int count)
{
    for (int k = 0; k < count; ++k)
        ctx.add(I);
}

LatLon Columns(const LatLon& at) { return {Fix12(at.lat), Fix12(at.lon)}; }

} // namespace

void ExportVor(ExportContext& ctx, const ObjectRecord& vor, const std::string& indent)
{
    const std::string& I = indent;
    const ValueContext& v = ctx.geo.values;
    const LatLon at = ctx.latLon(vor.PosX, vor.PosY, 2.0);
    const char* kind = vor.DME() == 1 ? "81" : vor.DME() == 0 ? "88" : "";
    Blanks(ctx, I, 4);
    // The frequency alone takes the locale's decimal separator.
    ctx.add(I + "VOR( " + LocalReal(FixFloat(vor.Frequency(), 2, v), v.decimalSeparator) + " " + Int(vor.Range()) +
            " " + kind + " " + Real(ctx.project.MagVar) + " " + vor.ID() + " " + vor.NavName() + " " + at.lat + " " +
            at.lon + " " + Int(ExportRound(ctx.project.Altitude, "the altitude")) + " 0 )");
}

void ExportNdb(ExportContext& ctx, const ObjectRecord& ndb, const std::string& indent)
{
    const std::string& I = indent;
    const LatLon at = ctx.latLon(ndb.PosX, ndb.PosY, 2.0);
    Blanks(ctx, I, 4);
    ctx.add(I + "NDB( " + Real(FixFloat(ndb.Frequency(), 1, ctx.geo.values)) + " " + Int(ndb.Range()) + "  " +
            ndb.ID() + " " + ndb.NavName() + " " + at.lat + " " + at.lon + " " + Real(ctx.project.Altitude) + " )");
}

void ExportApi(ExportContext& ctx, const ObjectRecord& o, const std::string& indent)
{
    const std::string& I = indent;
    const ValueContext& v = ctx.geo.values;
    const std::string col = "       ";
    const LatLon at = ctx.latLon(o.PosX, o.PosY, 2.0);
    const std::string km = LocalReal(std::floor(o.Range() / 1000.0) + 6, v.decimalSeparator);
    const std::string alt = Real(FixFloat(o.Elevation() + ctx.project.Altitude, 2, v));
    const std::string* params[4] = {&o.Param6(), &o.Param7(), &o.Param8(), &o.Param9()};
    const std::string* later[6] = {&o.Param15(), &o.Param16(), &o.Param17(),
                                   &o.Param18(), &o.Param19(), &o.Param20()};

    Blanks(ctx, I, 2);
    ctx.add(I + "macro( \"" + o.Path() + "\"");
    ctx.add(I + col + at.lat + " " + at.lon);
    ctx.add(I + col + Fix17(km) + " ;Range (km)");
    ctx.add(I + col + Fix17(Real(FixFloat(o.Scale(), 3, v))) + " ;Scale");
    ctx.add(I + col + Fix17(Real(FixFloat(o.Rotation, 3, v))) + " ;Heading");
    for (int k = 0; k < 4; ++k)
        ctx.add(I + col + Fix17(UserParam(*params[k])) + " ;User param" + Int(6 + k));
    ctx.add(I + col + Fix17(Int(o.Range())) + " ;Visibility range (m)");
    ctx.add(I + col + Fix17(alt) + " ;Altitude ASL (m)");
    ctx.add(I + col + Fix17(Int(o.DetailLevel())) + " ;Detail level");
    ctx.add(I + col + "v2= 0");
    for (int k = 0; k < 6; ++k)
        ctx.add(I + col + Fix17(UserParam(*later[k])) + " ;User param" + Int(15 + k));
    ctx.add(I + "      )");
}

void ExportMenuEntry(ExportContext& ctx, const ObjectRecord& init, const std::string& indent)
{
    const std::string& I = indent;
    const ValueContext& v = ctx.geo.values;
    const LatLon at = ctx.latLon(init.PosX, init.PosY, 2.0);
    // No dialog edits the slots after the heading: their defaults go out.
    Blanks(ctx, I, 2);
    ctx.add(I + "MenuEntry( " + at.lat + " " + at.lon + " " + Real(FixFloat(ctx.project.Altitude, 2, v)) + " " +
            Real(FixFloat(init.Rotation, 3, v)) + " " + Real(FixFloat(init.doubles[0], 3, v)) + " " +
            Real(FixFloat(init.doubles[1], 3, v)) + " " + Int(init.shorts[0]) + " " +
            Real(FixFloat(init.doubles[2], 3, v)) + " " + Int(init.shorts[1]) + " " + init.InitName() + " )");
}

void ExportGenExcl(ExportContext& ctx, const ObjectRecord& area, const std::string& indent, int k)
{
    const std::string& I = indent;
    int mask = 0;
    if (area.ExcludeObjects() == 1) mask += 1;
    if (area.ExcludeVOR() == 1) mask += 2;
    if (area.ExcludeNDB() == 1) mask += 4;
    std::string name = "Excl_" + Int(static_cast<std::int64_t>(k) + 1) + ".bgl";
    if (!ctx.excludePrefix.empty())
        name = GetFolderFromPath(ctx.excludePrefix) + name;
    // The position is the centre; the area reaches Width and Height plan units each way.
    auto corner = [](std::int64_t v) {
        return ExportRound(static_cast<double>(v), "a corner of an exclude area");
    };
    const std::int32_t y1 = corner(static_cast<std::int64_t>(area.PosY) - area.ExclHeight());
    const std::int32_t x1 = corner(static_cast<std::int64_t>(area.PosX) - area.ExclWidth());
    const std::int32_t y2 = corner(static_cast<std::int64_t>(area.PosY) + area.ExclHeight());
    const std::int32_t x2 = corner(static_cast<std::int64_t>(area.PosX) + area.ExclWidth());
    const LatLon nw = Columns(ctx.latLon(x1, y1, 2.0));
    const LatLon se = Columns(ctx.latLon(x2, y2, 2.0));

    Blanks(ctx, I, 2);
    ctx.add(I + "GenExcl( \"" + name + "\" " + Hex(mask));
    for (int line = 0; line < 2; ++line)
        ctx.add(I + "         " + nw.lat + " " + se.lat + " " + se.lon + " " + nw.lon);
    ctx.add(I + "        )");
}

void ExportFlatten(ExportContext& ctx, const ShapeRecord& shape, const PointList& points, const std::string& indent)
{
    if (points.empty())
        return;
    const std::string& I = indent;
    const ValueContext& v = ctx.geo.values;
    const std::string alt = Real(FixFloat(ctx.project.Altitude, 2, v));
    // Points past the ninth are left out of the elevation box without a word.
    const std::size_t count = std::min<std::size_t>(points.size(), 9);

    Blanks(ctx, I, 2);
    ctx.add(I + "Area16N");
    ctx.add(I + "  Elevation( " + alt);
    for (std::size_t i = 0; i < count; ++i) {
        const LatLon at = Columns(ctx.latLon(points[i].X, points[i].Y, 2.0));
        ctx.add(I + "             " + at.lat + " " + at.lon);
    }
    ctx.add(I + "            )");
    ctx.add(I + "End16");

    const ShapeBoxResult box = ShapeBox(points, 0.5);
    const LatLon centre = Columns(ctx.latLon(box.cx, box.cy, 2.0));
    const auto& lim = shape.gLimits;
    const std::int32_t W =
        ExportRound(std::fabs(static_cast<double>(lim[1]) - lim[0]) / 2.0, "the width of the flatten polygon");
    const std::int32_t H =
        ExportRound(std::fabs(static_cast<double>(lim[3]) - lim[2]) / 2.0, "the height of the flatten polygon");

    // The second area flattens the ground under the first one's elevation box.
    Blanks(ctx, I, 2);
    ctx.add(I + "Area( 5 " + centre.lat + " " + centre.lon + " 20 )");
    ctx.add(I + "  RefPoint( rel  : 1 " + centre.lat + " " + centre.lon + " v1= 12000 v2= " + Int(box.r) + " )");
    ctx.add(I + "  SurfaceType( 0 " + Int(W) + " " + Int(H) + " 0 )");
    ctx.add(I + "EndA");
}

} // namespace fw
