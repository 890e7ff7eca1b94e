// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleRecords.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <typeinfo>

using namespace norvel;

namespace {

/// A change of one field of a filled record.
template <class Kind>
struct Change
{
    std::string field;
    std::function<void(Kind&)> apply;
};

template <class Kind>
using Changes = std::vector<Change<Kind>>;

/// The changes of a parent followed by those of the kind itself.
template <class Kind, class Parent>
Changes<Kind> operator+(const Changes<Parent>& inherited, const Changes<Kind>& own)
{
    Changes<Kind> all;
    for (const Change<Parent>& change : inherited)
        all.push_back({change.field, change.apply});
    all.insert(all.end(), own.begin(), own.end());
    return all;
}

template <class Kind>
struct Fields;

template <>
struct Fields<RvAttribute>
{
    static Changes<RvAttribute> compared()
    {
        return {
            {"source", [](RvAttribute& r) { r.source = "/media/clip.mp5"; }},
            {"source length", [](RvAttribute& r) { r.source += 'x'; }},
            {"startTime", [](RvAttribute& r) { r.startTime += 1LL << 32; }},
            {"duration", [](RvAttribute& r) { r.duration += 1LL << 32; }},
            {"type", [](RvAttribute& r) { r.type = 2; }},
            {"zOrder", [](RvAttribute& r) { r.zOrder = 7; }},
            {"alpha", [](RvAttribute& r) { r.alpha = std::nextafter(r.alpha, 1.0F); }},
            {"alpha NaN", [](RvAttribute& r) { r.alpha = quietNan; }},
            {"speed", [](RvAttribute& r) { r.speed = std::nextafter(r.speed, 0.0F); }},
        };
    }
    static Changes<RvAttribute> passedOver()
    {
        return {
            {"auxText", [](RvAttribute& r) { r.auxText = "another tag"; }},
        };
    }
};

template <>
struct Fields<RvMediaAttribute>
{
    static Changes<RvMediaAttribute> compared()
    {
        return Fields<RvAttribute>::compared() +
               Changes<RvMediaAttribute>{
                   {"fileStartTime", [](RvMediaAttribute& r) { r.fileStartTime = 1.25F; }},
                   {"width", [](RvMediaAttribute& r) { r.width += 1.0F; }},
                   {"height", [](RvMediaAttribute& r) { r.height += 1.0F; }},
                   {"positionX", [](RvMediaAttribute& r) { r.positionX += 1.0F; }},
                   {"positionY", [](RvMediaAttribute& r) { r.positionY += 1.0F; }},
                   {"scale", [](RvMediaAttribute& r) { r.scale = std::nextafter(r.scale, 1.0F); }},
                   {"rotation", [](RvMediaAttribute& r) { r.rotation = -90.0F; }},
               };
    }
    static Changes<RvMediaAttribute> passedOver()
    {
        return Fields<RvAttribute>::passedOver() + Changes<RvMediaAttribute>{};
    }
};

template <>
struct Fields<RvAudioAttribute>
{
    static Changes<RvAudioAttribute> compared()
    {
        return Fields<RvAttribute>::compared() +
               Changes<RvAudioAttribute>{
                   {"fileStartTime", [](RvAudioAttribute& r) { r.fileStartTime += 1.0F; }},
               };
    }
    static Changes<RvAudioAttribute> passedOver()
    {
        return Fields<RvAttribute>::passedOver() + Changes<RvAudioAttribute>{};
    }
};

template <>
struct Fields<RvDetectAttribute>
{
    static Changes<RvDetectAttribute> compared()
    {
        using Record = RvDetectAttribute;
        return Fields<RvAttribute>::compared() +
               Changes<Record>{
                   {"mode", [](Record& r) { r.mode = 5; }},
                   {"modePath", [](Record& r) { r.modePath = "/models/hand"; }},
                   {"range", [](Record& r) { r.range = 2; }},
                   {"bindType", [](Record& r) { r.bindType = 1; }},
                   {"target count", [](Record& r) { r.target.pop_back(); }},
                   {"target uuid", [](Record& r) { r.target[1] = 13; }},
                   {"target order", [](Record& r) { std::swap(r.target[0], r.target[1]); }},
               };
    }
    static Changes<RvDetectAttribute> passedOver()
    {
        return Fields<RvAttribute>::passedOver() + Changes<RvDetectAttribute>{};
    }
};

template <>
struct Fields<RvEffectAttribute>
{
    static Changes<RvEffectAttribute> compared()
    {
        using Record = RvEffectAttribute;
        return Fields<RvAttribute>::compared() +
               Changes<Record>{
                   {"range", [](Record& r) { r.range = 2; }},
                   {"bindType", [](Record& r) { r.bindType = 1; }},
                   {"target count", [](Record& r) { r.target.push_back(10); }},
                   {"target uuid", [](Record& r) { r.target[1] = 13; }},
                   {"target order", [](Record& r) { std::swap(r.target[0], r.target[1]); }},
                   {"detect", [](Record& r) { r.detect = 0; }},
               };
    }
    static Changes<RvEffectAttribute> passedOver()
    {
        return Fields<RvAttribute>::passedOver() + Changes<RvEffectAttribute>{};
    }
};

template <>
struct Fields<RvARAttribute>
{
    static Changes<RvARAttribute> compared()
    {
        using Record = RvARAttribute;
        return Fields<RvEffectAttribute>::compared() +
               Changes<Record>{
                   {"scriptParams size", [](Record& r) { r.scriptParams.erase("text"); }},
                   {"scriptParams value", [](Record& r) { r.scriptParams["text"] = "hallo"; }},
                   {"scriptParams key",
                    [](Record& r) {
                        r.scriptParams.erase("text");
                        r.scriptParams["texts"] = "hello";
                    }},
                   {"globalParamConfiguration",
                    [](Record& r) { r.globalParamConfiguration.clear(); }},
               };
    }
    static Changes<RvARAttribute> passedOver()
    {
        return Fields<RvEffectAttribute>::passedOver() + Changes<RvARAttribute>{};
    }
};

template <>
struct Fields<RvARFilterAttribute>
{
    static Changes<RvARFilterAttribute> compared()
    {
        using Record = RvARFilterAttribute;
        return Fields<RvARAttribute>::compared() +
               Changes<Record>{
                   {"filterAlpha", [](Record& r) { r.filterAlpha = 0.5F; }},
                   {"floatParams size", [](Record& r) { r.floatParams[flag(11)] = 0.0F; }},
                   {"floatParams value", [](Record& r) { r.floatParams[flag(10)] = 0.5F; }},
                   {"floatParams NaN", [](Record& r) { r.floatParams[flag(10)] = quietNan; }},
                   {"floatParams key",
                    [](Record& r) {
                        r.floatParams.erase(flag(10));
                        r.floatParams[flag(11)] = 1.0F;
                    }},
                   {"faceFloatParams size", [](Record& r) { r.faceFloatParams.erase(-1); }},
                   {"faceFloatParams face",
                    [](Record& r) {
                        r.faceFloatParams.erase(-1);
                        r.faceFloatParams[-2] = {};
                    }},
                   {"faceFloatParams value",
                    [](Record& r) { r.faceFloatParams[5][flag(3)] = 0.25F; }},
                   {"faceFloatParams inner size",
                    [](Record& r) { r.faceFloatParams[-1][flag(3)] = 0.0F; }},
               };
    }
    static Changes<RvARFilterAttribute> passedOver()
    {
        using Record = RvARFilterAttribute;
        return Fields<RvARAttribute>::passedOver() +
               Changes<Record>{
                   {"arFacePlists", [](Record& r) { r.arFacePlists[5] = "/faces/6.plist"; }},
                   {"arFacePlists size", [](Record& r) { r.arFacePlists.clear(); }},
               };
    }
};

template <>
struct Fields<RvARBeautyAttribute>
{
    static Changes<RvARBeautyAttribute> compared()
    {
        using Record = RvARBeautyAttribute;
        return Fields<RvARFilterAttribute>::compared() +
               Changes<Record>{
                   {"beautyType", [](Record& r) { r.beautyType = qkpar::RvBeautyTypeBeauty; }},
                   {"enableBeautyGenderDistinction",
                    [](Record& r) { r.enableBeautyGenderDistinction = false; }},
                   {"coeffientParameterConfig",
                    [](Record& r) { r.coeffientParameterConfig = "Coefficients"; }},
                   {"genderParamCoeffientsA",
                    [](Record& r) { r.genderParamCoeffientsA[flag(1)] = 0.5F; }},
                   {"genderParamCoeffientsA size",
                    [](Record& r) { r.genderParamCoeffientsA.clear(); }},
                   {"genderParamCoeffientsB",
                    [](Record& r) { r.genderParamCoeffientsB[flag(1)] = 0.25F; }},
                   {"genderParamCoeffientsB size",
                    [](Record& r) { r.genderParamCoeffientsB.clear(); }},
                   {"genderParamCoeffients swapped",
                    [](Record& r) { r.genderParamCoeffientsA.swap(r.genderParamCoeffientsB); }},
                   {"applyGenderToAR", [](Record& r) { r.applyGenderToAR = false; }},
                   {"allFaceBeautyParam",
                    [](Record& r) { r.allFaceBeautyParam[5][flag(4)] = 0.25F; }},
                   {"allFaceBeautyParam face", [](Record& r) { r.allFaceBeautyParam[6] = {}; }},
                   {"allBeautyAnattaForFaceControls",
                    [](Record& r) { r.allBeautyAnattaForFaceControls[flag(6)] = false; }},
                   {"allBeautyAnattaForFaceControls size",
                    [](Record& r) { r.allBeautyAnattaForFaceControls[flag(7)] = false; }},
                   {"manualLongLegEnable", [](Record& r) { r.manualLongLegEnable = false; }},
                   {"manualLongLegRange first",
                    [](Record& r) { r.manualLongLegRange.first = 0.0F; }},
                   {"manualLongLegRange second",
                    [](Record& r) {
                        r.manualLongLegRange.second =
                            std::nextafter(r.manualLongLegRange.second, 1.0F);
                    }},
                   {"manualSlimHeadParam 0",
                    [](Record& r) { std::get<0>(r.manualSlimHeadParam) = 0.0F; }},
                   {"manualSlimHeadParam 1",
                    [](Record& r) { std::get<1>(r.manualSlimHeadParam) = quietNan; }},
                   {"manualSlimHeadParam 2",
                    [](Record& r) { std::get<2>(r.manualSlimHeadParam) = 0.0F; }},
                   {"mapPointsData count", [](Record& r) { r.mapPointsData.pop_back(); }},
                   {"mapPointsData x", [](Record& r) { r.mapPointsData[1].setX(3.001); }},
                   {"mapPointsData y", [](Record& r) { r.mapPointsData[0].setY(2.001); }},
                   {"beautyMaskFaceId", [](Record& r) { r.beautyMaskFaceId += 1LL << 32; }},
                   {"beautyMaskBrushType", [](Record& r) { r.beautyMaskBrushType = "square"; }},
                   {"beautyActiveMaskImageRef",
                    [](Record& r) { r.beautyActiveMaskImageRef = &r.beautyActiveMaskImage; }},
                   {"beautyActiveMaskImageRef null",
                    [](Record& r) { r.beautyActiveMaskImageRef = nullptr; }},
               };
    }
    static Changes<RvARBeautyAttribute> passedOver()
    {
        using Record = RvARBeautyAttribute;
        return Fields<RvARFilterAttribute>::passedOver() +
               Changes<Record>{
                   {"beautyActiveMaskImage",
                    [](Record& r) { r.beautyActiveMaskImage.fill(0xffffffffU); }},
                   {"beautyActiveMaskImage null",
                    [](Record& r) { r.beautyActiveMaskImage = QImage(); }},
                   {"mapPointsData within the tolerance",
                    [](Record& r) { r.mapPointsData[0].setX(1.0 + 5e-13); }},
               };
    }
};

template <>
struct Fields<RvARMakeupAttribute>
{
    static Changes<RvARMakeupAttribute> compared()
    {
        using Record = RvARMakeupAttribute;
        return Fields<RvARBeautyAttribute>::compared() +
               Changes<Record>{
                   {"suitAlpha", [](Record& r) { r.suitAlpha = 0.5F; }},
                   {"suitAlpha NaN", [](Record& r) { r.suitAlpha = quietNan; }},
                   {"groupDatas count", [](Record& r) { r.groupDatas.pop_back(); }},
                   {"groupDatas id", [](Record& r) { r.groupDatas[1].groupDataId = 4; }},
                   {"groupDatas name", [](Record& r) { r.groupDatas[0].groupName = "lip"; }},
                   {"groupDatas alpha", [](Record& r) { r.groupDatas[1].groupAlpha = 0.2F; }},
                   {"groupDatas entries", [](Record& r) { r.groupDatas[0].entries.clear(); }},
                   {"groupDatas order",
                    [](Record& r) { std::swap(r.groupDatas[0], r.groupDatas[1]); }},
                   {"groupFaceDatas count", [](Record& r) { r.groupFaceDatas.pop_back(); }},
                   {"groupFaceDatas group",
                    [](Record& r) { r.groupFaceDatas[0].groupDatas[0].groupDataId = 8; }},
               };
    }
    static Changes<RvARMakeupAttribute> passedOver()
    {
        using Record = RvARMakeupAttribute;
        return Fields<RvARBeautyAttribute>::passedOver() +
               Changes<Record>{
                   {"groupOrders",
                    [](Record& r) {
                        r.groupOrders = {"brows", "lips"};
                    }},
                   {"groupOrders size", [](Record& r) { r.groupOrders.clear(); }},
                   {"groupOrders of a face",
                    [](Record& r) { r.groupFaceDatas[0].groupOrders.clear(); }},
               };
    }
};

/// Kinds that compare what their parent compares.
template <class Kind, class Parent>
struct FieldsOfParent
{
    static Changes<Kind> compared() { return Fields<Parent>::compared() + Changes<Kind>{}; }
    static Changes<Kind> passedOver() { return Fields<Parent>::passedOver() + Changes<Kind>{}; }
};

template <>
struct Fields<RvMatteAttribute> : FieldsOfParent<RvMatteAttribute, RvEffectAttribute>
{
};
template <>
struct Fields<RvARLayerAttribute> : FieldsOfParent<RvARLayerAttribute, RvARAttribute>
{
};
template <>
struct Fields<RvARFrameAttribute> : FieldsOfParent<RvARFrameAttribute, RvARBeautyAttribute>
{
};
template <>
struct Fields<RvARLabelAttribute> : FieldsOfParent<RvARLabelAttribute, RvARBeautyAttribute>
{
};

template <class Kind>
class RecordCompareOfKindTest : public ::testing::Test
{
};

/// All but liquify, which is never the same and has tests of its own.
using ComparingKinds =
    ::testing::Types<RvAttribute, RvMediaAttribute, RvAudioAttribute, RvDetectAttribute,
                     RvEffectAttribute, RvMatteAttribute, RvARAttribute, RvARLayerAttribute,
                     RvARFilterAttribute, RvARBeautyAttribute, RvARFrameAttribute,
                     RvARLabelAttribute, RvARMakeupAttribute>;
TYPED_TEST_SUITE(RecordCompareOfKindTest, ComparingKinds);

template <class Kind>
class RecordCompareOfEveryKindTest : public ::testing::Test
{
};
TYPED_TEST_SUITE(RecordCompareOfEveryKindTest, EveryKind);

struct NamedRecord
{
    std::string kind;
    std::unique_ptr<RvAttribute> record;
    std::set<std::string> comparesWith; ///< empty for every kind
};

template <class Kind>
NamedRecord named(const char* kind, std::set<std::string> comparesWith)
{
    auto record = std::make_unique<Kind>();
    record->uuid = 42;
    return {kind, std::move(record), std::move(comparesWith)};
}

std::vector<NamedRecord> oneOfEachKind()
{
    const std::set<std::string> ar = {"ar",    "layer", "filter",  "beauty",
                                      "frame", "label", "liquify", "makeup"};
    const std::set<std::string> beauty = {"beauty", "frame", "label", "liquify", "makeup"};
    std::vector<NamedRecord> records;
    records.push_back(named<RvAttribute>("root", {}));
    records.push_back(named<RvMediaAttribute>("media", {"media"}));
    records.push_back(named<RvAudioAttribute>("audio", {"audio"}));
    records.push_back(named<RvDetectAttribute>("detect", {"detect"}));
    records.push_back(
        named<RvEffectAttribute>("effect", {"effect", "matte", "ar", "layer", "filter", "beauty",
                                            "frame", "label", "liquify", "makeup"}));
    records.push_back(named<RvMatteAttribute>("matte", {"matte"}));
    records.push_back(named<RvARAttribute>("ar", ar));
    records.push_back(named<RvARLayerAttribute>("layer", ar));
    records.push_back(named<RvARFilterAttribute>(
        "filter", {"filter", "beauty", "frame", "label", "liquify", "makeup"}));
    records.push_back(named<RvARBeautyAttribute>("beauty", beauty));
    records.push_back(named<RvARFrameAttribute>("frame", beauty));
    records.push_back(named<RvARLabelAttribute>("label", beauty));
    records.push_back(named<RvARLiquifyAttribute>("liquify", {"liquify"}));
    records.push_back(named<RvARMakeupAttribute>("makeup", {"makeup"}));
    return records;
}

} // namespace

