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

// Where recovery copies are kept: $XDG_STATE_HOME/Fieldwright/recovery/, or
// ~/.local/state/Fieldwright/recovery/ when it isn't set; ends in "/". Empty without a home.
std::string RecoveryFolderFromEnvironment();

} // namespace fw
