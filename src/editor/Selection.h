// Finding what a click or a rubber band touches, and the selection's copies for undo.
#pragma once

#include <cstdint>

#include "core/Session.h"

namespace fw {

// mode 1 selects, mode 0 only asks whether the hit is already selected.
std::int16_t SelectAt(Session& s, double xMin, double xMax, double yMin, double yMax, int mode);
std::int16_t SelectPointsAt(Session& s, double xMin, double xMax, double yMin, double yMax, int mode);
// 1 if a selected shape or object has this type code.
int TypeInSelection(const Session& s, int type);
// Whether records of a type are shown (and so can be hit).
bool TypeIsShown(const ShowFlagsRecord& f, int type);
// The selection as it stood, box included, into another instance.
void CopySelectionState(const CSelection& from, CSelection& to);

} // namespace fw
