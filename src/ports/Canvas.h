// The GDI-like drawing surface the painters use. Colours are 0x00BBGGRR.
#pragma once

#include <cstdint>
#include <vector>

namespace fw {

enum class PenStyle { Solid, Dash, Dot, DashDot, Null };
enum class RasterOp { CopyPen, MaskPen };
enum class BkMode { Opaque, Transparent };

struct Pen {
    PenStyle style = PenStyle::Solid;
    int width = 1;
    std::int32_t color = 0;
    friend bool operator==(const Pen&, const Pen&) = default;
};

struct Brush {
    enum class Kind { Solid, HatchForwardDiagonal, Hollow } kind = Kind::Solid;
    std::int32_t color = 0;
    friend bool operator==(const Brush&, const Brush&) = default;
};

struct PixelPoint {
    int x = 0;
    int y = 0;
    friend bool operator==(const PixelPoint&, const PixelPoint&) = default;
};

class Canvas {
public:
    virtual ~Canvas() = default;
    virtual int Width() const = 0;
    virtual int Height() const = 0;
    // SelectObject for a pen / brush; returns the one it replaces.
    virtual Pen SelectPen(const Pen& pen) = 0;
    virtual Brush SelectBrush(const Brush& brush) = 0;
    virtual RasterOp SetROP2(RasterOp op) = 0;
    virtual BkMode SetBkMode(BkMode mode) = 0;
    virtual void MoveToEx(int x, int y) = 0;
    virtual void LineTo(int x, int y) = 0;
    // Alternate fill, outlined with the pen.
    virtual void Polygon(const std::vector<PixelPoint>& points) = 0;
    // Right and bottom are exclusive.
    virtual void Rectangle(int left, int top, int right, int bottom) = 0;
    // 32-bit 0x00RRGGBB pixels, row-major, copied unscaled to (x, y).
    virtual void BlitPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels) = 0;
    // BitBlt with the white fill code.
    virtual void FillWhite(int /*x*/, int /*y*/, int /*width*/, int /*height*/) {}
    // BitBlt copy of the whole of another surface of the same kind to (0, 0).
    virtual void CopyFrom(const Canvas& /*source*/) {}
    // StretchBlt of srcWidth by srcHeight 0x00RRGGBB pixels onto width by height at (x, y).
    virtual void StretchPixels(int /*x*/, int /*y*/, int /*width*/, int /*height*/,
                               const std::vector<std::uint32_t>& /*pixels*/, int /*srcWidth*/,
                               int /*srcHeight*/)
    {
    }
};

} // namespace fw
