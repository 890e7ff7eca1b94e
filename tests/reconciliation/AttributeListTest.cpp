// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LiteralReconciliation.h"

#include "support/TimelineSamples.h"

#include <norvel/timeline/private/AttributeIndex.h>

#include <gtest/gtest.h>

#include <array>
#include <limits>

using norvel::ReturnChanged;
using norvel::ReturnInvalid;
using norvel::ReturnNotFound;
using norvel::ReturnSame;
using norvel::RvAttribute;
using norvel::RvReturnVlaue;

namespace {

/// A record compared with a list: by the index, and by the two walks.
using Comparison = RvReturnVlaue (*)(RvAttribute*, const std::vector<RvAttribute*>&);

RvReturnVlaue byIndex(RvAttribute* attribute, const std::vector<RvAttribute*>& list)
{
    return norvel::AttributeIndex(list).compare(attribute);
}

RvReturnVlaue byWalk(RvAttribute* attribute, const std::vector<RvAttribute*>& list)
{
    return norvel::compareWithList(attribute, list);
}

std::string nameOfWay(const testing::TestParamInfo<Comparison>& info)
{
    const std::array<const char*, 3> names{"Index", "Walk", "Literal"};
    return names.at(info.index);
}

class AttributeListTest : public testing::TestWithParam<Comparison>
{
protected:
    using Record = TimelineSamples::Record;

    RvReturnVlaue compare(const Record& record) { return compare(record.get()); }
    RvReturnVlaue compare(RvAttribute* record) { return GetParam()(record, m_list); }

    Record record(int type, std::uint64_t id) const
    {
        return Record(TimelineSamples::record(type, id));
    }

    /// Puts a copy of the record behind the others and gives it.
    RvAttribute& addCopy(const Record& original)
    {
        return add(Record(TimelineSamples::copyOf(*original)));
    }

    RvAttribute& add(Record record)
    {
        m_records.push_back(std::move(record));
        m_list.push_back(m_records.back().get());
        return *m_records.back();
    }

    void addNull() { m_list.push_back(nullptr); }
    std::vector<RvAttribute*>& list() { return m_list; }

private:
    std::vector<Record> m_records;
    std::vector<RvAttribute*> m_list;
};

/// A class of a host's own: equal in everything, but of another class than its parent.
struct HostAttribute : norvel::RvMediaAttribute
{
};

/// A class of a host's own that knows a track by its tag, whatever the uuid, and notes which
/// records it was asked about.
struct TaggedAttribute : norvel::RvMediaAttribute
{
    RvReturnVlaue compare(RvAttribute* other) const override
    {
        asked.push_back(other);
        return other->auxText == auxText ? (other->alpha == alpha ? ReturnSame : ReturnChanged)
                                         : otherwise;
    }

