// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/DescriptionComparison.h"

#include "attribute/SampleRecords.h"
#include "support/TestMedia.h"

#include <norvel/attribute/RvEffectAttribute.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <functional>
#include <memory>

namespace {

using Lines = std::vector<std::string>;

/// A change of one field, which is known by this name.
template <class Kind>
struct Change
{
    const char* field;
    std::function<void(Kind&)> make;
};
template <class Kind>
using Changes = std::vector<Change<Kind>>;

/// Makes each change alone, on a copy of a record that has no default values.
template <class Kind, class Base>
void expectEveryChangeIsNamed(const Changes<Base>& changes)
{
    for (const auto& [field, make] : changes) {
        const Kind stored = filledRecord<Kind>();
        Kind live = stored;
        EXPECT_EQ(differences(stored, live), Lines{}) << field;
        make(live);
        EXPECT_EQ(differences(stored, live), Lines{field});
        EXPECT_EQ(differences(live, stored), Lines{field});
    }
}

const Changes<norvel::RvAttribute> commonChanges{
    {"uuid", [](auto& r) { r.uuid -= 1; }},
    {"source", [](auto& r) { r.source = "/media/Clip.mp4"; }},
    {"startTime", [](auto& r) { r.startTime += 1; }},
    {"duration", [](auto& r) { r.duration += 1; }},
    {"type", [](auto& r) { r.type = 2; }},
    {"zOrder", [](auto& r) { r.zOrder = 7; }},
    {"alpha", [](auto& r) { r.alpha = 0.30000004F; }},
    {"speed", [](auto& r) { r.speed = 2.0F; }},
    {"auxText", [](auto& r) { r.auxText.clear(); }},
};

const Changes<norvel::RvMediaAttribute> mediaChanges{
    {"fileStartTime", [](auto& r) { r.fileStartTime = 2.5F; }},
    {"width", [](auto& r) { r.width = 1.0F; }},
    {"height", [](auto& r) { r.height = 1.0F; }},
    {"positionX", [](auto& r) { r.positionX = 1.0F; }},
    {"positionY", [](auto& r) { r.positionY = 1.0F; }},
    {"scale", [](auto& r) { r.scale = 1.0F; }},
    {"rotation", [](auto& r) { r.rotation = -90.0F; }},
};

const Changes<norvel::RvAudioAttribute> audioChanges{
    {"fileStartTime", [](auto& r) { r.fileStartTime += 1.0F; }},
};

const Changes<norvel::RvDetectAttribute> detectChanges{
    {"mode", [](auto& r) { r.mode = 5; }},
    {"modePath", [](auto& r) { r.modePath = "/models/body"; }},
    {"range", [](auto& r) { r.range = 2; }},
    {"bindType", [](auto& r) { r.bindType = 1; }},
    {"target", [](auto& r) { r.target.pop_back(); }},
};

const Changes<norvel::RvEffectAttribute> effectChanges{
    {"range", [](auto& r) { r.range = 2; }},
    {"bindType", [](auto& r) { r.bindType = 1; }},
    {"target",
     [](auto& r) {
         r.target = {11, 12};
     }},
    {"detect", [](auto& r) { r.detect = 0; }},
};

const Changes<norvel::RvARAttribute> arChanges{
    {"scriptParams", [](auto& r) { r.scriptParams["text"] = "Hello"; }},
    {"scriptParams", [](auto& r) { r.scriptParams["new"] = ""; }},
    {"globalParamConfiguration", [](auto& r) { r.globalParamConfiguration += ' '; }},
};

const Changes<norvel::RvARFilterAttribute> filterChanges{
    {"filterAlpha", [](auto& r) { r.filterAlpha = 1.0F; }},
    {"floatParams", [](auto& r) { r.floatParams[flag(2)] = 0.5F; }},
    {"faceFloatParams", [](auto& r) { r.faceFloatParams[5][flag(3)] = 0.25F; }},
    {"faceFloatParams", [](auto& r) { r.faceFloatParams.erase(-1); }},
    {"arFacePlists", [](auto& r) { r.arFacePlists[5] = "/faces/6.plist"; }},
};

const Changes<norvel::RvARBeautyAttribute> beautyChanges{
    {"beautyType", [](auto& r) { r.beautyType = qkpar::RvBeautyTypeMakeup; }},
    {"enableBeautyGenderDistinction", [](auto& r) { r.enableBeautyGenderDistinction = false; }},
    {"coeffientParameterConfig", [](auto& r) { r.coeffientParameterConfig.clear(); }},
    {"applyGenderToAR", [](auto& r) { r.applyGenderToAR = false; }},
    {"allFaceBeautyParam", [](auto& r) { r.allFaceBeautyParam[5][flag(4)] = 0.0F; }},
    {"allBeautyAnattaForFaceControls",
     [](auto& r) { r.allBeautyAnattaForFaceControls[flag(6)] = false; }},
    {"manualLongLegRange", [](auto& r) { r.manualLongLegRange.second = 1.0F; }},
    {"manualSlimHeadParam", [](auto& r) { std::get<2>(r.manualSlimHeadParam) = 1.0F; }},
    {"manualLongLegEnable", [](auto& r) { r.manualLongLegEnable = false; }},
    {"mapPointsData", [](auto& r) { r.mapPointsData[1].ry() += 1.0; }},
    {"beautyMaskFaceId", [](auto& r) { r.beautyMaskFaceId = 6; }},
    {"beautyMaskBrushType", [](auto& r) { r.beautyMaskBrushType = "flat"; }},
    {"beautyActiveMaskImage", [](auto& r) { r.beautyActiveMaskImage.setPixel(1, 1, 0); }},
};

const Changes<norvel::RvARLiquifyAttribute> liquifyChanges{
    {"centerX", [](auto& r) { r.centerX = 0.2; }},
    {"centerY", [](auto& r) { r.centerY = 0.2; }},
    {"radius", [](auto& r) { r.radius = 0.2F; }},
    {"strength", [](auto& r) { r.strength = 0.2F; }},
    {"movePoints", [](auto& r) { r.movePoints[0].rx() += 1.0; }},
    {"movePoints", [](auto& r) { r.movePoints[1].rx() += 1.0; }},
    {"liquifyStyle", [](auto& r) { r.liquifyStyle = 3; }},
    {"effectPath", [](auto& r) { r.effectPath.clear(); }},
};

const Changes<norvel::RvARMakeupAttribute> makeupChanges{
    {"suitAlpha", [](auto& r) { r.suitAlpha = 0.4F; }},
    {"groupOrders", [](auto& r) { std::swap(r.groupOrders[0], r.groupOrders[1]); }},
    {"groupDatas", [](auto& r) { r.groupDatas.pop_back(); }},
    {"groupDatas", [](auto& r) { r.groupDatas[1].groupAlpha = 0.2F; }},
    {"groupDatas", [](auto& r) { r.groupDatas[1].entries[0].second = "blue.png"; }},
    {"groupFaceDatas", [](auto& r) { r.groupFaceDatas.pop_back(); }},
    {"groupFaceDatas", [](auto& r) { r.groupFaceDatas[0].faceId = 6; }},
    {"groupFaceDatas", [](auto& r) { r.groupFaceDatas[0].suitAlpha = 0.6F; }},
    {"groupFaceDatas", [](auto& r) { r.groupFaceDatas[0].groupOrders.clear(); }},
    {"groupFaceDatas", [](auto& r) { r.groupFaceDatas[0].groupDatas[0].groupName = "Lips"; }},
};

template <class Kind>
void expectEveryEffectChangeIsNamed()
{
    expectEveryChangeIsNamed<Kind>(commonChanges);
    expectEveryChangeIsNamed<Kind>(effectChanges);
    expectEveryChangeIsNamed<Kind>(arChanges);
}

template <class Kind>
void expectEveryBeautyChangeIsNamed()
{
    expectEveryEffectChangeIsNamed<Kind>();
    expectEveryChangeIsNamed<Kind>(filterChanges);
    expectEveryChangeIsNamed<Kind>(beautyChanges);
}

/// A record of a track with this id.
std::unique_ptr<norvel::RvAttribute> track(std::uint64_t id)
{
    auto record = std::make_unique<norvel::RvMediaAttribute>();
    fillRecord(*record);
    record->uuid = id;
    return record;
}

using Ids = std::vector<std::uint64_t>;

/// A description of tracks with these ids.
std::unique_ptr<norvel::RvTimeLineAttribute> timeline(const Ids& main, const Ids& mix)
{
    auto description = std::make_unique<norvel::RvTimeLineAttribute>();
    for (const std::uint64_t id : main)
        description->mainAttribs.push_back(track(id).release());
    for (const std::uint64_t id : mix)
        description->mixAttribs.push_back(track(id).release());
    return description;
}

Lines differencesOf(const Ids& storedMain, const Ids& storedMix, const Ids& liveMain,
                    const Ids& liveMix)
{
    return differences(*timeline(storedMain, storedMix), *timeline(liveMain, liveMix));
}

} // namespace

