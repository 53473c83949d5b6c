#include "files/ValueReaders.h"

#include "core/Helpers.h"
#include "core/Numbers.h"

namespace fw {

namespace {
bool FileNumber(std::string_view token, double& v)
{
    return ParseLocalNumber(token, '.', v);
}

// A plain integer of up to nine digits, as the writers put every coordinate and whole value:
// blanks around it, one "+" and then one "-" before it. The number form reads the same value
// from it, and rounding leaves it as it is, so it is taken in one step. Anything else (false
// here) goes the general way.
bool PlainInt(std::string_view token, std::int32_t& out)
{
    std::size_t i = 0;
    std::size_t n = token.size();
    while (i < n && (token[i] == ' ' || token[i] == '\t'))
        ++i;
    while (n > i && (token[n - 1] == ' ' || token[n - 1] == '\t'))
        --n;
    if (i < n && token[i] == '+')
        ++i;
    const bool negative = i < n && token[i] == '-';
    if (negative)
        ++i;
    if (i == n || n - i > 9)
        return false;
    std::int32_t v = 0;
    for (; i < n; ++i) {
        const char c = token[i];
        if (c < '0' || c > '9')
            return false;
        v = v * 10 + (c - '0');
    }
    out = negative ? -v : v;
    return true;
}
} // namespace

bool FileInt16(std::string_view token, std::int16_t& out)
{
    if (std::int32_t plain = 0; PlainInt(token, plain)) {
        if (plain < INT16_MIN || plain > INT16_MAX)
            return false;
        out = static_cast<std::int16_t>(plain);
        return true;
    }
    double v = 0;
    if (!FileNumber(token, v))
        return false;
    auto r = RoundToInt16(v);
    if (!r)
        return false;
    out = *r;
    return true;
}

bool FileInt32(std::string_view token, std::int32_t& out)
{
    if (PlainInt(token, out))
        return true;
    double v = 0;
    if (!FileNumber(token, v))
        return false;
    auto r = RoundToInt32(v);
    if (!r)
        return false;
    out = *r;
    return true;
}

bool ReadByteValue(std::string_view token, int lower, int upper, std::uint8_t& out)
{
    std::int16_t v = 0;
    if (!FileInt16(token, v) || v < 0 || v > 255 || v < lower || v > upper)
        return false;
    out = static_cast<std::uint8_t>(v);
    return true;
}

bool ReadShortValue(std::string_view token, int lower, int upper, std::int16_t& out)
{
    std::int16_t v = 0;
    if (!FileInt16(token, v) || v < lower || v > upper)
        return false;
    out = v;
    return true;
}

bool ReadLongValue(std::string_view token, std::int32_t& out)
{
    return FileInt32(token, out);
}

bool ReadDoubleValue(std::string_view token, double lower, double upper, double& out)
{
    const double v = ParseFileNumber(token);
    if (v < lower || v > upper)
        return false;
    out = v;
    return true;
}

bool ReadStringValue(std::string_view token, std::string& out)
{
    if (token.size() < 2)
        return false;
    out.assign(token.substr(1, token.size() - 2));
    return true;
}

std::string QuotedLine(std::string_view key, std::string_view value)
{
    std::string s;
    s.reserve(key.size() + value.size() + 3);
    s.append(key);
    s += "=\"";
    s.append(value);
    s += '"';
    return s;
}

std::string IntLine(std::string_view key, std::int64_t value)
{
    std::string s(key);
    s += '=';
    s += FormatInt(value);
    return s;
}

std::string RealLine(std::string_view key, double value)
{
    std::string s(key);
    s += '=';
    s += Real(value);
    return s;
}

} // namespace fw
