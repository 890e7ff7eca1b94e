// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

/// The text of a file; a file that cannot be read is a test failure.
std::string textOf(const std::filesystem::path& path);

/// The names under which the public headers of the libraries are included.
std::set<std::string> publicHeaders();

/// The files below the folder `root`, as paths relative to it, without those of builds, of caches
/// and of version control.
std::vector<std::string> filesBelow(const std::filesystem::path& root);

/// Whether files of this name carry the two lines that tell holder and licence.
bool needsLicenceLines(const std::string& name);

/// Whether a text tells holder and licence in its first two lines, after the line that names an
/// interpreter if there is one.
bool hasLicenceLines(const std::string& text);

/// The text without its licence lines and the blank line after them.
std::string withoutLicenceLines(const std::string& text);

/// The code blocks of a Markdown text that are marked as being in `language`.
std::vector<std::string> codeBlocks(const std::string& markdown, const std::string& language);

/// The files that a Markdown text links to, without anchors; links to other places are left out.
std::vector<std::string> linkedFiles(const std::string& markdown);
