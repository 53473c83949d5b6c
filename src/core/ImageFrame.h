// The frame with which the background image is moved and scaled on the canvas.
#pragma once

#include <cstdint>

#include "core/BitmapState.h"
#include "core/COffset.h"
#include "core/Records.h"

namespace fw {

// The image frame of the move-and-scale tool, in world units.
void StartImageFrame(CBitmapState& b, const ShowFlagsRecord& flags);
void MoveImageFrame(CBitmapState& b, std::int32_t dx, std::int32_t dy);
void ScaleImageFrame(CBitmapState& b, std::int32_t dx);
// The current frame's corner and scale go to the project; the frame starts afresh from them.
void FinishImageFrame(CBitmapState& b, ShowFlagsRecord& flags);
void StopImageFrame(CBitmapState& b);
// 1 on the scale handle, 2 inside the frame, 0 elsewhere; (px, py) in pixels.
int ImageFrameHit(const CBitmapState& b, const COffset& view, std::int32_t px, std::int32_t py);

} // namespace fw