TYPED_TEST(RecordCompareOfKindTest, CopyIsTheSame)
{
    auto record = filledRecord<TypeParam>();
    TypeParam copy(record);

    EXPECT_EQ(record.compare(&copy), ReturnSame);
    EXPECT_EQ(copy.compare(&record), ReturnSame);
    EXPECT_EQ(record.compare(&record), ReturnSame);
}

TYPED_TEST(RecordCompareOfKindTest, DefaultsOfTheSameIdentityAreTheSame)
{
    TypeParam first;
    TypeParam second;
    first.uuid = 42;
    second.uuid = 42;

    EXPECT_EQ(first.compare(&second), ReturnSame);
}

TYPED_TEST(RecordCompareOfKindTest, EveryComparedFieldAloneIsAChange)
{
    for (const Change<TypeParam>& change : Fields<TypeParam>::compared()) {
        auto record = filledRecord<TypeParam>();
        TypeParam other(record);
        change.apply(other);

        EXPECT_EQ(record.compare(&other), ReturnChanged) << change.field;
        EXPECT_EQ(other.compare(&record), ReturnChanged) << change.field;
    }
}

TYPED_TEST(RecordCompareOfKindTest, FieldsThatAreNotComparedAreNoChange)
{
    for (const Change<TypeParam>& change : Fields<TypeParam>::passedOver()) {
        auto record = filledRecord<TypeParam>();
        TypeParam other(record);
        change.apply(other);

        EXPECT_EQ(record.compare(&other), ReturnSame) << change.field;
        EXPECT_EQ(other.compare(&record), ReturnSame) << change.field;
    }
}

