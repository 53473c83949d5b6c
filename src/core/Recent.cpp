#include "core/Recent.h"

#include <algorithm>

#include "ports/Ui.h"

namespace fw {

std::string CRecent::getEntry(int index) const
{
    if (entries_.empty())
        return {};
    if (index < 0)
        index = 0;
    if (index > nEntries())
        index = nEntries();
    return entries_[static_cast<std::size_t>(index)];
}

void CRecent::addPath(const std::string& path, Ui* ui)
{
    if (path.empty())
        return;
    if (nEntries() > 3) {
        if (ui)
            ui->Message("Error: CRecent(rNum overflow)!", MessageStyle::Critical);
        return;
    }
    auto it = std::find(entries_.begin(), entries_.end(), path);
    if (it != entries_.end())
        entries_.erase(it);
    entries_.insert(entries_.begin(), path);
    if (entries_.size() > 4)
        entries_.resize(4);
}

} // namespace fw
