#include "export/ScasmForms.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace fw {

std::string Int(std::int64_t v) { return std::string(IntText(v)); }

std::string FixN(const std::string& text, std::size_t width)
{
    std::string out(width, ' ');
    out.replace(0, std::min(width, text.size()), text, 0, std::min(width, text.size()));
    return out;
}

std::string Fix6(std::int64_t v) { return std::string(Fix6Text(v)); }
std::string Fix3(std::int64_t v) { return std::string(Fix3Text(v)); }
std::string Fix12(const std::string& text) { return FixN(text, 12); }
std::string Fix20(const std::string& text) { return FixN(text, 20); }

std::string Hex(std::int64_t v)
{
    char buf[8];
    const auto r = std::to_chars(buf, buf + sizeof buf, static_cast<std::uint32_t>(v), 16);
    std::string out(buf, r.ptr);
    for (char& c : out)
        if (c >= 'a' && c <= 'f')
            c = static_cast<char>(c - 'a' + 'A');
    return out;
}

namespace {
double ArcSineDegrees(double x)
{
    return std::atan(x / std::sqrt(1 - x * x)) * (180 / kExportPi);
}
} // namespace

ExportScale ComputeExportScale(double latitudeDegree)
{
    constexpr double R = 6.37e6;
    ExportScale s;
    s.LatDegPerMetre = ArcSineDegrees(1 / R);
    const double a = std::fabs(std::fabs(latitudeDegree) - 90) * (kExportPi / 180);
    double r2 = std::sin(a) * R;
    if (r2 <= 0)
        r2 = 10.0; // a pole still gives a usable factor
    s.LonDegPerMetre = ArcSineDegrees(1 / r2);
    return s;
}

LatLon PointToLatLon(const GeoFrame& f, double x, double y, double divisor)
{
    const double lon = (x / divisor) * f.scale.LonDegPerMetre + f.longitude;
    const double lat = (-y / divisor) * f.scale.LatDegPerMetre + f.latitude;
    LatLon out;
    out.lon = Real(FixFloat(lon, 6, f.values));
    out.lat = Real(FixFloat(lat, 6, f.values));
    return out;
}

} // namespace fw
