#include "render/Bitmap.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "core/COffset.h"
#include "core/Numbers.h"
#include "files/RegularFile.h"
#include "ports/Ui.h"
#include "render/Clip.h"

namespace fw {

namespace {

std::uint32_t U16(const std::vector<unsigned char>& b, std::size_t at)
{
    return b[at] | (b[at + 1] << 8);
}

std::uint32_t U32(const std::vector<unsigned char>& b, std::size_t at)
{
    return b[at] | (b[at + 1] << 8) | (b[at + 2] << 16) | (static_cast<std::uint32_t>(b[at + 3]) << 24);
}

// The value of a bit field scaled to 0..255.
unsigned Field(std::uint32_t v, std::uint32_t mask)
{
    if (mask == 0)
        return 0;
    int shift = 0;
    while (((mask >> shift) & 1) == 0)
        ++shift;
    const std::uint32_t m = mask >> shift;
    const std::uint32_t x = (v & mask) >> shift;
    return static_cast<unsigned>((static_cast<std::uint64_t>(x) * 255 + m / 2) / m);
}

} // namespace

namespace {

// What the headers say; read from the first kBmpHeadBytes of the file.
struct BmpHeader {
    std::uint32_t dataOffset = 0;
    std::uint32_t headerSize = 0;
    std::int64_t w = 0;
    std::int64_t h = 0;
    bool topDown = false;
    unsigned bits = 0;
    std::uint32_t compression = 0;
    std::uint32_t colorsUsed = 0;
    std::size_t paletteEntry = 4;
    std::uint32_t masks[3] = {0x00FF0000, 0x0000FF00, 0x000000FF};
    std::size_t paletteCount = 0; // entries stored in the file
    std::size_t stride = 0;

