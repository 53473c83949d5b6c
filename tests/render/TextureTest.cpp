#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>
#include <vector>

#include "render/Texture.h"
#include "support/RecordingCanvas.h"

namespace fw {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;
using Texel = std::array<int, 4>;
using Rgb = std::array<std::uint8_t, 3>;

void Put32(Bytes& b, std::size_t at, std::uint32_t v)
{
    for (int i = 0; i < 4; ++i)
        b[at + i] = static_cast<std::uint8_t>(v >> (8 * i));
}

// A bitmap header ("BM", offset, sides, depth; bfSize is never trusted); the file is headerSize bytes.
Bytes Header(std::int32_t w, std::int32_t h, int bits, std::uint32_t offBits, std::size_t headerSize)
{
    Bytes b(headerSize, 0);
    b[0] = 'B';
    b[1] = 'M';
    Put32(b, 2, 0x7FFFFFFF);
    Put32(b, 10, offBits);
    Put32(b, 14, 40);
    Put32(b, 18, static_cast<std::uint32_t>(w));
    Put32(b, 22, static_cast<std::uint32_t>(h));
    b[26] = 1;
    b[28] = static_cast<std::uint8_t>(bits);
    return b;
}

// An 8-bit bitmap whose palette entry e is blue e / 4, green e / 2, red 255 - e, reserved e, and
// whose pixel i holds index i % 251; extra is appended after one skipped byte.
Bytes Bitmap8(std::int32_t w, std::int32_t h, const Bytes& extra = {}, std::uint32_t offBits = 1078)
{
    Bytes b = Header(w, h, 8, offBits, std::max<std::size_t>(1078, offBits));
    for (int e = 0; e < 256; ++e)
        Put32(b, 54 + 4 * e, static_cast<std::uint32_t>(e / 4 | (e / 2) << 8 | (255 - e) << 16) | static_cast<std::uint32_t>(e) << 24);
    for (std::int64_t i = 0; i < std::int64_t{w} * h; ++i)
        b.push_back(static_cast<std::uint8_t>(i % 251));
    if (!extra.empty()) {
        b.push_back(0);
        b.insert(b.end(), extra.begin(), extra.end());
    }
    return b;
}

// Pixel i is blue i, green i + 1, red i + 2.
Bytes Bitmap24(std::int32_t w, std::int32_t h)
{
    Bytes b = Header(w, h, 24, 54, 54);
    for (std::int64_t i = 0; i < std::int64_t{w} * h; ++i)
        for (int k = 0; k < 3; ++k)
            b.push_back(static_cast<std::uint8_t>(i + k));
    return b;
}

Bytes Cut(Bytes b, std::size_t size)
{
    b.resize(size);
    return b;
}

std::uint32_t Bgr(int b, int g, int r, int reserved = 0)
{
    return static_cast<std::uint32_t>(b | g << 8 | r << 16) | static_cast<std::uint32_t>(reserved) << 24;
}

// A program folder of its own with the palette entry i = (i, 255 - i, i / 2), entry 0 black.
class TextureFiles : public ::testing::Test {
protected:
    void SetUp() override
    {
        root_ = fs::temp_directory_path() / ("fw_texture_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(root_);
        fs::create_directories(root_ / "resource");
        program_ = root_.string() + "/";
        Bytes pal(768);
        for (int i = 0; i < 256; ++i) {
            pal[3 * i] = static_cast<std::uint8_t>(i);
            pal[3 * i + 1] = static_cast<std::uint8_t>(i == 0 ? 0 : 255 - i);
            pal[3 * i + 2] = static_cast<std::uint8_t>(i / 2);
        }
        Write("resource/fs5.pal", pal);
    }
    void TearDown() override { fs::remove_all(root_); }

    std::string Write(const std::string& name, const Bytes& bytes)
    {
        std::string path = (root_ / name).string();
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return path;
    }
    // The file read by the preview's reader, giving its label; and by the OpenGL reader.
    std::string Gdi(const std::string& path)
    {
        ReadTextureGdi(path, program_, pixels_, header_, label_);
        return label_;
    }
    int Gl(const std::string& path) { return ReadTextureGl(path, program_, image_, width_, height_); }
    // Red, green, blue, alpha of texel i of the OpenGL image.
    Texel At(std::size_t i) const { return {image_[i * 4], image_[i * 4 + 1], image_[i * 4 + 2], image_[i * 4 + 3]}; }

    fs::path root_;
    std::string program_;
    std::vector<std::uint32_t> pixels_;
    BitmapInfoHeader header_;
    std::string label_;
    std::vector<std::uint8_t> image_;
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
};

TEST_F(TextureFiles, RawFormKeepsFileRowsForPreviewAndTurnsThemForOpenGl)
{
    Bytes raw(65536);
    for (std::size_t i = 0; i < raw.size(); ++i)
        raw[i] = static_cast<std::uint8_t>((i * 7 + i / 256) % 256);
    raw[0] = 'B'; // "BM" only counts as both bytes
    raw[1] = 'X';
    std::string path = Write("ground.bmp", raw); // any name: the first bytes decide

    EXPECT_EQ(Gdi(path), "8-bit raw");
    ASSERT_EQ(pixels_.size(), 65536u);
    for (std::size_t i : {0, 1, 300, 65535}) {
        const int v = raw[i];
        EXPECT_EQ(pixels_[i], Bgr(v / 2, v == 0 ? 0 : 255 - v, v)) << i;
    }
    EXPECT_EQ(header_.biWidth, 256);
    EXPECT_EQ(header_.biSizeImage, 65536u);

    ASSERT_EQ(Gl(path), 1);
    ASSERT_EQ(width_, 256);
    ASSERT_EQ(height_, 256);
    // Source row 0 lands in image row 255.
    for (std::size_t c : {0, 5, 255}) {
        const int v = raw[c];
        EXPECT_EQ(At(255 * 256 + c), (Texel{v, v == 0 ? 0 : 255 - v, v / 2, 255})) << c;
    }
    EXPECT_EQ(image_[3 * 4], raw[255 * 256 + 3]);
}

// Short, cut and odd files of each form: the label, and zeros where the data ends.
TEST_F(TextureFiles, ShortAndCutFilesReadZerosPastTheirEnd)
{
    Bytes far = Bitmap8(32, 32);
    Put32(far, 10, 0xFFFFFFF0u); // pixels far past the end: nothing big is read or held
    const struct {
        const char* name;
        Bytes bytes;
        const char* label;
        std::vector<std::pair<std::size_t, std::uint32_t>> pixels;
    } cases[] = {
        {"short.r8", Bytes(1000, 9), "8-bit raw", {{999, Bgr(4, 246, 9)}, {1000, 0}, {65535, 0}}},
        {"empty.r8", {}, "8-bit raw", {{0, 0}, {65535, 0}}},
        // Ten rows of pixels left: index 0 from there on.
        {"cut.bmp", Cut(Bitmap8(64, 64), 1078 + 64 * 10), "8-bit palette",
         {{639, Bgr(34, 68, 118, 137)}, {640, Bgr(0, 0, 255, 0)}, {4095, Bgr(0, 0, 255, 0)}}},
        // Cut inside the palette, entry 0 without its red: all black.
        {"cut2.bmp", Cut(Bitmap8(64, 64), 56), "8-bit palette", {{4095, 0}}},
        {"far.bmp", far, "8-bit palette", {{100, Bgr(0, 0, 255, 0)}}},
        {"cut24.bmp", Cut(Bitmap24(32, 32), 54 + 32 * 3), "24-bit (FS INCOMPATIBLE!)", {{31, Bgr(31, 32, 33)}, {32, 0}}},
        // 5 by 3: the extra block is round(2.5) * round(1.5) = 2 * 2 bytes.
        {"in.bmp", Bitmap8(5, 3, {0, 0, 0, 7}), "8-bit palette (extended)", {}},
        {"out.bmp", Bitmap8(5, 3, {0, 0, 0, 0, 7}), "8-bit palette", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Gdi(Write(c.name, c.bytes)), c.label);
        for (auto [at, pixel] : c.pixels) {
            ASSERT_LT(at, pixels_.size());
            EXPECT_EQ(pixels_[at], pixel) << at;
        }
    }
    EXPECT_EQ(Gl(Write("one.r8", {'B'})), 1);
    EXPECT_EQ(width_, 256);
    ASSERT_EQ(Gl(root_.string() + "/cut2.bmp"), 1);
    EXPECT_EQ(image_[0], 0);
    EXPECT_EQ(image_[3], 255);
}

TEST_F(TextureFiles, PaletteIsFoundWithoutRegardToCaseAndOnlyTheRawFormNeedsIt)
{
    fs::create_directories(root_ / "Texture");
    Write("Texture/Concrete.r8", Bytes(65536, 10));
    fs::rename(root_ / "resource", root_ / "RESOURCE");
    EXPECT_EQ(Gdi(program_ + "texture\\concrete.R8"), "8-bit raw");
    EXPECT_EQ(pixels_[0], Bgr(5, 245, 10));

    // A palette file cut short leaves the entries it doesn't hold at zero.
    Write("RESOURCE/fs5.pal", Bytes(30, 7));
    Palette palette{};
    LoadPalette(program_, palette);
    EXPECT_EQ(palette[9], (Rgb{7, 7, 7}));
    EXPECT_EQ(palette[10], (Rgb{0, 0, 0}));

    // No palette: the raw form is black, bitmaps keep their own.
    fs::remove(root_ / "RESOURCE" / "fs5.pal");
    EXPECT_EQ(Gdi(Write("c.r8", Bytes(65536, 200))), "8-bit raw");
    EXPECT_TRUE(std::all_of(pixels_.begin(), pixels_.end(), [](std::uint32_t p) { return p == 0; }));
    EXPECT_EQ(Gdi(Write("b.bmp", Bitmap8(32, 32))), "8-bit palette");
    EXPECT_EQ(pixels_[4], Bgr(1, 2, 251, 4));
    palette[3] = {1, 2, 3};
    LoadPalette(program_, palette);
    EXPECT_EQ(palette[3], (Rgb{0, 0, 0}));
}

// Each bitmap form: the preview's label, header and pixels (blue, green, red, reserved), and the
// OpenGL texels (red, green, blue, alpha) with the file's first row, the foot, as the last image row.
TEST_F(TextureFiles, EachBitmapFormReadsForPreviewAndOpenGl)
{
    Bytes extra(64 * 64, 0);
    extra[4095] = 1;
    // The byte right behind the pixels is skipped: a mark there alone isn't an extra block.
    Bytes mark = Bitmap8(128, 128);
    mark.push_back(9);
    mark.resize(mark.size() + 64 * 64, 0);
    const struct {
        const char* name;
        Bytes bytes;
        const char* label;
        int width, height;
        std::vector<std::pair<std::size_t, std::uint32_t>> pixels;
        std::pair<std::size_t, Texel> texel;
    } cases[] = {
        // All four bytes of the entry, the reserved byte included; alpha 255 without an extra block.
        {"p.bmp", Bitmap8(128, 128), "8-bit palette", 128, 128,
         {{0, Bgr(0, 0, 255, 0)}, {100, Bgr(25, 50, 155, 100)}, {300, Bgr(12, 24, 206, 49)}}, // 300 % 251
         {127 * 128 + 100, {155, 50, 25, 255}}},
        // min(255, 255 - alpha + colour): transparency against white, reserved 0; alpha from the entry.
        {"x.bmp", Bitmap8(128, 128, extra), "8-bit palette (extended)", 128, 128,
         {{200, Bgr(105, 155, 110, 0)}, {0, Bgr(255, 255, 255, 0)}, {10, Bgr(247, 250, 255, 0)}},
         {126 * 128 + 72, {55, 100, 50, 200}}},
        {"y.bmp", mark, "8-bit palette", 128, 128, {}, {126 * 128 + 72, {55, 100, 50, 255}}},
        {"t.bmp", Bitmap24(64, 32), "24-bit (FS INCOMPATIBLE!)", 64, 32,
         {{0, Bgr(0, 1, 2, 0)}, {70, Bgr(70, 71, 72, 0)}}, {31 * 64 + 6, {8, 7, 6, 255}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = Write(c.name, c.bytes);
        EXPECT_EQ(Gdi(path), c.label);
        ASSERT_EQ(pixels_.size(), static_cast<std::size_t>(c.width) * c.height);
        EXPECT_EQ(header_.biWidth, c.width);
        EXPECT_EQ(header_.biHeight, c.height);
        EXPECT_EQ(header_.biSizeImage, static_cast<std::uint32_t>(c.width * c.height));
        for (auto [at, pixel] : c.pixels)
            EXPECT_EQ(pixels_[at], pixel) << at;
        ASSERT_EQ(Gl(path), 1);
        EXPECT_EQ(width_, c.width);
        EXPECT_EQ(height_, c.height);
        EXPECT_EQ(At(c.texel.first), c.texel.second);
    }

    // Pixels at 1100: the preview reads them there, the OpenGL reader at 1078 whatever the header says.
    Bytes b = Bitmap8(32, 32, {}, 1100);
    std::fill(b.begin() + 1078, b.begin() + 1100, 0);
    EXPECT_EQ(Gdi(Write("o.bmp", b)), "8-bit palette");
    EXPECT_EQ(pixels_[5], Bgr(1, 2, 250, 5));
    ASSERT_EQ(Gl(Write("o.bmp", b)), 1);
    // Image row 31 is file row 0: index 0 for the 22 padding bytes, then the pixels shifted by 22.
    EXPECT_EQ(image_[(31 * 32 + 5) * 4], 255);      // entry 0: red 255
    EXPECT_EQ(image_[(31 * 32 + 27) * 4], 255 - 5); // pixel 5 read at offset 1105
}

TEST_F(TextureFiles, UnreadableFilesGiveTheFallback)
{
    std::vector<std::string> paths = {program_ + "missing.bmp", "", root_.string() /* a folder */,
                                      Write("bm.bmp", {'B', 'M'})};
    for (int bits : {1, 4, 16, 32, 0})
        paths.push_back(Write("d" + std::to_string(bits) + ".bmp", Header(32, 32, bits, 54, 54 + 32 * 32 * 4)));
    // Sizes no one can hold, negative or zero sides, a header far bigger than its file.
    const struct { std::int32_t w, h; int bits; std::size_t size; } damaged[] = {
        {100000, 100000, 8, 2000}, {100000, 100000, 24, 2000}, {0x7FFFFFFF, 1, 8, 2000}, {32, -32, 8, 1078 + 1024},
        {-65536, -65536, 24, 2000}, {0, 256, 8, 1078}, {4096, 4096, 8, 2000}};
    for (const auto& d : damaged)
        paths.push_back(Write("h" + std::to_string(paths.size()) + ".bmp",
                              Header(d.w, d.h, d.bits, d.bits == 8 ? 1078 : 54, d.size)));
    for (const std::string& path : paths) {
        SCOPED_TRACE(path);
        EXPECT_EQ(Gdi(path), "Unknown format!");
        EXPECT_EQ(pixels_, std::vector<std::uint32_t>(1024, Bgr(128, 128, 128)));
        EXPECT_EQ(std::tie(header_.biWidth, header_.biHeight, header_.biBitCount, header_.biSizeImage),
                  std::make_tuple(32, 32, std::uint16_t{32}, 1024u));
        image_.assign(3, 1);
        EXPECT_EQ(Gl(path), 0);
        EXPECT_EQ(std::tie(width_, height_), std::make_tuple(32, 32));
        EXPECT_EQ(image_, Bytes(32 * 32 * 4, 0));
    }
}

// The fuzzer reads from memory, the program from files: the same images either way.
TEST_F(TextureFiles, MemoryAndFileReadersAgree)
{
    Palette palette{};
    LoadPalette(program_, palette);
    for (const Bytes& b : {Bitmap8(32, 32), Bitmap8(16, 8, Bytes(32, 3)), Bitmap24(8, 8), Bytes(65536, 77),
                           Header(9, 9, 16, 54, 60)}) {
        const std::string path = Write("m.bin", b);
        std::vector<std::uint32_t> px;
        BitmapInfoHeader hd;
        std::string lb;
        DecodeTextureGdi(b, palette, px, hd, lb);
        EXPECT_EQ(Gdi(path), lb);
        EXPECT_EQ(std::tie(px, hd.biWidth, hd.biHeight), std::tie(pixels_, header_.biWidth, header_.biHeight));
        std::vector<std::uint8_t> im;
        std::int32_t w = 0, h = 0;
        EXPECT_EQ(Gl(path), DecodeTextureGl(b, palette, im, w, h) == TextureForm::Unknown ? 0 : 1);
        EXPECT_EQ(std::tie(im, w, h), std::tie(image_, width_, height_));
    }
}

// Keeps the pixels a stretch was given.
class PictureCanvas : public RecordingCanvas {
public:
    PictureCanvas() : RecordingCanvas(100, 80) {}
    void StretchPixels(int x, int y, int width, int height, const std::vector<std::uint32_t>& pixels, int srcWidth,
                       int srcHeight) override
    {
        RecordingCanvas::StretchPixels(x, y, width, height, pixels, srcWidth, srcHeight);
        picture = pixels;
    }
    std::vector<std::uint32_t> picture;
};

TEST_F(TextureFiles, PreviewClearsAndStretchesTheUprightImageAndNamesAWrongSize)
{
    const struct { int w, h; double scale; } sizes[] = {
        {32, 32, 0.125}, {64, 64, 0.25}, {128, 128, 0.5}, {256, 256, 1.0}, {128, 64, 0.0},
        {16, 16, 0.0},   {512, 512, 0.0}, {0, 0, 0.0},    {-256, -256, 0.0}};
    for (const auto& c : sizes)
        EXPECT_EQ(TextureScale(c.w, c.h), c.scale) << c.w << "x" << c.h;

    PictureCanvas canvas;
    std::string label;
    TextureSize size;
    LoadPreview(canvas, 100, 80, label, size, Write("w.bmp", Bitmap8(128, 64)), program_);
    EXPECT_EQ(label, "8-bit palette -> Wrong size!");
    EXPECT_EQ(size.width, 128);
    EXPECT_EQ(size.height, 64);
    ASSERT_EQ(canvas.calls.size(), 2u);
    EXPECT_EQ(canvas.calls[0].op, "white");
    EXPECT_EQ(canvas.calls[0].args, (std::vector<int>{0, 0, 100, 80}));
    EXPECT_EQ(canvas.calls[1].op, "stretch");
    EXPECT_EQ(canvas.calls[1].args, (std::vector<int>{0, 0, 100, 80, 128, 64}));
    ASSERT_EQ(canvas.picture.size(), 128u * 64u);
    // The top row of the picture is the file's last row; the reserved byte is dropped.
    const int last = 63 * 128 % 251;
    EXPECT_EQ(canvas.picture[0], Bgr(last / 4, last / 2, 255 - last));
    EXPECT_EQ(canvas.picture[63 * 128 + 1], Bgr(0, 0, 254));

    LoadPreview(canvas, 100, 80, label, size, Write("s.bmp", Bitmap8(64, 64)), program_);
    EXPECT_EQ(label, "8-bit palette");
    LoadPreview(canvas, 100, 80, label, size, program_ + "nothing.bmp", program_);
    EXPECT_EQ(label, "Unknown format!"); // 32 by 32 is a size the simulator takes
    EXPECT_EQ(size.width, 32);
}

// The textures of the program folder, as the defaults and the exporters name them.
class ShippedTextures : public ::testing::Test {
protected:
    static std::string Program() { return std::string(FW_FIXTURES) + "/../../resources/"; }

    std::string Label(const std::string& name)
    {
        std::vector<std::uint32_t> pixels;
        BitmapInfoHeader header;
        std::string label;
        ReadTextureGdi(Program() + "Texture/" + name, Program(), pixels, header, label);
        EXPECT_EQ(TextureScale(header.biWidth, header.biHeight), 1.0) << name;
        return label;
    }
    // Red, green, blue, alpha of texel (u, v), v counted from the top as the sheets are drawn.
    Texel At(const std::string& name, int u, int v)
    {
        if (name != name_) {
            EXPECT_EQ(ReadTextureGl(Program() + "Texture/" + name, Program(), image_, width_, height_), 1);
            name_ = name;
        }
        const std::uint8_t* p = &image_[static_cast<std::size_t>((v * width_ + u) * 4)];
        return {p[0], p[1], p[2], p[3]};
    }

    std::string name_;
    std::vector<std::uint8_t> image_;
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
};

TEST_F(ShippedTextures, EveryDefaultTextureIsThereInAFormTheSimulatorTakes)
{
    // Trees and the upper forest roofs show the ground through their gaps.
    const std::pair<const char*, const char*> labels[] = {
        {"Concrete.r8", "8-bit raw"}, {"taxi.bmp", "8-bit palette"}, {"fwt_build01.bmp", "8-bit palette"},
        {"fwt_sign1.bmp", "8-bit palette"}, {"fwt_foresttop_dark1.bmp", "8-bit palette"},
        {"fwt_foresttopc_11.bmp", "8-bit palette"}, {"Tree.bmp", "8-bit palette (extended)"},
        {"fwt_forest1.bmp", "8-bit palette (extended)"}, {"fwt_forestc1.bmp", "8-bit palette (extended)"},
        {"fwt_foresttop_dark2.bmp", "8-bit palette (extended)"}, {"fwt_foresttop_dark3.bmp", "8-bit palette (extended)"},
        {"fwt_foresttopc_12.bmp", "8-bit palette (extended)"}, {"fwt_foresttopc_13.bmp", "8-bit palette (extended)"}};
    for (const auto& [name, label] : labels)
        EXPECT_EQ(Label(name), label) << name;

    EXPECT_EQ(fs::file_size(Program() + "Resource/fs5.pal"), 768u);
    Palette palette{};
    LoadPalette(Program(), palette);
    EXPECT_EQ(palette[0], (Rgb{0, 0, 0}));
    EXPECT_EQ(palette[15], (Rgb{255, 255, 255}));
    // Concrete is light grey in that palette.
    const Texel c = At("Concrete.r8", 100, 100);
    EXPECT_GT(c[0], 120);
    EXPECT_EQ(c[0], c[1]);
    EXPECT_EQ(c[1], c[2]);

    // Eight tree bands: band s uses rows 30s + 3 to 30s + 26; the rows between two bands of a
    // pair are transparent.
    for (int s = 0; s < 8; ++s) {
        int opaque = 0;
        for (int u = 0; u < 256; ++u)
            opaque += At("Tree.bmp", u, 30 * s + 24)[3] > 0;
        EXPECT_GT(opaque, 200) << s;
    }
    for (int u = 0; u < 256; ++u)
        EXPECT_EQ(At("Tree.bmp", u, 58)[3], 0) << u;
}

TEST_F(ShippedTextures, SignSheetHasEachCellInItsPlace)
{
    auto yellow = [](Texel c) { return c[0] > 200 && c[1] > 150 && c[2] < 80; };
    auto red = [](Texel c) { return c[0] > 180 && c[1] < 80 && c[2] < 80; };
    auto dark = [](Texel c) { return c[0] < 60 && c[1] < 60 && c[2] < 60; };
    const std::string sheet = "fwt_sign1.bmp";
    // Cell k of a 32 by 32 grid: texel (k % 8 * 16, k / 8 * 16) in its quadrant.
    for (int k = 0; k < 48; ++k) // Direction: letters, numbers, arrows on yellow
        EXPECT_TRUE(yellow(At(sheet, k % 8 * 16, k / 8 * 16))) << k;
    for (int k = 0; k < 43; ++k) { // Location: a yellow frame round black
        EXPECT_TRUE(yellow(At(sheet, k % 8 * 16, 128 + k / 8 * 16))) << k;
        EXPECT_TRUE(dark(At(sheet, k % 8 * 16 + 1, 128 + k / 8 * 16 + 1))) << k;
    }
    for (int k = 0; k < 32; ++k) // runway numbers 1 to 32, 64 by 32
        EXPECT_TRUE(red(At(sheet, 128 + k % 4 * 32, k / 4 * 16))) << k;
    for (int k = 0; k < 5; ++k) // runway arrows at (96 + 32k, 192)
        EXPECT_TRUE(red(At(sheet, 48 + 16 * k, 96))) << k;
    // The letters run in order: H's bar crosses its middle, O is open there.
    EXPECT_TRUE(dark(At(sheet, 112 + 7, 7)));
    EXPECT_TRUE(yellow(At(sheet, 6 * 16 + 7, 16 + 7)));
}

// Inputs the fuzzer kept, and its seeds: both readers hold together on each of them.
TEST(TextureRegressions, FuzzInputsReadToConsistentImages)
{
    Palette palette{};
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(std::string(FW_FIXTURES) + "/textures")) {
        if (!entry.is_regular_file())
            continue;
        ++files;
        SCOPED_TRACE(entry.path());
        std::ifstream in(entry.path(), std::ios::binary);
        const Bytes bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        std::vector<std::uint32_t> pixels;
        BitmapInfoHeader header;
        std::string label;
        const TextureForm gdi = DecodeTextureGdi(bytes, palette, pixels, header, label);
        ASSERT_GT(header.biWidth, 0);
        ASSERT_GT(header.biHeight, 0);
        EXPECT_EQ(pixels.size(), static_cast<std::size_t>(header.biWidth) * header.biHeight);
        std::vector<std::uint8_t> image;
        std::int32_t w = 0, h = 0;
        // The extra block may differ, as the OpenGL reader takes the pixels at a fixed offset.
        EXPECT_EQ(DecodeTextureGl(bytes, palette, image, w, h) == TextureForm::Unknown, gdi == TextureForm::Unknown);
        EXPECT_EQ(w, header.biWidth);
        EXPECT_EQ(h, header.biHeight);
        EXPECT_EQ(image.size(), static_cast<std::size_t>(w) * h * 4);
    }
    EXPECT_GT(files, 5);
}

} // namespace
} // namespace fw
