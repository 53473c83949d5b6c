#include <cstdio>
#include <string>

#include "app/cli/Commands.h"
#include "core/Helpers.h"
#include "files/ProjectFile.h"
#include "files/ProjectJson.h"
#include "ports/Ui.h"

namespace fw::cli {

namespace {

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
    ClosedUi ui(true);
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
    ClosedUi ui(true);
    ProjectData data;
    if (!Load(args[0], data, ui))
        return 1;
    return WriteProjectFile(args[1], data, &ui) ? 0 : 1;
}

} // namespace fw::cli
