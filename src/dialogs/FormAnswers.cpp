#include "dialogs/FormAnswers.h"

#include <cstdlib>

#include "core/Numbers.h"
#include "dialogs/FormOapi.h"
#include "dialogs/FormShape.h"
#include "dialogs/ObjectForms.h"
#include "dialogs/SettingsForms.h"
#include "ports/Ui.h"

namespace fw {

namespace {

struct Parsed {
    struct Word {
        std::string name;
        std::string value;
        bool button = false; // a button pressed, not a field filled
    };
    std::string form;
    std::vector<Word> words;
    std::string end; // "ok", "cancel" or "close"
    bool ok = false;
};

int HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// "%HH" stands for that byte; a "%" not followed by two hex digits stays as it is.
std::string Decode(const std::string& v)
{
    std::string out;
    for (std::size_t i = 0; i < v.size(); ++i) {
        if (v[i] == '%' && i + 2 < v.size() && HexDigit(v[i + 1]) >= 0 && HexDigit(v[i + 2]) >= 0) {
            out += static_cast<char>(HexDigit(v[i + 1]) * 16 + HexDigit(v[i + 2]));
            i += 2;
        } else {
            out += v[i];
        }
    }
    return out;
}

bool Parse(const std::vector<std::string>& words, Parsed& p, std::string& problem)
{
    if (words.size() < 2 || (words.back() != "ok" && words.back() != "cancel" && words.back() != "close")) {
        problem = "a form answer names the form and ends with ok, cancel or close";
        return false;
    }
    p.form = words.front();
    p.end = words.back();
    p.ok = p.end == "ok";
    for (std::size_t i = 1; i + 1 < words.size(); ++i) {
        const std::size_t eq = words[i].find('=');
        if (eq == 0) {
            problem = "'" + words[i] + "' is no FIELD=VALUE";
            return false;
        }
        if (eq == std::string::npos)
            p.words.push_back({words[i], {}, true});
        else
            p.words.push_back({words[i].substr(0, eq), Decode(words[i].substr(eq + 1)), false});
    }
    return true;
}

// What a form does beyond filling its values: fields that act when set, and its buttons.
struct FormHooks {
    // A field the form handles itself (true; a value it can't take sets the problem); others go
    // into the values.
    std::function<bool(const std::string& name, const std::string& value, std::string& why)> special;
    // A field took its value.
    std::function<void(const std::string& name)> changed;
    // Presses a button; false for a button the form doesn't have.
    std::function<bool(const std::string& name)> button;
};

// The words in their order: fields go into the form's values, buttons are pressed. A field or a
// button the form doesn't have is refused.
bool Apply(const Parsed& p, FormValues& values, std::string& problem, const FormHooks& hooks = {})
{
    for (const auto& w : p.words) {
        if (w.button) {
            if (!hooks.button || !hooks.button(w.name)) {
                problem = p.form + " has no button " + w.name;
                return false;
            }
            continue;
        }
        std::string why;
        if (hooks.special && hooks.special(w.name, w.value, why)) {
            if (!why.empty()) {
                problem = why;
                return false;
            }
            continue;
        }
        if (!values.Has(w.name)) {
            problem = p.form + " has no field " + w.name;
            return false;
        }
        values[w.name] = w.value;
        if (hooks.changed)
            hooks.changed(w.name);
    }
    return true;
}

// Cancel and the close box end without the checks; OK stores only when they all pass.
template <class OkFn>
FormAnswerResult Close(const Parsed& p, OkFn ok)
{
    if (!p.ok)
        return FormAnswerResult::Cancelled;
    return ok() == OkResult::Stored ? FormAnswerResult::Stored : FormAnswerResult::Refused;
}

template <class Form, class Record>
FormAnswerResult AnswerWith(const Parsed& p, Form& form, Record& record, const ValueContext& ctx,
                            std::string& problem, const FormHooks& hooks = {})
{
    if (!Apply(p, form.values, problem, hooks))
        return FormAnswerResult::Refused;
    return Close(p, [&] { return form.Ok(ctx, record); });
}

// The dialogs that show an object and need nothing else.
template <class Form>
FormAnswerResult AnswerObject(const Parsed& p, ObjectRecord& object, const ValueContext& ctx, std::string& problem)
{
    Form form;
    form.Show_(object, ctx.decimalSeparator);
    return AnswerWith(p, form, object, ctx, problem);
}

bool Expect(const Parsed& p, const std::string& name, std::string& problem)
{
    if (p.form == name)
        return true;
    problem = "the dialog open is " + name + ", not " + p.form;
    return false;
}

} // namespace

std::string ObjectFormName(int type)
{
    switch (type) {
    case kRunway: return FormRunway::kName;
    case kApi: return FormOapi::kName;
    case kVor: return FormOvor::kName;
    case kNdb: return FormOndb::kName;
    case kInit: return FormInit::kName;
    case kExclude: return FormOexclude::kName;
    case kSign: return FormSign::kName;
    default: return {};
    }
}

FormAnswerResult AnswerShapeForm(const std::vector<std::string>& words, ShapeRecord& shape, const PointList* points,
                                 bool mustComplete, const ValueContext& ctx, std::string& problem,
                                 const FormButtons& buttons)
{
    Parsed p;
    if (!Parse(words, p, problem) || !Expect(p, FormShape::kName, problem))
        return FormAnswerResult::Refused;
    FormShape form;
    form.Show_(shape, points ? static_cast<int>(points->size()) - 1 : 3, mustComplete, ctx.decimalSeparator);
    if (!p.ok && !form.CanClose()) {
        problem = "a new shape's dialog closes only with OK";
        return FormAnswerResult::Refused;
    }
    FormHooks hooks;
    // Choosing the number of bands is the option's click: 4 bands hold the selection to 3.
    hooks.changed = [&form](const std::string& name) {
        if (name == "Bands")
            form.SetBandOption(form.values.Int("Bands"));
    };
    hooks.button = [&buttons](const std::string& name) {
        if (name != "Converter")
            return false;
        if (buttons.converter)
            buttons.converter();
        return true;
    };
    return AnswerWith(p, form, shape, ctx, problem, hooks);
}

FormAnswerResult AnswerObjectForm(const std::vector<std::string>& words, ObjectRecord& object, ConfigRecord& config,
                                  const std::string& programFolder, const ValueContext& ctx, std::string& problem)
{
    Parsed p;
    if (!Parse(words, p, problem) || !Expect(p, ObjectFormName(object.oType), problem))
        return FormAnswerResult::Refused;
    switch (object.oType) {
    case kRunway: return AnswerObject<FormRunway>(p, object, ctx, problem);
    case kVor: return AnswerObject<FormOvor>(p, object, ctx, problem);
    case kNdb: return AnswerObject<FormOndb>(p, object, ctx, problem);
    case kInit: return AnswerObject<FormInit>(p, object, ctx, problem);
    case kExclude: return AnswerObject<FormOexclude>(p, object, ctx, problem);
    case kSign: {
        FormSign f;
        f.Show_(object, ctx.decimalSeparator);
        // Panels by their type option and the Caption's items.
        for (const auto& w : p.words)
            if (!w.button && w.name.size() == 5 && w.name.compare(0, 4, "Type") == 0)
                f.SetPanelType(w.name[4] - '1', w.value.empty() ? 3 : w.value[0] - '0');
        if (!Apply(p, f.values, problem))
            return FormAnswerResult::Refused;
        for (const auto& w : p.words)
            if (!w.button && w.name == "Caption")
                f.buffer = ParseSignCaption(w.value);
        return Close(p, [&] { return f.Ok(ctx, object); });
    }
    case kApi: {
        FormOapi f;
        f.Show_(object, config, programFolder, ctx.decimalSeparator);
        for (const auto& w : p.words)
            if (!w.button && w.name == "Combo1")
                f.ChooseMacro(std::atoi(w.value.c_str()));
        if (!Apply(p, f.values, problem))
            return FormAnswerResult::Refused;
        if (!p.ok && !f.CanClose(ctx.ui))
            return FormAnswerResult::Refused;
        return Close(p, [&] { return f.Ok(ctx, object, config); });
    }
    default:
        problem = "no dialog edits this object";
        return FormAnswerResult::Refused;
    }
}

FormAnswerResult AnswerProjectForm(const std::vector<std::string>& words, ProjectRecord& project, bool isNew,
                                   const ValueContext& ctx, std::string& problem, const FormButtons& buttons)
{
    Parsed p;
    if (!Parse(words, p, problem) || !Expect(p, FormSettings::kName, problem))
        return FormAnswerResult::Refused;
    FormSettings form;
    form.Show_(project, isNew, ctx.decimalSeparator);
    if (!p.ok && !form.CanClose()) {
        problem = "a new project's settings close only with OK";
        return FormAnswerResult::Refused;
    }
    FormHooks hooks;
    hooks.button = [&form, &buttons](const std::string& name) {
        if (name == "Settings") {
            // The optimisation settings edit the dialog's working copy; OK here stores it.
            if (buttons.optimize) {
                ProjectRecord copy = form.working;
                if (buttons.optimize(copy))
                    form.working = copy;
            }
            return true;
        }
        if (name == "Converter") {
            if (buttons.converter)
                buttons.converter();
            return true;
        }
        return false;
    };
    return AnswerWith(p, form, project, ctx, problem, hooks);
}

FormAnswerResult AnswerOptimizeForm(const std::vector<std::string>& words, ProjectRecord& working,
                                    const ValueContext& ctx, std::string& problem)
{
    Parsed p;
    if (!Parse(words, p, problem) || !Expect(p, FormOptimize::kName, problem))
        return FormAnswerResult::Refused;
    FormOptimize form;
    form.Show_(working);
    return AnswerWith(p, form, working, ctx, problem);
}

FormAnswerResult AnswerOptionsForm(const std::vector<std::string>& words, ConfigRecord& config, bool openGLActive,
                                   const ValueContext& ctx, std::string& problem)
{
    Parsed p;
    if (!Parse(words, p, problem) || !Expect(p, FormOptions::kName, problem))
        return FormAnswerResult::Refused;
    FormOptions form;
    form.Show_(config);
    FormHooks hooks;
    hooks.special = [&form](const std::string& name, const std::string& value, std::string& why) {
        if (name != "Pg1")
            return false;
        // The colour picker's answer: a colour 0x00BBGGRR as a whole number.
        double c = 0;
        const auto v = ParseLocalNumber(value, '.', c) ? RoundToInt32(c) : std::nullopt;
        if (!v || *v < 0 || *v > 0xFFFFFF)
            why = "Pg1 takes a colour, a number 0 to 16777215";
        else
            form.gridColor = *v;
        return true;
    };
    hooks.button = [&form, &ctx](const std::string& name) {
        static const char* const kKeys[6] = {"poly", "texpoly", "wideline", "dotline", "treeline", "forest"};
        for (int i = 0; i < 6; ++i)
            if (name == kKeys[i]) {
                // The shape properties dialog on the dialog's own copy of the default.
                ShapeRecord copy = form.defaults[i];
                if (ctx.ui && ctx.ui->ShapeProperties(copy, nullptr))
                    form.defaults[i] = copy;
                return true;
            }
        for (int i = 0; i < 3; ++i)
            if (name == "Browse" + std::to_string(i + 1)) {
                const std::string field = "Text" + std::to_string(i + 1);
                std::string folder = form.values.Text(field);
                if (ctx.ui && ctx.ui->ChooseFolder(PathPrompts()[i], form.values.Text(field), folder))
                    form.TakeFolder(i, folder);
                return true;
            }
        return false;
    };
    if (!Apply(p, form.values, problem, hooks))
        return FormAnswerResult::Refused;
    return Close(p, [&] { return form.Ok(ctx, config, openGLActive); });
}

FormAnswerResult AnswerConverterForm(const std::vector<std::string>& words, std::map<std::string, std::string>& fields,
                                     const ValueContext& ctx, std::string& problem)
{
    Parsed p;
    if (!Parse(words, p, problem) || !Expect(p, FormConverter::kName, problem))
        return FormAnswerResult::Refused;
    if (p.end != "close") {
        problem = "the converter has no OK or Cancel: its answer ends with close";
        return FormAnswerResult::Refused;
    }
    for (const auto& w : p.words)
        if (!w.button && FormConverter::IsResult(w.name)) {
            problem = "the converter's result " + w.name + " can't be typed into";
            return FormAnswerResult::Refused;
        }
    FormConverter form;
    form.Load_();
    for (const auto& [name, value] : fields)
        form.values[name] = value;
    FormHooks hooks;
    hooks.button = [&form, &ctx](const std::string& name) {
        if (name == "dist")
            form.ConvertDist(ctx.decimalSeparator);
        else if (name == "lat")
            form.ConvertLat(ctx.decimalSeparator);
        else
            return false;
        return true;
    };
    // What was typed before a refused word stays: the window keeps it.
    const bool applied = Apply(p, form.values, problem, hooks);
    fields = form.values.All();
    return applied ? FormAnswerResult::Cancelled : FormAnswerResult::Refused;
}

} // namespace fw