TEST(RecordDifferencesTest, NameEveryFieldOfAClip)
{
    expectEveryChangeIsNamed<norvel::RvMediaAttribute>(commonChanges);
    expectEveryChangeIsNamed<norvel::RvMediaAttribute>(mediaChanges);
}

TEST(RecordDifferencesTest, NameEveryFieldOfASound)
{
    expectEveryChangeIsNamed<norvel::RvAudioAttribute>(commonChanges);
    expectEveryChangeIsNamed<norvel::RvAudioAttribute>(audioChanges);
}

TEST(RecordDifferencesTest, NameEveryFieldOfADetection)
{
    expectEveryChangeIsNamed<norvel::RvDetectAttribute>(commonChanges);
    expectEveryChangeIsNamed<norvel::RvDetectAttribute>(detectChanges);
}

TEST(RecordDifferencesTest, NameEveryFieldOfALayer)
{
    expectEveryEffectChangeIsNamed<norvel::RvARLayerAttribute>();
}

TEST(RecordDifferencesTest, NameEveryFieldOfAFilter)
{
    expectEveryEffectChangeIsNamed<norvel::RvARFilterAttribute>();
    expectEveryChangeIsNamed<norvel::RvARFilterAttribute>(filterChanges);
}

TEST(RecordDifferencesTest, NameEveryFieldOfABeauty)
{
    expectEveryBeautyChangeIsNamed<norvel::RvARBeautyAttribute>();
}

