// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

#include <string>
#include <vector>

/// What the command line of the tour asks for.
struct TourOptions
{
    /// What there is to do with a command line.
    enum class Action {
        Run,     ///< make the tour
        Tell,    ///< print `text`: the help or the version
        Complain ///< say `text`: what is wrong with the command line
    };

    Action action = Action::Run;
    std::string text;
    std::vector<std::string> files; ///< UTF-8, as they were given
    std::string jsonFolder;         ///< UTF-8; empty when no documents are asked for
    bool showCalls = false;

    /// Reads a command line, whose first entry is the program.
    static TourOptions parse(const QStringList& arguments);
};
