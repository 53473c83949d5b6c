// Facts about the host the logic receives as values.
#pragma once

#include <string>

namespace fw {

struct HostFacts {
    std::string programFolder; // ends in a separator
    char decimalSeparator = '.';
};

// The program folder: FIELDWRIGHT_HOME when set, otherwise the executable's folder; ends in "/".
std::string ProgramFolderFromEnvironment(const std::string& executableFolder);

} // namespace fw
