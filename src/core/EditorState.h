// The editor's session-wide state: selection, rubber band, drawing scratch, working copy, undo
// snapshots, clipboard and the memory kept between canvas events. The operations that change it
// live in the editor module; the painters only read it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/Records.h"
#include "core/Stores.h"

namespace fw {

// Limits in the record order: minimum X, maximum X, minimum Y, maximum Y.
using Limits = std::array<std::int32_t, 4>;

// What is selected: shapes, objects, points of the one selected shape, their box and the mode.
class CSelection {
public:
    CSelection() { reset(); }

    // 65535 when there is no entry.
    std::uint16_t firstShape() const { return SelShapes_.empty() ? 65535 : SelShapes_[0]; }
    std::uint16_t firstObject() const { return SelObjects_.empty() ? 65535 : SelObjects_[0]; }
    int shapeIsSelected(int index) const;
    // Upper bounds, -1 when empty.
    int sizeShape() const { return static_cast<int>(SelShapes_.size()) - 1; }
    int sizeObject() const { return static_cast<int>(SelObjects_.size()) - 1; }
    std::uint8_t state() const { return state_; }
    void setState(std::uint8_t v) { state_ = v; }
    std::uint16_t selShIndex(int position) const { return SelShapes_.at(position); }
    std::uint16_t selObjIndex(int position) const { return SelObjects_.at(position); }
    // 2 for exactly one shape and no object, else 3.
    int simpleSelection() const;
    // Handle code of the box's edges and corners at (x, y), bands of half-width tol.
    int squareIsWhere(std::int32_t x, std::int32_t y, std::int32_t tol) const;

    void resetPt() { SelPoints_.clear(); }
    void addPt(std::uint16_t index) { SelPoints_.push_back(index); }
    void reset();
    // kind 0 shape, 1 object; the first entry sets the box, later ones widen it.
    void addEntry(int index, int kind, std::int32_t minX, std::int32_t maxX, std::int32_t minY,
                  std::int32_t maxY);
    // A list with no entry leaves its array alone.
    void getSelection(std::vector<std::int32_t>& shapes, std::vector<std::int32_t>& objects) const;
    // Only in edit points mode; otherwise the array is left alone.
    void getPoints(std::vector<std::int32_t>& points) const;
    Limits getLimits() const { return {SelLimits_[0], SelLimits_[2], SelLimits_[1], SelLimits_[3]}; }
    void setLimits(const Limits& l) { SelLimits_ = {l[0], l[2], l[1], l[3]}; }

    const std::vector<std::uint16_t>& SelShapes() const { return SelShapes_; }
    const std::vector<std::uint16_t>& SelObjects() const { return SelObjects_; }
    const std::vector<std::uint16_t>& SelPoints() const { return SelPoints_; }
    int SelShapeCount() const { return static_cast<int>(SelShapes_.size()); }
    int SelObjectCount() const { return static_cast<int>(SelObjects_.size()); }
    // The box in its own order: minimum X, minimum Y, maximum X, maximum Y.
    const std::array<std::int32_t, 4>& SelLimits() const { return SelLimits_; }

private:
    std::vector<std::uint16_t> SelShapes_;
    std::vector<std::uint16_t> SelObjects_;
    std::vector<std::uint16_t> SelPoints_;
    std::array<std::int32_t, 4> SelLimits_{};
    std::uint8_t state_ = 1;
};

// The rubber band.
class CSelSquare {
public:
    std::int32_t left() const { return left_; }
    std::int32_t right() const { return right_; }
    std::int32_t top() const { return top_; }
    std::int32_t low() const { return low_; }
    std::int16_t IsActive() const { return IsActive_; }
    void reset() { *this = CSelSquare{}; }
    void initNew(std::int32_t x, std::int32_t y);
    void Update(std::int32_t x, std::int32_t y);
    void Sort();

private:
    std::int32_t left_ = 0;
    std::int32_t right_ = 0;
    std::int32_t low_ = 0;
    std::int32_t top_ = 0;
    std::int16_t IsActive_ = 0;
};

// The shape being drawn. Coords holds one pair more than CoordCount: the rubber-band end.
class Cdraw1 {
public:
    void reset();
    void AddPoint(std::int16_t x, std::int16_t y);
    void UpdatePoint(std::int16_t x, std::int16_t y);
    // With no committed coordinate the array is left alone.
    void getPoints(std::vector<std::int32_t>& out) const;
    int PointIndex() const { return CoordCount / 2; }
    // Reads past the committed points (the rubber band); 0 outside the array.
    std::int32_t X(int i) const;
    std::int32_t Y(int i) const;

