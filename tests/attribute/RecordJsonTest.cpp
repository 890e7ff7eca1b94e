// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleRecords.h"

#include "support/ScopedCommaLocale.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QStringList>
#include <QTemporaryDir>

#include <cstring>
#include <memory>
#include <string>

using namespace norvel;

namespace {

QJsonObject parsed(const RvAttribute& record)
{
    const std::string text = record.serialization();
    QJsonParseError error;
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray(text.data(), static_cast<int>(text.size())), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << text;
    return document.object();
}

QJsonValue member(const RvAttribute& record, const char* key)
{
    return parsed(record).value(QLatin1String(key));
}

/// The keys of a record in the order in which the text has them.
template <class Kind>
std::string keysOf()
{
    return parsed(Kind()).keys().join(QLatin1Char(' ')).toStdString();
}

bool holds(const RvAttribute& record, const std::string& part)
{
    return record.serialization().find(part) != std::string::npos;
}

template <class Kind>
class RecordJsonOfKindTest : public ::testing::Test
{
};
TYPED_TEST_SUITE(RecordJsonOfKindTest, EveryKind);

} // namespace

TEST(RecordJsonTest, KeysOfEveryKind)
{
    EXPECT_EQ(keysOf<RvAttribute>(), "alpha duration source speed startTime type uuid zOrder");
    EXPECT_EQ(keysOf<RvMediaAttribute>(),
              "alpha duration fileStartTime height positionX positionY rotation scale source speed "
              "startTime type uuid width zOrder");
    EXPECT_EQ(keysOf<RvAudioAttribute>(),
              "alpha duration fileStartTime source speed startTime type uuid zOrder");
    EXPECT_EQ(keysOf<RvDetectAttribute>(),
              "alpha bindType duration mode modePath range source speed startTime target type uuid "
              "zOrder");
    EXPECT_EQ(keysOf<RvEffectAttribute>(),
              "alpha bindType detect duration range source speed startTime target type uuid "
              "zOrder");
    EXPECT_EQ(keysOf<RvMatteAttribute>(),
              "alpha bindType duration range source speed startTime target type uuid zOrder");
    const char* ar = "alpha bindType detect duration globalParamConfiguration range scriptParams "
                     "source speed startTime target type uuid zOrder";
    EXPECT_EQ(keysOf<RvARAttribute>(), ar);
    EXPECT_EQ(keysOf<RvARLayerAttribute>(), ar);
    EXPECT_EQ(keysOf<RvARFilterAttribute>(),
              "alpha bindType detect duration faceFloatParams filterAlpha floatParams "
              "globalParamConfiguration range scriptParams source speed startTime target type uuid "
              "zOrder");
    const char* beauty = "alpha beautyType bindType detect duration faceFloatParams filterAlpha "
                         "floatParams globalParamConfiguration range scriptParams source speed "
                         "startTime target type uuid zOrder";
    EXPECT_EQ(keysOf<RvARBeautyAttribute>(), beauty);
    EXPECT_EQ(keysOf<RvARFrameAttribute>(), beauty);
    EXPECT_EQ(keysOf<RvARLabelAttribute>(), beauty);
    EXPECT_EQ(keysOf<RvARLiquifyAttribute>(),
              "alpha beautyType bindType detect duration effectPath faceFloatParams filterAlpha "
              "floatParams globalParamConfiguration option range scriptParams source speed "
              "startTime target type uuid zOrder");
    EXPECT_EQ(keysOf<RvARMakeupAttribute>(),
              "alpha beautyType bindType detect duration faceFloatParams filterAlpha floatParams "
              "globalParamConfiguration groupDatas groupFaceDatas groupOrders range scriptParams "
              "source speed startTime suitAlpha target type uuid zOrder");
}

TEST(RecordJsonTest, DefaultRootIsEightKeys)
{
    RvAttribute record;
    record.uuid = 42;

    EXPECT_EQ(record.serialization(), R"({
    "alpha": 1,
    "duration": "0",
    "source": "",
    "speed": 1,
    "startTime": "0",
    "type": 1,
    "uuid": "42",
    "zOrder": 0
}
)");
}

