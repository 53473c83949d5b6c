// A taxiway sign's Caption: panels separated by one blank, each a type word and its items
// separated by "_", as in "Direction_ArrowLeft_A Location_B". The sign dialog and the exporter
// read it by this one parse.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace fw {

struct SignCaptionPanel {
    std::string type; // "Direction", "RwyInstruction" or "Location"
    std::array<std::string, 4> slot;
};

// A whole number from 0 to 36, leading zeros allowed: a runway's number on a sign.
bool IsRunwayNumber(const std::string& item);
// The panels taken, in order; pieces of any other type, and a Location without items, are dropped.
std::vector<SignCaptionPanel> ParseCaption(const std::string& caption);

} // namespace fw
