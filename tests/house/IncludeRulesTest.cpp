// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "house/IncludeRules.h"

#include "house/HouseFiles.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <algorithm>
#include <fstream>

namespace fs = std::filesystem;

namespace {

/// A source tree of one planted file, with a Qt of two modules.
class PlantedTreeTest : public testing::Test
{
protected:
    void SetUp() override
    {
        write("qt/QtGui/QImage", "");
        write("qt/QtWidgets/QWidget", "");
    }

    void write(const std::string& name, const std::string& text) const
    {
        const fs::path path = root() / name;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }

    fs::path root() const { return m_folder.path().toStdString(); }

    /// What the rules have against `source` when it includes `what`.
    std::vector<std::string> violations(const std::string& source, const std::string& what) const
    {
        write(source, "#pragma once\n  #  include " + what + "\n");
        const std::vector<std::string> found =
            IncludeRules(root(), root() / "qt", {"norvel/attribute/Public.h", "rvkpcore/Public.h"})
                .violations();
        fs::remove(root() / source);
        return found;
    }

    bool isAllowed(const std::string& source, const std::string& what) const
    {
        return violations(source, what).empty();
    }

    QTemporaryDir m_folder;
};

class HouseIncludesTest : public testing::Test
{
protected:
    IncludeRules rules{NORVEL_SOURCE_DIR, NORVEL_QT_HEADERS, publicHeaders()};
};

} // namespace

TEST_F(PlantedTreeTest, NamesFileLineAndIncludeOfAViolation)
{
    EXPECT_EQ(violations("norvel/attribute/A.cpp", "<norvel/timeline/T.h>"),
              std::vector<std::string>{"norvel/attribute/A.cpp:2 includes <norvel/timeline/T.h> "
                                       "of a room it may not know"});
}

TEST_F(PlantedTreeTest, LetsAttributeKnowOnlyItselfAndTheValueTypes)
{
    const std::string source = "norvel/attribute/A.cpp";
    EXPECT_TRUE(isAllowed(source, "<norvel/attribute/B.h>"));
    EXPECT_TRUE(isAllowed(source, "<norvel/global.h>"));
    EXPECT_TRUE(isAllowed(source, "<kparextension/KpARTypes.h>"));
    EXPECT_TRUE(isAllowed(source, "<QImage>"));
    EXPECT_TRUE(isAllowed(source, "<QtGui/QImage>"));
    EXPECT_TRUE(isAllowed(source, "<vector>"));

    EXPECT_FALSE(isAllowed(source, "<norvel/trace/RvEditorTrace.h>"));
    EXPECT_FALSE(isAllowed(source, "<kparextension/RvARBeautyTrack.h>"));
    EXPECT_FALSE(isAllowed(source, "<rvkpcore/RvITrack.h>"));
    EXPECT_FALSE(isAllowed(source, "<QWidget>"));
    EXPECT_FALSE(isAllowed(source, "<QtWidgets/QWidget>"));
}

TEST_F(PlantedTreeTest, LetsTimelineKnowAttributeAndThePublicFramework)
{
    const std::string source = "norvel/timeline/private/T.cpp";
    EXPECT_TRUE(isAllowed(source, "<norvel/attribute/A.h>"));
    EXPECT_TRUE(isAllowed(source, "<norvel/timeline/private/U.h>"));
    EXPECT_TRUE(isAllowed(source, "<rvkpcore/RvITrack.h>"));
    EXPECT_TRUE(isAllowed(source, "<kparextension/RvARBeautyTrack.h>"));

    EXPECT_FALSE(isAllowed(source, "<norvel/trace/RvEditorTrace.h>"));
    EXPECT_FALSE(isAllowed(source, "<norvel/widgets/canvas/CanvasViewer.h>"));
    EXPECT_FALSE(isAllowed(source, "<rvkpcore/private/NativeTrack.h>"));
    EXPECT_FALSE(isAllowed(source, "<kparextension/private/NativeARTrack.h>"));
    EXPECT_FALSE(isAllowed(source, "<engine/media/MediaProbe.h>"));
    EXPECT_FALSE(isAllowed(source, "<support/DescriptionComparison.h>"));
}

TEST_F(PlantedTreeTest, LetsTraceKnowTheFloorsBelow)
{
    const std::string source = "norvel/trace/E.cpp";
    EXPECT_TRUE(isAllowed(source, "<norvel/timeline/private/Reference.h>"));
    EXPECT_TRUE(isAllowed(source, "<norvel/attribute/A.h>"));
    EXPECT_TRUE(isAllowed(source, "<rvkpcore/RvKpApplication.h>"));

    EXPECT_FALSE(isAllowed(source, "<norvel/widgets/canvas/CanvasViewer.h>"));
    EXPECT_FALSE(isAllowed(source, "<norvel/norvel.h>"));
}

TEST_F(PlantedTreeTest, KeepsTheRoomsOfTheWidgetsApart)
{
    const std::string source = "norvel/widgets/player/P.cpp";
    EXPECT_TRUE(isAllowed(source, "<norvel/widgets/player/Q.h>"));
    EXPECT_TRUE(isAllowed(source, "<norvel/widgets/common/S.h>"));
    EXPECT_TRUE(isAllowed(source, "<norvel/global.h>"));
    EXPECT_TRUE(isAllowed(source, "<rvkpcore/RvKpPlayer.h>"));
    EXPECT_TRUE(isAllowed(source, "<QWidget>"));

    EXPECT_FALSE(isAllowed(source, "<norvel/widgets/mask/M.h>"));
    EXPECT_FALSE(isAllowed(source, "<norvel/attribute/A.h>"));
    EXPECT_FALSE(isAllowed(source, "<norvel/timeline/T.h>"));
    EXPECT_FALSE(isAllowed(source, "<norvel/trace/E.h>"));
    EXPECT_FALSE(isAllowed("norvel/widgets/common/S.h", "<norvel/widgets/player/P.h>"));
}

