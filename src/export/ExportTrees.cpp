#include <cmath>
#include <cstring>
#include <iterator>
#include <vector>

#include "export/ExportItems.h"
#include "export/ItemGeometry.h"
#include "export/Optimize.h"
#include "export/ScasmWriter.h"

namespace fw {

namespace {

constexpr int kCapWidth = 12;
constexpr char kVector[] = "    0   32767   0 ;";

// The strip of the tree texture that the wall shows, and the rows and size that follow from it.
struct Band {
    std::int64_t lo = 0;
    std::int64_t hi = 0;
    int stripSize = 0; // 0: no strip, the band count is neither 4 nor 8
    NumberText lo3, hi3;
    NumberText capLo, capHi;
};

// Blanks as wide as a number form of that width.
NumberText BlankText(std::uint8_t width)
{
    NumberText out;
    std::memset(out.text, ' ', width);
    out.size = width;
    return out;
}

Band BandOf(int numBands, std::int64_t selected)
{
    Band b;
    if (numBands == 4) {
        const std::int64_t base = (3 - selected) * 60;
        b.lo = base + 19;
        b.hi = base + 72;
        b.stripSize = 60;
    } else if (numBands == 8) {
        const std::int64_t base = (7 - selected) * 30;
        b.lo = base + 19;
        b.hi = base + 42;
        b.stripSize = 30;
    } else {
        b.lo3 = b.hi3 = BlankText(3);
        b.capLo = b.capHi = BlankText(6);
        return b;
    }
    b.lo3 = Fix3Text(b.lo);
    b.hi3 = Fix3Text(b.hi);
    b.capLo = Fix6Text(256 - b.lo);
    b.capHi = Fix6Text(256 - b.hi);
    return b;
}

double Divide(double a, double b, const char* what)
{
    if (b == 0)
        throw OperationFault(std::string("Division by zero: ") + what + ".");
    return a / b;
}

// Negative lengths of local units: how far a 12-texel cap reaches at the scale of the strip.
std::int32_t CapLen(int stripSize, std::int32_t h)
{
    const double texelsPerUnit = Divide(stripSize, h, "the band height of a tree texture is below one metre");
    return ExportRound(-Divide(kCapWidth, texelsPerUnit, "a tree texture has no strip of 4 or 8 bands"),
                       "the end length of a tree wall");
}

// The texture advance along one piece: runs on past 256 for one piece before it folds.
struct WallStep {
    std::int64_t u = 0;
    std::int64_t u0 = 0;
    std::int64_t u1 = 0;

