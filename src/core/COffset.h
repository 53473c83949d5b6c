// The view transform: pan, zoom, canvas size and the editor's mode.
#pragma once

#include <cstdint>

#include "core/Records.h"

namespace fw {

class COffset {
public:
    // Setters store the value and nothing else.
    void setOffX(std::int32_t v) { offX_ = v; }
    void setOffY(std::int32_t v) { offY_ = v; }
    void setZoom(double v) { zoom_ = v; }
    void setSWidth(std::int32_t v) { sWidth_ = v; }
    void setSHeight(std::int32_t v) { sHeight_ = v; }
    void setMMode(std::int32_t v) { mMode_ = v; }

    std::int32_t offX() const { return offX_; }
    std::int32_t offY() const { return offY_; }
    std::int32_t centX() const { return centX_; }
    std::int32_t centY() const { return centY_; }
    double zoom() const { return zoom_; }
    std::int32_t sDiffX() const;
    std::int32_t sDiffY() const;
    std::int32_t wdiffX() const;
    std::int32_t wdiffY() const;
    std::int32_t sWidth() const { return sWidth_; }
    std::int32_t sHeight() const { return sHeight_; }
    std::int32_t mMode() const { return mMode_; }

    void reset();
    void resize();
    void dragAdd(std::int32_t dx, std::int32_t dy);

    // World point to pixel, as every painter maps it.
    std::int32_t PixelX(double worldX) const;
    std::int32_t PixelY(double worldY) const;

private:
    std::int32_t offX_ = 0;
    std::int32_t offY_ = 0;
    std::int32_t centX_ = 0;
    std::int32_t centY_ = 0;
    double zoom_ = 0.25;
    std::int32_t sWidth_ = 0;
    std::int32_t sHeight_ = 0;
    std::int32_t mMode_ = 0;
};

Point ScreenToWorld(const COffset& view, std::int32_t px, std::int32_t py);
Point ScreenToWorldClamped(const COffset& view, std::int32_t px, std::int32_t py);

} // namespace fw