TEST_F(PlantedTreeTest, KeepsTheFrameworkBelowTheLibraryAndInItsOrder)
{
    EXPECT_TRUE(isAllowed("framework/rvkpcore/A.cpp", "<engine/media/MediaProbe.h>"));
    EXPECT_TRUE(isAllowed("framework/kparextension/A.cpp", "<rvkpcore/private/NativeTrack.h>"));

    EXPECT_FALSE(isAllowed("framework/rvkpcore/A.cpp", "<norvel/global.h>"));
    EXPECT_FALSE(isAllowed("framework/rvkpcore/A.cpp", "<kparextension/KpARTypes.h>"));
    EXPECT_FALSE(isAllowed("framework/rvkpcore/A.cpp", "<libavcodec/avcodec.h>"));
    EXPECT_FALSE(isAllowed("framework/kparextension/A.cpp", "<engine/media/MediaProbe.h>"));
    EXPECT_FALSE(isAllowed("framework/engine/playback/A.cpp", "<rvkpcore/RvITrack.h>"));
}

TEST_F(PlantedTreeTest, KeepsTheRoomsOfTheEngineInTheirOrder)
{
    const std::vector<std::string> upwards{"base", "scene", "media", "compose", "playback"};
    for (std::size_t from = 0; from < upwards.size(); ++from) {
        for (std::size_t to = 0; to < upwards.size(); ++to) {
            EXPECT_EQ(isAllowed("framework/engine/" + upwards[from] + "/A.cpp",
                                "<engine/" + upwards[to] + "/B.h>"),
                      to <= from)
                << upwards[from] << " to " << upwards[to];
        }
    }
    EXPECT_TRUE(isAllowed("framework/engine/sound/A.cpp", "<engine/media/B.h>"));
    EXPECT_TRUE(isAllowed("framework/engine/playback/A.cpp", "<engine/sound/B.h>"));
    EXPECT_FALSE(isAllowed("framework/engine/sound/A.cpp", "<engine/compose/B.h>"));
    EXPECT_FALSE(isAllowed("framework/engine/compose/A.cpp", "<engine/sound/B.h>"));
    EXPECT_FALSE(isAllowed("framework/engine/media/A.cpp", "<engine/sound/B.h>"));
    EXPECT_FALSE(isAllowed("framework/engine/A.cpp", "<engine/base/B.h>"));
}

TEST_F(PlantedTreeTest, LetsTheMediaRoomAloneKnowFfmpeg)
{
    for (const char* name :
         {"<libavcodec/avcodec.h>", "<libavfilter/avfilter.h>", "<libavformat/avformat.h>",
          "<libavutil/frame.h>", "<libswresample/swresample.h>", "<libswscale/swscale.h>"}) {
        EXPECT_TRUE(isAllowed("framework/engine/media/A.cpp", name)) << name;
        for (const char* room : {"base", "scene", "compose", "sound", "playback"}) {
            EXPECT_FALSE(isAllowed(std::string("framework/engine/") + room + "/A.cpp", name))
                << room << " " << name;
        }
    }
}

TEST_F(PlantedTreeTest, LetsAPublicHeaderIncludePublicHeadersAlone)
{
    EXPECT_TRUE(isAllowed("framework/rvkpcore/Public.h", "<rvkpcore/rvkpcore_export.h>"));
    EXPECT_TRUE(isAllowed("framework/rvkpcore/Other.h", "<engine/media/MediaProbe.h>"));
    EXPECT_TRUE(isAllowed("norvel/attribute/Other.h", "<norvel/attribute/RecordJson.h>"));

    EXPECT_FALSE(isAllowed("framework/rvkpcore/Public.h", "<engine/media/MediaProbe.h>"));
    EXPECT_FALSE(isAllowed("norvel/attribute/Public.h", "<norvel/attribute/RecordJson.h>"));
}

TEST_F(PlantedTreeTest, SeesThroughQuotedAndRelativeIncludes)
{
    write("norvel/timeline/T.h", "");
    EXPECT_FALSE(isAllowed("norvel/attribute/A.cpp", "\"../timeline/T.h\""));
    EXPECT_FALSE(isAllowed("norvel/attribute/A.cpp", "<norvel/attribute/../timeline/T.h>"));
    EXPECT_FALSE(isAllowed("norvel/attribute/A.cpp", "\"norvel/timeline/T.h\""));
    EXPECT_TRUE(isAllowed("norvel/timeline/U.cpp", "\"T.h\""));
}

TEST_F(HouseIncludesTest, ReadsEveryPublicHeaderAndItsIncludes)
{
    const std::vector<std::string> sources = rules.sources();
    for (const std::string& header : publicHeaders()) {
        const bool isLibrary = header.compare(0, 7, "norvel/") == 0;
        const std::string source = isLibrary ? header : "framework/" + header;
        EXPECT_TRUE(std::binary_search(sources.begin(), sources.end(), source)) << header;
    }
    EXPECT_EQ(rules.includes("norvel/global.h").size(), 1U);
}

TEST_F(HouseIncludesTest, KeepTheArrows)
{
    for (const std::string& violation : rules.violations())
        ADD_FAILURE() << violation;
}
