// The background image held by the session; loading and painting live in the render module.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "core/Records.h"

namespace fw {

constexpr int kTileSize = 64;

// The frame with which the image is moved and scaled: top left, top right, bottom right, bottom
// left and top left again, in world units.
struct ImageFrame {
    std::array<Point, 5> start{};
    std::array<Point, 5> current{};
    double startScale = 0;
    double scale = 0;
};

struct CBitmapState {
    bool loaded = false;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint32_t> pixels; // 0x00RRGGBB, row-major; dropped once tiled

    // 64 by 64 tiles, row by row; both counts 0 when there is no image.
    std::int32_t tilesX = 0;
    std::int32_t tilesY = 0;
    std::vector<std::vector<std::uint32_t>> tiles;

    ImageFrame frame;
    std::uint8_t ImageFrameActive = 0;
};

} // namespace fw
