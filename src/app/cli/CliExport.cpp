#include <cstdio>

#include "app/cli/Commands.h"

namespace fw::cli {

int Export(const Args&)
{
    std::fputs("this command is not available yet\n", stderr);
    return 2;
}

int Compile(const Args&)
{
    std::fputs("this command is not available yet\n", stderr);
    return 2;
}

int CheckScasm(const Args&)
{
    std::fputs("this command is not available yet\n", stderr);
    return 2;
}

} // namespace fw::cli
