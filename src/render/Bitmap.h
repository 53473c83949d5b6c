// The background image: held as 64 by 64 tiles so that only the tiles in view are stretched.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/BitmapState.h"
#include "core/Records.h"
#include "ports/Canvas.h"

namespace fw {

class Ui;

constexpr int kMaxImageWidth = 800;
constexpr int kMaxImageHeight = 600;

enum class BmpResult { Ok, Unreadable, TooLarge };

// The most a bitmap file may take to describe a picture of the maximum size (800 by 600 at 32 bits
// is under 2 MB, with headers and palette).
constexpr std::uint64_t kMaxBmpBytes = 16ull << 20;

// A plain reader of Windows bitmaps (1, 4, 8, 16, 24 and 32 bits, uncompressed or bit fields).
// Pixels come out 0x00RRGGBB, row-major from the top. A picture over maxWidth by maxHeight is
// reported as such without being decoded. Only a regular file is read, its headers first;
// reason, when given, says in the host's words why a file couldn't be read (empty when it was
// read but is no picture).
BmpResult ReadBmp(const std::string& path, int maxWidth, int maxHeight, std::int32_t& width,
                  std::int32_t& height, std::vector<std::uint32_t>& pixels, std::string* reason = nullptr);
BmpResult DecodeBmp(const std::vector<unsigned char>& bytes, int maxWidth, int maxHeight,
                    std::int32_t& width, std::int32_t& height, std::vector<std::uint32_t>& pixels);

class CBitmap {
public:
    explicit CBitmap(CBitmapState& state) : s_(state) {}

    bool isAvailable() const { return s_.tilesX + s_.tilesY > 1; }
    std::int16_t Width() const { return static_cast<std::int16_t>(s_.width); }
    std::int16_t Height() const { return static_cast<std::int16_t>(s_.height); }
    // Loads and tiles the picture; on failure the user is told why and the old image stays.
    bool GetPicture(const std::string& path, Ui* ui);
    // Takes an already decoded picture (it is no larger than 800 by 600).
    void SetPicture(std::int32_t width, std::int32_t height, const std::vector<std::uint32_t>& pixels);
    void DeleteGDI();
    // (x, y): the image's corner in pixels; scale: pixels per image pixel.
    void Render(Canvas& surface, std::int32_t x, std::int32_t y, double scale, std::int32_t width,
                std::int32_t height) const;

    // A size below 64 counts as 64; round(size / 64), and one more unless a multiple of 64.
    static std::int32_t TileCount(std::int32_t size);

private:
    CBitmapState& s_;
};

} // namespace fw
