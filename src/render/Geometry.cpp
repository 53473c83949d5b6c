#include "render/Geometry.h"

#include <algorithm>
#include <cmath>

#include "render/Clip.h"

namespace fw {

namespace {

std::int32_t R(double v) { return Round32(v); }

// One polyline of a screen-size symbol; the set's storage is kept from the previous object.
void Scaled(LineSet& lines, std::initializer_list<std::pair<int, int>> table, double zoom)
{
    lines.resize(1);
    PointList& out = lines[0];
    out.clear();
    for (const auto& [x, y] : table)
        out.push_back({R(x / zoom), R(y / zoom)});
}

} // namespace

void RotateAndPlace(LineSet& lines, double a, std::int32_t px, std::int32_t py)
{
    const double c = std::cos(a);
    const double s = std::sin(a);
    for (auto& line : lines)
        for (auto& p : line) {
            const double x = p.X;
            const double y = p.Y;
            p.X = R(x * c - y * s + px);
            p.Y = R(y * c + x * s + py);
        }
}

void BuildVorGeometry(LineSet& lines, const ObjectRecord& o, double zoom)
{
    Scaled(lines, {{-50, -80}, {50, -80}, {100, 20}, {0, 80}, {-100, 20}, {-50, -80}}, zoom);
    RotateAndPlace(lines, 0, o.PosX, o.PosY);
}

void BuildNdbGeometry(LineSet& lines, const ObjectRecord& o, double zoom)
{
    Scaled(lines, {{-100, -50}, {0, 50}, {100, -50}, {-100, -50}}, zoom);
    RotateAndPlace(lines, 0, o.PosX, o.PosY);
}

void BuildInitGeometry(LineSet& lines, const ObjectRecord& o, double zoom)
{
    Scaled(lines, {{-10, -10}, {0, -20}, {0, 20}, {0, -20}, {10, -10}}, zoom);
    RotateAndPlace(lines, o.Rotation * (kPi / 180), o.PosX, o.PosY);
}

void BuildExcludeGeometry(LineSet& lines, std::int32_t posX, std::int32_t posY, std::int32_t w,
                          std::int32_t h, double zoom)
{
    const double x = posX;
    const double y = posY;
    const Point p0{R(x - w / 2.0), R(y + h / 2.0)};
    const Point p1{R(x + w / 2.0), R(y + h / 2.0)};
    const Point p2{R(x + w / 2.0), R(y - h / 2.0)};
    const Point p3{R(x - w / 2.0), R(y - h / 2.0)};
    const double m = 10 / zoom;
    const Point m0{R(x - m), R(y + m)};
    lines.resize(2);
    lines[0] = {p0, p1, p3, p2, p1, p0, p2, p3, p0};
    lines[1] = {m0, {R(x + m), R(y + m)}, {R(x + m), R(y - m)}, {R(x - m), R(y - m)}, m0};
}

void BuildSignGeometry(LineSet& lines, const ObjectRecord& o)
{
    lines.resize(2);
    lines[0] = {{-4, 0}, {4, 0}};
    lines[1] = {{0, 0}, {0, 2}};
    RotateAndPlace(lines, o.Rotation * (kPi / 180), o.PosX, o.PosY);
}

void BuildApiGeometry(LineSet& lines, const ObjectRecord& o)
{
    const int n = std::min<int>(o.DesignLast, kDesignPoints - 1);
    const double s = o.Scale();
    lines.resize(1);
    PointList& line = lines[0];
    line.clear();
    // In doubles: an outline near 2^31 (a macro's ;designshape or its size parameters) can't be
    // doubled in 32 bits; R holds what the world can't take at its edge.
    auto at = [&](const Point& p) { return Point{R(2.0 * p.X * s), R(-2.0 * p.Y * s)}; };
    for (int i = 0; i <= n; ++i)
        line.push_back(at(o.DesignPoints[i]));
    line.push_back(at(o.DesignPoints[0]));
    const double rotation = o.Rotation < 0 ? 0 : o.Rotation;
    RotateAndPlace(lines, rotation * (kPi / 180), o.PosX, o.PosY);
}

void BuildRunwayGeometry(LineSet& lines, std::int32_t W, std::int32_t L, double heading, std::int32_t px,
                         std::int32_t py, std::uint8_t lights, std::int32_t thr, std::int32_t ext)
{
    const double l = L / 2.0;
    const double w = W / 2.0;
    auto P = [](double x, double y) { return Point{R(x), R(y)}; };
    // Assigned in place: the polylines keep their storage from the previous runway.
    const std::size_t count = 11 + (thr > 0 ? 2 : 0) + (ext > 0 ? 2 : 0);
    lines.resize(count);
    lines[0] = {P(-l, w), P(l, w), P(l, -w), P(-l, -w), P(-l, w)};
    lines[1] = {P(-(l - 2), w - 2), P(l - 2, w - 2), P(l - 2, -(w - 2)), P(-(l - 2), -(w - 2)),
                P(-(l - 2), w - 2)};
    lines[2] = {P(-50, 0), P(50, 0)};
    if (lights == 1) {
        lines[3] = {P(-(l + 5), w + 10), P(-(l + 5), -(w + 10))};
        lines[4] = {P(-(l + 25), w - 10), P(-(l + 25), -(w - 10))};
        lines[5] = {P(-(l + 45), 5), P(-(l + 45), -5)};
        lines[6] = {P(-(l + 55), 0), P(-(l + 155), 0)};
        lines[7] = {P(l + 5, w + 10), P(l + 5, -(w + 10))};
        lines[8] = {P(l + 25, w - 10), P(l + 25, -(w - 10))};
        lines[9] = {P(l + 45, 5), P(l + 45, -5)};
        lines[10] = {P(l + 55, 0), P(l + 155, 0)};
    } else {
        for (int i = 3; i <= 10; ++i)
            lines[i] = {P(0, 0), P(0, 0)};
    }
    std::size_t next = 11;
    if (thr > 0) {
        lines[next++] = {P(l - thr, w), P(l - thr, -w)};
        lines[next++] = {P(-(l - thr), w), P(-(l - thr), -w)};
    }
    if (ext > 0) {
        lines[next++] = {P(-(l + 1), w), P(-(l + ext), w), P(-(l + ext), -w), P(-(l + 1), -w)};
        lines[next++] = {P(l + 1, w), P(l + ext, w), P(l + ext, -w), P(l + 1, -w)};
    }
    double a = heading + 90;
    if (a >= 360)
        a -= 180;
    RotateAndPlace(lines, a * kPi / 180, px, py);
}

void BuildRunwayFromRecord(LineSet& lines, const ObjectRecord& o)
{
    const std::int32_t W = R(2 * o.RwyWidth() / 3.2808);
    const std::int32_t L = R(2 * o.Length() / 3.2808);
    const std::int32_t thr = R(o.ThrOffN() * 2 / 3.2808);
    const std::int32_t ext = R(o.ExtN() * 2 / 3.2808);
    BuildRunwayGeometry(lines, W, L, o.Rotation, o.PosX, o.PosY, o.EnableLights(), thr, ext);
}

void BuildObjectGeometry(LineSet& lines, const ObjectRecord& o, double zoom)
{
    switch (o.oType) {
    case kRunway: BuildRunwayFromRecord(lines, o); break;
    case kApi: BuildApiGeometry(lines, o); break;
    case kVor: BuildVorGeometry(lines, o, zoom); break;
    case kNdb: BuildNdbGeometry(lines, o, zoom); break;
    case kInit: BuildInitGeometry(lines, o, zoom); break;
    case kExclude:
        BuildExcludeGeometry(lines, o.PosX, o.PosY, o.ExclWidth() * 2, o.ExclHeight() * 2, zoom);
        break;
    case kSign: BuildSignGeometry(lines, o); break;
    default: lines.clear(); break;
    }
}

} // namespace fw
