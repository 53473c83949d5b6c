#include "qt/QtCanvas.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace fw::qt {

QtCanvas::QtCanvas(int width, int height)
    : image_(std::make_unique<QImage>(std::max(width, 1), std::max(height, 1), QImage::Format_RGB32))
{
    width_ = image_->width();
    height_ = image_->height();
    image_->fill(Qt::white);
    // The painter and the direct pixel writes of lines and fills share this one buffer.
    bits_ = reinterpret_cast<QRgb*>(image_->bits());
    stride_ = static_cast<std::size_t>(image_->bytesPerLine()) / sizeof(QRgb);
    painter_ = std::make_unique<QPainter>(image_.get());
    painter_->setRenderHint(QPainter::Antialiasing, false);
    painter_->setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter_->setBrushOrigin(0, 0);
    const int tile = 1 << kTileShift;
    tilesX_ = (width_ + tile - 1) >> kTileShift;
    tilesY_ = (height_ + tile - 1) >> kTileShift;
    tiles_.assign(static_cast<std::size_t>(tilesX_) * tilesY_, 0);
    id_ = static_cast<std::uint64_t>(image_->cacheKey());
}

QtCanvas::~QtCanvas()
{
    if (mirrorOf_ != nullptr)
        mirrorOf_->mirror_ = nullptr;
    if (mirror_ != nullptr)
        mirror_->TakeMirroredPicture();
    if (painter_)
        painter_->end();
}

std::uint32_t QtCanvas::Pixel(int x, int y) const
{
    if (mirrorOf_ != nullptr)
        return mirrorOf_->Pixel(x, y);
    SetWaitingRuns();
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        return 0;
    return image_->pixel(x, y) & 0xFFFFFF;
}

