// Runs a command through the dispatcher and returns what it printed on standard output.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "frontend/commands.h"

inline std::string run_command(const char *line, int *result = nullptr)
{
    testing::internal::CaptureStdout();
    int r = handle_command(line);
    std::fflush(stdout);
    if (result) *result = r;
    return testing::internal::GetCapturedStdout();
}
