// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "RandomCase.h"

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <random>

using norvel::RvAttribute;
using norvel::RvTimeLineAttribute;
using Records = std::vector<RvAttribute*>;

namespace {

/// Random numbers that are the same with every standard library.
class Dice
{
public:
    explicit Dice(std::uint64_t seed)
        : m_generator(seed)
    {
    }

    /// 0 to `count` - 1.
    std::size_t below(std::size_t count)
    {
        return static_cast<std::size_t>(m_generator() % std::max<std::size_t>(count, 1));
    }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    template <class Value>
    Value oneOf(std::initializer_list<Value> values)
    {
        return values.begin()[below(values.size())];
    }

private:
    std::mt19937_64 m_generator;
};

/// Makes records with few different values, so that many compare as the same.
class RecordMaker
{
public:
    RecordMaker(Dice& dice, std::uint64_t largestId)
        : m_dice(dice)
        , m_largestId(largestId)
    {
    }

    RvAttribute* mainRecord()
    {
        const bool isMedia = !m_dice.oneIn(8);
        return record(isMedia ? mediaType() : anyType(), id());
    }

    RvAttribute* mixRecord() { return record(anyType(), id()); }

    /// A record of any kind under this id.
    RvAttribute* recordOf(std::uint64_t uuid) { return record(anyType(), uuid); }

    std::uint64_t id() { return 1 + m_dice.below(m_largestId); }

    int anyType() { return static_cast<int>(m_dice.below(norvel::RecordTypeARLiquify + 1)); }

    /// Changes some of the values, or none.
    void vary(RvAttribute& record)
    {
        switch (m_dice.below(5)) {
        case 0:
            record.duration = m_dice.oneOf({1000, 2000});
            break;
        case 1:
            record.alpha = m_dice.oneOf({1.0F, 0.5F});
            break;
        case 2:
            record.startTime = m_dice.oneOf({0, 500});
            record.auxText = m_dice.oneOf({"", "tag"});
            break;
        case 3:
            record.zOrder = m_dice.oneOf({0, 1});
            record.speed = m_dice.oneOf({1.0F, 2.0F});
            break;
        default:
            break;
        }
        varyKind(record);
    }

private:
    int mediaType() { return m_dice.oneIn(5) ? norvel::RecordTypeVideo : norvel::RecordTypeImage; }

    RvAttribute* record(int type, std::uint64_t uuid)
    {
        RvAttribute* made = TimelineSamples::record(type, uuid);
        vary(*made);
        if (m_dice.oneIn(20))
            made->source = "/missing/file";
        if (m_dice.oneIn(30))
            made->type = anyType();
        return made;
    }

    void varyKind(RvAttribute& record)
    {
        if (auto* media = dynamic_cast<norvel::RvMediaAttribute*>(&record)) {
            media->scale = m_dice.oneOf({1.0F, 1.0F, 2.0F});
            media->fileStartTime = m_dice.oneOf({0.0F, 0.0F, 100.7F});
        }
        if (auto* detection = dynamic_cast<norvel::RvDetectAttribute*>(&record))
            varyBinding(*detection);
        if (auto* effect = dynamic_cast<norvel::RvEffectAttribute*>(&record)) {
            varyBinding(*effect);
            effect->detect = m_dice.oneIn(3) ? id() : 0;
        }
        if (auto* ar = dynamic_cast<norvel::RvARAttribute*>(&record))
            ar->scriptParams["text"] = m_dice.oneOf({"a", "b"});
        if (auto* filter = dynamic_cast<norvel::RvARFilterAttribute*>(&record))
            varyFilter(*filter);
        if (auto* makeup = dynamic_cast<norvel::RvARMakeupAttribute*>(&record))
            makeup->suitAlpha = m_dice.oneOf({0.5F, 1.0F});
        if (auto* liquify = dynamic_cast<norvel::RvARLiquifyAttribute*>(&record))
            liquify->radius = m_dice.oneOf({10.0F, 20.0F});
    }

    template <class Record>
    void varyBinding(Record& record)
    {
        record.range = m_dice.oneOf({0, 1, 1, 1, 2, 3});
        record.bindType = m_dice.oneOf({0, 1});
        record.target.clear();
        for (std::size_t i = m_dice.below(3); i > 0; --i)
            record.target.push_back(id());
    }

    void varyFilter(norvel::RvARFilterAttribute& filter)
    {
        if (m_dice.oneIn(3))
            filter.floatParams[qkpar::KpARParamSharpen] = m_dice.oneOf({0.25F, 0.75F});
        if (m_dice.oneIn(6))
            filter.arFacePlists[1] = "/faces/1.plist";
    }

