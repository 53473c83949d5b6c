#include "files/ValueReaders.h"

#include "core/Helpers.h"
#include "core/Numbers.h"

namespace fw {

namespace {
bool FileNumber(std::string_view token, double& v)
{
    return ParseLocalNumber(std::string(token), '.', v);
}
} // namespace

bool FileInt16(std::string_view token, std::int16_t& out)
{
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
    const double v = ParseFileNumber(std::string(token));
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
