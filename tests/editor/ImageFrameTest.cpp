// Moving and scaling the background image by its frame on the canvas.
#include <gtest/gtest.h>

#include "EditorTestSupport.h"
#include "editor/Commands.h"

namespace fw::test {
namespace {

struct ImageFixture : EditorFixture {
    ImageFixture() : EditorFixture(1.0)
    {
        s().bitmap.loaded = true;
        s().bitmap.width = 100;
        s().bitmap.height = 50;
        s().showFlags.BackImagePath = "chart.bmp";
        s().showFlags.BackImageLeft = -10;
        s().showFlags.BackImageTop = -20;
        s().showFlags.BackImagescale = 2.0;
    }
};

TEST(ImageFrame, ScaleByTheHandleThenMoveThenLeave)
{
    ImageFixture f;
    f.Run({"command MnuBedit"});
    EXPECT_EQ(f.s().editor.EditState, 16);
    EXPECT_EQ(f.s().showFlags.ShowBackPicture, 1);
    EXPECT_TRUE(ComputeMenuState(f.s()).items.at("MnuBedit").checked.value());
    EXPECT_EQ(f.s().bitmap.frame.current[2], (Point{190, 80}));
    // The handle sits in the middle of the right edge, world (190, 30): 5 pixels, exclusive.
    f.Run({"move " + Px(195, 30)});
    EXPECT_EQ(f.ui().pointer, Pointer::Arrow);
    f.Run({"move " + Px(194, 34)});
    EXPECT_EQ(f.ui().pointer, Pointer::SizeWE);
    f.Run({"down L " + Px(194, 34), "move " + Px(204, 0)});
    EXPECT_EQ(f.s().editor.EditState, 18);
    EXPECT_EQ(f.s().bitmap.frame.current[2], (Point{200, 85})); // 2.1 times 100 by 50
    f.Run({"up L " + Px(204, 0)});
    EXPECT_EQ(f.s().showFlags.BackImagescale, 2.1);
    EXPECT_EQ(f.s().editor.EditState, 16);

    f.Run({"down L " + Px(0, 0), "move " + Px(5, 7), "up L " + Px(5, 7)});
    EXPECT_EQ(f.s().showFlags.BackImageLeft, -5);
    EXPECT_EQ(f.s().showFlags.BackImageTop, -13);
    EXPECT_EQ(f.s().editor.EditState, 16);

    f.Run({"down L " + Px(300, 250)});
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_EQ(f.s().bitmap.ImageFrameActive, 0);
}

TEST(ImageFrame, ScaleStopsAtOneHundredthAndToolsEndTheFrame)
{
    ImageFixture f;
    f.Run({"command MnuBedit", "down L " + Px(190, 30), "move " + Px(-300, 30), "up L " + Px(-300, 30)});
    EXPECT_EQ(f.s().showFlags.BackImagescale, 0.01);
    f.Run({"tool zoomIn"});
    EXPECT_EQ(f.s().bitmap.ImageFrameActive, 0);
    EXPECT_EQ(f.s().editor.EditState, 0);
    // Without a path the command does nothing.
    f.s().showFlags.BackImagePath.clear();
    f.Run({"command MnuBedit"});
    EXPECT_EQ(f.s().editor.EditState, 0);
}

} // namespace
} // namespace fw::test
