#include "core/ImageFrame.h"

#include <cstdlib>

#include "core/Numbers.h"

namespace fw {

namespace {
std::int32_t Sat(double v)
{
    const double r = RoundHalfEven(v);
    if (!(r >= -2147483648.0))
        return INT32_MIN;
    if (r > 2147483647.0)
        return INT32_MAX;
    return static_cast<std::int32_t>(r);
}
} // namespace

void StartImageFrame(CBitmapState& b, const ShowFlagsRecord& flags)
{
    const double x = flags.BackImageLeft;
    const double y = flags.BackImageTop;
    const double s = flags.BackImagescale;
    const std::int32_t r = Sat(x + b.width * s);
    const std::int32_t d = Sat(y + b.height * s);
    const Point tl{flags.BackImageLeft, flags.BackImageTop};
    b.frame.start = {tl, Point{r, tl.Y}, Point{r, d}, Point{tl.X, d}, tl};
    b.frame.current = b.frame.start;
    b.frame.startScale = s;
    b.frame.scale = s;
    b.ImageFrameActive = 1;
}

void MoveImageFrame(CBitmapState& b, std::int32_t dx, std::int32_t dy)
{
    for (std::size_t i = 0; i < b.frame.start.size(); ++i)
        b.frame.current[i] = {Sat(static_cast<double>(b.frame.start[i].X) + dx),
                              Sat(static_cast<double>(b.frame.start[i].Y) + dy)};
}

void ScaleImageFrame(CBitmapState& b, std::int32_t dx)
{
    const double frameWidth = static_cast<double>(b.frame.start[1].X) - b.frame.start[0].X;
    double scale = frameWidth != 0 ? (frameWidth + dx) / frameWidth * b.frame.startScale : b.frame.startScale;
    if (scale < 0.01)
        scale = 0.01;
    const Point tl = b.frame.start[0];
    const std::int32_t r = Sat(tl.X + static_cast<double>(Sat(b.width * scale)));
    const std::int32_t d = Sat(tl.Y + static_cast<double>(Sat(b.height * scale)));
    b.frame.current = {tl, Point{r, tl.Y}, Point{r, d}, Point{tl.X, d}, tl};
    b.frame.scale = scale;
}

void FinishImageFrame(CBitmapState& b, ShowFlagsRecord& flags)
{
    flags.BackImageLeft = b.frame.current[0].X;
    flags.BackImageTop = b.frame.current[0].Y;
    flags.BackImagescale = b.frame.scale;
    StartImageFrame(b, flags);
}

void StopImageFrame(CBitmapState& b)
{
    b.frame = ImageFrame{};
    b.ImageFrameActive = 0;
}

int ImageFrameHit(const CBitmapState& b, const COffset& view, std::int32_t px, std::int32_t py)
{
    const auto& f = b.frame.current;
        const std::int64_t hx = view.PixelX(f[1].X);
    const std::int64_t hy = view.PixelY(f[1].Y + (static_cast<double>(f[2].Y) - f[1].Y) / 2);
    if (std::llabs(px - hx) < 5 && std::llabs(py - hy) < 5)
        return 1;
    const Point w = ScreenToWorld(view, px, py);
    if (w.X >= f[0].X && w.X <= f[1].X && w.Y >= f[0].Y && w.Y <= f[2].Y)
        return 2;
    return 0;
}

} // namespace fw
