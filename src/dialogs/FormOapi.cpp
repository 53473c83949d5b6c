#include "dialogs/FormOapi.h"

#include <algorithm>
#include <cstdio>

#include "core/Numbers.h"
#include "core/PathCase.h"
#include "ports/Ui.h"

namespace fw {

const std::vector<std::string>& DetailLevelList()
{
    static const std::vector<std::string> list{"Very sparse", "Sparse", "Normal", "Dense", "Very dense"};
    return list;
}

const std::array<std::string, 10>& ParamMarkLabels()
{
    static const std::array<std::string, 10> labels{"Par %6",  "Par %7",  "Par %8",  "Par %9",  "Par %15",
                                                    "Par %16", "Par %17", "Par %18", "Par %19", "Par %20"};
    return labels;
}

int ParamKey(int field, int key)
{
    key = KeyRemove(key, ";\"");
    if (field == 6 && key == 'q')
        return 0;
    return key;
}

std::string ParamControl(int i) { return "Text" + std::to_string(i); }

namespace {
std::string& ParamOf(ObjectRecord& r, int i) { return r.texts[1 + i]; }
} // namespace

void FormOapi::Show_(const ObjectRecord& record, const ConfigRecord& config, const std::string& programFolder,
                     char sep)
{
    values = FormValues();
    config_ = &config;
    programFolder_ = programFolder;
    sep_ = sep;
    macroList.assign(1, "<User 3-D object (browse)>");
    const int count = std::clamp<int>(config.numMacros, 0, kMaxMacros);
    for (int i = 0; i < count; ++i)
        macroList.push_back(config.macroDescriptions[i]);

    ObjectRecord r = record;
    const int index = ReRootMacroPath(r, config, programFolder);
    path = objectPath = r.Path();
    values.SetInt("Combo1", index < 0 ? 0 : index + 1);
    values["Label35"] = GetNameFromPath(path, true);
    values.SetInt("Text2", r.Range());
    values["Text3"] = ShowNumber(r.Rotation < 0 ? 0.0 : r.Rotation, sep);
    values["Text4"] = ShowNumber(r.Elevation(), sep);
    values["Text5"] = ShowNumber(r.Scale(), sep);
    values.SetInt("Combo2", std::min<int>(r.DetailLevel(), 4));
    for (int i = 0; i < 10; ++i)
        values[ParamControl(6 + i)] = ParamOf(r, i);
    enabled.fill(false);
    paramLabels = {};
    description.clear();
    ResetMacroHeader(header);
    if (!path.empty() && FileExists(FindPathNoCase(path))) {
        MacroHeader uses;
        if (ReadMacroUses(FindPathNoCase(path), uses))
            ShowUses(uses);
        if (ReadMacroDescriptions(FindPathNoCase(path), sep, header)) {
            description = header.description;
            paramLabels = header.params;
        }
    }
}

void FormOapi::ShowUses(const MacroHeader& u)
{
    enabled[0] = u.range != 0;
    enabled[1] = u.heading != 0;
    enabled[2] = u.elevation != 0;
    enabled[3] = u.scale != 0;
    enabled[4] = u.density != 0;
    for (int i = 0; i < 10; ++i)
        enabled[5 + i] = u.params[i] == "1";
}

bool FormOapi::LoadMacro(const std::string& file)
{
    const std::string onDisk = FindPathNoCase(file);
    if (file.empty() || !FileExists(onDisk))
        return false;
    // All three passes first: a file whose header can't be read changes nothing.
    MacroHeader uses;
    MacroHeader defaults;
    MacroHeader descriptions;
    if (!ReadMacroUses(onDisk, uses) || !ReadMacroDefaults(onDisk, sep_, defaults) ||
        !ReadMacroDescriptions(onDisk, sep_, descriptions))
        return false;
    path = file;
    values["Label35"] = GetNameFromPath(path, true);
    ShowUses(uses);
    if (defaults.range >= 1)
        values.SetInt("Text2", defaults.range);
    if (defaults.scale >= 0)
        values["Text5"] = ShowNumber(defaults.scale, sep_);
    if (defaults.density >= 1 && defaults.density <= 4)
        values.SetInt("Combo2", defaults.density);
    for (int i = 0; i < 10; ++i)
        values[ParamControl(6 + i)] = defaults.params[i];
    header = descriptions;
    description = header.description;
    paramLabels = header.params;
    return true;
}

void FormOapi::ChooseMacro(int position)
{
    values.SetInt("Combo1", position);
    if (position <= 0) {
        if (objectPath.empty() || !LoadMacro(objectPath)) {
            path = objectPath;
            enabled.fill(false);
        }
        return;
    }
    if (!config_ || position > config_->numMacros || position > kMaxMacros)
        return;
    LoadMacro(MacroFolder(programFolder_) + config_->macroFiles[position - 1]);
}

OkResult FormOapi::Ok(const ValueContext& ctx, ObjectRecord& r, ConfigRecord& config) const
{
    std::int16_t range = 0;
    double heading = 0, elevation = 0, scale = 0;
    if (!CheckInteger(ctx, values.Text("Text2"), 1, 32000, "the visual range", range) ||
        !CheckDouble(ctx, values.Text("Text3"), 0, 360, "the heading", heading) ||
        !CheckDouble(ctx, values.Text("Text4"), 0, 10000, "the elevation", elevation) ||
        !CheckDouble(ctx, values.Text("Text5"), 0.001, 32, "the scale", scale))
        return OkResult::Refused;
    r.Path() = path;
    r.Range() = range;
    r.Rotation = enabled[1] ? heading : -1.0;
    r.Elevation() = elevation;
    r.Scale() = enabled[3] ? scale : 1.0;
    r.DetailLevel() = static_cast<std::uint8_t>(std::clamp(values.Int("Combo2"), 0, 4));
    for (int i = 0; i < 10; ++i)
        ParamOf(r, i) = values.Text(ParamControl(6 + i));
    SetOutlineFromHeader(r, header, ctx.decimalSeparator);
    config.APIPath = GetFolderFromPath(path);
    config.macroComboPosition = static_cast<std::uint8_t>(std::clamp(values.Int("Combo1"), 0, 255));
    return OkResult::Stored;
}

bool FormOapi::CanClose(Ui* ui) const
{
    if (!path.empty())
        return true;
    if (ui)
        ui->Message("You first must at select a macro!", MessageStyle::Information);
    return false;
}

void FormOapi::PasteColor(int r, int g, int b)
{
    if (currentField >= 6 && currentField <= 15)
        values[ParamControl(currentField)] =
            " " + std::to_string(r) + " " + std::to_string(g) + " " + std::to_string(b);
}

void FormOapi::PastePalette(int index)
{
    char buf[16];
    std::snprintf(buf, sizeof buf, "%X", static_cast<unsigned>(index & 0xFF));
    if (currentField >= 6 && currentField <= 15)
        values[ParamControl(currentField)] = buf;
}

void FormOapi::PasteTexture(const std::string& name)
{
    if (currentField >= 6 && currentField <= 15)
        values[ParamControl(currentField)] = name;
}

std::string FormOapi::PreviewPath() const
{
    if (path.empty())
        return {};
    const std::string p = FindPathNoCase(programFolder_ + "Resource/" + GetNameFromPath(path, false) + ".bmp");
    return FileExists(p) ? p : std::string();
}

} // namespace fw
