// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "house/HouseFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <sstream>

namespace fs = std::filesystem;

namespace {

const std::array<std::string, 2> licenceTags{"SPDX-FileCopyrightText: ",
                                             "SPDX-License-Identifier: MIT"};

/// Takes the next line off the front of a text.
std::string takeLine(std::string& text)
{
    const auto end = std::min(text.find('\n'), text.size());
    const std::string line = text.substr(0, end);
    text.erase(0, end + 1);
    return line;
}

bool isComment(const std::string& line, const std::string& content)
{
    return line.compare(0, 3 + content.size(), "// " + content) == 0 ||
           line.compare(0, 2 + content.size(), "# " + content) == 0 ||
           line.compare(0, 5 + content.size(), "<!-- " + content) == 0;
}

bool isOutsideTheSources(const fs::path& folder)
{
    const std::string name = folder.filename().string();
    return name.compare(0, 5, "build") == 0 || name == ".git" || name == ".cache";
}

} // namespace

std::string textOf(const fs::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << "cannot read " << path;
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::set<std::string> publicHeaders()
{
    std::istringstream stream(textOf(NORVEL_PUBLIC_HEADER_LIST));
    return {std::istream_iterator<std::string>(stream), {}};
}

std::vector<std::string> filesBelow(const fs::path& root)
{
    std::vector<std::string> files;
    for (auto entry = fs::recursive_directory_iterator(root);
         entry != fs::recursive_directory_iterator(); ++entry) {
        if (entry->is_directory() && isOutsideTheSources(entry->path()))
            entry.disable_recursion_pending();
        else if (entry->is_regular_file())
            files.push_back(entry->path().lexically_relative(root).generic_string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool needsLicenceLines(const std::string& name)
{
    static const std::set<std::string> extensions{".h",   ".cpp",  ".cmake", ".in", ".sh",
                                                  ".awk", ".supp", ".qrc",   ".svg"};
    const fs::path path(name);
    return extensions.count(path.extension().string()) != 0 ||
           path.filename() == "CMakeLists.txt" || name == ".ci/run";
}

bool hasLicenceLines(const std::string& text)
{
    std::string rest = text;
    std::string line = takeLine(rest);
    if (line.compare(0, 2, "#!") == 0)
        line = takeLine(rest);
    return isComment(line, licenceTags[0]) && isComment(takeLine(rest), licenceTags[1]);
}

std::string withoutLicenceLines(const std::string& text)
{
    std::string rest = text;
    for (int line = 0; line < 3; ++line)
        takeLine(rest);
    return rest;
}

std::vector<std::string> codeBlocks(const std::string& markdown, const std::string& language)
{
    std::vector<std::string> blocks;
    std::string rest = markdown;
    while (!rest.empty()) {
        if (takeLine(rest) != "```" + language)
            continue;
        std::string block;
        for (std::string line = takeLine(rest); line != "```" && !rest.empty();
             line = takeLine(rest))
            block += line + "\n";
        blocks.push_back(block);
    }
    return blocks;
}

std::vector<std::string> linkedFiles(const std::string& markdown)
{
    std::vector<std::string> files;
    for (auto link = markdown.find("]("); link != std::string::npos;
         link = markdown.find("](", link + 1)) {
        const auto begin = link + 2;
        const std::string target = markdown.substr(begin, markdown.find(')', begin) - begin);
        const std::string file = target.substr(0, target.find('#'));
        if (!file.empty() && file.find("://") == std::string::npos)
            files.push_back(file);
    }
    return files;
}
