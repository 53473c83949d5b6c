// Feeds any bytes to both texture readers and checks that what they give back holds together.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "render/Texture.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::uint8_t> bytes(data, data + size);
    fw::Palette palette{};
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette[i] = {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(255 - i), static_cast<std::uint8_t>(i / 2)};

    std::vector<std::uint32_t> pixels;
    fw::BitmapInfoHeader header;
    std::string label;
    fw::DecodeTextureGdi(bytes, palette, pixels, header, label);
    if (header.biWidth <= 0 || header.biHeight <= 0 ||
        pixels.size() != static_cast<std::size_t>(header.biWidth) * static_cast<std::size_t>(header.biHeight) ||
        header.biSizeImage != pixels.size() || label.empty())
        __builtin_trap();
    if (fw::UprightPixels(pixels, header).size() != pixels.size())
        __builtin_trap();
    (void)fw::TextureScale(header.biWidth, header.biHeight);

    std::vector<std::uint8_t> image;
    std::int32_t width = 0;
    std::int32_t height = 0;
    fw::TextureForm form = fw::DecodeTextureGl(bytes, palette, image, width, height);
    if (width <= 0 || height <= 0 ||
        image.size() != static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4)
        __builtin_trap();
    // Both readers recognise the same forms, so they agree on the size.
    if (width != header.biWidth || height != header.biHeight)
        __builtin_trap();
    if ((form == fw::TextureForm::Unknown) != (label == fw::kLabelUnknown))
        __builtin_trap();
    return 0;
}
