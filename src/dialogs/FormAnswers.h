// Scripted answers to the property dialogs: "NAME FIELD=VALUE ... ok|cancel", where NAME is the
// form (FormOvor), FIELD a control (Text1, Check2, Combo1) and VALUE its text, tick (0/1) or
// list position. The dialog's own checks run on OK; a refused value keeps the dialog open.
#pragma once

#include <string>
#include <vector>

#include "core/Config.h"
#include "core/Helpers.h"
#include "core/Records.h"

namespace fw {

enum class FormAnswerResult { Stored = 1, Cancelled = 0, Refused = -1 };

// words: the form's name, the fields and "ok" or "cancel". problem tells why an answer was refused
// without reaching the checks (another form, an unknown field, a new shape's cancel).
FormAnswerResult AnswerShapeForm(const std::vector<std::string>& words, ShapeRecord& shape, const PointList* points,
                                 bool mustComplete, const ValueContext& ctx, std::string& problem);
FormAnswerResult AnswerObjectForm(const std::vector<std::string>& words, ObjectRecord& object, ConfigRecord& config,
                                  const std::string& programFolder, const ValueContext& ctx, std::string& problem);
FormAnswerResult AnswerProjectForm(const std::vector<std::string>& words, ProjectRecord& project, bool isNew,
                                   const ValueContext& ctx, std::string& problem);

// The form that edits an object type: "FormRunway", "FormOapi", ...; empty for none.
std::string ObjectFormName(int type);

} // namespace fw