TYPED_TEST(RecordCompareOfKindTest, AnotherIdentityIsAnotherRecordWhateverTheFields)
{
    for (const Change<TypeParam>& change : Fields<TypeParam>::compared()) {
        const auto record = filledRecord<TypeParam>();
        TypeParam other(record);
        other.uuid = 1;
        EXPECT_EQ(record.compare(&other), ReturnOtherRecord);

        change.apply(other);

        EXPECT_EQ(record.compare(&other), ReturnOtherRecord) << change.field;
    }
}

TYPED_TEST(RecordCompareOfEveryKindTest, NoRecordIsInvalid)
{
    EXPECT_EQ(filledRecord<TypeParam>().compare(nullptr), ReturnInvalid);
}

TYPED_TEST(RecordCompareOfEveryKindTest, IdentityIsComparedInAll64Bits)
{
    const auto record = filledRecord<TypeParam>();
    TypeParam other(record);
    other.uuid = record.uuid & 0xffffffffU;

    EXPECT_EQ(record.compare(&other), ReturnOtherRecord);
}

TYPED_TEST(RecordCompareOfEveryKindTest, LeavesBothRecordsAsTheyAre)
{
    auto record = filledRecord<TypeParam>();
    TypeParam other(record);
    other.zOrder = 99;
    const std::string recordText = record.serialization();
    const std::string otherText = other.serialization();

    record.compare(&other);

    EXPECT_EQ(record.serialization(), recordText);
    EXPECT_EQ(other.serialization(), otherText);
}

