// A background image or texture that is a folder, a device or a pipe fails with its reader's
// message and never blocks; a bitmap's headers are checked before the rest is read. Each case runs
// in a child with a deadline, so that a regression fails instead of holding the run.
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

#include "files/ProjectFlows.h"
#include "support/ScriptedUi.h"
#include "render/Bitmap.h"
#include "render/RenderTestSupport.h"
#include "render/Texture.h"
#include "support/Deadline.h"

namespace fw {
namespace {

namespace fsys = std::filesystem;
using test::ChildOutcome;
using test::RunWithDeadline;

constexpr int kDeadline = 30;

void ExpectPassed(ChildOutcome o)
{
    EXPECT_EQ(o, ChildOutcome::Passed) << test::OutcomeName(o);
}

class HostileImage : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::random_device rd;
        root = fsys::temp_directory_path() / ("fw_image_" + std::to_string(rd()) + std::to_string(rd()));
        fsys::create_directories(root);
        fifo = Path("pipe");
        ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
        folder = Path("folder");
        fsys::create_directory(folder);
    }
    void TearDown() override
    {
        std::error_code ec;
        fsys::remove_all(root, ec);
    }
    std::string Path(const std::string& name) const { return (root / name).string(); }
    std::string ProjectNaming(const std::string& image)
    {
        const std::string file = Path("named" + std::to_string(++projects) + ".fwt");
        EXPECT_TRUE(test::WriteProjectNamingImage(file, image));
        return file;
    }

    fsys::path root;
    std::string fifo;
    std::string folder;
    int projects = 0;
};

FlowHooks PictureHooks()
{
    FlowHooks h;
    h.loadBackImage = [](Session& s, const std::string& path) { return CBitmap(s.bitmap).GetPicture(path, s.ui); };
    return h;
}

TEST_F(HostileImage, APictureThatIsNoFileIsDroppedWithItsMessageAndATextureShowsTheFallback)
{
    const std::pair<std::string, std::string> cases[] = {{folder, "Is a directory"},
                                                         {"/dev/zero", "Not a regular file (a device)"},
                                                         {"/dev/urandom", "Not a regular file (a device)"},
                                                         {fifo, "Not a regular file (a named pipe)"}};
    for (const auto& [image, reason] : cases) {
        SCOPED_TRACE(image);
        const std::string project = ProjectNaming(image);
        ExpectPassed(RunWithDeadline(kDeadline, [&] {
            Session s = test::MakeSession(200, 200);
            ScriptedUi ui;
            s.ui = &ui;
            // The image can't be loaded, so path and flag go; the rest is the new project, whole.
            const bool dropped =
                LoadProject(s, project, PictureHooks()) && s.projectPath == project && s.hasName == 1 &&
                s.showFlags.BackImagePath.empty() && s.showFlags.ShowBackPicture == 0 &&
                s.stores.ShapeStore.size() == 1 && !CBitmap(s.bitmap).isAvailable() &&
                ui.Messages() == std::vector<std::string>{"Unable to load Bitmap!\n'" + image + "': " + reason};
            std::vector<std::uint32_t> pixels;
            BitmapInfoHeader header;
            std::string label;
            ReadTextureGdi(image, "/opt/fw/", pixels, header, label);
            std::vector<std::uint8_t> texture;
            std::int32_t w = 0, h = 0;
            const int gl = ReadTextureGl(image, "/opt/fw/", texture, w, h);
            return dropped && label == "Unknown format!" && pixels.size() == 32u * 32u && gl == 0 && w == 32 && h == 32;
        }));
    }
}

TEST_F(HostileImage, AGoodPictureStillLoadsWithTheProject)
{
    const std::string chart = Path("chart.bmp");
    test::WriteBytes(chart, test::Bmp24(100, 70, 0x336699));
    const std::string project = ProjectNaming(chart);
    Session s = test::MakeSession(200, 200);
    ScriptedUi ui;
    s.ui = &ui;
    ASSERT_TRUE(LoadProject(s, project, PictureHooks()));
    EXPECT_TRUE(ui.Messages().empty());
    EXPECT_EQ(s.showFlags.BackImagePath, chart);
    EXPECT_TRUE(CBitmap(s.bitmap).isAvailable());
    EXPECT_EQ(CBitmap(s.bitmap).Width(), 100);
}

// The headers are read and checked first; then no more than the picture they describe.
TEST_F(HostileImage, TheHeadersAreCheckedBeforeTheFileIsReadWhole)
{
    const std::string tooLarge = Path("too_large.bmp");
    test::WriteBytes(tooLarge, test::BmpClaiming(801, 2));
    const std::string trailing = Path("trailing.bmp");
    test::WriteBytes(trailing, test::Bmp24(3, 2, 0x102030));
    const std::string farRows = Path("far_rows.bmp");
    std::vector<unsigned char> far = test::Bmp24(2, 2, 0);
    far[13] = 0x40; // the rows 1 GB into the file
    test::WriteBytes(farRows, far);
    // Far larger than memory, and sparse: reading any of them whole would never end well.
    for (const std::string& p : {tooLarge, trailing, farRows})
        if (::truncate(p.c_str(), static_cast<off_t>(64ull << 30)) != 0)
            GTEST_SKIP() << "no sparse files here";
    ExpectPassed(RunWithDeadline(kDeadline, [&] {
        std::int32_t w = 0, h = 0;
        std::vector<std::uint32_t> pixels;
        std::string reason;
        const bool large = ReadBmp(tooLarge, 800, 600, w, h, pixels, &reason) == BmpResult::TooLarge && w == 801;
        const bool read = ReadBmp(trailing, 800, 600, w, h, pixels, &reason) == BmpResult::Ok && w == 3 && h == 2 &&
                          pixels.size() == 6 && pixels[0] == 0x102030;
        reason.clear();
        const bool refused = ReadBmp(farRows, 800, 600, w, h, pixels, &reason) == BmpResult::Unreadable &&
                             reason.empty();
        return large && read && refused;
    }));
}

} // namespace
} // namespace fw
