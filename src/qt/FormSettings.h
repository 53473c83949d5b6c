// Project settings and the optimisation settings on Qt.
#pragma once

#include <string>

#include <QWidget>

#include "core/Config.h"
#include "core/Helpers.h"
#include "core/Records.h"

namespace fw::qt {

// Edits the project record; with isNew (the New command) only OK leaves the form.
bool RunFormSettings(ProjectRecord& project, bool isNew, const ValueContext& ctx, const ConfigRecord& config,
                     const std::string& programFolder, QWidget* parent);

// FormOptimize on the settings' working copy.
bool RunFormOptimize(ProjectRecord& working, const ValueContext& ctx, const ConfigRecord& config,
                     const std::string& programFolder, QWidget* parent);

} // namespace fw::qt
