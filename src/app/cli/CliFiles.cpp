#include <cstdio>

#include "app/cli/Commands.h"

namespace fw::cli {

int Dump(const Args&)
{
    std::fputs("this command is not available yet\n", stderr);
    return 2;
}

int Resave(const Args&)
{
    std::fputs("this command is not available yet\n", stderr);
    return 2;
}

} // namespace fw::cli
