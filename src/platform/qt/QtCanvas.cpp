#include "platform/qt/QtCanvas.h"

#include <QPainterPath>

#include <algorithm>
#include <cstdlib>

namespace fw::qt {

namespace {

QColor ColorOf(std::int32_t colorRef)
{
    return QColor(colorRef & 0xFF, (colorRef >> 8) & 0xFF, (colorRef >> 16) & 0xFF);
}

// One 8 by 8 tile of the forward diagonal hatch; the rest of the tile is background or clear.
QImage HatchTile(const QColor& color, bool opaque)
{
    QImage tile(8, 8, QImage::Format_ARGB32);
    tile.fill(opaque ? QColor(Qt::white) : QColor(Qt::transparent));
    for (int i = 0; i < 8; ++i)
        tile.setPixelColor(i, i, color);
    return tile;
}

} // namespace

QtCanvas::QtCanvas(int width, int height)
    : image_(std::max(width, 1), std::max(height, 1), QImage::Format_RGB32)
{
    image_.fill(Qt::white);
    // The painter and the direct pixel writes of slanted lines share this one buffer.
    bits_ = reinterpret_cast<QRgb*>(image_.bits());
    stride_ = static_cast<std::size_t>(image_.bytesPerLine()) / sizeof(QRgb);
    painter_ = std::make_unique<QPainter>(&image_);
    painter_->setRenderHint(QPainter::Antialiasing, false);
    painter_->setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter_->setBrushOrigin(0, 0);
}

QtCanvas::~QtCanvas()
{
    Flush();
    if (painter_)
        painter_->end();
}

std::uint32_t QtCanvas::Pixel(int x, int y) const
{
    Flush();
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

void QtCanvas::SetQtPen(QRgb color) const
{
    if (!penSet_ || color != penColor_) {
        QPen pen{QColor::fromRgb(color), 1};
        pen.setCosmetic(true);
        painter_->setPen(pen);
        penColor_ = color;
        penSet_ = true;
    }
}

QPainter::CompositionMode QtCanvas::PenMode() const
{
    return rop_ == RasterOp::MaskPen ? QPainter::RasterOp_SourceAndDestination : QPainter::CompositionMode_SourceOver;
}

void QtCanvas::Flush() const
{
    if (pending_.isEmpty())
        return;
    SetMode(pendingMode_);
    SetQtPen(pendingColor_);
    painter_->drawLines(pending_);
    pending_.clear();
}

void QtCanvas::Queue(QRgb color, const QLine& line)
{
    const QPainter::CompositionMode mode = PenMode();
    if (!pending_.isEmpty() && (color != pendingColor_ || mode != pendingMode_))
        Flush();
    pendingColor_ = color;
    pendingMode_ = mode;
    pending_.append(line);
}

// A one-pixel line from (x0, y0) that leaves out (x1, y1). Qt's cosmetic pen draws both ends, so
// the line is drawn to the pixel before the end: the last pixel of the same walk.
void QtCanvas::Line(int x0, int y0, int x1, int y1)
{
    if (pen_.style == PenStyle::Null)
        return;
    LineWalk walk(x0, y0, x1, y1, image_.width(), image_.height());
    const int start = styleStep_;
    styleStep_ = static_cast<int>((start + walk.steps) % kDotPeriod);
    if (walk.first > walk.last)
        return;
    const QRgb color = 0xFF000000u | ToRgb(pen_.color);
    const bool styled = Dotted();
    const int offsets = pen_.width >= 2 ? 4 : 1;
    // Level, upright and 45-degree lines go to QPainter whole; on any other slope its walk would
    // settle the half-way pixels its own way, so the walk's own pixels are set instead.
    if (!styled && walk.straight) {
        const QPoint a(walk.x, walk.y);
        const std::int64_t n = walk.last - walk.first;
        const QPoint b(a.x() + static_cast<int>(n * ((x1 > x0) - (x1 < x0))),
                       a.y() + static_cast<int>(n * ((y1 > y0) - (y1 < y0))));
        for (int k = 0; k < offsets; ++k) {
            const QPoint d(k & 1, k >> 1);
            Queue(color, QLine(a + d, b + d));
        }
        return;
    }
    if (!styled) {
        // The walk's pixels go straight into the image the painter works on, after the lines
        // still queued, so that the order of painting holds. Queued lines of this same colour
        // and mode may wait: writing a colour, or masking with it, gives the same pixels in
        // either order.
        const bool mask = rop_ == RasterOp::MaskPen;
        if (pending_.isEmpty() || pendingColor_ != color || pendingMode_ != PenMode())
            Flush();
        const int w = image_.width();
        const int h = image_.height();
        for (std::int64_t i = walk.first; i <= walk.last; ++i, walk.Next())
            for (int k = 0; k < offsets; ++k) {
                const int x = walk.x + (k & 1);
                const int y = walk.y + (k >> 1);
                if (x < 0 || y < 0 || x >= w || y >= h)
                    continue;
                QRgb& px = bits_[static_cast<std::size_t>(y) * stride_ + x];
                px = mask ? (px & color) : color;
            }
        return;
    }
    // The dotted pen: the pattern runs on from the previous segment of the polyline.
    const QRect bounds = image_.rect().adjusted(-1, -1, 1, 1);
    QPolygon on;
    QPolygon off;
    for (std::int64_t i = walk.first; i <= walk.last; ++i, walk.Next()) {
        const QPoint p(walk.x, walk.y);
        if (bounds.contains(p))
            ((start + i) % kDotPeriod < kDotOn ? on : off) << p;
    }
    Flush();
    SetMode(PenMode());
    SetQtPen(color);
    painter_->drawPoints(on);
    if (bkMode_ == BkMode::Opaque) {
        SetQtPen(QColor(Qt::white).rgb());
        painter_->drawPoints(off);
    }
}

void QtCanvas::FillPath(const QPainterPath& path)
{
    Flush();
    switch (brush_.kind) {
    case Brush::Kind::Hollow: return;
    case Brush::Kind::Solid:
        SetMode(QPainter::CompositionMode_SourceOver);
        painter_->fillPath(path, ColorOf(brush_.color));
        return;
    case Brush::Kind::HatchForwardDiagonal: {
        SetMode(QPainter::CompositionMode_SourceOver);
        const bool opaque = bkMode_ == BkMode::Opaque;
        if (!hatchSet_ || hatchColor_ != brush_.color || hatchOpaque_ != opaque) {
            hatch_ = QBrush(HatchTile(ColorOf(brush_.color), opaque));
            hatchColor_ = brush_.color;
            hatchOpaque_ = opaque;
            hatchSet_ = true;
        }
        painter_->setBrushOrigin(0, 0);
        painter_->fillPath(path, hatch_);
        return;
    }
    }
}

void QtCanvas::Polygon(const std::vector<PixelPoint>& points)
{
    if (points.size() < 2)
        return;
    if (points.size() >= 3) {
        QPainterPath path;
        path.setFillRule(Qt::OddEvenFill);
        path.moveTo(points[0].x, points[0].y);
        for (std::size_t i = 1; i < points.size(); ++i)
            path.lineTo(points[i].x, points[i].y);
        path.closeSubpath();
        FillPath(path);
    }
    Outline(points);
}

void QtCanvas::Rectangle(int left, int top, int right, int bottom)
{
    if (!OrderRectangle(left, top, right, bottom))
        return;
    const QRect area = QRect(left, top, right - left, bottom - top).intersected(image_.rect().adjusted(-2, -2, 2, 2));
    if (area.isEmpty())
        return; // wholly off the image: nothing of it can show
    switch (brush_.kind) {
    case Brush::Kind::Hollow: break;
    case Brush::Kind::Solid:
        Flush();
        SetMode(QPainter::CompositionMode_SourceOver);
        painter_->fillRect(area, ColorOf(brush_.color));
        break;
    case Brush::Kind::HatchForwardDiagonal: {
        QPainterPath path;
        path.addRect(area);
        FillPath(path);
        break;
    }
    }
    const int keepX = curX_;
    const int keepY = curY_;
    MoveToEx(left, top);
    LineTo(right - 1, top);
    LineTo(right - 1, bottom - 1);
    LineTo(left, bottom - 1);
    LineTo(left, top);
    curX_ = keepX;
    curY_ = keepY;
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
    Flush();
    if (width <= 0 || height <= 0 || pixels.size() < static_cast<std::size_t>(width) * height)
        return;
    SetMode(QPainter::CompositionMode_Source);
    painter_->drawImage(QPoint(x, y), Wrap(width, height, pixels));
}

void QtCanvas::FillWhite(int x, int y, int width, int height)
{
    Flush();
    SetMode(QPainter::CompositionMode_Source);
    painter_->fillRect(QRect(x, y, width, height), Qt::white);
}

void QtCanvas::CopyFrom(const Canvas& source)
{
    const auto* src = dynamic_cast<const QtCanvas*>(&source);
    if (src == nullptr || src == this)
        return;
    Flush();
    src->Flush();
    SetMode(QPainter::CompositionMode_Source);
    painter_->drawImage(QPoint(0, 0), src->image_);
}

void QtCanvas::StretchPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels,
                             int srcWidth, int srcHeight)
{
    Flush();
    if (width <= 0 || height <= 0 || srcWidth <= 0 || srcHeight <= 0 ||
        pixels.size() < static_cast<std::size_t>(srcWidth) * srcHeight)
        return;
    if (!QRect(x, y, width, height).intersects(image_.rect()))
        return;
    SetMode(QPainter::CompositionMode_Source);
    painter_->drawImage(QRect(x, y, width, height), Wrap(srcWidth, srcHeight, pixels));
}

} // namespace fw::qt
