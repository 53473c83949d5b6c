// A structure check of SCASM text: areas closed, labels defined in their area, point indices known,
// brackets closed, no decimal comma outside the two places that take the locale's separator. The
// text of a macro's user parameter is the user's, its brackets and commas alike.
#pragma once

#include <memory>
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
// The same check of a text in two parts side by side: the part from split (the start of a line
// where nothing is open, such as the first line of an item of its own area) is read on a thread of
// its own from construction, the part before it by problems(), on the calling thread. The problems
// are CheckScasmText's in every case: where the parts don't join up, the first reads on alone. The
// text must outlive the object.
class ScasmTextCheck {
public:
    ScasmTextCheck(std::string_view text, std::size_t split);
    ScasmTextCheck(const ScasmTextCheck&) = delete;
    ScasmTextCheck& operator=(const ScasmTextCheck&) = delete;
    ~ScasmTextCheck();
    // Once.
    std::vector<ScasmProblem> problems();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

// "line 12: ..." one problem a line.
std::string FormatProblems(const std::vector<ScasmProblem>& problems);

} // namespace fw
