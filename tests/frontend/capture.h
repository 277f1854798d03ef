// Runs a command through the dispatcher, in either dialect, and returns what it printed on
// standard output.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "frontend/commands.h"
#include "position/output.h"

inline Session fixed_session = { &fixed_dialect, 1, 10 };
inline Session standard_session = { &standard_dialect, 1, 10 };

inline std::string run_command(const char *line, Session *session = &fixed_session)
{
    set_lf_only(session->dialect->lf_only);
    testing::internal::CaptureStdout();
    handle_command(session, line);
    out_flush();
    std::string out = testing::internal::GetCapturedStdout();
    set_lf_only(false);
    return out;
}
