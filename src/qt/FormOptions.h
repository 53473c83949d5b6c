// The preferences form on Qt.
#pragma once

#include <string>

#include <QWidget>

#include "core/Config.h"
#include "core/Helpers.h"

namespace fw::qt {

// Edits the configuration: grid, OpenGL, paths and the six default shapes.
bool RunFormOptions(ConfigRecord& config, bool openGLActive, const ValueContext& ctx,
                    const std::string& programFolder, QWidget* parent);

} // namespace fw::qt
