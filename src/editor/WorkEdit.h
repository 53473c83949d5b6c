// Editing what exists: the working copy of moving edits, deleting records and points, inserting.
#pragma once

#include <cstdint>
#include <vector>

#include "core/Session.h"

namespace fw {

// Copies of the selected records in selection order; a list with no entry leaves its array alone.
void CopySelection(const Session& s, std::vector<PointList>& points, std::vector<ShapeRecord>& shapes,
                   std::vector<ObjectRecord>& objects);
void WorkBegin(WorkingCopy& w, const std::vector<PointList>& points, const std::vector<ShapeRecord>& shapes,
               const std::vector<ObjectRecord>& objects, int shapeLast, int objectLast, const Limits& limits);
void WorkSetPoints(WorkingCopy& w, const std::vector<std::int32_t>& selected);
void WorkClear(WorkingCopy& w);
void WorkResult(const WorkingCopy& w, std::vector<PointList>& points, std::vector<ShapeRecord>& shapes,
                std::vector<ObjectRecord>& objects, Limits& limits);
void WorkMove(WorkingCopy& w, std::int32_t dx, std::int32_t dy);
void WorkMovePoints(WorkingCopy& w, std::int32_t dx, std::int32_t dy);
void StoreSelection(Session& s, const std::vector<PointList>& points, const std::vector<ShapeRecord>& shapes,
                    const std::vector<ObjectRecord>& objects);
// The box over all points and object positions, in the record order of limits.
Limits SelectionLimits(const std::vector<PointList>& points, const std::vector<ObjectRecord>& objects,
                       int shapeLast, int objectLast);

// CopySelection, getLimits, in edit points mode getPoints, WorkClear, WorkBegin, WorkSetPoints.
void LoadWorkingCopy(Session& s);
// WorkResult, StoreSelection, WorkClear, setLimits with the result's box.
void EndWorkingCopy(Session& s);

void DeleteSelection(Session& s);
// 0: every point selected (delete the shape); -1: too few would remain; 1: deleted.
int DeleteSelectedPoints(Session& s);
// 1 when a point was inserted after the last selected one.
int InsertPoint(Session& s);

// The delete command.
void MnuEdelete(Session& s);

} // namespace fw
