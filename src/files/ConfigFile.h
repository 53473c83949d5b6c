// The configuration file: preferences, the recent list and the six default shapes.
#pragma once

#include <string>
#include <string_view>

#include "core/Session.h"
#include "files/TextFile.h"

namespace fw {

constexpr const char* kConfigFileName = "Fieldwright.cfg";

// The program folder's "Fieldwright.cfg"; when that folder can't be written, the same name under
// $XDG_CONFIG_HOME/Fieldwright/ (or ~/.config/Fieldwright/).
std::string ConfigFilePath(const std::string& programFolder);

// Reads the file (created empty when missing) into s.config and s.recent; every key that can't
// be read keeps its default. Paths default to s.programFolder.
void ReadConfigFile(Session& s, const std::string& path);
// The same on a text in memory.
void ReadConfigText(Session& s, std::string_view text);

void BuildConfigText(CBufferS& out, const Session& s);
// Replaces the file; false when it can't be written.
bool WriteConfigFile(const Session& s, const std::string& path);

} // namespace fw
