#include "core/SignCaption.h"

#include <algorithm>

#include "core/Helpers.h"

namespace fw {

bool IsRunwayNumber(const std::string& item)
{
    if (item.empty())
        return false;
    int value = 0;
    for (char c : item) {
        if (c < '0' || c > '9')
            return false;
        value = std::min(value * 10 + (c - '0'), 1000);
    }
    return value <= 36;
}

std::vector<SignCaptionPanel> ParseCaption(const std::string& caption)
{
    std::vector<SignCaptionPanel> panels;
    for (const std::string& piece : SplitWords(caption, ' ')) {
        const std::vector<std::string> words = SplitWords(piece, '_');
        if (words.empty())
            continue;
        const std::string& type = words[0];
        const bool taken = type == "RwyInstruction" || type == "Direction" || (type == "Location" && words.size() > 1);
        if (!taken)
            continue;
        SignCaptionPanel panel;
        panel.type = type;
        int arrowSlot = 0;
        // Items past the fourth are ignored. A runway instruction's number has slot 1; its
        // arrows go to slot 0 first and slot 2 after the panel's first item, of either kind.
        for (std::size_t k = 1; k < words.size() && k <= 4; ++k) {
            const std::string& item = words[k];
            if (type != "RwyInstruction") {
                panel.slot[k - 1] = item;
            } else {
                if (IsRunwayNumber(item))
                    panel.slot[1] = item;
                else
                    panel.slot[arrowSlot] = item;
                arrowSlot = 2;
            }
        }
        panels.push_back(std::move(panel));
    }
    return panels;
}

} // namespace fw
