#include <cstdio>
#include <string>

#include "app/cli/Commands.h"
#include "core/Helpers.h"
#include "files/ProjectFile.h"
#include "files/ProjectJson.h"
#include "platform/Ui.h"

namespace fw::cli {

namespace {

// Messages go to stderr; nobody is there to answer a question.
class StderrUi : public Ui {
public:
    void Message(const std::string& text, MessageStyle, const std::string&) override
    {
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
};

// Reads a project or selection file; false (with the message on stderr) when it can't.
bool Load(const std::string& path, ProjectData& data, Ui& ui)
{
    if (!FileExists(path)) {
        ui.Message(DoesNotExistMessage(path), MessageStyle::Information);
        return false;
    }
    return ReadProjectFile(path, data, &ui, ProgramFolder());
}

} // namespace

int Dump(const Args& args)
{
    if (args.size() != 1) {
        std::fputs("usage: fieldwright-cli dump FILE\n", stderr);
        return 2;
    }
    StderrUi ui;
    ProjectData data;
    if (!Load(args[0], data, ui))
        return 1;
    const std::string json = ProjectToJson(data);
    std::fwrite(json.data(), 1, json.size(), stdout);
    return 0;
}

int Resave(const Args& args)
{
    if (args.size() != 2) {
        std::fputs("usage: fieldwright-cli resave IN OUT\n", stderr);
        return 2;
    }
    StderrUi ui;
    ProjectData data;
    if (!Load(args[0], data, ui))
        return 1;
    return WriteProjectFile(args[1], data, &ui) ? 0 : 1;
}

} // namespace fw::cli
