// The four most recent project files; position 0 is the newest.
#pragma once

#include <string>
#include <vector>

namespace fw {

class Ui;

class CRecent {
public:
    void reset() { entries_.clear(); }
    int nEntries() const { return static_cast<int>(entries_.size()) - 1; }
    std::string getEntry(int index) const;
    void addPath(const std::string& path, Ui* ui = nullptr);

private:
    std::vector<std::string> entries_;
};

} // namespace fw