    Dice& m_dice;
    const std::uint64_t m_largestId;
};

Records makeList(Dice& dice, std::size_t count, const std::function<RvAttribute*()>& make)
{
    Records list;
    for (std::size_t i = 0; i < count; ++i)
        list.push_back(dice.oneIn(40) ? nullptr : make());
    return list;
}

void moveOne(Dice& dice, Records& list)
{
    if (list.empty())
        return;
    const auto from = list.begin() + static_cast<std::ptrdiff_t>(dice.below(list.size()));
    RvAttribute* record = *from;
    list.erase(from);
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(dice.below(list.size() + 1)), record);
}

/// The list after some edits.
Records edited(Dice& dice, RecordMaker& maker, const Records& list,
               const std::function<RvAttribute*()>& make)
{
    Records result;
    for (const RvAttribute* record : list) {
        if (!record || dice.oneIn(7))
            continue;
        if (dice.oneIn(15)) {
            result.push_back(maker.recordOf(record->uuid));
            continue;
        }
        result.push_back(TimelineSamples::copyOf(*record));
        if (dice.oneIn(3))
            maker.vary(*result.back());
        if (dice.oneIn(15))
            result.push_back(TimelineSamples::copyOf(*record));
    }
    for (RvAttribute* added : makeList(dice, dice.below(3), make))
        result.insert(result.begin() + static_cast<std::ptrdiff_t>(dice.below(result.size() + 1)),
                      added);
    for (std::size_t moves = dice.oneOf({0, 0, 1, 5}); moves > 0; --moves)
        moveOne(dice, result);
    return result;
}

TimelineSamples::Description edited(Dice& dice, RecordMaker& maker,
                                    const RvTimeLineAttribute& description)
{
    auto result = std::make_unique<RvTimeLineAttribute>();
    result->mainAttribs =
        edited(dice, maker, description.mainAttribs, [&] { return maker.mainRecord(); });
    result->mixAttribs =
        edited(dice, maker, description.mixAttribs, [&] { return maker.mixRecord(); });
    if (dice.oneIn(8) && !result->mainAttribs.empty()) {
        result->mixAttribs.push_back(result->mainAttribs.back());
        result->mainAttribs.pop_back();
    }
    if (dice.oneIn(8) && !result->mixAttribs.empty()) {
        result->mainAttribs.push_back(result->mixAttribs.front());
        result->mixAttribs.erase(result->mixAttribs.begin());
    }
    return result;
}

bool namesDetection(const RvAttribute* record)
{
    const auto* effect = dynamic_cast<const norvel::RvEffectAttribute*>(record);
    return effect && effect->detect != 0;
}

bool namesDetection(const RvTimeLineAttribute& description)
{
    const auto names = [](const RvAttribute* record) { return namesDetection(record); };
    return std::any_of(description.mainAttribs.begin(), description.mainAttribs.end(), names) ||
           std::any_of(description.mixAttribs.begin(), description.mixAttribs.end(), names);
}

} // namespace

RandomCase::RandomCase(std::uint64_t seed)
{
    Dice dice(seed);
    m_largestId = dice.oneOf<std::uint64_t>({4, 8, 30});
    RecordMaker maker(dice, m_largestId);
    const std::size_t mainCount = dice.oneIn(50) ? 33 + dice.below(20) : dice.below(7);
    const std::size_t mixCount = dice.oneIn(50) ? 33 + dice.below(20) : dice.below(9);

    m_first = std::make_unique<RvTimeLineAttribute>();
    m_first->mainAttribs = makeList(dice, mainCount, [&] { return maker.mainRecord(); });
    m_first->mixAttribs = makeList(dice, mixCount, [&] { return maker.mixRecord(); });
    m_second = edited(dice, maker, *m_first);
    m_live = dice.oneIn(3) ? TimelineSamples::copyOf(*m_first) : edited(dice, maker, *m_first);
    for (std::size_t group = 0; group < m_live->mainAttribs.size(); ++group) {
        if (dice.oneIn(6))
            m_guests.push_back({group, maker.anyType(), maker.id()});
    }
}

TimelineSamples::Timeline RandomCase::live() const
{
    auto timeline = TimelineSamples::live(*m_live);
    const auto groups = norvel::adopt(timeline->getGroups());
    for (const Guest& guest : m_guests)
        groups.begin()[static_cast<std::ptrdiff_t>(guest.group)]->addTrack(
            TimelineSamples::track(guest.recordType, guest.id).get());
    return timeline;
}

bool RandomCase::mayLeak() const
{
    return namesDetection(*m_first) || namesDetection(*m_second) || namesDetection(*m_live);
}
