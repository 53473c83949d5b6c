// Every question the logic asks a person goes through this port.
#pragma once

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace fw {

// The records the dialogs edit; the port passes them by reference only.
struct Point;
struct ShapeRecord;
struct ObjectRecord;
struct ProjectRecord;

enum class MessageStyle { Critical, Information, Exclamation, Question };
enum class Answer { Yes, No, Cancel, Ok };

// A file dialog: filter is "Description (*.ext)|*.ext[|All files (*.*)|*.*]".
struct FileDialogRequest {
    std::string title;
    std::string filter;
    std::string startFolder;
    std::string defaultName;
    bool save = false;
};

enum class Pointer { Arrow, Wait, Cross, SizeAll, Custom101, Custom102, Custom103, Custom104,
                     Custom105, Custom106, Custom107, Custom108,
                     SizeNESW, SizeNS, SizeNWSE, SizeWE };

// A small modal form of text boxes and at most one check box (rotate, rescale).
struct TextForm {
    std::string name;                 // the form's name: "FormRotate", "FormRescale"
    std::string title;
    std::vector<std::string> labels;
    std::vector<std::string> texts;   // shown, and what was typed on OK
    std::string checkCaption;         // empty: no check box
    bool checked = false;
    int disabledWhileChecked = -1;    // index of the text box the check box disables
    // Applied to each typed character: the character to insert, or 0 to drop it. Empty: no filter.
    std::function<int(int)> keyFilter;
    // The checks on OK; false keeps the form open (the check has told the user why).
    std::function<bool(TextForm&)> onOk;
};

class Ui {
public:
    virtual ~Ui() = default;
    virtual void Message(const std::string& text, MessageStyle style, const std::string& title = {}) = 0;
    virtual Answer AskYesNoCancel(const std::string& text, const std::string& title = {}) = 0;
    virtual Answer AskYesNo(const std::string& text, const std::string& title = {}) = 0;
    // Returns false when the user cancelled; path receives the chosen file.
    virtual bool ChooseFile(const FileDialogRequest& request, std::string& path) = 0;
    // Returns false when cancelled.
    virtual bool ChooseFolder(const std::string& title, const std::string& start, std::string& folder) = 0;
    // The "design tips" form; returns the new flag (0 silences the tip).
    virtual int ShowTip(const std::string& text, int flag) = 0;
    virtual void SetWaitCursor(bool on) = 0;
    virtual void SetPointer(Pointer pointer) = 0;
    // Opens a file or web page with the host's program for it.
    virtual bool OpenExternal(const std::string& pathOrUrl) = 0;
    // The compiler's "SCASM status" dialog, modal: "View errors" opens the log (and stays), "&Close" ends it.
    virtual void ShowScasmStatus(const std::string& text, const std::string& logPath)
    {
        (void)logPath;
        Message(text, MessageStyle::Critical, "SCASM status");
    }

    // The plan view is out of date: paint it again (PaintFrame).
    virtual void Repaint() {}
    // The OpenGL display list is out of date; full loads the textures again first (after a
    // project is opened and after the shape properties dialog).
    virtual void RebuildGLList(bool /*full*/) {}
    // Pops up a canvas menu at the pointer: "MnuClick2", "MnuClick3" or "MnuSelection".
    virtual void PopupMenu(const std::string& /*name*/) {}
    // FormSelection: the chosen list index. It has no cancel; it starts on the last entry.
    virtual int FormSelection(const std::vector<std::string>& names)
    {
        return names.empty() ? 0 : static_cast<int>(names.size()) - 1;
    }
    // A TextForm; false when cancelled.
    virtual bool RunTextForm(TextForm& /*form*/) { return false; }
    // FormConvertShape: the chosen type code (1, 3, 4, 5, 7), 0 when cancelled. Its "Settings..."
    // edits the copy of the chosen type in copies (Poly, WideLine, DotLine, TreeLine, Forest).
    virtual int FormConvertShape(std::vector<ShapeRecord>& /*copies*/) { return 0; }
    // Property dialogs, on a copy; true for OK. With nobody at the screen they answer OK and
    // leave the record as it was.
    virtual bool ShapeProperties(ShapeRecord& /*shape*/, const std::vector<Point>* /*points*/) { return true; }
    // The dialog of a newly drawn shape: it has no Cancel and only OK closes it.
    virtual bool NewShapeProperties(ShapeRecord& shape, const std::vector<Point>* points) { return ShapeProperties(shape, points); }
    virtual bool ObjectProperties(ObjectRecord& /*object*/) { return true; }
    // The project settings dialog on a copy of the record; newProject set by New. True for OK.
    virtual bool ProjectSettings(ProjectRecord& /*project*/, bool /*newProject*/) { return true; }
};

// Nobody at the screen: every question is answered as a closed dialog would answer it. With echo,
// messages go to stderr (the batch tool), else nowhere.
class ClosedUi : public Ui {
public:
    explicit ClosedUi(bool echo = false) : echo_(echo) {}
    void Message(const std::string& text, MessageStyle, const std::string&) override
    {
        if (echo_)
            std::fprintf(stderr, "%s\n", text.c_str());
    }
    Answer AskYesNoCancel(const std::string&, const std::string&) override { return Answer::Cancel; }
    Answer AskYesNo(const std::string&, const std::string&) override { return Answer::No; }
    bool ChooseFile(const FileDialogRequest&, std::string&) override { return false; }
    bool ChooseFolder(const std::string&, const std::string&, std::string&) override { return false; }
    int ShowTip(const std::string&, int flag) override { return flag; }
    void SetWaitCursor(bool) override {}
    void SetPointer(Pointer) override {}
    bool OpenExternal(const std::string&) override { return false; }

private:
    bool echo_;
};

} // namespace fw
