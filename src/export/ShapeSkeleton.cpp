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
        ctx.add(f.I + ShapeAreaLine(g.centre, shape.vRange));
        ctx.add(f.I + "  ");
        ctx.add(f.I + "  LayerCall( :LayerStart " + Int(f.layer) + " )");
        ctx.add(f.I + "  Jump( : )");
        ctx.add(f.I + "  ");
        ctx.add(f.I + "    :LayerStart");
        f.I += "  ";
        f.tail = "Return";
    }
    ctx.add(f.I);
    ctx.add(f.I + RefPointLine(":RefEnd" + Int(n), scale, g.centre, shape.vRange, g.r));
    ctx.add(f.I + "  ");
    WriteTimeSwitch(ctx, shape.vTime, f.I + "  ", n);
    ctx.add(lineBlank ? f.I : f.I + "  ");
    return f;
}

void CloseShapeFrame(ExportContext& ctx, const ShapeFrame& f, int n)
{
    ctx.add(f.I + "  ");
    ctx.add(f.I + "  :RefEnd" + Int(n));
    ctx.add(f.I + "  " + f.tail);
    if (f.layer > 1) {
        ctx.add(f.I);
        ctx.add(f.I + "EndA");
    }
}

} // namespace fw
