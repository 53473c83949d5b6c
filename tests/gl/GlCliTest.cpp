// render --opengl: the GL frame of an opened project in a PNG, with no display.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <tuple>

namespace {

// The pixels of a PNG as the program writes it: 8-bit RGB, unfiltered rows in stored blocks.
std::vector<unsigned char> RgbOf(const std::vector<unsigned char>& png, int& width, int& height)
{
    auto be32 = [&png](std::size_t at) {
        return std::uint32_t{png[at]} << 24 | png[at + 1] << 16 | png[at + 2] << 8 | png[at + 3];
    };
    if (png.size() < 45 || 45 + be32(33) > png.size()) // one IDAT chunk, right behind the header's
        return {};
    width = static_cast<int>(be32(16));
    height = static_cast<int>(be32(20));
    const std::vector<unsigned char> z(png.begin() + 41, png.begin() + 41 + be32(33));
    std::vector<unsigned char> rgb;
    std::size_t row = 0; // bytes of the current row seen, its filter byte first
    for (std::size_t at = 2; at + 5 <= z.size();) {
        const std::size_t n = z[at + 1] | (z[at + 2] << 8);
        for (std::size_t i = at + 5; i < std::min(at + 5 + n, z.size()); ++i, row = (row + 1) % (1 + 3 * width))
            if (row != 0)
                rgb.push_back(z[i]);
        const bool final = z[at] & 1;
        at += 5 + n;
        if (final)
            break;
    }
    return rgb;
}

// Runs the command line tool, giving its exit code and what it wrote to either stream.
int Render(const std::string& env, const std::string& out, const std::string& options, std::string& text)
{
    std::remove(out.c_str());
    const std::string cmd = env + " \"" + FW_CLI + "\" render \"" + FW_FIXTURES + "/render/gl_field.fwt\" \"" + out +
                            "\" --opengl " + options + " 2>&1";
    FILE* p = popen(cmd.c_str(), "r");
    char buffer[256];
    while (p != nullptr && std::fgets(buffer, sizeof buffer, p) != nullptr)
        text += buffer;
    const int status = p == nullptr ? -1 : pclose(p);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(CliRenderOpenGl, PaintsTheFilledAndTexturedFrameWithoutADisplayOrSaysItCant)
{
    const std::string out = ::testing::TempDir() + "fw_render_gl.png";
    std::string text;
    ASSERT_EQ(Render("env -u DISPLAY -u WAYLAND_DISPLAY", out, "--size 400x300 --zoom 0.25", text), 0) << text;
    std::ifstream in(out, std::ios::binary);
    int w = 0, h = 0;
    const auto rgb = RgbOf({std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()}, w, h);
    ASSERT_EQ(std::tie(w, h), std::make_tuple(400, 300));
    ASSERT_EQ(rgb.size(), 400u * 300u * 3u);
    auto at = [&rgb](int x, int y) {
        const std::size_t i = (static_cast<std::size_t>(y) * 400 + x) * 3;
        return std::to_string(rgb[i]) + "," + std::to_string(rgb[i + 1]) + "," + std::to_string(rgb[i + 2]);
    };
    // World (-400, -250), inside the opaque red pad only; (0, 0) under the VOR, which isn't drawn,
    // is the blue at transparency 8 over the textured apron.
    EXPECT_EQ(at(200 - 100, 150 - 62), "255,0,0");
    EXPECT_NE(at(200, 150), "255,255,255");
    EXPECT_EQ(at(5, 5), "255,255,255");

    // No EGL vendor at all, as on a machine without any OpenGL driver: a message and no picture.
    text.clear();
    EXPECT_EQ(Render("__EGL_VENDOR_LIBRARY_FILENAMES=/nonexistent.json", out, "", text), 1);
    EXPECT_NE(text.find("Unable to render with OpenGL"), std::string::npos) << text;
    EXPECT_FALSE(std::filesystem::exists(out));
}

} // namespace
