// The structure check as it was before it read each line once: the oracle the fast one must equal,
// problem for problem. Kept as it was, apart from its names.
#include "ScasmCheckBefore.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <string_view>

namespace fw::test::before {

namespace {

// One line without its comment, and whether a comma stands between two digits outside quotes.
// Both parts are views into the line, which outlives the check.
struct CodeLine {
    int number = 0;
    std::string_view code;
    std::string_view comment;
};

// A quote left open at the end of a line (a macro parameter cut at its column) opens no string.
std::size_t UnmatchedQuote(std::string_view raw)
{
    const auto count = std::count(raw.begin(), raw.end(), '"');
    return count % 2 == 1 ? raw.rfind('"') : std::string_view::npos;
}

CodeLine SplitComment(std::string_view raw, int number)
{
    CodeLine out;
    out.number = number;
    out.code = raw;
    if (raw.find('"') == std::string_view::npos) {
        // No string on the line: the comment starts at the first ";".
        const std::size_t at = raw.find(';');
        if (at != std::string_view::npos) {
            out.code = raw.substr(0, at);
            out.comment = raw.substr(at);
        }
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
    return out;
}

// Words split at blanks outside quotes; a bracket ends the word it stands in. Views into code.
using TokenList = std::vector<std::string_view>;

void Tokens(std::string_view code, TokenList& out)
{
    out.clear();
    std::size_t begin = 0;
    std::size_t length = 0;
    bool quoted = false;
    auto flush = [&] {
        if (length)
            out.push_back(code.substr(begin, length));
        length = 0;
    };
    const std::size_t unmatched = code.find('"') == std::string_view::npos ? std::string_view::npos : UnmatchedQuote(code);
    for (std::size_t i = 0; i < code.size(); ++i) {
        const char c = code[i];
        if (c == '"' && i != unmatched)
            quoted = !quoted;
        if (!quoted && (c == ' ' || c == '\t')) {
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

TokenList Tokens(std::string_view code)
{
    TokenList out;
    Tokens(code, out);
    return out;
}

bool IsInteger(std::string_view t)
{
    std::size_t i = (!t.empty() && t[0] == '-') ? 1 : 0;
    if (i >= t.size())
        return false;
    return std::all_of(t.begin() + static_cast<std::ptrdiff_t>(i), t.end(),
                       [](char c) { return c >= '0' && c <= '9'; });
}

bool IsNumber(std::string_view t)
{
    std::size_t i = (!t.empty() && t[0] == '-') ? 1 : 0;
    bool digit = false;
    bool point = false;
    for (; i < t.size(); ++i) {
        if (t[i] >= '0' && t[i] <= '9')
            digit = true;
        else if (t[i] == '.' && !point)
            point = true;
        else
            return false;
    }
    return digit;
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

// A line of a macro's user parameter: the text the user typed, quoted and cut at its column, the
// closing quote cut with it when the text is long. Its brackets and commas are the user's.
bool IsUserParameter(std::string_view statement, const CodeLine& line)
{
    return statement == "macro" && line.comment.rfind(";User param", 0) == 0;
}

// A statement: its name (the word before "(" or the bare word) and its lines.
struct Statement {
    std::string_view name;
    std::vector<CodeLine> lines;
    int first() const { return lines.front().number; }
};

// Statements whose label arguments must be defined in the same area.
const std::set<std::string, std::less<>> kLabelUsers = {"Jump",     "IfVarAnd",        "IfVarRange", "RefPoint",
                                           "LayerCall", "PerspectiveCall", "ShadowCall"};

// Every statement the export writes; anything else is a fault of the writer.
const std::set<std::string, std::less<>> kKnown = {
    "Set",       "Header",      "LatRange",   "CopyRight",       "Menu",       "MenuEntry",  "Area",
    "EndA",      "Area16N",     "Elevation",  "End16",           "SurfaceType", "GenExcl",   "Points",
    "VecPoints", "Poly",        "ShadedPoly", "TexPoly",         "ShadedTexPoly", "ConcavePoly", "LoadBitmap",
    "RGBSColor", "LineColor",   "RRStart",    "RoadCont",        "DotLine",    "Dot",        "Jump",
    "IfVarAnd",  "IfVarRange",  "RefPoint",   "LayerCall",       "PerspectiveCall", "ShadowCall", "Perspective",
    "Return",    "MoveToPt",    "DrawToPt",   "Runway",          "ILS",        "IM",         "MM",
    "OM",        "VOR",         "NDB",        "macro"};

struct Scope {
    int openLine = 0;
    std::string closer; // "EndA" or "End16"
    std::set<std::string, std::less<>> defined;
    std::vector<std::pair<int, std::string>> used;
    long points = 0; // indices 0 .. points-1 are in the table
};

class Checker {
public:
    std::vector<ScasmProblem> problems;

    void run(const std::vector<std::string_view>& raw)
    {
        scopes_.push_back(Scope{});
        Statement cur;
        int depth = 0;
        for (std::size_t i = 0; i < raw.size(); ++i) {
            CodeLine line = SplitComment(raw[i], static_cast<int>(i) + 1);
            if (!cur.lines.empty() && IsUserParameter(cur.name, line)) {
                // Inside the statement's brackets, which the line neither opens nor closes.
                cur.lines.push_back(line);
                continue;
            }
            bool quoted = false;
            bool sawOpen = false;
            std::string_view name;
            const std::size_t unmatched = UnmatchedQuote(line.code);
            for (std::size_t j = 0; j < line.code.size(); ++j) {
                const char c = line.code[j];
                if (c == '"' && j != unmatched)
                    quoted = !quoted;
                if (quoted)
                    continue;
                if (c == '(') {
                    if (depth == 0 && !sawOpen)
                        name = FirstWord(line.code);
                    sawOpen = true;
                    ++depth;
                } else if (c == ')') {
                    if (depth == 0) {
                        add(line.number, "\")\" without an open bracket");
                        continue;
                    }
                    --depth;
                }
            }
            if (cur.lines.empty()) {
                const std::string_view word = sawOpen ? name : FirstWord(line.code);
                if (word.empty() && line.code.find_first_not_of(' ') == std::string_view::npos) {
                    checkComma(line, false);
                    continue;
                }
                cur.name = word;
            }
            cur.lines.push_back(line);
            if (depth == 0) {
                statement(cur);
                cur = Statement{};
            }
        }
        if (!cur.lines.empty())
            add(cur.first(), "the brackets of \"" + std::string(cur.name) + "(\" are not closed");
        while (scopes_.size() > 1) {
            add(scopes_.back().openLine, "\"Area\" without \"" + scopes_.back().closer + "\"");
            closeScope();
        }
        closeScope();
        std::stable_sort(problems.begin(), problems.end(),
                         [](const ScasmProblem& a, const ScasmProblem& b) { return a.line < b.line; });
    }

private:
    std::vector<Scope> scopes_;
    TokenList scratch_; // the words of one row, kept for the next

    static std::string_view FirstWord(std::string_view code)
    {
        std::size_t b = code.find_first_not_of(' ');
        if (b == std::string_view::npos)
            return {};
        std::size_t e = code.find_first_of(" (", b);
        return code.substr(b, e == std::string_view::npos ? std::string_view::npos : e - b);
    }

    void add(int line, std::string text) { problems.push_back({line, std::move(text)}); }

    void checkComma(const CodeLine& line, bool allowed)
    {
        if (!allowed && HasDecimalComma(line.code))
            add(line.number, "decimal comma");
    }

    void closeScope()
    {
        Scope& s = scopes_.back();
        for (const auto& [line, label] : s.used)
            if (!s.defined.count(label))
                add(line, "label " + label + " is not defined in its area");
        scopes_.pop_back();
    }

    void statement(const Statement& st)
    {
        Scope& scope = scopes_.back();
        const std::string_view name = st.name;
        const bool isMacro = name == "macro";
        for (std::size_t k = 0; k < st.lines.size(); ++k) {
            const CodeLine& l = st.lines[k];
            // The two places that take the locale's separator: a VOR's frequency, a macro's range in km.
            bool allowed = false;
            if (name == "VOR" && k == 0) {
                // The frequency is the word after the bracket; the rest of the line keeps the point.
                auto t = Tokens(l.code);
                for (std::size_t j = 0; j < t.size(); ++j)
                    if (!t[j].empty() && t[j].back() == '(' && j + 1 < t.size()) {
                        const std::string rest(l.code);
                        const std::size_t at = rest.find(t[j + 1], rest.find('(') + 1);
                        const std::string without = rest.substr(0, at) + rest.substr(at + t[j + 1].size());
                        CodeLine other = l;
                        other.code = without;
                        checkComma(other, false);
                        allowed = true;
                        break;
                    }
            }
            if (isMacro && (l.comment.rfind(";Range (km)", 0) == 0 || IsUserParameter(name, l)))
                allowed = true;
            checkComma(l, allowed);
        }

        // The words of the whole statement, for the statements that read them.
        TokenList tokens;
        const bool poly = name == "Poly" || name == "ShadedPoly";
        const bool moveDraw = name == "MoveToPt" || name == "DrawToPt";
        if (st.lines.size() == 1 || poly || moveDraw || kLabelUsers.count(name)) {
            TokenList lineTokens;
            for (const auto& l : st.lines) {
                Tokens(l.code, lineTokens);
                tokens.insert(tokens.end(), lineTokens.begin(), lineTokens.end());
            }
        }

        if (st.lines.size() == 1 && tokens.size() == 1 && tokens[0].size() > 1 && tokens[0][0] == ':') {
            if (!scope.defined.insert(std::string(tokens[0])).second)
                add(st.first(), "label " + std::string(tokens[0]) + " is defined twice in its area");
            return;
        }
        if (!kKnown.count(name))
            add(st.first(), "unknown statement \"" + std::string(name) + "\"");
        if (name == "Area" || name == "Area16N") {
            Scope s;
            s.openLine = st.first();
            s.closer = name == "Area" ? "EndA" : "End16";
            scopes_.push_back(s);
            return;
        }
        if (name == "EndA" || name == "End16") {
            if (scopes_.size() < 2 || scopes_.back().closer != name)
                add(st.first(), "\"" + std::string(name) + "\" without its area");
            else
                closeScope();
            return;
        }
        if (kLabelUsers.count(name)) {
            for (const auto& t : tokens)
                if (t.size() > 1 && t[0] == ':')
                    scope.used.emplace_back(st.first(), std::string(t));
            return;
        }
        if (name == "Points" || name == "VecPoints") {
            points(st, scope, name == "Points" ? 3 : 6);
            return;
        }
        if (poly) {
            // The flags word after the bracket ("a", "ai", "au"), then the indices.
            for (std::size_t k = 2; k < tokens.size(); ++k)
                if (tokens[k] != ")") {
                    if (IsInteger(tokens[k]))
                        usePoint(st.first(), scope, tokens[k]);
                    else
                        add(st.first(), "\"" + std::string(tokens[k]) + "\" is no point index");
                }
            return;
        }
        if (moveDraw) {
            if (tokens.size() != 3 || !IsInteger(tokens[1]))
                add(st.first(), "\"" + std::string(name) + "(\" takes one point index");
            else
                usePoint(st.first(), scope, tokens[1]);
            return;
        }
        if (name == "TexPoly" || name == "ShadedTexPoly") {
            for (std::size_t k = 1; k < st.lines.size(); ++k) {
                Tokens(st.lines[k].code, scratch_);
                const TokenList& t = scratch_;
                if (!t.empty() && IsInteger(t[0]))
                    usePoint(st.lines[k].number, scope, t[0]);
            }
            return;
        }
    }

    // A row holds X, Y and Z, and for a vector table the three parts of the vector.
    void points(const Statement& st, Scope& scope, std::size_t columns)
    {
        auto head = Tokens(st.lines[0].code);
        long start = 0;
        if (head.size() >= 2 && IsInteger(head[1]) && head[1].size() < 9)
            start = std::stol(std::string(head[1]));
        // A table from 0 replaces the points before it; any other start continues them.
        if (start > scope.points || start < 0)
            add(st.first(), "the point table starts at " + std::to_string(start) + " after " +
                                std::to_string(scope.points) + " points");
        long rows = 0;
        for (std::size_t k = 1; k < st.lines.size(); ++k) {
            Tokens(st.lines[k].code, scratch_);
            const TokenList& t = scratch_;
            if (t.empty() || t[0] == ")")
                continue;
            ++rows;
            if (t.size() != columns || !std::all_of(t.begin(), t.end(), IsNumber))
                add(st.lines[k].number, "a row of \"" + std::string(st.name) + "(\" needs " + std::to_string(columns) +
                                            " numbers");
        }
        scope.points = start + rows;
    }

    void usePoint(int line, const Scope& scope, std::string_view token)
    {
        const long index = token.size() < 9 ? std::stol(std::string(token)) : -1;
        if (index < 0 || index >= scope.points)
            add(line, "point " + std::string(token) + " is not in the point table");
    }
};

} // namespace

std::vector<ScasmProblem> CheckScasm(const std::vector<std::string>& lines)
{
    Checker c;
    c.run(std::vector<std::string_view>(lines.begin(), lines.end()));
    return c.problems;
}

std::vector<ScasmProblem> CheckScasmText(std::string_view text)
{
    std::vector<std::string_view> lines;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t end = text.find('\n', pos);
        const bool ended = end != std::string_view::npos;
        if (!ended)
            end = text.size();
        std::string_view line = text.substr(pos, end - pos);
        if (ended && !line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        lines.push_back(line);
        pos = end + 1;
    }
    Checker c;
    c.run(lines);
    return c.problems;
}

} // namespace fw::test::before
