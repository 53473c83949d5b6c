#include <gtest/gtest.h>

#include "FilesTestSupport.h"
#include "files/ProjectFile.h"

namespace fw {
namespace {

using test::Fixture;

// The golden texts were checked line by line against the format's key tables.
TEST(ProjectWriter, EveryTypeMatchesTheGoldenText)
{
    const ProjectData data = test::SampleProject("/opt/fw/");
    CBufferS buffer;
    BuildProjectText(buffer, data);
    const std::string text = JoinLines(buffer.lines());
    if (std::getenv("FW_WRITE_GOLDEN"))
        test::WriteText(Fixture("all_types.fwt"), text);
    const std::string golden = test::ReadText(Fixture("all_types.fwt"));
    EXPECT_EQ(text, golden);
    // The same bytes joined as they are made, in memory and on disk.
    EXPECT_EQ(ProjectText(ViewOf(data)), golden);
    test::ScratchFolder dir;
    ASSERT_TRUE(WriteProjectFile(dir.path("out.fwt"), data, nullptr));
    EXPECT_EQ(test::ReadText(dir.path("out.fwt")), golden);
}

} // namespace
} // namespace fw
