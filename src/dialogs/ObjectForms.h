// The object dialogs: NDB, VOR, exclude area, initial location, runway and taxiway sign.
// Each shows a record in its controls and, on OK, runs its checks in order and stores.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/Helpers.h"
#include "core/Records.h"
#include "dialogs/FormValues.h"

namespace fw {

// NDB and VOR: frequency, range, identifier and name, and their ticks. They differ in the
// frequency band and in the VOR's DME tick.
struct NavForm {
    void Show_(const ObjectRecord& r, char decimalSeparator);
    OkResult Ok(const ValueContext& ctx, ObjectRecord& r) const;
    FormValues values;

protected:
    explicit NavForm(bool vor) : vor_(vor) {}

private:
    bool vor_;
};

struct FormOndb : NavForm {
    static constexpr const char* kName = "FormOndb";
    static constexpr const char* kTitle = "NDB settings";
    FormOndb() : NavForm(false) {}
};

struct FormOvor : NavForm {
    static constexpr const char* kName = "FormOvor";
    static constexpr const char* kTitle = "VOR settings";
    FormOvor() : NavForm(true) {}
};

struct FormOexclude {
    static constexpr const char* kName = "FormOexclude";
    static constexpr const char* kTitle = "Exclude settings";
    void Show_(const ObjectRecord& r, char decimalSeparator);
    OkResult Ok(const ValueContext& ctx, ObjectRecord& r) const;
    FormValues values;
};

struct FormInit {
    static constexpr const char* kName = "FormInit";
    static constexpr const char* kTitle = "Initial location settings";
    void Show_(const ObjectRecord& r, char decimalSeparator);
    OkResult Ok(const ValueContext& ctx, ObjectRecord& r) const;
    FormValues values;
};

// Runway: the controls are named after the record's fields ("RwyNumber", "Length", "IlsFreqN").
struct FormRunway {
    static constexpr const char* kName = "FormRunway";
    static constexpr const char* kTitle = "Runway Settings";
    void Show_(const ObjectRecord& r, char decimalSeparator);
    OkResult Ok(const ValueContext& ctx, ObjectRecord& r) const;
    // The end labels of the ILS and marker pages: "Runway 05:" and "Runway 23:".
    std::array<std::string, 2> Rwy_caption() const;
    // The fields hanging on a check box: the lights page, and per end (0 near, 1 far) the ILS
    // and marker fields. Switched off they keep their values.
    bool LightsEnabled() const { return values.Tick("EnableLights"); }
    bool IlsEnabled(int end) const { return values.Tick(end == 0 ? "IlsEnabledN" : "IlsEnabledF"); }
    bool MarkersEnabled(int end) const { return values.Tick(end == 0 ? "MarkerEnabledN" : "markerEnabledF"); }
    FormValues values;
};

const std::vector<std::string>& SurfaceList();
const std::vector<std::string>& VasiList();
const std::vector<std::string>& ApproachLightList();
const std::vector<std::string>& DesignatorList();
// The end numbers of a runway number and designator index: near and far, with their designators.
std::array<std::string, 2> RunwayEnds(int number, int designator);

// Taxiway signs: five panels of four items and a type.
struct SignPanelBuffer {
    std::array<std::string, 4> items;
    std::string type; // "Direction", "RwyInstruction", "Location" or empty: off
};
using SignBuffer = std::array<SignPanelBuffer, 5>;

// The Caption into the panel buffer; panels past the fifth are left out.
SignBuffer ParseSignCaption(const std::string& caption);
// The Caption from the buffer: " Direction_ArrowLeft_A Location_B".
std::string BufferToString(const SignBuffer& buffer);
const std::vector<std::string>& SignStyleList(); // "Flat", "Flat - lighted"
// The cell type the picker shows for item picture i (0..2) of a panel.
std::string SignCellType(const SignPanelBuffer& panel, int item);

struct FormSign {
    static constexpr const char* kName = "FormSign";
    static constexpr const char* kTitle = "Taxiway sign settings";
    void Show_(const ObjectRecord& r, char decimalSeparator);
    OkResult Ok(const ValueContext& ctx, ObjectRecord& r) const;
    // Control "Type1".."Type5": option 0 Direction, 1 RwyInstruction, 2 Location, 3 off.
    void SetPanelType(int panel, int option);
    FormValues values; // "Heading", "Style"
    SignBuffer buffer;
};

// The items FormSignSelect offers for a cell type, in cell order.
std::vector<std::string> SignCells(const std::string& cellType);
// Where cell i of a cell type lies on the 256 by 256 sign sheet, in pixels from its top left:
// each quadrant holds its cells at half their size on the sign.
struct SheetRect {
    int x = 0, y = 0, w = 0, h = 0;
};
SheetRect SignCellOnSheet(const std::string& cellType, int i);

} // namespace fw
