// A project as JSON, for the batch tool: strings decoded from Windows-1252.
#pragma once

#include <string>
#include <string_view>

#include "files/ProjectFile.h"

namespace fw {

// Windows-1252 bytes as UTF-8.
std::string Cp1252ToUtf8(std::string_view bytes);
// Shortest text that reads back to the same double.
std::string JsonNumber(double v);
std::string ProjectToJson(const ProjectData& data);

} // namespace fw
