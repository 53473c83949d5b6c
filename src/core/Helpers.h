// Value checks, key filters, path and string helpers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fw {

class Ui;

// What a value check needs from the session: the decimal separator and where to say "wrong value".
struct ValueContext {
    char decimalSeparator = '.';
    Ui* ui = nullptr;
};

// Locale-aware checks of typed text. On failure they return false and, with a name, tell the user.
bool CheckDouble(const ValueContext& ctx, const std::string& text, double lower, double upper,
                 const std::string& name, double& out);
bool CheckInteger(const ValueContext& ctx, const std::string& text, double lower, double upper,
                  const std::string& name, std::int16_t& out);
bool CheckByte(const ValueContext& ctx, const std::string& text, double lower, double upper,
               const std::string& name, std::uint8_t& out);
bool CheckLong(const ValueContext& ctx, const std::string& text, const std::string& name, std::int32_t& out);

// Parses text in the dialog form (the given separator); false when it is no number.
bool ParseLocalNumber(std::string_view text, char decimalSeparator, double& out);

// Cut to digits decimals. Above 9999 it reports "FixFloat Violation" and gives 0; a scaled value
// past 32 bits throws OperationFault.
double FixFloat(double value, int digits, const ValueContext& ctx);

int KeyRemove(int key, const std::string& list);
int KeyMap(int key, const std::string& from, const std::string& to);
int KeyNumber(int key, bool allowDecimal);

// Paths: both "\" and "/" separate folders; stored paths are kept as they stand.
std::string GetNameFromPath(const std::string& path, bool keepExtension, Ui* ui = nullptr);
std::string GetFolderFromPath(const std::string& path);
std::string AddBackslash(const std::string& path);
bool FileExists(const std::string& path);

void CutAtCharacter(std::string& text, char c);
// Splits at any separator outside quotes; no empty pieces. Returns 0 for an empty text.
int SplitString(const std::string& text, const std::string& separators, const std::string& openQuotes,
                const std::string& closeQuotes, std::vector<std::string>& out);
// The words of a text between separators; no empty words, so an empty text has none.
inline std::vector<std::string> SplitWords(const std::string& text, char separator)
{
    std::vector<std::string> out;
    std::string word;
    for (char c : text) {
        if (c != separator) {
            word += c;
        } else if (!word.empty()) {
            out.push_back(std::move(word));
            word.clear();
        }
    }
    if (!word.empty())
        out.push_back(std::move(word));
    return out;
}

} // namespace fw
