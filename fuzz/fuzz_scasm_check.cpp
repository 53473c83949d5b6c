// Feeds any bytes to the SCASM structure check, as text, as lines and in two parts read side by
// side, and formats what it found.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "export/ScasmCheck.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto problems = fw::CheckScasmText(text);

    // The lines as CheckScasmText cuts them: at LF, a CR before it dropped, a last line without LF kept.
    std::vector<std::string> lines;
    std::string cur;
    for (char c : text) {
        if (c == '\n') {
            if (!cur.empty() && cur.back() == '\r')
                cur.pop_back();
            lines.push_back(cur);
            cur.clear();
        } else {
            cur += c;
        }
    }
    if (!cur.empty())
        lines.push_back(cur);

    // Each problem names a line of the text, in order, and the same lines give the same problems.
    const int last = static_cast<int>(lines.size());
    int previous = 0;
    for (const auto& p : problems) {
        if (p.line < 1 || p.line > last || p.line < previous || p.text.empty())
            __builtin_trap();
        previous = p.line;
    }
    const auto again = fw::CheckScasm(lines);
    if (again.size() != problems.size())
        __builtin_trap();
    for (std::size_t i = 0; i < again.size(); ++i)
        if (again[i].line != problems[i].line || again[i].text != problems[i].text)
            __builtin_trap();
    // Read in two parts, cut after a line chosen by the input's first byte: the same problems.
    if (!text.empty()) {
        std::size_t split = text.size() * static_cast<std::uint8_t>(text[0]) / 256;
        split = text.find('\n', split);
        if (split != std::string::npos) {
            const auto halves = fw::ScasmTextCheck(text, split + 1).problems();
            if (halves.size() != problems.size())
                __builtin_trap();
            for (std::size_t i = 0; i < halves.size(); ++i)
                if (halves[i].line != problems[i].line || halves[i].text != problems[i].text)
                    __builtin_trap();
        }
    }
    const std::string report = fw::FormatProblems(problems);
    if (problems.empty() != report.empty())
        __builtin_trap();
    return 0;
}
