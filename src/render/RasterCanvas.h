// A Canvas on a plain pixel buffer, with the pixel rules of the GDI: lines leave out their last
// pixel, rectangles leave out their right and bottom edge, polygons fill by the alternate rule.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "render/GdiCanvas.h"

namespace fw {

class RasterCanvas : public GdiCanvas {
public:
    RasterCanvas(int width, int height);

    int Width() const override { return width_; }
    int Height() const override { return height_; }
    void BlitPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels) override;
    void FillWhite(int x, int y, int width, int height) override;
    void CopyFrom(const Canvas& source) override;
    void StretchPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels,
                       int srcWidth, int srcHeight) override;

    // 0x00RRGGBB, row-major.
    const std::vector<std::uint32_t>& Pixels() const
    {
        SetWaitingRuns();
        return pixels_;
    }
    std::uint32_t Pixel(int x, int y) const;

private:
    Rows Surface(const PixelBox& touched) override;

    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
};

// Writes 8-bit RGB as PNG (stored deflate blocks); false when the file can't be written.
bool WritePng(const std::string& path, int width, int height, const std::vector<std::uint32_t>& pixels);
// The PNG bytes themselves.
std::vector<unsigned char> EncodePng(int width, int height, const std::vector<std::uint32_t>& pixels);
std::uint32_t Crc32(const unsigned char* data, std::size_t size, std::uint32_t crc = 0);
std::uint32_t Adler32(const unsigned char* data, std::size_t size);

} // namespace fw