    // Bytes the picture needs from the start of the file: palette and pixel rows.
    std::uint64_t Extent() const
    {
        const std::uint64_t palette = 14 + static_cast<std::uint64_t>(headerSize) + paletteCount * paletteEntry;
        const std::uint64_t rows = static_cast<std::uint64_t>(dataOffset) + stride * static_cast<std::uint64_t>(h);
        return std::max(palette, rows);
    }
};

// The file header, the largest info header and its bit-field masks.
constexpr std::size_t kBmpHeadBytes = 14 + 124;

// The headers alone: whether this is a picture we read, and its size. A picture over the maximum
// is reported without looking further.
BmpResult ParseBmpHeader(const std::vector<unsigned char>& b, int maxWidth, int maxHeight, BmpHeader& hd,
                         std::int32_t& width, std::int32_t& height)
{
    if (b.size() < 26 || b[0] != 'B' || b[1] != 'M')
        return BmpResult::Unreadable;
    hd.dataOffset = U32(b, 10);
    hd.headerSize = U32(b, 14);
    if (hd.headerSize == 12) {
        hd.w = U16(b, 18);
        hd.h = static_cast<std::int16_t>(U16(b, 20));
        hd.bits = U16(b, 24);
        hd.paletteEntry = 3;
    } else if (hd.headerSize >= 40 && b.size() >= 14 + 40) {
        hd.w = static_cast<std::int32_t>(U32(b, 18));
        hd.h = static_cast<std::int32_t>(U32(b, 22));
        hd.bits = U16(b, 28);
        hd.compression = U32(b, 30);
        hd.colorsUsed = U32(b, 46);
    } else {
        return BmpResult::Unreadable;
    }
    hd.topDown = hd.h < 0;
    if (hd.topDown)
        hd.h = -hd.h;
    if (hd.w <= 0 || hd.h <= 0)
        return BmpResult::Unreadable;
    if (hd.w > maxWidth || hd.h > maxHeight) {
        width = static_cast<std::int32_t>(std::min<std::int64_t>(hd.w, INT32_MAX));
        height = static_cast<std::int32_t>(std::min<std::int64_t>(hd.h, INT32_MAX));
        return BmpResult::TooLarge;
    }
    if (hd.bits == 16) {
        hd.masks[0] = 0x7C00;
        hd.masks[1] = 0x03E0;
        hd.masks[2] = 0x001F;
    }
    if (hd.compression == 3 && (hd.bits == 16 || hd.bits == 32)) {
        const std::size_t at = 14 + 40;
        if (b.size() < at + 12)
            return BmpResult::Unreadable;
        hd.masks[0] = U32(b, at);
        hd.masks[1] = U32(b, at + 4);
        hd.masks[2] = U32(b, at + 8);
    } else if (hd.compression != 0) {
        return BmpResult::Unreadable;
    }
    if (hd.bits != 1 && hd.bits != 4 && hd.bits != 8 && hd.bits != 16 && hd.bits != 24 && hd.bits != 32)
        return BmpResult::Unreadable;
    if (hd.bits <= 8) {
        const std::size_t n = hd.colorsUsed != 0 ? hd.colorsUsed : (1u << hd.bits);
        hd.paletteCount = std::min<std::size_t>(n, 1u << hd.bits);
    }
    hd.stride = ((static_cast<std::size_t>(hd.w) * hd.bits + 31) / 32) * 4;
    return BmpResult::Ok;
}

} // namespace

BmpResult DecodeBmp(const std::vector<unsigned char>& b, int maxWidth, int maxHeight, std::int32_t& width,
                    std::int32_t& height, std::vector<std::uint32_t>& pixels)
{
    BmpHeader hd;
    if (const BmpResult r = ParseBmpHeader(b, maxWidth, maxHeight, hd, width, height); r != BmpResult::Ok)
        return r;
    const std::uint32_t dataOffset = hd.dataOffset;
    const std::uint32_t headerSize = hd.headerSize;
    const std::int64_t w = hd.w;
    const std::int64_t h = hd.h;
    const bool topDown = hd.topDown;
    const unsigned bits = hd.bits;
    const std::uint32_t compression = hd.compression;
    const std::size_t paletteEntry = hd.paletteEntry;
    const std::uint32_t* masks = hd.masks;

    std::vector<std::uint32_t> palette;
    if (bits <= 8) {
        const std::size_t n = hd.paletteCount;
        const std::size_t at = 14 + static_cast<std::size_t>(headerSize);
        for (std::size_t i = 0; i < n; ++i) {
            const std::size_t e = at + i * paletteEntry;
            if (e + 3 > b.size())
                return BmpResult::Unreadable;
            palette.push_back((b[e + 2] << 16) | (b[e + 1] << 8) | b[e]);
        }
        palette.resize(1u << bits, 0);
    }
    const std::size_t stride = hd.stride;
    if (dataOffset > b.size() || (b.size() - dataOffset) / stride < static_cast<std::size_t>(h))
        return BmpResult::Unreadable;

    width = static_cast<std::int32_t>(w);
    height = static_cast<std::int32_t>(h);
    pixels.assign(static_cast<std::size_t>(w * h), 0);
    for (std::int64_t row = 0; row < h; ++row) {
        const std::size_t src = dataOffset + static_cast<std::size_t>(topDown ? row : h - 1 - row) * stride;
        std::uint32_t* dst = &pixels[static_cast<std::size_t>(row * w)];
        for (std::int64_t x = 0; x < w; ++x) {
            std::uint32_t c = 0;
            switch (bits) {
            case 1: c = palette[(b[src + x / 8] >> (7 - x % 8)) & 1]; break;
            case 4: c = palette[(b[src + x / 2] >> (x % 2 == 0 ? 4 : 0)) & 15]; break;
            case 8: c = palette[b[src + x]]; break;
            case 16: {
                const std::uint32_t v = U16(b, src + x * 2);
                c = (Field(v, masks[0]) << 16) | (Field(v, masks[1]) << 8) | Field(v, masks[2]);
                break;
            }
            case 24: c = (b[src + x * 3 + 2] << 16) | (b[src + x * 3 + 1] << 8) | b[src + x * 3]; break;
            case 32: {
                const std::uint32_t v = U32(b, src + x * 4);
                c = compression == 3 ? (Field(v, masks[0]) << 16) | (Field(v, masks[1]) << 8) | Field(v, masks[2])
                                     : v & 0xFFFFFF;
                break;
            }
            }
            dst[x] = c;
        }
    }
    return BmpResult::Ok;
}

BmpResult ReadBmp(const std::string& path, int maxWidth, int maxHeight, std::int32_t& width,
                  std::int32_t& height, std::vector<std::uint32_t>& pixels, std::string* reason)
{
    // Only a regular file is opened, and its headers are read and checked before the rest: the
    // read then takes no more than the picture they describe.
    RegularFile f;
    if (!f.Open(path)) {
        if (reason)
            *reason = f.reason();
        return BmpResult::Unreadable;
    }
    std::vector<unsigned char> bytes(static_cast<std::size_t>(std::min<std::uint64_t>(f.size(), kBmpHeadBytes)));
    std::size_t got = 0;
    if (!f.ReadAt(0, bytes.data(), bytes.size(), got)) {
        if (reason)
            *reason = f.reason();
        return BmpResult::Unreadable;
    }
    bytes.resize(got);
    BmpHeader hd;
    if (const BmpResult r = ParseBmpHeader(bytes, maxWidth, maxHeight, hd, width, height); r != BmpResult::Ok)
        return r;
    // A picture of at most maxWidth by maxHeight needs a few MB; a header that places its rows
    // far behind that describes no picture we can use.
    const std::uint64_t extent = hd.Extent();
    if (extent > kMaxBmpBytes)
        return BmpResult::Unreadable;
    bytes.resize(static_cast<std::size_t>(std::max<std::uint64_t>(std::min(extent, f.size()), bytes.size())));
    if (!f.ReadAt(0, bytes.data(), bytes.size(), got)) {
        if (reason)
            *reason = f.reason();
        return BmpResult::Unreadable;
    }
    bytes.resize(got);
    return DecodeBmp(bytes, maxWidth, maxHeight, width, height, pixels);
}

std::int32_t CBitmap::TileCount(std::int32_t size)
{
    if (size < kTileSize)
        size = kTileSize;
    std::int32_t n = Round32(size / static_cast<double>(kTileSize));
    if (size % kTileSize != 0)
        ++n;
    return n;
}

bool CBitmap::GetPicture(const std::string& path, Ui* ui)
{
    std::int32_t w = 0;
    std::int32_t h = 0;
    std::vector<std::uint32_t> pixels;
    std::string reason;
    const BmpResult r = ReadBmp(path, kMaxImageWidth, kMaxImageHeight, w, h, pixels, &reason);
    if (r == BmpResult::Unreadable) {
        if (ui)
            ui->Message(WithFileReason("Unable to load Bitmap!", path, reason), MessageStyle::Critical);
        return false;
    }
    if (r == BmpResult::TooLarge) {
        if (ui)
            ui->Message("Unable to open '" + path + "' !\n\nThe maximum background image size is " +
                            std::to_string(kMaxImageWidth) + "x" + std::to_string(kMaxImageHeight) + "...",
                        MessageStyle::Critical);
        return false;
    }
    SetPicture(w, h, pixels);
    return true;
}

void CBitmap::SetPicture(std::int32_t w, std::int32_t h, const std::vector<std::uint32_t>& pixels)
{
    DeleteGDI();
    s_.width = w;
    s_.height = h;
    s_.tilesX = TileCount(w);
    s_.tilesY = TileCount(h);
    s_.tiles.assign(static_cast<std::size_t>(s_.tilesX) * s_.tilesY,
                    std::vector<std::uint32_t>(kTileSize * kTileSize, 0xFFFFFF));
    for (std::int32_t row = 0; row < s_.tilesY; ++row)
        for (std::int32_t col = 0; col < s_.tilesX; ++col) {
            auto& tile = s_.tiles[static_cast<std::size_t>(row) * s_.tilesX + col];
            for (int y = 0; y < kTileSize; ++y) {
                const std::int32_t sy = row * kTileSize + y;
                if (sy >= h)
                    break;
                for (int x = 0; x < kTileSize; ++x) {
                    const std::int32_t sx = col * kTileSize + x;
                    if (sx >= w)
                        break;
                    tile[y * kTileSize + x] = pixels[static_cast<std::size_t>(sy) * w + sx];
                }
            }
        }
    s_.loaded = true;
    s_.pixels.clear();
}

void CBitmap::DeleteGDI()
{
    s_.tiles.clear();
    s_.tilesX = 0;
    s_.tilesY = 0;
    s_.width = 0;
    s_.height = 0;
    s_.loaded = false;
    s_.pixels.clear();
}

void CBitmap::Render(Canvas& surface, std::int32_t x, std::int32_t y, double scale, std::int32_t width,
                     std::int32_t height) const
{
    const std::int32_t T = Round32(scale * kTileSize);
    // A tile of no size has nothing to show (and would divide by zero below).
    if (T <= 0 || s_.tiles.empty())
        return;
    if (x > width || y > height)
        return;
    struct Axis { std::int64_t first, start, last; };
    auto along = [T](std::int64_t pos, std::int64_t size, std::int32_t count) {
        Axis a{};
        if (pos < 0) {
            const std::int64_t m = -pos;
            a.first = m / T;
            a.start = a.first * T + pos;
            a.last = a.first + (m + size) / T;
        } else {
            a.first = 0;
            a.start = pos;
            a.last = (size - pos) / T;
        }
        a.last = std::min<std::int64_t>(a.last, count - 1);
        return a;
    };
    const Axis ax = along(x, width, s_.tilesX);
    const Axis ay = along(y, height, s_.tilesY);
    if ((static_cast<std::int64_t>(s_.tilesX) + 1) * T + x < 0 ||
        (static_cast<std::int64_t>(s_.tilesY) + 1) * T + y < 0)
        return;
    for (std::int64_t row = ay.first; row <= ay.last; ++row)
        for (std::int64_t col = ax.first; col <= ax.last; ++col)
            surface.StretchPixels(static_cast<int>(ax.start + (col - ax.first) * T),
                                  static_cast<int>(ay.start + (row - ay.first) * T), T, T,
                                  s_.tiles[static_cast<std::size_t>(row * s_.tilesX + col)], kTileSize,
                                  kTileSize);
}

} // namespace fw
