#include <gtest/gtest.h>

#include <filesystem>

#include "render/GlView.h"
#include "render/RecordingGl.h"
#include "render/RenderTestSupport.h"

namespace fw {
namespace {

using test::AddShape;
using test::MakeSession;
using test::Pts;
using test::RecordingGl;

void Select(Session& s, int shape, int state)
{
    const ShapeRecord& r = s.stores.ShapeStore[shape];
    s.editor.selection.reset();
    s.editor.selection.addEntry(shape, 0, r.gLimits[0], r.gLimits[1], r.gLimits[2], r.gLimits[3]);
    s.editor.selection.setState(static_cast<std::uint8_t>(state));
}

TEST(GlList, FillsThenPlainOutlinesThenSelectedOnesWithHandlesBakedAtTheZoom)
{
    Session s = MakeSession(400, 300, 0.5);
    AddShape(s, kWideLine, Pts({{0, 0}, {10, 0}}));
    AddShape(s, kPoly, Pts({{0, 0}, {100, 0}, {100, 100}}));
    s.stores.ShapeStore[1].gIsColored = 1;
    s.stores.ShapeStore[1].cColor = RGB(10, 20, 30);
    s.stores.ShapeStore[1].cTransparency = 8;
    AddShape(s, kForest, Pts({{0, 0}, {50, 0}, {50, 50}}));
    Select(s, 0, 2);

    RecordingGl gl;
    GlTextureTable table;
    GlFillCache fills;
    GlBuildList(s, gl, table, fills);
    ASSERT_EQ(gl.calls.front(), "NewList 1 4864");
    EXPECT_EQ(gl.calls.back(), "EndList");
    const auto colours = gl.Only("Color4ub");
    // The fill at transparency * 17, the two unselected outlines in black (each with its white
    // handle), then the selected line in green with a handle at every point.
    const std::vector<std::string> expected = {
        "Color4ub 10 20 30 136", "Color4ub 0 0 0 255",   "Color4ub 255 255 255 255", "Color4ub 0 0 0 255",
        "Color4ub 0 0 0 255",   "Color4ub 255 255 255 255", "Color4ub 0 0 0 255",   "Color4ub 0 255 0 255",
        "Color4ub 255 255 255 255", "Color4ub 0 255 0 255", "Color4ub 255 255 255 255", "Color4ub 0 255 0 255"};
    EXPECT_EQ(colours, expected);
    // The fill's primitives, then a line loop for the closed Poly and Forest, a line strip for
    // the wide line.
    const auto begins = gl.Only("Begin");
    ASSERT_GE(begins.size(), 8u);
    EXPECT_EQ(std::vector<std::string>({begins[0], begins[1], begins[4], begins[7]}),
              (std::vector<std::string>{"Begin 6", "Begin 2", "Begin 2", "Begin 3"}));
    // At zoom 0.5 the handle runs from 2 units before the point to 6 after, Y turned over.
    EXPECT_EQ(gl.Only("Vertex2d")[0], "Vertex2d -2 2");
    EXPECT_EQ(gl.Only("Vertex2d")[2], "Vertex2d 6 -6");
    EXPECT_EQ(gl.Only("Vertex2f")[1], "Vertex2f 100 0");
    EXPECT_EQ(gl.Only("Vertex2f")[2], "Vertex2f 100 -100");
}

TEST(GlList, StateColoursNothingForStateZeroAndNoListWithoutShapes)
{
    for (auto [state, colour] : {std::pair{1, "Color4ub 255 0 0 255"}, {3, "Color4ub 0 0 255 255"}, {0, ""}}) {
        Session s = MakeSession(400, 300);
        AddShape(s, kPoly, Pts({{0, 0}, {100, 0}, {100, 100}}));
        Select(s, 0, state);
        RecordingGl gl;
        GlFillCache fills;
        GlBuildList(s, gl, GlTextureTable{}, fills);
        const auto colours = gl.Only("Color4ub");
        if (*colour == '\0')
            EXPECT_EQ(gl.Only("Begin 2").size(), 0u) << "a selected shape of state 0 has no outline";
        else
            EXPECT_EQ(colours[colours.size() - 3], colour) << state;
    }
    Session s = MakeSession(400, 300);
    RecordingGl gl;
    GlFillCache fills;
    GlBuildList(s, gl, GlTextureTable{}, fills); // the old list stays
    EXPECT_TRUE(gl.calls.empty());
}

TEST(GlList, TexturedPolyTilesFromItsBoxCornerAndTexPolyTakesItsMap)
{
    Session s = MakeSession(400, 300);
    AddShape(s, kPoly, Pts({{100, 50}, {612, 50}, {612, 306}}));
    s.stores.ShapeStore[0].gIsColored = 0;
    s.stores.ShapeStore[0].tDayPath = "GRASS.BMP";
    AddShape(s, kTexPoly, Pts({{0, 0}, {10, 0}, {10, 10}, {0, 10}}));
    ShapeRecord& tex = s.stores.ShapeStore[1];
    tex.tDayPath = "missing.bmp";
    tex.mTexMap = {256, 0, 0, 0, 0, 512, 256, 512};
    s.editor.selection.setState(1);

    GlTextureTable table;
    table.add("None");
    table.add("grass.bmp");
    RecordingGl gl;
    GlFillCache fills;
    GlBuildList(s, gl, table, fills);
    const auto v = gl.Only("TessVertex");
    ASSERT_EQ(v.size(), 7u);
    EXPECT_EQ(std::vector<std::string>({v[0], v[1], v[2], v[3], v[5]}),
              (std::vector<std::string>{"TessVertex 100 -50 0 0 0", "TessVertex 612 -50 0 2 0",
                                        "TessVertex 612 -306 0 2 1", "TessVertex 0 -0 0 1 0",
                                        "TessVertex 10 -10 0 0 2"}));
    // Names compare without regard to case; a name not in the table is the checker, name 1.
    EXPECT_EQ(gl.Only("BindTexture"), (std::vector<std::string>{"BindTexture 3553 2", "BindTexture 3553 1"}));
    // Each vertex as the vertex callback sends it: its texture coordinates, then its position.
    const auto sent = gl.Only("TexCoord2dv");
    ASSERT_EQ(sent.size(), 7u);
    EXPECT_EQ(sent[1], "TexCoord2dv 2 0");
    EXPECT_EQ(gl.Only("Vertex3dv")[1], "Vertex3dv 612 -50 0");
    EXPECT_EQ(gl.Only("Enable 3553").size(), 2u);
    EXPECT_EQ(gl.Only("Disable 3553").size(), 2u);
}

TEST(GlList, OnlyAFillWhoseVerticesChangedIsTessellatedAgain)
{
    Session s = MakeSession(400, 300);
    for (int i = 0; i < 3; ++i)
        AddShape(s, kPoly, Pts({{0, 0}, {100 + i, 0}, {100, 100}}));
    RecordingGl gl;
    GlFillCache fills;
    GlBuildList(s, gl, GlTextureTable{}, fills);
    EXPECT_EQ(fills.tessellations(), 3);
    const std::vector<std::string> first = gl.calls;

    gl.calls.clear();
    GlBuildList(s, gl, GlTextureTable{}, fills);
    EXPECT_EQ(fills.tessellations(), 3);
    std::vector<std::string> replayed = first;
    std::erase_if(replayed, [](const std::string& c) { return c.rfind("Tess", 0) == 0; });
    EXPECT_EQ(gl.calls, replayed) << "the same list without the tessellator";

    s.stores.PointStore[1][2].Y = 90;
    s.stores.ShapeStore[2].gIsColored = 1; // colour only: texture coordinates go, vertices change
    GlBuildList(s, gl, GlTextureTable{}, fills);
    EXPECT_EQ(fills.tessellations(), 5);
    // Shapes moved down the store by a delete take their own fills, never a stale one.
    s.stores.PointStore.erase(s.stores.PointStore.begin());
    s.stores.ShapeStore.erase(s.stores.ShapeStore.begin());
    gl.calls.clear();
    GlBuildList(s, gl, GlTextureTable{}, fills);
    EXPECT_EQ(gl.Only("Tessellate").size(), 2u);
}

TEST(GlTextures, CheckerFirstThenEachReadableTextureOnce)
{
    const auto dir = std::filesystem::temp_directory_path() / "fw_gl_textures";
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    test::WriteBytes(dir / "a.bmp", test::Bmp24(64, 64, 0x123456));
    test::WriteBytes(dir / "wide.bmp", test::Bmp24(64, 32, 0x123456));

    Session s = MakeSession(400, 300);
    s.config.TEXPath = dir.string();
    for (const char* name : {"a.bmp", "A.BMP", "wide.bmp", "gone.bmp", "a.bmp"}) {
        AddShape(s, kPoly, Pts({{0, 0}, {1, 0}, {1, 1}}));
        s.stores.ShapeStore.back().tDayPath = name;
    }
    AddShape(s, kDotLine, Pts({{0, 0}, {1, 0}}));
    s.stores.ShapeStore.back().tDayPath = "a2.bmp";

    RecordingGl gl;
    GlTextureTable table;
    table.add("stale");
    GlLoadTextures(s, gl, table);
    ASSERT_EQ(table.count(), 2);
    EXPECT_EQ(table.entries()[0].name, "None");
    EXPECT_EQ(table.entries()[1].name, "a.bmp");
    EXPECT_EQ(table.find("A.bmp"), 2u);
    EXPECT_EQ(table.find("a.bm"), 1u);
    EXPECT_EQ(gl.Only("TexImage2D"), (std::vector<std::string>{"TexImage2D 32 32 128", "TexImage2D 64 64 255"}));
    EXPECT_EQ(gl.Only("BindTexture"), (std::vector<std::string>{"BindTexture 3553 1", "BindTexture 3553 2"}));
    std::filesystem::remove_all(dir);
}

TEST(GlSetupAndFrame, SetUpOnceAndProjectTheWindowWithYTurnedOver)
{
    RecordingGl gl;
    EXPECT_TRUE(GlSetup(gl));
    EXPECT_EQ(gl.calls, (std::vector<std::string>{"Enable 3042", "BlendFunc 770 771", "ClearColor 1 1 1 1",
                                                  "Hint 3152 4354", "Hint 3153 4354", "Disable 2929"}));
    gl.tessOk = false;
    EXPECT_FALSE(GlSetup(gl));

    Session s = MakeSession(400, 300, 0.5, 100, -40);
    RecordingGl frame;
    GlFrame(s, frame);
    const Point topLeft = ScreenToWorld(s.view, 0, 0);
    const Point bottomRight = ScreenToWorld(s.view, 400, 300);
    char ortho[96];
    std::snprintf(ortho, sizeof ortho, "Ortho2D %d %d %d %d", topLeft.X, bottomRight.X, -bottomRight.Y, -topLeft.Y);
    EXPECT_EQ(frame.calls, (std::vector<std::string>{"MatrixMode 5889", "LoadIdentity", ortho, "MatrixMode 5888",
                                                     "LoadIdentity", "Clear 16384", "PushMatrix", "CallList 1",
                                                     "PopMatrix"}));
}

} // namespace
} // namespace fw
