#include "render/Texture.h"

#include <algorithm>

#include "core/Numbers.h"
#include "core/PathCase.h"
#include "files/RegularFile.h"
#include "ports/Canvas.h"

namespace fw {

namespace {

constexpr std::uint16_t kBitmapMagic = 19778; // "BM"
constexpr std::uint64_t kRawSide = 256;
constexpr std::uint64_t kRawBytes = kRawSide * kRawSide;
constexpr std::uint64_t kPaletteOffset = 54;
constexpr std::uint64_t kGlPixelOffset = 1078; // the OpenGL reader's fixed pixel offset
constexpr std::int32_t kFallbackSide = 32;
constexpr std::uint32_t kFallbackGrey = 0x00808080u;

// Random access to a texture's bytes; everything past the end reads as zero.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual std::uint64_t Size() const = 0;
    std::vector<std::uint8_t> Read(std::uint64_t offset, std::uint64_t count)
    {
        std::vector<std::uint8_t> out(static_cast<std::size_t>(count), 0);
        if (offset < Size() && count > 0) {
            std::uint64_t available = std::min<std::uint64_t>(count, Size() - offset);
            Fill(offset, out.data(), static_cast<std::size_t>(available));
        }
        return out;
    }

protected:
    virtual void Fill(std::uint64_t offset, std::uint8_t* dst, std::size_t count) = 0;
};

class MemorySource : public ByteSource {
public:
    explicit MemorySource(const std::vector<std::uint8_t>& bytes) : bytes_(bytes) {}
    std::uint64_t Size() const override { return bytes_.size(); }

protected:
    void Fill(std::uint64_t offset, std::uint8_t* dst, std::size_t count) override
    {
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(offset), count, dst);
    }

private:
    const std::vector<std::uint8_t>& bytes_;
};

class FileSource : public ByteSource {
public:
    explicit FileSource(RegularFile& in) : in_(in) {}
    std::uint64_t Size() const override { return in_.size(); }

protected:
    void Fill(std::uint64_t offset, std::uint8_t* dst, std::size_t count) override
    {
        // A read that fails half way leaves the rest zero, as a short file would.
        std::size_t got = 0;
        in_.ReadAt(offset, dst, count, got);
    }

private:
    RegularFile& in_;
};

std::uint16_t Word(const std::vector<std::uint8_t>& b, std::size_t at)
{
    return static_cast<std::uint16_t>(b[at] | (b[at + 1] << 8));
}

std::uint32_t DWord(const std::vector<std::uint8_t>& b, std::size_t at)
{
    return static_cast<std::uint32_t>(b[at]) | (static_cast<std::uint32_t>(b[at + 1]) << 8) |
           (static_cast<std::uint32_t>(b[at + 2]) << 16) | (static_cast<std::uint32_t>(b[at + 3]) << 24);
}

struct FileHeader {
    std::uint16_t bfType = 0;
    std::uint32_t bfOffBits = 0;
    std::int32_t biWidth = 0;
    std::int32_t biHeight = 0;
    std::uint16_t biBitCount = 0;
};

FileHeader ReadHeader(ByteSource& src)
{
    std::vector<std::uint8_t> b = src.Read(0, 54);
    FileHeader h;
    h.bfType = Word(b, 0);
    h.bfOffBits = DWord(b, 10);
    h.biWidth = static_cast<std::int32_t>(DWord(b, 18));
    h.biHeight = static_cast<std::int32_t>(DWord(b, 22));
    h.biBitCount = Word(b, 28);
    return h;
}

// The size of a bitmap, when it is one we can hold: both sides positive, not more pixels than
// kMaxTexturePixels, and not claiming far more pixel bytes than the file has (a lying header).
bool UsableSize(const FileHeader& h, std::uint64_t bytesPerPixel, std::uint64_t fileSize, std::uint64_t& count)
{
    if (h.biWidth <= 0 || h.biHeight <= 0)
        return false;
    std::uint64_t n = static_cast<std::uint64_t>(h.biWidth) * static_cast<std::uint64_t>(h.biHeight);
    if (n > static_cast<std::uint64_t>(kMaxTexturePixels))
        return false;
    if (n * bytesPerPixel > 4 * fileSize + kRawBytes)
        return false;
    count = n;
    return true;
}

