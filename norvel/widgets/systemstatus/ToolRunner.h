// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace norvel {

/// Runs command-line tools and gives what they print.
///
/// A run blocks the calling thread until the tool has ended, at most for the limit; a tool that
/// takes longer is killed. No tool outlives its run.
class ToolRunner
{
public:
    /// How long a tool may take, milliseconds.
    static constexpr int DefaultLimitMs = 30000;

    explicit ToolRunner(int limitMs = DefaultLimitMs);

    /// The standard output of a command line, split into program and arguments at spaces outside of
    /// double quotes: no shell looks at it. Empty if nothing came, as from a tool that does not
    /// start; what was printed until then if the tool fails or is killed.
    QString run(const QString& commandLine) const;

private:
    int m_limitMs;
};

} // namespace norvel
