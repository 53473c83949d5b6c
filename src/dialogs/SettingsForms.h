// Project settings, preferences, the optimisation settings and the unit converter.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/Config.h"
#include "core/Helpers.h"
#include "core/Records.h"
#include "dialogs/FormValues.h"

namespace fw {

const std::vector<std::string>& PolyScaleList();     // "1", "0.5", "0.25", "0.125" in the locale's form
const std::vector<double>& PolyScaleValues();
const std::vector<std::string>& LineScaleList();     // "<automatic>" (0), 0.25, 0.125
const std::vector<double>& LineScaleValues();
const std::vector<std::string>& DotLineScaleList();  // 0.5, 0.25, 0.125
const std::vector<double>& DotLineScaleValues();
// The list position of a stored scale, -1 when the list doesn't hold it.
int ScalePosition(const std::vector<double>& list, double value);
std::vector<std::string> ScaleTexts(const std::vector<double>& list, char decimalSeparator, bool automaticFirst);

struct FormSettings {
    static constexpr const char* kName = "FormSettings";
    static constexpr const char* kTitle = "Project settings";
    void Show_(const ProjectRecord& p, bool isNew, char decimalSeparator);
    OkResult Ok(const ValueContext& ctx, ProjectRecord& p) const;
    bool CancelEnabled() const { return !isNew; }
    bool CanClose() const { return !isNew; }
    FormValues values;
    // The optimisation settings edit this copy; OK stores it with the rest.
    ProjectRecord working;
    bool isNew = false;
};

struct FormOptimize {
    static constexpr const char* kName = "FormOptimize";
    static constexpr const char* kTitle = "Optimization settings";
    void Show_(const ProjectRecord& p);
    OkResult Ok(const ValueContext& ctx, ProjectRecord& p) const;
    // The texture picker's answer for texture i: a name followed by a 16-character colour field.
    void TakePickedTexture(int i, const std::string& answer);
    FormValues values;            // Text1..Text4, Text5..Text7
    std::array<std::int32_t, 4> colors{};
};

// Browse prompts of the preferences' paths (FSPath, SceneryPath, TEXPath).
const std::array<std::string, 3>& PathPrompts();

struct FormOptions {
    static constexpr const char* kName = "FormOptions";
    static constexpr const char* kTitle = "Preferences";
    void Show_(const ConfigRecord& c);
    // openGLActive: what the running program uses; a change shows the restart note.
    OkResult Ok(const ValueContext& ctx, ConfigRecord& c, bool openGLActive) const;
    // A browsed folder, with a backslash appended, into path field i (0..2).
    void TakeFolder(int i, const std::string& folder);
    FormValues values;
    std::int32_t gridColor = 0;
    std::array<ShapeRecord, 6> defaults; // edited by the shape buttons, stored on OK
};

// The unit converter.
const std::vector<std::string>& DistanceUnits();
const std::vector<std::string>& AngleFormats();
std::string ConvertDistance(const std::string& input, int inputUnit, int outputUnit, char decimalSeparator);
std::string ConvertAngle(const std::string& input, int format, char decimalSeparator);

// The unit converter's fields, named as its controls: tab dist Text3 (input), InputUnit,
// OutputUnit, Text4 (result); tab lat Text1 (input), OutputFormat, Text2 (result). It is loaded
// hidden once and keeps what was typed; nothing in it changes the project.
struct FormConverter {
    static constexpr const char* kName = "FormConverter";
    static constexpr const char* kTitle = "Converter";
    // As loaded at start: empty texts, each list on its first entry.
    void Load_();
    // "Convert >>" of tab dist: Text4 from Text3 and the two units; of tab lat: Text2 from Text1
    // and the output format.
    void ConvertDist(char decimalSeparator);
    void ConvertLat(char decimalSeparator);
    // The two result fields can't be typed into.
    static bool IsResult(const std::string& field) { return field == "Text4" || field == "Text2"; }
    FormValues values;
};

} // namespace fw
