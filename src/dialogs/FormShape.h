// The shape properties dialog: one form for six shape types, four tabs, fields switched by type.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/Helpers.h"
#include "core/Records.h"
#include "dialogs/FormValues.h"

namespace fw {

// Which fields a type shows; an empty label hides the value box.
struct ShapeFields {
    bool colored = false;      // "Colored"
    bool color = false;        // colour box, "Pick color"
    bool transparency = false; // slider
    bool lighted = false;      // "Constantly lighted at any time of day" (general)
    std::string valueLabel;    // "Line width:", "Dot spacing:", "Tree height:", "Forest height:"
    bool effects = false;
    bool dotsAtPoints = false;
    bool texture = false;      // texture list, preview and the four variant ticks
    bool textureSwitch = false;
    bool mapping = false;      // TexPoly map and outline slider
    bool bands = false;        // TreeLine band picker
    bool forestType = false;
    bool noPointReduction = false;
    bool noTextureLevels = false;
    bool layer = false;
    std::string textureTabText; // "No texture options available..." or empty
    std::string mappingTabText; // "No mapping options available..." or empty
};

ShapeFields FieldsOf(int type);
std::string ShapeTitle(int type);

const std::vector<std::string>& EffectsList();
const std::vector<std::string>& LayerList();
const std::vector<std::string>& ForestTypeList();

// The four map corners of a TexPoly (texture pixels) or, in slot 0's Y, the selected band.
using MapCorners = std::array<Point, 4>;

class FormShape {
public:
    static constexpr const char* kName = "FormShape";

    // lastPoint: the shape's last point index; mustComplete: a new shape, OK is the only way out.
    void Show_(const ShapeRecord& record, int lastPoint, bool mustComplete, char decimalSeparator);
    // The checks in their order; on success the record takes the values.
    OkResult Ok(const ValueContext& ctx, ShapeRecord& record) const;
    // Closing the window without OK.
    bool CanClose() const { return !mustComplete; }
    bool CancelVisible() const { return !mustComplete; }

    // "Colored" on: colour and transparency enabled, texture list and its ticks disabled.
    bool ColorEnabled() const;
    bool TextureEnabled() const;

    // Map corners: how many the shape has (up to four), the hit test, dragging.
    int CornerCount() const;
    int mTPselect(int x, int y) const;
    void DragCorner(int corner, int x, int y);
    void DefaultTexMap(const PointList& points);

    // Bands: 4 (option 0) or 8 (option 1).
    int NumBands() const { return values.Int("Bands") == 1 ? 8 : 4; }
    void SetBandOption(int option);
    int mTLselect(int x, int y) const;
    void BandKey(int delta);

    FormValues values;
    MapCorners corners{};
    int type = 0;
    int lastPoint = 0;
    bool mustComplete = false;
};

// The outline colour of the map for a slider position 0..255 (colour wheel), as 0x00BBGGRR.
std::int32_t WheelColor(int v);

// The band picture: its height (232 or 240) and the height of one band (58 or 30).
int BandPictureHeight(int numBands);
int BandStep(int numBands);
// The two red frames around band s: left, top, right, bottom of each.
std::array<std::array<int, 4>, 2> BandFrames(int selected, int numBands);

// Exact compare of each entry with name; -1 when none matches or name is empty.
int FindTextureInList(const std::vector<std::string>& list, const std::string& name);
// The texture files of a folder, sorted by name.
std::vector<std::string> FillTexList(const std::string& folder);

// The shape's outline scaled and centred into a picture of width by height.
PointList PreviewOutline(const PointList& points, int width, int height);

// The texture picker's label: the folder cut to 64 characters, then "...".
std::string TextureFolderLabel(const std::string& folder);

} // namespace fw

namespace fw {

// The palette picker's cells: 1..14 in the first row, 16..30 in the second, each 26 pixels wide
// with 23 pixels of colour. Left, top, width and height of a cell's colour; the cell at a point, or
// -1 outside every cell.
struct CellRect {
    int x = 0, y = 0, w = 0, h = 0;
};
CellRect PaletteCell(int index);
int PaletteCellAt(int x, int y);

} // namespace fw
