#include <functional>

#include "core/Helpers.h"
#include "export/ExportItems.h"
#include "export/Optimize.h"
#include "export/ShapeSkeleton.h"

namespace fw {

namespace {

// 1..4 when the texture takes part in mip-map emulation (the last equal entry wins), else 0.
int TextureLevel(const ProjectRecord& p, const ShapeRecord& shape)
{
    int t = 0;
    if (p.UseTextureLevels == 1 && shape.vNoTextureLevels != 1)
        for (int k = 0; k < 4; ++k)
            if (shape.tDayPath == p.Texture[k])
                t = k + 1;
    return t;
}

struct Ladder {
    int t = 0;
    bool reduce = false; // Mlc: each level reduces the points
    std::string base;    // texture name without folder and extension
};

using Statement = std::function<void(const IndexList&)>;

// Four levels of detail behind the distance switch; each level ends by jumping past the rest.
void WriteLadder(ExportContext& ctx, const ShapeRecord& shape, const ShapeGeometry& g, const ShapeFrame& f,
                 int n, const Ladder& ladder, const IndexList& list0, const Statement& statement)
{
    const std::string I2 = f.I + "  ";
    static constexpr const char* kLabels[4] = {";Closest", ":Close", ":Far", ":VeryFar"};
    static constexpr const char* kSuffix[4] = {"", "_T1", "_T2", "_T3"};
    ctx.add(I2);
    WriteDistanceSwitch(ctx, g.r, I2, n);
    ctx.add(I2);
    for (int level = 0; level < 4; ++level) {
        if (level == 0)
            ctx.addJoined(I2, std::string_view(kLabels[level]));
        else
            ctx.addJoined(I2, std::string_view(kLabels[level]), IntForm{n});
        if (ladder.t != 0)
            WriteLoadBitmap(ctx, LoadBitmapFlags(shape.tLoadflag), 15, ctx.project.Color[ladder.t - 1],
                            ladder.base + kSuffix[level], I2);
        statement(ladder.reduce ? ReducedIndices(g.local, level, true) : list0);
        if (level < 3) {
            ctx.addJoined(I2, "Jump( :RefEnd", IntForm{n}, " )");
            ctx.add(I2);
        }
    }
}

} // namespace

void ExportPolygon(ExportContext& ctx, const ShapeRecord& shape, const PointList& points,
                   const std::string& indent, int n)
{
    const ProjectRecord& p = ctx.project;
    const double s = p.PolyScale;
    const ShapeGeometry g = PrepareShapeGeometry(ctx, points, s);
    const IndexList list0 = ReducedIndices(g.local, 0, true);
    if (list0.size() < 3)
        return;
    const bool isTex = shape.gType == kTexPoly;
    const ShapeFrame f = OpenShapeFrame(ctx, shape, isTex ? ShapeTitle::TexPoly : ShapeTitle::Poly, g, s, indent, n,
                                        false);
    WritePoints(ctx, g.local, f.I + "  ");
    ctx.add(f.I);
    const std::string I2 = f.I + "  ";

    if (!isTex && shape.gIsColored == 1) {
        const Statement poly = [&](const IndexList& list) {
            WritePolyStatement(ctx, list, I2, shape.cLighted, g.concave);
        };
        WriteRGBSColor(ctx, shape.cColor, shape.cTransparency, I2);
        if (p.UsePointReduction == 1 && shape.vNoPointReduction != 1) {
            WriteLadder(ctx, shape, g, f, n, Ladder{0, shape.vNoPointReduction == 0, {}}, list0, poly);
        } else {
            ctx.add(I2);
            poly(list0);
        }
        CloseShapeFrame(ctx, f, n);
        return;
    }

    Ladder ladder;
    ladder.t = TextureLevel(p, shape);
    if (ladder.t == 0)
        WriteLoadBitmap(ctx, LoadBitmapFlags(shape.tLoadflag), 0, 0, shape.tDayPath, I2);
    else
        ladder.base = GetNameFromPath(shape.tDayPath, false);

    if (isTex) {
        if (list0.size() > 4)
            throw OperationFault("A TexPoly can map at most four points; this one keeps " +
                                 std::to_string(list0.size()) + ".");
        std::vector<TexCoord> uv;
        for (int k = 0; k < 4; ++k)
            uv.push_back({shape.mTexMap[2 * k], shape.mTexMap[2 * k + 1]});
        const Statement tex = [&](const IndexList& list) {
            WriteTexPolyStatement(ctx, list, uv, I2, shape.tSwitch, g.concave);
        };
        if (p.UseTextureLevels == 1 && shape.vNoTextureLevels == 0) {
            WriteLadder(ctx, shape, g, f, n, ladder, list0, tex);
        } else {
            ctx.add(I2);
            tex(list0);
        }
    } else {
        const Statement poly = [&](const IndexList& list) { WritePolyStatement(ctx, list, I2, 0, g.concave); };
        if ((p.UsePointReduction == 0 && p.UseTextureLevels == 0) ||
            shape.vNoPointReduction + shape.vNoTextureLevels >= 2) {
            ctx.add(I2);
            poly(list0);
        } else {
            ladder.reduce = p.UsePointReduction == 1 && shape.vNoPointReduction == 0;
            WriteLadder(ctx, shape, g, f, n, ladder, list0, poly);
        }
    }
    CloseShapeFrame(ctx, f, n);
}

} // namespace fw
