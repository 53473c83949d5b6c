// Feeds any bytes to the configuration reader, then writes what it read.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "files/ConfigFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    fw::Session s;
    s.programFolder = "/opt/fw/";
    fw::ResetAtStart(s);
    fw::ReadConfigText(s, text);
    fw::CBufferS buffer;
    fw::BuildConfigText(buffer, s);
    return 0;
}
