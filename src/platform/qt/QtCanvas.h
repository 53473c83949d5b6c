// The Canvas on a QImage, painted with QPainter without antialiasing so that every pixel lands
// where the GDI would put it: lines leave out their last pixel, rectangles their right and bottom
// edge, polygons fill by the alternate rule, the dotted pen is three on and three off, the
// forward diagonal hatch runs down to the right on an 8-pixel grid from the surface's corner.
#pragma once

#include <QImage>
#include <QLine>
#include <QPainter>
#include <QVector>

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
    void Polygon(const std::vector<PixelPoint>& points) override;
    void Rectangle(int left, int top, int right, int bottom) override;
    void BlitPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels) override;
    void FillWhite(int x, int y, int width, int height) override;
    void CopyFrom(const Canvas& source) override;
    void StretchPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels,
                       int srcWidth, int srcHeight) override;

    // The picture so far (RGB32); valid while the canvas lives.
    const QImage& Image() const
    {
        Flush();
        return image_;
    }
    // 0x00RRGGBB of one pixel, 0 off the surface.
    std::uint32_t Pixel(int x, int y) const;

private:
    void Line(int x0, int y0, int x1, int y1) override;
    // Lines of one colour and mode are gathered and drawn in one call; anything else that
    // touches the image draws them first.
    void Queue(QRgb color, const QLine& line);
    void Flush() const;
    QPainter::CompositionMode PenMode() const;
    // The painter's state changes only when it has to.
    void SetMode(QPainter::CompositionMode mode) const;
    void SetQtPen(QRgb color) const;
    void FillPath(const QPainterPath& path);
    QImage Wrap(int width, int height, const std::vector<std::uint32_t>& pixels) const;

    QImage image_;
    QRgb* bits_ = nullptr;
    std::size_t stride_ = 0;
    std::unique_ptr<QPainter> painter_;
    mutable QPainter::CompositionMode mode_ = QPainter::CompositionMode_SourceOver;
    mutable QRgb penColor_ = 0;
    mutable bool penSet_ = false;
    mutable QVector<QLine> pending_;
    QRgb pendingColor_ = 0;
    QPainter::CompositionMode pendingMode_ = QPainter::CompositionMode_SourceOver;
    QBrush hatch_;
    std::int32_t hatchColor_ = 0;
    bool hatchOpaque_ = false;
    bool hatchSet_ = false;
};

} // namespace fw::qt
