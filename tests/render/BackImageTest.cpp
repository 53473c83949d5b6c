// The View menu's background image commands, driven through a scripted user.
#include <gtest/gtest.h>

#include <cstdio>
#include <tuple>

#include "support/ScriptedUi.h"
#include "render/BackImage.h"
#include "render/Bitmap.h"
#include "render/RenderTestSupport.h"

namespace fw {
namespace {

using test::Bmp24;
using test::MakeSession;

// A scripted user that also counts the repaints the commands ask for.
class PaintCountingUi : public ScriptedUi {
public:
    void Repaint() override { ++repaints; }
    int repaints = 0;
};

class BackImage : public ::testing::Test {
protected:
    void SetUp() override
    {
        s_.ui = &ui_;
        s_.config.BackPicturePath = "/charts/";
    }
    void TearDown() override
    {
        for (const auto& f : written_)
            std::remove(f.c_str());
    }
    std::string Write(const std::string& name, const std::vector<unsigned char>& bytes)
    {
        const std::string path = ::testing::TempDir() + name;
        test::WriteBytes(path, bytes);
        written_.push_back(path);
        return path;
    }
    void Load(const std::string& path)
    {
        ui_.files.push_back(path);
        MnuBloadremove(s_);
    }

    Session s_ = MakeSession(640, 480);
    PaintCountingUi ui_;
    std::vector<std::string> written_;
};

TEST_F(BackImage, LoadCentresTheImageOnTheOriginAndShowsIt)
{
    const std::string path = Write("fw_chart.bmp", Bmp24(101, 51, 0x336699));
    s_.showFlags.BackImagescale = 3.5;
    s_.showFlags.ShowBackPicture = 0;
    Load(path);

    ASSERT_EQ(ui_.fileRequests.size(), 1u);
    EXPECT_EQ(ui_.fileRequests[0].filter, "Bitmap picture (*.bmp)|*.bmp");
    EXPECT_EQ(ui_.fileRequests[0].startFolder, "/charts/");
    EXPECT_FALSE(ui_.fileRequests[0].save);
    EXPECT_TRUE(ui_.Messages().empty());
    const ShowFlagsRecord& f = s_.showFlags;
    EXPECT_EQ(f.BackImagePath, path);
    // -50.5 and -25.5 round to the even neighbour.
    EXPECT_EQ(std::tie(f.BackImageLeft, f.BackImageTop, f.BackImagescale, f.ShowBackPicture),
              std::make_tuple(-50, -26, 1.0, 1));
    EXPECT_TRUE(CBitmap(s_.bitmap).isAvailable());
    EXPECT_EQ(CBitmap(s_.bitmap).Width(), 101);
    EXPECT_EQ(CBitmap(s_.bitmap).Height(), 51);
    EXPECT_FALSE(ui_.waitCursor);
    EXPECT_EQ(ui_.repaints, 1);
    // Loading an image is no edit of the drawing: no changed mark, no undo step.
    EXPECT_FALSE(s_.dirty);
}

TEST_F(BackImage, LargestSizeLoadsAndOneMorePixelIsRefusedKeepingTheOldImage)
{
    const std::string largest = Write("fw_800.bmp", Bmp24(800, 600, 0xFFFFFF));
    Load(largest);
    EXPECT_EQ(s_.showFlags.BackImageLeft, -400);
    EXPECT_EQ(s_.showFlags.BackImageTop, -300);
    ASSERT_TRUE(CBitmap(s_.bitmap).isAvailable());

    // The user has moved, scaled and hidden the image since.
    s_.showFlags.BackImageLeft = 120;
    s_.showFlags.BackImagescale = 2.5;
    s_.showFlags.ShowBackPicture = 0;
    for (auto [w, h] : {std::pair{801, 600}, std::pair{800, 601}}) {
        const std::string big = Write("fw_big.bmp", test::BmpClaiming(w, h));
        Load(big);
        ASSERT_FALSE(ui_.Messages().empty());
        EXPECT_EQ(ui_.Messages().back(),
                  "Unable to open '" + big + "' !\n\nThe maximum background image size is 800x600...");
        const ShowFlagsRecord& f = s_.showFlags;
        EXPECT_EQ(std::tie(f.BackImagePath, f.BackImageLeft, f.BackImagescale, f.ShowBackPicture),
                  std::make_tuple(largest, 120, 2.5, 0));
        EXPECT_EQ(CBitmap(s_.bitmap).Width(), 800);
        EXPECT_FALSE(ui_.waitCursor);
    }
    EXPECT_EQ(ui_.Messages().size(), 2u);
}

TEST_F(BackImage, CancelledOrUnreadableChoiceChangesNothing)
{
    const std::string good = Write("fw_good.bmp", Bmp24(64, 64, 0x112233));
    Load(good);
    const ShowFlagsRecord before = s_.showFlags;

    Load(""); // the dialog cancelled
    EXPECT_TRUE(ui_.Messages().empty());

    const std::string junk = Write("fw_junk.bmp", {'n', 'o', 't', ' ', 'a', ' ', 'b', 'm', 'p'});
    Load(junk);
    Load(::testing::TempDir() + "fw_no_such_file.bmp");
    ASSERT_EQ(ui_.Messages().size(), 2u);
    EXPECT_EQ(ui_.Messages()[0], "Unable to load Bitmap!");
    // A file that can't be read names itself and the host's reason on a second line.
    EXPECT_EQ(ui_.Messages()[1], "Unable to load Bitmap!\n'" + ::testing::TempDir() +
                                     "fw_no_such_file.bmp': No such file or directory");

    const ShowFlagsRecord& f = s_.showFlags;
    EXPECT_EQ(std::tie(f.BackImagePath, f.BackImageLeft, f.BackImageTop),
              std::tie(before.BackImagePath, before.BackImageLeft, before.BackImageTop));
    EXPECT_EQ(CBitmap(s_.bitmap).Width(), 64);
    EXPECT_FALSE(ui_.waitCursor);
}

TEST_F(BackImage, RemoveAsksOnlyWithAnImageAndDropsItOnYes)
{
    MnuBremove(s_); // nothing loaded: no question
    EXPECT_TRUE(ui_.calls.empty());

    const std::string path = Write("fw_rm.bmp", Bmp24(10, 10, 0));
    Load(path);
    const int repaints = ui_.repaints;

    ui_.answers.push_back(Answer::No);
    MnuBremove(s_);
    ASSERT_EQ(ui_.calls.back().kind, "yesno");
    EXPECT_EQ(ui_.calls.back().text,
              "This will remove the background image from your project...\n\nDo you wish to proceed?");
    EXPECT_TRUE(CBitmap(s_.bitmap).isAvailable());
    EXPECT_EQ(s_.showFlags.BackImagePath, path);
    EXPECT_EQ(ui_.repaints, repaints);

    ui_.answers.push_back(Answer::Yes);
    MnuBremove(s_);
    EXPECT_FALSE(CBitmap(s_.bitmap).isAvailable());
    EXPECT_EQ(CBitmap(s_.bitmap).Width(), 0);
    EXPECT_TRUE(s_.showFlags.BackImagePath.empty());
    EXPECT_EQ(ui_.repaints, repaints + 1);
    EXPECT_FALSE(s_.dirty);

    const std::size_t asked = ui_.calls.size();
    MnuBremove(s_); // gone: the command does nothing
    EXPECT_EQ(ui_.calls.size(), asked);
}

} // namespace
} // namespace fw
