// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TraceFixture.h"

namespace {

class PrintStatusTest : public TraceTest
{
protected:
    /// What is written for a stored description and, unless it is empty, for the live one.
    static std::string expected(const std::string& stored, const std::string& live)
    {
        std::string text = "-----------------RvEditorTrace Attribute----------------------\n"
                           "RvEditorTrace Attribute : " +
                           stored +
                           "-----------------RvEditorTrace Timeline-----------------------\n";
        if (!live.empty())
            text += "RvEditorTrace Timeline : " + live;
        return text + "--------------------------------------------------------------\n";
    }

    std::string captured() const { return TimelineSamples::capture(*timeline)->serialization(); }
};

} // namespace

TEST_F(PrintStatusTest, WritesNothingWhileTheHistoryIsEmpty)
{
    EXPECT_EQ(printed(), "");
    trace->initTrace();
    takeTimelineAway();
    trace->initTrace();
    giveTimelineBack();
    EXPECT_EQ(printed(), "");
}

TEST_F(PrintStatusTest, WritesTheStoredAndTheLiveDescription)
{
    trace->initTrace();
    EXPECT_EQ(printed(), expected(captured(), captured()));
}

TEST_F(PrintStatusTest, WritesTheStoredDescriptionAsItWasStored)
{
    trace->initTrace();
    const std::string stored = captured();
    setAlpha(0.5F);
    addMix(12);
    EXPECT_NE(captured(), stored);
    EXPECT_EQ(printed(), expected(stored, captured()));
}

TEST_F(PrintStatusTest, WritesTheStoredDescriptionAloneWithoutATimeline)
{
    trace->initTrace();
    const std::string stored = captured();
    takeTimelineAway();
    EXPECT_EQ(printed(), expected(stored, ""));
}

TEST_F(PrintStatusTest, WritesTheEntryThatIsCurrent)
{
    trace->initTrace();
    const std::string first = captured();
    setAlpha(0.5F);
    trace->recordStatus();
    const std::string second = captured();
    EXPECT_EQ(printed(), expected(second, second));
    trace->undo();
    EXPECT_EQ(printed(), expected(first, first));
    trace->redo();
    EXPECT_EQ(printed(), expected(second, second));
}

TEST_F(PrintStatusTest, WritesTheCanvasSizeThatIsConfiguredThen)
{
    config().setKpSize(640.0F, 360.0F);
    trace->initTrace();
    config().setKpSize(800.0F, 600.0F);
    auto description = TimelineSamples::capture(*timeline);
    description->width = 640.0F;
    description->height = 360.0F;
    const std::string stored = description->serialization();
    description->width = 800.0F;
    description->height = 600.0F;
    EXPECT_EQ(printed(), expected(stored, description->serialization()));
}

TEST_F(PrintStatusTest, WritesTextThatLooksLikeAFormatAsItIs)
{
    auto made = TimelineSamples::pictures({});
    made->mixAttribs.push_back(TimelineSamples::record(norvel::RecordTypeARLayer, 5));
    dynamic_cast<norvel::RvARLayerAttribute&>(*made->mixAttribs[0]).globalParamConfiguration =
        "100 %s %n";
    timeline = TimelineSamples::live(*made);
    giveTimelineBack();
    trace->initTrace();
    EXPECT_NE(captured().find("100 %s %n"), std::string::npos);
    EXPECT_EQ(printed(), expected(captured(), captured()));
}
