#include "files/MacroFile.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "core/Helpers.h"
#include "core/Numbers.h"
#include "files/TextFile.h"

namespace fw {

namespace {

constexpr Point kNewOutline[] = {{-50, 50}, {50, 50},  {50, -50}, {-50, -50}, {-50, 50},
                                 {0, 50},   {-50, 0},  {-50, -50}, {50, 50},  {50, 0},
                                 {0, -50},  {50, -50}, {-50, -50}};

std::string Lower(std::string_view s)
{
    std::string out(s);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return out;
}

// The value of a keyword: what stands behind the keyword and one more character.
bool KeywordValue(std::string_view line, const std::string& lower, std::string_view keyword, std::string& value)
{
    const std::size_t pos = lower.find(keyword);
    if (pos == std::string::npos)
        return false;
    const std::size_t start = pos + keyword.size() + 1;
    value = start < line.size() ? std::string(line.substr(start)) : std::string();
    return true;
}

void ReadList(const std::string& value, std::array<std::string, kMacroParams>& params)
{
    std::vector<std::string> pieces;
    SplitString(value, ",", "(", ")", pieces);
    for (std::size_t i = 0; i < pieces.size() && i < params.size(); ++i)
        params[i] = pieces[i];
}

bool LocalInt32(const std::string& text, char sep, std::int32_t& out)
{
    double v = 0;
    if (!ParseLocalNumber(text, sep, v))
        return false;
    auto r = RoundToInt32(v);
    if (!r)
        return false;
    out = *r;
    return true;
}

void ReadDesignShape(const std::string& value, char sep, MacroHeader& h)
{
    std::vector<std::string> values;
    std::size_t start = 0;
    while (true) {
        const std::size_t comma = value.find(',', start);
        values.push_back(value.substr(start, comma == std::string::npos ? std::string::npos : comma - start));
        if (comma == std::string::npos)
            break;
        start = comma + 1;
    }
    int last = static_cast<int>(values.size()) - 1;
    if (last % 2 == 0)
        --last; // an odd count loses its last value
    int n = (last - 1) / 2;
    if (n > 11)
        n = 11;
    if (n < 2)
        return;
    for (int i = 0; i <= n; ++i) {
        std::int32_t x = 0, y = 0;
        if (!LocalInt32(values[2 * i], sep, x))
            x = 0;
        if (!LocalInt32(values[2 * i + 1], sep, y))
            y = 0;
        h.designPoints[i] = {x, y};
    }
    h.designLast = static_cast<std::uint8_t>(n);
}

std::int16_t Density(const std::string& value)
{
    const std::string v = Lower(value);
    static const char* const kNames[] = {"very sparse", "sparse", "normal", "dense", "very dense"};
    for (int i = 0; i < 5; ++i)
        if (v.rfind(kNames[i], 0) == 0)
            return static_cast<std::int16_t>(i);
    return -1;
}

template <class F>
bool ReadFile(const std::string& path, F&& parse)
{
    // Only a regular file of a size a macro can have: a folder, a device or a pipe named as the
    // macro reads as a missing macro.
    std::string text;
    if (!ReadWholeFile(path, text, kMaxMacroBytes))
        return false;
    parse(text);
    return true;
}

// Half the size, rounded, doubled; false for no number, 0, or a size past 32 bits.
bool AdjustableSize(const std::string& param, char sep, std::int32_t& size)
{
    std::int32_t v = 0;
    if (!LocalInt32(param, sep, v))
        return false;
    const std::int64_t s = static_cast<std::int64_t>(RoundHalfEven(v / 2.0)) * 2;
    if (s == 0 || s > INT32_MAX || -s > INT32_MAX || s < -INT32_MAX)
        return false;
    size = static_cast<std::int32_t>(s);
    return true;
}

} // namespace

void ResetMacroHeader(MacroHeader& h)
{
    h = MacroHeader{};
    h.description = "[No description]";
    h.scale = 1.0;
    h.range = 2000;
    h.density = 2;
    std::copy(std::begin(kNewOutline), std::end(kNewOutline), h.designPoints.begin());
    h.designLast = 12;
    h.adjustable = 0;
}

void ResetMacroUses(MacroHeader& h)
{
    ResetMacroHeader(h);
    h.scale = h.elevation = h.heading = 0;
    h.range = 0;
    h.density = 0;
    h.params.fill("0");
}

void ParseMacroDefaults(std::string_view text, char sep, MacroHeader& h)
{
    ResetMacroHeader(h);
    const ValueContext silent{sep, nullptr};
    std::string value;
    ForEachLine(text, [&](std::string_view line) {
        const std::string lower = Lower(line);
        if (KeywordValue(line, lower, ";defaultscale", value)) {
            double v = 0;
            h.scale = CheckDouble(silent, value, 0.0001, 32, "", v) ? v : -1.0;
        }
        if (KeywordValue(line, lower, ";defaultrange", value)) {
            std::int16_t v = 0;
            h.range = CheckInteger(silent, value, 1, 32000, "", v) ? v : std::int16_t(-1);
        }
        if (KeywordValue(line, lower, ";defaultdensity", value))
            h.density = Density(value);
        if (KeywordValue(line, lower, ";defaultparams", value))
            ReadList(value, h.params);
    });
}

void ParseMacroDescriptions(std::string_view text, char sep, MacroHeader& h)
{
    ResetMacroHeader(h);
    std::string value;
    ForEachLine(text, [&](std::string_view line) {
        const std::string lower = Lower(line);
        if (KeywordValue(line, lower, ";macrodesc", value))
            h.description = value.empty() ? "[None available]" : value;
        if (KeywordValue(line, lower, ";paramdescr", value))
            ReadList(value, h.params);
        if (KeywordValue(line, lower, ";designshape", value))
            ReadDesignShape(value, sep, h);
        if (KeywordValue(line, lower, ";fwtadjustable", value)) {
            const std::string v = Lower(value);
            if (v.find("square") != std::string::npos)
                h.adjustable = 1;
            else if (v.find("rectangle") != std::string::npos)
                h.adjustable = 2;
        }
    });
}

void ParseMacroUses(std::string_view text, MacroHeader& h)
{
    ResetMacroUses(h);
    static const char* const kParamMarks[kMacroParams] = {"%6",  "%7",  "%8",  "%9",  "%15",
                                                          "%16", "%17", "%18", "%19", "%20"};
    ForEachLine(text, [&](std::string_view line) {
        const std::size_t comment = line.find(';');
        if (comment != std::string_view::npos)
            line = line.substr(0, comment);
        if (line.empty())
            return;
        // Marks are substrings: "%30" counts as "%3".
        auto has = [&](std::string_view mark) { return line.find(mark) != std::string_view::npos; };
        if (has("%3") || has("%10"))
            h.range = 1;
        if (has("%4"))
            h.scale = 1.0;
        if (has("%5"))
            h.heading = 1.0;
        if (has("%11"))
            h.elevation = 1.0;
        if (has("%12"))
            h.density = 1;
        for (int i = 0; i < kMacroParams; ++i)
            if (has(kParamMarks[i]))
                h.params[i] = "1";
    });
}

bool ReadMacroDefaults(const std::string& path, char sep, MacroHeader& h)
{
    ResetMacroHeader(h);
    return ReadFile(path, [&](const std::string& t) { ParseMacroDefaults(t, sep, h); });
}

bool ReadMacroDescriptions(const std::string& path, char sep, MacroHeader& h)
{
    ResetMacroHeader(h);
    return ReadFile(path, [&](const std::string& t) { ParseMacroDescriptions(t, sep, h); });
}

bool ReadMacroUses(const std::string& path, MacroHeader& h)
{
    ResetMacroUses(h);
    return ReadFile(path, [&](const std::string& t) { ParseMacroUses(t, h); });
}

std::string MacroFolder(const std::string& programFolder)
{
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(programFolder, ec)) {
        const std::string name = entry.path().filename().string();
        if (Lower(name) == "api" && entry.is_directory(ec))
            return programFolder + name + "/";
    }
    return programFolder + "API/";
}