TEST(RecordJsonTest, TextOfARoot)
{
    EXPECT_EQ(filledRecord<RvAttribute>().serialization(), R"({
    "alpha": 0.30000001192092896,
    "duration": "40000",
    "source": "/media/clip.mp4",
    "speed": 1.5,
    "startTime": "-2500",
    "type": 3,
    "uuid": "18446744073709551615",
    "zOrder": -7
}
)");
}

TEST(RecordJsonTest, TextOfAMedia)
{
    EXPECT_EQ(filledRecord<RvMediaAttribute>().serialization(), R"({
    "alpha": 0.30000001192092896,
    "duration": "40000",
    "fileStartTime": "1.5",
    "height": 1080,
    "positionX": 960.5,
    "positionY": -540.25,
    "rotation": 90,
    "scale": 0.10000000149011612,
    "source": "/media/clip.mp4",
    "speed": 1.5,
    "startTime": "-2500",
    "type": 3,
    "uuid": "18446744073709551615",
    "width": 1920,
    "zOrder": -7
}
)");
}

TEST(RecordJsonTest, TextOfAnAudio)
{
    EXPECT_EQ(filledRecord<RvAudioAttribute>().serialization(), R"({
    "alpha": 0.30000001192092896,
    "duration": "40000",
    "fileStartTime": "1e+06",
    "source": "/media/clip.mp4",
    "speed": 1.5,
    "startTime": "-2500",
    "type": 3,
    "uuid": "18446744073709551615",
    "zOrder": -7
}
)");
}

TEST(RecordJsonTest, TextOfADetect)
{
    EXPECT_EQ(filledRecord<RvDetectAttribute>().serialization(), R"({
    "alpha": 0.30000001192092896,
    "bindType": 2,
    "duration": "40000",
    "mode": 4,
    "modePath": "/models/face",
    "range": 1,
    "source": "/media/clip.mp4",
    "speed": 1.5,
    "startTime": "-2500",
    "target": [
        "12",
        "18446744073709551615"
    ],
    "type": 3,
    "uuid": "18446744073709551615",
    "zOrder": -7
}
)");
}

TEST(RecordJsonTest, TextOfAnEffect)
{
    EXPECT_EQ(filledRecord<RvEffectAttribute>().serialization(), R"({
    "alpha": 0.30000001192092896,
    "bindType": 2,
    "detect": "18446744073709551614",
    "duration": "40000",
    "range": 1,
    "source": "/media/clip.mp4",
    "speed": 1.5,
    "startTime": "-2500",
    "target": [
        "12",
        "11"
    ],
    "type": 3,
    "uuid": "18446744073709551615",
    "zOrder": -7
}
)");
}

TEST(RecordJsonTest, TextOfAMatte)
{
    EXPECT_EQ(filledRecord<RvMatteAttribute>().serialization(), R"({
    "alpha": 0.30000001192092896,
    "bindType": 2,
    "duration": "40000",
    "range": 1,
    "source": "/media/clip.mp4",
    "speed": 1.5,
    "startTime": "-2500",
    "target": [
        "12",
        "11"
    ],
    "type": 3,
    "uuid": "18446744073709551615",
    "zOrder": -7
}
)");
}

TEST(RecordJsonTest, TextOfAnARAndALayer)
{
    const std::string text = R"({
    "alpha": 0.30000001192092896,
    "bindType": 2,
    "detect": "18446744073709551614",
    "duration": "40000",
    "globalParamConfiguration": "global",
    "range": 1,
    "scriptParams": {
        "colour": "red",
        "text": "hello"
    },
    "source": "/media/clip.mp4",
    "speed": 1.5,
    "startTime": "-2500",
    "target": [
        "12",
        "11"
    ],
    "type": 3,
    "uuid": "18446744073709551615",
    "zOrder": -7
}
)";
    EXPECT_EQ(filledRecord<RvARAttribute>().serialization(), text);
    EXPECT_EQ(filledRecord<RvARLayerAttribute>().serialization(), text);
}

