// The GL view on a real context without a display: what a user sees, pixel by pixel.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <unistd.h>
#include <filesystem>

#include "gl/OpenGl.h"
#include "render/GlView.h"
#include "render/RenderTestSupport.h"

namespace fw {
namespace {

using test::AddShape;
using test::Pts;

struct Rgb {
    int r, g, b;
};

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
        AddShape(s_, type, points);
        return s_.stores.ShapeStore.back();
    }
    ShapeRecord& Colored(const PointList& points, std::int32_t colour, int transparency)
    {
        ShapeRecord& r = Add(kPoly, points);
        r.gIsColored = 1;
        r.cColor = colour;
        r.cTransparency = static_cast<std::uint8_t>(transparency);
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
        return {static_cast<int>((p >> 16) & 0xFF), static_cast<int>((p >> 8) & 0xFF), static_cast<int>(p & 0xFF)};
    }
    static void Near(Rgb got, Rgb want, const char* what)
    {
        EXPECT_NEAR(got.r, want.r, 2) << what;
        EXPECT_NEAR(got.g, want.g, 2) << what;
        EXPECT_NEAR(got.b, want.b, 2) << what;
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

TEST_F(GlPixels, TransparencyBlendsAndLaterShapesCoverEarlierOnes)
{
    Colored(Pts({{10, 10}, {110, 10}, {110, 110}, {10, 110}}), RGB(255, 0, 0), 15);
    Colored(Pts({{60, 60}, {160, 60}, {160, 160}, {60, 160}}), RGB(0, 255, 0), 15);
    Colored(Pts({{120, 10}, {190, 10}, {190, 50}, {120, 50}}), RGB(0, 0, 255), 8);
    Render();
    Near(At(30, 30), {255, 0, 0}, "the first square");
    Near(At(80, 80), {0, 255, 0}, "the second covers the first");
    // Alpha 136 over white: 255 * 119 / 255 of the white stays.
    Near(At(150, 30), {119, 119, 255}, "transparency 8");
    Near(At(5, 195), {255, 255, 255}, "white clear colour");
}

TEST_F(GlPixels, MissingTextureIsTheGreyCheckerAndLinesAreBareOutlines)
{
    Add(kPoly, Pts({{10, 10}, {138, 10}, {138, 138}, {10, 138}})).tDayPath = "nowhere.bmp";
    ShapeRecord& line = Add(kWideLine, Pts({{20, 170}, {180, 170}}));
    line.gLineWidth = 40;
    line.gIsColored = 1;
    line.cColor = RGB(255, 0, 0);
    s_.editor.selection.setState(0);
    Render();
    // At a row of texel centres the checker's squares show at their own values: black at alpha
    // 128 over white, and white.
    int darkest = 255;
    int lightest = 0;
    for (int x = 40; x < 100; ++x) {
        const Rgb p = At(x, 62);
        EXPECT_EQ(p.r, p.g);
        EXPECT_EQ(p.g, p.b);
        darkest = std::min(darkest, p.r);
        lightest = std::max(lightest, p.r);
    }
    EXPECT_NEAR(darkest, 127, 20);
    EXPECT_GE(lightest, 230);
    Near(At(100, 170), {0, 0, 0}, "the line in black");
    Near(At(100, 165), {255, 255, 255}, "no width");
    Near(At(100, 175), {255, 255, 255}, "no width");
}

TEST_F(GlPixels, TexturesTileFromTheBoxCornerOrFollowTheMap)
{
    test::WriteBytes(dir_ / "half.bmp", test::Bmp24(32, 32, 0xFF0000, 0x0000FF)); // left red, right blue
    ShapeRecord& plain = Add(kPoly, Pts({{10, 10}, {190, 10}, {190, 60}, {10, 60}}));
    plain.gIsColored = 0;
    plain.tDayPath = "HALF.bmp";
    // A map turned left to right: the shape's left shows the texture's right half.
    ShapeRecord& tex = Add(kTexPoly, Pts({{10, 100}, {190, 100}, {190, 180}, {10, 180}}));
    tex.tDayPath = "half.bmp";
    tex.mTexMap = {256, 0, 0, 0, 0, 256, 256, 256};
    s_.editor.selection.setState(0);
    Render();
    // A repeat is 256 world units from the box's left edge (10): red to 138, blue to 266.
    Near(At(40, 35), {255, 0, 0}, "first half of the first repeat");
    Near(At(170, 35), {0, 0, 255}, "second half");
    Near(At(40, 140), {0, 0, 255}, "mapped: right half on the left");
    Near(At(170, 140), {255, 0, 0}, "mapped: left half on the right");
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
    Near(At(100, 100), {255, 255, 255}, "no object, no grid");
    Near(At(50, 20), {0, 0, 255}, "drag state outline");
    Near(At(50, 50), {255, 255, 0}, "fill");
}

} // namespace
} // namespace fw