TEST(RecordDifferencesTest, NameEveryFieldOfALabel)
{
    expectEveryBeautyChangeIsNamed<norvel::RvARLabelAttribute>();
}

TEST(RecordDifferencesTest, NameEveryFieldOfALiquify)
{
    expectEveryBeautyChangeIsNamed<norvel::RvARLiquifyAttribute>();
    expectEveryChangeIsNamed<norvel::RvARLiquifyAttribute>(liquifyChanges);
}

TEST(RecordDifferencesTest, NameEveryFieldOfAMakeup)
{
    expectEveryBeautyChangeIsNamed<norvel::RvARMakeupAttribute>();
    expectEveryChangeIsNamed<norvel::RvARMakeupAttribute>(makeupChanges);
}

TEST(RecordDifferencesTest, NameTheKindAndWhatBothKindsHave)
{
    auto beauty = filledRecord<norvel::RvARBeautyAttribute>();
    auto label = filledRecord<norvel::RvARLabelAttribute>();
    EXPECT_EQ(differences(beauty, label), Lines{"kind"});
    label.filterAlpha = 0.0F;
    EXPECT_EQ(differences(beauty, label), (Lines{"kind", "filterAlpha"}));
}

TEST(RecordDifferencesTest, NameAllFieldsThatDiffer)
{
    const auto stored = filledRecord<norvel::RvMediaAttribute>();
    auto live = stored;
    live.alpha = 1.0F;
    live.rotation = 0.0F;
    EXPECT_EQ(differences(stored, live), (Lines{"alpha", "rotation"}));
}

TEST(RecordDifferencesTest, LookAtMasksByTheirPictures)
{
    const auto stored = filledRecord<norvel::RvARBeautyAttribute>();
    auto live = stored;
    QImage other = stored.beautyActiveMaskImage.copy();
    live.beautyActiveMaskImageRef = &other;
    live.beautyActiveMaskImage = other;
    EXPECT_EQ(differences(stored, live), Lines{});
}