TEST(RecordJsonTest, TextOfAFilter)
{
    EXPECT_EQ(filledRecord<RvARFilterAttribute>().serialization(), R"({
    "alpha": 0.30000001192092896,
    "bindType": 2,
    "detect": "18446744073709551614",
    "duration": "40000",
    "faceFloatParams": {
        "-1": {
        },
        "5": {
            "3": 0.5
        }
    },
    "filterAlpha": 0.75,
    "floatParams": {
        "10": 1,
        "2": 0.30000001192092896
    },
    "globalParamConfiguration": "global",
    "range": 1,
    "scriptParams": {
        "colour": "red",
        "text": "hello"
    },
    "source": "/media/clip.mp4",
    "speed": 1.5,
    "startTime": "-2500",
    "target": [
        "12",
        "11"
    ],
    "type": 3,
    "uuid": "18446744073709551615",
    "zOrder": -7
}
)");
}

TEST(RecordJsonTest, TextOfABeautyAFrameAndALabel)
{
    const std::string text = R"({
    "alpha": 0.30000001192092896,
    "beautyType": 2,
    "bindType": 2,
    "detect": "18446744073709551614",
    "duration": "40000",
    "faceFloatParams": {
        "-1": {
        },
        "5": {
            "3": 0.5
        }
    },
    "filterAlpha": 0.75,
    "floatParams": {
        "10": 1,
        "2": 0.30000001192092896
    },
    "globalParamConfiguration": "global",
    "range": 1,
    "scriptParams": {
        "colour": "red",
        "text": "hello"
    },
    "source": "/media/clip.mp4",
    "speed": 1.5,
    "startTime": "-2500",
    "target": [
        "12",
        "11"
    ],
    "type": 3,
    "uuid": "18446744073709551615",
    "zOrder": -7
}
)";
    EXPECT_EQ(filledRecord<RvARBeautyAttribute>().serialization(), text);
    EXPECT_EQ(filledRecord<RvARFrameAttribute>().serialization(), text);
    EXPECT_EQ(filledRecord<RvARLabelAttribute>().serialization(), text);
}

TEST(RecordJsonTest, TextOfALiquify)
{
    EXPECT_EQ(filledRecord<RvARLiquifyAttribute>().serialization(), R"({
    "alpha": 0.30000001192092896,
    "beautyType": 2,
    "bindType": 2,
    "detect": "18446744073709551614",
    "duration": "40000",
    "effectPath": "/cache/)"
                                                                    "\xe6\xb6\xb2"
                                                                    R"(",
    "faceFloatParams": {
        "-1": {
        },
        "5": {
            "3": 0.5
        }
    },
    "filterAlpha": 0.75,
    "floatParams": {
        "10": 1,
        "2": 0.30000001192092896
    },
    "globalParamConfiguration": "global",
    "option": {
        "centerX": 0.1,
        "centerY": 200.5,
        "liquifyStyle": 2,
        "move_pointsX0": 1.5,
        "move_pointsX1": -3.5,
        "move_pointsY0": 2.5,
        "move_pointsY1": 1e+300,
        "radius": 0.30000001192092896,
        "strength": 0.5
    },
    "range": 1,
    "scriptParams": {
        "colour": "red",
        "text": "hello"
    },
    "source": "/media/clip.mp4",
    "speed": 1.5,
    "startTime": "-2500",
    "target": [
        "12",
        "11"
    ],
    "type": 3,
    "uuid": "18446744073709551615",
    "zOrder": -7
}
)");
}

