#include "export/ScasmCheck.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <thread>
#include <unordered_set>
#include <utility>

namespace fw {

namespace {

// The check follows every edit over the whole export, half a million lines at the format's limits:
// each line is read once for its comment, brackets and commas, and the words of a statement only
// where a rule reads them. Nothing is copied; every view points into the caller's text.

// One line without its comment. Both parts are views into the line, which outlives the check.
struct CodeLine {
    int number = 0;
    std::string_view code;
    std::string_view comment;
    bool quote = false; // the code holds a '"': its words and commas need the quote-aware reading
    bool comma = false; // the code holds a ','
};

// A quote left open at the end of a line (a macro parameter cut at its column) opens no string.
std::size_t UnmatchedQuote(std::string_view raw)
{
    const auto count = std::count(raw.begin(), raw.end(), '"');
    return count % 2 == 1 ? raw.rfind('"') : std::string_view::npos;
}

void MarkCode(CodeLine& line)
{
    line.quote = line.code.find('"') != std::string_view::npos;
    line.comma = line.code.find(',') != std::string_view::npos;
}

// The line's comment starts at the first ";" outside quotes.
CodeLine SplitComment(std::string_view raw, int number)
{
    CodeLine out;
    out.number = number;
    out.code = raw;
    const std::size_t first = raw.find_first_of(";\"");
    if (first == std::string_view::npos || raw[first] == ';') {
        // No quote before the first ";": nothing is quoted up to there.
        if (first != std::string_view::npos) {
            out.code = raw.substr(0, first);
            out.comment = raw.substr(first);
        }
        MarkCode(out);
        return out;
    }
    bool quoted = false;
    const std::size_t unmatched = UnmatchedQuote(raw);
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const char c = raw[i];
        if (c == '"' && i != unmatched)
            quoted = !quoted;
        if (c == ';' && !quoted) {
            out.code = raw.substr(0, i);
            out.comment = raw.substr(i);
            break;
        }
    }
    MarkCode(out);
    return out;
}

// Words split at blanks outside quotes; a bracket ends the word it stands in. Views into code.
using TokenList = std::vector<std::string_view>;

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

void QuotedTokens(std::string_view code, TokenList& out)
{
    std::size_t begin = 0;
    std::size_t length = 0;
    bool quoted = false;
    auto flush = [&] {
        if (length)
            out.push_back(code.substr(begin, length));
        length = 0;
    };
    const std::size_t unmatched = UnmatchedQuote(code);
    for (std::size_t i = 0; i < code.size(); ++i) {
        const char c = code[i];
        if (c == '"' && i != unmatched)
            quoted = !quoted;
        if (!quoted && IsBlank(c)) {
            flush();
            continue;
        }
        if (!length)
            begin = i;
        ++length;
        if (!quoted && (c == '(' || c == ')'))
            flush();
    }
    flush();
}

// The same words of code without quotes, appended to out.
void PlainTokens(std::string_view code, TokenList& out)
{
    const char* const s = code.data();
    const std::size_t n = code.size();
    std::size_t i = 0;
    while (i < n) {
        while (i < n && IsBlank(s[i]))
            ++i;
        if (i == n)
            break;
        const std::size_t begin = i;
        while (i < n && !IsBlank(s[i]) && s[i] != '(' && s[i] != ')')
            ++i;
        if (i < n && (s[i] == '(' || s[i] == ')'))
            ++i;
        out.emplace_back(s + begin, i - begin);
    }
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsInteger(std::string_view t)
{
    std::size_t i = (!t.empty() && t[0] == '-') ? 1 : 0;
    if (i >= t.size())
        return false;
    return std::all_of(t.begin() + static_cast<std::ptrdiff_t>(i), t.end(), IsDigit);
}

bool IsNumber(std::string_view t)
{
    std::size_t i = (!t.empty() && t[0] == '-') ? 1 : 0;
    bool digit = false;
    bool point = false;
    for (; i < t.size(); ++i) {
        if (IsDigit(t[i]))
            digit = true;
        else if (t[i] == '.' && !point)
            point = true;
        else
            return false;
    }
    return digit;
}

// The value of a word IsInteger accepts, shorter than 9 characters.
long SmallInteger(std::string_view t)
{
    const bool negative = t[0] == '-';
    long value = 0;
    for (std::size_t i = negative ? 1 : 0; i < t.size(); ++i)
        value = value * 10 + (t[i] - '0');
    return negative ? -value : value;
}

// What the rows of a table and of a textured polygon read of their words.
struct Row {
    std::size_t words = 0;
    bool numbers = true; // every word a number
    std::string_view first;
};

// The row of code without quotes, read as PlainTokens cuts it.
Row PlainRow(std::string_view code)
{
    Row row;
    const char* const s = code.data();
    const std::size_t n = code.size();
    std::size_t i = 0;
    while (true) {
        while (i < n && IsBlank(s[i]))
            ++i;
        if (i == n)
            return row;
        const std::size_t begin = i;
        // A number: a sign, then digits with at most one point.
        bool digit = false;
        bool point = false;
        if (s[i] == '-')
            ++i;
        for (; i < n; ++i) {
            if (s[i] >= '0' && s[i] <= '9')
                digit = true;
            else if (s[i] == '.' && !point)
                point = true;
            else
                break;
        }
        if (i < n && !IsBlank(s[i])) {
            // Something else goes on in the word: it is no number.
            digit = false;
            while (i < n && !IsBlank(s[i]) && s[i] != '(' && s[i] != ')')
                ++i;
            if (i < n && (s[i] == '(' || s[i] == ')'))
                ++i;
        }
        if (row.words++ == 0)
            row.first = std::string_view(s + begin, i - begin);
        row.numbers = row.numbers && digit;
    }
}

// The first word of a row; empty when it has none.
std::string_view FirstToken(const CodeLine& line, TokenList& scratch)
{
    if (line.quote) {
        scratch.clear();
        QuotedTokens(line.code, scratch);
        return scratch.empty() ? std::string_view{} : scratch[0];
    }
    const char* const s = line.code.data();
    const std::size_t n = line.code.size();
    std::size_t i = 0;
    while (i < n && IsBlank(s[i]))
        ++i;
    const std::size_t begin = i;
    while (i < n && !IsBlank(s[i]) && s[i] != '(' && s[i] != ')')
        ++i;
    if (i < n && (s[i] == '(' || s[i] == ')'))
        ++i;
    return std::string_view(s + begin, i - begin);
}

Row RowOf(const CodeLine& line, TokenList& scratch)
{
    if (!line.quote)
        return PlainRow(line.code);
    scratch.clear();
    QuotedTokens(line.code, scratch);
    Row row;
    row.words = scratch.size();
    row.numbers = std::all_of(scratch.begin(), scratch.end(), IsNumber);
    if (!scratch.empty())
        row.first = scratch[0];
    return row;
}

void AppendTokens(const CodeLine& line, TokenList& out)
{
    if (line.quote)
        QuotedTokens(line.code, out);
    else
        PlainTokens(line.code, out);
}

bool HasDecimalComma(std::string_view code)
{
    if (code.find(',') == std::string_view::npos)
        return false;
    bool quoted = false;
    const std::size_t unmatched = UnmatchedQuote(code);
    for (std::size_t i = 0; i < code.size(); ++i) {
        if (code[i] == '"' && i != unmatched)
            quoted = !quoted;
        if (!quoted && code[i] == ',' && i > 0 && i + 1 < code.size() &&
            std::isdigit(static_cast<unsigned char>(code[i - 1])) &&
            std::isdigit(static_cast<unsigned char>(code[i + 1])))
            return true;
    }
    return false;
}

// What a statement's name makes of it.
enum class Kind {
    Unknown,
    Other, // known, with no rule of its own
    Area,
    Area16N,
    EndA,
    End16,
    LabelUser, // its label arguments must be defined in the same area
    Points,
    VecPoints,
    Poly,
    MoveDraw,
    TexPoly,
    Vor,
    Macro,
};

// Every statement the export writes; anything else is a fault of the writer.
struct KnownName {
    std::string_view name;
    Kind kind;
};
// The most frequent first: the walls of tree lines and forests, lines and roads.
constexpr KnownName kKnown[] = {
    {"ShadedTexPoly", Kind::TexPoly}, {"DotLine", Kind::Other},       {"RoadCont", Kind::Other},
    {"Poly", Kind::Poly},             {"RefPoint", Kind::LabelUser},  {"RGBSColor", Kind::Other},
    {"LoadBitmap", Kind::Other},      {"MoveToPt", Kind::MoveDraw},   {"DrawToPt", Kind::MoveDraw},
    {"TexPoly", Kind::TexPoly},       {"Jump", Kind::LabelUser},      {"Points", Kind::Points},
    {"Area", Kind::Area},             {"EndA", Kind::EndA},           {"LineColor", Kind::Other},
    {"PerspectiveCall", Kind::LabelUser}, {"VecPoints", Kind::VecPoints}, {"IfVarRange", Kind::LabelUser},
    {"LayerCall", Kind::LabelUser},   {"ShadedPoly", Kind::Poly},     {"Return", Kind::Other},
    {"Perspective", Kind::Other},     {"macro", Kind::Macro},         {"Runway", Kind::Other},
    {"VOR", Kind::Vor},               {"ShadowCall", Kind::LabelUser}, {"RRStart", Kind::Other},
    {"NDB", Kind::Other},             {"MenuEntry", Kind::Other},     {"GenExcl", Kind::Other},
    {"IfVarAnd", Kind::LabelUser},    {"Set", Kind::Other},           {"Header", Kind::Other},
    {"LatRange", Kind::Other},        {"CopyRight", Kind::Other},     {"Menu", Kind::Other},
    {"Area16N", Kind::Area16N},       {"Elevation", Kind::Other},     {"End16", Kind::End16},
    {"SurfaceType", Kind::Other},     {"ConcavePoly", Kind::Other},   {"Dot", Kind::Other},
    {"ILS", Kind::Other},             {"IM", Kind::Other},            {"MM", Kind::Other},
    {"OM", Kind::Other},
};

Kind KindOf(std::string_view name)
{
    for (const KnownName& k : kKnown)
        if (k.name.size() == name.size() && k.name[0] == name[0] && k.name == name)
            return k.kind;
    return Kind::Unknown;
}

std::string_view CloserName(Kind closer) { return closer == Kind::EndA ? "EndA" : "End16"; }

struct Scope {
    int openLine = 0;
    Kind closer = Kind::Unknown; // EndA or End16
    std::unordered_set<std::string_view> defined;
    std::vector<std::pair<int, std::string_view>> used;
    long points = 0; // indices 0 .. points-1 are in the table
};

// What a byte is to the first reading of a line.
enum : unsigned char { kPlain, kSemicolon, kQuote, kOpen, kClose, kComma, kLineFeed };

constexpr std::array<unsigned char, 256> ByteClasses()
{
    std::array<unsigned char, 256> c{};
    c[static_cast<unsigned char>(';')] = kSemicolon;
    c[static_cast<unsigned char>('"')] = kQuote;
    c[static_cast<unsigned char>('(')] = kOpen;
    c[static_cast<unsigned char>(')')] = kClose;
    c[static_cast<unsigned char>(',')] = kComma;
    c[static_cast<unsigned char>('\n')] = kLineFeed;
    return c;
}
constexpr std::array<unsigned char, 256> kByteClass = ByteClasses();

class Checker {
public:
    std::vector<ScasmProblem> problems;

    Checker() { scopes_.emplace_back(); }

    // One line of a list.
    void line(std::string_view raw, int number)
    {
        if (macroLine(raw, number))
            return;
        bool comma = false;
        const char* const end = raw.data() + raw.size();
        const char* const stop = scanCode<false>(raw.data(), end, number, comma);
        if (stop < end && *stop == '"') {
            quotedLine(raw, number);
            return;
        }
        take(number, std::string_view(raw.data(), static_cast<std::size_t>(stop - raw.data())),
             std::string_view(stop, static_cast<std::size_t>(end - stop)), comma);
    }

    // The line of a text that starts at p, ended by LF (a CR before it dropped) or by the text's
    // end. Returns where the next line starts; number is the line's, and the last line's of the
    // rows passed over with it.
    // Inlined into the loop over the lines, which keeps its state in registers.
    [[gnu::always_inline]] const char* text(const char* p, const char* end, int& number)
    {
        if (!lines_.empty() && kind_ == Kind::Macro) {
            const char* lf = FindLineFeed(p, end);
            macroLine(Line(p, lf, end), number);
            return lf < end ? lf + 1 : end;
        }
        if (lines_.empty()) {
            statementProblems_ = problems.size();
            rows_ = {};
        } else if (lines_.size() == 1 && kind_ == Kind::TexPoly) {
            if (const char* next = repeatedRows(p, end, number))
                return next;
            rows_ = {p, number, depth_};
        }
        const char* const next = codeLine(p, end, number);
        if (rows_.begin && lines_.empty())
            seenRows(next, number);
        return next;
    }

    const char* codeLine(const char* p, const char* end, int number)
    {
        bool comma = false;
        const char* const stop = scanCode<true>(p, end, number, comma);
        if (stop == end || *stop == '\n') {
            take(number, Line(p, stop, end), {}, comma);
            return stop < end ? stop + 1 : end;
        }
        const char* lf = FindLineFeed(stop, end);
        if (*stop == '"') {
            quotedLine(Line(p, lf, end), number);
        } else {
            take(number, std::string_view(p, static_cast<std::size_t>(stop - p)), Line(stop, lf, end), comma);
        }
        return lf < end ? lf + 1 : end;
    }

    void finish()
    {
        if (!lines_.empty())
            add(lines_.front().number, "the brackets of \"" + std::string(name_) + "(\" are not closed");
        while (scopes_.size() > 1) {
            add(scopes_.back().openLine, "\"Area\" without \"" + std::string(CloserName(scopes_.back().closer)) + "\"");
            closeScope();
        }
        closeScope();
        std::stable_sort(problems.begin(), problems.end(),
                         [](const ScasmProblem& a, const ScasmProblem& b) { return a.line < b.line; });
    }

    // This checker started at a line of the text with nothing open and read on to its end; first
    // read the text before that line. When first ends there with nothing open either, and this one
    // read nothing that first's outermost area held (its point table, the labels it defined), this
    // one takes first's problems and area over and reads as one checker would have. False, with
    // nothing changed, when that is not so.
    bool takeOver(Checker& first)
    {
        if (first.depth_ != 0 || !first.lines_.empty() || first.scopes_.size() != 1 || rootPoints_)
            return false;
        Scope& before = first.scopes_.front();
        Scope& root = scopes_.front();
        for (const std::string_view label : root.defined)
            if (before.defined.count(label))
                return false;
        root.defined.insert(before.defined.begin(), before.defined.end());
        before.used.insert(before.used.end(), root.used.begin(), root.used.end());
        root.used = std::move(before.used);
        first.problems.insert(first.problems.end(), std::make_move_iterator(problems.begin()),
                              std::make_move_iterator(problems.end()));
        problems = std::move(first.problems);
        return true;
    }

private:
    std::vector<Scope> scopes_;
    int depth_ = 0;
    bool rootPoints_ = false; // a statement of the outermost area read or set its point table
    // Of the statement being read: the problems before it, and where a textured polygon's rows start.
    std::size_t statementProblems_ = 0;
    struct RowsStart {
        const char* begin = nullptr;
        int line = 0;
        int depth = 0; // after the head
    } rows_;
    // The rows of the last textured polygon read without a problem, to the end of its last line.
    struct SeenRows {
        std::string_view bytes;
        int lines = 0;
        int depth = 0;
        long points = 0;
    } seen_;
    // The statement being read: its name, what the name makes of it, and its lines so far.
    std::string_view name_;
    Kind kind_ = Kind::Unknown;
    std::vector<CodeLine> lines_;
    TokenList tokens_; // the words of one statement or row, kept for the next

    // From p to the line's end.
    static std::string_view Line(const char* p, const char* lf, const char* end)
    {
        std::size_t n = static_cast<std::size_t>(lf - p);
        if (lf < end && n > 0 && p[n - 1] == '\r')
            --n;
        return {p, n};
    }

    static const char* FindLineFeed(const char* p, const char* end)
    {
        // Most comments are a few characters: look at those before calling.
        for (int k = 0; k < 8 && p < end; ++k, ++p)
            if (*p == '\n')
                return p;
        if (p == end)
            return end;
        const void* lf = std::memchr(p, '\n', static_cast<std::size_t>(end - p));
        return lf ? static_cast<const char*>(lf) : end;
    }

    // The first reading of a line: its brackets and whether it has a comma, up to its comment, a
    // quote or (in a text) its end. Returns where it stopped. A quote before the comment stops it
    // with nothing of the line kept: the quote-aware reading starts over on the line.
    template <bool InText>
    const char* scanCode(const char* p, const char* end, int number, bool& comma)
    {
        const int depth = depth_;
        const std::size_t reported = problems.size();
        // Returns true when the reading stops at the byte.
        auto at = [&](const char* q) {
            const char c = *q;
            if (c == '(') {
                ++depth_;
                return false;
            }
            if (c == ')') {
                if (depth_ == 0)
                    add(number, "\")\" without an open bracket");
                else
                    --depth_;
                return false;
            }
            if (c == ',') {
                comma = true;
                return false;
            }
            if (c == '"') {
                depth_ = depth;
                problems.resize(reported);
                return true;
            }
            return c != '\n' || InText; // the comment's ";" or the line's end
        };
        for (; p < end; ++p)
            if (kByteClass[static_cast<unsigned char>(*p)] != kPlain && at(p))
                return p;
        return p;
    }

    // The export writes each face of a tree wall twice, once for either side: the same rows under
    // another head. The rows of a textured polygon read without a problem are kept, and rows of the
    // same bytes read from the same bracket depth against as many points find nothing either, and
    // close the polygon where those did: they are passed over. Null when that is not so.
    const char* repeatedRows(const char* p, const char* end, int& number)
    {
        const std::string_view seen = seen_.bytes;
        if (seen.empty() || depth_ != seen_.depth || scopes_.back().points != seen_.points ||
            static_cast<std::size_t>(end - p) < seen.size() || std::memcmp(p, seen.data(), seen.size()) != 0)
            return nullptr;
        // What the statement reads of its head.
        checkComma(lines_.front(), false);
        if (scopes_.size() == 1)
            rootPoints_ = true;
        lines_.clear();
        depth_ = 0;
        number += seen_.lines - 1;
        return p + seen.size();
    }

    // A textured polygon closed on the line that ends at next.
    void seenRows(const char* next, int number)
    {
        if (problems.size() == statementProblems_)
            seen_ = {std::string_view(rows_.begin, static_cast<std::size_t>(next - rows_.begin)),
                     number - rows_.line + 1, rows_.depth, scopes_.back().points};
        else
            seen_ = {};
        rows_ = {};
    }

    // A line of a macro, which may be a user parameter that the brackets don't read. False when no
    // macro is being read.
    bool macroLine(std::string_view raw, int number)
    {
        if (lines_.empty() || kind_ != Kind::Macro)
            return false;
        const CodeLine& l = lines_.emplace_back(SplitComment(raw, number));
        if (l.comment.rfind(";User param", 0) != 0) {
            brackets(l);
            take();
        }
        return true;
    }

    void quotedLine(std::string_view raw, int number)
    {
        brackets(lines_.emplace_back(SplitComment(raw, number)));
        take();
    }

    // The brackets of code outside quotes.
    void brackets(const CodeLine& l)
    {
        const std::string_view code = l.code;
        bool quoted = false;
        const std::size_t unmatched = l.quote ? UnmatchedQuote(code) : std::string_view::npos;
        for (std::size_t j = 0; j < code.size(); ++j) {
            const char c = code[j];
            if (c == '"' && j != unmatched)
                quoted = !quoted;
            if (quoted)
                continue;
            if (c == '(') {
                ++depth_;
            } else if (c == ')') {
                if (depth_ == 0)
                    add(l.number, "\")\" without an open bracket");
                else
                    --depth_;
            }
        }
    }

    // A line after its brackets: it starts or continues a statement, which ends with its brackets.
    // The line is written in place, where the statement keeps it.
    void take(int number, std::string_view code, std::string_view comment, bool comma)
    {
        CodeLine& l = lines_.emplace_back();
        l.number = number;
        l.code = code;
        l.comment = comment;
        l.comma = comma;
        take();
    }

    // The last line of lines_, after its brackets.
    void take()
    {
        if (lines_.size() == 1) {
            const std::string_view code = lines_.back().code;
            const std::string_view word = FirstWord(code);
            if (word.empty() && code.find_first_not_of(' ') == std::string_view::npos) {
                lines_.clear(); // a blank line or a comment
                return;
            }
            name_ = word;
            kind_ = word.empty() ? Kind::Unknown : KindOf(word);
        }
        if (depth_ == 0) {
            statement();
            lines_.clear();
        }
    }

    // The word before " " or "(", after the spaces that indent it; empty for a blank line.
    static std::string_view FirstWord(std::string_view code)
    {
        std::size_t b = 0;
        while (b < code.size() && code[b] == ' ')
            ++b;
        std::size_t e = b;
        while (e < code.size() && code[e] != ' ' && code[e] != '(')
            ++e;
        return code.substr(b, e - b);
    }

    void add(int line, std::string text) { problems.push_back({line, std::move(text)}); }

    void checkComma(const CodeLine& line, bool allowed)
    {
        if (!allowed && line.comma && HasDecimalComma(line.code))
            add(line.number, "decimal comma");
    }

    void closeScope()
    {
        Scope& s = scopes_.back();
        for (const auto& [line, label] : s.used)
            if (!s.defined.count(label))
                add(line, "label " + std::string(label) + " is not defined in its area");
        scopes_.pop_back();
    }

    // The VOR's frequency is the word after the bracket and may take the locale's separator; the
    // rest of the line keeps the point. True when the line has such a word.
    bool vorCommas(const CodeLine& l)
    {
        TokenList t;
        QuotedTokens(l.code, t);
        for (std::size_t j = 0; j < t.size(); ++j)
            if (!t[j].empty() && t[j].back() == '(' && j + 1 < t.size()) {
                const std::string rest(l.code);
                const std::size_t at = rest.find(t[j + 1], rest.find('(') + 1);
                const std::string without = rest.substr(0, at) + rest.substr(at + t[j + 1].size());
                CodeLine other = l;
                other.code = without;
                MarkCode(other);
                checkComma(other, false);
                return true;
            }
        return false;
    }

    void statement()
    {
        const std::vector<CodeLine>& lines = lines_;
        const int first = lines.front().number;
        for (std::size_t k = 0; k < lines.size(); ++k) {
            const CodeLine& l = lines[k];
            // The two places that take the locale's separator: a VOR's frequency, a macro's range in km.
            bool allowed = kind_ == Kind::Vor && k == 0 && vorCommas(l);
            if (kind_ == Kind::Macro &&
                (l.comment.rfind(";Range (km)", 0) == 0 || l.comment.rfind(";User param", 0) == 0))
                allowed = true;
            checkComma(l, allowed);
        }

        // The words of the whole statement, for the statements that read them. A label stands
        // alone on its line, where no known statement's name stands.
        TokenList& tokens = tokens_;
        tokens.clear();
        if ((lines.size() == 1 && kind_ == Kind::Unknown) || kind_ == Kind::Poly || kind_ == Kind::MoveDraw ||
            kind_ == Kind::LabelUser)
            for (const auto& l : lines)
                AppendTokens(l, tokens);

        Scope& scope = scopes_.back();
        if (scopes_.size() == 1 && (kind_ == Kind::Points || kind_ == Kind::VecPoints || kind_ == Kind::Poly ||
                                    kind_ == Kind::MoveDraw || kind_ == Kind::TexPoly))
            rootPoints_ = true;
        if (lines.size() == 1 && tokens.size() == 1 && tokens[0].size() > 1 && tokens[0][0] == ':') {
            if (!scope.defined.insert(tokens[0]).second)
                add(first, "label " + std::string(tokens[0]) + " is defined twice in its area");
            return;
        }
        switch (kind_) {
        case Kind::Unknown:
            add(first, "unknown statement \"" + std::string(name_) + "\"");
            return;
        case Kind::Area:
        case Kind::Area16N: {
            Scope s;
            s.openLine = first;
            s.closer = kind_ == Kind::Area ? Kind::EndA : Kind::End16;
            scopes_.push_back(std::move(s));
            return;
        }
        case Kind::EndA:
        case Kind::End16:
            if (scopes_.size() < 2 || scope.closer != kind_)
                add(first, "\"" + std::string(name_) + "\" without its area");
            else
                closeScope();
            return;
        case Kind::LabelUser:
            for (const auto& t : tokens)
                if (t.size() > 1 && t[0] == ':')
                    scope.used.emplace_back(first, t);
            return;
        case Kind::Points:
            points(scope, 3);
            return;
        case Kind::VecPoints:
            points(scope, 6);
            return;
        case Kind::Poly:
            // The flags word after the bracket ("a", "ai", "au"), then the indices.
            for (std::size_t k = 2; k < tokens.size(); ++k)
                if (tokens[k] != ")") {
                    if (IsInteger(tokens[k]))
                        usePoint(first, scope, tokens[k]);
                    else
                        add(first, "\"" + std::string(tokens[k]) + "\" is no point index");
                }
            return;
        case Kind::MoveDraw:
            if (tokens.size() != 3 || !IsInteger(tokens[1]))
                add(first, "\"" + std::string(name_) + "(\" takes one point index");
            else
                usePoint(first, scope, tokens[1]);
            return;
        case Kind::TexPoly:
            for (std::size_t k = 1; k < lines.size(); ++k)
                rowIndex(lines[k], scope, tokens);
            return;
        default:
            return;
        }
    }

    // A row holds X, Y and Z, and for a vector table the three parts of the vector.
    void points(Scope& scope, std::size_t columns)
    {
        const std::vector<CodeLine>& lines = lines_;
        TokenList& t = tokens_;
        t.clear();
        AppendTokens(lines[0], t);
        long start = 0;
        if (t.size() >= 2 && IsInteger(t[1]) && t[1].size() < 9)
            start = SmallInteger(t[1]);
        // A table from 0 replaces the points before it; any other start continues them.
        if (start > scope.points || start < 0)
            add(lines[0].number, "the point table starts at " + std::to_string(start) + " after " +
                                     std::to_string(scope.points) + " points");
        long rows = 0;
        for (std::size_t k = 1; k < lines.size(); ++k) {
            const Row row = RowOf(lines[k], t);
            if (!row.words || row.first == ")")
                continue;
            ++rows;
            if (row.words != columns || !row.numbers)
                add(lines[k].number, "a row of \"" + std::string(name_) + "(\" needs " + std::to_string(columns) +
                                         " numbers");
        }
        scope.points = start + rows;
    }

    // A row of a textured polygon starts with the index of its point, when its first word is an
    // integer. Without quotes the word is read and its value taken in one pass.
    void rowIndex(const CodeLine& l, const Scope& scope, TokenList& scratch)
    {
        if (l.quote) {
            const std::string_view word = FirstToken(l, scratch);
            if (!word.empty() && IsInteger(word))
                usePoint(l.number, scope, word);
            return;
        }
        const char* const s = l.code.data();
        const std::size_t n = l.code.size();
        std::size_t i = 0;
        while (i < n && IsBlank(s[i]))
            ++i;
        const std::size_t begin = i;
        if (i < n && s[i] == '-')
            ++i;
        const std::size_t digits = i;
        std::uint64_t value = 0; // wraps on long words, whose value is never taken
        for (; i < n && IsDigit(s[i]); ++i)
            value = value * 10 + static_cast<std::uint64_t>(s[i] - '0');
        if (i == digits || (i < n && !IsBlank(s[i])))
            return; // no digit, or the word goes on with something else
        const std::string_view word(s + begin, i - begin);
        const long magnitude = static_cast<long>(value);
        const long index = word.size() < 9 ? (s[begin] == '-' ? -magnitude : magnitude) : -1;
        if (index < 0 || index >= scope.points) [[unlikely]]
            missingPoint(l.number, word);
    }

    void usePoint(int line, const Scope& scope, std::string_view token)
    {
        const long index = token.size() < 9 ? SmallInteger(token) : -1;
        if (index < 0 || index >= scope.points) [[unlikely]]
            missingPoint(line, token);
    }

    // Apart, so that the reading of every index stays small.
    [[gnu::noinline, gnu::cold]] void missingPoint(int line, std::string_view token)
    {
        add(line, "point " + std::string(token) + " is not in the point table");
    }
};

// The lines from p to end, the first of them numbered number + 1. Returns the last one's number.
int ReadLines(Checker& c, const char* p, const char* end, int number)
{
    while (p < end)
        p = c.text(p, end, ++number);
    return number;
}

} // namespace

std::vector<ScasmProblem> CheckScasm(const std::vector<std::string>& lines)
{
    Checker c;
    int number = 0;
    for (const std::string& l : lines)
        c.line(l, ++number);
    c.finish();
    return std::move(c.problems);
}

std::vector<ScasmProblem> CheckScasmText(std::string_view text)
{
    Checker c;
    ReadLines(c, text.data(), text.data() + text.size(), 0);
    c.finish();
    return std::move(c.problems);
}

struct ScasmTextCheck::Parts {
    std::string_view text;
    std::size_t split = 0;
    Checker second;
    bool secondRead = false;
    std::jthread thread;
};

ScasmTextCheck::ScasmTextCheck(std::string_view text, std::size_t split) : parts_(std::make_unique<Parts>())
{
    Parts& parts = *parts_;
    parts.text = text;
    if (split == 0 || split >= text.size() || text[split - 1] != '\n')
        return;
    parts.split = split;
    parts.thread = std::jthread([&parts] {
        try {
            const char* const begin = parts.text.data();
            const char* const split = begin + parts.split;
            ReadLines(parts.second, split, begin + parts.text.size(), static_cast<int>(std::count(begin, split, '\n')));
            parts.secondRead = true;
        } catch (...) {
            // The first part's checker reads on in its place.
        }
    });
}

ScasmTextCheck::~ScasmTextCheck() = default;

std::vector<ScasmProblem> ScasmTextCheck::problems()
{
    Parts& parts = *parts_;
    const char* const begin = parts.text.data();
    const char* const end = begin + parts.text.size();
    const char* const split = parts.split ? begin + parts.split : end;
    Checker first;
    // The first part's lines end at the split: nothing of the second is read with them.
    const int number = ReadLines(first, begin, split, 0);
    if (parts.thread.joinable())
        parts.thread.join();
    if (parts.secondRead && parts.second.takeOver(first)) {
        parts.second.finish();
        return std::move(parts.second.problems);
    }
    ReadLines(first, split, end, number);
    first.finish();
    return std::move(first.problems);
}

std::string FormatProblems(const std::vector<ScasmProblem>& problems)
{
    std::string out;
    for (const auto& p : problems)
        out += "line " + std::to_string(p.line) + ": " + p.text + "\n";
    return out;
}

} // namespace fw
