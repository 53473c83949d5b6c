#include "dialogs/FormShape.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "core/Numbers.h"

namespace fw {

ShapeFields FieldsOf(int type)
{
    ShapeFields f;
    switch (type) {
    case kPoly:
        f.colored = f.color = f.transparency = f.lighted = true;
        f.texture = true;
        f.noPointReduction = f.noTextureLevels = f.layer = true;
        f.mappingTabText = "No mapping options available...";
        break;
    case kTexPoly:
        f.texture = f.textureSwitch = f.mapping = true;
        f.noTextureLevels = f.layer = true;
        break;
    case kWideLine:
        f.colored = f.color = f.transparency = true;
        f.valueLabel = "Line width:";
        f.effects = f.texture = f.noPointReduction = true;
        f.mappingTabText = "No mapping options available...";
        break;
    case kDotLine:
        f.color = true;
        f.valueLabel = "Dot spacing:";
        f.dotsAtPoints = f.layer = true;
        f.textureTabText = "No texture options available...";
        f.mappingTabText = "No mapping options available...";
        break;
    case kTreeLine:
        f.valueLabel = "Tree height:";
        f.texture = f.textureSwitch = f.bands = true;
        break;
    case kForest:
        f.valueLabel = "Forest height:";
        f.forestType = true;
        f.textureTabText = "No texture options available...";
        break;
    default:
        break;
    }
    return f;
}

std::string ShapeTitle(int type)
{
    switch (type) {
    case kPoly: return "Poly() settings";
    case kTexPoly: return "TexPoly() settings";
    case kWideLine: return "Wide line settings";
    case kDotLine: return "Dotted line settings";
    case kTreeLine: return "Tree line settings";
    case kForest: return "Forest settings";
    default: return "ERROR! Wrong type selected...";
    }
}

const std::vector<std::string>& EffectsList()
{
    static const std::vector<std::string> list{"<None>", "Road - moving dots at night",
                                               "Centerline - green dots at night (15m)",
                                               "Centerline - green dots at night (20m)"};
    return list;
}

const std::vector<std::string>& LayerList()
{
    static const std::vector<std::string> list{
        "None - (default)",   "Poly - (layer 8)",      "River - (layer 12)",         "Road - (layer 16)",
        "Line - (layer 20)",  "Runway - (layer 24)",   "Mountain - (layer 28)",      "Crater - (layer 32)",
        "Ground element - (layer 40)", "Shadow - (layer 60)"};
    return list;
}

const std::vector<std::string>& ForestTypeList()
{
    static const std::vector<std::string> list{"Trees: dark", "Custom: 1"};
    return list;
}

void FormShape::Show_(const ShapeRecord& r, int last, bool complete, char sep)
{
    values = FormValues();
    type = r.gType;
    lastPoint = last;
    mustComplete = complete;
    for (int i = 0; i < 4; ++i)
        corners[i] = {r.mTexMap[2 * i], r.mTexMap[2 * i + 1]};
    values["Comment"] = r.gComment;
    values.SetTick("Colored", r.gIsColored != 0);
    values.SetInt("Color", r.cColor);
    values.SetInt("Transparency", r.cTransparency);
    values.SetTick("Lighted", r.cLighted != 0);
    switch (type) {
    case kWideLine:
    case kDotLine: values["Value"] = ShowNumber(r.gLineWidth, sep); break;
    case kTreeLine:
    case kForest: values["Value"] = ShowNumber(r.mBandHeight, sep); break;
    default: break;
    }
    values.SetInt("Effects", r.gLineType);
    values.SetTick("DotsAtPoints", r.DotLineType == 1);
    values["Texture"] = r.tDayPath;
    static const char* const kFlags[4] = {"Night", "Winter", "Fall", "Spring"};
    for (int i = 0; i < 4; ++i)
        values.SetTick(kFlags[i], r.tLoadflag[i] != 0);
    values.SetTick("TexLighted", r.tSwitch != 0);
    values.SetInt("SliderColor", r.mSliderColor);
    values.SetInt("Bands", r.mNumBands == 8 ? 1 : 0);
    values.SetInt("ForestType", r.ForestType);
    values.SetInt("Range", r.vRange);
    values.SetTick("Day", (r.vTime & kTimeDay) != 0);
    values.SetTick("NightTime", (r.vTime & kTimeNight) != 0);
    values.SetTick("Dusk", (r.vTime & kTimeDusk) != 0);
    values.SetTick("NoPointReduction", r.vNoPointReduction != 0);
    values.SetTick("NoTextureLevels", r.vNoTextureLevels != 0);
    values.SetInt("Layer", r.vLayer);
}

OkResult FormShape::Ok(const ValueContext& ctx, ShapeRecord& r) const
{
    std::int16_t range = 0;
    if (!CheckInteger(ctx, values.Text("Range"), 10, 32000, "the visibility range", range))
        return OkResult::Refused;
    double value = 0;
    std::int16_t spacing = 0;
    switch (type) {
    case kWideLine:
        if (!CheckDouble(ctx, values.Text("Value"), 0.1, 200, "the line width", value))
            return OkResult::Refused;
        break;
    case kDotLine:
        if (!CheckInteger(ctx, values.Text("Value"), 1, 1000, "the dot spacing", spacing))
            return OkResult::Refused;
        value = spacing;
        break;
    case kTreeLine:
        if (!CheckDouble(ctx, values.Text("Value"), 1, 200, "the band height", value))
            return OkResult::Refused;
        break;
    case kForest:
        if (!CheckDouble(ctx, values.Text("Value"), 1, 200, "the forest height", value))
            return OkResult::Refused;
        break;
    default:
        break;
    }

    const auto tick = [this](const char* name) -> std::uint8_t { return values.Tick(name) ? 1 : 0; };
    const auto storeTexture = [&] {
        r.tDayPath = values.Text("Texture");
        r.tLoadflag = {tick("Night"), tick("Winter"), tick("Fall"), tick("Spring")};
    };
    const auto byteOf = [this](const char* name, int lo, int hi) {
        return static_cast<std::uint8_t>(std::clamp(values.Int(name), lo, hi));
    };

    r.gComment = values.Text("Comment");
    switch (type) {
    case kPoly:
        r.gIsColored = tick("Colored");
        storeTexture();
        r.cTransparency = byteOf("Transparency", 0, 15);
        r.cLighted = tick("Lighted");
        r.cColor = values.Int("Color");
        break;
    case kTexPoly:
        storeTexture();
        r.tSwitch = tick("TexLighted");
        r.mSliderColor = byteOf("SliderColor", 0, 255);
        for (int i = 0; i < CornerCount(); ++i) {
            r.mTexMap[2 * i] = corners[i].X;
            r.mTexMap[2 * i + 1] = corners[i].Y;
        }
        break;
    case kWideLine:
        r.gIsColored = tick("Colored");
        r.gLineType = byteOf("Effects", 0, 3);
        r.gLineWidth = value;
        storeTexture();
        r.cTransparency = byteOf("Transparency", 0, 15);
        r.cColor = values.Int("Color");
        break;
    case kDotLine:
        r.DotLineType = tick("DotsAtPoints");
        r.gLineWidth = value;
        r.cTransparency = byteOf("Transparency", 0, 255);
        r.cColor = values.Int("Color");
        break;
    case kTreeLine:
        r.tSwitch = tick("TexLighted");
        storeTexture();
        r.mNumBands = static_cast<std::uint8_t>(NumBands());
        r.mBandHeight = value;
        r.mSelectedBand() = corners[0].Y;
        break;
    case kForest:
        r.mBandHeight = value;
        r.ForestType = byteOf("ForestType", 0, 1);
        break;
    default:
        break;
    }
    r.vRange = range;
    r.vTime = static_cast<std::uint8_t>((tick("Day") ? kTimeDay : 0) + (tick("NightTime") ? kTimeNight : 0) +
                                        (tick("Dusk") ? kTimeDusk : 0));
    const ShapeFields f = FieldsOf(type);
    if (f.noPointReduction)
        r.vNoPointReduction = tick("NoPointReduction");
    if (f.noTextureLevels)
        r.vNoTextureLevels = tick("NoTextureLevels");
    if (f.layer)
        r.vLayer = byteOf("Layer", 0, 9);
    return OkResult::Stored;
}

bool FormShape::ColorEnabled() const
{
    const ShapeFields f = FieldsOf(type);
    return f.colored ? values.Tick("Colored") : f.color;
}

bool FormShape::TextureEnabled() const
{
    const ShapeFields f = FieldsOf(type);
    return f.texture && !(f.colored && values.Tick("Colored"));
}

int FormShape::CornerCount() const { return std::clamp(lastPoint + 1, 0, 4); }

int FormShape::mTPselect(int x, int y) const
{
    int hit = -1;
    for (int i = 0; i < CornerCount(); ++i)
        if (x > corners[i].X - 3 && x < corners[i].X + 3 && y > corners[i].Y - 3 && y < corners[i].Y + 3)
            hit = i;
    return hit;
}

void FormShape::DragCorner(int corner, int x, int y)
{
    if (corner < 0 || corner >= 4)
        return;
    corners[corner] = {std::clamp(x, 0, 256), std::clamp(y, 0, 256)};
}

void FormShape::DefaultTexMap(const PointList& points)
{
    if (points.empty())
        return;
    const auto box = ComputeLimits(points);
    const double spanX = static_cast<double>(box[1]) - box[0];
    const double spanY = static_cast<double>(box[3]) - box[2];
    const double span = std::max(spanX, spanY);
    const double scale = span > 0 ? 255.0 / span : 0.0;
    for (int i = 0; i < 4 && i < static_cast<int>(points.size()); ++i) {
        corners[i].X = RoundToInt32((points[i].X - static_cast<double>(box[0])) * scale).value_or(0);
        corners[i].Y = RoundToInt32((points[i].Y - static_cast<double>(box[2])) * scale).value_or(0);
    }
}

void FormShape::SetBandOption(int option)
{
    values.SetInt("Bands", option == 1 ? 1 : 0);
    if (option != 1 && corners[0].Y > 3)
        corners[0].Y = 3;
}

int FormShape::mTLselect(int x, int y) const
{
    const int n = NumBands();
    if (x < 16 || x > BandPictureHeight(n) - 16 || y < 0)
        return -1;
    const int band = y / BandStep(n);
    return band < n ? band : -1;
}

void FormShape::BandKey(int delta)
{
    corners[0].Y = std::clamp(corners[0].Y + delta, 0, NumBands() - 1);
}

std::int32_t WheelColor(int v)
{
    int r = 0, g = 0, b = 0;
    if (v < 42) {
        r = 255; g = v * 6; b = 0;
    } else if (v <= 84) {
        r = 255 - (v - 42) * 6; g = 255; b = 0;
    } else if (v <= 126) {
        r = 0; g = 255; b = (v - 85) * 6;
    } else if (v <= 169) {
        r = 0; g = 255 - (v - 127) * 6; b = 255;
    } else if (v <= 211) {
        r = (v - 170) * 6; g = 0; b = 255;
    } else {
        r = 255; g = 0; b = 255 - (v - 212) * 6;
    }
    return RGB(std::clamp(r, 0, 255), std::clamp(g, 0, 255), std::clamp(b, 0, 255));
}

int BandPictureHeight(int numBands) { return numBands == 8 ? 240 : 232; }
int BandStep(int numBands) { return BandPictureHeight(numBands) / (numBands == 8 ? 8 : 4); }

std::array<std::array<int, 4>, 2> BandFrames(int s, int numBands)
{
    const int b = BandStep(numBands);
    return {{{18, s * b + 2, 238, s * b + b - 1 - 5}, {19, s * b + 3, 237, s * b + b - 1 - 6}}};
}

int FindTextureInList(const std::vector<std::string>& list, const std::string& name)
{
    if (name.empty())
        return -1;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i] == name)
            return static_cast<int>(i);
    return -1;
}

