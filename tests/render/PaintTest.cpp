#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "editor/ImageFrame.h"
#include "render/Bitmap.h"
#include "render/Paint.h"
#include "render/RasterCanvas.h"
#include "render/RenderTestSupport.h"

namespace fw {
namespace {

using test::AddObject;
using test::AddShape;
using test::MakeSession;
using test::Only;
using test::Pts;
using test::Segments;
using Calls = std::vector<RecordingCanvas::Call>;
using Ints = std::vector<int>;

int CountWithPen(const Calls& calls, const std::string& op, std::int32_t color)
{
    return static_cast<int>(std::count_if(calls.begin(), calls.end(), [&](const RecordingCanvas::Call& c) {
        return c.op == op && c.pen.color == color;
    }));
}

std::size_t FirstWithPen(const Calls& calls, std::int32_t color)
{
    for (std::size_t i = 0; i < calls.size(); ++i)
        if ((calls[i].op == "line" || calls[i].op == "polygon") && calls[i].pen.color == color)
            return i;
    return calls.size();
}

// ---- grid

TEST(PaintGrid, ALevelShowsFromFivePixelsApartOnMultiplesInsideTheMargin)
{
    Session s = MakeSession(400, 300, 0.245);
    s.config.GridDist = {10, 200, 1000}; // level 1 every 20 world units: 4.9 pixels
    RecordingCanvas c(400, 300);
    PaintGrid(s, c);
    EXPECT_EQ(CountWithPen(c.calls, "line", s.config.gridColor[0]), 0);
    EXPECT_GT(CountWithPen(c.calls, "line", s.config.gridColor[1]), 0);
    c.calls.clear();
    s.view.setZoom(0.25); // exactly 5.0
    PaintGrid(s, c);
    EXPECT_GT(CountWithPen(c.calls, "line", s.config.gridColor[0]), 0);

    s = MakeSession(400, 300, 1.0, -37, 13);
    s.config.GridDist = {25, 200, 1000};
    c.calls.clear();
    PaintGrid(s, c);
    const PixelMap map = PixelMap::Of(s.view);
    const auto level1 = Segments(c, s.config.gridColor[0]);
    for (const auto& l : level1) {
        EXPECT_EQ(l[0] == l[2] ? (l[0] - map.sx) % 50 : (l[1] - map.sy) % 50, 0);
        EXPECT_GE(std::min(l[0], l[2]), 10);
        EXPECT_LE(std::max(l[0], l[2]), 390);
    }
    EXPECT_GT(level1.size(), 10u);

    s = MakeSession(800, 600, 0.0625, 9000, 0); // far west: the left limit is raised
    const GridRange g = GridBounds(s.view, 2000);
    EXPECT_EQ(g.startX % 2000, 0);
    EXPECT_GE(g.startX, -10000);
    EXPECT_LE(g.endX, 10000);
}

TEST(PaintGrid, AxesOnlyWhenBothSidesOfZeroShow)
{
    // 200 wide at 100%: offX -90 puts world 0 exactly on the left bound.
    Session s = MakeSession(200, 100, 1.0, -90, 0);
    RecordingCanvas c(200, 100);
    PaintGrid(s, c);
    auto axes = Segments(c, s.config.GridColor4);
    ASSERT_EQ(axes.size(), 1u);
    EXPECT_EQ(axes[0][1], axes[0][3]); // only the X axis, horizontal
    c.calls.clear();
    s.view.setOffX(-89);
    PaintGrid(s, c);
    axes = Segments(c, s.config.GridColor4);
    ASSERT_EQ(axes.size(), 2u);
    EXPECT_EQ(axes[0], (Ints{11, 10, 11, 90}));
}

TEST(PaintGrid, MasksOverAnImageAndRestoresCopyMode)
{
    Session s = MakeSession(200, 100);
    CBitmap(s.bitmap).SetPicture(10, 10, std::vector<std::uint32_t>(100, 0xFF0000));
    RecordingCanvas c(200, 100);
    PaintGrid(s, c);
    ASSERT_EQ(Only(c, "rop").size(), 1u); // no image shown: plain copy mode
    EXPECT_EQ(Only(c, "rop")[0].args[0], static_cast<int>(RasterOp::CopyPen));
    c.calls.clear();
    s.showFlags.ShowBackPicture = 1;
    PaintGrid(s, c);
    const auto rops = Only(c, "rop");
    ASSERT_EQ(rops.size(), 2u);
    EXPECT_EQ(rops[0].args[0], static_cast<int>(RasterOp::MaskPen));
    EXPECT_EQ(rops[1].args[0], static_cast<int>(RasterOp::CopyPen));
    EXPECT_EQ(c.pen, Pen{}); // the old pen is back
}

// ---- shapes and objects

TEST(PaintShapes, ConcaveForestIsHatchedAndCutAtTheWindow)
{
    Session s = MakeSession(200, 100);
    // An arrow head notched at (40, 0), reaching past xMax (90).
    AddShape(s, kForest, Pts({{0, -30}, {150, -30}, {40, 0}, {150, 30}, {0, 30}}));
    ASSERT_EQ(s.stores.ShapeStore[0].gIsConcave, 1);
    RecordingCanvas c(200, 100);
    PaintShapes(s, SetClipWindow(s.view), c);
    const auto polys = Only(c, "polygon");
    ASSERT_EQ(polys.size(), 1u);
    EXPECT_EQ(polys[0].brush, (Brush{Brush::Kind::HatchForwardDiagonal, RGB(255, 128, 0)}));
    EXPECT_EQ(polys[0].pen, (Pen{PenStyle::Solid, 1, 0}));
    const auto& a = polys[0].args;
    EXPECT_EQ(*std::max_element(a.begin(), a.end()), 190); // on the cut, not past it
    // The hatch leaves the background visible; opaque mode is back at the end.
    EXPECT_EQ(Only(c, "bkmode").front().args[0], static_cast<int>(BkMode::Transparent));
    EXPECT_EQ(Only(c, "bkmode").back().args[0], static_cast<int>(BkMode::Opaque));
    ASSERT_EQ(Only(c, "rect").size(), 1u);
    EXPECT_EQ(Only(c, "rect")[0].args, (Ints{98, 18, 103, 23}));
    EXPECT_EQ(Only(c, "rect")[0].brush.color, 0xFFFFFF);
}

TEST(PaintShapes, OnlyConcaveForestsAreFilledAndHiddenTypesLeaveNoMark)
{
    Session s = MakeSession(200, 100);
    AddShape(s, kForest, Pts({{0, 0}, {20, 0}, {20, 20}}));
    AddShape(s, kPoly, Pts({{0, -30}, {50, -30}, {10, 0}, {50, 30}, {0, 30}}));
    AddShape(s, kTreeLine, Pts({{0, 0}, {20, 0}, {20, 20}}));
    AddShape(s, kPoly, Pts({{5000, 5000}, {5000, 5000}, {5000, 5000}})); // its handle can't show
    AddShape(s, kPoly, Pts({{-101, 51}, {-90, 40}, {-90, 51}}));          // its handle shows in part, at a corner
    RecordingCanvas c(200, 100);
    PaintShapes(s, SetClipWindow(s.view), c);
    EXPECT_TRUE(Only(c, "polygon").empty());
    EXPECT_EQ(Segments(c).size(), 3u + 5u + 2u + 2u); // the tree line stays open
    ASSERT_EQ(Only(c, "rect").size(), 4u);
    EXPECT_EQ(Only(c, "rect")[3].args, (Ints{-3, 99, 2, 104}));

    // ShowExclude hides the flatten polygon, initial locations and exclude areas.
    s = MakeSession(400, 300);
    AddShape(s, kFlatten, Pts({{0, 0}, {20, 0}, {20, 20}}));
    for (int type : {kInit, kExclude, kVor})
        AddObject(s, type, 0, 0);
    s.showFlags.ShowExclude = 0;
    RecordingCanvas e(400, 300);
    PaintShapes(s, SetClipWindow(s.view), e);
    PaintObjects(s, SetClipWindow(s.view), e);
    EXPECT_EQ(Only(e, "rect").size(), 1u); // the VOR's handle only
    EXPECT_EQ(Segments(e).size(), 5u);
}

TEST(PaintObjects, AnObjectWithACornerInTheWindowIsNeverLeftOut)
{
    // Objects are skipped by how far their lines can reach; one that reaches in must still paint.
    std::mt19937 rng(3);
    std::uniform_int_distribution<int> pos(-400, 400);
    std::uniform_int_distribution<int> design(-60, 60);
    std::uniform_real_distribution<double> turn(0, 360);
    for (double zoom : {0.25, 2.0}) {
        Session s = MakeSession(200, 100, zoom);
        const ClipWindow w = SetClipWindow(s.view);
        for (int k = 0; k < 300; ++k) {
            s.stores.ObjectStore.clear();
            AddObject(s, k % 2 ? kApi : kRunway, pos(rng), pos(rng), turn(rng));
            ObjectRecord& o = s.stores.ObjectStore[0];
            for (Point& p : o.DesignPoints)
                p = {design(rng), design(rng)};
            LineSet lines;
            BuildObjectGeometry(lines, o, zoom);
            bool cornerIn = false;
            for (const auto& line : lines)
                for (const Point& p : line)
                    cornerIn = cornerIn || (p.X > w.xMin && p.X < w.xMax && p.Y > w.yMin && p.Y < w.yMax);
            RecordingCanvas c(200, 100);
            PaintObjects(s, w, c);
            if (cornerIn) {
                ASSERT_FALSE(Only(c, "line").empty()) << "object " << k << " at zoom " << zoom;
            }
        }
    }
}

// ---- selection overlays

TEST(PaintSelected, PenFollowsTheStateAndEditPointsShowsEveryHandle)
{
    Session s = MakeSession(200, 100);
    AddShape(s, kPoly, Pts({{0, 0}, {20, 0}, {20, 20}}));
    AddObject(s, kSign, 0, 0);
    s.showFlags.ShowPoly = 0; // hidden by its flag, still shown as selected
    auto& sel = s.editor.selection;
    sel.addEntry(0, 0, 0, 20, 0, 20);
    const ClipWindow w = SetClipWindow(s.view);
    for (const auto& [state, color] : {std::pair{1, RGB(255, 0, 0)}, {2, RGB(0, 200, 0)}, {3, RGB(0, 0, 255)}}) {
        sel.setState(static_cast<std::uint8_t>(state));
        RecordingCanvas c(200, 100);
        PaintSelectedShapes(s, w, c);
        EXPECT_EQ(CountWithPen(c.calls, "line", color), 3) << state;
    }
    sel.setState(2);
    sel.resetPt();
    sel.addPt(1);
    RecordingCanvas c(200, 100);
    PaintSelectedShapes(s, w, c);
    const auto rects = Only(c, "rect");
    ASSERT_EQ(rects.size(), 5u);
    EXPECT_EQ(rects[0].args, (Ints{98, 48, 103, 53}));
    EXPECT_EQ(rects[2].args, (Ints{118, 48, 123, 53}));
    EXPECT_EQ(rects[4].args, (Ints{119, 49, 122, 52})); // 3 by 3 over point 1
    EXPECT_EQ(c.pen, Pen{});

    sel.reset();
    sel.addEntry(0, 1, 0, 0, 0, 0);
    sel.setState(1);
    RecordingCanvas o(200, 100);
    PaintSelectedObjects(s, w, o);
    EXPECT_EQ(CountWithPen(o.calls, "line", RGB(255, 0, 0)), 2);
    EXPECT_EQ(Only(o, "rect").size(), 1u);
}

// ---- frame composition

struct FrameFixture : ::testing::Test {
    Session s = MakeSession(400, 300);
    RecordingCanvas window{400, 300};
    RecordingCanvas back{400, 300};
    void SetUp() override
    {
        AddShape(s, kPoly, Pts({{0, 0}, {40, 0}, {40, 40}}));
        AddShape(s, kPoly, Pts({{-40, 0}, {-80, 0}, {-80, 40}}));
        s.stores.ShapeStore[1].vLayer = 3;
        AddShape(s, kWideLine, Pts({{0, 0}, {-40, -40}}));
        AddObject(s, kVor, 100, 100);
    }
    void Repaint()
    {
        back.calls.clear();
        window.calls.clear();
        PaintFrame(s, window, back);
    }
};

TEST_F(FrameFixture, FullPathPaintsTheLayersInOrderAndPresentsOnce)
{
    s.editor.selection.addEntry(0, 0, 0, 40, 0, 40);
    PaintFrame(s, window, back);
    ASSERT_FALSE(back.calls.empty());
    EXPECT_EQ(back.calls[0].op, "white");
    EXPECT_EQ(back.calls[0].args, (Ints{0, 0, 400, 300}));
    const std::size_t grid = FirstWithPen(back.calls, s.config.gridColor[0]);
    const std::size_t shapes = FirstWithPen(back.calls, 0);
    const std::size_t selected = FirstWithPen(back.calls, RGB(255, 0, 0));
    EXPECT_LT(grid, shapes);
    EXPECT_LT(shapes, selected);
    EXPECT_LT(selected, back.calls.size());
    ASSERT_EQ(window.calls.size(), 1u);
    EXPECT_EQ(window.calls[0].op, "copy");

    // Arrange mode: only the unlayered polygon, filled; no objects, no selection overlay.
    s.view.setMMode(1);
    s.showFlags.ShowGrid = 0;
    Repaint();
    const auto polys = Only(back, "polygon");
    ASSERT_EQ(polys.size(), 1u);
    EXPECT_EQ(polys[0].pen.color, RGB(255, 0, 0));
    EXPECT_EQ(polys[0].brush, (Brush{Brush::Kind::Solid, 0xFFFFFF}));
    EXPECT_EQ(Only(back, "line").size(), 0u);
    EXPECT_EQ(Only(back, "rect").size(), 1u);
    EXPECT_EQ(window.calls.size(), 1u);
}

TEST_F(FrameFixture, DrawingLineAndRubberBandAreOverlaysOverTheStoredFrame)
{
    s.editor.draw.AddPoint(0, 0);
    s.editor.draw.AddPoint(10, 0);
    s.editor.draw.UpdatePoint(5000, 5000); // runs off the canvas, unclipped
    PaintFrame(s, window, back);
    EXPECT_TRUE(back.calls.empty());
    ASSERT_EQ(window.calls.size(), 6u); // copy, pen, move, two lines, the old pen back
    EXPECT_EQ(window.calls[0].op, "copy");
    EXPECT_EQ(window.calls[2].args, (Ints{200, 150}));
    EXPECT_EQ(window.calls[4].args, (Ints{5200, 5150}));
    EXPECT_EQ(window.calls[4].pen, (Pen{PenStyle::Solid, 1, RGB(128, 128, 128)}));

    s.editor.draw.reset();
    s.editor.selSquare.initNew(-10, -10);
    s.editor.selSquare.Update(20, 30);
    Repaint();
    EXPECT_TRUE(back.calls.empty());
    ASSERT_EQ(window.calls.size(), 8u);
    EXPECT_EQ(window.calls[2].op, "move");
    EXPECT_EQ(window.calls[2].args, (Ints{190, 180}));
    EXPECT_EQ(window.calls[6].args, (Ints{190, 180}));
    EXPECT_EQ(window.calls[3].pen.style, PenStyle::Dot);
}

TEST_F(FrameFixture, DragGhostShowsTheBoxHandlesOutsideTheCorners)
{
    WorkingCopy& work = s.editor.work;
    work.WorkPoints = {Pts({{0, 0}, {40, 0}, {40, 40}})};
    work.WorkShapes = {s.stores.ShapeStore[0]};
    work.WorkShapeLast = 0;
    work.WorkObjects = {s.stores.ObjectStore[0]};
    work.WorkObjectLast = 0;
    work.WorkLimits = {0, 100, 0, 100};
    s.editor.EditState = 9; // a drag: no box
    PaintFrame(s, window, back);
    EXPECT_TRUE(back.calls.empty());
    EXPECT_TRUE(Only(window, "rect").empty());
    EXPECT_EQ(CountWithPen(window.calls, "line", RGB(128, 128, 128)), 3 + 5);
    s.editor.EditState = 10;
    Repaint();
    const auto rects = Only(window, "rect");
    ASSERT_EQ(rects.size(), 4u);
    // L 200, R 300, T 150, B 250.
    EXPECT_EQ(rects[0].args, (Ints{201, 151, 196, 146}));
    EXPECT_EQ(rects[1].args, (Ints{300, 151, 305, 146}));
    EXPECT_EQ(rects[2].args, (Ints{300, 250, 305, 255}));
    EXPECT_EQ(rects[3].args, (Ints{201, 250, 196, 255}));
}

TEST_F(FrameFixture, TheImageGoesUnderTheGridAndItsFrameTakesTheOverlayPathWhileMoving)
{
    CBitmap(s.bitmap).SetPicture(100, 50, std::vector<std::uint32_t>(5000, 0));
    s.showFlags.ShowBackPicture = 1;
    s.showFlags.BackImagescale = 1.0;
    PaintFrame(s, window, back);
    ASSERT_EQ(Only(back, "stretch").size(), 3u); // 100 by 50 makes 3 by 1 tiles, all in view
    EXPECT_EQ(back.calls[1].op, "stretch");

    s.showFlags.ShowBackPicture = 0;
    s.showFlags.BackImageLeft = -50;
    s.showFlags.BackImageTop = -20;
    StartImageFrame(s);
    s.editor.EditState = 16;
    EXPECT_FALSE(TakesOverlayPath(s));
    Repaint();
    EXPECT_EQ(CountWithPen(back.calls, "line", RGB(255, 0, 0)), 4);
    s.editor.EditState = 17;
    Repaint();
    EXPECT_TRUE(back.calls.empty());
    const auto rects = Only(window, "rect");
    ASSERT_EQ(rects.size(), 1u);
    // Frame from (-50, -20) to (50, 30): handle mid right side at pixel (250, 155).
    EXPECT_EQ(rects[0].args, (Ints{247, 152, 253, 158}));
    EXPECT_EQ(rects[0].pen, (Pen{PenStyle::Solid, 2, RGB(255, 0, 0)}));
}

TEST(PaintFrameExtremes, PointsAtTheEndsOfTheirRangePaintWithoutFault)
{
    const std::int32_t lo = INT32_MIN;
    const std::int32_t hi = INT32_MAX;
    for (double zoom : {0.0625, 4.0}) {
        Session s = MakeSession(300, 200, zoom, -2000000000, 2000000000);
        AddShape(s, kPoly, Pts({{lo, lo}, {hi, lo}, {hi, hi}, {lo, hi}}));
        AddShape(s, kForest, Pts({{lo, lo}, {hi, 0}, {0, 0}, {hi, hi}, {lo, hi}}));
        for (int type : {kRunway, kApi, kVor, kNdb, kInit, kExclude, kSign}) {
            AddObject(s, type, hi, lo, 1e300);
            AddObject(s, type, lo, hi, -1e300);
        }
        ObjectRecord& runway = s.stores.ObjectStore[0];
        runway.Length() = INT16_MAX;
        runway.ThrOffN() = INT16_MAX;
        runway.ExtN() = INT16_MIN;
        s.editor.selection.addEntry(0, 0, lo, hi, lo, hi);
        s.editor.selection.addEntry(1, 1, hi, hi, lo, lo);
        RasterCanvas window(300, 200);
        RasterCanvas back(300, 200);
        PaintFrame(s, window, back);
        s.view.setMMode(1);
        PaintFrame(s, window, back);
        s.view.setMMode(0);
        s.editor.selSquare.initNew(lo, lo);
        s.editor.selSquare.Update(hi, hi);
        PaintFrame(s, window, back);
        s.editor.selSquare.reset();
        s.editor.work.WorkPoints = {s.stores.PointStore[0]};
        s.editor.work.WorkShapes = {s.stores.ShapeStore[0]};
        s.editor.work.WorkShapeLast = 0;
        s.editor.work.WorkLimits = {lo, hi, lo, hi};
        s.editor.EditState = 10;
        PaintFrame(s, window, back);
    }
}

// ---- background image

TEST(CBitmapRender, TilesLeftOfTheCanvasAreSkippedAndTheirSizeIsRoundedSoTheyNeverGapOrDrift)
{
    // round(size / 64), at least 1, and one more unless a multiple of 64.
    for (auto [size, tiles] : {std::pair{32, 1}, {64, 1}, {96, 3}, {100, 3}, {800, 13}, {600, 10}})
        EXPECT_EQ(CBitmap::TileCount(size), tiles) << size;
    CBitmapState st;
    CBitmap b(st);
    b.SetPicture(200, 100, std::vector<std::uint32_t>(20000, 0x123456)); // 4 by 3 tiles
    ASSERT_EQ(st.tilesX, 4);
    ASSERT_EQ(st.tilesY, 3);
    RecordingCanvas c(1000, 200);
    b.Render(c, -150, 10, 1.0, 300, 200);
    const auto calls = Only(c, "stretch");
    ASSERT_EQ(calls.size(), 6u); // columns 2 and 3, rows 0 to 2
    for (const auto& call : calls) {
        EXPECT_TRUE(call.args[0] == -22 || call.args[0] == 42) << call.args[0];
        EXPECT_EQ(call.args[2], 64);
    }
    c.calls.clear();
    b.Render(c, 301, 0, 1.0, 300, 200);   // wholly right
    b.Render(c, -1000, 0, 1.0, 300, 200); // wholly left
    b.Render(c, 0, 0, 0.001, 300, 200);   // tiles of no size
    EXPECT_TRUE(c.calls.empty());
    b.Render(c, 0, 0, 1.51, 1000, 200); // 96.64 pixels per tile, rounded to 97
    const auto row = Only(c, "stretch");
    ASSERT_EQ(row.size(), 4u * 3u);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(row[i].args[0], static_cast<int>(i) * 97);
}

TEST(ReadBmp, DecodesBottomUpRowsAndRefusesDamageWithoutReadingOutsideTheFile)
{
    auto bytes = test::Bmp24(3, 2, 0x102030);
    bytes[54] = 0xFF; // bottom row, first pixel: blue
    std::int32_t w = 0, h = 0;
    std::vector<std::uint32_t> px;
    ASSERT_EQ(DecodeBmp(bytes, 800, 600, w, h, px), BmpResult::Ok);
    EXPECT_EQ(w, 3);
    EXPECT_EQ(h, 2);
    EXPECT_EQ(px[0], 0x102030u);
    EXPECT_EQ(px[3], 0x1020FFu); // row 1 from the top is the file's first row
    bytes.resize(60);
    EXPECT_EQ(DecodeBmp(bytes, 800, 600, w, h, px), BmpResult::Unreadable);
    EXPECT_EQ(DecodeBmp({'B', 'M'}, 800, 600, w, h, px), BmpResult::Unreadable);

    std::mt19937 rng(11);
    const auto good = test::Bmp24(5, 4, 0x445566);
    for (int round = 0; round < 3000; ++round) {
        bytes = good;
        for (int k = 0; k <= round % 6; ++k)
            bytes[rng() % 54] = static_cast<unsigned char>(rng());
        if (round % 5 == 1) { // bit fields with a longer header, cut short
            bytes[14] = 108;
            bytes[28] = 32;
            bytes[30] = 3;
        }
        if (round % 3 == 0)
            bytes.resize(rng() % bytes.size());
        if (DecodeBmp(bytes, 800, 600, w, h, px) == BmpResult::Ok) {
            EXPECT_EQ(px.size(), static_cast<std::size_t>(w) * h);
        }
    }
}

} // namespace
} // namespace fw
