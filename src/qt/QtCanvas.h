// The Canvas on a QImage. Every pixel lands where the GDI would put it: lines leave out their last
// pixel, rectangles their right and bottom edge, polygons fill by the alternate rule, the dotted
// pen is three on and three off, the forward diagonal hatch runs down to the right on an 8-pixel
// grid from the surface's corner. Lines and fills are set into the image's rows by the shared GDI
// walk and span fill; QPainter, without antialiasing, draws the pictures.
//
// The surface is kept in tiles of 16 by 16 pixels that know when they were last written and
// whether they may hold anything but white: a white fill of the whole surface clears only the
// tiles with ink, and a copy from the canvas copied last time copies only the tiles either side
// has written since. A whole frame, painted from white, is handed over by exchanging buffers; the
// canvas it came from then stands for the same picture and copies it only when one of the two is
// written. The picture is the same as with whole fills and copies.
#pragma once

#include <QImage>
#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "render/GdiCanvas.h"

namespace fw::qt {

class QtCanvas : public GdiCanvas {
public:
    QtCanvas(int width, int height);
    ~QtCanvas() override;
    QtCanvas(const QtCanvas&) = delete;
    QtCanvas& operator=(const QtCanvas&) = delete;

    int Width() const override { return width_; }
    int Height() const override { return height_; }
    void BlitPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels) override;
    void FillWhite(int x, int y, int width, int height) override;
    void CopyFrom(const Canvas& source) override;
    void StretchPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels,
                       int srcWidth, int srcHeight) override;

    // The picture so far (RGB32); valid while the canvas lives.
    const QImage& Image() const
    {
        if (mirrorOf_ != nullptr)
            return mirrorOf_->Image();
        SetWaitingRuns();
        return *image_;
    }
    // The pixels for a whole frame written from outside (the OpenGL view's read-back): the first
    // row's first pixel, and the values from one row to the next in stride.
    std::uint32_t* FrameBits(int& stride)
    {
        Settle();
        SetWaitingRuns();
        Touch({0, 0, Width() - 1, Height() - 1});
        stride = static_cast<int>(stride_);
        return reinterpret_cast<std::uint32_t*>(bits_);
    }
    // 0x00RRGGBB of one pixel, 0 off the surface.
    std::uint32_t Pixel(int x, int y) const;
    // The tiles that may have changed since the last call (all written ones at the first).
    QRegion TakeChanged();

private:
    static constexpr int kTileShift = 4;

    void SetMode(QPainter::CompositionMode mode) const;
    // Before a write: this canvas's picture made its own, and the one standing for it given it.
    void Settle()
    {
        if (mirrorOf_ != nullptr || mirror_ != nullptr)
            SettleNow();
    }
    void SettleNow();
    // Before the whole surface is overwritten: only the one standing for it needs the picture.
    void Forget();
    // The picture of the canvas this one stands for, copied in whole.
    void TakeMirroredPicture();
    // The source's whole frame becomes this canvas's buffer; the source stands for it.
    void Exchange(QtCanvas& source);
    Rows Surface(const PixelBox& touched) override;
    // A slanted line marks, band by band of tiles, only the tiles near it.
    Rows LineSurface(int x0, int y0, int x1, int y1) override;
    QImage Wrap(int width, int height, const std::vector<std::uint32_t>& pixels) const;
    // Marks the tiles of a box about to be written (clipped to the surface) as written now and
    // as holding ink.
    void Touch(const PixelBox& box);
    // The tiles a box covers, clipped to the surface; false when it misses the surface.
    bool TilesOf(const PixelBox& box, int& tx0, int& ty0, int& tx1, int& ty1) const
    {
        const std::int64_t left = std::max<std::int64_t>(box.left, 0);
        const std::int64_t top = std::max<std::int64_t>(box.top, 0);
        const std::int64_t right = std::min<std::int64_t>(box.right, width_ - 1);
        const std::int64_t bottom = std::min<std::int64_t>(box.bottom, height_ - 1);
        if (left > right || top > bottom)
            return false;
        tx0 = static_cast<int>(left >> kTileShift);
        ty0 = static_cast<int>(top >> kTileShift);
        tx1 = static_cast<int>(right >> kTileShift);
        ty1 = static_cast<int>(bottom >> kTileShift);
        return true;
    }
    // Tiles tx0 to tx1 of rows ty0 to ty1 written in this epoch, and maybe inked.
    void Mark(int tx0, int ty0, int tx1, int ty1)
    {
        std::uint64_t* tiles = tiles_.data();
        const std::uint64_t stamp = (epoch_ << 1) | 1;
        // Most strokes lie in one or two tiles.
        for (int ty = ty0; ty <= ty1; ++ty) {
            std::uint64_t* row = tiles + static_cast<std::size_t>(ty) * tilesX_;
            row[tx0] = stamp;
            row[tx1] = stamp;
            for (int tx = tx0 + 1; tx < tx1; ++tx)
                row[tx] = stamp;
        }
    }
    // Rows y0 to y1 from x0 to x1 inclusive.
    void FillRows(int x0, int y0, int x1, int y1, std::uint32_t value);
    void CopyRows(const QtCanvas& source, int x0, int y0, int x1, int y1);

    std::unique_ptr<QImage> image_; // the painter below is bound to it: the two move together
    QRgb* bits_ = nullptr;
    std::size_t stride_ = 0;
    std::unique_ptr<QPainter> painter_;
    mutable QPainter::CompositionMode mode_ = QPainter::CompositionMode_SourceOver;

    int width_ = 0;
    int height_ = 0;
    int tilesX_ = 0;
    int tilesY_ = 0;
    std::uint64_t id_ = 0; // this canvas's image, unlike any other's
    // Moves on each time the canvas is copied from or into, so that the writes after a copy are
    // told from those before.
    mutable std::uint64_t epoch_ = 1;
    // Per tile: the epoch of its last write above a low bit that is 1 when it may hold anything
    // but white.
    std::vector<std::uint64_t> tiles_;
    // The canvas copied last time, its epoch then, and this one's epoch then.
    bool copied_ = false;
    std::uint64_t sourceId_ = 0;
    std::uint64_t sourceEpoch_ = 0;
    std::uint64_t copiedEpoch_ = 0;
    std::uint64_t takenEpoch_ = 0; // the epoch of the last TakeChanged
    QtCanvas* mirrorOf_ = nullptr;  // the canvas whose picture this one stands for, until either is written
    QtCanvas* mirror_ = nullptr;    // the canvas that stands for this one's picture
    bool wholeRepaint_ = false;     // painted from a white whole surface since last handed over
};

} // namespace fw::qt
