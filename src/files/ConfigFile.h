// The configuration file: preferences, the recent list and the six default shapes.
#pragma once

#include <string>
#include <string_view>

#include "core/Session.h"
#include "files/TextFile.h"

namespace fw {

constexpr const char* kConfigFileName = "Fieldwright.cfg";
// The install puts this file into the program folder it lays out: that folder is never written.
constexpr const char* kInstalledMarkerName = "Fieldwright.installed";

bool ProgramFolderInstalled(const std::string& programFolder);

// Where the program keeps what it writes for the user: the program folder of a build or a copy the
// user owns; for an installed or unwritable one $XDG_CONFIG_HOME/Fieldwright/ (or ~/.config/Fieldwright/),
// created when missing. Ends in "/".
std::string UserFolder(const std::string& programFolder);

// UserFolder + "Fieldwright.cfg".
std::string ConfigFilePath(const std::string& programFolder);

// Reads the file (created empty when missing) into s.config and s.recent; every key that can't
// be read keeps its default. Paths default to s.programFolder; for an installed one, those of the
// user's own files (projects, exports, imports, pictures, scenery) to the home folder.
void ReadConfigFile(Session& s, const std::string& path);
// The same on a text in memory.
void ReadConfigText(Session& s, std::string_view text);

void BuildConfigText(CBufferS& out, const Session& s);
// Replaces the file; false when it can't be written.
bool WriteConfigFile(const Session& s, const std::string& path);

} // namespace fw
