#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "core/PathCase.h"

namespace fw {
namespace {

namespace fs = std::filesystem;

TEST(PathCase, FindsFoldersAndFilesSpelledInAnotherCase)
{
    fs::path root = fs::temp_directory_path() / "fw_pathcase";
    fs::remove_all(root);
    fs::create_directories(root / "Resource");
    fs::create_directories(root / "API");
    std::ofstream(root / "Resource" / "fs5.pal") << "x";
    const std::string base = root.string();

    // As spelled on disk: unchanged.
    EXPECT_EQ(FindPathNoCase(base + "/Resource/fs5.pal"), base + "/Resource/fs5.pal");
    // Another case, back slashes of a Windows project, a folder alone.
    EXPECT_EQ(FindPathNoCase(base + "/resource/FS5.PAL"), base + "/Resource/fs5.pal");
    EXPECT_EQ(FindPathNoCase(base + "\\RESOURCE\\fs5.pal"), base + "/Resource/fs5.pal");
    EXPECT_EQ(FindPathNoCase(base + "/Api/"), base + "/API/");
    // Nothing to find: the path comes back with "/" separators only.
    EXPECT_EQ(FindPathNoCase(base + "\\Texture\\taxi.bmp"), base + "/Texture/taxi.bmp");
    EXPECT_EQ(FindPathNoCase(base + "/resource/missing.pal"), base + "/resource/missing.pal");
    EXPECT_EQ(FindPathNoCase(""), "");
    fs::remove_all(root);
}

} // namespace
} // namespace fw
