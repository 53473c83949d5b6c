#include "core/Numbers.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace fw {

double RoundHalfEven(double v)
{
    // nearbyint follows the current rounding mode, which this program never changes from nearest-even.
    return std::nearbyint(v);
}

std::optional<std::int32_t> RoundToInt32(double v)
{
    const double r = RoundHalfEven(v);
    if (!(r >= -2147483648.0 && r <= 2147483647.0))
        return std::nullopt;
    return static_cast<std::int32_t>(r);
}

std::optional<std::int16_t> RoundToInt16(double v)
{
    const double r = RoundHalfEven(v);
    if (!(r >= -32768.0 && r <= 32767.0))
        return std::nullopt;
    return static_cast<std::int16_t>(r);
}

std::int32_t RoundToInt32OrFault(double v, const char* what)
{
    auto r = RoundToInt32(v);
    if (!r)
        throw OperationFault(std::string("Overflow: ") + what + " is out of range.");
    return *r;
}

namespace {
std::string GeneralForm(double v)
{
    if (v == 0 || std::isnan(v))
        v = 0; // a negative zero prints as zero
    // to_chars is locale independent, unlike printf; same digits as "%.15G".
    char buf[64];
    auto res = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, 15);
    std::string s(buf, res.ptr);
    for (char& c : s)
        if (c == 'e')
            c = 'E';
    return s;
}
} // namespace

std::string Real(double v)
{
    std::string s = GeneralForm(v);
    bool negative = !s.empty() && s[0] == '-';
    std::string digits = negative ? s.substr(1) : s;
    if (digits.size() > 1 && digits[0] == '0' && digits[1] == '.')
        digits.erase(0, 1);
    return (negative ? "-" : " ") + digits;
}

std::string FormatInt(std::int64_t v)
{
    if (v < 0)
        return std::to_string(v);
    return " " + std::to_string(v);
}

std::string LocalReal(double v, char decimalSeparator)
{
    std::string s = GeneralForm(v);
    for (char& c : s)
        if (c == '.')
            c = decimalSeparator;
    return s;
}

double ParseFileNumber(const std::string& text)
{
    // Longest prefix that reads as a number with a point as decimal mark.
    std::size_t i = 0;
    while (i < text.size() && text[i] == ' ')
        ++i;
    std::size_t start = i;
    if (i < text.size() && (text[i] == '-' || text[i] == '+'))
        ++i;
    bool digits = false;
    while (i < text.size() && text[i] >= '0' && text[i] <= '9') {
        ++i;
        digits = true;
    }
    if (i < text.size() && text[i] == '.') {
        ++i;
        while (i < text.size() && text[i] >= '0' && text[i] <= '9') {
            ++i;
            digits = true;
        }
    }
    if (!digits)
        return 0;
    std::size_t end = i;
    if (i < text.size() && (text[i] == 'E' || text[i] == 'e')) {
        std::size_t j = i + 1;
        if (j < text.size() && (text[j] == '-' || text[j] == '+'))
            ++j;
        bool expDigits = false;
        while (j < text.size() && text[j] >= '0' && text[j] <= '9') {
            ++j;
            expDigits = true;
        }
        if (expDigits)
            end = j;
    }
    const std::string number = text.substr(start, end - start);
    const char* first = number.c_str();
    if (*first == '+')
        ++first;
    double v = 0;
    auto res = std::from_chars(first, number.c_str() + number.size(), v);
    if (res.ec != std::errc() || std::isinf(v) || std::isnan(v))
        return 0;
    return v;
}

} // namespace fw
