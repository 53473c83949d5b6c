#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "render/RasterCanvas.h"

namespace fw {
namespace {

// ---- PNG

TEST(Png, StoredBlocksOfAtMost65535BytesHoldTheRowsWithTheirFilterByte)
{
    const std::string digits = "123456789";
    EXPECT_EQ(Crc32(reinterpret_cast<const unsigned char*>(digits.data()), digits.size()), 0xCBF43926u);
    const std::string word = "Wikipedia";
    EXPECT_EQ(Adler32(reinterpret_cast<const unsigned char*>(word.data()), word.size()), 0x11E60398u);

    const auto png = EncodePng(2, 1, {0xFF0000, 0x0000FF});
    const std::vector<unsigned char> signature{0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    ASSERT_GT(png.size(), 57u);
    EXPECT_TRUE(std::equal(signature.begin(), signature.end(), png.begin()));
    // IHDR: 2 by 1, 8 bits, colour type 2.
    EXPECT_EQ(std::vector<int>({png[19], png[23], png[24], png[25]}), (std::vector<int>{2, 1, 8, 2}));
    // IDAT after IHDR's 25 bytes: length 2 + 5 + 7 + 4 = 18.
    const std::size_t idat = 8 + 25;
    EXPECT_EQ(png[idat + 3], 18);
    const std::vector<unsigned char> expected{0x78, 0x01, 0x01, 7, 0, 0xF8, 0xFF, 0, 0xFF, 0, 0, 0, 0, 0xFF};
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), png.begin() + idat + 8));
    // The file ends with the IEND chunk and its well-known checksum.
    const std::vector<unsigned char> iend{0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82};
    EXPECT_TRUE(std::equal(iend.begin(), iend.end(), png.end() - 12));

    const auto large = EncodePng(300, 100, std::vector<std::uint32_t>(30000, 0x102030));
    const std::size_t length = (large[idat] << 24) | (large[idat + 1] << 16) | (large[idat + 2] << 8) | large[idat + 3];
    const std::size_t raw = 100 * (1 + 300 * 3);
    EXPECT_EQ(length, 2 + raw + 5 * ((raw + 65534) / 65535) + 4);
}

// ---- the command

std::string Cli() { return FW_CLI; }

int RunCli(const std::string& args)
{
    const std::string cmd = "\"" + Cli() + "\" render " + args + " 2>/dev/null";
    const int status = std::system(cmd.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(CliRender, RefusesBadArgumentsAndMissingProjects)
{
    if (!std::filesystem::exists(Cli()))
        GTEST_SKIP() << "fieldwright-cli is not built";
    const std::string out = ::testing::TempDir() + "fw_render_bad.png";
    EXPECT_EQ(RunCli("only-one-argument"), 2);
    EXPECT_EQ(RunCli("a.fwt " + out + " --size 0x10"), 2);
    EXPECT_EQ(RunCli("a.fwt " + out + " --zoom fast"), 2);
    EXPECT_EQ(RunCli("a.fwt " + out + " --offset 1"), 2);
    EXPECT_EQ(RunCli(::testing::TempDir() + "no_such_project.fwt " + out), 1);
    EXPECT_FALSE(std::filesystem::exists(out));
}

} // namespace
} // namespace fw
