// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

/// An `#include` line of a source file.
struct Include
{
    int line = 0;
    /// What is included, by the name that an including file elsewhere would use; as it is written
    /// when it is no file of the house.
    std::string target;
};

/// The includes between the rooms of a source tree, and which of them the house allows:
/// - `norvel/attribute` knows the value types of `kparextension` and nothing else of the house;
/// - `norvel/timeline` knows `attribute` and the framework, `norvel/trace` knows these three;
/// - a room of `norvel/widgets` knows the framework and `norvel/widgets/common`, and no other room;
/// - `framework/kparextension` knows `rvkpcore`, and that one knows `engine`, never the other way;
/// - nothing in `norvel` includes the framework's private headers or its engine;
/// - a public header includes public headers alone, because the others are not installed.
class IncludeRules
{
public:
    /// The rules over the source tree `root`. `qtHeaders` is the folder that holds `QtCore` and the
    /// other modules; `publicHeaders` are the names under which the public headers are included.
    IncludeRules(std::filesystem::path root, std::filesystem::path qtHeaders,
                 std::set<std::string> publicHeaders);

    /// The sources of the rooms that have rules, as paths relative to the root.
    std::vector<std::string> sources() const;
    /// The includes of a source, given as a path relative to the root.
    std::vector<Include> includes(const std::string& source) const;
    /// A line for every include that is not allowed, none in a tidy house.
    std::vector<std::string> violations() const;

private:
    std::string nameOf(const std::string& source, const std::string& written, bool quoted) const;
    std::string complaint(const std::string& source, const std::string& target) const;
    std::string qtModuleOf(const std::string& target) const;

    std::filesystem::path m_root;
    std::filesystem::path m_qtHeaders;
    std::set<std::string> m_publicHeaders;
};
