// A Ui without a person: it records every call and answers from queues. Used by tests and replay.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "ports/Ui.h"

namespace fw {

class ScriptedUi : public Ui {
public:
    struct Call {
        std::string kind;  // "message", "yesnocancel", "yesno", "file", "folder", "tip", ...
        std::string text;
        MessageStyle style = MessageStyle::Information;
    };

    void Message(const std::string& text, MessageStyle style, const std::string& title = {}) override;
    Answer AskYesNoCancel(const std::string& text, const std::string& title = {}) override;
    Answer AskYesNo(const std::string& text, const std::string& title = {}) override;
    bool ChooseFile(const FileDialogRequest& request, std::string& path) override;
    bool ChooseFolder(const std::string& title, const std::string& start, std::string& folder) override;
    int ShowTip(const std::string& text, int flag) override;
    void SetWaitCursor(bool on) override;
    void SetPointer(Pointer pointer) override;
    bool OpenExternal(const std::string& pathOrUrl) override;
    void ShowScasmStatus(const std::string& text, const std::string& logPath) override;

    // Answers are taken in order; with none queued a question is cancelled and a tip kept.
    std::deque<Answer> answers;
    std::deque<std::string> files;   // an empty string cancels the dialog
    std::deque<int> tipResults;
    // The SCASM status dialog presses "View errors" before "&Close"; onScasmStatus runs while it stands.
    bool viewErrors = false;
    std::function<void(const std::string& logPath)> onScasmStatus;

    std::vector<Call> calls;
    std::vector<FileDialogRequest> fileRequests;
    bool waitCursor = false;
    Pointer pointer = Pointer::Arrow;

    // The texts of all messages shown so far.
    std::vector<std::string> Messages() const;
};

} // namespace fw