TEST(RecordJsonTest, TextOfAMakeup)
{
    EXPECT_EQ(filledRecord<RvARMakeupAttribute>().serialization(), R"({
    "alpha": 0.30000001192092896,
    "beautyType": 2,
    "bindType": 2,
    "detect": "18446744073709551614",
    "duration": "40000",
    "faceFloatParams": {
        "-1": {
        },
        "5": {
            "3": 0.5
        }
    },
    "filterAlpha": 0.75,
    "floatParams": {
        "10": 1,
        "2": 0.30000001192092896
    },
    "globalParamConfiguration": "global",
    "groupDatas": [
        {
            "groupAlpha": 0.5,
            "groupDataId": 7,
            "groupName": "lips"
        },
        {
            "groupAlpha": 0.10000000149011612,
            "groupDataId": 3,
            "groupName": "brows"
        }
    ],
    "groupFaceDatas": [
        {
            "faceId": 5,
            "suitAlpha": 0.5
        },
        {
            "faceId": -6,
            "suitAlpha": 0.10000000149011612
        }
    ],
    "groupOrders": [
        "lips",
        "brows"
    ],
    "range": 1,
    "scriptParams": {
        "colour": "red",
        "text": "hello"
    },
    "source": "/media/clip.mp4",
    "speed": 1.5,
    "startTime": "-2500",
    "suitAlpha": 0.30000001192092896,
    "target": [
        "12",
        "11"
    ],
    "type": 3,
    "uuid": "18446744073709551615",
    "zOrder": -7
}
)");
}

TYPED_TEST(RecordJsonOfKindTest, IsRepeatableThroughTheRoot)
{
    const auto record = filledRecord<TypeParam>();
    const RvAttribute& root = record;
    const std::string text = record.serialization();

    EXPECT_EQ(root.serialization(), text);
    EXPECT_EQ(filledRecord<TypeParam>().serialization(), text);
}

TYPED_TEST(RecordJsonOfKindTest, IsFilledOverWhatIsThere)
{
    const auto record = filledRecord<TypeParam>();
    QJsonObject json;
    json.insert(QStringLiteral("uuid"), 1);
    json.insert(QStringLiteral("host"), QStringLiteral("kept"));

    record.fillJson(json);

    EXPECT_EQ(json.take(QStringLiteral("host")), QStringLiteral("kept"));
    EXPECT_EQ(json, parsed(record));
}

TYPED_TEST(RecordJsonOfKindTest, NeverWritesTheTag)
{
    auto record = filledRecord<TypeParam>();
    const std::string text = record.serialization();
    record.auxText = "another tag";

    EXPECT_EQ(record.serialization(), text);
}