    RvReturnVlaue otherwise = norvel::ReturnOtherRecord; ///< the answer for another tag
    mutable std::vector<RvAttribute*> asked;
};

/// A class of a host's own without a comparison of its own, below one that has one.
struct DerivedTaggedAttribute : TaggedAttribute
{
};

template <class Kind>
std::unique_ptr<Kind> tagged(std::uint64_t uuid, const char* tag)
{
    auto record = std::make_unique<Kind>();
    record->uuid = uuid;
    record->auxText = tag;
    return record;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Ways, AttributeListTest,
                         testing::Values(&byIndex, &byWalk, &LiteralReconciliation::compare),
                         nameOfWay);

TEST_P(AttributeListTest, AnswersInvalidForNoRecord)
{
    EXPECT_EQ(compare(Record()), ReturnInvalid);
    addCopy(record(norvel::RecordTypeImage, 1));
    addNull();
    EXPECT_EQ(compare(Record()), ReturnInvalid);
}

TEST_P(AttributeListTest, FindsNothingInAnEmptyList)
{
    EXPECT_EQ(compare(record(norvel::RecordTypeImage, 1)), ReturnNotFound);
}

TEST_P(AttributeListTest, FindsAnEqualRecordOfEveryKind)
{
    for (int type = norvel::RecordTypeGeneric; type <= norvel::RecordTypeARLiquify; ++type) {
        const auto searched = record(type, static_cast<std::uint64_t>(type));
        addCopy(searched);
        // A liquify is never the same.
        EXPECT_EQ(compare(searched),
                  type == norvel::RecordTypeARLiquify ? ReturnChanged : ReturnSame)
            << "record type " << type;
    }
}

TEST_P(AttributeListTest, FindsAChangedRecordOfEveryKind)
{
    for (int type = norvel::RecordTypeGeneric; type <= norvel::RecordTypeARLiquify; ++type) {
        const auto searched = record(type, static_cast<std::uint64_t>(type));
        addCopy(searched).alpha = 0.5F;
        EXPECT_EQ(compare(searched), ReturnChanged) << "record type " << type;
    }
}

TEST_P(AttributeListTest, FindsTheRecordItself)
{
    const auto searched = record(norvel::RecordTypeAudio, 1);
    list().push_back(searched.get());
    EXPECT_EQ(compare(searched), ReturnSame);
}

TEST_P(AttributeListTest, PassesOverOtherIdentities)
{
    const auto searched = record(norvel::RecordTypeImage, 3);
    for (const std::uint64_t id : {9, 1, 2, 4, 5})
        addCopy(record(norvel::RecordTypeImage, id));
    EXPECT_EQ(compare(searched), ReturnNotFound);
    addCopy(searched);
    EXPECT_EQ(compare(searched), ReturnSame);
}

TEST_P(AttributeListTest, PassesOverRecordsOfOtherClassesWithTheSameIdentity)
{
    for (int type = norvel::RecordTypeGeneric; type <= norvel::RecordTypeARLiquify; ++type) {
        if (type != norvel::RecordTypeAudio)
            addCopy(record(type, 1));
    }
    const auto searched = record(norvel::RecordTypeAudio, 1);
    EXPECT_EQ(compare(searched), ReturnNotFound);
    addCopy(searched).startTime = 7;
    EXPECT_EQ(compare(searched), ReturnChanged);
}

TEST_P(AttributeListTest, MatchesNeitherParentsNorChildren)
{
    const auto parent = record(norvel::RecordTypeARBeauty, 1);
    const auto child = record(norvel::RecordTypeARMakeup, 1);
    addCopy(child);
    EXPECT_EQ(compare(parent), ReturnNotFound);
    list().clear();
    addCopy(parent);
    EXPECT_EQ(compare(child), ReturnNotFound);
    EXPECT_EQ(compare(record(norvel::RecordTypeARFrame, 1)), ReturnNotFound);
    EXPECT_EQ(compare(record(norvel::RecordTypeARLabel, 1)), ReturnNotFound);
}

TEST_P(AttributeListTest, TakesAClassOfTheHostForAClassOfItsOwn)
{
    const Record host = std::make_unique<HostAttribute>();
    const Record media = std::make_unique<norvel::RvMediaAttribute>();
    media->uuid = host->uuid;
    list().push_back(media.get());
    EXPECT_EQ(compare(host), ReturnNotFound);
    list().push_back(host.get());
    EXPECT_EQ(compare(host), ReturnSame);
    EXPECT_EQ(compare(media), ReturnSame);
}

TEST_P(AttributeListTest, AsksTheComparisonOfAHostClassWhateverTheIdentity)
{
    const auto searched = tagged<TaggedAttribute>(1, "title");
    RvAttribute& other = add(tagged<TaggedAttribute>(2, "other"));
    RvAttribute& match = add(tagged<TaggedAttribute>(3, "title"));
    add(tagged<TaggedAttribute>(1, "title"));
    EXPECT_EQ(compare(searched.get()), ReturnSame);
    EXPECT_EQ(searched->asked, (std::vector<RvAttribute*>{&other, &match}))
        << "in the order of the list, up to the first that is the same track";

    match.alpha = 0.5F;
    EXPECT_EQ(compare(searched.get()), ReturnChanged);
}

TEST_P(AttributeListTest, PassesOverEveryOtherAnswerOfAHostClass)
{
    const auto searched = tagged<TaggedAttribute>(1, "title");
    add(tagged<TaggedAttribute>(1, "other"));
    add(tagged<TaggedAttribute>(1, "another"));
    for (const RvReturnVlaue answer : {norvel::ReturnOtherRecord, ReturnInvalid, ReturnNotFound}) {
        searched->otherwise = answer;
        EXPECT_EQ(compare(searched.get()), ReturnNotFound) << answer;
    }
    EXPECT_EQ(searched->asked.size(), 6U);
    add(tagged<TaggedAttribute>(9, "title"));
    EXPECT_EQ(compare(searched.get()), ReturnSame);
}

TEST_P(AttributeListTest, AsksAHostClassAboutExactlyItsOwnRecords)
{
    const auto searched = tagged<TaggedAttribute>(1, "title");
    const auto derived = tagged<DerivedTaggedAttribute>(1, "title");
    addNull();
    add(tagged<norvel::RvMediaAttribute>(1, "title"));
    add(tagged<HostAttribute>(1, "title"));
    RvAttribute& ofDerived = add(tagged<DerivedTaggedAttribute>(7, "title"));
    EXPECT_EQ(compare(searched.get()), ReturnNotFound);
    EXPECT_TRUE(searched->asked.empty());
    EXPECT_EQ(compare(derived.get()), ReturnSame);
    EXPECT_EQ(derived->asked, std::vector<RvAttribute*>{&ofDerived});
}

TEST_P(AttributeListTest, AnswersByTheFirstOfEqualIdentities)
{
    const auto searched = record(norvel::RecordTypeImage, 1);
    addCopy(searched).alpha = 0.5F;
    addCopy(searched);
    EXPECT_EQ(compare(searched), ReturnChanged);
    std::swap(list()[0], list()[1]);
    EXPECT_EQ(compare(searched), ReturnSame);
}

TEST_P(AttributeListTest, AnswersByTheFirstOfEqualIdentitiesBehindOthers)
{
    const auto searched = record(norvel::RecordTypeImage, 5);
    for (const std::uint64_t id : {9, 7, 2})
        addCopy(record(norvel::RecordTypeImage, id));
    addCopy(record(norvel::RecordTypeAudio, 5));
    addCopy(searched).alpha = 0.5F;
    addCopy(record(norvel::RecordTypeImage, 1));
    addCopy(searched);
    EXPECT_EQ(compare(searched), ReturnChanged);
}

TEST_P(AttributeListTest, PassesOverNullElements)
{
    const auto searched = record(norvel::RecordTypeImage, 1);
    addNull();
    EXPECT_EQ(compare(searched), ReturnNotFound);
    addCopy(searched);
    addNull();
    EXPECT_EQ(compare(searched), ReturnSame);
}

TEST_P(AttributeListTest, ComparesTheContentAsTheRecordDoes)
{
    const auto tagged = record(norvel::RecordTypeImage, 1);
    addCopy(tagged).auxText = "another tag";
    EXPECT_EQ(compare(tagged), ReturnSame) << "a tag is not compared";

    const auto matte = record(norvel::RecordTypeMatte, 2);
    dynamic_cast<norvel::RvMatteAttribute&>(addCopy(matte)).detect = 7;
    EXPECT_EQ(compare(matte), ReturnChanged);

    const auto unequal = record(norvel::RecordTypeAudio, 3);
    unequal->speed = std::numeric_limits<float>::quiet_NaN();
    addCopy(unequal);
    EXPECT_EQ(compare(unequal), ReturnChanged) << "a NaN differs from itself";
}

TEST_P(AttributeListTest, TellsTheExtremesOfIdentitiesApart)
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    for (const std::uint64_t id : {most, std::uint64_t{0}, most - 1, std::uint64_t{1} << 63U})
        addCopy(record(norvel::RecordTypeImage, id));
    for (const std::uint64_t id : {std::uint64_t{0}, most - 1, most, std::uint64_t{1} << 63U})
        EXPECT_EQ(compare(record(norvel::RecordTypeImage, id)), ReturnSame) << id;
    for (const std::uint64_t id : {std::uint64_t{1}, most - 2, (std::uint64_t{1} << 63U) + 1})
        EXPECT_EQ(compare(record(norvel::RecordTypeImage, id)), ReturnNotFound) << id;
}

