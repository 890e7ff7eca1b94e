// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/DescriptionComparison.h"

#include <norvel/attribute/RvARLiquifyAttribute.h>
#include <norvel/attribute/RvARMakeupAttribute.h>
#include <norvel/attribute/RvAudioAttribute.h>
#include <norvel/attribute/RvDetectAttribute.h>
#include <norvel/attribute/RvMediaAttribute.h>

#include <QDir>
#include <QFile>

#include <algorithm>
#include <map>
#include <typeinfo>

namespace {

/// Collects the names of the fields in which two records of one kind differ.
template <class Record>
class Fields
{
public:
    Fields(const Record& stored, const Record& live, std::vector<std::string>& names)
        : m_stored(stored)
        , m_live(live)
        , m_names(names)
    {
    }

    template <class Owner, class Value>
    Fields& compare(const char* name, Value Owner::*field)
    {
        if (!(m_stored.*field == m_live.*field))
            m_names.emplace_back(name);
        return *this;
    }

    void note(const char* name, bool same)
    {
        if (!same)
            m_names.emplace_back(name);
    }

private:
    const Record& m_stored;
    const Record& m_live;
    std::vector<std::string>& m_names;
};

bool sameGroup(const qkpar::RvARMakeupARGroupData& a, const qkpar::RvARMakeupARGroupData& b)
{
    return norvel::RvARMakeupAttribute().compareMakeupGroupData(a, b);
}

bool sameGroups(const std::vector<qkpar::RvARMakeupARGroupData>& a,
                const std::vector<qkpar::RvARMakeupARGroupData>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameGroup);
}

bool sameFaces(const std::vector<qkpar::RvARFaceGroupData>& a,
               const std::vector<qkpar::RvARFaceGroupData>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.faceId == y.faceId && x.suitAlpha == y.suitAlpha &&
               x.groupOrders == y.groupOrders && sameGroups(x.groupDatas, y.groupDatas);
    });
}

