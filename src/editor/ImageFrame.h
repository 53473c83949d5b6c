// Moving and scaling the background image by its frame (held with the image in the session).
#pragma once

#include "core/Session.h"

namespace fw {

// The frame from the project's image values: position, scale and the image's size.
void StartImageFrame(Session& s);
// Stops a running frame: both point sets cleared, not active.
void StopImageFrame(Session& s);
void MoveImageFrame(ImageFrame& f, std::int32_t dx, std::int32_t dy);
// A horizontal offset from the drag's start scales; the top left corner stays.
void ScaleImageFrame(ImageFrame& f, std::int32_t dx, std::int32_t imageWidth, std::int32_t imageHeight);
// Pixel hit tests on the current frame: the scale handle in the middle of the right edge, and
// the inside.
bool OnImageHandle(const Session& s, std::int32_t px, std::int32_t py);
bool InsideImageFrame(const Session& s, std::int32_t px, std::int32_t py);

// "Move and scale image": starts or stops the frame.
void MnuBedit(Session& s);

} // namespace fw
