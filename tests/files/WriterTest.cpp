#include <gtest/gtest.h>

#include "FilesTestSupport.h"
#include "files/ProjectFile.h"

namespace fw {
namespace {

using test::Fixture;

// The golden texts were checked line by line against the format's key tables.
TEST(ProjectWriter, EveryTypeMatchesTheGoldenText)
{
    CBufferS buffer;
    BuildProjectText(buffer, test::SampleProject("/opt/fw/"));
    const std::string text = JoinLines(buffer.lines());
    if (std::getenv("FW_WRITE_GOLDEN"))
        test::WriteText(Fixture("all_types.fwt"), text);
    EXPECT_EQ(text, test::ReadText(Fixture("all_types.fwt")));
}

} // namespace
} // namespace fw
