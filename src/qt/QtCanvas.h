// The Canvas on a QImage. Every pixel lands where the GDI would put it: lines leave out their last
// pixel, rectangles their right and bottom edge, polygons fill by the alternate rule, the dotted
// pen is three on and three off, the forward diagonal hatch runs down to the right on an 8-pixel
// grid from the surface's corner. Lines and fills are set into the image's rows by the shared GDI
// walk and span fill; QPainter, without antialiasing, clears, copies and draws the pictures.
#pragma once

#include <QImage>
#include <QPainter>

#include <memory>

#include "render/GdiCanvas.h"

namespace fw::qt {

class QtCanvas : public GdiCanvas {
public:
    QtCanvas(int width, int height);
    ~QtCanvas() override;
    QtCanvas(const QtCanvas&) = delete;
    QtCanvas& operator=(const QtCanvas&) = delete;

    int Width() const override { return image_.width(); }
    int Height() const override { return image_.height(); }
    void BlitPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels) override;
    void FillWhite(int x, int y, int width, int height) override;
    void CopyFrom(const Canvas& source) override;
    void StretchPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels,
                       int srcWidth, int srcHeight) override;

    // The picture so far (RGB32); valid while the canvas lives.
    const QImage& Image() const { return image_; }
    // The pixels for a whole frame written from outside (the OpenGL view's read-back): the first
    // row's first pixel, and the values from one row to the next in stride.
    std::uint32_t* FrameBits(int& stride)
    {
        stride = static_cast<int>(stride_);
        return reinterpret_cast<std::uint32_t*>(bits_);
    }
    // 0x00RRGGBB of one pixel, 0 off the surface.
    std::uint32_t Pixel(int x, int y) const;

private:
    void SetMode(QPainter::CompositionMode mode) const;
    Rows Surface() override;
    QImage Wrap(int width, int height, const std::vector<std::uint32_t>& pixels) const;

    QImage image_;
    QRgb* bits_ = nullptr;
    std::size_t stride_ = 0;
    std::unique_ptr<QPainter> painter_;
    mutable QPainter::CompositionMode mode_ = QPainter::CompositionMode_SourceOver;
};

} // namespace fw::qt
