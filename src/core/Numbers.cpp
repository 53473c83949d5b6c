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

std::int32_t Round32(double v)
{
    // Below 2^51 adding and taking away 1.5 * 2^52 rounds half to even in the default rounding
    // mode, without a call per coordinate.
    constexpr double kShift = 6755399441055744.0;
    const double r = v > -2251799813685248.0 && v < 2251799813685248.0 ? (v + kShift) - kShift : RoundHalfEven(v);
    if (!(r >= -2147483648.0))
        return INT32_MIN;
    if (r > 2147483647.0)
        return INT32_MAX;
    return static_cast<std::int32_t>(r);
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
// Writes v in the general form into buf (which holds 32 characters) and gives the length.
std::size_t GeneralForm(double v, char* buf)
{
    if (v == 0 || std::isnan(v))
        v = 0; // a negative zero prints as zero
    // to_chars is locale independent, unlike printf; same digits as "%.15G".
    const auto res = std::to_chars(buf, buf + 32, v, std::chars_format::general, 15);
    const auto n = static_cast<std::size_t>(res.ptr - buf);
    for (std::size_t i = 0; i < n; ++i)
        if (buf[i] == 'e')
            buf[i] = 'E';
    return n;
}
} // namespace

std::string Real(double v)
{
    char buf[32];
    const std::size_t n = GeneralForm(v, buf);
    const bool negative = n > 0 && buf[0] == '-';
    std::size_t first = negative ? 1 : 0;
    if (n - first > 1 && buf[first] == '0' && buf[first + 1] == '.')
        ++first; // no zero before the point
    std::string out(1, negative ? '-' : ' ');
    out.append(buf + first, n - first);
    return out;
}

std::string FormatInt(std::int64_t v)
{
    if (v < 0)
        return std::to_string(v);
    return " " + std::to_string(v);
}

std::string LocalReal(double v, char decimalSeparator)
{
    char buf[32];
    std::string s(buf, GeneralForm(v, buf));
    for (char& c : s)
        if (c == '.')
            c = decimalSeparator;
    return s;
}

double ParseFileNumber(std::string_view text)
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
    const std::string_view number = text.substr(start, end - start);
    const char* first = number.data();
    if (*first == '+')
        ++first;
    double v = 0;
    auto res = std::from_chars(first, number.data() + number.size(), v);
    if (res.ec != std::errc() || std::isinf(v) || std::isnan(v))
        return 0;
    return v;
}

} // namespace fw
