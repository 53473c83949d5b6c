// Feeds any bytes to the project reader and exports whatever it reads, with both decimal
// separators, as "Export text" and as the compile step builds it. A value the format can't carry
// ends the export with its message (OperationFault); anything else must not happen.
// FW_FUZZ_EXPORT_CHECK=1 also has every finished text pass the SCASM structure check.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "core/Numbers.h"
#include "export/ExportDriver.h"
#include "export/ScasmCheck.h"
#include "support/ScriptedUi.h"

namespace {
const bool kCheckStructure = [] {
    const char* v = std::getenv("FW_FUZZ_EXPORT_CHECK");
    return v != nullptr && std::string_view(v) == "1";
}();
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    fw::ProjectData d;
    if (!fw::ReadProjectText(text, d, nullptr, fw::fuzz::kProgramFolder))
        return 0;
    fw::ConfigRecord config;
    fw::ResetConfig(config, fw::fuzz::kProgramFolder);

    fw::ExportBuffer buffer;
    for (char separator : {'.', ','}) {
        for (const std::string& excludePrefix : {std::string(), std::string("C:\\FS2000\\Scenery\\fwt_")}) {
            fw::ScriptedUi ui;
            fw::RandomSource random;
            const fw::ExportInput in{d.project, config,   d.points, d.shapes, d.objects,
                                     separator, &ui,      &random};
            try {
                fw::BuildExportText(in, excludePrefix, buffer);
            } catch (const fw::OperationFault& e) {
                if (std::string_view(e.what()).empty())
                    __builtin_trap();
                continue;
            }
            // A finished text is whole lines, each ended by CR LF.
            const std::string_view out = buffer.text();
            if (out.size() < 2 || out.substr(out.size() - 2) != "\r\n")
                __builtin_trap();
            if (kCheckStructure && !fw::CheckScasmText(std::string(out)).empty())
                __builtin_trap();
        }
    }
    return 0;
}
