#include <cstdio>

#include "app/cli/Commands.h"

namespace fw::cli {

int Replay(const Args&)
{
    std::fputs("this command is not available yet\n", stderr);
    return 2;
}

} // namespace fw::cli
