#include <cstdio>
#include <filesystem>
#include <iostream>

#include "app/cli/Commands.h"
#include "editor/Replay.h"

namespace fw::cli {

int Replay(const Args& args)
{
    if (args.size() != 1) {
        std::fputs("usage: fieldwright-cli replay SCRIPT\n", stderr);
        return 2;
    }
    const std::filesystem::path script(args[0]);
    std::string base = script.parent_path().string();
    if (base.empty())
        base = ".";
    ReplaySession replay(ProgramFolder(), base);
    return replay.RunFile(args[0], std::cerr);
}

} // namespace fw::cli
