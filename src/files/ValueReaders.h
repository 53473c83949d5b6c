// The value readers of the text files, with their bounds (both ends included).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace fw {

// Integer conversion: blanks skipped, a fraction rounded half to even; false when no number or
// outside the type.
bool FileInt16(std::string_view token, std::int16_t& out);
bool FileInt32(std::string_view token, std::int32_t& out);

bool ReadByteValue(std::string_view token, int lower, int upper, std::uint8_t& out);
bool ReadShortValue(std::string_view token, int lower, int upper, std::int16_t& out);
bool ReadLongValue(std::string_view token, std::int32_t& out);
// Never fails on form: text with no numeric prefix reads as 0, then the bounds decide.
bool ReadDoubleValue(std::string_view token, double lower, double upper, double& out);
// The token less its first and last character; false when shorter than 2.
bool ReadStringValue(std::string_view token, std::string& out);

// "key=value" lines as the writers put them.
std::string QuotedLine(std::string_view key, std::string_view value);
std::string IntLine(std::string_view key, std::int64_t value);
std::string RealLine(std::string_view key, double value);

} // namespace fw
