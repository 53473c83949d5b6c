// The GL view on a real context without a display: what a user sees, pixel by pixel.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <tuple>
#include <unistd.h>

#include "gl/OpenGl.h"
#include "render/GlView.h"
#include "render/RenderTestSupport.h"

namespace fw {
namespace {

using test::Pts;
using Rgb = std::array<int, 3>;

class GlPixels : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::string error;
        ASSERT_EQ(context_.Create(error), 3) << error;
        ASSERT_TRUE(GlSetup(gl_));
        ASSERT_TRUE(frame_.Resize(200, 200));
        dir_ = std::filesystem::temp_directory_path() / ("fw_gl_pixels_" + std::to_string(::getpid()));
        std::filesystem::create_directories(dir_);
        // 1 world unit a pixel, world (0, 0) at the window's top left.
        s_ = test::MakeSession(200, 200, 1.0, -100, -100);
        s_.config.TEXPath = dir_.string();
    }
    void TearDown() override
    {
        frame_.Release();
        gl_.Release();
        std::filesystem::remove_all(dir_);
    }

    ShapeRecord& Add(int type, const PointList& points)
    {
        test::AddShape(s_, type, points);
        return s_.stores.ShapeStore.back();
    }
    ShapeRecord& Colored(const PointList& points, std::int32_t colour, int transparency, int type = kPoly)
    {
        ShapeRecord& r = Add(type, points);
        std::tie(r.gIsColored, r.cColor, r.cTransparency) = std::tuple(1, colour, transparency);
        return r;
    }
    void Render()
    {
        GlLoadTextures(s_, gl_, table_);
        GlBuildList(s_, gl_, table_, fills_);
        GlFrame(s_, gl_);
        pixels_.assign(200 * 200, 0);
        frame_.Read(pixels_.data(), 200);
    }
    Rgb At(int x, int y) const
    {
        const std::uint32_t p = pixels_[static_cast<std::size_t>(y) * 200 + x];
        return {static_cast<int>(p >> 16 & 0xFF), static_cast<int>(p >> 8 & 0xFF), static_cast<int>(p & 0xFF)};
    }
    void Near(int x, int y, Rgb want, const char* what) const // within 2 in each channel
    {
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(At(x, y)[i], want[i], 2) << what;
    }

    HeadlessGlContext context_;
    OpenGl gl_;
    GlFramebuffer frame_;
    GlTextureTable table_;
    GlFillCache fills_;
    std::filesystem::path dir_;
    Session s_;
    std::vector<std::uint32_t> pixels_;
};

TEST_F(GlPixels, TransparencyBlendsLaterShapesCoverEarlierOnesAndLinesAreBareOutlines)
{
    Colored(Pts({{10, 10}, {110, 10}, {110, 110}, {10, 110}}), RGB(255, 0, 0), 15);
    Colored(Pts({{60, 60}, {160, 60}, {160, 160}, {60, 160}}), RGB(0, 255, 0), 15);
    Colored(Pts({{120, 10}, {190, 10}, {190, 50}, {120, 50}}), RGB(0, 0, 255), 8);
    Colored(Pts({{20, 170}, {180, 170}}), RGB(255, 0, 0), 15, kWideLine).gLineWidth = 40;
    Render();
    Near(30, 30, {255, 0, 0}, "the first square");
    Near(80, 80, {0, 255, 0}, "the second covers the first");
    // Alpha 136 over white: 255 * 119 / 255 of the white stays.
    Near(150, 30, {119, 119, 255}, "transparency 8");
    Near(5, 195, {255, 255, 255}, "white clear colour");
    Near(100, 170, {0, 0, 0}, "the line in black");
    Near(100, 165, {255, 255, 255}, "no width");
    Near(100, 175, {255, 255, 255}, "no width");
}

TEST_F(GlPixels, MissingTextureIsTheGreyChecker)
{
    Add(kPoly, Pts({{10, 10}, {138, 10}, {138, 138}, {10, 138}})).tDayPath = "nowhere.bmp";
    Render();
    // At a row of texel centres the checker's squares show at their own values: black at alpha
    // 128 over white, and white.
    std::vector<int> greys;
    for (int x = 40; x < 100; ++x) {
        EXPECT_TRUE(At(x, 62)[0] == At(x, 62)[1] && At(x, 62)[1] == At(x, 62)[2]) << x;
        greys.push_back(At(x, 62)[0]);
    }
    EXPECT_NEAR(*std::min_element(greys.begin(), greys.end()), 127, 20);
    EXPECT_GE(*std::max_element(greys.begin(), greys.end()), 230);
}

TEST_F(GlPixels, TexturesTileFromTheBoxCornerOrFollowTheMap)
{
    test::WriteBytes(dir_ / "half.bmp", test::Bmp24(32, 32, 0xFF0000, 0x0000FF)); // left red, right blue
    Add(kPoly, Pts({{10, 10}, {190, 10}, {190, 60}, {10, 60}})).tDayPath = "HALF.bmp"; // uncoloured: textured
    // A map turned left to right: the shape's left shows the texture's right half.
    ShapeRecord& tex = Add(kTexPoly, Pts({{10, 100}, {190, 100}, {190, 180}, {10, 180}}));
    tex.tDayPath = "half.bmp";
    tex.mTexMap = {256, 0, 0, 0, 0, 256, 256, 256};
    Render();
    // A repeat is 256 world units from the box's left edge (10): red to 138, blue to 266.
    Near(40, 35, {255, 0, 0}, "first half of the first repeat");
    Near(170, 35, {0, 0, 255}, "second half");
    Near(40, 140, {0, 0, 255}, "mapped: right half on the left");
    Near(170, 140, {255, 0, 0}, "mapped: left half on the right");
}

TEST_F(GlPixels, OnlyShapesAppearAndTheSelectionIsInItsColour)
{
    s_.showFlags.ShowGrid = 1;
    test::AddObject(s_, kVor, 100, 100);
    ShapeRecord& a = Colored(Pts({{20, 20}, {80, 20}, {80, 80}, {20, 80}}), RGB(255, 255, 0), 15);
    s_.editor.selection.addEntry(0, 0, a.gLimits[0], a.gLimits[1], a.gLimits[2], a.gLimits[3]);
    s_.editor.selection.setState(3);
    // Crossing itself: the tessellator may draw it as it likes, but must not fail.
    Colored(Pts({{120, 120}, {180, 180}, {180, 120}, {120, 180}}), RGB(0, 255, 0), 15);
    Render();
    Near(100, 100, {255, 255, 255}, "no object, no grid");
    Near(50, 20, {0, 0, 255}, "drag state outline");
    Near(50, 50, {255, 255, 0}, "fill");
}

} // namespace
} // namespace fw
