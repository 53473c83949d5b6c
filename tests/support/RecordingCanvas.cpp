#include "support/RecordingCanvas.h"

namespace fw {

void RecordingCanvas::Record(const std::string& op, std::vector<int> args)
{
    calls.push_back({op, std::move(args), pen, brush});
}

Pen RecordingCanvas::SelectPen(const Pen& p)
{
    Pen old = pen;
    pen = p;
    Record("pen", {static_cast<int>(p.style), p.width, p.color});
    return old;
}

Brush RecordingCanvas::SelectBrush(const Brush& b)
{
    Brush old = brush;
    brush = b;
    Record("brush", {static_cast<int>(b.kind), b.color});
    return old;
}

RasterOp RecordingCanvas::SetROP2(RasterOp op)
{
    RasterOp old = rop;
    rop = op;
    Record("rop", {static_cast<int>(op)});
    return old;
}

BkMode RecordingCanvas::SetBkMode(BkMode mode)
{
    BkMode old = bkMode;
    bkMode = mode;
    Record("bkmode", {static_cast<int>(mode)});
    return old;
}

void RecordingCanvas::MoveToEx(int x, int y) { Record("move", {x, y}); }
void RecordingCanvas::LineTo(int x, int y) { Record("line", {x, y}); }

void RecordingCanvas::Polygon(const std::vector<PixelPoint>& points)
{
    std::vector<int> args;
    for (const auto& p : points) {
        args.push_back(p.x);
        args.push_back(p.y);
    }
    Record("polygon", std::move(args));
}

void RecordingCanvas::Rectangle(int left, int top, int right, int bottom)
{
    Record("rect", {left, top, right, bottom});
}

void RecordingCanvas::BlitPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>&)
{
    Record("blit", {x, y, width, height});
}

void RecordingCanvas::FillWhite(int x, int y, int width, int height)
{
    Record("white", {x, y, width, height});
}

void RecordingCanvas::CopyFrom(const Canvas& source)
{
    Record("copy", {source.Width(), source.Height()});
}

void RecordingCanvas::StretchPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>&,
                                    int srcWidth, int srcHeight)
{
    Record("stretch", {x, y, width, height, srcWidth, srcHeight});
}

} // namespace fw
