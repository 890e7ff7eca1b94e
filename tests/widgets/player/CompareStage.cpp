// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "CompareStage.h"

#include <norvel/widgets/player/LabCompareMaskView.h>

#include <rvkpcore/RvCallLog.h>

#include <QMap>
#include <QRegularExpression>

using namespace qrvkp;

namespace {

/// The entries with names in place of the ids of what they make.
std::vector<std::string> named(const std::vector<std::string>& entries)
{
    QMap<QString, QStringList> names{{"RvKpTrack::create", {"base", "mix"}},
                                     {"RvSpriteTrack::create", {"base", "mix"}},
                                     {"RvKpGroup::create", {"group"}},
                                     {"RvTrkMatteEffectTrack::createPathMatteTrack", {"matte"}}};
    QMap<QString, QString> nameOfId;
    const QRegularExpression creation("^([A-Za-z:]+)\\(.*\\) -> (\\d+)$");
    std::vector<std::string> result;
    for (const std::string& entry : entries) {
        QString text = QString::fromStdString(entry);
        const QRegularExpressionMatch match = creation.match(text);
        if (match.hasMatch()) {
            QString name = "more";
            if (!names[match.captured(1)].isEmpty())
                name = names[match.captured(1)].takeFirst();
            // A base and a mix track are made one after the other, of whatever kinds.
            if (name == "base" && nameOfId.values().contains("base"))
                name = "mix";
            nameOfId[match.captured(2)] = name;
        }
        for (auto id = nameOfId.cbegin(); id != nameOfId.cend(); ++id)
            text.replace(QRegularExpression("\\b" + id.key() + "\\b"), id.value());
        result.push_back(text.toStdString());
    }
    return result;
}

} // namespace

void CompareStage::SetUp()
{
    makePlayer(false);
}

void CompareStage::makePlayer(bool ownPlayer)
{
    delete widget;
    widget = new QLabComparePlayer(&application, window.get(), ownPlayer);
    widget->resize(960, ownPlayer ? 580 : 540);
    widget->show();
    showWindow({1000, 600});
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return mask() && mask()->size() == view().size(); }, PatienceMs));
}

LabCompareMaskView* CompareStage::mask()
{
    return view().findChild<LabCompareMaskView*>();
}

CompareStage::Calls CompareStage::setUp(const QString& first, const QString& second, bool isVideo)
{
    RvCallLog::start();
    widget->setupCompareVideoPath(first, second, isVideo);
    RvCallLog::stop();
    return named(RvCallLog::entries());
}

void CompareStage::showPair(const QString& first, const QString& second, bool isVideo)
{
    widget->setupCompareVideoPath(first, second, isVideo);
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
}

FrameworkRef<RvKpTimeLine> CompareStage::timeline()
{
    return adopt(player().getTimeLine());
}

FrameworkRef<RvKpGroup> CompareStage::group()
{
    auto groups = adopt(timeline()->getGroups());
    EXPECT_EQ(groups.size(), 1U);
    return groups.empty() ? nullptr : std::move(groups.front());
}

FrameworkRef<RvITrack> CompareStage::baseTrack()
{
    auto tracks = adopt(group()->getTracks());
    EXPECT_EQ(tracks.size(), 1U);
    return tracks.empty() ? nullptr : std::move(tracks.front());
}

FrameworkRef<RvITrack> CompareStage::mixTrack()
{
    auto tracks = adopt(timeline()->getMixTracks());
    EXPECT_EQ(tracks.size(), 2U);
    return tracks.empty() ? nullptr : std::move(tracks.front());
}

FrameworkRef<RvTrkMatteEffectTrack> CompareStage::matte()
{
    auto tracks = adopt(timeline()->getMixTracks());
    EXPECT_EQ(tracks.size(), 2U);
    return referenceAs<RvTrkMatteEffectTrack>(std::move(tracks.back()));
}
