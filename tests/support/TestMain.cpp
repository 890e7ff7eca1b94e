// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/TestEnvironment.h"

#include <gtest/gtest.h>

#include <QApplication>

/// The main program of the test programs: GoogleTest within a Qt application, with every test
/// watched for stray Qt warnings and leaked framework objects.
int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    TestEnvironment::install();
    return RUN_ALL_TESTS();
}
