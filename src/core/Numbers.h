// Number conversions shared by every module: rounding, the file number form, SCASM's Real.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace fw {

// An operation that must stop without changing anything (an overflow the format can't carry).
struct OperationFault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Round to nearest, ties to even.
double RoundHalfEven(double v);
// Rounded half to even and clamped to 32 bits: pixel and world values never fault.
std::int32_t Round32(double v);
// Rounded value as a 32-bit integer, or nothing when it doesn't fit.
std::optional<std::int32_t> RoundToInt32(double v);
std::optional<std::int16_t> RoundToInt16(double v);
// As RoundToInt32 but throws OperationFault naming what overflowed.
std::int32_t RoundToInt32OrFault(double v, const char* what);

// File and SCASM form of a double: " 1", "-8.5", " .5", "-.25", " 1E+15"; locale independent.
std::string Real(double v);
// Integer form: " 0", " 10", "-50".
std::string FormatInt(std::int64_t v);
// General form with the given decimal separator, no leading blank, zero before the separator.
std::string LocalReal(double v, char decimalSeparator);

// The numeric prefix of text with a point as decimal mark (a leading blank allowed); 0 when none.
double ParseFileNumber(std::string_view text);

} // namespace fw
