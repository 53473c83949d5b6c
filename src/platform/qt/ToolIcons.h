// The tool bar's pictures, drawn at start so the program needs no picture files.
#pragma once

#include <QIcon>
#include <QString>

namespace fw::qt {

// The icon of a tool button by its key ("poly", "zoomIn", "mEdit", ...); a blank icon for others.
QIcon ToolIcon(const QString& key);

} // namespace fw::qt
