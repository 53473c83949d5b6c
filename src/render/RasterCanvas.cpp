#include "render/RasterCanvas.h"

#include "files/TextFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <fstream>

namespace fw {

namespace {
constexpr std::uint32_t kWhiteRgb = 0xFFFFFF;
} // namespace

RasterCanvas::RasterCanvas(int width, int height)
    : width_(std::max(width, 0)), height_(std::max(height, 0)),
      pixels_(static_cast<std::size_t>(width_) * height_, kWhiteRgb)
{
}

std::uint32_t RasterCanvas::Pixel(int x, int y) const
{
    SetWaitingRuns();
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        return 0;
    return pixels_[static_cast<std::size_t>(y) * width_ + x];
}

GdiCanvas::Rows RasterCanvas::Surface(const PixelBox&)
{
    return {pixels_.data(), static_cast<std::size_t>(width_), width_, height_, 0};
}

void RasterCanvas::BlitPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels)
{
    if (width <= 0 || height <= 0 || pixels.size() < static_cast<std::size_t>(width) * height)
        return;
    SetWaitingRuns();
    for (int row = std::max(0, -y); row < height && y + row < height_; ++row)
        for (int col = std::max(0, -x); col < width && x + col < width_; ++col)
            pixels_[static_cast<std::size_t>(y + row) * width_ + x + col] =
                pixels[static_cast<std::size_t>(row) * width + col] & 0xFFFFFF;
}

void RasterCanvas::FillWhite(int x, int y, int width, int height)
{
    SetWaitingRuns();
    const int x0 = std::max(x, 0);
    const int y0 = std::max(y, 0);
    const int x1 = std::min<std::int64_t>(static_cast<std::int64_t>(x) + width, width_);
    const int y1 = std::min<std::int64_t>(static_cast<std::int64_t>(y) + height, height_);
    for (int row = y0; row < y1; ++row)
        std::fill(pixels_.begin() + static_cast<std::ptrdiff_t>(row) * width_ + x0,
                  pixels_.begin() + static_cast<std::ptrdiff_t>(row) * width_ + std::max(x1, x0), kWhiteRgb);
}

void RasterCanvas::CopyFrom(const Canvas& source)
{
    const auto* src = dynamic_cast<const RasterCanvas*>(&source);
    if (src == nullptr || src == this)
        return;
    SetWaitingRuns();
    src->SetWaitingRuns();
    if (src->width_ == width_ && src->height_ == height_) {
        pixels_ = src->pixels_;
        return;
    }
    const int w = std::min(width_, src->width_);
    for (int row = 0; row < std::min(height_, src->height_); ++row)
        std::copy_n(src->pixels_.begin() + static_cast<std::ptrdiff_t>(row) * src->width_, w,
                    pixels_.begin() + static_cast<std::ptrdiff_t>(row) * width_);
}

void RasterCanvas::StretchPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels,
                                 int srcWidth, int srcHeight)
{
    if (width <= 0 || height <= 0 || srcWidth <= 0 || srcHeight <= 0 ||
        pixels.size() < static_cast<std::size_t>(srcWidth) * srcHeight)
        return;
    SetWaitingRuns();
    const std::int64_t r0 = std::max<std::int64_t>(0, -static_cast<std::int64_t>(y));
    const std::int64_t r1 = std::min<std::int64_t>(height, static_cast<std::int64_t>(height_) - y);
    const std::int64_t c0 = std::max<std::int64_t>(0, -static_cast<std::int64_t>(x));
    const std::int64_t c1 = std::min<std::int64_t>(width, static_cast<std::int64_t>(width_) - x);
    for (std::int64_t row = r0; row < r1; ++row) {
        const std::int64_t sy = row * srcHeight / height;
        std::uint32_t* dst = &pixels_[static_cast<std::size_t>(y + row) * width_];
        for (std::int64_t col = c0; col < c1; ++col)
            dst[x + col] = pixels[static_cast<std::size_t>(sy * srcWidth + col * srcWidth / width)] & 0xFFFFFF;
    }
}

