// The background image held by the session; loading and painting live in the render module.
#pragma once

#include <cstdint>
#include <vector>

namespace fw {

struct CBitmapState {
    bool loaded = false;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint32_t> pixels; // 0x00RRGGBB, row-major
};

} // namespace fw
