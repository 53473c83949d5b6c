// Finding files whose folders and names are spelled in another case ("Resource", "resource").
#pragma once

#include <string>

namespace fw {

// The path as it stands on disk: "\" and "/" both separate, and a part that doesn't exist as
// spelled is matched against its folder's entries without regard to ASCII case. A path that
// can't be found is given back with "/" separators, unchanged otherwise.
std::string FindPathNoCase(const std::string& path);

} // namespace fw