/// What the framework saved for a liquify track in a cache folder; null when there is nothing.
QByteArray savedStrokes(std::uint64_t id, const QString& folder)
{
    QFile file(QDir(folder).filePath(QStringLiteral("liquify-%1.dat").arg(id)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Whether two cache folders hold the same strokes of the track. Other tracks may have saved theirs
/// there, too.
bool sameStrokes(std::uint64_t id, const QString& a, const QString& b)
{
    if (a == b)
        return true;
    if (a.isEmpty() || b.isEmpty())
        return false;
    const QByteArray first = savedStrokes(id, a);
    return !first.isEmpty() && first == savedStrokes(id, b);
}

using Names = std::vector<std::string>;

void compareFields(const norvel::RvAttribute& a, const norvel::RvAttribute& b, Names& names)
{
    using R = norvel::RvAttribute;
    Fields(a, b, names)
        .compare("uuid", &R::uuid)
        .compare("source", &R::source)
        .compare("startTime", &R::startTime)
        .compare("duration", &R::duration)
        .compare("type", &R::type)
        .compare("zOrder", &R::zOrder)
        .compare("alpha", &R::alpha)
        .compare("speed", &R::speed)
        .compare("auxText", &R::auxText);
}

void compareFields(const norvel::RvMediaAttribute& a, const norvel::RvMediaAttribute& b,
                   Names& names)
{
    using R = norvel::RvMediaAttribute;
    Fields(a, b, names)
        .compare("fileStartTime", &R::fileStartTime)
        .compare("width", &R::width)
        .compare("height", &R::height)
        .compare("positionX", &R::positionX)
        .compare("positionY", &R::positionY)
        .compare("scale", &R::scale)
        .compare("rotation", &R::rotation);
}

void compareFields(const norvel::RvDetectAttribute& a, const norvel::RvDetectAttribute& b,
                   Names& names)
{
    using R = norvel::RvDetectAttribute;
    Fields(a, b, names)
        .compare("mode", &R::mode)
        .compare("modePath", &R::modePath)
        .compare("range", &R::range)
        .compare("bindType", &R::bindType)
        .compare("target", &R::target);
}

void compareFields(const norvel::RvEffectAttribute& a, const norvel::RvEffectAttribute& b,
                   Names& names)
{
    using R = norvel::RvEffectAttribute;
    Fields(a, b, names)
        .compare("range", &R::range)
        .compare("bindType", &R::bindType)
        .compare("target", &R::target)
        .compare("detect", &R::detect);
}

void compareFields(const norvel::RvARAttribute& a, const norvel::RvARAttribute& b, Names& names)
{
    using R = norvel::RvARAttribute;
    Fields(a, b, names)
        .compare("scriptParams", &R::scriptParams)
        .compare("globalParamConfiguration", &R::globalParamConfiguration);
}

void compareFields(const norvel::RvARFilterAttribute& a, const norvel::RvARFilterAttribute& b,
                   Names& names)
{
    using R = norvel::RvARFilterAttribute;
    Fields(a, b, names)
        .compare("filterAlpha", &R::filterAlpha)
        .compare("floatParams", &R::floatParams)
        .compare("faceFloatParams", &R::faceFloatParams)
        .compare("arFacePlists", &R::arFacePlists);
}

void compareFields(const norvel::RvARBeautyAttribute& a, const norvel::RvARBeautyAttribute& b,
                   Names& names)
{
    using R = norvel::RvARBeautyAttribute;
    Fields(a, b, names)
        .compare("beautyType", &R::beautyType)
        .compare("enableBeautyGenderDistinction", &R::enableBeautyGenderDistinction)
        .compare("coeffientParameterConfig", &R::coeffientParameterConfig)
        .compare("applyGenderToAR", &R::applyGenderToAR)
        .compare("allFaceBeautyParam", &R::allFaceBeautyParam)
        .compare("allBeautyAnattaForFaceControls", &R::allBeautyAnattaForFaceControls)
        .compare("manualLongLegRange", &R::manualLongLegRange)
        .compare("manualSlimHeadParam", &R::manualSlimHeadParam)
        .compare("manualLongLegEnable", &R::manualLongLegEnable)
        .compare("mapPointsData", &R::mapPointsData)
        .compare("beautyMaskFaceId", &R::beautyMaskFaceId)
        .compare("beautyMaskBrushType", &R::beautyMaskBrushType)
        .compare("beautyActiveMaskImage", &R::beautyActiveMaskImage);
}

void compareFields(const norvel::RvARLiquifyAttribute& a, const norvel::RvARLiquifyAttribute& b,
                   Names& names)
{
    using R = norvel::RvARLiquifyAttribute;
    Fields fields(a, b, names);
    fields.compare("centerX", &R::centerX)
        .compare("centerY", &R::centerY)
        .compare("radius", &R::radius)
        .compare("strength", &R::strength)
        .compare("movePoints", &R::movePoints)
        .compare("liquifyStyle", &R::liquifyStyle);
    fields.note("effectPath", sameStrokes(b.uuid, a.effectPath, b.effectPath));
}

void compareFields(const norvel::RvARMakeupAttribute& a, const norvel::RvARMakeupAttribute& b,
                   Names& names)
{
    using R = norvel::RvARMakeupAttribute;
    Fields fields(a, b, names);
    fields.compare("suitAlpha", &R::suitAlpha).compare("groupOrders", &R::groupOrders);
    fields.note("groupDatas", sameGroups(a.groupDatas, b.groupDatas));
    fields.note("groupFaceDatas", sameFaces(a.groupFaceDatas, b.groupFaceDatas));
}

/// Compares the fields of one kind, when the records are of it.
template <class Record>
void compareAs(const norvel::RvAttribute& stored, const norvel::RvAttribute& live, Names& names)
{
    const auto* a = dynamic_cast<const Record*>(&stored);
    const auto* b = dynamic_cast<const Record*>(&live);
    if (a && b)
        compareFields(*a, *b, names);
}

std::string nameOf(const norvel::RvAttribute& record)
{
    return "track " + std::to_string(record.uuid) + " (type " + std::to_string(record.type) + ")";
}

void appendRecordDifferences(const norvel::RvAttribute& stored, const norvel::RvAttribute& live,
                             std::vector<std::string>& lines)
{
    for (const std::string& field : differences(stored, live))
        lines.push_back(nameOf(stored) + ": " + field);
}

void compareMain(const std::vector<norvel::RvAttribute*>& stored,
                 const std::vector<norvel::RvAttribute*>& live, std::vector<std::string>& lines)
{
    if (stored.size() != live.size())
        lines.push_back("main line: " + std::to_string(stored.size()) + " groups stored, " +
                        std::to_string(live.size()) + " live");
    for (std::size_t i = 0; i < std::min(stored.size(), live.size()); ++i) {
        if (stored[i]->uuid != live[i]->uuid)
            lines.push_back("main line: group " + std::to_string(i) + " is " +
                            std::to_string(live[i]->uuid) + " and not " +
                            std::to_string(stored[i]->uuid));
        else
            appendRecordDifferences(*stored[i], *live[i], lines);
    }
}

void compareMix(const std::vector<norvel::RvAttribute*>& stored,
                const std::vector<norvel::RvAttribute*>& live, std::vector<std::string>& lines)
{
    // Of equal ids there may be several: a track that was brought back while it was still there.
    std::multimap<std::uint64_t, const norvel::RvAttribute*> liveById;
    for (const norvel::RvAttribute* record : live)
        liveById.emplace(record->uuid, record);
    for (const norvel::RvAttribute* record : stored) {
        const auto match = liveById.find(record->uuid);
        if (match == liveById.end()) {
            lines.push_back(nameOf(*record) + " is missing");
            continue;
        }
        appendRecordDifferences(*record, *match->second, lines);
        liveById.erase(match);
    }
    for (const auto& [uuid, record] : liveById)
        lines.push_back(nameOf(*record) + " is not described");
}

} // namespace

std::vector<std::string> differences(const norvel::RvAttribute& stored,
                                     const norvel::RvAttribute& live)
{
    Names names;
    if (typeid(stored) != typeid(live))
        names.emplace_back("kind");
    compareAs<norvel::RvAttribute>(stored, live, names);
    compareAs<norvel::RvMediaAttribute>(stored, live, names);
    compareAs<norvel::RvDetectAttribute>(stored, live, names);
    compareAs<norvel::RvEffectAttribute>(stored, live, names);
    compareAs<norvel::RvARAttribute>(stored, live, names);
    compareAs<norvel::RvARFilterAttribute>(stored, live, names);
    compareAs<norvel::RvARBeautyAttribute>(stored, live, names);
    compareAs<norvel::RvARLiquifyAttribute>(stored, live, names);
    compareAs<norvel::RvARMakeupAttribute>(stored, live, names);
    const auto* a = dynamic_cast<const norvel::RvAudioAttribute*>(&stored);
    const auto* b = dynamic_cast<const norvel::RvAudioAttribute*>(&live);
    if (a && b && a->fileStartTime != b->fileStartTime)
        names.emplace_back("fileStartTime");
    return names;
}

std::vector<std::string> differences(const norvel::RvTimeLineAttribute& stored,
                                     const norvel::RvTimeLineAttribute& live)
{
    std::vector<std::string> lines;
    if (stored.width != live.width || stored.height != live.height)
        lines.emplace_back("canvas size");
    compareMain(stored.mainAttribs, live.mainAttribs, lines);
    compareMix(stored.mixAttribs, live.mixAttribs, lines);
    return lines;
}