TEST(AttributeIndexTest, AnswersManyQuestionsInAnyOrder)
{
    // Several classes under each id, ids neither sorted nor dense, asked for to and fro.
    std::vector<TimelineSamples::Record> records;
    std::vector<RvAttribute*> list;
    for (std::uint64_t i = 0; i < 300; ++i) {
        const std::uint64_t id = i * 7919 % 101 * 3;
        const int type = static_cast<int>(i % norvel::RecordTypeARLiquify) + 1;
        records.emplace_back(TimelineSamples::record(type, id));
        records.back()->duration = static_cast<std::int64_t>(i % 5);
        list.push_back(records.back().get());
    }
    norvel::AttributeIndex index(list);
    int same = 0;
    int changed = 0;
    for (std::uint64_t i = 0; i < 5000; ++i) {
        const int type = static_cast<int>(i % norvel::RecordTypeARLiquify) + 1;
        const TimelineSamples::Record searched(TimelineSamples::record(type, i * 31 % 307));
        searched->duration = static_cast<std::int64_t>(i % 5);
        const RvReturnVlaue answer = index.compare(searched.get());
        EXPECT_EQ(answer, LiteralReconciliation::compare(searched.get(), list));
        same += answer == ReturnSame ? 1 : 0;
        changed += answer == ReturnChanged ? 1 : 0;
    }
    EXPECT_GT(same, 0);
    EXPECT_GT(changed, 0);
}

TEST(AttributeIndexTest, KeepsTheRecordsOfHostClassesApart)
{
    const auto tag = [](std::uint64_t i) { return "tag " + std::to_string(i % 7); };
    std::vector<TimelineSamples::Record> records;
    std::vector<RvAttribute*> list;
    for (std::uint64_t i = 0; i < 120; ++i) {
        const std::string text = tag(i * 5);
        if (i % 3 == 0)
            records.push_back(tagged<TaggedAttribute>(i % 11, text.c_str()));
        else if (i % 3 == 1)
            records.push_back(tagged<DerivedTaggedAttribute>(i % 11, text.c_str()));
        else
            records.push_back(tagged<norvel::RvMediaAttribute>(i % 11, text.c_str()));
        records.back()->alpha = i % 2 == 0 ? 1.0F : 0.5F;
        list.push_back(records.back().get());
    }
    norvel::AttributeIndex index(list);
    for (std::uint64_t i = 0; i < 300; ++i) {
        const std::string text = tag(i);
        const auto host = tagged<TaggedAttribute>(i % 13, text.c_str());
        const auto derived = tagged<DerivedTaggedAttribute>(i % 13, text.c_str());
        const auto media = tagged<norvel::RvMediaAttribute>(i % 13, text.c_str());
        for (RvAttribute* searched :
             {static_cast<RvAttribute*>(host.get()), static_cast<RvAttribute*>(derived.get()),
              static_cast<RvAttribute*>(media.get())}) {
            EXPECT_EQ(index.compare(searched), LiteralReconciliation::compare(searched, list)) << i;
        }
    }
}
