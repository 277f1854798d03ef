// What the front end keeps from command to command: the dialect it speaks and the options a GUI
// has set. One record, made at start-up and handed to every command.
#pragma once

#include "control/dialect.h"

struct Session {
    const Dialect *dialect;
    int multipv; // lines each iteration reports
    int move_overhead_ms; // what the GUI and the pipes lose per move, kept off the clock
};
