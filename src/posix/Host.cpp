#include "ports/Host.h"

#include <cstdlib>

namespace fw {

std::string ProgramFolderFromEnvironment(const std::string& executableFolder)
{
    const char* home = std::getenv("FIELDWRIGHT_HOME");
    std::string folder = (home && *home) ? std::string(home) : executableFolder;
    if (folder.empty() || (folder.back() != '/' && folder.back() != '\\'))
        folder += '/';
    return folder;
}

std::string RecoveryFolderFromEnvironment()
{
    const char* state = std::getenv("XDG_STATE_HOME");
    std::string base;
    if (state != nullptr && state[0] == '/') {
        base = state;
    } else {
        const char* home = std::getenv("HOME");
        if (home == nullptr || home[0] == '\0')
            return {};
        base = std::string(home) + "/.local/state";
    }
    if (base.back() != '/')
        base += '/';
    return base + "Fieldwright/recovery/";
}

} // namespace fw
