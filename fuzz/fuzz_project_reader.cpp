// Feeds any bytes to the project reader, then writes and dumps what it read.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "files/ProjectFile.h"
#include "files/ProjectJson.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    fw::ProjectData d;
    if (fw::ReadProjectText(text, d, nullptr, "/opt/fw/")) {
        fw::CBufferS buffer;
        fw::BuildProjectText(buffer, d);
        fw::ProjectData again;
        fw::ReadProjectText(fw::JoinLines(buffer.lines()), again, nullptr, "/opt/fw/");
        (void)fw::ProjectToJson(d);
    }
    return 0;
}
