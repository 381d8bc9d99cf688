// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>

namespace tessaro::test {

/// Runs `program(pipe)` in a process of its own, which writes reports into the pipe without end; kills it behind so
/// many reports and a little while. The result is the last report.
template <class Report, class Program>
Report lastOfKilled(const Program& program, std::uint32_t reports, std::uint32_t microseconds)
{
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        program(ends[1]);
    }
    ::close(ends[1]);
    Report last;
    Report report;
    const auto listen = [&] {
        if (::read(ends[0], &report, sizeof report) != sizeof report) return false;
        last = report;
        return true;
    };
    for (; reports != 0 && listen(); --reports) {}
    ::usleep(microseconds);
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself: " << WEXITSTATUS(status);
    while (listen()) {}
    ::close(ends[0]);
    return last;
}

} // namespace tessaro::test
