// The structure check reads each line once; it must find what it found when it cut every line into
// words: the same problems in the same order, over the golden exports and over damaged copies of them.
#include "ExportTestSupport.h"

#include <filesystem>
#include <random>

#include "ScasmCheckBefore.h"

namespace fw::test {
namespace {

// The lines as CheckScasmText cuts them, each with its CR.
std::vector<std::string> RawLines(const std::string& text)
{
    std::vector<std::string> lines;
    std::string cur;
    for (char c : text) {
        if (c == '\n') {
            lines.push_back(cur);
            cur.clear();
        } else {
            cur += c;
        }
    }
    if (!cur.empty())
        lines.push_back(cur);
    return lines;
}

// Both readings, of the text and of its lines, against the old check; false at the first difference.
bool SameAsBefore(const std::string& text)
{
    const auto same = [](const std::vector<ScasmProblem>& a, const std::vector<ScasmProblem>& b) {
        EXPECT_EQ(FormatProblems(a), FormatProblems(b));
        return FormatProblems(a) == FormatProblems(b);
    };
    const std::vector<std::string> lines = RawLines(text);
    return same(CheckScasmText(text), before::CheckScasmText(text)) &&
           same(CheckScasm(lines), before::CheckScasm(lines));
}

std::vector<std::string> GoldenTexts()
{
    std::vector<std::string> texts;
    for (const char* folder : {"export", "export2"})
        for (const auto& entry : std::filesystem::directory_iterator(std::string(FW_FIXTURES) + "/" + folder))
            if (entry.path().extension() == ".txt")
                texts.push_back(ReadBytes(entry.path().string()));
    return texts;
}

class Damage {
public:
    explicit Damage(unsigned seed) : rng_(seed) {}

    std::size_t pick(std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(rng_); }

    // Lines removed, doubled, swapped or put in; brackets dropped or added; a character typed in
    // or taken out; the end cut off.
    std::string apply(const std::string& text)
    {
        std::vector<std::string> lines;
        std::string cur;
        for (char c : text) {
            cur += c;
            if (c == '\n')
                lines.push_back(std::exchange(cur, {}));
        }
        if (!cur.empty())
            lines.push_back(cur);
        static const char kTyped[] = "()\";,:\r\n \t-.0123456789aP";
        static const char* const kStatements[] = {
            "Area( 5 1 1 6 )", "EndA", "End16", "Area16N( 1 )", "Points( 0", "VecPoints( 2", ")",
            "Poly( a 0 1 2 )", "ShadedTexPoly( a", " 3 0 1", " 0 0 0 ;0", "Jump( :A )", ":A",
            "macro( \"x.api\"", " \"a(b ;User param3", " 1,5 ;Range (km)", "VOR( 108,5 45 )", "DrawToPt( x )",
            "Perspektive", "( 1 )", "\t1 2 3", "1,5 2", "\"abc", "; a ( \"", "-1 2.5 3", "1 2 3 4 5 6"};
        for (std::size_t m = 1 + pick(6); m > 0 && !lines.empty(); --m) {
            std::string& line = lines[pick(lines.size())];
            switch (pick(7)) {
            case 0: lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(&line - lines.data())); break;
            case 1: line.insert(pick(line.size() + 1), 1, kTyped[pick(sizeof kTyped - 1)]); break;
            case 2: if (!line.empty()) line.erase(pick(line.size()), 1); break;
            case 3: line.insert(0, std::string(kStatements[pick(std::size(kStatements))]) + "\r\n"); break;
            case 4: std::replace(line.begin(), line.end(), pick(2) ? '(' : ')', ' '); break;
            case 5: std::swap(line, lines[pick(lines.size())]); break;
            case 6: line.insert(pick(line.size() + 1), pick(2) ? ")" : "("); break;
            }
        }
        std::string out;
        for (const std::string& l : lines)
            out += l;
        if (pick(4) == 0 && !out.empty())
            out.pop_back();
        return out;
    }

    // A table and a textured polygon whose rows are drawn from digits, points, signs and blanks.
    std::string rows()
    {
        static const char kRow[] = " \t-.0123456789 ";
        std::string s = pick(2) ? "Area( 5 1 1 6 )\r\n" : "";
        s += pick(2) ? "Points( 0\r\n" : "VecPoints( 0\r\n";
        for (std::size_t r = pick(6) + 1; r > 0; --r) {
            for (std::size_t n = pick(80); n > 0; --n)
                s += kRow[pick(sizeof kRow - 1)];
            static const char* const kEnds[] = {"\r\n", "\r\n", " ;3\r\n", ";-.5\r\n"};
            s += kEnds[pick(std::size(kEnds))];
        }
        s += ")\r\nShadedTexPoly( a\r\n";
        for (std::size_t r = pick(4) + 1; r > 0; --r) {
            for (std::size_t n = pick(12); n > 0; --n)
                s += kRow[pick(sizeof kRow - 1)];
            s += "\r\n";
        }
        s += ")\r\nPoly( a " + std::to_string(pick(12)) + " -1 )\r\nEndA\r\n";
        return s;
    }

private:
    std::mt19937 rng_;
};

TEST(ScasmCheckerEquivalence, GoldenExportsAndDamagedCopies)
{
    const std::vector<std::string> texts = GoldenTexts();
    ASSERT_GT(texts.size(), 30u);
    Damage damage(20261124);
    for (const std::string& text : texts) {
        ASSERT_TRUE(SameAsBefore(text));
        for (int round = 0; round < 40; ++round)
            ASSERT_TRUE(SameAsBefore(damage.apply(text))) << "round " << round;
    }
}

TEST(ScasmCheckerEquivalence, RowsOfNumbers)
{
    Damage damage(7);
    for (int round = 0; round < 2000; ++round)
        ASSERT_TRUE(SameAsBefore(damage.rows())) << "round " << round;
}

} // namespace
} // namespace fw::test
