// Korvane: a UCI chess engine. Reads no arguments and prints nothing until spoken to.
#include <cstdio>

#include "frontend/engine.h"
#include "platform/platform.h"

int main()
{
    platform_init();
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    engine_init();
    command_loop();
    return 0;
}
