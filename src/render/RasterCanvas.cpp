#include "render/RasterCanvas.h"

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
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        return 0;
    return pixels_[static_cast<std::size_t>(y) * width_ + x];
}

void RasterCanvas::Plot(int x, int y, std::uint32_t rgb)
{
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        return;
    std::uint32_t& p = pixels_[static_cast<std::size_t>(y) * width_ + x];
    p = rop_ == RasterOp::MaskPen ? (p & rgb) : rgb;
}

void RasterCanvas::PenPixel(int x, int y, bool on)
{
    if (pen_.style == PenStyle::Null)
        return;
    const std::uint32_t rgb = ToRgb(pen_.color);
    if (!on) {
        if (bkMode_ == BkMode::Opaque)
            Plot(x, y, kWhiteRgb);
        return;
    }
    Plot(x, y, rgb);
    if (pen_.width >= 2) {
        Plot(x + 1, y, rgb);
        Plot(x, y + 1, rgb);
        Plot(x + 1, y + 1, rgb);
    }
}

void RasterCanvas::Line(int x0, int y0, int x1, int y1)
{
    LineWalk walk(x0, y0, x1, y1, width_, height_);
    const bool styled = Dotted();
    const int styleStart = styleStep_;
    const bool plain = !styled && pen_.width <= 1 && pen_.style != PenStyle::Null && rop_ == RasterOp::CopyPen;
    const std::uint32_t rgb = ToRgb(pen_.color);
    for (std::int64_t i = walk.first; i <= walk.last; ++i, walk.Next()) {
        if (plain) {
            if (walk.x >= 0 && walk.y >= 0 && walk.x < width_ && walk.y < height_)
                pixels_[static_cast<std::size_t>(walk.y) * width_ + walk.x] = rgb;
            continue;
        }
        PenPixel(walk.x, walk.y, !styled || (styleStart + i) % kDotPeriod < kDotOn);
    }
    styleStep_ = static_cast<int>((styleStart + walk.steps) % kDotPeriod);
}

void RasterCanvas::FillSpan(int y, int x0, int x1)
{
    if (y < 0 || y >= height_)
        return;
    x0 = std::max(x0, 0);
    x1 = std::min(x1, width_ - 1);
    if (x1 < x0)
        return;
    std::uint32_t* row = &pixels_[static_cast<std::size_t>(y) * width_];
    const std::uint32_t rgb = ToRgb(brush_.color);
    switch (brush_.kind) {
    case Brush::Kind::Solid: std::fill(row + x0, row + x1 + 1, rgb); break;
    case Brush::Kind::HatchForwardDiagonal:
        if (bkMode_ == BkMode::Opaque)
            std::fill(row + x0, row + x1 + 1, kWhiteRgb);
        // The first x at or after x0 with x - y a multiple of 8, then every eighth.
        for (int x = x0 + (((y - x0) % 8) + 8) % 8; x <= x1; x += 8)
            row[x] = rgb;
        break;
    case Brush::Kind::Hollow: break;
    }
}

void RasterCanvas::Polygon(const std::vector<PixelPoint>& points)
{
    if (points.size() < 2)
        return;
    if (brush_.kind != Brush::Kind::Hollow && points.size() >= 3) {
        // Alternate fill: a pixel is inside when its centre is.
        int minY = points[0].y;
        int maxY = points[0].y;
        for (const auto& p : points) {
            minY = std::min(minY, p.y);
            maxY = std::max(maxY, p.y);
        }
        minY = std::max(minY, 0);
        maxY = std::min(maxY, height_ - 1);
        // The edges sorted by their top; each row samples the active ones at its centre.
        std::vector<Edge>& edges = edges_;
        edges.clear();
        for (std::size_t i = 0; i < points.size(); ++i) {
            const PixelPoint& a = points[i];
            const PixelPoint& b = points[(i + 1) % points.size()];
            if (a.y == b.y)
                continue;
            const PixelPoint& t = a.y < b.y ? a : b;
            const PixelPoint& u = a.y < b.y ? b : a;
            edges.push_back({static_cast<double>(t.y), static_cast<double>(u.y), static_cast<double>(t.x),
                             (static_cast<double>(u.x) - t.x) / (static_cast<double>(u.y) - t.y)});
        }
        std::sort(edges.begin(), edges.end(), [](const Edge& l, const Edge& r) { return l.top < r.top; });
        std::vector<const Edge*>& active = active_;
        active.clear();
        std::vector<double>& xs = xs_;
        std::size_t next = 0;
        for (int y = minY; y <= maxY; ++y) {
            const double yc = y + 0.5;
            while (next < edges.size() && edges[next].top <= yc)
                active.push_back(&edges[next++]);
            active.erase(std::remove_if(active.begin(), active.end(), [yc](const Edge* e) { return e->bottom <= yc; }),
                         active.end());
            xs.clear();
            for (const Edge* e : active)
                xs.push_back(e->x0 + (yc - e->top) * e->slope);
            std::sort(xs.begin(), xs.end());
            for (std::size_t k = 0; k + 1 < xs.size(); k += 2) {
                const double from = std::max(xs[k], -1.0);
                const double to = std::min(xs[k + 1], static_cast<double>(width_) + 1);
                // Pixels whose centre x + 0.5 lies in [from, to).
                const int x0 = static_cast<int>(std::ceil(from - 0.5));
                const int x1 = static_cast<int>(std::ceil(to - 0.5)) - 1;
                if (x1 >= x0)
                    FillSpan(y, x0, x1);
            }
        }
    }
    Outline(points);
}

void RasterCanvas::Rectangle(int left, int top, int right, int bottom)
{
    if (!OrderRectangle(left, top, right, bottom))
        return;
    // Wholly off the surface (a wide pen reaches one pixel further): nothing shows, and the
    // dotted pattern ends where the four edges would leave it.
    if (right < -1 || bottom < -1 || left > width_ || top > height_) {
        const std::int64_t w = static_cast<std::int64_t>(right) - 1 - left;
        const std::int64_t h = static_cast<std::int64_t>(bottom) - 1 - top;
        styleStep_ = static_cast<int>((2 * w + 2 * h) % kDotPeriod);
        return;
    }
    for (int y = std::max(top, 0); y < std::min(bottom, height_); ++y)
        FillSpan(y, left, right - 1);
    const int keepX = curX_;
    const int keepY = curY_;
    const int r = right - 1;
    const int b = bottom - 1;
    MoveToEx(left, top);
    LineTo(r, top);
    LineTo(r, b);
    LineTo(left, b);
    LineTo(left, top);
    curX_ = keepX;
    curY_ = keepY;
}

void RasterCanvas::BlitPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels)
{
    if (width <= 0 || height <= 0 || pixels.size() < static_cast<std::size_t>(width) * height)
        return;
    for (int row = std::max(0, -y); row < height && y + row < height_; ++row)
        for (int col = std::max(0, -x); col < width && x + col < width_; ++col)
            pixels_[static_cast<std::size_t>(y + row) * width_ + x + col] =
                pixels[static_cast<std::size_t>(row) * width + col] & 0xFFFFFF;
}

void RasterCanvas::FillWhite(int x, int y, int width, int height)
{
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
    const std::vector<unsigned char> bytes = EncodePng(width, height, pixels);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out)
        return false;
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out);
}

} // namespace fw
