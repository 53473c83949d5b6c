// Every question the logic asks a person goes through this port.
#pragma once

#include <string>
#include <vector>

namespace fw {

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
                     Custom105, Custom106, Custom107, Custom108 };

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
};

} // namespace fw