TEST(RecordJsonTest, IdentitiesAndTimesKeepAll64Bits)
{
    RvDetectAttribute record;
    record.uuid = 9'007'199'254'740'993U;
    record.startTime = std::numeric_limits<std::int64_t>::min();
    record.duration = std::numeric_limits<std::int64_t>::max();
    record.target = {0, 9'007'199'254'740'993U};

    const QJsonObject json = parsed(record);

    EXPECT_EQ(json["uuid"], QStringLiteral("9007199254740993"));
    EXPECT_EQ(json["startTime"], QStringLiteral("-9223372036854775808"));
    EXPECT_EQ(json["duration"], QStringLiteral("9223372036854775807"));
    EXPECT_EQ(json["target"][0], QStringLiteral("0"));
    EXPECT_EQ(json["target"][1], QStringLiteral("9007199254740993"));
}

TEST(RecordJsonTest, IntegersKeep32Bits)
{
    RvDetectAttribute record;
    record.type = std::numeric_limits<std::int32_t>::min();
    record.zOrder = std::numeric_limits<std::int32_t>::max();
    record.mode = -1;

    EXPECT_TRUE(holds(record, "\"type\": -2147483648,"));
    EXPECT_TRUE(holds(record, "\"zOrder\": 2147483647\n"));
    EXPECT_TRUE(holds(record, "\"mode\": -1,"));
}

TEST(RecordJsonTest, NumbersOf64BitsAreTheNearestDouble)
{
    RvARMakeupAttribute record;
    record.groupDatas = {makeupGroup(9'007'199'254'740'991, "exact"),
                         makeupGroup(9'007'199'254'740'993, "rounded"),
                         makeupGroup(std::numeric_limits<std::int64_t>::max(), "greatest")};
    record.groupFaceDatas = {makeupFace(-9'007'199'254'740'993, {})};

    EXPECT_TRUE(holds(record, "\"groupDataId\": 9007199254740991,"));
    EXPECT_TRUE(holds(record, "\"groupDataId\": 9007199254740992,"));
    EXPECT_TRUE(holds(record, "\"faceId\": -9007199254740992,"));
    EXPECT_FALSE(holds(record, "9223372036854775807"));
    EXPECT_EQ(member(record, "groupDatas")[2]["groupDataId"].toDouble(), 9223372036854775808.0);
}

TEST(RecordJsonTest, FileStartTimeHasSixSignificantDigits)
{
    const std::pair<float, const char*> cases[] = {
        {0.0F, "0"},
        {1.5F, "1.5"},
        {0.1F, "0.1"},
        {-2.25F, "-2.25"},
        {999'999.0F, "999999"},
        {1'000'000.0F, "1e+06"},
        {1'234'567.0F, "1.23457e+06"},
        {123.4567F, "123.457"},
        {0.0001F, "0.0001"},
        {0.00001F, "1e-05"},
        {quietNan, "nan"},
        {infinite, "inf"},
    };
    for (const auto& [time, text] : cases) {
        RvMediaAttribute media;
        RvAudioAttribute audio;
        media.fileStartTime = time;
        audio.fileStartTime = time;
        EXPECT_EQ(member(media, "fileStartTime"), QLatin1String(text)) << time;
        EXPECT_EQ(member(audio, "fileStartTime"), QLatin1String(text)) << time;
    }
}

TEST(RecordJsonTest, NumbersThatAreNotFiniteAreNull)
{
    RvARLiquifyAttribute record;
    record.alpha = quietNan;
    record.speed = infinite;
    record.filterAlpha = -infinite;
    record.floatParams = {{flag(1), quietNan}};
    record.centerX = std::numeric_limits<double>::quiet_NaN();
    record.movePoints[1].setY(std::numeric_limits<double>::infinity());

    EXPECT_TRUE(holds(record, "\"alpha\": null,"));
    EXPECT_TRUE(holds(record, "\"speed\": null,"));
    EXPECT_TRUE(holds(record, "\"filterAlpha\": null,"));
    EXPECT_TRUE(holds(record, "\"1\": null\n"));
    EXPECT_TRUE(holds(record, "\"centerX\": null,"));
    EXPECT_TRUE(holds(record, "\"move_pointsY1\": null,"));
}

TEST(RecordJsonTest, ExtremeFloatsAreWidenedExactly)
{
    RvAttribute record;
    record.alpha = std::numeric_limits<float>::max();
    record.speed = std::numeric_limits<float>::denorm_min();

    const QJsonObject json = parsed(record);

    EXPECT_EQ(json["alpha"].toDouble(), static_cast<double>(record.alpha));
    EXPECT_EQ(json["speed"].toDouble(), static_cast<double>(record.speed));
}

TEST(RecordJsonTest, EmptyContainersAreWrittenEmpty)
{
    EXPECT_TRUE(holds(RvDetectAttribute(), "\"target\": [\n    ],"));
    EXPECT_TRUE(holds(RvEffectAttribute(), "\"target\": [\n    ],"));
    EXPECT_TRUE(holds(RvMatteAttribute(), "\"target\": [\n    ],"));
    EXPECT_TRUE(holds(RvARAttribute(), "\"scriptParams\": {\n    },"));
    EXPECT_TRUE(holds(RvARFilterAttribute(), "\"floatParams\": {\n    },"));
    EXPECT_TRUE(holds(RvARFilterAttribute(), "\"faceFloatParams\": {\n    },"));
    EXPECT_TRUE(holds(RvARMakeupAttribute(), "\"groupDatas\": [\n    ],"));
    EXPECT_TRUE(holds(RvARMakeupAttribute(), "\"groupFaceDatas\": [\n    ],"));
    EXPECT_TRUE(holds(RvARMakeupAttribute(), "\"groupOrders\": [\n    ],"));
}

TEST(RecordJsonTest, MatteNeverWritesDetect)
{
    RvMatteAttribute matte;
    matte.uuid = 1; // what a new record gets may end like the detection
    matte.detect = 42;

    EXPECT_FALSE(holds(matte, "detect"));
    EXPECT_FALSE(holds(matte, "42\""));
    EXPECT_EQ(matte.detect, 42U);
}

TEST(RecordJsonTest, EffectAndARAlwaysWriteDetect)
{
    EXPECT_TRUE(holds(RvEffectAttribute(), "\"detect\": \"0\","));
    EXPECT_TRUE(holds(RvARAttribute(), "\"detect\": \"0\","));
    EXPECT_TRUE(holds(RvARLayerAttribute(), "\"detect\": \"0\","));
    EXPECT_TRUE(holds(RvARMakeupAttribute(), "\"detect\": \"0\","));
}

TEST(RecordJsonTest, ParametersGoByTheNumberOfTheirFlag)
{
    RvARFilterAttribute record;
    record.floatParams = {{qkpar::KpARParamSlimFace, 1.0F}, {flag(12345), 2.0F}, {flag(-1), 3.0F}};

    const QJsonObject params = member(record, "floatParams").toObject();

    EXPECT_EQ(params.size(), 3);
    EXPECT_EQ(params["6"], 1.0);
    EXPECT_EQ(params["12345"], 2.0);
    EXPECT_EQ(params["-1"], 3.0);
}

TEST(RecordJsonTest, FacesGoByTheirFull64BitId)
{
    RvARFilterAttribute record;
    record.faceFloatParams = {{9'007'199'254'740'993, {{flag(1), 0.5F}}}};

    EXPECT_EQ(member(record, "faceFloatParams")["9007199254740993"]["1"], 0.5);
}

TEST(RecordJsonTest, FilterNeverWritesFacePlists)
{
    RvARFilterAttribute record;
    record.arFacePlists = {{5, "/faces/5.plist"}};

    EXPECT_FALSE(holds(record, "plist"));
}

TEST(RecordJsonTest, MakeupNeverWritesGroupsOfFacesNorEntries)
{
    RvARMakeupAttribute record;
    record.groupDatas = {makeupGroup(1, "seen")};
    record.groupFaceDatas = {makeupFace(5, {makeupGroup(2, "unseen")})};

    EXPECT_TRUE(holds(record, "seen"));
    EXPECT_FALSE(holds(record, "unseen"));
    EXPECT_FALSE(holds(record, "texture"));
    EXPECT_FALSE(holds(record, "brows"));
}

TEST(RecordJsonTest, LiquifyWritesTheStrokeOnlyInsideOption)
{
    const QJsonObject json = parsed(RvARLiquifyAttribute());

    const QStringList keys = json["option"].toObject().keys();
    EXPECT_EQ(keys.join(QLatin1Char(' ')),
              QStringLiteral("centerX centerY liquifyStyle move_pointsX0 move_pointsX1 "
                             "move_pointsY0 move_pointsY1 radius strength"));
    for (const QString& key : keys)
        EXPECT_FALSE(json.contains(key)) << key.toStdString();
    EXPECT_TRUE(json.contains(QStringLiteral("effectPath")));
}

TEST(RecordJsonTest, MembersAscendByKey)
{
    RvARAttribute record;
    record.scriptParams = {{"b", "1"}, {"a", "2"}, {"B", "3"}, {"10", "4"},
                           {"2", "5"}, {"", "6"},  {"aa", "7"}};

    EXPECT_TRUE(holds(record, R"(    "scriptParams": {
        "": "6",
        "10": "4",
        "2": "5",
        "B": "3",
        "a": "2",
        "aa": "7",
        "b": "1"
    },
)")) << record.serialization();
}

TEST(RecordJsonTest, TextIsUtf8)
{
    RvAttribute record;
    record.source = "C:\\\xe8\xa7\x86\xe9\xa2\x91\\\"\xf0\x9f\x8e\xac\".mp4";

    EXPECT_TRUE(holds(record, "\"source\": \"C:\\\\\xe8\xa7\x86\xe9\xa2\x91\\\\\\\"\xf0\x9f\x8e\xac"
                              "\\\".mp4\","))
        << record.serialization();
}

TEST(RecordJsonTest, TextMayBeginWithAByteOrderMark)
{
    const std::string marked = "\xef\xbb\xbf\xef\xbb\xbfmarked";
    RvDetectAttribute detect;
    detect.source = "\xef\xbb\xbf";
    detect.modePath = marked;
    EXPECT_TRUE(holds(detect, "\"source\": \"\xef\xbb\xbf\","));
    EXPECT_TRUE(holds(detect, "\"modePath\": \"" + marked + "\","));

    RvARMakeupAttribute makeup;
    makeup.globalParamConfiguration = marked;
    makeup.scriptParams = {{"marked", "1"}, {marked, marked}};
    makeup.groupDatas = {makeupGroup(1, marked)};
    makeup.groupOrders = {marked, "plain"};
    EXPECT_TRUE(holds(makeup, "\"globalParamConfiguration\": \"" + marked + "\","));
    EXPECT_TRUE(holds(makeup, "\"marked\": \"1\""));
    EXPECT_TRUE(holds(makeup, "\"" + marked + "\": \"" + marked + "\""));
    EXPECT_TRUE(holds(makeup, "\"groupName\": \"" + marked + "\""));
    EXPECT_TRUE(holds(makeup, "\"" + marked + "\",\n        \"plain\""));
}

TEST(RecordJsonTest, BytesThatAreNoUtf8AreReplaced)
{
    RvAttribute record;
    record.source = "a\xffz";

    EXPECT_TRUE(holds(record, "\"source\": \"a\xef\xbf\xbdz\","));
}

TEST(RecordJsonTest, NamesThatBecomeTheSameKeepTheLastValue)
{
    RvARAttribute record;
    record.scriptParams = {{"\xfe", "first"}, {"\xff", "last"}};

    EXPECT_TRUE(holds(record, "\"scriptParams\": {\n        \"\xef\xbf\xbd\": \"last\"\n    },"))
        << record.serialization();
}

TEST(RecordJsonTest, TextMayHoldNulAndControlCharacters)
{
    using namespace std::string_literals;
    RvAttribute record;
    record.source = "a\0b\n"s;

    EXPECT_TRUE(holds(record, "\"source\": \"a\\u0000b\\n\","));
}

TEST(RecordJsonTest, TextMayBeVeryLong)
{
    RvAttribute record;
    record.source = std::string(2'000'000, 'x') + "end";

    EXPECT_TRUE(holds(record, "\"" + record.source + "\","));
}

TEST(RecordJsonTest, LocaleOfTheHostDoesNotMatter)
{
    RvMediaAttribute record;
    record.fileStartTime = 1234.5F;
    record.width = 1234.5F;
    record.startTime = 1'234'567;
    const std::string text = record.serialization();
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    ASSERT_EQ(QLocale().decimalPoint(), QLatin1Char(','));

    const std::string german = record.serialization();

    QLocale::setDefault(before);
    EXPECT_EQ(german, text);
    EXPECT_NE(text.find("\"1234.5\""), std::string::npos);
    EXPECT_NE(text.find(" 1234.5,"), std::string::npos);
}

TEST(RecordJsonTest, DecimalCommaOfTheCLibraryDoesNotMatter)
{
    RvMediaAttribute record;
    record.fileStartTime = 1234.5F;
    record.width = 1234.5F;
    const std::string text = record.serialization();
    const QTemporaryDir folder;
    const ScopedCommaLocale comma(folder.path());

    EXPECT_EQ(record.serialization(), text);
}