std::vector<std::string> FillTexList(const std::string& folder)
{
    std::vector<std::string> names;
    std::error_code ec;
    std::filesystem::directory_iterator it(folder.empty() ? std::string(".") : folder, ec), end;
    for (; !ec && it != end; it.increment(ec)) {
        if (!it->is_regular_file(ec))
            continue;
        const std::string name = it->path().filename().string();
        std::string ext = it->path().extension().string();
        for (char& c : ext)
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        if (ext == ".bmp" || ext == ".r8")
            names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

PointList PreviewOutline(const PointList& points, int width, int height)
{
    PointList out;
    if (points.empty())
        return out;
    const auto box = ComputeLimits(points);
    double spanX = static_cast<double>(box[1]) - box[0];
    double spanY = static_cast<double>(box[3]) - box[2];
    if (spanX == 0)
        spanX = 1;
    if (spanY == 0)
        spanY = 1;
    const double cx = (static_cast<double>(box[0]) + box[1]) / 2.0;
    const double cy = (static_cast<double>(box[2]) + box[3]) / 2.0;
    const double fx = (width - 10) / spanX;
    const double fy = (height - 10) / spanY;
    const double f = spanY * fx > height - 10 ? fy : fx;
    for (const Point& p : points)
        out.push_back({RoundToInt32((p.X - cx) * f + width / 2.0).value_or(0),
                       RoundToInt32((p.Y - cy) * f + height / 2.0).value_or(0)});
    return out;
}

std::string TextureFolderLabel(const std::string& folder)
{
    return folder.size() > 64 ? folder.substr(0, 64) + "..." : folder;
}

} // namespace fw

namespace fw {

namespace {
constexpr int kCellStep = 26;
constexpr int kCellSize = 23;
constexpr int kLeft = 2;
constexpr int kFirstRowTop = 2;
constexpr int kSecondRowTop = 52; // below the label of the short-range colours
} // namespace

CellRect PaletteCell(int index)
{
    if (index >= 1 && index <= 14)
        return {kLeft + (index - 1) * kCellStep, kFirstRowTop, kCellSize, kCellSize};
    if (index >= 16 && index <= 30)
        return {kLeft + (index - 16) * kCellStep, kSecondRowTop, kCellSize, kCellSize};
    return {};
}

int PaletteCellAt(int x, int y)
{
    for (int i = 1; i <= 30; ++i) {
        if (i == 15)
            continue;
        const CellRect c = PaletteCell(i);
        if (x >= c.x && x < c.x + c.w && y >= c.y && y < c.y + c.h)
            return i;
    }
    return -1;
}

} // namespace fw