TYPED_TEST(RecordCompareOfEveryKindTest, NanIsAChangeEvenOfTheRecordItself)
{
    auto record = filledRecord<TypeParam>();
    record.speed = quietNan;

    EXPECT_EQ(record.compare(&record), ReturnChanged);
}

TEST(RecordCompareTest, NegativeZeroEqualsZero)
{
    RvARMakeupAttribute record;
    RvARMakeupAttribute other(record);
    record.alpha = 0.0F;
    record.floatParams = {{flag(1), 0.0F}};
    record.groupDatas = {makeupGroup(1, "a", 0.0F)};
    other.alpha = -0.0F;
    other.floatParams = {{flag(1), -0.0F}};
    other.manualLongLegRange.first = -0.0F;
    std::get<2>(other.manualSlimHeadParam) = -0.0F;
    other.suitAlpha = -0.0F;
    other.groupDatas = {makeupGroup(1, "a", -0.0F)};

    EXPECT_EQ(record.compare(&other), ReturnSame);
}

TEST(RecordCompareTest, NanInsideParametersIsAChange)
{
    RvARFilterAttribute record;
    record.faceFloatParams = {{1, {{flag(1), quietNan}}}};
    RvARFilterAttribute copy(record);

    EXPECT_EQ(record.compare(&copy), ReturnChanged);
}

