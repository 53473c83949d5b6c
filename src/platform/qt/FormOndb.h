// The Ondb dialog on Qt: a thin view over the model in dialogs/ObjectForms.h.
#pragma once

#include <QWidget>

#include "core/Helpers.h"
#include "core/Records.h"

namespace fw::qt {

// Edits the record; true when OK stored the values.
bool RunFormOndb(ObjectRecord& record, const ValueContext& ctx, QWidget* parent);

} // namespace fw::qt
