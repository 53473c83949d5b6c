// The tool bar's pictures, drawn at start so the program needs no picture files.
#pragma once

#include <QCursor>
#include <QIcon>
#include <QString>

namespace fw::qt {

// The icon of a tool button by its key ("poly", "zoomIn", "mEdit", ...); a blank icon for others.
QIcon ToolIcon(const QString& key);

// The canvas cursors 101 to 108: a cross whose centre is the hot spot, with the picture of what
// is placed (102 object and sign, 103 runway, 104 VOR, 105 NDB, 106 initial location, 107 exclude
// area, 108 rotate).
QCursor ToolCursor(int resource);

} // namespace fw::qt