TEST(RecordCompareTest, TextIsComparedByItsBytes)
{
    using namespace std::string_literals;
    RvAttribute record;
    RvAttribute other(record);
    const auto compared = [&](const std::string& a, const std::string& b) {
        record.source = a;
        other.source = b;
        return record.compare(&other);
    };

    EXPECT_EQ(compared("a\0b"s, "a\0b"s), ReturnSame);
    EXPECT_EQ(compared("a\0b"s, "a\0c"s), ReturnChanged);
    EXPECT_EQ(compared("a"s, "a\0"s), ReturnChanged);
    EXPECT_EQ(compared("\xff"s, "\xff"s), ReturnSame);
    EXPECT_EQ(compared("\xff"s, "\xfe"s), ReturnChanged);
    EXPECT_EQ(compared("\xc3\xa9"s, "e\xcc\x81"s), ReturnChanged);
    const std::string text(2'000'000, 'x');
    EXPECT_EQ(compared(text, text), ReturnSame);
    EXPECT_EQ(compared(text + 'a', text + 'b'), ReturnChanged);
}

TEST(RecordCompareTest, MatteComparesTheDetectionThatItDoesNotWrite)
{
    auto matte = filledRecord<RvMatteAttribute>();
    RvMatteAttribute copy(matte);
    copy.detect = 1;

    EXPECT_EQ(copy.serialization(), matte.serialization());
    EXPECT_EQ(matte.compare(&copy), ReturnChanged);
}

