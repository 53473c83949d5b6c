// render --opengl: the GL frame of an opened project in a PNG, with no display.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

// The pixels of a PNG as the program writes it: 8-bit RGB, unfiltered rows in stored blocks.
std::vector<unsigned char> RgbOf(const std::vector<unsigned char>& png, int& width, int& height)
{
    auto be32 = [&png](std::size_t at) {
        return (std::uint32_t{png[at]} << 24) | (png[at + 1] << 16) | (png[at + 2] << 8) | png[at + 3];
    };
    width = static_cast<int>(be32(16));
    height = static_cast<int>(be32(20));
    std::vector<unsigned char> z;
    for (std::size_t at = 8; at + 8 <= png.size();) {
        const std::uint32_t length = be32(at);
        if (std::string(png.begin() + at + 4, png.begin() + at + 8) == "IDAT")
            z.insert(z.end(), png.begin() + at + 8, png.begin() + at + 8 + length);
        at += 12 + length;
    }
    std::vector<unsigned char> raw;
    for (std::size_t at = 2; at + 5 <= z.size();) {
        const std::size_t n = z[at + 1] | (z[at + 2] << 8);
        raw.insert(raw.end(), z.begin() + at + 5, z.begin() + at + 5 + n);
        const bool final = z[at] & 1;
        at += 5 + n;
        if (final)
            break;
    }
    std::vector<unsigned char> rgb;
    for (int y = 0; y < height; ++y)
        rgb.insert(rgb.end(), raw.begin() + y * (1 + 3 * width) + 1, raw.begin() + (y + 1) * (1 + 3 * width));
    return rgb;
}

TEST(CliRenderOpenGl, PaintsTheFilledAndTexturedFrameWithoutADisplay)
{
    const std::string out = ::testing::TempDir() + "fw_render_gl.png";
    const std::string cmd = "env -u DISPLAY -u WAYLAND_DISPLAY \"" + std::string(FW_CLI) + "\" render \"" +
                            FW_FIXTURES + "/render/gl_field.fwt\" \"" + out + "\" --opengl --size 400x300 --zoom 0.25";
    const int status = std::system(cmd.c_str());
    ASSERT_TRUE(WIFEXITED(status));
    ASSERT_EQ(WEXITSTATUS(status), 0);
    std::ifstream in(out, std::ios::binary);
    const std::vector<unsigned char> png((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    int w = 0;
    int h = 0;
    const std::vector<unsigned char> rgb = RgbOf(png, w, h);
    ASSERT_EQ(w, 400);
    ASSERT_EQ(h, 300);
    auto at = [&rgb, w](int x, int y) {
        const std::size_t i = (static_cast<std::size_t>(y) * w + x) * 3;
        return std::to_string(rgb[i]) + "," + std::to_string(rgb[i + 1]) + "," + std::to_string(rgb[i + 2]);
    };
    // World (-400, -250), inside the opaque red pad only; (0, 0) under the VOR, which isn't drawn,
    // is the blue at transparency 8 over the textured apron.
    EXPECT_EQ(at(200 - 100, 150 - 62), "255,0,0");
    EXPECT_NE(at(200, 150), "255,255,255");
    EXPECT_EQ(at(5, 5), "255,255,255");
    std::remove(out.c_str());
}

TEST(CliRenderOpenGl, NoContextIsAMessageAndExitCodeOneAndNoPicture)
{
    // No EGL vendor at all: as on a machine without any OpenGL driver.
    const std::string out = ::testing::TempDir() + "fw_render_gl_none.png";
    std::remove(out.c_str());
    const std::string cmd = "__EGL_VENDOR_LIBRARY_FILENAMES=/nonexistent.json \"" + std::string(FW_CLI) +
                            "\" render \"" + FW_FIXTURES + "/render/gl_field.fwt\" \"" + out + "\" --opengl 2>&1";
    FILE* p = popen(cmd.c_str(), "r");
    ASSERT_NE(p, nullptr);
    std::string text;
    char buffer[256];
    while (std::fgets(buffer, sizeof buffer, p) != nullptr)
        text += buffer;
    const int status = pclose(p);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_NE(text.find("Unable to render with OpenGL"), std::string::npos) << text;
    EXPECT_FALSE(std::filesystem::exists(out));
}

} // namespace
