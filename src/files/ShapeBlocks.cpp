#include "files/ShapeBlocks.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "core/Numbers.h"
#include "files/KeyBlock.h"
#include "files/ValueReaders.h"

namespace fw {

namespace {

constexpr std::string_view kShapeWords[] = {"Poly(", "TexPoly(", "WideLine(", "DotLine(",
                                            "TreeLine(", "Flatten(", "Forest("};

constexpr std::string_view kLineTypes[] = {"Line", "Road", "Centerline15m", "Centerline20m"};
constexpr std::string_view kDotLineTypes[] = {"isLine", "isPoint"};
constexpr std::string_view kForestTypes[] = {"TreeDark", "Custom1"};

// Which types read a key.
constexpr unsigned Bit(int type) { return 1u << type; }
constexpr unsigned kAll = 0xFFu;

enum Field {
    FTexMap0, FTexMap1, FTexMap2, FTexMap3, FTexMap4, FTexMap5, FTexMap6, FTexMap7,
    FSliderColor, FNumBands, FSelectedBand, FBandHeight, FForestType, FLineWidth, FLineType,
    FDotSpacing, FDotLineType, FComment, FDayPath, FLoadflag, FTime, FIsColored, FSwitch,
    FLighted, FNoPointReduction, FNoTextureLevels, FColor, FTransparency, FRange, FLayer,
};

struct ShapeKey {
    KeyRule rule;
    unsigned types;
};

constexpr ShapeKey kShapeKeys[] = {
    {{"mTexMapX0", ValueKind::Long, 0, 0, FTexMap0}, Bit(kTexPoly)},
    {{"mTexMapY0", ValueKind::Long, 0, 0, FTexMap1}, Bit(kTexPoly)},
    {{"mTexMapX1", ValueKind::Long, 0, 0, FTexMap2}, Bit(kTexPoly)},
    {{"mTexMapY1", ValueKind::Long, 0, 0, FTexMap3}, Bit(kTexPoly)},
    {{"mTexMapX2", ValueKind::Long, 0, 0, FTexMap4}, Bit(kTexPoly)},
    {{"mTexMapY2", ValueKind::Long, 0, 0, FTexMap5}, Bit(kTexPoly)},
    {{"mTexMapX3", ValueKind::Long, 0, 0, FTexMap6}, Bit(kTexPoly)},
    {{"mTexMapY3", ValueKind::Long, 0, 0, FTexMap7}, Bit(kTexPoly)},
    {{"mSliderColor", ValueKind::Byte, 0, 255, FSliderColor}, Bit(kTexPoly)},
    {{"mNumBands", ValueKind::Byte, 4, 8, FNumBands}, Bit(kTreeLine)},
    {{"mSelectedBand", ValueKind::Long, 0, 0, FSelectedBand}, Bit(kTreeLine)},
    {{"mBandHeight", ValueKind::Double, 0, 200, FBandHeight}, Bit(kTreeLine) | Bit(kForest)},
    {{"ForestType", ValueKind::String, 0, 0, FForestType}, Bit(kForest)},
    {{"gLineWidth", ValueKind::Double, 0.001, 1000, FLineWidth}, Bit(kWideLine)},
    {{"gLineType", ValueKind::String, 0, 0, FLineType}, Bit(kWideLine)},
    {{"gDotSpacing", ValueKind::Double, 0.001, 1000, FDotSpacing}, Bit(kDotLine)},
    {{"DotLineType", ValueKind::String, 0, 0, FDotLineType}, Bit(kDotLine)},
    {{"gComment", ValueKind::String, 0, 0, FComment}, kAll},
    {{"tDayPath", ValueKind::String, 0, 0, FDayPath}, kAll},
    {{"tLoadflag", ValueKind::String, 0, 0, FLoadflag}, kAll},
    {{"vTime", ValueKind::String, 0, 0, FTime}, kAll},
    {{"gIsColored", ValueKind::Byte, 0, 1, FIsColored}, kAll},
    {{"tSwitch", ValueKind::Byte, 0, 1, FSwitch}, kAll},
    {{"cLighted", ValueKind::Byte, 0, 1, FLighted}, kAll},
    {{"vNoPointReduction", ValueKind::Byte, 0, 1, FNoPointReduction}, kAll},
    {{"vNoTextureLevels", ValueKind::Byte, 0, 1, FNoTextureLevels}, kAll},
    {{"cColor", ValueKind::Long, 0, 0, FColor}, kAll},
    {{"cTransparency", ValueKind::Byte, 0, 15, FTransparency}, kAll},
    {{"vRange", ValueKind::Short, 0, 32000, FRange}, kAll},
    {{"vLayer", ValueKind::Byte, 0, 255, FLayer}, kAll},
};

template <std::size_t N>
int IndexOf(const std::string_view (&names)[N], const std::string& text)
{
    for (std::size_t i = 0; i < N; ++i)
        if (names[i] == text)
            return static_cast<int>(i);
    return -1;
}

template <std::size_t N>
std::string_view NameOf(const std::string_view (&names)[N], int index)
{
    return index >= 0 && index < static_cast<int>(N) ? names[index] : std::string_view{};
}

std::string LoadflagText(const ShapeRecord& s)
{
    std::string t;
    const char letters[] = {'L', 'W', 'F', 'S'};
    for (int i = 0; i < 4; ++i)
        if (s.tLoadflag[i] == 1)
            t += letters[i];
    return t;
}

std::string TimeText(std::uint8_t mask)
{
    std::string t;
    if (mask & kTimeDay)
        t += 'D';
    if (mask & kTimeNight)
        t += 'N';
    if (mask & kTimeDusk)
        t += 'U';
    return t;
}

// FormatInt(X) "," FormatInt(Y), made in one buffer: a project has tens of thousands of them.
std::string PointLine(const Point& p)
{
    char buf[32];
    char* at = buf;
    for (const std::int32_t v : {p.X, p.Y}) {
        if (at != buf)
            *at++ = ',';
        if (v >= 0)
            *at++ = ' ';
        at = std::to_chars(at, buf + sizeof buf, v).ptr;
    }
    return std::string(buf, at);
}

} // namespace

std::string_view ShapeWord(int type)
{
    return IsShapeType(type) ? kShapeWords[type - 1] : std::string_view{};
}

int ShapeTypeOfWord(std::string_view token)
{
    if (token.empty() || token.back() != '(')
        return 0;
    for (int i = 0; i < 7; ++i)
        if (kShapeWords[i] == token)
            return i + 1;
    return 0;
}

void WriteShapeBlock(CBufferS& out, const ShapeRecord& s, const PointList& points)
{
    if (!IsShapeType(s.gType))
        return;
    out.addLine(std::string(ShapeWord(s.gType)));
    auto q = [&](std::string_view k, std::string_view v) { out.addLine(QuotedLine(k, v)); };
    auto n = [&](std::string_view k, std::int64_t v) { out.addLine(IntLine(k, v)); };
    auto d = [&](std::string_view k, double v) { out.addLine(RealLine(k, v)); };
    const std::string time = TimeText(s.vTime);
    const std::string load = LoadflagText(s);
    switch (s.gType) {
    case kPoly:
        q("gComment", s.gComment);
        n("gIsColored", s.gIsColored);
        q("tDayPath", s.tDayPath);
        q("tLoadflag", load);
        n("cColor", s.cColor);
        n("cTransparency", s.cTransparency);
        n("cLighted", s.cLighted);
        n("vRange", s.vRange);
        q("vTime", time);
        n("vLayer", LayerToValue(s.vLayer));
        n("vNoPointReduction", s.vNoPointReduction);
        n("vNoTextureLevels", s.vNoTextureLevels);
        break;
    case kTexPoly: {
        q("gComment", s.gComment);
        q("tDayPath", s.tDayPath);
        q("tLoadflag", load);
        n("tSwitch", s.tSwitch);
        const char* names[] = {"mTexMapX0", "mTexMapY0", "mTexMapX1", "mTexMapY1",
                               "mTexMapX2", "mTexMapY2", "mTexMapX3", "mTexMapY3"};
        for (int i = 0; i < 8; ++i)
            n(names[i], s.mTexMap[i]);
        n("mSliderColor", s.mSliderColor);
        n("vRange", s.vRange);
        q("vTime", time);
        n("vLayer", LayerToValue(s.vLayer));
        n("vNoTextureLevels", s.vNoTextureLevels);
        break;
    }
    case kWideLine:
        q("gComment", s.gComment);
        n("gIsColored", s.gIsColored);
        d("gLineWidth", s.gLineWidth);
        q("gLineType", NameOf(kLineTypes, s.gLineType));
        q("tDayPath", s.tDayPath);
        q("tLoadflag", load);
        n("cColor", s.cColor);
        n("cTransparency", s.cTransparency);
        n("vRange", s.vRange);
        q("vTime", time);
        n("vNoPointReduction", s.vNoPointReduction);
        break;
    case kDotLine:
        q("gComment", s.gComment);
        d("gDotSpacing", s.gDotSpacing());
        q("DotLineType", NameOf(kDotLineTypes, s.DotLineType));
        n("cColor", s.cColor);
        n("vRange", s.vRange);
        q("vTime", time);
        n("vLayer", LayerToValue(s.vLayer));
        break;
    case kTreeLine:
        q("gComment", s.gComment);
        q("tDayPath", s.tDayPath);
        q("tLoadflag", load);
        n("tSwitch", s.tSwitch);
        n("mNumBands", s.mNumBands);
        n("mSelectedBand", s.mSelectedBand());
        d("mBandHeight", s.mBandHeight);
        n("vRange", s.vRange);
        q("vTime", time);
        break;
    case kForest:
        q("gComment", s.gComment);
        q("ForestType", NameOf(kForestTypes, s.ForestType));
        d("mBandHeight", s.mBandHeight);
        n("vRange", s.vRange);
        q("vTime", time);
        break;
    default: // Flatten has no keys
        break;
    }
    out.addLine("Data[");
    for (const auto& p : points)
        out.addLine(PointLine(p));
    out.addLine("]");
    out.addLine(")");
}

std::size_t ReadShapeKeys(const Tokens& t, std::size_t start, int type, ShapeRecord& s)
{
    s = ShapeRecord{};
    ResetShape(s, type);
    const unsigned bit = Bit(type);
    // The derived strings are resolved once the block has ended; the last value wins.
    bool hasLineType = false, hasDotLineType = false, hasForestType = false, hasTime = false,
         hasLoadflag = false;
    std::string lineType, dotLineType, forestType, time, loadflag;
    std::int32_t layerValue = LayerToValue(s.vLayer);

    auto match = [&](std::string_view tok) -> const KeyRule* {
        const char c = tok[0];
        if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')))
            return nullptr;
        for (const auto& k : kShapeKeys)
            if ((k.types & bit) && k.rule.key == tok)
                return &k.rule;
        return nullptr;
    };
    auto store = [&](const KeyRule& k, ParsedValue& v) {
        switch (k.field) {
        case FTexMap0: case FTexMap1: case FTexMap2: case FTexMap3:
        case FTexMap4: case FTexMap5: case FTexMap6: case FTexMap7:
            s.mTexMap[k.field - FTexMap0] = static_cast<std::int32_t>(v.i);
            break;
        case FSliderColor: s.mSliderColor = static_cast<std::uint8_t>(v.i); break;
        case FNumBands: s.mNumBands = static_cast<std::uint8_t>(v.i); break;
        case FSelectedBand: s.mSelectedBand() = static_cast<std::int32_t>(v.i); break;
        case FBandHeight: s.mBandHeight = v.d; break;
        case FForestType: forestType = v.s; hasForestType = true; break;
        case FLineWidth: s.gLineWidth = v.d; break;
        case FLineType: lineType = v.s; hasLineType = true; break;
        case FDotSpacing: s.gDotSpacing() = v.d; break;
        case FDotLineType: dotLineType = v.s; hasDotLineType = true; break;
        case FComment: s.gComment = v.s; break;
        case FDayPath: s.tDayPath = v.s; break;
        case FLoadflag: loadflag = v.s; hasLoadflag = true; break;
        case FTime: time = v.s; hasTime = true; break;
        case FIsColored: s.gIsColored = static_cast<std::uint8_t>(v.i); break;
        case FSwitch: s.tSwitch = static_cast<std::uint8_t>(v.i); break;
        case FLighted: s.cLighted = static_cast<std::uint8_t>(v.i); break;
        case FNoPointReduction: s.vNoPointReduction = static_cast<std::uint8_t>(v.i); break;
        case FNoTextureLevels: s.vNoTextureLevels = static_cast<std::uint8_t>(v.i); break;
        case FColor: s.cColor = static_cast<std::int32_t>(v.i); break;
        case FTransparency: s.cTransparency = static_cast<std::uint8_t>(v.i); break;
        case FRange: s.vRange = static_cast<std::int16_t>(v.i); break;
        case FLayer: layerValue = static_cast<std::int32_t>(v.i); break;
        default: break;
        }
    };
    const std::size_t close = ReadKeys(t, start, match, store);

    if (hasLineType) {
        const int i = IndexOf(kLineTypes, lineType);
        if (i >= 0)
            s.gLineType = static_cast<std::uint8_t>(i);
    }
    if (hasDotLineType) {
        const int i = IndexOf(kDotLineTypes, dotLineType);
        if (i >= 0)
            s.DotLineType = static_cast<std::uint8_t>(i);
    }
    if (hasForestType) {
        const int i = IndexOf(kForestTypes, forestType);
        if (i >= 0)
            s.ForestType = static_cast<std::uint8_t>(i);
    }
    // A block without the key exists at no time of day.
    s.vTime = 0;
    if (hasTime) {
        if (time.find('D') != std::string::npos)
            s.vTime |= kTimeDay;
        if (time.find('N') != std::string::npos)
            s.vTime |= kTimeNight;
        if (time.find('U') != std::string::npos)
            s.vTime |= kTimeDusk;
    }
    if (hasLoadflag) {
        for (char c : loadflag) {
            switch (c) {
            case 'L': case 'l': s.tLoadflag[0] = 1; break;
            case 'W': case 'w': s.tLoadflag[1] = 1; break;
            case 'F': case 'f': s.tLoadflag[2] = 1; break;
            case 'S': case 's': s.tLoadflag[3] = 1; break;
            default: break;
            }
        }
    }
    s.vLayer = LayerFromValue(layerValue);
    if (type == kWideLine)
        s.vLayer = 0;
    return close;
}

bool ParsePoint(std::string_view token, Point& p)
{
    const std::size_t n = token.size();
    if (n < 3)
        return false;
    // Exactly one comma, with something on either side.
    std::size_t comma = n;
    for (std::size_t i = 0; i < n; ++i) {
        if (token[i] != ',')
            continue;
        if (comma != n)
            return false;
        comma = i;
    }
    if (comma == n || comma == 0 || comma == n - 1)
        return false;
    std::int32_t x = 0, y = 0;
    if (!FileInt32(token.substr(0, comma), x) || !FileInt32(token.substr(comma + 1), y))
        return false;
    p = {x, y};
    return true;
}

namespace {
constexpr std::uint32_t kNone = UINT32_MAX;
} // namespace

ShapePointWalks::ShapePointWalks(const Tokens& t) : t_(t)
{
    // Token counts stay far below 2^32 - 1 (a project file is at most kMaxProjectBytes).
    const auto n = static_cast<std::uint32_t>(std::min<std::size_t>(t.size(), kNone - 1));
    lastList_.assign(static_cast<std::size_t>(n) + 1, kNone);
    nextInList_.assign(static_cast<std::size_t>(n) + 1, n);
    std::uint32_t nextBracket = n; // the first "]" behind p
    for (std::uint32_t p = n; p-- > 0;) {
        const std::string_view tok = t[p];
        const bool bracket = tok == "]";
        Point point;
        const bool isPoint = !bracket && ParsePoint(tok, point);
        pointTokens_ += isPoint;
        nextInList_[p] = bracket || isPoint ? p : nextInList_[p + 1];
        if (tok == ")") {
            lastList_[p] = kNone; // the walk ends here
        } else if (tok == "Data[") {
            // The list runs to nextBracket; the walk then goes on behind it, and a later list
            // there replaces this one.
            const std::uint32_t later = nextBracket == n ? kNone : lastList_[nextBracket + 1];
            lastList_[p] = later != kNone ? later : p;
        } else {
            lastList_[p] = lastList_[p + 1];
        }
        if (bracket)
            nextBracket = p;
    }
}

bool ShapePointWalks::Read(std::size_t start, std::size_t maxPoints, PointList& points) const
{
    points.clear();
    const std::size_t n = nextInList_.size() - 1;
    if (start > n || lastList_[start] == kNone)
        return true;
    for (std::size_t i = static_cast<std::size_t>(lastList_[start]) + 1; i < n; ++i) {
        i = nextInList_[i];
        if (i >= n || t_[i] == "]")
            break;
        Point p;
        ParsePoint(t_[i], p);
        if (points.size() == maxPoints)
            return false;
        points.push_back(p);
    }
    return true;
}

void ReadShapePoints(const Tokens& t, std::size_t start, PointList& points)
{
    ShapePointWalks(t).Read(start, SIZE_MAX, points);
}

PointWalkEnd ReadShapePointsWithin(const Tokens& t, std::size_t start, std::size_t close, std::size_t maxPoints,
                                   PointList& points)
{
    points.clear();
    bool inList = false;
    for (std::size_t i = start; i <= close && i < t.size(); ++i) {
        const std::string_view tok = t[i];
        if (!inList) {
            if (tok == ")")
                return PointWalkEnd::Done;
            if (tok == "Data[") {
                points.clear();
                inList = true;
            }
        } else if (tok == "]") {
            inList = false;
        } else if (i == close) {
            return PointWalkEnd::PastBlock;
        } else if (Point p; ParsePoint(tok, p)) {
            if (points.size() == maxPoints)
                return PointWalkEnd::TooMany;
            points.push_back(p);
        }
    }
    return PointWalkEnd::PastBlock;
}

} // namespace fw
