// The fixed texts of the editor's small forms, for the window layer that shows them.
#pragma once

namespace fw {

// FormSelection: a list filled in order, starting on its last entry; no cancel.
constexpr const char* kFormSelectionTitle = "Selection";
constexpr const char* kFormSelectionLabel = "Which shape/object do you want to select?";
constexpr const char* kFormSelectionButton = "&Select";

// FormInform, the design tips.
constexpr const char* kFormInformTitle = "Fieldwright design tips";
constexpr const char* kFormInformCheck = "Don't show again";

// FormConvertShape: five choices, the first preselected; the code is the result.
constexpr const char* kFormConvertTitle = "Convert shape";
constexpr const char* kFormConvertLabel = "Select new type of shape:";
constexpr const char* kFormConvertSettings = "&Settings...";
constexpr const char* kFormCancel = "&Cancel";
struct ConvertChoice {
    const char* caption;
    int code;
};
constexpr ConvertChoice kConvertChoices[5] = {
    {"&Poly()", 1}, {"&Wide line", 3}, {"&Dotted line", 4}, {"&Tree line", 5}, {"&Forest", 7}};

} // namespace fw
