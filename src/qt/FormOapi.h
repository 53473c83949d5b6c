// The 3-D object form on Qt, over the FormOapi model.
#pragma once

#include <string>

#include <QWidget>

#include "core/Config.h"
#include "core/Helpers.h"
#include "core/Records.h"

namespace fw::qt {

// Edits the object; on OK the configuration keeps the macro folder and list position.
bool RunFormOapi(ObjectRecord& record, const ValueContext& ctx, ConfigRecord& config,
                 const std::string& programFolder, QWidget* parent);

} // namespace fw::qt
