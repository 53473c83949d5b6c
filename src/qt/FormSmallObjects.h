// The small object dialogs on Qt (NDB, VOR, exclude area, initial location): thin views over the
// models in dialogs/ObjectForms.h. Each edits the record and returns true when OK stored the values.
#pragma once

#include <QWidget>

#include "core/Helpers.h"
#include "core/Records.h"

namespace fw::qt {

bool RunFormOndb(ObjectRecord& record, const ValueContext& ctx, QWidget* parent);
bool RunFormOvor(ObjectRecord& record, const ValueContext& ctx, QWidget* parent);
bool RunFormOexclude(ObjectRecord& record, const ValueContext& ctx, QWidget* parent);
bool RunFormInit(ObjectRecord& record, const ValueContext& ctx, QWidget* parent);

} // namespace fw::qt