// The block behind the pixels of an 8-bit bitmap: one byte skipped, then half the size each way.
bool ExtraBlockSet(ByteSource& src, std::uint64_t pixelOffset, const FileHeader& h)
{
    auto half = [](std::int32_t v) {
        return static_cast<std::uint64_t>(RoundHalfEven(static_cast<double>(v) / 2.0));
    };
    std::uint64_t count = half(h.biWidth) * half(h.biHeight);
    std::uint64_t at = pixelOffset + static_cast<std::uint64_t>(h.biWidth) * static_cast<std::uint64_t>(h.biHeight) + 1;
    if (at >= src.Size())
        return false;
    std::vector<std::uint8_t> extra = src.Read(at, count);
    return std::any_of(extra.begin(), extra.end(), [](std::uint8_t b) { return b != 0; });
}

void FillHeader(BitmapInfoHeader& header, std::int32_t w, std::int32_t h)
{
    header = BitmapInfoHeader{};
    header.biWidth = w;
    header.biHeight = h;
    header.biSizeImage = static_cast<std::uint32_t>(static_cast<std::uint64_t>(w) * static_cast<std::uint64_t>(h));
}

void GdiFallback(std::vector<std::uint32_t>& pixels, BitmapInfoHeader& header, std::string& label)
{
    pixels.assign(static_cast<std::size_t>(kFallbackSide * kFallbackSide), kFallbackGrey);
    FillHeader(header, kFallbackSide, kFallbackSide);
    label = kLabelUnknown;
}

TextureForm GdiFromSource(ByteSource& src, const Palette& palette, std::vector<std::uint32_t>& pixels,
                          BitmapInfoHeader& header, std::string& label)
{
    FileHeader h = ReadHeader(src);
    if (h.bfType != kBitmapMagic) {
        // Rows stay in file order, although the header calls the image bottom-up.
        std::vector<std::uint8_t> index = src.Read(0, kRawBytes);
        pixels.resize(kRawBytes);
        for (std::size_t i = 0; i < index.size(); ++i) {
            const auto& e = palette[index[i]];
            pixels[i] = static_cast<std::uint32_t>(e[2]) | (static_cast<std::uint32_t>(e[1]) << 8) |
                        (static_cast<std::uint32_t>(e[0]) << 16);
        }
        FillHeader(header, static_cast<std::int32_t>(kRawSide), static_cast<std::int32_t>(kRawSide));
        label = kLabelRaw;
        return TextureForm::Raw;
    }
    std::uint64_t count = 0;
    if (h.biBitCount == 24 && UsableSize(h, 3, src.Size(), count)) {
        std::vector<std::uint8_t> bgr = src.Read(kPaletteOffset, 3 * count);
        pixels.resize(static_cast<std::size_t>(count));
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = static_cast<std::uint32_t>(bgr[3 * i]) | (static_cast<std::uint32_t>(bgr[3 * i + 1]) << 8) |
                        (static_cast<std::uint32_t>(bgr[3 * i + 2]) << 16);
        FillHeader(header, h.biWidth, h.biHeight);
        label = kLabel24Bit;
        return TextureForm::Rgb24;
    }
    if (h.biBitCount == 8 && UsableSize(h, 1, src.Size(), count)) {
        std::vector<std::uint8_t> pal = src.Read(kPaletteOffset, 1024);
        std::vector<std::uint8_t> index = src.Read(h.bfOffBits, count);
        bool extended = ExtraBlockSet(src, h.bfOffBits, h);
        std::array<std::uint32_t, 256> colour{};
        for (std::size_t e = 0; e < 256; ++e) {
            std::uint32_t b = pal[4 * e], g = pal[4 * e + 1], r = pal[4 * e + 2], a = pal[4 * e + 3];
            if (extended) {
                // Transparency shown against white.
                auto over = [a](std::uint32_t c) { return std::min<std::uint32_t>(255, 255 - a + c); };
                colour[e] = over(b) | (over(g) << 8) | (over(r) << 16);
            } else {
                colour[e] = b | (g << 8) | (r << 16) | (a << 24);
            }
        }
        pixels.resize(static_cast<std::size_t>(count));
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = colour[index[i]];
        FillHeader(header, h.biWidth, h.biHeight);
        label = extended ? kLabelExtended : kLabelPalette;
        return extended ? TextureForm::Extended8 : TextureForm::Palette8;
    }
    GdiFallback(pixels, header, label);
    return TextureForm::Unknown;
}

