#include "core/EditorState.h"

#include <algorithm>
#include <utility>

namespace fw {

int CSelection::shapeIsSelected(int index) const
{
    for (auto s : SelShapes_)
        if (s == index)
            return 1;
    return 0;
}

int CSelection::simpleSelection() const
{
    return (SelShapes_.size() == 1 && SelObjects_.empty()) ? 2 : 3;
}

int CSelection::squareIsWhere(std::int32_t x, std::int32_t y, std::int32_t tol) const
{
    // 64-bit so that bands at the ends of the range can't overflow.
    const std::int64_t X = x, Y = y, t = tol;
    const std::int64_t minX = SelLimits_[0], minY = SelLimits_[1], maxX = SelLimits_[2],
                       maxY = SelLimits_[3];
    const bool inY = Y > minY - t && Y < maxY + t;
    const bool inX = X > minX - t && X < maxX + t;
    const bool onLeft = X > minX - t && X < minX + t && inY;
    const bool onRight = X > maxX - t && X < maxX + t && inY;
    const bool onLow = Y > minY - t && Y < minY + t && inX;
    const bool onHigh = Y > maxY - t && Y < maxY + t && inX;
    if (onLeft && onLow)
        return 5;
    if (onLeft && onHigh)
        return 7;
    if (onLeft)
        return 1;
    if (onRight && onLow)
        return 6;
    if (onRight && onHigh)
        return 8;
    if (onRight)
        return 2;
    if (onLow)
        return 3;
    if (onHigh)
        return 4;
    return 0;
}

void CSelection::reset()
{
    SelShapes_.clear();
    SelObjects_.clear();
    SelPoints_.assign(1, 0);
    SelLimits_ = {0, 0, 0, 0};
    state_ = 1;
}

void CSelection::addEntry(int index, int kind, std::int32_t minX, std::int32_t maxX,
                          std::int32_t minY, std::int32_t maxY)
{
    auto& list = kind == 0 ? SelShapes_ : SelObjects_;
    list.push_back(static_cast<std::uint16_t>(index));
    if (SelShapes_.size() + SelObjects_.size() == 1) {
        SelLimits_ = {minX, minY, maxX, maxY};
        return;
    }
    SelLimits_[0] = std::min(SelLimits_[0], minX);
    SelLimits_[1] = std::min(SelLimits_[1], minY);
    SelLimits_[2] = std::max(SelLimits_[2], maxX);
    SelLimits_[3] = std::max(SelLimits_[3], maxY);
}

void CSelection::getSelection(std::vector<std::int32_t>& shapes, std::vector<std::int32_t>& objects) const
{
    if (!SelShapes_.empty())
        shapes.assign(SelShapes_.begin(), SelShapes_.end());
    if (!SelObjects_.empty())
        objects.assign(SelObjects_.begin(), SelObjects_.end());
}

void CSelection::getPoints(std::vector<std::int32_t>& points) const
{
    if (state_ == 2)
        points.assign(SelPoints_.begin(), SelPoints_.end());
}

void CSelSquare::initNew(std::int32_t x, std::int32_t y)
{
    IsActive_ = 1;
    left_ = right_ = x;
    low_ = top_ = y;
}

void CSelSquare::Update(std::int32_t x, std::int32_t y)
{
    if (IsActive_ != 0) {
        right_ = x;
        top_ = y;
    }
}

void CSelSquare::Sort()
{
    if (right_ < left_)
        std::swap(left_, right_);
    if (top_ < low_)
        std::swap(low_, top_);
}

void Cdraw1::reset()
{
    Coords.clear();
    CoordCount = 0;
}

void Cdraw1::AddPoint(std::int16_t x, std::int16_t y)
{
    Coords.resize(static_cast<std::size_t>(CoordCount) + 2);
    Coords[CoordCount] = x;
    Coords[CoordCount + 1] = y;
    CoordCount = static_cast<std::int16_t>(CoordCount + 2);
}

void Cdraw1::UpdatePoint(std::int16_t x, std::int16_t y)
{
    Coords.resize(static_cast<std::size_t>(CoordCount) + 2);
    Coords[CoordCount] = x;
    Coords[CoordCount + 1] = y;
}

void Cdraw1::getPoints(std::vector<std::int32_t>& out) const
{
    if (CoordCount == 0)
        return;
    out.assign(Coords.begin(), Coords.begin() + CoordCount);
}

std::int32_t Cdraw1::X(int i) const
{
    const std::size_t k = static_cast<std::size_t>(i) * 2;
    return i >= 0 && k < Coords.size() ? Coords[k] : 0;
}

std::int32_t Cdraw1::Y(int i) const
{
    const std::size_t k = static_cast<std::size_t>(i) * 2 + 1;
    return i >= 0 && k < Coords.size() ? Coords[k] : 0;
}

void ResetEditorState(EditorState& e, bool atStart)
{
    Clipboard clip = std::move(e.clipboard);
    const double rotation = e.LastRotation;
    e = EditorState{};
    if (!atStart) {
        e.clipboard = std::move(clip);
        e.LastRotation = rotation;
    }
}

} // namespace fw
