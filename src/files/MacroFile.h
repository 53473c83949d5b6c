// Macro files of 3-D objects: the keyword header, the parameter marks, the outline, re-rooting.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "core/Config.h"
#include "core/Records.h"

namespace fw {

constexpr int kMacroParams = 10;

// What a macro's keywords say; the same layout carries the use marks (see ReadMacroUses).
struct MacroHeader {
    std::string description;
    double scale = 0;
    std::int16_t range = 0;
    std::int16_t density = 0; // -1 when the keyword's value can't be read
    double elevation = 0;
    double heading = 0;
    std::array<std::string, kMacroParams> params;
    std::array<Point, kDesignPoints> designPoints{};
    std::uint8_t designLast = 0;
    std::uint8_t adjustable = 0; // 0 none, 1 square, 2 rectangle
};

// "[No description]", scale 1, range 2000, density 2, the outline of a new object.
void ResetMacroHeader(MacroHeader& h);
// Every mark 0 and every parameter text "0".
void ResetMacroUses(MacroHeader& h);

// The defaults pass: ;defaultscale, ;defaultrange, ;defaultdensity, ;defaultparams. Numbers are
// read in the dialog's form (decimalSeparator); a value that fails gives -1.
void ParseMacroDefaults(std::string_view text, char decimalSeparator, MacroHeader& h);
// The description pass: ;macrodesc, ;paramdescr, ;designshape, ;fwtadjustable.
void ParseMacroDescriptions(std::string_view text, char decimalSeparator, MacroHeader& h);
// The use pass: which of the marks %3 ... %20 the macro's code (not its comments) holds.
void ParseMacroUses(std::string_view text, MacroHeader& h);

// The same on a file; false (h reset) when it can't be read.
bool ReadMacroDefaults(const std::string& path, char decimalSeparator, MacroHeader& h);
bool ReadMacroDescriptions(const std::string& path, char decimalSeparator, MacroHeader& h);
bool ReadMacroUses(const std::string& path, MacroHeader& h);

// The program's macro folder ("API" under the program folder, spelled as it is on disk).
std::string MacroFolder(const std::string& programFolder);
// A macro of the configuration's list always lives in the program's macro folder: rewrites Path
// there and returns the list index, or -1 for any other macro (its path stays).
int ReRootMacroPath(ObjectRecord& o, const ConfigRecord& config, const std::string& programFolder);
// DesignPoints and DesignLast from the header; an adjustable macro takes its size from Param6
// (and Param7).
void SetOutlineFromHeader(ObjectRecord& o, const MacroHeader& h, char decimalSeparator);
// When the macro file in Path exists: reads its header and sets the outline. False otherwise.
bool RebuildOutline(ObjectRecord& o, char decimalSeparator);

// The 3-D objects of one load: ReRootMacroPath and RebuildOutline for each, with every macro file
// read once however many objects name it. Made for one load and dropped with it, so a macro
// changed between two opens is read afresh at the next.
class MacroOutlines {
public:
    // config is kept by reference and must outlive this.
    MacroOutlines(const ConfigRecord& config, std::string programFolder, char decimalSeparator)
        : config_(config), programFolder_(std::move(programFolder)), sep_(decimalSeparator)
    {
    }
    // Re-roots the path of a built-in macro, then sets the outline when the macro can be read.
    void Apply(ObjectRecord& o);

private:
    const ConfigRecord& config_;
    std::string programFolder_;
    char sep_;
    std::optional<std::string> folder_;
    // By path: the description header, or nothing for a macro that is missing or can't be read.
    std::unordered_map<std::string, std::optional<MacroHeader>> headers_;
};

} // namespace fw
