// Runs a script of user events against a session without a window. One command a line, "#"
// starts a comment, paths are relative to the script:
//
//   canvas W H                 the canvas size, as a window resize sets it
//   open FILE                  the load flow
//   tool KEY                   a tool button by its key
//   down L|M|R X Y [MODS]      button down at a pixel; MODS: shift, ctrl, alt joined by "+"
//   move X Y [MODS]
//   up L|M|R X Y [MODS]
//   dblclick X Y               down, up, double click and up at a pixel
//   key CODE                   key down with its key code
//   command NAME               a menu command by its name (its top menu is opened first)
//   answer ok|cancel|yes|no    queue the answer to the next question
//   answer index N             ... to FormSelection (FormConvertShape: the Nth choice)
//   answer file PATH           ... to a file dialog
//   answer text TEXT [TEXT]    ... to a form of text boxes; "ratio" or "noratio" may follow
//   answer tip show|dontshow   ... to a design tip
//   answer form NAME FIELD=VALUE ... ok|cancel
//                              ... to a property dialog, when the harness has formAnswers
//   save FILE                  write the project
//   state FILE                 write the session's state as JSON
//
// Answers are taken in the order queued, one per question; messages take none. A question with
// no answer queued is answered as a closed dialog would answer it, and the log says so.
#pragma once

#include <deque>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "core/Session.h"
#include "platform/Ui.h"

namespace fw {

class ReplayUi : public Ui {
public:
    struct Entry {
        std::string kind;   // "message", "yesnocancel", "yesno", "file", "folder", "tip", "selection",
                            // "form", "convert", "shapeProperties", "objectProperties", "popup", "open"
        std::string text;
        std::string answer;
        bool queued = true; // false: nobody answered, the dialog was closed
    };
    struct QueuedAnswer {
        std::string kind;   // "ok", "cancel", "yes", "no", "index", "file", "text", "tip"
        std::vector<std::string> values;
    };

    void Message(const std::string& text, MessageStyle style, const std::string& title = {}) override;
    Answer AskYesNoCancel(const std::string& text, const std::string& title = {}) override;
    Answer AskYesNo(const std::string& text, const std::string& title = {}) override;
    bool ChooseFile(const FileDialogRequest& request, std::string& path) override;
    bool ChooseFolder(const std::string& title, const std::string& start, std::string& folder) override;
    int ShowTip(const std::string& text, int flag) override;
    void SetWaitCursor(bool on) override { waitCursor = on; }
    void SetPointer(Pointer p) override { pointer = p; }
    bool OpenExternal(const std::string& pathOrUrl) override;
    void Repaint() override { ++repaints; }
    void RebuildGLList(bool) override { ++glRebuilds; }
    void PopupMenu(const std::string& name) override;
    int FormSelection(const std::vector<std::string>& names) override;
    bool RunTextForm(TextForm& form) override;
    int FormConvertShape(std::vector<ShapeRecord>& copies) override;
    bool ShapeProperties(ShapeRecord& shape, const PointList* points) override;
    bool ObjectProperties(ObjectRecord& object) override;
    bool NewShapeProperties(ShapeRecord& shape, const PointList* points) override;
    // Answered only by a queued "form" answer; otherwise OK, as without a window.
    bool ProjectSettings(ProjectRecord& project, bool newProject) override;

    // Answers "form" lines for the property dialogs, set by a program that links them: the
    // words after "form" and the record the dialog edits; 1 stored, 0 cancelled, -1 refused
    // (the dialog stays open for the next answer); why tells why an answer couldn't be used.
    struct FormTarget {
        ShapeRecord* shape = nullptr;
        ObjectRecord* object = nullptr;
        ProjectRecord* project = nullptr;
        const PointList* points = nullptr;
        bool mustComplete = false; // a new shape or project: only OK closes the dialog
    };
    std::function<int(const std::vector<std::string>& words, const FormTarget& target, std::string& why)> formAnswers;

    std::deque<QueuedAnswer> answers;
    std::vector<Entry> log;
    Pointer pointer = Pointer::Arrow;
    bool waitCursor = false;
    int repaints = 0;
    int glRebuilds = 0;

    // The popup menus shown so far, by name.
    std::vector<std::string> Popups() const;

private:
    bool Take(QueuedAnswer& a);
    // A property dialog: "form" answers until one closes it, else the next plain answer.
    bool AnswerDialog(const std::string& kind, const std::string& text, const FormTarget& target);
    void Log(const std::string& kind, const std::string& text, const std::string& answer, bool queued);
};

// A session driven by a script: ResetAtStart, the default configuration, the window up.
class ReplaySession {
public:
    explicit ReplaySession(const std::string& programFolder, const std::string& baseFolder = {});

    // Runs one script line; false with a reason in error when the line can't run.
    bool Run(const std::string& line, std::string& error);
    // Runs a script file; the exit code of the command (0 ok, 1 a line failed, 2 no script).
    int RunFile(const std::string& path, std::ostream& err);

    // The state as the "state" command writes it.
    std::string StateJson() const;

    Session session;
    ReplayUi ui;

private:
    std::string Resolve(const std::string& path) const;
    std::string baseFolder_;
};

} // namespace fw
