#include <cstdio>
#include <string>

#include "app/cli/Commands.h"
#include "core/Helpers.h"
#include "core/Session.h"
#include "files/ProjectFlows.h"
#include "files/ConfigFile.h"
#include "files/ProjectFile.h"
#include "files/TextFile.h"
#include "osm/OsmImport.h"
#include "ports/Ui.h"

namespace fw::cli {

namespace {

// The configuration beside the program gives the new shapes' defaults; it is read, never created.
void ReadConfiguration(Session& s)
{
    ResetConfig(s.config, s.programFolder);
    const std::string path = ConfigFilePath(s.programFolder);
    std::string text;
    if (FileExists(path) && ReadWholeFile(path, text))
        ReadConfigText(s, text);
}

} // namespace

int ImportOsm(const Args& args)
{
    if (args.size() != 3) {
        std::fputs("usage: fieldwright-cli import-osm PROJECT.fwt DATA OUT.fwt\n", stderr);
        return 2;
    }
    ClosedUi ui(true);
    Session s;
    ResetAtStart(s);
    s.programFolder = ProgramFolder();
    s.ui = &ui;
    ReadConfiguration(s);
    if (!ReadProjectInto(args[0], s, ui))
        return 1;
    OsmImportOptions options;
    options.takeReference = [](const GeoPoint& p, bool aerodrome) {
        std::printf("Reference point: %.7f, %.7f (the centre of the %s)\n", p.lat, p.lon,
                    aerodrome ? "aerodrome" : "data");
        return true;
    };
    const OsmImportResult result = fw::ImportOsm(s, args[1], options);
    if (!result.read) {
        std::fprintf(stderr, "%s\n", result.message.c_str());
        return 1;
    }
    std::printf("%s\n", result.report.Text().c_str());
    return WriteProjectFile(args[2], ProjectDataOf(s), &ui) ? 0 : 1;
}

} // namespace fw::cli