void GlFallback(std::vector<std::uint8_t>& image, std::int32_t& width, std::int32_t& height)
{
    image.assign(static_cast<std::size_t>(kFallbackSide * kFallbackSide * 4), 0);
    width = kFallbackSide;
    height = kFallbackSide;
}

TextureForm GlFromSource(ByteSource& src, const Palette& palette, std::vector<std::uint8_t>& image,
                         std::int32_t& width, std::int32_t& height)
{
    FileHeader h = ReadHeader(src);
    if (h.bfType != kBitmapMagic) {
        std::vector<std::uint8_t> index = src.Read(0, kRawBytes);
        image.resize(kRawBytes * 4);
        for (std::size_t r = 0; r < kRawSide; ++r) {
            std::uint8_t* row = &image[(kRawSide - 1 - r) * kRawSide * 4];
            for (std::size_t c = 0; c < kRawSide; ++c) {
                const auto& e = palette[index[r * kRawSide + c]];
                row[4 * c] = e[0];
                row[4 * c + 1] = e[1];
                row[4 * c + 2] = e[2];
                row[4 * c + 3] = 255;
            }
        }
        width = height = static_cast<std::int32_t>(kRawSide);
        return TextureForm::Raw;
    }
    std::uint64_t count = 0;
    if (h.biBitCount == 24 && UsableSize(h, 3, src.Size(), count)) {
        std::vector<std::uint8_t> bgr = src.Read(kPaletteOffset, 3 * count);
        const std::size_t w = static_cast<std::size_t>(h.biWidth), rows = static_cast<std::size_t>(h.biHeight);
        image.resize(static_cast<std::size_t>(count) * 4);
        for (std::size_t r = 0; r < rows; ++r)
            for (std::size_t c = 0; c < w; ++c) {
                const std::uint8_t* s = &bgr[3 * (r * w + c)];
                std::uint8_t* d = &image[4 * ((rows - 1 - r) * w + c)];
                d[0] = s[2];
                d[1] = s[1];
                d[2] = s[0];
                d[3] = 255;
            }
        width = h.biWidth;
        height = h.biHeight;
        return TextureForm::Rgb24;
    }
    if (h.biBitCount == 8 && UsableSize(h, 1, src.Size(), count)) {
        std::vector<std::uint8_t> pal = src.Read(kPaletteOffset, 1024);
        std::vector<std::uint8_t> index = src.Read(kGlPixelOffset, count);
        bool extended = ExtraBlockSet(src, kGlPixelOffset, h);
        const std::size_t w = static_cast<std::size_t>(h.biWidth), rows = static_cast<std::size_t>(h.biHeight);
        image.resize(static_cast<std::size_t>(count) * 4);
        for (std::size_t r = 0; r < rows; ++r)
            for (std::size_t c = 0; c < w; ++c) {
                const std::uint8_t* e = &pal[4 * static_cast<std::size_t>(index[r * w + c])];
                std::uint8_t* d = &image[4 * ((rows - 1 - r) * w + c)];
                d[0] = e[2];
                d[1] = e[1];
                d[2] = e[0];
                d[3] = extended ? e[3] : 255;
            }
        width = h.biWidth;
        height = h.biHeight;
        return extended ? TextureForm::Extended8 : TextureForm::Palette8;
    }
    GlFallback(image, width, height);
    return TextureForm::Unknown;
}

// Opens a texture for reading; false for a missing file or anything that isn't a plain file.
bool OpenTexture(const std::string& path, RegularFile& in)
{
    return !path.empty() && in.Open(FindPathNoCase(path));
}