QRegion QtCanvas::TakeChanged()
{
    if (mirrorOf_ != nullptr)
        TakeMirroredPicture();
    SetWaitingRuns();
    QRegion changed;
    const int tile = 1 << kTileShift;
    for (int ty = 0; ty < tilesY_; ++ty)
        for (int tx = 0; tx < tilesX_;) {
            auto isChanged = [&](int t) {
                return (tiles_[static_cast<std::size_t>(ty) * tilesX_ + t] >> 1) > takenEpoch_;
            };
            if (!isChanged(tx)) {
                ++tx;
                continue;
            }
            const int first = tx;
            while (tx + 1 < tilesX_ && isChanged(tx + 1))
                ++tx;
            changed += QRect(first * tile, ty * tile, (tx + 1 - first) * tile, tile) & image_->rect();
            ++tx;
        }
    takenEpoch_ = epoch_++;
    return changed;
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
GdiCanvas::Rows QtCanvas::Surface(const PixelBox& touched)
{
    Settle();
    Touch(touched);
    return {bits_, stride_, width_, height_, 0xFF000000u};
}

GdiCanvas::Rows QtCanvas::LineSurface(int x0, int y0, int x1, int y1)
{
    Settle();
    const PixelBox box{std::min(x0, x1), std::min(y0, y1), std::max<std::int64_t>(x0, x1) + 1,
                       std::max<std::int64_t>(y0, y1) + 1};
    const Rows rows{bits_, stride_, width_, height_, 0xFF000000u};
    int tx0 = 0, ty0 = 0, tx1 = 0, ty1 = 0;
    if (!TilesOf(box, tx0, ty0, tx1, ty1))
        return rows;
    if (tx1 - tx0 < 2 || ty1 - ty0 < 2) {
        Mark(tx0, ty0, tx1, ty1);
        return rows;
    }
    // In each band of tile rows the walk's pixels lie within half a pixel of the line across
    // the band's rows and the row either side; two more rows and columns hold the wide pen
    // and the rounding.
    const double slope = (static_cast<double>(x1) - x0) / (static_cast<double>(y1) - y0);
    for (int ty = ty0; ty <= ty1; ++ty) {
        const double ya = (ty << kTileShift) - 2.0;
        const double yb = ((ty + 1) << kTileShift) + 1.0;
        const double xa = x0 + (ya - y0) * slope;
        const double xb = x0 + (yb - y0) * slope;
        const PixelBox band{std::max(box.left, static_cast<std::int64_t>(std::floor(std::min(xa, xb))) - 2),
                            ty << kTileShift,
                            std::min(box.right, static_cast<std::int64_t>(std::ceil(std::max(xa, xb))) + 2),
                            ((ty + 1) << kTileShift) - 1};
        int bx0 = 0, by0 = 0, bx1 = 0, by1 = 0;
        if (TilesOf(band, bx0, by0, bx1, by1))
            Mark(bx0, ty, bx1, ty);
    }
    return rows;
}

void QtCanvas::Touch(const PixelBox& box)
{
    int tx0 = 0, ty0 = 0, tx1 = 0, ty1 = 0;
    if (TilesOf(box, tx0, ty0, tx1, ty1))
        Mark(tx0, ty0, tx1, ty1);
}

void QtCanvas::FillRows(int x0, int y0, int x1, int y1, std::uint32_t value)
{
    for (int y = y0; y <= y1; ++y) {
        QRgb* row = bits_ + static_cast<std::size_t>(y) * stride_;
        std::fill(row + x0, row + x1 + 1, value);
    }
}

void QtCanvas::CopyRows(const QtCanvas& source, int x0, int y0, int x1, int y1)
{
    for (int y = y0; y <= y1; ++y) {
        const QRgb* from = source.bits_ + static_cast<std::size_t>(y) * source.stride_;
        std::copy(from + x0, from + x1 + 1, bits_ + static_cast<std::size_t>(y) * stride_ + x0);
    }
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
    Settle();
    SetWaitingRuns();
    Touch({x, y, static_cast<std::int64_t>(x) + width - 1, static_cast<std::int64_t>(y) + height - 1});
    SetMode(QPainter::CompositionMode_Source);
    painter_->drawImage(QPoint(x, y), Wrap(width, height, pixels));
}

void QtCanvas::FillWhite(int x, int y, int width, int height)
{
    const PixelBox box{x, y, static_cast<std::int64_t>(x) + width - 1, static_cast<std::int64_t>(y) + height - 1};
    int tx0 = 0, ty0 = 0, tx1 = 0, ty1 = 0;
    if (width <= 0 || height <= 0 || !TilesOf(box, tx0, ty0, tx1, ty1))
        return;
    const int left = std::max(x, 0);
    const int top = std::max(y, 0);
    const auto right = static_cast<int>(std::min<std::int64_t>(box.right, width_ - 1));
    const auto bottom = static_cast<int>(std::min<std::int64_t>(box.bottom, height_ - 1));
    const bool whole = left == 0 && top == 0 && right == width_ - 1 && bottom == height_ - 1;
    if (whole)
        Forget();
    else
        Settle();
    wholeRepaint_ = wholeRepaint_ || whole;
    SetWaitingRuns();
    for (int ty = ty0; ty <= ty1; ++ty) {
        const int y0 = std::max(top, ty << kTileShift);
        const int y1 = std::min(bottom, ((ty + 1) << kTileShift) - 1);
        // Runs of tiles to fill: those the fill covers only in part, and whole ones with ink.
        for (int tx = tx0; tx <= tx1;) {
            auto needs = [&](int t) {
                const std::size_t i = static_cast<std::size_t>(ty) * tilesX_ + t;
                const bool whole = left <= (t << kTileShift) &&
                                   right >= std::min(((t + 1) << kTileShift) - 1, width_ - 1) &&
                                   top <= (ty << kTileShift) &&
                                   bottom >= std::min(((ty + 1) << kTileShift) - 1, height_ - 1);
                if (!whole || (tiles_[i] & 1) != 0) {
                    // White over the whole tile leaves no ink; over part of it, what there was.
                    tiles_[i] = (epoch_ << 1) | (whole ? 0 : (tiles_[i] & 1));
                    return true;
                }
                return false;
            };
            if (!needs(tx)) {
                ++tx;
                continue;
            }
            const int first = tx;
            while (tx + 1 <= tx1 && needs(tx + 1))
                ++tx;
            FillRows(std::max(left, first << kTileShift), y0, std::min(right, ((tx + 1) << kTileShift) - 1), y1,
                     0xFFFFFFFFu);
            ++tx;
        }
    }
}

void QtCanvas::CopyFrom(const Canvas& source)
{
    const auto* from = dynamic_cast<const QtCanvas*>(&source);
    if (from == nullptr || from == this)
        return;
    // Reading a canvas changes its buffers at most, never its picture.
    auto* src = const_cast<QtCanvas*>(from);
    // One stands for the other: the pictures are the same already.
    if (src->mirrorOf_ == this || mirrorOf_ == src)
        return;
    if (src->mirrorOf_ != nullptr)
        src->TakeMirroredPicture();
    if (src->wholeRepaint_ && src->image_->size() == image_->size()) {
        Exchange(*src);
        return;
    }
    Settle();
    SetWaitingRuns();
    src->SetWaitingRuns();
    if (src->image_->size() != image_->size()) {
        Touch({0, 0, Width() - 1, Height() - 1});
        SetMode(QPainter::CompositionMode_Source);
        painter_->drawImage(QPoint(0, 0), *src->image_);
        copied_ = false;
        return;
    }
    // The tiles that may differ: all, unless the source is the one copied last time; then those
    // it has written since, and those written here since.
    const bool known = copied_ && sourceId_ == src->id_;
    auto differs = [&](std::size_t i) {
        if (known && (src->tiles_[i] >> 1) <= sourceEpoch_ && (tiles_[i] >> 1) <= copiedEpoch_)
            return false;
        tiles_[i] = epoch_ << 1;
        return true;
    };
    for (int ty = 0; ty < tilesY_; ++ty) {
        const int y0 = ty << kTileShift;
        const int y1 = std::min(y0 + (1 << kTileShift), height_) - 1;
        const std::size_t row = static_cast<std::size_t>(ty) * tilesX_;
        for (int tx = 0; tx < tilesX_;) {
            if (!differs(row + tx)) {
                ++tx;
                continue;
            }
            const int first = tx;
            while (tx + 1 < tilesX_ && differs(row + tx + 1))
                ++tx;
            CopyRows(*src, first << kTileShift, y0, std::min(((tx + 1) << kTileShift), width_) - 1, y1);
            ++tx;
        }
    }
    for (std::size_t i = 0; i < tiles_.size(); ++i)
        tiles_[i] = (tiles_[i] & ~std::uint64_t{1}) | (src->tiles_[i] & 1);
    copied_ = true;
    sourceId_ = src->id_;
    sourceEpoch_ = src->epoch_++;
    copiedEpoch_ = epoch_++;
}

void QtCanvas::StretchPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels,
                             int srcWidth, int srcHeight)
{
    if (width <= 0 || height <= 0 || srcWidth <= 0 || srcHeight <= 0 ||
        pixels.size() < static_cast<std::size_t>(srcWidth) * srcHeight)
        return;
    if (!QRect(x, y, width, height).intersects(image_->rect()))
        return;
    Settle();
    SetWaitingRuns();
    Touch({x, y, static_cast<std::int64_t>(x) + width - 1, static_cast<std::int64_t>(y) + height - 1});
    SetMode(QPainter::CompositionMode_Source);
    painter_->drawImage(QRect(x, y, width, height), Wrap(srcWidth, srcHeight, pixels));
}

