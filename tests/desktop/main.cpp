// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/scripted_program.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <string_view>

/// The tests; or, with "--program", the program that they lead.
int main(int argc, char** argv)
{
    if (argc > 1 && std::string_view(argv[1]) == "--program") return tessaro::test::runScripted(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    const QCoreApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
