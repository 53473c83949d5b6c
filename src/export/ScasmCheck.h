// A structure check of SCASM text: areas closed, labels defined in their area, point indices known,
// brackets closed, no decimal comma outside the two places that take the locale's separator. The
// text of a macro's user parameter is the user's, its brackets and commas alike.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fw {

struct ScasmProblem {
    int line = 0; // 1-based
    std::string text;
};

std::vector<ScasmProblem> CheckScasm(const std::vector<std::string>& lines);
// The text as a file holds it: lines ended by CR LF (a lone LF is taken as well).
std::vector<ScasmProblem> CheckScasmText(std::string_view text);
// "line 12: ..." one problem a line.
std::string FormatProblems(const std::vector<ScasmProblem>& problems);

} // namespace fw
