// Texture files: the raw 8-bit form with the palette, and 8- and 24-bit bitmaps.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace fw {

class Canvas;

// 256 entries of red, green, blue.
using Palette = std::array<std::array<std::uint8_t, 3>, 256>;

// The device-independent bitmap header ReadTextureGdi fills in.
struct BitmapInfoHeader {
    std::int32_t biSize = 40;
    std::int32_t biWidth = 0;
    std::int32_t biHeight = 0;
    std::uint16_t biPlanes = 1;
    std::uint16_t biBitCount = 32;
    std::uint32_t biCompression = 0;
    std::uint32_t biSizeImage = 0; // pixels, not bytes
    std::int32_t biXPelsPerMeter = 0;
    std::int32_t biYPelsPerMeter = 0;
    std::uint32_t biClrUsed = 0;
    std::uint32_t biClrImportant = 0;
};

struct TextureSize {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

inline constexpr const char* kLabelRaw = "8-bit raw";
inline constexpr const char* kLabelPalette = "8-bit palette";
inline constexpr const char* kLabelExtended = "8-bit palette (extended)";
inline constexpr const char* kLabel24Bit = "24-bit (FS INCOMPATIBLE!)";
inline constexpr const char* kLabelUnknown = "Unknown format!";
inline constexpr const char* kLabelWrongSize = " -> Wrong size!";

// The largest image the readers accept. Bigger headers, sides of 0 or less, and headers claiming
// more pixel bytes than four times the file's size and 64 KiB are damaged files: the fallback.
// A file merely cut short reads zeros past its end.
inline constexpr std::int64_t kMaxTexturePixels = 4096LL * 4096LL;

// The texture forms as told by their first bytes.
enum class TextureForm { Raw, Palette8, Extended8, Rgb24, Unknown };

// Where the palette lives: programFolder + "Resource/fs5.pal", the folder matched without regard to case.
std::string PalettePath(const std::string& programFolder);

// Reads the palette; entries the file doesn't hold (or all, without the file) stay zero.
void LoadPalette(const std::string& programFolder, Palette& palette);

// Preview reader. pixels: w * h values laid out as the bytes blue, green, red, reserved
// (0xXXRRGGBB in a 32-bit value, reserved on top), rows as the file holds them
// (bottom-up for a bitmap). Always fills all three; an unreadable file gives the grey 32 by 32
// fallback labelled "Unknown format!".
void ReadTextureGdi(const std::string& path, const std::string& programFolder, std::vector<std::uint32_t>& pixels,
                    BitmapInfoHeader& header, std::string& label);

// OpenGL reader. image: width * height * 4 bytes, row 0 on top, channels red, green, blue, alpha.
// Returns 1, or 0 with a 32 by 32 zero image when it can't read the file.
int ReadTextureGl(const std::string& path, const std::string& programFolder, std::vector<std::uint8_t>& image,
                  std::int32_t& width, std::int32_t& height);

// The same readers on bytes already in memory; the palette is used only by the raw form.
TextureForm DecodeTextureGdi(const std::vector<std::uint8_t>& bytes, const Palette& palette,
                             std::vector<std::uint32_t>& pixels, BitmapInfoHeader& header, std::string& label);
TextureForm DecodeTextureGl(const std::vector<std::uint8_t>& bytes, const Palette& palette,
                            std::vector<std::uint8_t>& image, std::int32_t& width, std::int32_t& height);

// 0.125, 0.25, 0.5, 1.0 for a square of side 32, 64, 128, 256; 0 for a size the simulator can't use.
double TextureScale(std::int32_t w, std::int32_t h);

// The image of ReadTextureGdi upright, as a bottom-up bitmap shows it: 0x00RRGGBB values row by
// row from the top, the form Canvas::StretchPixels takes.
std::vector<std::uint32_t> UprightPixels(const std::vector<std::uint32_t>& pixels, const BitmapInfoHeader& header);

// Clears the target and stretches the texture over (0, 0, width, height); gives the label, with
// " -> Wrong size!" when the simulator can't use the size, and the image's size.
void LoadPreview(Canvas& target, int width, int height, std::string& label, TextureSize& size,
                 const std::string& path, const std::string& programFolder);

} // namespace fw
