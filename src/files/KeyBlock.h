// The block loop shared by every reader of keys: a key with a value reader takes the next token.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "files/TextFile.h"
#include "files/ValueReaders.h"

namespace fw {

enum class ValueKind : std::uint8_t { Byte, Short, Long, Double, String };

struct KeyRule {
    std::string_view key;
    ValueKind kind;
    double lower;
    double upper;
    int field;
};

struct ParsedValue {
    std::int64_t i = 0;
    double d = 0;
    std::string s;
};

bool ParseValue(const KeyRule& k, std::string_view token, ParsedValue& v);

constexpr std::size_t kNoClose = static_cast<std::size_t>(-1);

// From start to the first ")" where a key is expected. Each key found by match(token) (a
// KeyRule* or nullptr) gives the next token to its reader; an accepted value goes to
// store(rule, value) and both tokens are passed, a rejected one leaves the field and passes the
// key only. Returns the index of the ")" or kNoClose when the tokens end first. With stopAtClose
// false every token up to the end is walked.
template <class Match, class Store>
std::size_t ReadKeys(const Tokens& t, std::size_t start, Match&& match, Store&& store, bool stopAtClose = true)
{
    ParsedValue v;
    std::size_t i = start;
    const std::size_t n = t.size();
    while (i < n) {
        const std::string_view tok = t[i];
        if (stopAtClose && tok == ")")
            return i;
        const KeyRule* k = tok.empty() ? nullptr : match(tok);
        if (k && i + 1 < n && ParseValue(*k, t[i + 1], v)) {
            store(*k, v);
            i += 2;
        } else {
            ++i;
        }
    }
    return kNoClose;
}

// Linear lookup in a table of keys.
template <std::size_t N>
const KeyRule* FindKey(const KeyRule (&table)[N], std::string_view token)
{
    for (const auto& k : table)
        if (k.key == token)
            return &k;
    return nullptr;
}

} // namespace fw
