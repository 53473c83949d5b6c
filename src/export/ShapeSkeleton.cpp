#include "export/ShapeSkeleton.h"

namespace fw {

ShapeFrame OpenShapeFrame(ExportContext& ctx, const ShapeRecord& shape, const char* titleLine,
                          const ShapeGeometry& g, double scale, const std::string& indent, int n, bool lineBlank)
{
    ShapeFrame f;
    f.I = indent;
    f.layer = LayerToValue(shape.vLayer);
    WriteShapeBanner(ctx, f.I, titleLine, shape.gComment);
    if (f.layer > 1) {
        ctx.add(f.I);
        ctx.addJoined(f.I, ShapeAreaLine(g.centre, shape.vRange));
        ctx.addJoined(f.I, "  ");
        ctx.addJoined(f.I, "  LayerCall( :LayerStart ", IntForm{f.layer}, " )");
        ctx.addJoined(f.I, "  Jump( : )");
        ctx.addJoined(f.I, "  ");
        ctx.addJoined(f.I, "    :LayerStart");
        f.I += "  ";
        f.tail = "Return";
    }
    ctx.add(f.I);
    ctx.addJoined(f.I, RefPointLine(":RefEnd" + Int(n), scale, g.centre, shape.vRange, g.r));
    ctx.addJoined(f.I, "  ");
    WriteTimeSwitch(ctx, shape.vTime, f.I + "  ", n);
    if (lineBlank)
        ctx.add(f.I);
    else
        ctx.addJoined(f.I, "  ");
    return f;
}

void CloseShapeFrame(ExportContext& ctx, const ShapeFrame& f, int n)
{
    ctx.addJoined(f.I, "  ");
    ctx.addJoined(f.I, "  :RefEnd", IntForm{n});
    ctx.addJoined(f.I, "  ", f.tail);
    if (f.layer > 1) {
        ctx.add(f.I);
        ctx.addJoined(f.I, "EndA");
    }
}

} // namespace fw