void QtCanvas::SettleNow()
{
    if (mirrorOf_ != nullptr)
        TakeMirroredPicture();
    if (mirror_ != nullptr)
        mirror_->TakeMirroredPicture();
}

void QtCanvas::Forget()
{
    if (mirrorOf_ != nullptr) {
        mirrorOf_->mirror_ = nullptr;
        mirrorOf_ = nullptr;
    }
    if (mirror_ != nullptr)
        mirror_->TakeMirroredPicture();
}

void QtCanvas::TakeMirroredPicture()
{
    QtCanvas& x = *mirrorOf_;
    mirrorOf_ = nullptr;
    x.mirror_ = nullptr;
    x.SetWaitingRuns();
    CopyRows(x, 0, 0, width_ - 1, height_ - 1);
    for (std::size_t i = 0; i < tiles_.size(); ++i)
        tiles_[i] = (epoch_ << 1) | (x.tiles_[i] & 1);
    // The two hold the same picture: each is the other's last copy.
    copied_ = true;
    sourceId_ = x.id_;
    sourceEpoch_ = x.epoch_;
    copiedEpoch_ = epoch_;
    x.copied_ = true;
    x.sourceId_ = id_;
    x.sourceEpoch_ = epoch_++;
    x.copiedEpoch_ = x.epoch_++;
}

void QtCanvas::Exchange(QtCanvas& source)
{
    Forget();
    if (source.mirror_ != nullptr)
        source.mirror_->TakeMirroredPicture();
    SetWaitingRuns();
    source.SetWaitingRuns();
    std::swap(image_, source.image_);
    std::swap(painter_, source.painter_);
    std::swap(mode_, source.mode_);
    std::swap(bits_, source.bits_);
    std::swap(stride_, source.stride_);
    std::swap(tiles_, source.tiles_);
    // Every tile is new here; the ink marks travel with the buffers.
    for (std::uint64_t& t : tiles_)
        t = (epoch_ << 1) | (t & 1);
    for (std::uint64_t& t : source.tiles_)
        t = (source.epoch_ << 1) | (t & 1);
    copied_ = false;
    source.copied_ = false;
    source.wholeRepaint_ = false;
    source.mirrorOf_ = this;
    mirror_ = &source;
}

} // namespace fw::qt
