#include "core/Helpers.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <system_error>

#include "core/Numbers.h"
#include "ports/Ui.h"

namespace fw {

namespace {
void WrongValue(const ValueContext& ctx, const std::string& name)
{
    if (!name.empty() && ctx.ui)
        ctx.ui->Message("You entered a wrong value for " + name + "!", MessageStyle::Information);
}

std::string_view Trim(std::string_view s)
{
    const std::size_t a = s.find_first_not_of(" \t");
    if (a == std::string_view::npos)
        return {};
    const std::size_t b = s.find_last_not_of(" \t");
    return s.substr(a, b - a + 1);
}
} // namespace

bool ParseLocalNumber(std::string_view text, char decimalSeparator, double& out)
{
    std::string_view t = Trim(text);
    if (t.empty())
        return false;
    // The other mark is no decimal mark on this system.
    const char other = decimalSeparator == ',' ? '.' : ',';
    if (t.find(other) != std::string_view::npos)
        return false;
    // Only a separator other than the point needs a copy to become one; the file form reads in place.
    std::string converted;
    if (decimalSeparator != '.' && t.find(decimalSeparator) != std::string_view::npos) {
        converted.assign(t);
        for (char& c : converted)
            if (c == decimalSeparator)
                c = '.';
        t = converted;
    }
    const char* first = t.data();
    const char* last = t.data() + t.size();
    if (*first == '+')
        ++first;
    if (first == last || *first == '+')
        return false;
    double v = 0;
    auto res = std::from_chars(first, last, v);
    if (res.ec != std::errc() || res.ptr != last || !std::isfinite(v))
        return false;
    out = v;
    return true;
}

bool CheckDouble(const ValueContext& ctx, const std::string& text, double lower, double upper,
                 const std::string& name, double& out)
{
    double v = 0;
    if (!ParseLocalNumber(text, ctx.decimalSeparator, v) || v < lower || v > upper) {
        WrongValue(ctx, name);
        return false;
    }
    out = v;
    return true;
}

namespace {
// The typed number rounded to 16 bits; empty when it is no number or doesn't fit.
std::optional<std::int16_t> RoundedValue(const ValueContext& ctx, const std::string& text)
{
    double v = 0;
    if (!ParseLocalNumber(text, ctx.decimalSeparator, v))
        return std::nullopt;
    return RoundToInt16(v);
}
} // namespace

bool CheckInteger(const ValueContext& ctx, const std::string& text, double lower, double upper,
                  const std::string& name, std::int16_t& out)
{
    const std::optional<std::int16_t> r = RoundedValue(ctx, text);
    if (!r || *r < lower || *r > upper) {
        WrongValue(ctx, name);
        return false;
    }
    out = *r;
    return true;
}

bool CheckByte(const ValueContext& ctx, const std::string& text, double lower, double upper,
               const std::string& name, std::uint8_t& out)
{
    const std::optional<std::int16_t> r = RoundedValue(ctx, text);
    if (!r || *r < 0 || *r > 255 || *r < lower || *r > upper) {
        WrongValue(ctx, name);
        return false;
    }
    out = static_cast<std::uint8_t>(*r);
    return true;
}

bool CheckLong(const ValueContext& ctx, const std::string& text, const std::string& name, std::int32_t& out)
{
    double v = 0;
    std::optional<std::int32_t> r;
    if (ParseLocalNumber(text, ctx.decimalSeparator, v))
        r = RoundToInt32(v);
    if (!r) {
        WrongValue(ctx, name);
        return false;
    }
    out = *r;
    return true;
}

namespace {
// Ten to the digits: the powers a double holds exactly come from a table, the rest from pow. pow
// gives the very same values, as it is off by less than one unit in the last place.
double PowerOfTen(int digits)
{
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                         1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    if (digits >= 0 && digits <= 22)
        return kPowers[digits];
    return std::pow(10.0, digits);
}
} // namespace

double FixFloat(double value, int digits, const ValueContext& ctx)
{
    if (!(value <= 9999)) {
        if (ctx.ui)
            ctx.ui->Message("FixFloat Violation: " + LocalReal(value, ctx.decimalSeparator), MessageStyle::Critical);
        return 0;
    }
    const double scale = PowerOfTen(digits);
    auto r = RoundToInt32(value * scale);
    if (!r)
        throw OperationFault("The value " + LocalReal(value, ctx.decimalSeparator) +
                             " is too large to be written with " + std::to_string(digits) + " decimals.");
    return *r / scale;
}

int KeyRemove(int key, const std::string& list)
{
    for (char c : list)
        if (static_cast<unsigned char>(c) == key)
            return 0;
    return key;
}

int KeyMap(int key, const std::string& from, const std::string& to)
{
    for (std::size_t i = 0; i < from.size() && i < to.size(); ++i)
        if (static_cast<unsigned char>(from[i]) == key)
            return static_cast<unsigned char>(to[i]);
    return key;
}

int KeyNumber(int key, bool allowDecimal)
{
    if (key == ',')
        key = '.';
    if (key == 8 || key == '-' || (key >= '0' && key <= '9'))
        return key;
    if (key == '.' && allowDecimal)
        return key;
    return 0;
}

namespace {
std::size_t LastSeparator(const std::string& path)
{
    return path.find_last_of("\\/");
}
} // namespace

std::string GetNameFromPath(const std::string& path, bool keepExtension, Ui* ui)
{
    if (path.empty()) {
        if (!keepExtension && ui)
            ui->Message("Error: 'GetNameFromPath' => empty filename!", MessageStyle::Critical);
        return {};
    }
    std::size_t sep = LastSeparator(path);
    std::string name = sep == std::string::npos ? path : path.substr(sep + 1);
    if (!keepExtension) {
        std::size_t dot = name.rfind('.');
        if (dot != std::string::npos)
            name.erase(dot);
    }
    return name;
}

std::string GetFolderFromPath(const std::string& path)
{
    std::size_t sep = LastSeparator(path);
    if (sep == std::string::npos)
        return "/";
    return path.substr(0, sep + 1);
}

std::string AddBackslash(const std::string& path)
{
    if (!path.empty() && (path.back() == '\\' || path.back() == '/'))
        return path;
    return path + "/";
}

bool FileExists(const std::string& path)
{
    if (path.empty())
        return false;
    std::error_code ec;
    return std::filesystem::exists(std::filesystem::path(path), ec);
}

void CutAtCharacter(std::string& text, char c)
{
    std::size_t pos = text.find(c);
    if (pos != std::string::npos)
        text.erase(pos);
}

int SplitString(const std::string& text, const std::string& separators, const std::string& openQuotes,
                const std::string& closeQuotes, std::vector<std::string>& out)
{
    out.clear();
    if (text.empty()) {
        out.emplace_back();
        return 0;
    }
    std::string piece;
    bool quoted = false;
    for (char c : text) {
        if (quoted) {
            piece += c;
            if (closeQuotes.find(c) != std::string::npos)
                quoted = false;
        } else if (separators.find(c) != std::string::npos) {
            if (!piece.empty())
                out.push_back(piece);
            piece.clear();
        } else {
            piece += c;
            if (openQuotes.find(c) != std::string::npos)
                quoted = true;
        }
    }
    if (!piece.empty())
        out.push_back(piece);
    if (out.empty())
        out.emplace_back();
    return 1;
}

} // namespace fw
