#include "qt/QtCanvas.h"

#include <algorithm>
#include <cstdlib>

namespace fw::qt {

QtCanvas::QtCanvas(int width, int height)
    : image_(std::max(width, 1), std::max(height, 1), QImage::Format_RGB32)
{
    image_.fill(Qt::white);
    // The painter and the direct pixel writes of lines and fills share this one buffer.
    bits_ = reinterpret_cast<QRgb*>(image_.bits());
    stride_ = static_cast<std::size_t>(image_.bytesPerLine()) / sizeof(QRgb);
    painter_ = std::make_unique<QPainter>(&image_);
    painter_->setRenderHint(QPainter::Antialiasing, false);
    painter_->setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter_->setBrushOrigin(0, 0);
}

QtCanvas::~QtCanvas()
{
    if (painter_)
        painter_->end();
}

std::uint32_t QtCanvas::Pixel(int x, int y) const
{
    if (x < 0 || y < 0 || x >= image_.width() || y >= image_.height())
        return 0;
    return image_.pixel(x, y) & 0xFFFFFF;
}

void QtCanvas::SetMode(QPainter::CompositionMode mode) const
{
    if (mode != mode_) {
        painter_->setCompositionMode(mode);
        mode_ = mode;
    }
}

// Lines and fills go straight into the rows the painter works on: QPainter's own aliased walk
// settles the half-way pixels of a slope its own way, and its fills sample edges differently.
GdiCanvas::Rows QtCanvas::Surface()
{
    return {bits_, stride_, image_.width(), image_.height(), 0xFF000000u};
}

QImage QtCanvas::Wrap(int width, int height, const std::vector<std::uint32_t>& pixels) const
{
    QImage img(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        auto* row = reinterpret_cast<QRgb*>(img.scanLine(y));
        for (int x = 0; x < width; ++x)
            row[x] = 0xFF000000u | (pixels[static_cast<std::size_t>(y) * width + x] & 0xFFFFFF);
    }
    return img;
}

void QtCanvas::BlitPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels)
{
    if (width <= 0 || height <= 0 || pixels.size() < static_cast<std::size_t>(width) * height)
        return;
    SetMode(QPainter::CompositionMode_Source);
    painter_->drawImage(QPoint(x, y), Wrap(width, height, pixels));
}

void QtCanvas::FillWhite(int x, int y, int width, int height)
{
    SetMode(QPainter::CompositionMode_Source);
    painter_->fillRect(QRect(x, y, width, height), Qt::white);
}

void QtCanvas::CopyFrom(const Canvas& source)
{
    const auto* src = dynamic_cast<const QtCanvas*>(&source);
    if (src == nullptr || src == this)
        return;
    SetMode(QPainter::CompositionMode_Source);
    painter_->drawImage(QPoint(0, 0), src->image_);
}

void QtCanvas::StretchPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels,
                             int srcWidth, int srcHeight)
{
    if (width <= 0 || height <= 0 || srcWidth <= 0 || srcHeight <= 0 ||
        pixels.size() < static_cast<std::size_t>(srcWidth) * srcHeight)
        return;
    if (!QRect(x, y, width, height).intersects(image_.rect()))
        return;
    SetMode(QPainter::CompositionMode_Source);
    painter_->drawImage(QRect(x, y, width, height), Wrap(srcWidth, srcHeight, pixels));
}

} // namespace fw::qt
