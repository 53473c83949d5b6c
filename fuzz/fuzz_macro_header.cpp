// Feeds any bytes to the three macro passes and sets an outline from the result.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "files/MacroFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    fw::MacroHeader h;
    for (char sep : {'.', ','}) {
        fw::ParseMacroDefaults(text, sep, h);
        fw::ParseMacroUses(text, h);
        fw::ParseMacroDescriptions(text, sep, h);
        fw::ObjectRecord o;
        fw::ResetObject(o, fw::kApi, "/opt/fw/");
        // The first line doubles as the size parameters of an adjustable macro.
        const std::string first(text.substr(0, text.find('\n')));
        o.Param6() = first;
        o.Param7() = h.params[0];
        fw::SetOutlineFromHeader(o, h, sep);
        if (o.DesignLast >= fw::kDesignPoints)
            __builtin_trap();
    }
    return 0;
}
