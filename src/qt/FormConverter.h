// The unit converter: one free-standing window, loaded hidden and shown on demand, so its fields
// keep what was typed last.
#pragma once

#include <QWidget>

namespace fw::qt {

// Creates the window hidden (at start) if it doesn't exist yet.
QWidget* LoadConverter(char decimalSeparator, QWidget* parent);
// Shows it, modeless: when it isn't up yet, beside the window parent belongs to.
void ShowConverter(char decimalSeparator, QWidget* parent);
// Where the converter's frame goes beside its owner's frame: right of it, else left, below or
// above, on the first side where it stays inside the screen and 16 pixels from its edges; with
// no such side, over the owner's top right corner, still off the edges.
QPoint ConverterPlace(const QRect& owner, const QSize& size, const QRect& screen);

} // namespace fw::qt
