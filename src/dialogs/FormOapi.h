// The 3-D object dialog: a macro, its visual range, heading, elevation, scale, detail level and
// ten parameters, each field enabled only when the macro's code uses it.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/Config.h"
#include "core/Helpers.h"
#include "core/Records.h"
#include "dialogs/FormValues.h"
#include "files/MacroFile.h"

namespace fw {

const std::vector<std::string>& DetailLevelList();
// The parameter marks beside Text6 .. Text15: "Par %6" ... "Par %20".
const std::array<std::string, 10>& ParamMarkLabels();
// Parameter fields refuse ";" and the double quote; Text6 (field 6) refuses "q" as well.
int ParamKey(int field, int key);

struct FormOapi {
    static constexpr const char* kName = "FormOapi";
    static constexpr const char* kTitle = "3-D object settings";

    // The session facts the dialog needs.
    void Show_(const ObjectRecord& r, const ConfigRecord& config, const std::string& programFolder,
               char decimalSeparator);
    // Combo1 changed to position: the object's own macro (0) or a listed one.
    void ChooseMacro(int position);
    // A macro file picked with Browse (or reloaded by "Reset defaults"): false, and nothing
    // changed, when it is missing or its header can't be read.
    bool LoadMacro(const std::string& path);
    // OK: the checks in order, then the record and the configuration's APIPath and combo position.
    OkResult Ok(const ValueContext& ctx, ObjectRecord& r, ConfigRecord& config) const;
    // Closing without OK is refused while no macro is chosen.
    bool CanClose(Ui* ui) const;

    // Pastes into the current parameter field (6..15): the colour's three numbers, a palette
    // index in hexadecimal, a texture name.
    void PasteColor(int r, int g, int b);
    void PastePalette(int index);
    void PasteTexture(const std::string& name);

    // The preview picture of the macro: "Resource/" + its name + ".bmp", or empty when there is none.
    std::string PreviewPath() const;

    FormValues values; // Combo1, Label35, Text2..Text5, Combo2, Text6..Text15
    std::vector<std::string> macroList;
    std::string path;          // the macro file in use
    std::string objectPath;    // the object's own macro, for position 0
    std::array<std::string, 10> paramLabels; // the ;paramdescr texts
    std::string description;
    // Which fields the macro uses: Text2..Text5, Combo2, then Text6..Text15.
    std::array<bool, 15> enabled{};
    int currentField = 0; // the parameter field that last had the focus, 6..15; 0 none
    MacroHeader header;

private:
    void ShowUses(const MacroHeader& uses);
    const ConfigRecord* config_ = nullptr;
    std::string programFolder_;
    char sep_ = '.';
};

// The control of a parameter field: "Text6" .. "Text15".
std::string ParamControl(int i);

} // namespace fw
