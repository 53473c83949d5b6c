#include "support/ScriptedUi.h"

namespace fw {

namespace {
// The first queued answer, or what a closed dialog answers when none is left.
Answer NextAnswer(std::deque<Answer>& answers, Answer closed)
{
    if (answers.empty())
        return closed;
    const Answer a = answers.front();
    answers.pop_front();
    return a;
}

// The first queued file; an empty entry stands for a cancelled dialog, as does an empty queue.
bool NextFile(std::deque<std::string>& files, std::string& out)
{
    if (files.empty())
        return false;
    std::string f = std::move(files.front());
    files.pop_front();
    if (f.empty())
        return false;
    out = std::move(f);
    return true;
}
} // namespace

void ScriptedUi::Message(const std::string& text, MessageStyle style, const std::string&)
{
    calls.push_back({"message", text, style});
}

Answer ScriptedUi::AskYesNoCancel(const std::string& text, const std::string&)
{
    calls.push_back({"yesnocancel", text, MessageStyle::Question});
    return NextAnswer(answers, Answer::Cancel);
}

Answer ScriptedUi::AskYesNo(const std::string& text, const std::string&)
{
    calls.push_back({"yesno", text, MessageStyle::Question});
    return NextAnswer(answers, Answer::No);
}

bool ScriptedUi::ChooseFile(const FileDialogRequest& request, std::string& path)
{
    calls.push_back({"file", request.filter, MessageStyle::Question});
    fileRequests.push_back(request);
    return NextFile(files, path);
}

bool ScriptedUi::ChooseFolder(const std::string& title, const std::string&, std::string& folder)
{
    calls.push_back({"folder", title, MessageStyle::Question});
    return NextFile(files, folder);
}

int ScriptedUi::ShowTip(const std::string& text, int flag)
{
    calls.push_back({"tip", text, MessageStyle::Information});
    if (flag == 0)
        return 0;
    if (tipResults.empty())
        return flag == -1 ? -1 : 1;
    int r = tipResults.front();
    tipResults.pop_front();
    return r;
}

void ScriptedUi::SetWaitCursor(bool on) { waitCursor = on; }
void ScriptedUi::SetPointer(Pointer p) { pointer = p; }

bool ScriptedUi::OpenExternal(const std::string& pathOrUrl)
{
    calls.push_back({"open", pathOrUrl, MessageStyle::Information});
    return true;
}

void ScriptedUi::ShowScasmStatus(const std::string& text, const std::string& logPath)
{
    calls.push_back({"scasmstatus", text, MessageStyle::Critical});
    if (viewErrors)
        OpenExternal(logPath);
    if (onScasmStatus)
        onScasmStatus(logPath);
}

std::vector<std::string> ScriptedUi::Messages() const
{
    std::vector<std::string> out;
    for (const auto& c : calls)
        if (c.kind == "message")
            out.push_back(c.text);
    return out;
}

} // namespace fw
