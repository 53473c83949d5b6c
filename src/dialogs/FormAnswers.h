// Scripted answers to the dialogs: "NAME WORD ... ok|cancel|close", where NAME is the form
// (FormOvor) and each WORD, in order, is either FIELD=VALUE, a control (Text1, Check2, Combo1) and
// its text, tick (0/1) or list position, or the name of a button the form has, which is pressed.
// In a VALUE "%HH" (two hex digits) stands for that byte, so "%20" is a blank and "%25" a percent
// sign. "ok" presses OK and the dialog's own checks run; a refused value keeps the dialog open.
// "cancel" presses Cancel, "close" the window's close box; both end without the checks where the
// dialog lets them.
//
// Buttons: FormSettings "Settings" (opens FormOptimize on the working copy) and "Converter";
// FormShape "Converter"; FormOptions "poly", "texpoly", "wideline", "dotline", "treeline",
// "forest" (the shape properties dialog on that default shape) and "Browse1".."Browse3" (the
// folder browser); FormConverter "dist" and "lat" (the "Convert >>" of each tab), which ends with
// "close" only. FormOptions' "Pg1=N" is the grid colour picked (0x00BBGGRR as a number), and
// FormShape's "Bands=0|1" chooses 4 or 8 bands as the options do.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/Config.h"
#include "core/Helpers.h"
#include "core/Records.h"

namespace fw {

enum class FormAnswerResult { Stored = 1, Cancelled = 0, Refused = -1 };

// The dialogs that buttons open which the Ui port doesn't carry; the caller answers them. An empty
// entry makes its button do nothing. The shape and folder dialogs go through ctx.ui.
struct FormButtons {
    // FormSettings' "&Settings...": FormOptimize on the dialog's working copy; true for OK.
    std::function<bool(ProjectRecord& working)> optimize;
    // "Converter...": shows the unit converter, which doesn't block.
    std::function<void()> converter;
};

// words: the form's name, the words and "ok", "cancel" or "close". problem tells why an answer was
// refused without reaching the checks (another form, an unknown field, a new shape's cancel).
FormAnswerResult AnswerShapeForm(const std::vector<std::string>& words, ShapeRecord& shape, const PointList* points,
                                 bool mustComplete, const ValueContext& ctx, std::string& problem,
                                 const FormButtons& buttons = {});
FormAnswerResult AnswerObjectForm(const std::vector<std::string>& words, ObjectRecord& object, ConfigRecord& config,
                                  const std::string& programFolder, const ValueContext& ctx, std::string& problem);
FormAnswerResult AnswerProjectForm(const std::vector<std::string>& words, ProjectRecord& project, bool isNew,
                                   const ValueContext& ctx, std::string& problem, const FormButtons& buttons = {});
// FormOptimize on the project settings' working copy.
FormAnswerResult AnswerOptimizeForm(const std::vector<std::string>& words, ProjectRecord& working,
                                    const ValueContext& ctx, std::string& problem);
// FormOptions on the configuration; openGLActive: what the running program uses.
FormAnswerResult AnswerOptionsForm(const std::vector<std::string>& words, ConfigRecord& config, bool openGLActive,
                                   const ValueContext& ctx, std::string& problem);
// The unit converter on its kept fields (empty: as loaded at start); Cancelled when it was closed.
FormAnswerResult AnswerConverterForm(const std::vector<std::string>& words, std::map<std::string, std::string>& fields,
                                     const ValueContext& ctx, std::string& problem);

// The form that edits an object type: "FormRunway", "FormOapi", ...; empty for none.
std::string ObjectFormName(int type);

} // namespace fw
