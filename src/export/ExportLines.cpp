#include <cmath>
#include <vector>

#include "export/ExportItems.h"
#include "export/Optimize.h"
#include "export/ShapeSkeleton.h"

namespace fw {

namespace {

// LineScale 0 picks the scale from the width: narrow lines get a fine grid, 4 m and over 2 m units.
double WideLineScale(const ProjectRecord& p, const ShapeRecord& shape)
{
    if (p.LineScale == 0.0)
        return shape.gLineWidth < 4.0 ? shape.gLineWidth / 2.0 : 2.0;
    return p.LineScale;
}

void WriteRoad(ExportContext& ctx, const ShapeRecord& shape, const ShapeGeometry& g, double s, int level,
               const std::string& indent)
{
    const IndexList list = ReducedIndices(g.local, level, false);
    if (list.empty())
        return;
    const std::string kind = shape.gIsColored == 1 ? "0" : "1";
    double half = (shape.gLineWidth / s) / 2.0;
    if (!(half >= 1.0))
        half = 1.0;
    // A Road has a positive half-width, a Line or centre line a negative one.
    std::string halfText = shape.gLineType != 1 ? "-" : "";
    halfText += IntText(ExportRound(half, "a line's half-width"));
    WriteRRStart(ctx, kind, halfText, g.local[list[0]], indent);
    for (std::size_t i = 1; i < list.size(); ++i)
        WriteRoadCont(ctx, g.local[list[i]], indent);
}

void WriteDotLines(ExportContext& ctx, const PointList& pts, double spacing, double s, const std::string& indent)
{
    const double step = spacing / s;
    if (!(step > 0 || step < 0) || !std::isfinite(step))
        throw OperationFault("A dot spacing of " + Real(spacing) + " m can't be written.");
    // Each segment's root and divisions wait on one another: worked out for all segments first,
    // they overlap, where between the rows written they would each be waited for.
    struct Segment {
        double c, sx, sy;
    };
    const std::size_t segments = pts.empty() ? 0 : pts.size() - 1;
    std::vector<Segment> along(segments);
    for (std::size_t i = 0; i < segments; ++i) {
        const Point& p = pts[i];
        const Point& q = pts[i + 1];
        const double dx = static_cast<double>(q.X) - p.X;
        const double dy = static_cast<double>(q.Y) - p.Y;
        const double c = std::sqrt(dx * dx + dy * dy) / step;
        along[i] = {c, p.X + dx / c, -(p.Y + dy / c)};
    }
    for (std::size_t i = 0; i < segments; ++i) {
        const Point& p = pts[i];
        const Point& q = pts[i + 1];
        double c = along[i].c;
        const Fix6Form qx{q.X}, qy{-static_cast<std::int64_t>(q.Y)};
        if (i == 0) {
            if (c < 1.0)
                c = 1.0;
            ctx.addJoined(indent, "DotLine( ", Fix6Form{p.X}, " 0 ", Fix6Form{-static_cast<std::int64_t>(p.Y)}, "  ",
                          qx, " 0 ", qy, " ", IntForm{ExportRound(c, "a dot count")}, " )");
        } else if (c < 1.0) {
            ctx.addJoined(indent, "Dot( ", qx, " 0 ", qy, " )");
        } else {
            // Start one step along the segment so the joint isn't lit twice.
            const std::int32_t sx = ExportRound(along[i].sx, "a dotted line's start");
            const std::int32_t sy = ExportRound(along[i].sy, "a dotted line's start");
            ctx.addJoined(indent, "DotLine( ", Fix6Form{sx}, " 0 ", Fix6Form{sy}, "  ", qx, " 0 ", qy, " ",
                          IntForm{ExportRound(c, "a dot count")}, " )");
        }
    }
}

void WriteDots(ExportContext& ctx, const PointList& pts, const std::string& indent)
{
    // The last point gets no dot.
    for (std::size_t i = 0; i + 1 < pts.size(); ++i)
        ctx.addJoined(indent, "Dot( ", Fix6Form{pts[i].X}, " 0 ", Fix6Form{-static_cast<std::int64_t>(pts[i].Y)},
                      " ) ;", IntForm{static_cast<std::int64_t>(i)});
}

} // namespace

bool HasCentreLine(const ShapeRecord& shape)
{
    return shape.gType == kWideLine && (shape.gLineType == 2 || shape.gLineType == 3);
}

ShapeRecord CentreLineCopy(const ShapeRecord& wideLine)
{
    ShapeRecord copy = wideLine;
    copy.gType = kDotLine;
    copy.cColor = 16;
    copy.vTime = kTimeNight | kTimeDusk;
    copy.gDotSpacing() = wideLine.gLineType == 3 ? 20.0 : 15.0;
    return copy;
}

void ExportWideLine(ExportContext& ctx, const ShapeRecord& shape, const PointList& points,
                    const std::string& indent, int n)
{
    const ProjectRecord& p = ctx.project;
    const double s = WideLineScale(p, shape);
    const ShapeGeometry g = PrepareShapeGeometry(ctx, points, s);
    const ShapeFrame f = OpenShapeFrame(ctx, shape, ShapeTitle::LineRoad, g, s, indent, n, true);
    const std::string I2 = f.I + "  ";
    if (shape.gIsColored == 1)
        WriteRGBSColor(ctx, shape.cColor, shape.cTransparency, I2);
    else
        WriteLoadBitmap(ctx, LoadBitmapFlags(shape.tLoadflag), 0, 0, shape.tDayPath, I2);
    if (p.UsePointReduction == 1 && shape.vNoPointReduction != 1) {
        ctx.add(I2);
        // Unlike a polygon's, the base of a line's switch is in metres.
        WriteDistanceSwitch(ctx, ExportRound(g.r * s, "a line's radius"), I2, n);
        ctx.add(I2);
        static constexpr const char* kLabels[4] = {";Closest", ":Close", ":Far", ":VeryFar"};
        for (int level = 0; level < 4; ++level) {
            if (level == 0)
                ctx.addJoined(I2, std::string_view(kLabels[level]));
            else
                ctx.addJoined(I2, std::string_view(kLabels[level]), IntForm{n});
            WriteRoad(ctx, shape, g, s, level, I2);
            if (level < 3) {
                ctx.addJoined(I2, "Jump( :RefEnd", IntForm{n}, " )");
                ctx.add(I2);
            }
        }
    } else {
        WriteRoad(ctx, shape, g, s, 0, I2);
    }
    CloseShapeFrame(ctx, f, n);
}

void ExportDotLine(ExportContext& ctx, const ShapeRecord& shape, const PointList& points,
                   const std::string& indent, int n)
{
    const double s = ctx.project.DotLineScale;
    const ShapeGeometry g = PrepareShapeGeometry(ctx, points, s);
    const ShapeFrame f = OpenShapeFrame(ctx, shape, ShapeTitle::DottedLine, g, s, indent, n, true);
    const std::string I2 = f.I + "  ";
    WriteLineColor(ctx, shape.cColor, I2); // a palette index
    ctx.add(I2);
    if (shape.DotLineType == 0)
        WriteDotLines(ctx, g.local, shape.gDotSpacing(), s, I2);
    else if (shape.DotLineType == 1)
        WriteDots(ctx, g.local, I2);
    CloseShapeFrame(ctx, f, n);
}

} // namespace fw
