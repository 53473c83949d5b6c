#include "replay/Replay.h"

#include "files/Recovery.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>

#include "core/Numbers.h"
#include "editor/CanvasEvents.h"
#include "editor/Commands.h"
#include "editor/EditorCommon.h"
#include "editor/FormModels.h"
#include "editor/Undo.h"
#include "files/ProjectFlows.h"
#include "files/RegularFile.h"
#include "files/TextFile.h"

namespace fw {

// ---- ReplayUi ----

bool ReplayUi::Take(QueuedAnswer& a)
{
    if (answers.empty())
        return false;
    a = answers.front();
    answers.pop_front();
    return true;
}

void ReplayUi::Log(const std::string& kind, const std::string& text, const std::string& answer, bool queued)
{
    log.push_back({kind, text, answer, queued});
}

void ReplayUi::Message(const std::string& text, MessageStyle, const std::string&)
{
    Log("message", text, "ok", true);
}

Answer ReplayUi::AskYesNoCancel(const std::string& text, const std::string&)
{
    QueuedAnswer a;
    if (!Take(a)) {
        Log("yesnocancel", text, "cancel", false);
        return Answer::Cancel;
    }
    const Answer r = a.kind == "yes" ? Answer::Yes : a.kind == "no" ? Answer::No : Answer::Cancel;
    Log("yesnocancel", text, r == Answer::Yes ? "yes" : r == Answer::No ? "no" : "cancel", true);
    return r;
}

Answer ReplayUi::AskYesNo(const std::string& text, const std::string&)
{
    QueuedAnswer a;
    if (!Take(a)) {
        Log("yesno", text, "no", false);
        return Answer::No;
    }
    const Answer r = a.kind == "yes" ? Answer::Yes : Answer::No;
    Log("yesno", text, r == Answer::Yes ? "yes" : "no", true);
    return r;
}

bool ReplayUi::ChooseFile(const FileDialogRequest& request, std::string& path)
{
    QueuedAnswer a;
    if (!Take(a)) {
        Log("file", request.filter, "cancel", false);
        return false;
    }
    if (a.kind != "file" || a.values.empty()) {
        Log("file", request.filter, "cancel", true);
        return false;
    }
    path = resolvePath ? resolvePath(a.values[0], request.save) : a.values[0];
    Log("file", request.filter, path, true);
    return true;
}

bool ReplayUi::ChooseFolder(const std::string& title, const std::string&, std::string& folder)
{
    QueuedAnswer a;
    if (!Take(a)) {
        Log("folder", title, "cancel", false);
        return false;
    }
    if (a.kind != "file" || a.values.empty()) {
        Log("folder", title, "cancel", true);
        return false;
    }
    folder = resolvePath ? resolvePath(a.values[0], true) : a.values[0];
    Log("folder", title, folder, true);
    return true;
}

int ReplayUi::ShowTip(const std::string& text, int flag)
{
    if (flag == 0)
        return 0;
    QueuedAnswer a;
    if (!Take(a)) {
        Log("tip", text, "show", false);
        return flag;
    }
    const bool dontShow = a.kind == "tip" && !a.values.empty() && a.values[0] == "dontshow" && flag != -1;
    Log("tip", text, dontShow ? "dontshow" : "show", true);
    return dontShow ? 0 : flag;
}

bool ReplayUi::OpenExternal(const std::string& pathOrUrl)
{
    Log("open", pathOrUrl, "", true);
    return true;
}

void ReplayUi::PopupMenu(const std::string& name) { Log("popup", name, "", true); }

std::vector<std::string> ReplayUi::Popups() const
{
    std::vector<std::string> out;
    for (const auto& e : log)
        if (e.kind == "popup")
            out.push_back(e.text);
    return out;
}

int ReplayUi::FormSelection(const std::vector<std::string>& names)
{
    std::string text;
    for (const auto& n : names)
        text += (text.empty() ? "" : "|") + n;
    const int start = names.empty() ? 0 : static_cast<int>(names.size()) - 1;
    QueuedAnswer a;
    if (!Take(a)) {
        Log("selection", text, std::to_string(start), false);
        return start;
    }
    int pick = start;
    if (a.kind == "index" && !a.values.empty())
        pick = std::atoi(a.values[0].c_str());
    Log("selection", text, std::to_string(pick), true);
    return pick;
}

bool ReplayUi::RunTextForm(TextForm& form)
{
    for (;;) {
        QueuedAnswer a;
        if (!Take(a)) {
            Log("form", form.title, "cancel", false);
            return false;
        }
        if (a.kind == "cancel") {
            Log("form", form.title, "cancel", true);
            return false;
        }
        std::string shown;
        if (a.kind == "text") {
            std::size_t k = 0;
            for (const auto& v : a.values) {
                if (v == "ratio" || v == "noratio") {
                    form.checked = v == "ratio";
                    continue;
                }
                if (k < form.texts.size())
                    form.texts[k++] = v;
            }
        }
        for (const auto& t : form.texts)
            shown += (shown.empty() ? "" : " ") + t;
        Log("form", form.title, "ok " + shown, true);
        if (!form.onOk || form.onOk(form))
            return true;
        // A refused value keeps the form open for the next answer.
    }
}

int ReplayUi::FormConvertShape(std::vector<ShapeRecord>&)
{
    QueuedAnswer a;
    if (!Take(a)) {
        Log("convert", kFormConvertTitle, "cancel", false);
        return 0;
    }
    int code = 0;
    if (a.kind == "ok")
        code = kPoly;
    else if (a.kind == "index" && !a.values.empty()) {
        const int i = std::atoi(a.values[0].c_str());
        code = i >= 0 && i < 5 ? kConvertChoices[i].code : 0;
    }
    Log("convert", kFormConvertTitle, code ? std::to_string(code) : "cancel", true);
    return code;
}

namespace {
std::string Joined(const std::vector<std::string>& words)
{
    std::string out = "form";
    for (const auto& w : words)
        out += " " + w;
    return out;
}
} // namespace

bool ReplayUi::AnswerDialog(const std::string& kind, const std::string& text, const FormTarget& target)
{
    QueuedAnswer a;
    bool taken = Take(a);
    while (taken && a.kind == "form" && formAnswers) {
        std::string why;
        Log(kind, text, Joined(a.values), true);
        const std::size_t entry = log.size() - 1;
        const int r = formAnswers(a.values, target, why);
        if (!why.empty())
            log[entry].answer += " (" + why + ")";
        if (r >= 0)
            return r == 1;
        taken = Take(a);
    }
    if (!taken) {
        Log(kind, text, "cancel", false);
        return false;
    }
    const bool ok = a.kind == "ok" || a.kind == "yes";
    Log(kind, text, ok ? "ok" : "cancel", true);
    return ok;
}

bool ReplayUi::ShapeProperties(ShapeRecord& shape, const PointList* points)
{
    FormTarget t;
    t.shape = &shape;
    t.points = points;
    return AnswerDialog("shapeProperties", std::string(TypeName(shape.gType)), t);
}

bool ReplayUi::NewShapeProperties(ShapeRecord& shape, const PointList* points)
{
    FormTarget t;
    t.shape = &shape;
    t.points = points;
    t.mustComplete = true;
    return AnswerDialog("shapeProperties", std::string(TypeName(shape.gType)), t);
}

bool ReplayUi::ObjectProperties(ObjectRecord& object)
{
    FormTarget t;
    t.object = &object;
    return AnswerDialog("objectProperties", std::string(TypeName(object.oType)), t);
}

bool ReplayUi::ProjectSettings(ProjectRecord& project, bool newProject)
{
    if (answers.empty() || answers.front().kind != "form" || !formAnswers)
        return Ui::ProjectSettings(project, newProject);
    FormTarget t;
    t.project = &project;
    t.mustComplete = newProject;
    return AnswerDialog("projectSettings", project.Name, t);
}

bool ReplayUi::Preferences(ConfigRecord& config, bool openGLActive)
{
    FormTarget t;
    t.config = &config;
    t.openGLActive = openGLActive;
    return AnswerDialog("preferences", "Preferences", t);
}

bool ReplayUi::OptimizeSettings(ProjectRecord& working)
{
    FormTarget t;
    t.optimize = &working;
    return AnswerDialog("optimize", "Optimization settings", t);
}

void ReplayUi::Converter()
{
    const bool answered = !answers.empty() && answers.front().kind == "form" && formAnswers &&
                          !answers.front().values.empty() && answers.front().values[0] == "FormConverter";
    if (!answered) {
        Log("converter", "Converter", "shown", false);
        return;
    }
    QueuedAnswer a;
    Take(a);
    Log("converter", "Converter", Joined(a.values), true);
    const std::size_t entry = log.size() - 1;
    FormTarget t;
    t.converter = &converter;
    std::string why;
    formAnswers(a.values, t, why);
    if (!why.empty())
        log[entry].answer += " (" + why + ")";
}

// ---- the harness ----

namespace {

std::vector<std::string> Words(const std::string& line)
{
    std::vector<std::string> out;
    std::istringstream in(line);
    std::string w;
    while (in >> w)
        out.push_back(w);
    return out;
}

bool ParseNumber(const std::string& text, double& out)
{
    if (text.empty())
        return false;
    char* end = nullptr;
    out = std::strtod(text.c_str(), &end);
    return end && *end == '\0' && std::isfinite(out);
}

bool ParseMods(const std::string& text, int& shift)
{
    shift = 0;
    std::string part;
    std::istringstream in(text);
    while (std::getline(in, part, '+')) {
        if (part == "shift")
            shift |= kShiftKey;
        else if (part == "ctrl")
            shift |= kCtrlKey;
        else if (part == "alt")
            shift |= kAltKey;
        else if (!part.empty())
            return false;
    }
    return true;
}

bool ParseButton(const std::string& text, MouseButton& b)
{
    if (text == "L")
        b = MouseButton::Left;
    else if (text == "M")
        b = MouseButton::Middle;
    else if (text == "R")
        b = MouseButton::Right;
    else
        return false;
    return true;
}

// Windows-1252 bytes as JSON text.
std::string JsonString(const std::string& s)
{
    static constexpr unsigned short k80[32] = {
        0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    std::string out = "\"";
    char buf[8];
    for (unsigned char c : s) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (c == '\t') {
            out += "\\t";
        } else if (c < 0x20 || c >= 0x80) {
            const unsigned code = c >= 0x80 && c < 0xA0 ? k80[c - 0x80] : c;
            std::snprintf(buf, sizeof buf, "\\u%04X", code);
            out += buf;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out + "\"";
}

std::string JsonNumber(double v)
{
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.15g", v);
    return buf;
}

template <class T>
std::string JsonList(const std::vector<T>& v)
{
    std::string out = "[";
    for (std::size_t i = 0; i < v.size(); ++i)
        out += (i ? ", " : "") + std::to_string(v[i]);
    return out + "]";
}

std::string JsonBool(bool b) { return b ? "true" : "false"; }

// The editor's side of the File menu's flows.
FlowHooks EditorHooks()
{
    FlowHooks h;
    h.undoPrepare = [](Session& s) { UndoPrepare(s); };
    h.markChanged = [](Session& s) { MarkChanged(s, true); };
    h.resetTool = [](Session& s) {
        s.view.setMMode(0);
        Menu_EnableToolBar(s);
        Menu_Enable(s);
    };
    h.redraw = [](Session& s) {
        RebuildGL(s, true);
        PaintFrame(s);
    };
    return h;
}

// File menu commands, which the files module's flows carry out.
bool RunFileCommand(Session& s, const std::string& name)
{
    const FlowHooks h = EditorHooks();
    if (name == "MnuFnew") {
        if (s.editor.EditState == 0)
            MnuFnew(s, h);
    } else if (name == "MnuFopen") {
        MnuFopen(s, h);
    } else if (name == "MnuFsave") {
        MnuFsave(s, h);
    } else if (name == "MnuFsaveas") {
        MnuFsaveas(s, h);
    } else if (name == "MnuFsaveselection") {
        MnuFsaveselection(s);
    } else if (name == "MnuFimportshape") {
        MnuFimportshape(s, h);
    } else if (name.size() == 11 && name.rfind("MnuFrecent", 0) == 0 && name[10] >= '1' && name[10] <= '4') {
        MnuFrecent(s, name[10] - '1', h);
    } else {
        return false;
    }
    return true;
}

} // namespace

ReplaySession::ReplaySession(const std::string& programFolder, const std::string& baseFolder,
                             const std::string& outFolder)
    : baseFolder_(baseFolder), outFolder_(outFolder)
{
    session.programFolder = programFolder;
    session.ui = &ui;
    ResetAtStart(session);
    ClearStores(session.stores);
    ResetConfig(session.config, programFolder);
    session.windowReady = 1;
    ui.resolvePath = [this](const std::string& path, bool write) {
        return write ? ResolveWrite(path) : ResolveRead(path);
    };
}

namespace {
std::string InFolder(const std::string& folder, const std::string& path)
{
    if (path.empty() || path[0] == '/' || folder.empty())
        return path;
    return folder + (folder.back() == '/' ? "" : "/") + path;
}
} // namespace

std::string ReplaySession::ResolveRead(const std::string& path) const
{
    if (!outFolder_.empty()) {
        const std::string out = InFolder(outFolder_, path);
        std::error_code ec;
        if (std::filesystem::exists(out, ec))
            return out;
    }
    return InFolder(baseFolder_, path);
}

std::string ReplaySession::ResolveWrite(const std::string& path) const
{
    return InFolder(outFolder_.empty() ? baseFolder_ : outFolder_, path);
}

bool ReplaySession::RunHarnessCommand(const std::string& name, std::string& error)
{
    Session& s = session;
    if (name == "MnuFoptions") {
        if (ui.Preferences(s.config, s.openGLActive != 0))
            PaintFrame(s);
    } else if (name == "MnuHconverter") {
        ui.Converter();
    } else if (name == "MnuHabout") {
        // The about box: modal, with OK only.
        ui.log.push_back({"about", "About Fieldwright", "ok", true});
    } else if (name == "MnuFexit") {
        // The exit flow's question; the window and the configuration file aren't part of the harness.
        if (AskToSave(s, EditorHooks())) {
            ended = true;
            ui.log.push_back({"exit", "Fieldwright", "", true});
        }
    } else if (name == "MnuFexport" || name == "MnuFbgl" || name == "MnuBloadremove" || name == "MnuBremove") {
        if (!moreCommands || !moreCommands(s, name)) {
            error = "command '" + name + "' needs the batch tool";
            return false;
        }
    } else {
        error = "unknown command '" + name + "'";
        return false;
    }
    return true;
}

bool ReplaySession::Run(const std::string& rawLine, std::string& error)
{
    std::string line = rawLine;
    if (const auto hash = line.find('#'); hash != std::string::npos)
        line.erase(hash);
    const auto w = Words(line);
    if (w.empty())
        return true;
    const std::string& cmd = w[0];
    Session& s = session;
    if (ended && cmd != "state") {
        error = "the program has ended (MnuFexit)";
        return false;
    }
    try {
        if (cmd == "canvas") {
            double W = 0, H = 0;
            if (w.size() != 3 || !ParseNumber(w[1], W) || !ParseNumber(w[2], H)) {
                error = "canvas needs a width and a height";
                return false;
            }
            s.view.setSWidth(std::max(0, Round32(W)));
            s.view.setSHeight(std::max(0, Round32(H)));
            s.view.resize();
            PaintFrame(s);
        } else if (cmd == "tool") {
            if (w.size() != 2) {
                error = "tool needs a key";
                return false;
            }
            int index = -1;
            for (int i = 0; i < kToolButtons; ++i)
                if (w[1] == kToolKeys[i])
                    index = i;
            if (index < 0) {
                error = "unknown tool '" + w[1] + "'";
                return false;
            }
            // A disabled button can't be clicked.
            if (s.editor.toolEnabled[index])
                ToolClick(s, w[1]);
        } else if (cmd == "down" || cmd == "up") {
            MouseButton b;
            double x = 0, y = 0;
            int shift = 0;
            if (w.size() < 4 || w.size() > 5 || !ParseButton(w[1], b) || !ParseNumber(w[2], x) ||
                !ParseNumber(w[3], y) || (w.size() == 5 && !ParseMods(w[4], shift))) {
                error = cmd + " needs L|M|R X Y [MODS]";
                return false;
            }
            if (cmd == "down")
                CanvasMouseDown(s, b, shift, x, y);
            else
                CanvasMouseUp(s, b, shift, x, y);
        } else if (cmd == "move") {
            double x = 0, y = 0;
            int shift = 0;
            if (w.size() < 3 || w.size() > 4 || !ParseNumber(w[1], x) || !ParseNumber(w[2], y) ||
                (w.size() == 4 && !ParseMods(w[3], shift))) {
                error = "move needs X Y [MODS]";
                return false;
            }
            CanvasMouseMove(s, shift, x, y);
        } else if (cmd == "dblclick") {
            double x = 0, y = 0;
            if (w.size() != 3 || !ParseNumber(w[1], x) || !ParseNumber(w[2], y)) {
                error = "dblclick needs X Y";
                return false;
            }
            // The first click of the pair comes as down and up: it sets a shape's last point.
            CanvasMouseDown(s, MouseButton::Left, 0, x, y);
            CanvasMouseUp(s, MouseButton::Left, 0, x, y);
            CanvasDoubleClick(s);
            CanvasMouseUp(s, MouseButton::Left, 0, x, y);
        } else if (cmd == "key") {
            double code = 0;
            if (w.size() != 2 || !ParseNumber(w[1], code)) {
                error = "key needs a key code";
                return false;
            }
            CanvasKeyDown(s, Round32(code), 0);
        } else if (cmd == "command") {
            if (w.size() != 2) {
                error = "command needs a name";
                return false;
            }
            const std::string menu = TopMenuOf(w[1]);
            if (!menu.empty()) {
                // Menus disabled as a whole can't be opened; items the tick disabled can't be chosen.
                for (int i = 0; i < kTopMenus; ++i)
                    if (menu == kTopMenuNames[i] && !s.editor.topMenuEnabled[i])
                        return true;
                OpenTopMenu(s, menu);
                const MenuState m = ComputeMenuState(s);
                if (auto it = m.items.find(w[1]); it != m.items.end() && it->second.enabled == false)
                    return true;
            }
            if (!RunFileCommand(s, w[1]) && !RunCommand(s, w[1]) && !RunHarnessCommand(w[1], error))
                return false;
        } else if (cmd == "answer") {
            if (w.size() < 2) {
                error = "answer needs a value";
                return false;
            }
            ReplayUi::QueuedAnswer a;
            const std::string& k = w[1];
            if (k == "ok" || k == "cancel" || k == "yes" || k == "no") {
                a.kind = k;
            } else if ((k == "index" || k == "tip") && w.size() == 3) {
                a.kind = k;
                a.values = {w[2]};
            } else if (k == "file" && w.size() == 3) {
                // Resolved when a dialog takes it: a save dialog writes, an open dialog reads.
                a.kind = k;
                a.values = {w[2]};
            } else if (k == "text" && w.size() >= 3) {
                a.kind = k;
                a.values.assign(w.begin() + 2, w.end());
            } else if (k == "form" && w.size() >= 4 && ui.formAnswers) {
                a.kind = k;
                a.values.assign(w.begin() + 2, w.end());
            } else {
                error = "unknown answer '" + line + "'";
                return false;
            }
            ui.answers.push_back(a);
        } else if (cmd == "state") {
            if (w.size() != 2) {
                error = "state needs a file";
                return false;
            }
            std::ofstream out(ResolveWrite(w[1]), std::ios::binary);
            out << StateJson();
            if (!out) {
                error = "unable to write '" + w[1] + "'";
                return false;
            }
        } else if (cmd == "open" || cmd == "save") {
            if (w.size() != 2) {
                error = cmd + " needs a file";
                return false;
            }
            const FlowHooks h = EditorHooks();
            if (cmd == "open") {
                const std::string path = ResolveRead(w[1]);
                if (LoadProject(s, path, h)) {
                    OfferRecoveryOnOpen(s, path, h);
                    h.resetTool(s);
                }
            } else {
                WriteProject(s, ResolveWrite(w[1]), h);
            }
        } else {
            error = "unknown command '" + cmd + "'";
            return false;
        }
    } catch (const std::exception& ex) {
        error = ex.what();
        return false;
    }
    return true;
}

int ReplaySession::RunFile(const std::string& path, std::ostream& err)
{
    // Only a regular file of a script's size: a device or a pipe would never end.
    std::string text;
    std::string reason;
    if (!ReadRegularFile(path, kMaxScriptBytes, text, &reason)) {
        err << WithFileReason("unable to read '" + path + "'", path, reason) << "\n";
        return 2;
    }
    int number = 0;
    int result = 0;
    ForEachLine(text, [&](std::string_view line) {
        if (result != 0)
            return;
        ++number;
        std::string error;
        if (!Run(std::string(line), error)) {
            err << path << ":" << number << ": " << error << "\n";
            result = 1;
        }
        else
            KeepRecovery(session);
    });
    return result;
}

std::string ReplaySession::StateJson() const
{
    const Session& s = session;
    const EditorState& e = s.editor;
    const CSelection& sel = e.selection;
    std::ostringstream o;
    o << "{\n";
    o << "  \"EditState\": " << int(e.EditState) << ",\n";
    o << "  \"selection\": {\"state\": " << int(sel.state()) << ", \"shapes\": " << JsonList(sel.SelShapes())
      << ", \"objects\": " << JsonList(sel.SelObjects()) << ", \"points\": " << JsonList(sel.SelPoints())
      << ", \"SelLimits\": "
      << JsonList(std::vector<std::int32_t>(sel.SelLimits().begin(), sel.SelLimits().end())) << "},\n";
    const COffset& v = s.view;
    o << "  \"view\": {\"offX\": " << v.offX() << ", \"offY\": " << v.offY() << ", \"zoom\": " << JsonNumber(v.zoom())
      << ", \"centX\": " << v.centX() << ", \"centY\": " << v.centY() << ", \"sWidth\": " << v.sWidth()
      << ", \"sHeight\": " << v.sHeight() << ", \"mMode\": " << v.mMode() << "},\n";
    o << "  \"dirty\": " << int(s.dirty) << ",\n";
    o << "  \"canUndo\": " << int(s.canUndo) << ",\n";
    o << "  \"canPaste\": " << int(s.canPaste) << ",\n";
    o << "  \"title\": " << JsonString(Title(s)) << ",\n";

    o << "  \"shapes\": [";
    for (std::size_t i = 0; i < s.stores.ShapeStore.size(); ++i) {
        const ShapeRecord& r = s.stores.ShapeStore[i];
        o << (i ? ",\n    " : "\n    ") << "{\"type\": " << int(r.gType) << ", \"points\": [";
        const PointList& pts = s.stores.PointStore[i];
        for (std::size_t k = 0; k < pts.size(); ++k)
            o << (k ? ", " : "") << "[" << pts[k].X << ", " << pts[k].Y << "]";
        o << "], \"gLimits\": " << JsonList(std::vector<std::int32_t>(r.gLimits.begin(), r.gLimits.end()))
          << ", \"gIsConcave\": " << int(r.gIsConcave) << "}";
    }
    o << (s.stores.ShapeStore.empty() ? "],\n" : "\n  ],\n");
    o << "  \"objects\": [";
    for (std::size_t i = 0; i < s.stores.ObjectStore.size(); ++i) {
        const ObjectRecord& r = s.stores.ObjectStore[i];
        o << (i ? ",\n    " : "\n    ") << "{\"type\": " << int(r.oType) << ", \"PosX\": " << r.PosX
          << ", \"PosY\": " << r.PosY << ", \"Rotation\": " << JsonNumber(r.Rotation) << "}";
    }
    o << (s.stores.ObjectStore.empty() ? "],\n" : "\n  ],\n");

    const MenuState m = ComputeMenuState(s);
    o << "  \"menu\": {";
    bool first = true;
    for (const auto& [name, item] : m.items) {
        o << (first ? "\n    " : ",\n    ") << JsonString(name) << ": {";
        first = false;
        bool any = false;
        if (item.enabled) {
            o << "\"enabled\": " << JsonBool(*item.enabled);
            any = true;
        }
        if (item.checked)
            o << (any ? ", " : "") << "\"checked\": " << JsonBool(*item.checked);
        o << "}";
    }
    o << "\n  },\n";
    o << "  \"topMenus\": {";
    first = true;
    for (const auto& [name, on] : m.topMenus) {
        o << (first ? "" : ", ") << JsonString(name) << ": " << JsonBool(on);
        first = false;
    }
    o << "},\n";
    o << "  \"toolButtons\": {";
    first = true;
    for (int i = 0; i < kToolButtons; ++i) {
        o << (first ? "" : ", ") << JsonString(kToolKeys[i]) << ": " << JsonBool(e.toolEnabled[i]);
        first = false;
    }
    o << "},\n";
    o << "  \"status\": {\"panel3\": " << JsonString(m.panel3) << ", \"panel4\": " << JsonString(m.panel4)
      << ", \"panel5\": " << JsonString(m.panel5) << ", \"panel6\": " << JsonString(m.panel6) << "},\n";
    o << "  \"pointer\": {\"code\": " << PointerCode(ui.pointer) << ", \"cursor\": " << PointerCursor(ui.pointer)
      << "},\n";
    // The preferences; a path in the program folder is shown from "{program}/", so the state
    // reads the same wherever the program stands.
    const auto path = [&s](const std::string& p) {
        std::string folder = s.programFolder;
        if (!folder.empty() && folder.back() == '/')
            folder.pop_back();
        if (!folder.empty() && p.compare(0, folder.size(), folder) == 0 &&
            (p.size() == folder.size() || p[folder.size()] == '/'))
            return JsonString("{program}" + p.substr(folder.size()));
        return JsonString(p);
    };
    const ConfigRecord& c = s.config;
    o << "  \"preferences\": {\"GridDist\": "
      << JsonList(std::vector<std::int32_t>(c.GridDist.begin(), c.GridDist.end())) << ", \"GridColor4\": "
      << c.GridColor4 << ", \"EnableOpenGL\": " << int(c.EnableOpenGL) << ", \"FSPath\": " << path(c.FSPath)
      << ", \"SceneryPath\": " << path(c.SceneryPath) << ", \"TEXPath\": " << path(c.TEXPath) << "},\n";
    // The unit converter's fields, by tab; as loaded at start until it was first used.
    const auto field = [this](const char* name) {
        const auto it = ui.converter.find(name);
        return it == ui.converter.end() ? std::string() : it->second;
    };
    const auto position = [&field](const char* name) {
        const std::string t = field(name);
        char* end = nullptr;
        const long v = std::strtol(t.c_str(), &end, 10);
        return t.empty() || *end != '\0' ? 0L : v;
    };
    o << "  \"converter\": {\"dist\": {\"Text3\": " << JsonString(field("Text3"))
      << ", \"InputUnit\": " << position("InputUnit") << ", \"OutputUnit\": " << position("OutputUnit")
      << ", \"Text4\": " << JsonString(field("Text4")) << "}, \"lat\": {\"Text1\": " << JsonString(field("Text1"))
      << ", \"OutputFormat\": " << position("OutputFormat") << ", \"Text2\": " << JsonString(field("Text2"))
      << "}},\n";
    o << "  \"log\": [";
    for (std::size_t i = 0; i < ui.log.size(); ++i) {
        const auto& l = ui.log[i];
        o << (i ? ",\n    " : "\n    ") << "{\"kind\": " << JsonString(l.kind) << ", \"text\": " << JsonString(l.text)
          << ", \"answer\": " << JsonString(l.answer) << ", \"queued\": " << JsonBool(l.queued) << "}";
    }
    o << (ui.log.empty() ? "]\n" : "\n  ]\n");
    o << "}\n";
    return o.str();
}

} // namespace fw
