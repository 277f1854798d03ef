// Start-up and the command loop.
#pragma once

// Builds the tables, the start position with its key and history, the hash table and the
// default limits. Does not return when the hash table can't be had.
void engine_init();

// Reads and runs command lines until `quit` or the end of input, then frees the hash table.
void command_loop();
