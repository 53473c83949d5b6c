#include "platform/Host.h"

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

} // namespace fw
