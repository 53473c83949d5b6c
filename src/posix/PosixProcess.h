// Process for Linux: fork, exec, wait. No window system involved.
#pragma once

#include "ports/Process.h"

namespace fw {

class PosixProcess : public Process {
public:
    // The program is looked up on PATH when it holds no "/". Its output goes nowhere.
    ProcessResult RunHiddenAndWait(const std::string& program, const std::vector<std::string>& args,
                                   const std::string& workingFolder) override;
    bool RunAndCapture(const std::string& program, const std::vector<std::string>& args, std::string& output,
                       int& exitCode) override;
};

} // namespace fw