TEST(RecordCompareTest, MaskIsComparedByItsPointer)
{
    RvARBeautyAttribute record;
    record.beautyActiveMaskImage = QImage(2, 2, QImage::Format_ARGB32);
    record.beautyActiveMaskImage.fill(0xff000000U);
    record.beautyActiveMaskImageRef = &record.beautyActiveMaskImage;
    RvARBeautyAttribute copy(record);
    EXPECT_EQ(record.compare(&copy), ReturnSame);

    copy.beautyActiveMaskImageRef = &copy.beautyActiveMaskImage;

    ASSERT_EQ(copy.beautyActiveMaskImage, record.beautyActiveMaskImage);
    EXPECT_EQ(record.compare(&copy), ReturnChanged);
}

TEST(RecordCompareTest, ThrowsForUnrelatedKindsOnly)
{
    const std::vector<NamedRecord> records = oneOfEachKind();
    for (const NamedRecord& one : records) {
        for (const NamedRecord& other : records) {
            const bool related =
                one.comparesWith.empty() || one.comparesWith.count(other.kind) != 0;
            if (related)
                EXPECT_NO_THROW(one.record->compare(other.record.get()))
                    << one.kind << " with " << other.kind;
            else
                EXPECT_THROW(one.record->compare(other.record.get()), std::bad_cast)
                    << one.kind << " with " << other.kind;
        }
    }
}