    std::vector<std::int32_t> Coords;
    std::int16_t CoordCount = 0;
};

// The selected records while a moving edit or transform runs; every change is recomputed from
// the base so that no rounding builds up.
struct WorkingCopy {
    std::vector<PointList> WorkBasePoints;
    std::vector<PointList> WorkPoints;
    std::vector<ShapeRecord> WorkShapes;
    std::vector<ObjectRecord> WorkBaseObjects;
    std::vector<ObjectRecord> WorkObjects;
    std::vector<std::int16_t> WorkSelPoints;
    Limits WorkLimits{};
    Limits WorkStartLimits{};
    std::int16_t WorkShapeLast = -1;
    std::int16_t WorkObjectLast = -1;

    int WorkShapeCount() const { return WorkShapeLast + 1; }
    int WorkObjectCount() const { return WorkObjectLast + 1; }
};

// A whole scene with its own selection, for undo by swap.
struct SceneSnapshot {
    Stores stores;
    CSelection selection;
};

// The internal copy buffer; points and positions relative to the copied box's minimum corner.
struct Clipboard {
    std::vector<PointList> points;
    std::vector<ShapeRecord> shapes;
    std::vector<ObjectRecord> objects;
    std::int16_t shapeLast = -1;
    std::int16_t objectLast = -1;
};

// Values kept between canvas events.
struct EventMemory {
    std::int16_t DrawFirstPoint = 0;
    std::uint8_t DrawShapeType = 0;
    std::uint8_t PlaceObjectType = 0;
    Point PanStartPixel;
    Point PanSavedOffset;
    Point DragStart;
    Point ScaleStart;
    std::int32_t ScaleHandle = 0;
    Point RotateStart;
    double RotateAngle = 0;
    std::int32_t ImageScaleStart = 0;
    Point ImageDragStart;
    Point ContextPoint;
};

// Tool buttons in the order of the tool strip (separators left out).
constexpr int kToolButtons = 19;
// The five top menus: MnuFile, MnuEdit, MnuSelection, MnuBackground, MnuHelp.
constexpr int kTopMenus = 5;

struct EditorState {
    std::uint8_t EditState = 0;
    CSelection selection;
    CSelSquare selSquare;
    Cdraw1 draw;
    WorkingCopy work;
    EventMemory memory;

    // Undo by swap: the scene before the running operation, and the one undo brings back.
    SceneSnapshot UndoNext;
    SceneSnapshot UndoLast;
    Clipboard clipboard;

    // The rotate dialog's last value; the rescale dialog's live in the configuration.
    double LastRotation = 0;
    // Status panels 4 and 5: latitude and longitude of the mouse, written on mouse moves.
    std::string statusLatitude;
    std::string statusLongitude;

    // Written at once by the tools (the menu-state tick reads them).
    std::array<bool, kToolButtons> toolEnabled = filled(true);
    std::array<bool, kTopMenus> topMenuEnabled = filled5(true);

private:
    static std::array<bool, kToolButtons> filled(bool v)
    {
        std::array<bool, kToolButtons> a{};
        a.fill(v);
        return a;
    }
    static std::array<bool, kTopMenus> filled5(bool v)
    {
        std::array<bool, kTopMenus> a{};
        a.fill(v);
        return a;
    }
};

// Reset for a new or loaded project: everything but the clipboard and the dialog values.
// At start the clipboard goes as well.
void ResetEditorState(EditorState& e, bool atStart = false);

} // namespace fw
