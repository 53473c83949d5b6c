#include "export/ScasmCheck.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

namespace fw {

namespace {

// One line without its comment, and whether a comma stands between two digits outside quotes.
struct CodeLine {
    int number = 0;
    std::string code;
    std::string comment;
};

// A quote left open at the end of a line (a macro parameter cut at its column) opens no string.
std::size_t UnmatchedQuote(const std::string& raw)
{
    const auto count = std::count(raw.begin(), raw.end(), '"');
    return count % 2 == 1 ? raw.rfind('"') : std::string::npos;
}

CodeLine SplitComment(const std::string& raw, int number)
{
    CodeLine out;
    out.number = number;
    bool quoted = false;
    const std::size_t unmatched = UnmatchedQuote(raw);
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const char c = raw[i];
        if (c == '"' && i != unmatched)
            quoted = !quoted;
        if (c == ';' && !quoted) {
            out.comment = raw.substr(i);
            break;
        }
        out.code += c;
    }
    return out;
}

std::vector<std::string> Tokens(const std::string& code)
{
    std::vector<std::string> out;
    std::string cur;
    bool quoted = false;
    auto flush = [&] {
        if (!cur.empty())
            out.push_back(cur);
        cur.clear();
    };
    const std::size_t unmatched = UnmatchedQuote(code);
    for (std::size_t i = 0; i < code.size(); ++i) {
        const char c = code[i];
        if (c == '"' && i != unmatched)
            quoted = !quoted;
        if (!quoted && (c == ' ' || c == '\t')) {
            flush();
        } else if (!quoted && (c == '(' || c == ')')) {
            cur += c;
            flush();
        } else {
            cur += c;
        }
    }
    flush();
    return out;
}

bool IsInteger(const std::string& t)
{
    std::size_t i = (!t.empty() && t[0] == '-') ? 1 : 0;
    if (i >= t.size())
        return false;
    return std::all_of(t.begin() + static_cast<std::ptrdiff_t>(i), t.end(),
                       [](char c) { return c >= '0' && c <= '9'; });
}

bool IsNumber(const std::string& t)
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

bool HasDecimalComma(const std::string& code)
{
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

// A statement: its name (the word before "(" or the bare word) and its lines.
struct Statement {
    std::string name;
    std::vector<CodeLine> lines;
    int first() const { return lines.front().number; }
};

// Statements whose label arguments must be defined in the same area.
const std::set<std::string> kLabelUsers = {"Jump",     "IfVarAnd",        "IfVarRange", "RefPoint",
                                           "LayerCall", "PerspectiveCall", "ShadowCall"};

// Every statement the export writes; anything else is a fault of the writer.
const std::set<std::string> kKnown = {
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
    std::set<std::string> defined;
    std::vector<std::pair<int, std::string>> used;
    long points = 0; // indices 0 .. points-1 are in the table
};

class Checker {
public:
    std::vector<ScasmProblem> problems;

    void run(const std::vector<std::string>& raw)
    {
        scopes_.push_back(Scope{});
        Statement cur;
        int depth = 0;
        for (std::size_t i = 0; i < raw.size(); ++i) {
            CodeLine line = SplitComment(raw[i], static_cast<int>(i) + 1);
            bool quoted = false;
            bool sawOpen = false;
            std::string name;
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
                const std::string word = sawOpen ? name : FirstWord(line.code);
                if (word.empty() && line.code.find_first_not_of(' ') == std::string::npos) {
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
            add(cur.first(), "the brackets of \"" + cur.name + "(\" are not closed");
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

    static std::string FirstWord(const std::string& code)
    {
        std::size_t b = code.find_first_not_of(' ');
        if (b == std::string::npos)
            return {};
        std::size_t e = code.find_first_of(" (", b);
        return code.substr(b, e == std::string::npos ? std::string::npos : e - b);
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
        const std::string& name = st.name;
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
                        std::string rest = l.code;
                        const std::size_t at = rest.find(t[j + 1], rest.find('(') + 1);
                        CodeLine other = l;
                        other.code = rest.substr(0, at) + rest.substr(at + t[j + 1].size());
                        checkComma(other, false);
                        allowed = true;
                        break;
                    }
            }
            if (isMacro && l.comment.rfind(";Range (km)", 0) == 0)
                allowed = true;
            checkComma(l, allowed);
        }

        std::vector<std::string> tokens;
        for (const auto& l : st.lines)
            for (auto& t : Tokens(l.code))
                tokens.push_back(t);

        if (st.lines.size() == 1 && tokens.size() == 1 && tokens[0].size() > 1 && tokens[0][0] == ':') {
            if (!scope.defined.insert(tokens[0]).second)
                add(st.first(), "label " + tokens[0] + " is defined twice in its area");
            return;
        }
        if (!kKnown.count(name))
            add(st.first(), "unknown statement \"" + name + "\"");
        if (name == "Area" || name == "Area16N") {
            Scope s;
            s.openLine = st.first();
            s.closer = name == "Area" ? "EndA" : "End16";
            scopes_.push_back(s);
            return;
        }
        if (name == "EndA" || name == "End16") {
            if (scopes_.size() < 2 || scopes_.back().closer != name)
                add(st.first(), "\"" + name + "\" without its area");
            else
                closeScope();
            return;
        }
        if (kLabelUsers.count(name)) {
            for (const auto& t : tokens)
                if (t.size() > 1 && t[0] == ':')
                    scope.used.emplace_back(st.first(), t);
            return;
        }
        if (name == "Points" || name == "VecPoints") {
            points(st, scope, name == "Points" ? 3 : 6);
            return;
        }
        if (name == "Poly" || name == "ShadedPoly") {
            // The flags word after the bracket ("a", "ai", "au"), then the indices.
            for (std::size_t k = 2; k < tokens.size(); ++k)
                if (tokens[k] != ")") {
                    if (IsInteger(tokens[k]))
                        usePoint(st.first(), scope, tokens[k]);
                    else
                        add(st.first(), "\"" + tokens[k] + "\" is no point index");
                }
            return;
        }
        if (name == "MoveToPt" || name == "DrawToPt") {
            if (tokens.size() != 3 || !IsInteger(tokens[1]))
                add(st.first(), "\"" + name + "(\" takes one point index");
            else
                usePoint(st.first(), scope, tokens[1]);
            return;
        }
        if (name == "TexPoly" || name == "ShadedTexPoly") {
            for (std::size_t k = 1; k < st.lines.size(); ++k) {
                auto t = Tokens(st.lines[k].code);
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
            start = std::stol(head[1]);
        // A table from 0 replaces the points before it; any other start continues them.
        if (start > scope.points || start < 0)
            add(st.first(), "the point table starts at " + std::to_string(start) + " after " +
                                std::to_string(scope.points) + " points");
        long rows = 0;
        for (std::size_t k = 1; k < st.lines.size(); ++k) {
            auto t = Tokens(st.lines[k].code);
            if (t.empty() || t[0] == ")")
                continue;
            ++rows;
            if (t.size() != columns || !std::all_of(t.begin(), t.end(), IsNumber))
                add(st.lines[k].number, "a row of \"" + st.name + "(\" needs " + std::to_string(columns) +
                                            " numbers");
        }
        scope.points = start + rows;
    }

    void usePoint(int line, const Scope& scope, const std::string& token)
    {
        const long index = token.size() < 9 ? std::stol(token) : -1;
        if (index < 0 || index >= scope.points)
            add(line, "point " + token + " is not in the point table");
    }
};

} // namespace

std::vector<ScasmProblem> CheckScasm(const std::vector<std::string>& lines)
{
    Checker c;
    c.run(lines);
    return c.problems;
}

std::vector<ScasmProblem> CheckScasmText(const std::string& text)
{
    std::vector<std::string> lines;
    std::string cur;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') {
            if (!cur.empty() && cur.back() == '\r')
                cur.pop_back();
            lines.push_back(cur);
            cur.clear();
        } else {
            cur += text[i];
        }
    }
    if (!cur.empty())
        lines.push_back(cur);
    return CheckScasm(lines);
}

std::string FormatProblems(const std::vector<ScasmProblem>& problems)
{
    std::string out;
    for (const auto& p : problems)
        out += "line " + std::to_string(p.line) + ": " + p.text + "\n";
    return out;
}

} // namespace fw