// The raw form needs the palette, read afresh each time.
Palette PaletteFor(ByteSource& src, const std::string& programFolder)
{
    Palette palette{};
    std::vector<std::uint8_t> magic = src.Read(0, 2);
    if (Word(magic, 0) != kBitmapMagic)
        LoadPalette(programFolder, palette);
    return palette;
}

} // namespace

std::string PalettePath(const std::string& programFolder)
{
    return FindPathNoCase(programFolder + "Resource/fs5.pal");
}

void LoadPalette(const std::string& programFolder, Palette& palette)
{
    palette = Palette{};
    RegularFile in;
    if (!OpenTexture(PalettePath(programFolder), in))
        return;
    FileSource src(in);
    std::vector<std::uint8_t> bytes = src.Read(0, 768);
    for (std::size_t i = 0; i < 256; ++i)
        for (std::size_t c = 0; c < 3; ++c)
            palette[i][c] = bytes[3 * i + c];
}

TextureForm DecodeTextureGdi(const std::vector<std::uint8_t>& bytes, const Palette& palette,
                             std::vector<std::uint32_t>& pixels, BitmapInfoHeader& header, std::string& label)
{
    MemorySource src(bytes);
    return GdiFromSource(src, palette, pixels, header, label);
}

TextureForm DecodeTextureGl(const std::vector<std::uint8_t>& bytes, const Palette& palette,
                            std::vector<std::uint8_t>& image, std::int32_t& width, std::int32_t& height)
{
    MemorySource src(bytes);
    return GlFromSource(src, palette, image, width, height);
}

void ReadTextureGdi(const std::string& path, const std::string& programFolder, std::vector<std::uint32_t>& pixels,
                    BitmapInfoHeader& header, std::string& label)
{
    RegularFile in;
    if (!OpenTexture(path, in)) {
        GdiFallback(pixels, header, label);
        return;
    }
    FileSource src(in);
    Palette palette = PaletteFor(src, programFolder);
    GdiFromSource(src, palette, pixels, header, label);
}

int ReadTextureGl(const std::string& path, const std::string& programFolder, std::vector<std::uint8_t>& image,
                  std::int32_t& width, std::int32_t& height)
{
    RegularFile in;
    if (!OpenTexture(path, in)) {
        GlFallback(image, width, height);
        return 0;
    }
    FileSource src(in);
    Palette palette = PaletteFor(src, programFolder);
    return GlFromSource(src, palette, image, width, height) == TextureForm::Unknown ? 0 : 1;
}

double TextureScale(std::int32_t w, std::int32_t h)
{
    if (w != h)
        return 0.0;
    switch (w) {
    case 32: return 0.125;
    case 64: return 0.25;
    case 128: return 0.5;
    case 256: return 1.0;
    default: return 0.0;
    }
}

std::vector<std::uint32_t> UprightPixels(const std::vector<std::uint32_t>& pixels, const BitmapInfoHeader& header)
{
    std::vector<std::uint32_t> out;
    const std::int64_t w = header.biWidth, h = header.biHeight;
    if (w <= 0 || h <= 0 || static_cast<std::uint64_t>(w * h) > pixels.size())
        return out;
    out.resize(static_cast<std::size_t>(w * h));
    // Row 0 of a bottom-up image is its foot.
    for (std::int64_t y = 0; y < h; ++y)
        for (std::int64_t x = 0; x < w; ++x)
            out[static_cast<std::size_t>(y * w + x)] = pixels[static_cast<std::size_t>((h - 1 - y) * w + x)] & 0x00FFFFFFu;
    return out;
}

void LoadPreview(Canvas& target, int width, int height, std::string& label, TextureSize& size,
                 const std::string& path, const std::string& programFolder)
{
    std::vector<std::uint32_t> pixels;
    BitmapInfoHeader header;
    ReadTextureGdi(path, programFolder, pixels, header, label);
    if (TextureScale(header.biWidth, header.biHeight) == 0.0)
        label += kLabelWrongSize;
    size.width = header.biWidth;
    size.height = header.biHeight;
    target.FillWhite(0, 0, width, height);
    target.StretchPixels(0, 0, width, height, UprightPixels(pixels, header), header.biWidth, header.biHeight);
}

} // namespace fw
