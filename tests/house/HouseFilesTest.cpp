// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "house/HouseFiles.h"

#include <norvel/global.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace fs = std::filesystem;

namespace {

const fs::path root = NORVEL_SOURCE_DIR;

bool contains(const std::vector<std::string>& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

TEST(LicenceLinesTest, AreAskedOfSourcesAndScripts)
{
    for (const char* name :
         {"norvel/global.h", "CMakeLists.txt", "tests/CMakeLists.txt", "cmake/X.cmake",
          "cmake/package.pc.in", "run.sh", ".ci/run", "resources/x.qrc", "resources/x.svg"})
        EXPECT_TRUE(needsLicenceLines(name)) << name;
    for (const char* name : {"README.md", "CMakePresets.json", "LICENSE"})
        EXPECT_FALSE(needsLicenceLines(name)) << name;
}

TEST(LicenceLinesTest, AreTheFirstTwoAfterTheInterpreter)
{
    const std::string cpp = "// SPDX-FileCopyrightText: 2026 X\n// SPDX-License-Identifier: MIT\n";
    const std::string script = "# SPDX-FileCopyrightText: 2026 X\n# SPDX-License-Identifier: MIT\n";
    EXPECT_TRUE(hasLicenceLines(cpp));
    const std::string xml = "<!-- SPDX-FileCopyrightText: 2026 X -->\n"
                            "<!-- SPDX-License-Identifier: MIT -->\n";
    EXPECT_TRUE(hasLicenceLines("#!/bin/sh\n" + script));
    EXPECT_TRUE(hasLicenceLines(xml + "<RCC>"));

    EXPECT_FALSE(hasLicenceLines(""));
    EXPECT_FALSE(hasLicenceLines("\n" + cpp));
    EXPECT_FALSE(hasLicenceLines("// SPDX-FileCopyrightText: 2026 X\n#pragma once\n"));
    EXPECT_FALSE(hasLicenceLines("// SPDX-License-Identifier: MIT\n"));
}

TEST(LicenceLinesTest, StandInEverySource)
{
    const std::vector<std::string> files = filesBelow(root);
    for (const char* name : {"CMakeLists.txt", "norvel/global.h", ".ci/run", "test.sh"})
        EXPECT_TRUE(contains(files, name)) << name << " is not looked at";
    for (const std::string& file : files)
        EXPECT_TRUE(!needsLicenceLines(file) || hasLicenceLines(textOf(root / file))) << file;
}

TEST(UmbrellaHeaderTest, IncludesEveryPublicHeaderOfTheLibrary)
{
    const std::string umbrella = textOf(root / "norvel/norvel.h");
    for (const std::string& header : publicHeaders()) {
        if (header.compare(0, 7, "norvel/") != 0 || header == "norvel/norvel.h")
            continue;
        EXPECT_NE(umbrella.find("#include <" + header + ">\n"), std::string::npos) << header;
    }
}

TEST(VersionTest, OfTheHeaderIsThatOfTheProject)
{
    EXPECT_STREQ(NORVEL_VERSION, NORVEL_PROJECT_VERSION);
    const std::string numbers = std::to_string(NORVEL_VERSION_MAJOR) + "." +
                                std::to_string(NORVEL_VERSION_MINOR) + "." +
                                std::to_string(NORVEL_VERSION_PATCH);
    EXPECT_EQ(numbers, NORVEL_PROJECT_VERSION);
}

TEST(MarkdownTest, GivesTheCodeBlocksOfALanguage)
{
    const std::string markdown = "a\n```cpp\nint a;\n\nint b;\n```\n```sh\nls\n```\n```cpp\n```\n";
    EXPECT_EQ(codeBlocks(markdown, "cpp"), (std::vector<std::string>{"int a;\n\nint b;\n", ""}));
    EXPECT_TRUE(codeBlocks("```\nint a;\n```\n", "cpp").empty());
}

TEST(MarkdownTest, GivesTheLinkedFiles)
{
    const std::string markdown = "[a](docs/a.md#top), [b](https://b.org/), [c](#c) and [d](d.md)";
    EXPECT_EQ(linkedFiles(markdown), (std::vector<std::string>{"docs/a.md", "d.md"}));
}

TEST(ReadmeTest, ShowsTheEmbeddingExampleAsItIs)
{
    const std::string example = withoutLicenceLines(textOf(root / "examples/embedding/main.cpp"));
    const std::vector<std::string> blocks = codeBlocks(textOf(root / "README.md"), "cpp");
    ASSERT_FALSE(blocks.empty());
    EXPECT_EQ(blocks.front(), example);
}

TEST(DocumentsTest, LinkToFilesThatAreThere)
{
    int links = 0;
    for (const std::string& file : filesBelow(root)) {
        if (fs::path(file).extension() != ".md")
            continue;
        for (const std::string& linked : linkedFiles(textOf(root / file))) {
            EXPECT_TRUE(fs::exists((root / file).parent_path() / linked)) << file << ": " << linked;
            ++links;
        }
    }
    EXPECT_GT(links, 0);
}
