// The structure check as it was before it read each line once, for the equivalence test.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "export/ScasmCheck.h"

namespace fw::test::before {

std::vector<ScasmProblem> CheckScasm(const std::vector<std::string>& lines);
std::vector<ScasmProblem> CheckScasmText(std::string_view text);

} // namespace fw::test::before
