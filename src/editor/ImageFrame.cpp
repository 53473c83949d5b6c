#include "editor/ImageFrame.h"

#include <algorithm>
#include <cstdlib>

#include "editor/EditorCommon.h"

namespace fw {

namespace {

void SetCorners(std::array<Point, 5>& p, const Point& topLeft, std::int32_t w, std::int32_t h, double scale)
{
    const std::int32_t dx = Round32(w * scale);
    const std::int32_t dy = Round32(h * scale);
    p[0] = topLeft;
    p[1] = {Add32(topLeft.X, dx), topLeft.Y};
    p[2] = {Add32(topLeft.X, dx), Add32(topLeft.Y, dy)};
    p[3] = {topLeft.X, Add32(topLeft.Y, dy)};
    p[4] = topLeft;
}

} // namespace

void StartImageFrame(Session& s)
{
    ImageFrame& f = s.bitmap.frame;
    const auto& flags = s.showFlags;
    SetCorners(f.start, {flags.BackImageLeft, flags.BackImageTop}, s.bitmap.width, s.bitmap.height,
               flags.BackImagescale);
    f.current = f.start;
    f.startScale = f.scale = flags.BackImagescale;
    s.bitmap.ImageFrameActive = 1;
}

void StopImageFrame(Session& s)
{
    s.bitmap.frame = ImageFrame{};
    s.bitmap.ImageFrameActive = 0;
}

void MoveImageFrame(ImageFrame& f, std::int32_t dx, std::int32_t dy)
{
    for (std::size_t i = 0; i < f.current.size(); ++i)
        f.current[i] = {Add32(f.start[i].X, dx), Add32(f.start[i].Y, dy)};
}

void ScaleImageFrame(ImageFrame& f, std::int32_t dx, std::int32_t imageWidth, std::int32_t imageHeight)
{
    const double frameWidth = static_cast<double>(f.start[1].X) - f.start[0].X;
    double scale = frameWidth != 0 ? (frameWidth + dx) / frameWidth * f.startScale : f.startScale;
    if (!(scale >= 0.01))
        scale = 0.01;
    f.scale = scale;
    SetCorners(f.current, f.start[0], imageWidth, imageHeight, scale);
}

bool OnImageHandle(const Session& s, std::int32_t px, std::int32_t py)
{
    const ImageFrame& f = s.bitmap.frame;
    const std::int64_t hx = s.view.PixelX(f.current[1].X);
    const double y1 = f.current[1].Y;
    const double y2 = f.current[2].Y;
    const std::int64_t hy = s.view.PixelY(y1 + (y2 - y1) / 2);
    return std::llabs(px - hx) < 5 && std::llabs(py - hy) < 5;
}

bool InsideImageFrame(const Session& s, std::int32_t px, std::int32_t py)
{
    const ImageFrame& f = s.bitmap.frame;
    const std::int32_t left = s.view.PixelX(f.current[0].X);
    const std::int32_t right = s.view.PixelX(f.current[2].X);
    const std::int32_t top = s.view.PixelY(f.current[0].Y);
    const std::int32_t bottom = s.view.PixelY(f.current[2].Y);
    return px >= std::min(left, right) && px <= std::max(left, right) && py >= std::min(top, bottom) &&
           py <= std::max(top, bottom);
}

void MnuBedit(Session& s)
{
    if (s.showFlags.BackImagePath.empty())
        return;
    if (s.bitmap.ImageFrameActive == 0) {
        StartImageFrame(s);
        s.showFlags.ShowBackPicture = 1;
        s.editor.EditState = 16;
    } else {
        StopImageFrame(s);
        s.editor.EditState = 0;
        SetCanvasPointer(s, 0);
    }
    PaintFrame(s);
}

} // namespace fw
