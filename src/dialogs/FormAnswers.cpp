#include "dialogs/FormAnswers.h"

#include "dialogs/FormOapi.h"
#include "dialogs/FormShape.h"
#include "dialogs/ObjectForms.h"
#include "dialogs/SettingsForms.h"

namespace fw {

namespace {

struct Parsed {
    std::string form;
    std::vector<std::pair<std::string, std::string>> fields;
    bool ok = false;
};

bool Parse(const std::vector<std::string>& words, Parsed& p, std::string& problem)
{
    if (words.size() < 2 || (words.back() != "ok" && words.back() != "cancel")) {
        problem = "a form answer names the form and ends with ok or cancel";
        return false;
    }
    p.form = words.front();
    p.ok = words.back() == "ok";
    for (std::size_t i = 1; i + 1 < words.size(); ++i) {
        const std::size_t eq = words[i].find('=');
        if (eq == std::string::npos || eq == 0) {
            problem = "'" + words[i] + "' is no FIELD=VALUE";
            return false;
        }
        p.fields.emplace_back(words[i].substr(0, eq), words[i].substr(eq + 1));
    }
    return true;
}

// Fields go into the form's values; a name the form doesn't have is refused.
bool Apply(const Parsed& p, FormValues& values, std::string& problem)
{
    for (const auto& [name, value] : p.fields) {
        if (!values.Has(name)) {
            problem = p.form + " has no field " + name;
            return false;
        }
        values[name] = value;
    }
    return true;
}

// Cancel ends without the checks; OK stores only when they all pass.
template <class OkFn>
FormAnswerResult Close(const Parsed& p, OkFn ok)
{
    if (!p.ok)
        return FormAnswerResult::Cancelled;
    return ok() == OkResult::Stored ? FormAnswerResult::Stored : FormAnswerResult::Refused;
}

template <class Form, class Record>
FormAnswerResult Answer(const Parsed& p, Form& form, Record& record, const ValueContext& ctx, std::string& problem)
{
    if (!Apply(p, form.values, problem))
        return FormAnswerResult::Refused;
    return Close(p, [&] { return form.Ok(ctx, record); });
}

// The dialogs that show an object and need nothing else.
template <class Form>
FormAnswerResult AnswerObject(const Parsed& p, ObjectRecord& object, const ValueContext& ctx, std::string& problem)
{
    Form form;
    form.Show_(object, ctx.decimalSeparator);
    return Answer(p, form, object, ctx, problem);
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
                                 bool mustComplete, const ValueContext& ctx, std::string& problem)
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
    return Answer(p, form, shape, ctx, problem);
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
        for (const auto& [name, value] : p.fields)
            if (name.size() == 5 && name.compare(0, 4, "Type") == 0)
                f.SetPanelType(name[4] - '1', value.empty() ? 3 : value[0] - '0');
        if (!Apply(p, f.values, problem))
            return FormAnswerResult::Refused;
        for (const auto& [name, value] : p.fields)
            if (name == "Caption")
                f.buffer = ParseSignCaption(value);
        return Close(p, [&] { return f.Ok(ctx, object); });
    }
    case kApi: {
        FormOapi f;
        f.Show_(object, config, programFolder, ctx.decimalSeparator);
        for (const auto& [name, value] : p.fields)
            if (name == "Combo1")
                f.ChooseMacro(std::atoi(value.c_str()));
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
                                   const ValueContext& ctx, std::string& problem)
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
    return Answer(p, form, project, ctx, problem);
}

} // namespace fw
