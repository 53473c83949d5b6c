#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

#include "check/DesignCheck.h"
#include "export/Compile.h"

namespace fw {

namespace {

namespace fs = std::filesystem;

bool Executable(const fs::path& p)
{
    std::error_code ec;
    return fs::is_regular_file(p, ec) && ::access(p.c_str(), X_OK) == 0;
}

// The program as the shell would find it on the PATH; empty when it isn't there.
fs::path OnPath(const std::string& name)
{
    const char* path = std::getenv("PATH");
    std::string rest = path ? path : "";
    std::size_t start = 0;
    while (start <= rest.size()) {
        const std::size_t end = std::min(rest.find(':', start), rest.size());
        const std::string dir = rest.substr(start, end - start);
        if (!dir.empty() && Executable(fs::path(dir) / name))
            return fs::path(dir) / name;
        start = end + 1;
    }
    return {};
}

// Wine runs 32-bit programs when its 32-bit Windows libraries are installed: beside its own
// installation (WineHQ's builds, a wow64 build) or in Debian's i386 folder (the wine32 package).
bool Wine32Beside(const fs::path& wine)
{
    std::error_code ec;
    const fs::path real = fs::weakly_canonical(wine, ec);
    const fs::path prefix = (ec ? wine : real).parent_path().parent_path();
    const std::vector<fs::path> places = {
        prefix / "lib/wine/i386-windows",
        prefix / "lib32/wine/i386-windows",
        prefix / "lib/i386-linux-gnu/wine/i386-windows",
        "/usr/lib/i386-linux-gnu/wine/i386-windows",
        "/usr/lib/i386-linux-gnu/wine",
        prefix / "lib/wine/wine",
    };
    for (const fs::path& p : places)
        if (fs::exists(p, ec))
            return true;
    return false;
}

} // namespace

CompilerSetup ProbeCompilerSetup(const std::string& programFolder, const CompilerCommand& command)
{
    CompilerSetup s;
    s.programFolder = programFolder;
    s.nativeProgram = command.nativeProgram;
    if (!s.nativeProgram.empty()) {
        const fs::path p = s.nativeProgram.find('/') == std::string::npos ? OnPath(s.nativeProgram)
                                                                            : fs::path(s.nativeProgram);
        s.nativeRuns = !p.empty() && Executable(p);
        return s;
    }
    const fs::path wine = OnPath("wine");
    s.wine = !wine.empty();
    s.wine32 = s.wine && Wine32Beside(wine);
    std::error_code ec;
    s.scasm = !programFolder.empty() && fs::is_regular_file(fs::path(programFolder + kCompilerName), ec);
    return s;
}

} // namespace fw