TEST(RecordCompareTest, ThrowsForUnrelatedKindsOfAnotherIdentityToo)
{
    RvMediaAttribute media;
    RvAudioAttribute audio;
    media.uuid = 1;
    audio.uuid = 2;

    EXPECT_THROW(media.compare(&audio), std::bad_cast);
}

TEST(RecordCompareTest, ThrowingLeavesBothRecordsAsTheyAre)
{
    auto media = filledRecord<RvMediaAttribute>();
    auto makeup = filledRecord<RvARMakeupAttribute>();
    const std::string mediaText = media.serialization();
    const std::string makeupText = makeup.serialization();
    RvMediaAttribute mediaCopy(media);
    RvARMakeupAttribute makeupCopy(makeup);

    EXPECT_THROW(media.compare(&makeup), std::bad_cast);
    EXPECT_THROW(makeup.compare(&media), std::bad_cast);

    EXPECT_EQ(media.serialization(), mediaText);
    EXPECT_EQ(makeup.serialization(), makeupText);
    EXPECT_EQ(media.compare(&mediaCopy), ReturnSame);
    EXPECT_EQ(makeup.compare(&makeupCopy), ReturnSame);
}

TEST(RecordCompareTest, BeautyComparesItsPartOfAMakeup)
{
    RvARBeautyAttribute beauty;
    RvARMakeupAttribute makeup;
    beauty.uuid = makeup.uuid = 42;
    EXPECT_EQ(beauty.compare(&makeup), ReturnChanged); // the beauty types differ

    makeup.beautyType = beauty.beautyType;
    makeup.groupOrders = {"lips"};
    makeup.suitAlpha = 1.0F;

    EXPECT_EQ(beauty.compare(&makeup), ReturnSame);
    EXPECT_THROW(makeup.compare(&beauty), std::bad_cast);
}

TEST(RecordCompareTest, RootComparesItsPartOfEveryKind)
{
    auto media = filledRecord<RvMediaAttribute>();
    auto root = filledRecord<RvAttribute>();
    EXPECT_EQ(root.compare(&media), ReturnSame);

    media.zOrder = 1;
    EXPECT_EQ(root.compare(&media), ReturnChanged);

    media.uuid = 1;
    EXPECT_EQ(root.compare(&media), ReturnOtherRecord);
}

TEST(RecordCompareTest, KindsWithoutComparisonOfTheirOwnUseThatOfTheirParent)
{
    RvARFrameAttribute frame;
    RvARLabelAttribute label;
    RvARLayerAttribute layer;
    RvARFilterAttribute filter;
    frame.uuid = label.uuid = layer.uuid = filter.uuid = 42;
    filter.filterAlpha = 0.5F;

    EXPECT_EQ(frame.compare(&label), ReturnSame);
    EXPECT_EQ(layer.compare(&filter), ReturnSame);
    EXPECT_THROW(filter.compare(&layer), std::bad_cast);
}

TEST(RecordCompareTest, GoesByTheDynamicClassOfBothRecords)
{
    auto media = filledRecord<RvMediaAttribute>();
    auto other = filledRecord<RvMediaAttribute>();
    other.rotation = 0.0F;
    const RvAttribute& root = media;
    RvAttribute* otherRoot = &other;

    EXPECT_EQ(root.compare(otherRoot), ReturnChanged);
}
