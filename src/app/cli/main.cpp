#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>

#include "app/cli/Commands.h"
#include "ports/Host.h"

namespace fw::cli {

std::string ProgramFolder()
{
    std::error_code ec;
    auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    std::string folder = ec ? std::string(".") : exe.parent_path().string();
    return ProgramFolderFromEnvironment(folder);
}

} // namespace fw::cli

namespace {

constexpr const char* kUsage =
    "usage: fieldwright-cli COMMAND ...\n"
    "  dump FILE                      print a project or selection file as JSON\n"
    "  resave IN OUT                  read IN and write it again as OUT\n"
    "  export FILE.fwt OUT.txt [--decimal-separator C]\n"
    "                                 write the project's SCASM text\n"
    "  compile FILE.fwt OUT.bgl       export and run the scenery compiler\n"
    "  check-scasm FILE.txt           check the structure of SCASM text\n"
    "  check FILE.fwt [--json]        list the design's problems before an export\n"
    "  replay SCRIPT [--out FOLDER]   run an editor event script; what it writes goes to FOLDER\n"
    "  render FILE.fwt OUT.png [--size WxH] [--zoom Z] [--offset X Y]\n"
    "                                 paint the plan view into a picture\n"
    "  import-osm FILE.fwt DATA OUT.fwt\n"
    "                                 import OpenStreetMap data (.osm, .osm.bz2, .osm.pbf) into OUT\n";

struct Command {
    std::string_view name;
    int (*run)(const fw::cli::Args&);
};

constexpr Command kCommands[] = {
    {"dump", fw::cli::Dump},       {"resave", fw::cli::Resave},          {"export", fw::cli::Export},
    {"compile", fw::cli::Compile}, {"check-scasm", fw::cli::CheckScasm}, {"replay", fw::cli::Replay},
    {"render", fw::cli::Render},   {"check", fw::cli::Check},
    {"import-osm", fw::cli::ImportOsm},
};

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const std::string_view name = argv[1];
    fw::cli::Args args(argv + 2, argv + argc);
    for (const auto& c : kCommands)
        if (c.name == name) {
            // Whatever goes wrong ends the command with its message, never with an abort.
            try {
                return c.run(args);
            } catch (const std::exception& e) {
                std::fprintf(stderr, "%s\n", e.what());
                return 1;
            }
        }
    std::fprintf(stderr, "unknown command '%s'\n%s", argv[1], kUsage);
    return 2;
}
