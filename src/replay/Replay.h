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
//   command NAME               a menu command by its name (its top menu is opened first); every
//                              command of the menus and the canvas menus. MnuFexport, MnuFbgl,
//                              MnuBloadremove and MnuBremove need the batch tool's moreCommands.
//                              MnuFexit asks to save and ends the program: later lines but
//                              "state" are refused. The configuration file isn't written.
//   answer ok|cancel|yes|no    queue the answer to the next question
//   answer index N             ... to FormSelection (FormConvertShape: the Nth choice)
//   answer file PATH           ... to a file or folder dialog
//   answer text TEXT [TEXT]    ... to a form of text boxes; "ratio" or "noratio" may follow
//   answer tip show|dontshow   ... to a design tip
//   answer form NAME WORD ... ok|cancel|close
//                              ... to a dialog, when the harness has formAnswers: the property
//                              dialogs, FormSettings (New and MnuFsettings), FormOptimize (its
//                              "Settings" button), FormOptions (MnuFoptions) and FormConverter
//                              (MnuHconverter and the "Converter" buttons). WORD is FIELD=VALUE or
//                              a button's name (dialogs/FormAnswers.h)
//   save FILE                  write the project
//   state FILE                 write the session's state as JSON
//
// Answers are taken in the order queued, one per question; messages take none. A question with
// no answer queued is answered as a closed dialog would answer it, and the log says so. A form
// answer that is refused leaves the dialog open, as it was opened, for the next answer. The unit
// converter doesn't block: it takes a FormConverter answer only when that is the next one queued.
//
// Relative paths: what the script writes (save, state, a save dialog's answer) goes to the output
// folder; what it reads (open, an open dialog's answer) comes from the output folder when the file
// is there, else from the script's folder. Without an output folder both are the script's folder.
#pragma once

#include <deque>
#include <functional>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "core/Config.h"
#include "core/Session.h"
#include "ports/Ui.h"

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
        ProjectRecord* optimize = nullptr;   // FormOptimize on the project settings' working copy
        ConfigRecord* config = nullptr;      // FormOptions
        bool openGLActive = false;           // ... and what the running program uses
        std::map<std::string, std::string>* converter = nullptr; // FormConverter's kept fields
    };
    std::function<int(const std::vector<std::string>& words, const FormTarget& target, std::string& why)> formAnswers;

    // The dialogs the Ui port doesn't carry, which the harness opens itself.
    // FormOptions (MnuFoptions) on the configuration; true for OK.
    bool Preferences(ConfigRecord& config, bool openGLActive);
    // FormOptimize, from FormSettings' "Settings"; true for OK.
    bool OptimizeSettings(ProjectRecord& working);
    // The unit converter is shown; it takes a FormConverter answer if that is next in the queue.
    void Converter();

    // The unit converter's fields, kept while the session lasts as the hidden window keeps them;
    // empty until first used (its fields as loaded at start).
    std::map<std::string, std::string> converter;
    // Resolves a file dialog's answer: write is true for a save dialog. Empty: as given.
    std::function<std::string(const std::string& path, bool write)> resolvePath;

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
    // baseFolder: the script's folder; outFolder: where what the script writes goes (empty: the
    // script's folder).
    explicit ReplaySession(const std::string& programFolder, const std::string& baseFolder = {},
                           const std::string& outFolder = {});
    // The session and the Ui point at each other and at this harness: it stays where it was made.
    ReplaySession(const ReplaySession&) = delete;
    ReplaySession& operator=(const ReplaySession&) = delete;

    // Runs one script line; false with a reason in error when the line can't run.
    bool Run(const std::string& line, std::string& error);
    // Runs a script file; the exit code of the command (0 ok, 1 a line failed, 2 no script).
    int RunFile(const std::string& path, std::ostream& err);

    // The state as the "state" command writes it.
    std::string StateJson() const;

    Session session;
    ReplayUi ui;
    // Menu commands whose work lives in modules the editor doesn't link (the export, the
    // background image): true when the name was one of them.
    std::function<bool(Session& session, const std::string& name)> moreCommands;
    // Set once MnuFexit went through: the program has ended.
    bool ended = false;

private:
    // A relative path for reading: the output folder when the file is there, else the script's.
    std::string ResolveRead(const std::string& path) const;
    // A relative path for writing: the output folder, else the script's.
    std::string ResolveWrite(const std::string& path) const;
    // The commands of the File and Help menus that the harness carries out itself.
    bool RunHarnessCommand(const std::string& name, std::string& error);
    std::string baseFolder_;
    std::string outFolder_;
};

} // namespace fw
