// The number forms of SCASM text and the conversion of plan coordinates to latitude and longitude.
#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "core/Helpers.h"
#include "core/Numbers.h"

namespace fw {

// A number form held in place, for lines joined from pieces: no string of its own is made. The
// forms below are written into every row of the big shapes, so they are always inlined.
struct NumberText {
    char text[24];
    std::uint8_t size = 0;
    operator std::string_view() const { return {text, size}; }
};


// The digits of 0 to 999, most of the numbers a text holds (indices, local units, texels).
struct SmallDecimal {
    char digits[4];
    std::uint8_t size;
};
inline constexpr auto kSmallDecimals = [] {
    std::array<SmallDecimal, 1000> table{};
    for (int v = 0; v < 1000; ++v) {
        SmallDecimal& d = table[static_cast<std::size_t>(v)];
        const int hundreds = v / 100, tens = v / 10 % 10, ones = v % 10;
        if (hundreds)
            d.digits[d.size++] = static_cast<char>('0' + hundreds);
        if (hundreds || tens)
            d.digits[d.size++] = static_cast<char>('0' + tens);
        d.digits[d.size++] = static_cast<char>('0' + ones);
    }
    return table;
}();

// How far past its start writing a number form may store: the longest integer is 20 characters,
// and the short ones store a few spare bytes that the next piece writes over.
inline constexpr std::size_t kFormReach = 24;

// Decimal integer, "-" for a negative, no padding, written at to; returns its end.
[[gnu::always_inline]] inline char* WriteInt(char* to, std::int64_t v)
{
    std::uint64_t u = static_cast<std::uint64_t>(v);
    if (v < 0) {
        *to++ = '-';
        u = 0 - u;
    }
    if (u < kSmallDecimals.size()) {
        const SmallDecimal& d = kSmallDecimals[u];
        std::memcpy(to, d.digits, sizeof d.digits);
        return to + d.size;
    }
    return std::to_chars(to, to + 20, u).ptr;
}
// The integer padded with blanks on the right to Width, or cut to it, written at to.
template <std::uint8_t Width>
[[gnu::always_inline]] inline char* WriteFixed(char* to, std::int64_t v)
{
    static_assert(Width <= 8, "the blanks are stored eight at a time");
    char* end = WriteInt(to, v);
    if (end < to + Width)
        std::memcpy(end, "        ", 8);
    return to + Width;
}

// Number forms written straight into the line being joined, for a number a line uses once:
// nothing is built aside and copied again (a copy read back right after its bytes were stored one
// by one waits for them).
struct IntForm {
    std::int64_t value;
};
template <std::uint8_t Width>
struct FixedForm {
    std::int64_t value;
};
using Fix3Form = FixedForm<3>;
using Fix4Form = FixedForm<4>;
using Fix6Form = FixedForm<6>;

// Decimal integer, "-" for a negative, no padding.
[[gnu::always_inline]] inline NumberText IntText(std::int64_t v)
{
    NumberText out;
    out.size = static_cast<std::uint8_t>(WriteInt(out.text, v) - out.text);
    return out;
}
// The integer padded with blanks on the right to width, or cut to it.
[[gnu::always_inline]] inline NumberText FixedText(std::int64_t v, std::uint8_t width)
{
    NumberText out = IntText(v);
    if (out.size < width)
        std::memset(out.text + out.size, ' ', width - out.size);
    out.size = width;
    return out;
}
[[gnu::always_inline]] inline NumberText Fix6Text(std::int64_t v) { return FixedText(v, 6); }
[[gnu::always_inline]] inline NumberText Fix3Text(std::int64_t v) { return FixedText(v, 3); }

std::string Int(std::int64_t v);
// Any text forced to a width: padded with blanks on the right, cut when longer.
std::string FixN(const std::string& text, std::size_t width);
std::string Fix6(std::int64_t v);
std::string Fix3(std::int64_t v);
std::string Fix12(const std::string& text);
std::string Fix20(const std::string& text);
// Upper-case hexadecimal of the 32-bit pattern, no prefix: 15 gives F, -1 gives FFFFFFFF.
std::string Hex(std::int64_t v);

// Rounded (half to even) to 32 bits; past that the export stops with what overflowed.
inline std::int32_t ExportRound(double v, const char* what)
{
    // Below 2^51 adding and taking away 1.5 * 2^52 rounds half to even in the default rounding
    // mode without a library call; anything else, NaN and the infinities included, and every
    // value out of range goes the long way, which also throws.
    constexpr double kShift = 6755399441055744.0;
    if (v > -2251799813685248.0 && v < 2251799813685248.0) {
        const double r = (v + kShift) - kShift;
        if (r >= -2147483648.0 && r <= 2147483647.0)
            return static_cast<std::int32_t>(r);
    }
    return RoundToInt32OrFault(v, what);
}

// Degrees per metre, computed once per export from the reference latitude.
struct ExportScale {
    double LonDegPerMetre = 0;
    double LatDegPerMetre = 0;
};

constexpr double kExportPi = 3.14159265358979;

ExportScale ComputeExportScale(double latitudeDegree);

struct LatLon {
    std::string lat;
    std::string lon;
};

// Where the project's reference point is and how positions are cut to six decimals.
struct GeoFrame {
    ExportScale scale;
    double latitude = 0;
    double longitude = 0;
    ValueContext values;
};

// divisor 2.0 for a plan coordinate, 1.0 for metres, 1 / scale for local units.
LatLon PointToLatLon(const GeoFrame& frame, double x, double y, double divisor);

} // namespace fw
