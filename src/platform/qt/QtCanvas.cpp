#include "platform/qt/QtCanvas.h"

#include <QPainterPath>

#include <algorithm>
#include <cstdlib>

namespace fw::qt {

namespace {

constexpr int kDotOn = 3;
constexpr int kDotPeriod = 6;

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

Pen QtCanvas::SelectPen(const Pen& pen)
{
    const Pen old = pen_;
    pen_ = pen;
    return old;
}

Brush QtCanvas::SelectBrush(const Brush& brush)
{
    const Brush old = brush_;
    brush_ = brush;
    return old;
}

RasterOp QtCanvas::SetROP2(RasterOp op)
{
    const RasterOp old = rop_;
    rop_ = op;
    return old;
}

BkMode QtCanvas::SetBkMode(BkMode mode)
{
    const BkMode old = bkMode_;
    bkMode_ = mode;
    return old;
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
void QtCanvas::StrokeLine(int x0, int y0, int x1, int y1)
{
    const std::int64_t dx = static_cast<std::int64_t>(x1) - x0;
    const std::int64_t dy = static_cast<std::int64_t>(y1) - y0;
    const std::int64_t steps = std::max(std::llabs(dx), std::llabs(dy));
    if (steps == 0)
        return;
    const QColor color = ColorOf(pen_.color);
    const bool styled = pen_.style == PenStyle::Dot && pen_.width <= 1;
    const int offsets = pen_.width >= 2 ? 4 : 1;
    auto at = [&](std::int64_t i) {
        // Same walk as the raster canvas: the minor axis rounds half away from the start.
        const bool xMajor = std::llabs(dx) >= std::llabs(dy);
        const std::int64_t minorDelta = xMajor ? dy : dx;
        const __int128 num = static_cast<__int128>(2) * i * std::llabs(minorDelta) + steps;
        const std::int64_t off = static_cast<std::int64_t>(num / (2 * static_cast<__int128>(steps)));
        const std::int64_t minor = (xMajor ? y0 : x0) + (minorDelta < 0 ? -off : off);
        const std::int64_t major = (xMajor ? x0 : y0) + ((xMajor ? dx : dy) < 0 ? -i : i);
        return xMajor ? QPoint(static_cast<int>(major), static_cast<int>(minor))
                      : QPoint(static_cast<int>(minor), static_cast<int>(major));
    };
    // Only the steps whose major coordinate falls on the image are walked.
    const bool xMajorAxis = std::llabs(dx) >= std::llabs(dy);
    const std::int64_t major0 = xMajorAxis ? x0 : y0;
    const std::int64_t majorLimit = xMajorAxis ? image_.width() : image_.height();
    const bool forward = (xMajorAxis ? dx : dy) >= 0;
    const std::int64_t first = std::max<std::int64_t>(0, forward ? -1 - major0 : major0 - majorLimit);
    const std::int64_t last = std::min<std::int64_t>(steps - 1, forward ? majorLimit - major0 : major0 + 1);
    // Level, upright and 45-degree lines go to QPainter whole; on any other slope its walk would
    // settle the half-way pixels its own way, so the walk's own pixels are set instead.
    const bool straight = dx == 0 || dy == 0 || std::llabs(dx) == std::llabs(dy);
    if (!styled && straight) {
        if (last < first)
            return;
        const QPoint a = at(first);
        const QPoint b = at(last);
        for (int k = 0; k < offsets; ++k) {
            const QPoint d(k & 1, k >> 1);
            Queue(color.rgb(), QLine(a + d, b + d));
        }
        return;
    }
    // The walk from step `first` on, its rounding carried with a remainder.
    const std::int64_t minorAbs = xMajorAxis ? std::llabs(dy) : std::llabs(dx);
    const std::int64_t twoSteps = 2 * steps;
    const __int128 n0 = static_cast<__int128>(2) * first * minorAbs + steps;
    std::int64_t rem = static_cast<std::int64_t>(n0 % twoSteps);
    QPoint p = at(first);
    const QPoint majorStep = xMajorAxis ? QPoint(forward ? 1 : -1, 0) : QPoint(0, forward ? 1 : -1);
    const QPoint minorStep = xMajorAxis ? QPoint(0, dy < 0 ? -1 : 1) : QPoint(dx < 0 ? -1 : 1, 0);
    auto advance = [&] {
        p += majorStep;
        rem += 2 * minorAbs;
        if (rem >= twoSteps) {
            rem -= twoSteps;
            p += minorStep;
        }
    };
    if (!styled) {
        // The walk's pixels go straight into the image the painter works on, after the lines
        // still queued, so that the order of painting holds. Queued lines of this same colour
        // and mode may wait: writing a colour, or masking with it, gives the same pixels in
        // either order.
        const QRgb rgb = 0xFF000000u | (color.rgb() & 0xFFFFFFu);
        const bool mask = rop_ == RasterOp::MaskPen;
        if (pending_.isEmpty() || pendingColor_ != color.rgb() || pendingMode_ != PenMode())
            Flush();
        const int w = image_.width();
        const int h = image_.height();
        for (std::int64_t i = first; i <= last; ++i, advance())
            for (int k = 0; k < offsets; ++k) {
                const int x = p.x() + (k & 1);
                const int y = p.y() + (k >> 1);
                if (x < 0 || y < 0 || x >= w || y >= h)
                    continue;
                QRgb& px = bits_[static_cast<std::size_t>(y) * stride_ + x];
                px = mask ? (px & rgb) : rgb;
            }
        return;
    }
    // The dotted pen: the pattern runs on from the previous segment of the polyline.
    const QRect bounds = image_.rect().adjusted(-1, -1, 1, 1);
    const int start = styleStep_;
    QPolygon on;
    QPolygon off;
    for (std::int64_t i = first; i <= last; ++i, advance()) {
        if (bounds.contains(p))
            ((start + i) % kDotPeriod < kDotOn ? on : off) << p;
    }
    styleStep_ = static_cast<int>((start + steps) % kDotPeriod);
    Flush();
    SetMode(PenMode());
    SetQtPen(color.rgb());
    painter_->drawPoints(on);
    if (bkMode_ == BkMode::Opaque) {
        SetQtPen(QColor(Qt::white).rgb());
        painter_->drawPoints(off);
    }
}

void QtCanvas::Line(int x0, int y0, int x1, int y1)
{
    if (pen_.style == PenStyle::Null)
        return;
    StrokeLine(x0, y0, x1, y1);
}

void QtCanvas::MoveToEx(int x, int y)
{
    curX_ = x;
    curY_ = y;
    styleStep_ = 0;
}

void QtCanvas::LineTo(int x, int y)
{
    Line(curX_, curY_, x, y);
    curX_ = x;
    curY_ = y;
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
    const int keepX = curX_;
    const int keepY = curY_;
    MoveToEx(points[0].x, points[0].y);
    for (std::size_t i = 1; i < points.size(); ++i)
        LineTo(points[i].x, points[i].y);
    LineTo(points[0].x, points[0].y);
    curX_ = keepX;
    curY_ = keepY;
}

void QtCanvas::Rectangle(int left, int top, int right, int bottom)
{
    if (left > right)
        std::swap(left, right);
    if (top > bottom)
        std::swap(top, bottom);
    // Held well inside 32 bits: nothing beyond can show, and the edges below subtract one.
    constexpr int kLimit = 1 << 30;
    left = std::clamp(left, -kLimit, kLimit);
    right = std::clamp(right, -kLimit, kLimit);
    top = std::clamp(top, -kLimit, kLimit);
    bottom = std::clamp(bottom, -kLimit, kLimit);
    if (right - left < 1 || bottom - top < 1)
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
