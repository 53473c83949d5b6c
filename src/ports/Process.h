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
    // Runs a program and collects what it prints (for path converters); false when it can't start.
    virtual bool RunAndCapture(const std::string& program, const std::vector<std::string>& args,
                               std::string& output, int& exitCode)
    {
        (void)program;
        (void)args;
        output.clear();
        exitCode = -1;
        return false;
    }
};

} // namespace fw
