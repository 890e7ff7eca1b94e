// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

#include <iosfwd>

/// How the tour ended.
enum TourExit : int {
    TourAgreed = 0,    ///< every step agreed and no framework object is left alive
    TourDisagreed = 1, ///< a step did not, or one is
    TourNotMade = 2,   ///< it could not be made, for a reason that is told on `err`
};

/// The program: makes the tour that a command line, whose first entry is the program, asks for.
/// Needs a Qt application.
TourExit runTourProgram(const QStringList& arguments, std::ostream& out, std::ostream& err);