    void piece(int stripSize, double bandHeight, double len)
    {
        const std::int32_t step = ExportRound(
            Divide(stripSize, bandHeight, "the band height of a tree texture is 0") * (len / 2.0), "a texture step");
        u0 = u > 256 ? u % 256 : u;
        u1 = u0 + step;
        u = u1;
    }
};

// The length of each piece of a wall, from point i to the next (closed: the last back to the first),
// worked out before the rows: the roots overlap there, where between the rows each is waited for.
std::vector<double> PieceLengths(const PointList& points, bool closed)
{
    std::vector<double> lengths(points.size());
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
        lengths[i] = LengthAlong(points[i], points[i + 1]);
    if (closed && !points.empty())
        lengths.back() = LengthAlong(points.back(), points.front());
    return lengths;
}

NumberText Fix4(std::int64_t v) { return FixedText(v, 4); }

// One row of a face: the point's number, then the texel across and down. The forms made for this
// row alone are written in place; the texels shared by many rows are held by reference.
template <class Number, class Across>
struct Entry {
    Number a;
    Across b;
    const NumberText& c;
};

// One face in both windings, so it shows from either side: the same rows under both heads.
template <class Number, class Across>
void TwoSided(ExportContext& ctx, const std::string& J, const Entry<Number, Across> (&e)[4])
{
    ctx.addJoined(J, "ShadedTexPoly( a");
    const std::size_t rows = ctx.lines.size();
    for (const Entry<Number, Across>& x : e)
        ctx.addJoined(J, x.a, " ", x.b, " ", x.c);
    ctx.addJoined(J, ")");
    const std::size_t end = ctx.lines.size();
    ctx.addJoined(J, "ShadedTexPoly( ai");
    ctx.lines.repeat(rows, end, std::size(e) + 1);
}

// The head of the one area of a tree line or forest, down to its reference point.
void OpenTreeArea(ExportContext& ctx, const ShapeRecord& shape, const char* title, const LatLon& centre,
                  std::int32_t r, const std::string& I)
{
    WriteShapeBanner(ctx, "", title, shape.gComment);
    ctx.add("");
    ctx.add(ShapeAreaLine(centre, shape.vRange));
    ctx.add("  ");
    ctx.add("  PerspectiveCall( :3DStart )");
    ctx.add("  Jump( : )");
    ctx.add("");
    ctx.add("    :3DStart");
    ctx.add("    Perspective");
    ctx.add(I);
    ctx.addJoined(I, RefPointLine(":RefEnd0", 1.0, centre, shape.vRange, r));
}

void CloseTreeArea(ExportContext& ctx, const std::string& I)
{
    ctx.addJoined(I, "  ");
    ctx.addJoined(I, "  :RefEnd0");
    ctx.addJoined(I, "  Return");
    ctx.add("");
    ctx.add("EndA");
}

// The textured wall along a tree line, with a narrow cap at each end.
void WriteWall(ExportContext& ctx, const ShapeRecord& shape, const PointList& points, std::int32_t cx,
               std::int32_t cy, const std::string& J)
{
    PointList V(1); // V[0] is the start cap's end, filled below
    for (const Point& p : points) {
        const Point q{ExportRound((static_cast<double>(p.X) - cx) / 2.0, "a tree line point"),
                      ExportRound(-((static_cast<double>(p.Y) - cy) / 2.0), "a tree line point")};
        if (V.size() > 1 && q == V.back())
            continue;
        V.push_back(q);
    }
    std::size_t m = V.size() - 1;
    if (m < 2)
        return;

    const Band band = BandOf(shape.mNumBands, shape.mSelectedBand());
    const std::int32_t H = ExportRound(shape.mBandHeight / 1.0, "the height of a tree line");
    const std::int32_t capLen = CapLen(band.stripSize, H);
    V[0] = PointAlong(V[1], V[2], capLen);
    V.push_back(PointAlong(V[m], V[m - 1], capLen));
    m += 1;

    const NumberText H4 = Fix4(H);
    ctx.addJoined(J, "VecPoints( 0");
    for (std::size_t i = 0; i <= m; ++i) {
        const auto number = static_cast<std::int64_t>(2 * i);
        const Fix6Form x{V[i].X}, y{V[i].Y};
        ctx.addJoined(J, x, " 0    ", y, kVector, IntForm{number});
        ctx.addJoined(J, x, " ", H4, " ", y, kVector, IntForm{number + 1});
    }
    ctx.addJoined(J, ")");
    ctx.add(J);

    const NumberText cap0 = Fix6Text(0);
    const NumberText cap12 = Fix6Text(kCapWidth);
    TwoSided<IntForm, const NumberText&>(ctx, J, {{{0}, band.capLo, cap0}, {{2}, band.capLo, cap12},
                                                  {{3}, band.capHi, cap12}, {{1}, band.capHi, cap0}});

    const std::vector<double> lengths = PieceLengths(V, false);
    WallStep u;
    for (std::size_t i = 1; i + 2 <= m; ++i) {
        u.piece(band.stripSize, shape.mBandHeight, lengths[i]);
        const auto k = static_cast<std::int64_t>(2 * i);
        TwoSided<Fix3Form, Fix6Form>(ctx, J, {{{k}, {u.u0}, band.lo3}, {{k + 2}, {u.u1}, band.lo3},
                                              {{k + 3}, {u.u1}, band.hi3}, {{k + 1}, {u.u0}, band.hi3}});
    }

    const auto mm = static_cast<std::int64_t>(2 * m);
    const auto kk = static_cast<std::int64_t>(2 * (m - 1));
    TwoSided<Fix3Form, const NumberText&>(ctx, J, {{{mm}, band.capLo, cap0}, {{kk}, band.capLo, cap12},
                                                   {{kk + 1}, band.capHi, cap12}, {{mm + 1}, band.capHi, cap0}});
}

// Closed wall along the outline, an outer ring of caps, and three canopies stacked at 70, 85 and 100%.
void WriteForestBody(ExportContext& ctx, const ShapeRecord& shape, const PointList& P, const ForestTextures& tex,
                     const std::string& J)
{
    const Band band = BandOf(8, tex.flag);
    const std::int32_t H = ExportRound(shape.mBandHeight / 1.0, "the height of a forest");
    const std::int32_t H70 = ExportRound(H - H * 0.3, "the height of a forest");
    const std::int32_t H85 = ExportRound(H - H * 0.15, "the height of a forest");
    const NumberText H4 = Fix4(H);
    const NumberText H70_4 = Fix4(H70);
    const NumberText H85_4 = Fix4(H85);
    const std::int32_t capLen = CapLen(band.stripSize, H);
    const std::size_t n = P.size() - 1;
    auto neg = [](std::int32_t v) { return -static_cast<std::int64_t>(v); };

    ctx.addJoined(J, "Points( 0");
    for (std::size_t i = 0; i <= n; ++i) {
        const auto number = static_cast<std::int64_t>(3 * i);
        const Fix6Form x{P[i].X}, y{neg(P[i].Y)};
        ctx.addJoined(J, x, " ", H70_4, " ", y, " ;", IntForm{number});
        ctx.addJoined(J, x, " ", H85_4, " ", y, " ;", IntForm{number + 1});
        ctx.addJoined(J, x, " ", H4, " ", y, " ;", IntForm{number + 2});
    }
    ctx.addJoined(J, ")");
    ctx.add(J);

    // The canopy texture lies at four local units a texel over the whole forest; the first
    // canopy works out each point's texel, the other two write it again.
    std::vector<std::int32_t> U(n + 1), V(n + 1);
    for (int c = 0; c < 3; ++c) {
        WriteLoadBitmap(ctx, "WF5", 0, 0, tex.top[c], J);
        ctx.add(J);
        ctx.addJoined(J, "TexPoly( au");
        for (std::size_t i = 0; i <= n; ++i) {
            if (c == 0) {
                U[i] = ExportRound(P[i].X / 4.0, "a canopy texture point");
                V[i] = ExportRound(P[i].Y / 4.0, "a canopy texture point");
            }
            ctx.addJoined(J, IntForm{static_cast<std::int64_t>(3 * i) + c}, " ", Fix6Form{U[i]}, " ", Fix6Form{V[i]});
        }
        ctx.addJoined(J, ")");
        ctx.add(J);
    }

    ctx.addJoined(J, "VecPoints( 0");
    std::int64_t number = 0;
    for (std::size_t i = 0; i <= n; ++i) {
        // The foot of the wall is shaken by up to 1.5 units each way; the top stays in line with the canopy.
        const double a = ctx.nextRandom();
        const double b = ctx.nextRandom();
        const std::int32_t fx = ExportRound((a - 0.5) * 3.0 + P[i].X, "a forest wall point");
        const std::int32_t fy = ExportRound(((b - 0.5) * 3.0 + P[i].Y) * -1.0, "a forest wall point");
        ctx.addJoined(J, Fix6Form{fx}, " 0    ", Fix6Form{fy}, kVector, IntForm{number});
        ctx.addJoined(J, Fix6Form{P[i].X}, " ", H4, " ", Fix6Form{neg(P[i].Y)}, kVector, IntForm{number + 1});
        number += 2;
    }
    // The ring moves each point outward from the centre, which has no outward of its own. Its
    // points are worked out before their rows, so that their divisions and roots overlap.
    PointList ring(n + 1);
    for (std::size_t i = 0; i <= n; ++i) {
        if (P[i] == Point{0, 0})
            throw OperationFault("Division by zero: a forest point lies on the centre of its box.");
        ring[i] = PointAlong(P[i], Point{0, 0}, capLen);
    }
    for (std::size_t i = 0; i <= n; ++i) {
        const Point& q = ring[i];
        const Fix6Form x{q.X}, y{neg(q.Y)};
        ctx.addJoined(J, x, " 0    ", y, kVector, IntForm{number});
        ctx.addJoined(J, x, " ", H4, " ", y, kVector, IntForm{number + 1});
        number += 2;
    }
    ctx.addJoined(J, ")");
    ctx.add(J);

    WriteLoadBitmap(ctx, "WF5", 0, 0, tex.side, J);
    ctx.add(J);

    const NumberText cap0 = Fix6Text(0);
    const NumberText cap12 = Fix6Text(kCapWidth);
    const std::vector<double> lengths = PieceLengths(P, true);
    WallStep u;
    for (std::size_t i = 0; i <= n; ++i) {
        const std::size_t next = i == n ? 0 : i + 1;
        u.piece(band.stripSize, shape.mBandHeight, lengths[i]);
        const auto k = static_cast<std::int64_t>(2 * i);
        const auto kn = static_cast<std::int64_t>(2 * next);
        TwoSided<Fix3Form, Fix6Form>(ctx, J, {{{k}, {u.u0}, band.lo3}, {{kn}, {u.u1}, band.lo3},
                                              {{kn + 1}, {u.u1}, band.hi3}, {{k + 1}, {u.u0}, band.hi3}});
        const auto o = static_cast<std::int64_t>(2 * n + 2 + 2 * i);
        TwoSided<Fix3Form, const NumberText&>(ctx, J, {{{k}, band.capLo, cap12}, {{o}, band.capLo, cap0},
                                                       {{o + 1}, band.capHi, cap0}, {{k + 1}, band.capHi, cap12}});
    }
}

} // namespace

void ExportTreeLine(ExportContext& ctx, const ShapeRecord& shape, const PointList& points, const std::string& indent)
{
    if (points.empty())
        return;
    const std::string& I = indent;
    const ShapeBoxResult box = ShapeBox(points, 1.0);
    const LatLon centre = ctx.latLon(box.cx, box.cy, 2.0);

    OpenTreeArea(ctx, shape, ShapeTitle::TreeLine, centre, box.r, I);
    ctx.addJoined(I, "  ");
    WriteTimeSwitch(ctx, shape.vTime, I + "  ", 0);
    ctx.add(I);
    WriteLoadBitmap(ctx, LoadBitmapFlags(shape.tLoadflag), 0, 0, shape.tDayPath, I + "  ");
    ctx.addJoined(I, "  ");
    WriteWall(ctx, shape, points, box.cx, box.cy, I + "  ");
    CloseTreeArea(ctx, I);
}

void ExportForest(ExportContext& ctx, const ShapeRecord& shape, const PointList& points, const std::string& indent)
{
    if (shape.ForestType >= ctx.config.forest.size())
        throw OperationFault("The forest type " + Int(shape.ForestType) + " has no textures.");
    const ForestTextures& tex = ctx.config.forest[shape.ForestType];
    if (points.empty())
        return;

    // Local units are metres: the plan's half metres halved.
    PointList P;
    P.reserve(points.size());
    for (const Point& p : points)
        P.push_back({ExportRound(p.X / 2.0, "a forest point"), ExportRound(p.Y / 2.0, "a forest point")});
    const ShapeBoxResult box = ShapeBox(P, 0.5);
    for (Point& p : P) {
        p.X = ExportRound(static_cast<double>(p.X) - box.cx, "a forest point");
        p.Y = ExportRound(static_cast<double>(p.Y) - box.cy, "a forest point");
    }
    const LatLon centre = ctx.latLon(box.cx, box.cy, 1.0);
    if (ReducedIndices(P, 0, true).size() < 3)
        return;

    const std::string& I = indent;
    OpenTreeArea(ctx, shape, ShapeTitle::Forest, centre, box.r, I);
    ctx.addJoined(I, "  ");
    WriteTimeSwitch(ctx, shape.vTime, I + "  ", 0);
    ctx.addJoined(I, "  ");
    WriteForestBody(ctx, shape, P, tex, I + "  ");
    CloseTreeArea(ctx, I);
}

} // namespace fw
