// A Canvas that keeps the list of calls, for tests of the painters.
#pragma once

#include <string>
#include <vector>

#include "ports/Canvas.h"

namespace fw {

class RecordingCanvas : public Canvas {
public:
    struct Call {
        std::string op;            // "pen", "brush", "rop", "bkmode", "move", "line", "polygon", "rect", "blit",
                                   // "white", "copy", "stretch"
        std::vector<int> args;     // coordinates or values, in the call's order
        Pen pen;                   // the pen in use at the call
        Brush brush;               // the brush in use at the call
    };

    RecordingCanvas(int width, int height) : width_(width), height_(height) {}
    int Width() const override { return width_; }
    int Height() const override { return height_; }
    Pen SelectPen(const Pen& pen) override;
    Brush SelectBrush(const Brush& brush) override;
    RasterOp SetROP2(RasterOp op) override;
    BkMode SetBkMode(BkMode mode) override;
    void MoveToEx(int x, int y) override;
    void LineTo(int x, int y) override;
    void Polygon(const std::vector<PixelPoint>& points) override;
    void Rectangle(int left, int top, int right, int bottom) override;
    void BlitPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels) override;
    void FillWhite(int x, int y, int width, int height) override;
    void CopyFrom(const Canvas& source) override;
    void StretchPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels,
                       int srcWidth, int srcHeight) override;

    std::vector<Call> calls;
    Pen pen;
    Brush brush{Brush::Kind::Solid, 0xFFFFFF}; // a fresh surface's brush is white
    RasterOp rop = RasterOp::CopyPen;
    BkMode bkMode = BkMode::Opaque;

private:
    void Record(const std::string& op, std::vector<int> args);
    int width_;
    int height_;
};

} // namespace fw
