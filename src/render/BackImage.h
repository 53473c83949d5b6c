// The View menu's background image commands.
#pragma once

#include "core/Session.h"

namespace fw {

constexpr const char* kBitmapFilter = "Bitmap picture (*.bmp)|*.bmp";

// "&Load background image...": a chosen bitmap replaces the image, centred on the world origin at
// one world unit a pixel, and is shown. A picture that can't be read or is over 800 by 600 is
// refused with its message and the old image stays.
void MnuBloadremove(Session& s);

// "Remove background image...": with an image loaded and the user's yes, the image and its path go.
void MnuBremove(Session& s);

} // namespace fw
