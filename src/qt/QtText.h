// Text at the Qt boundary: the logic keeps Windows-1252 bytes, Qt wants Unicode.
#pragma once

#include <string>

#include <QString>

namespace fw::qt {

// Windows-1252 bytes to Unicode. Bytes that form valid multi-byte UTF-8 (file names the host gave
// us) are read as UTF-8, so a path shows as the file system spells it.
QString ToQt(const std::string& text);

// Unicode to Windows-1252 bytes; characters the code page lacks become "?".
std::string FromQt(const QString& text);

// A path as the file system wants it (the host's own encoding), so the file can be opened again.
std::string PathFromQt(const QString& path);
QString PathToQt(const std::string& path);

} // namespace fw::qt
