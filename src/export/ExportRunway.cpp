#include <cmath>

#include "export/ExportItems.h"
#include "export/ScasmWriter.h"

namespace fw {

namespace {

constexpr double kFeetPerMetre = 3.2808;
const std::string kField = "        ";
const std::string kNavRule = ";////////////////////////////////////";
const std::string kNavEmpty = ";///                              ///";

std::string RunwayId(const ObjectRecord& r)
{
    static constexpr const char* kDesignator[4] = {"", "L", "C", "R"};
    std::string id = Int(r.RwyNumber());
    if (r.RwyDesignator() < 4)
        id += kDesignator[r.RwyDesignator()];
    return id;
}

int MarkersOf(const ObjectRecord& r)
{
    int m = 0;
    if (r.ShowBorderLine() == 1) m += 1;
    if (r.ShowThresholdMarkers() == 1) m += 2;
    if (r.ShowTouchDownMarker() == 1) m += 4;
    if (r.Show300Markers() == 1) m += 8;
    if (r.ShowCenterLine() == 1) m += 16;
    if (r.ShowID() == 1) m += 32;
    if (r.Show150Markers() == 1) m += 64;
    return m;
}

int LightsOf(const ObjectRecord& r)
{
    int lights = 1;
    // The pair keeps true as -1, so a project the dialog wrote always takes the first branch.
    if (r.LightIntensityLow != 1) {
        if (r.ShowCenterLights() == 1)
            lights += 6;
    } else if (r.ShowCenterLights() == 1) {
        lights += 4;
    }
    return lights;
}

// A spot given in metres along the runway's axis (y) turned to its heading and moved to its place.
LatLon RunwaySpot(const ExportContext& ctx, const ObjectRecord& r, double y)
{
    const double a = kExportPi / 180 * r.Rotation;
    const double x0 = 0;
    const double x = x0 * std::cos(a) - y * std::sin(a);
    const double yy = y * std::cos(a) + x0 * std::sin(a);
    const std::int32_t px = ExportRound(r.PosX / 2.0, "a runway position");
    const std::int32_t py = ExportRound(r.PosY / 2.0, "a runway position");
    return ctx.latLon(ExportRound(x + px, "an ILS or marker position"),
                      ExportRound(yy + py, "an ILS or marker position"), 1.0);
}

void NavBox(ExportContext& ctx, const std::string& I, const char* title)
{
    for (int k = 0; k < 4; ++k)
        ctx.add(I);
    ctx.add(I + kNavRule);
    ctx.add(I + kNavEmpty);
    ctx.add(I + title);
    ctx.add(I + kNavEmpty);
    ctx.add(I + kNavRule);
    ctx.add(I);
}

int IlsFlags(std::uint8_t glideSlope, std::uint8_t dme)
{
    return 144 + (glideSlope == 1 ? 64 : 0) + (dme == 1 ? 1 : 8);
}

} // namespace

void ExportRunway(ExportContext& ctx, const ObjectRecord& r, const std::string& indent, int)
{
    const std::string& I = indent;
    const ValueContext& v = ctx.geo.values;
    const ProjectRecord& p = ctx.project;
    const std::string id = RunwayId(r);
    const std::string both = Int(r.ThrOffN());

    for (int k = 0; k < 4; ++k)
        ctx.add(I);
    ctx.add(I + ";////////////////////////////////////////////");
    ctx.add(I + ";///             " + FixN("Runway " + id, 10) + "               ///");
    ctx.add(I + ";////////////////////////////////////////////");
    ctx.add(I);
    ctx.add(I);
    const LatLon at = ctx.latLon(r.PosX, r.PosY, 2.0);
    ctx.add(I + "Runway( " + at.lat + " " + at.lon);
    ctx.add(I);
    ctx.add(I + kField + "ALTitude " + Real(FixFloat(p.Altitude, 2, v)));
    ctx.add(I + kField + "HEADing " + Real(FixFloat(r.Rotation, 3, v)));
    ctx.add(I + kField + "LENgth " + Int(r.Length()));
    ctx.add(I + kField + "WIDth " + Int(r.RwyWidth()));
    ctx.add(I + kField + "ID " + id);
    ctx.add(I);
    ctx.add(I + kField + "SURFace " + Int(r.Surface()));
    ctx.add(I + kField + "MARKERS " + Hex(MarkersOf(r)));
    // One threshold offset and one extension serve both ends.
    if (r.ThrOffN() > 0) {
        ctx.add(I + kField + "ThrOffN " + Int(r.ThrOffN()));
        ctx.add(I + kField + "ThrOffF " + Int(r.ThrOffN()));
    }
    if (r.ExtN() > 0) {
        ctx.add(I + kField + "ExtN " + Int(r.ExtN()));
        ctx.add(I + kField + "ExtF " + Int(r.ExtN()));
    }
    if (r.EnableLights() == 1) {
        const std::string thr = Hex(r.ShowTouchdownLights() == 1 ? 69 : 5);
        const std::string side = Int(ExportRound(r.RwyWidth() / 2.0 + 45.0, "the VASI side distance"));
        const std::string dist =
            Int(ExportRound(r.Length() / 2.0 - (r.ThrOffN() + 1150), "the VASI distance"));
        ctx.add(I);
        ctx.add(I + kField + "LIGHTS " + Hex(LightsOf(r)));
        ctx.add(I + kField + "ThrLightsN " + thr);
        ctx.add(I + kField + "ThrLightsF " + thr);
        ctx.add(I + kField + "StrobesN " + Int(r.StrobesN()));
        ctx.add(I + kField + "StrobesF " + Int(r.StrobesF()));
        ctx.add(I);
        // The VASI slope follows the glide slope of the ILS.
        ctx.add(I + kField + "VasiSlopeN " + Real(FixFloat(r.IlsSlopeN(), 3, v)));
        ctx.add(I + kField + "VasiSlopeF " + Real(FixFloat(r.IlsSlopeF(), 3, v)));
        ctx.add(I + kField + "VasiSideN " + side);
        ctx.add(I + kField + "VasiSideF " + side);
        ctx.add(I + kField + "VasiDistN " + dist);
        ctx.add(I + kField + "VasiDistF " + dist);
        ctx.add(I + kField + "VasiSpaceN 700");
        ctx.add(I + kField + "VasiSpaceF 700");
        ctx.add(I + kField + "VasiBarsN " + Hex(r.VasiBarsN()));
        ctx.add(I + kField + "VasiBarsF " + Hex(r.VasiBarsF()));
        ctx.add(I);
        ctx.add(I + kField + "AprLN " + Int(r.AprLN()));
        ctx.add(I + kField + "AprLF " + Int(r.AprLF()));
    }
    ctx.add(I);
    ctx.add(I + "      )");
}

bool RunwayHasNavigation(const ObjectRecord& r)
{
    return r.IlsEnabledN() != 0 || r.IlsEnabledF() != 0 || r.MarkerEnabledN() != 0 || r.markerEnabledF() != 0;
}

void ExportIls(ExportContext& ctx, const ObjectRecord& r, const std::string& indent)
{
    if (r.IlsEnabledN() + r.IlsEnabledF() == 0)
        return;
    const std::string& I = indent;
    const ValueContext& v = ctx.geo.values;
    const ProjectRecord& p = ctx.project;

    // A reciprocal that wraps past north loses its decimals.
    double headF = r.Rotation + 180.0;
    if (headF >= 359.99999)
        headF = static_cast<double>(ExportRound(headF, "the far heading") % 360);
    const double c = ExportRound(r.Length() / kFeetPerMetre / 2.0 - 250.0, "the ILS distance");
    const LatLon nearAt = RunwaySpot(ctx, r, c);
    const LatLon farAt = RunwaySpot(ctx, r, -c);

    NavBox(ctx, I, ";///       ILS for Runway         ///");
    auto end = [&](const LatLon& at, double freq, std::int16_t range, int flags, const std::string& id,
                   const std::string& name, double heading, double slope) {
        ctx.add(I);
        // The localizer and the glide-slope antenna stand on one spot.
        ctx.add(I + "ILS( " + Real(FixFloat(freq, 2, v)) + " " + Int(range) + " " + Hex(flags) + " " +
                Real(p.MagVar) + " " + id + " " + name + " " + at.lat + " " + at.lon + " " + Real(p.Altitude) +
                " " + Real(FixFloat(heading, 3, v)));
        ctx.add(I + "     " + at.lat + " " + at.lon + " " + Real(p.Altitude) + " " + Real(FixFloat(slope, 2, v)) +
                " )");
    };
    if (r.IlsEnabledN() == 1)
        end(nearAt, r.IlsFreqN(), r.IlsRangeN(), IlsFlags(r.IlsGlideSlopeN(), r.IlsDmeN()), r.IlsIdN(), r.IlsNameN(),
            r.Rotation, r.IlsSlopeN());
    if (r.IlsEnabledF() == 1)
        end(farAt, r.IlsFreqF(), r.IlsRangeF(), IlsFlags(r.IlsGlideSlopeF(), r.IlsDmeF()), r.IlsIdF(), r.IlsNameF(),
            headF, r.IlsSlopeF());
}

void ExportMarkers(ExportContext& ctx, const ObjectRecord& r, const std::string& indent)
{
    const int nearSum = r.MarkerInnerN() + r.MarkerMiddleN() + r.MarkerOuterN();
    const int farSum = r.MarkerInnerF() + r.MarkerMiddleF() + r.MarkerOuterF();
    if (r.MarkerEnabledN() + r.markerEnabledF() == 0 || nearSum + farSum == 0)
        return;
    const std::string& I = indent;
    const double h = r.Length() / kFeetPerMetre / 2.0;
    auto spot = [&](double y) { return RunwaySpot(ctx, r, ExportRound(y, "a marker position")); };
    const LatLon innerN = spot(-(h + r.MarkerInnerN()));
    const LatLon innerF = spot(h + r.MarkerInnerF());
    const LatLon middleN = spot(-(h + r.MarkerMiddleN()));
    const LatLon middleF = spot(h + r.MarkerMiddleF());
    const LatLon outerN = spot(-(h + r.MarkerOuterN()));
    const LatLon outerF = spot(h + r.MarkerOuterF());
    const std::string alt = Int(ExportRound(ctx.project.Altitude, "the altitude"));

    NavBox(ctx, I, ";///     Markers for Runway       ///");
    // No blank between the longitude's 12 columns and the altitude: a longer longitude runs into it.
    auto marker = [&](const char* kind, std::int16_t distance, const LatLon& at) {
        if (distance != 0)
            ctx.add(I + kind + Fix12(at.lat) + " " + Fix12(at.lon) + alt + " )");
    };
    auto end = [&](const char* title, std::int16_t inner, const LatLon& in, std::int16_t middle, const LatLon& mid,
                   std::int16_t outer, const LatLon& out) {
        ctx.add(I);
        ctx.add(I + title);
        marker("IM( ", inner, in);
        marker("MM( ", middle, mid);
        marker("OM( ", outer, out);
    };
    if (r.MarkerEnabledN() == 1 && nearSum >= 1)
        end(";Near", r.MarkerInnerN(), innerN, r.MarkerMiddleN(), middleN, r.MarkerOuterN(), outerN);
    if (r.markerEnabledF() == 1 && farSum >= 1)
        end(";Far", r.MarkerInnerF(), innerF, r.MarkerMiddleF(), middleF, r.MarkerOuterF(), outerF);
}

} // namespace fw