TEST(RecordDifferencesTest, LookIntoTheFoldersOfStrokes)
{
    const QTemporaryDir folder;
    auto stored = filledRecord<norvel::RvARLiquifyAttribute>();
    auto live = stored;
    const QString file = QStringLiteral("liquify-%1.dat").arg(stored.uuid);
    const auto strokes = [&](const char* name, const QByteArray& content) {
        const QString path = folder.filePath(name);
        QDir().mkpath(path);
        TestMedia::file(path, file, content);
        return path;
    };
    stored.effectPath = strokes("a", "one stroke");
    live.effectPath = strokes("b", "one stroke");
    EXPECT_EQ(differences(stored, live), Lines{});

    TestMedia::file(live.effectPath, file, "two stroke");
    EXPECT_EQ(differences(stored, live), Lines{"effectPath"});

    live.effectPath = strokes("c", "one stroke");
    TestMedia::file(live.effectPath, "liquify-1.dat", "strokes of another track");
    EXPECT_EQ(differences(stored, live), Lines{});

    stored.effectPath = folder.filePath("gone");
    live.effectPath = folder.filePath("gone as well");
    EXPECT_EQ(differences(stored, live), Lines{"effectPath"});
}

TEST(TimelineDifferencesTest, AreNoneBetweenEqualTimelines)
{
    EXPECT_EQ(differencesOf({}, {}, {}, {}), Lines{});
    EXPECT_EQ(differencesOf({1, 2}, {3, 4}, {1, 2}, {3, 4}), Lines{});
}

TEST(TimelineDifferencesTest, NameTheCanvasSize)
{
    const auto stored = timeline({1}, {2});
    for (const auto& [width, height] : {std::pair(1920.0F, 720.0F), std::pair(1280.0F, 1080.0F)}) {
        auto live = timeline({1}, {2});
        stored->width = 1920.0F;
        stored->height = 1080.0F;
        live->width = width;
        live->height = height;
        EXPECT_EQ(differences(*stored, *live), Lines{"canvas size"});
    }
}

TEST(TimelineDifferencesTest, NameTheTrackAndTheField)
{
    const auto stored = timeline({1, 2}, {3});
    const auto live = timeline({1, 2}, {3});
    live->mainAttribs[1]->alpha = 1.0F;
    live->mixAttribs[0]->auxText = "other";
    EXPECT_EQ(differences(*stored, *live),
              (Lines{"track 2 (type 3): alpha", "track 3 (type 3): auxText"}));
}

TEST(TimelineDifferencesTest, NameClipsAtAnotherPlace)
{
    EXPECT_EQ(differencesOf({1, 2, 3}, {}, {1, 3, 2}, {}),
              (Lines{"main line: group 1 is 3 and not 2", "main line: group 2 is 2 and not 3"}));
}

TEST(TimelineDifferencesTest, NameMissingAndFurtherClips)
{
    EXPECT_EQ(differencesOf({1, 2}, {}, {1}, {}), Lines{"main line: 2 groups stored, 1 live"});
    EXPECT_EQ(differencesOf({1}, {}, {1, 2}, {}), Lines{"main line: 1 groups stored, 2 live"});
}

TEST(TimelineDifferencesTest, LetMixTracksStandInAnyOrder)
{
    EXPECT_EQ(differencesOf({}, {1, 2, 3}, {}, {3, 1, 2}), Lines{});
}

TEST(TimelineDifferencesTest, NameMissingAndFurtherMixTracks)
{
    EXPECT_EQ(differencesOf({}, {1, 2}, {}, {2}), Lines{"track 1 (type 3) is missing"});
    EXPECT_EQ(differencesOf({}, {2}, {}, {2, 3}), Lines{"track 3 (type 3) is not described"});
    EXPECT_EQ(differencesOf({}, {1}, {}, {2}),
              (Lines{"track 1 (type 3) is missing", "track 2 (type 3) is not described"}));
}

TEST(TimelineDifferencesTest, NameAMixTrackThatIsThereTwice)
{
    EXPECT_EQ(differencesOf({}, {1, 2}, {}, {1, 2, 2}), Lines{"track 2 (type 3) is not described"});
    EXPECT_EQ(differencesOf({}, {1, 1}, {}, {1}), Lines{"track 1 (type 3) is missing"});
}