// ---- PNG

std::uint32_t Crc32(const unsigned char* data, std::size_t size, std::uint32_t crc)
{
    static const std::array<std::uint32_t, 256> table = [] {
        std::array<std::uint32_t, 256> t{};
        for (std::uint32_t n = 0; n < 256; ++n) {
            std::uint32_t c = n;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            t[n] = c;
        }
        return t;
    }();
    crc = ~crc;
    for (std::size_t i = 0; i < size; ++i)
        crc = table[(crc ^ data[i]) & 0xFF] ^ (crc >> 8);
    return ~crc;
}

std::uint32_t Adler32(const unsigned char* data, std::size_t size)
{
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (std::size_t i = 0; i < size; ++i) {
        a = (a + data[i]) % 65521;
        b = (b + a) % 65521;
    }
    return (b << 16) | a;
}

namespace {
void Put32(std::vector<unsigned char>& out, std::uint32_t v)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<unsigned char>(v >> shift));
}

void Chunk(std::vector<unsigned char>& out, const char* type, const std::vector<unsigned char>& data)
{
    Put32(out, static_cast<std::uint32_t>(data.size()));
    const std::size_t start = out.size();
    out.insert(out.end(), type, type + 4);
    out.insert(out.end(), data.begin(), data.end());
    Put32(out, Crc32(out.data() + start, out.size() - start));
}
} // namespace

std::vector<unsigned char> EncodePng(int width, int height, const std::vector<std::uint32_t>& pixels)
{
    width = std::max(width, 0);
    height = std::max(height, 0);
    std::vector<unsigned char> raw;
    raw.reserve(static_cast<std::size_t>(height) * (1 + 3 * static_cast<std::size_t>(width)));
    for (int y = 0; y < height; ++y) {
        raw.push_back(0); // no filter
        for (int x = 0; x < width; ++x) {
            const std::size_t i = static_cast<std::size_t>(y) * width + x;
            const std::uint32_t p = i < pixels.size() ? pixels[i] : 0xFFFFFF;
            raw.push_back(static_cast<unsigned char>(p >> 16));
            raw.push_back(static_cast<unsigned char>(p >> 8));
            raw.push_back(static_cast<unsigned char>(p));
        }
    }
    std::vector<unsigned char> z{0x78, 0x01};
    std::size_t at = 0;
    do {
        const std::size_t n = std::min<std::size_t>(65535, raw.size() - at);
        const bool final = at + n == raw.size();
        z.push_back(final ? 1 : 0);
        z.push_back(static_cast<unsigned char>(n));
        z.push_back(static_cast<unsigned char>(n >> 8));
        z.push_back(static_cast<unsigned char>(~n));
        z.push_back(static_cast<unsigned char>(~n >> 8));
        z.insert(z.end(), raw.begin() + static_cast<std::ptrdiff_t>(at), raw.begin() + static_cast<std::ptrdiff_t>(at + n));
        at += n;
    } while (at < raw.size());
    Put32(z, Adler32(raw.data(), raw.size()));

    std::vector<unsigned char> out{0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    std::vector<unsigned char> ihdr;
    Put32(ihdr, static_cast<std::uint32_t>(width));
    Put32(ihdr, static_cast<std::uint32_t>(height));
    ihdr.insert(ihdr.end(), {8, 2, 0, 0, 0}); // 8-bit RGB
    Chunk(out, "IHDR", ihdr);
    Chunk(out, "IDAT", z);
    Chunk(out, "IEND", {});
    return out;
}

bool WritePng(const std::string& path, int width, int height, const std::vector<std::uint32_t>& pixels)
{
    // Through a temporary file, so that a full disk never leaves a cut picture.
    const std::vector<unsigned char> bytes = EncodePng(width, height, pixels);
    return WriteTextReplacing(path, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()), false);
}

} // namespace fw
