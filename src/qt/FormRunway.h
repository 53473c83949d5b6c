// The runway form on Qt: five pages over the FormRunway model.
#pragma once

#include <QWidget>

#include "core/Helpers.h"
#include "core/Records.h"

namespace fw::qt {

bool RunFormRunway(ObjectRecord& record, const ValueContext& ctx, QWidget* parent);

} // namespace fw::qt
