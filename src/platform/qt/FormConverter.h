// The unit converter: one free-standing window, loaded hidden and shown on demand, so its fields
// keep what was typed last.
#pragma once

#include <QWidget>

namespace fw::qt {

// Creates the window hidden (at start) if it doesn't exist yet.
QWidget* LoadConverter(char decimalSeparator, QWidget* parent);
// Shows it, modeless.
void ShowConverter(char decimalSeparator, QWidget* parent);

} // namespace fw::qt
