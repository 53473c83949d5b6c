// Starting another program, hidden, and waiting for it.
#pragma once

#include <string>
#include <vector>

namespace fw {

struct ProcessResult {
    bool started = false;
    int exitCode = -1;
};

class Process {
public:
    virtual ~Process() = default;
    virtual ProcessResult RunHiddenAndWait(const std::string& program, const std::vector<std::string>& args,
                                           const std::string& workingFolder) = 0;
};

} // namespace fw
