// Flip, rotate, rescale and convert of the selection, and the design tips.
#pragma once

#include <cstdint>
#include <string>

#include "core/Session.h"

namespace fw {

void WorkFlip(WorkingCopy& w, std::int32_t fx, std::int32_t fy);
// handle as squareIsWhere names it; fixed 1 scales about the box centre by sx, sy.
void WorkRescale(WorkingCopy& w, int handle, std::int32_t dx, std::int32_t dy, int fixed, double sx, double sy);
// fixed 0: the angle is dx / span of a full turn. Returns the angle used.
double WorkRotate(WorkingCopy& w, std::int32_t dx, std::int32_t span, int fixed, double angle);

// FormInform: first line, an empty line, second line. Returns the new flag; flag 0 shows nothing.
int ShowTip(Session& s, const std::string& first, const std::string& second, int flag);

// FormRotate: true on OK with LastRotation stored.
bool FormRotate(Session& s);
// FormRescale: true on OK with the factors and the ratio box stored in the configuration.
bool FormRescale(Session& s);

void MnuEflipx(Session& s);
void MnuEflipy(Session& s);
void MnuEdrot(Session& s);
void MnuEdscale(Session& s);
void MnuErescale(Session& s);
void MnuErotate(Session& s);
void MnuSconvertshapeto(Session& s);

// The tip at the end of a free rescale (11) or rotate (13).
void FreeEditTip(Session& s, int state);

} // namespace fw
