#include "core/COffset.h"

#include <algorithm>

#include "core/Numbers.h"

namespace fw {

std::int32_t COffset::sDiffX() const { return Round32(offX_ * zoom_ + centX_); }
std::int32_t COffset::sDiffY() const { return Round32(offY_ * zoom_ + centY_); }
std::int32_t COffset::wdiffX() const { return Round32(centX_ / zoom_ + offX_); }
std::int32_t COffset::wdiffY() const { return Round32(centY_ / zoom_ + offY_); }

void COffset::reset()
{
    offX_ = 0;
    offY_ = 0;
    resize();
    zoom_ = 0.25;
    mMode_ = 0;
}

void COffset::resize()
{
    centX_ = Round32(sWidth_ / 2.0);
    centY_ = Round32(sHeight_ / 2.0);
}

void COffset::dragAdd(std::int32_t dx, std::int32_t dy)
{
    offX_ = Round32(dx / zoom_ + offX_);
    offY_ = Round32(dy / zoom_ + offY_);
}

std::int32_t COffset::PixelX(double worldX) const { return Round32(worldX * zoom_ + sDiffX()); }
std::int32_t COffset::PixelY(double worldY) const { return Round32(worldY * zoom_ + sDiffY()); }

Point ScreenToWorld(const COffset& view, std::int32_t px, std::int32_t py)
{
    return {Round32(px / view.zoom() - view.wdiffX()), Round32(py / view.zoom() - view.wdiffY())};
}

Point ScreenToWorldClamped(const COffset& view, std::int32_t px, std::int32_t py)
{
    Point p = ScreenToWorld(view, px, py);
    p.X = std::clamp(p.X, -10000, 10000);
    p.Y = std::clamp(p.Y, -10000, 10000);
    return p;
}

} // namespace fw
