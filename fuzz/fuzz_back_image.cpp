// Feeds any bytes to the background image reader: decoded from memory with its invariants checked,
// then loaded through "Load background image..." from a file of this process's temporary folder,
// shown on the plain raster canvas at three scales, and removed again.
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "support/ScriptedUi.h"
#include "render/BackImage.h"
#include "render/Bitmap.h"
#include "render/Paint.h"
#include "render/RasterCanvas.h"

namespace {

const fw::fuzz::TempFolder& Folder()
{
    static const fw::fuzz::TempFolder folder("fw_fuzz_back_image");
    return folder;
}

// What the decoder promises for each of its three answers.
void CheckDecode(const std::vector<unsigned char>& bytes, int maxWidth, int maxHeight)
{
    std::int32_t w = -7;
    std::int32_t h = -7;
    std::vector<std::uint32_t> pixels;
    switch (fw::DecodeBmp(bytes, maxWidth, maxHeight, w, h, pixels)) {
    case fw::BmpResult::Ok:
        if (w <= 0 || h <= 0 || w > maxWidth || h > maxHeight ||
            pixels.size() != static_cast<std::size_t>(w) * static_cast<std::size_t>(h))
            __builtin_trap();
        for (std::uint32_t p : pixels)
            if (p > 0xFFFFFF)
                __builtin_trap();
        break;
    case fw::BmpResult::TooLarge:
        if (w <= maxWidth && h <= maxHeight)
            __builtin_trap();
        break;
    case fw::BmpResult::Unreadable: break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<unsigned char> bytes(data, data + size);
    CheckDecode(bytes, fw::kMaxImageWidth, fw::kMaxImageHeight);
    CheckDecode(bytes, 64, 64);

    const auto& folder = Folder();
    const std::string path = folder / "picture.bmp";
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }

    fw::ScriptedUi ui;
    fw::Session s;
    s.programFolder = fw::fuzz::kProgramFolder;
    s.ui = &ui;
    fw::ResetAtStart(s);
    fw::ResetConfig(s.config, s.programFolder);
    ui.files.push_back(path);
    fw::MnuBloadremove(s);

    fw::CBitmap bitmap(s.bitmap);
    if (s.showFlags.ShowBackPicture == 1) {
        // Loaded: the image is tiled, at most 800 by 600, and centred on the origin.
        if (!bitmap.isAvailable() || s.bitmap.width <= 0 || s.bitmap.height <= 0 ||
            s.bitmap.width > fw::kMaxImageWidth || s.bitmap.height > fw::kMaxImageHeight ||
            s.bitmap.tiles.size() != static_cast<std::size_t>(s.bitmap.tilesX) * s.bitmap.tilesY ||
            s.showFlags.BackImagePath != path)
            __builtin_trap();
        constexpr int kWidth = 96;
        constexpr int kHeight = 72;
        fw::RasterCanvas back(kWidth, kHeight);
        fw::RasterCanvas window(kWidth, kHeight);
        s.view.setSWidth(kWidth);
        s.view.setSHeight(kHeight);
        s.view.reset();
        for (double zoom : {0.0625, 1.0, 4.0}) {
            s.view.setZoom(zoom);
            fw::PaintFrame(s, window, back);
        }
        ui.answers.push_back(fw::Answer::Yes);
        fw::MnuBremove(s);
        if (bitmap.isAvailable() || !s.showFlags.BackImagePath.empty())
            __builtin_trap();
    } else if (bitmap.isAvailable() || ui.Messages().size() != 1) {
        // Refused: one message, and no image.
        __builtin_trap();
    }
    return 0;
}