namespace {
// The index of the object's macro in the configuration's list, or -1.
int MacroListIndex(const ObjectRecord& o, const ConfigRecord& config)
{
    const std::string name = Lower(GetNameFromPath(o.Path(), true));
    const int count = std::clamp<int>(config.numMacros, 0, kMaxMacros);
    for (int i = 0; i < count; ++i)
        if (!config.macroFiles[i].empty() && Lower(config.macroFiles[i]) == name)
            return i;
    return -1;
}
} // namespace

int ReRootMacroPath(ObjectRecord& o, const ConfigRecord& config, const std::string& programFolder)
{
    const int i = MacroListIndex(o, config);
    if (i >= 0)
        o.Path() = MacroFolder(programFolder) + config.macroFiles[i];
    return i;
}

void SetOutlineFromHeader(ObjectRecord& o, const MacroHeader& h, char sep)
{
    if (h.adjustable == 1 || h.adjustable == 2) {
        std::int32_t s = 0, t = 0;
        if (h.adjustable == 1) {
            if (!AdjustableSize(o.Param6(), sep, s))
                return;
            t = s;
        } else if (!AdjustableSize(o.Param7(), sep, s) || !AdjustableSize(o.Param6(), sep, t)) {
            return;
        }
        o.DesignPoints[0] = {-s, t};
        o.DesignPoints[1] = {-s, -t};
        o.DesignPoints[2] = {s, -t};
        o.DesignPoints[3] = {s, t};
        o.DesignLast = 3;
        return;
    }
    const int last = std::min<int>(h.designLast, kDesignPoints - 1);
    for (int i = 0; i <= last; ++i)
        o.DesignPoints[i] = h.designPoints[i];
    o.DesignLast = static_cast<std::uint8_t>(last);
}

void MacroOutlines::Apply(ObjectRecord& o)
{
    if (const int i = MacroListIndex(o, config_); i >= 0) {
        if (!folder_)
            folder_ = MacroFolder(programFolder_);
        o.Path() = *folder_ + config_.macroFiles[i];
    }
    auto [it, added] = headers_.try_emplace(o.Path());
    if (added && FileExists(o.Path())) {
        MacroHeader h;
        if (ReadMacroDescriptions(o.Path(), sep_, h))
            it->second = std::move(h);
    }
    if (it->second)
        SetOutlineFromHeader(o, *it->second, sep_);
}

bool RebuildOutline(ObjectRecord& o, char sep)
{
    if (!FileExists(o.Path()))
        return false;
    MacroHeader h;
    if (!ReadMacroDescriptions(o.Path(), sep, h))
        return false;
    SetOutlineFromHeader(o, h, sep);
    return true;
}

} // namespace fw
