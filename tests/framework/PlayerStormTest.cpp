// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayerStorm.h"
#include "PlayedTimeline.h"
#include "SampleMedia.h"

#include <rvkpcore/RvAudioTrack.h>

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <utility>

using namespace qrvkp;

namespace {

/// Storms with fixed seeds. By hand, `player_threads_test --seed=N --steps=M` makes one.
class PlayerStormTest : public PlayedTimeline
{
protected:
    static long long argument(const QString& name, long long fallback)
    {
        for (const QString& argument : QCoreApplication::arguments()) {
            if (argument.startsWith("--" + name + "="))
                return argument.section('=', 1).toLongLong();
        }
        return fallback;
    }

    /// What is seen when no more pictures come.
    QImage settled()
    {
        int pictures = 0;
        const auto connection = QObject::connect(&player(), &RvKpPlayer::sigPictureRendered,
                                                 [&pictures] { ++pictures; });
        const auto comes = [&] { return std::exchange(pictures, 0) > 0; };
        while (QTest::qWaitFor(comes, 3 * QuietMs)) {
        }
        QObject::disconnect(connection);
        return grabbed();
    }

    /// Another application with the same timeline, canvas and position.
    void replaceApplication()
    {
        const auto& config = *application->getRvKpConfig();
        const QSizeF canvas(static_cast<double>(config.getKpSizeWidth()),
                            static_cast<double>(config.getKpSizeHeight()));
        const float scale = application->getCanvasScale();
        const QPointF place = application->getCanvasPosition();
        const long long position = player().getCurrentPosition();
        application.reset();
        application = std::make_unique<RvKpApplication>();
        application->getRvKpConfig()->setKpSize(static_cast<float>(canvas.width()),
                                                static_cast<float>(canvas.height()));
        application->setCanvasScale(scale);
        application->setCanvasPosition(static_cast<float>(place.x()),
                                       static_cast<float>(place.y()));
        showView();
        prepare();
        player().seekTo(position, true);
    }

    static std::size_t coloursOf(const QImage& image)
    {
        std::set<QRgb> colours;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                colours.insert(image.pixel(x, y));
        }
        return colours.size();
    }

    void storm(std::uint64_t seed, int steps)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        prepareAndStart();
        PlayerStorm storm(seed, *application, *timeline);
        for (int step = 0; step < steps; ++step) {
            storm.makeStep();
            QCoreApplication::processEvents();
        }
        storm.standStill();
        const QImage seen = settled();
        m_coloursSeen = std::max(m_coloursSeen, coloursOf(seen));
        replaceApplication();
        const bool isSame = QTest::qWaitFor([&] { return grabbed() == seen; }, PatienceMs);
        EXPECT_TRUE(isSame) << "at " << player().getCurrentPosition() << "\n" << storm.log();
        if (!isSame) {
            seen.save(QDir::temp().filePath("storm-before.png"));
            grabbed().save(QDir::temp().filePath("storm-fresh.png"));
        }
    }
    std::size_t m_coloursSeen = 0; ///< in the most colourful of the last pictures
};

} // namespace

TEST_F(PlayerStormTest, AStormOfEditsWhilePlayingLeavesWhatAFreshPlayerShows)
{
    const long long seed = argument("seed", -1);
    if (seed >= 0)
        return storm(static_cast<std::uint64_t>(seed), static_cast<int>(argument("steps", 1000)));
    for (std::uint64_t fixed = 1; fixed <= 3 && !HasFailure(); ++fixed)
        storm(fixed, 1000);
    EXPECT_GT(m_coloursSeen, 50U) << "there was nothing to be seen";
}

TEST_F(PlayerStormTest, GoesWithEverythingInFlight)
{
    const QTemporaryDir folder;
    appendNumbers();
    const auto sound = adopt(RvAudioTrack::create(SampleMedia::sound(), 0, -1, 0));
    ASSERT_TRUE(timeline->addMixTrack(sound.get()));
    const auto red = addColour(Red, {40, 40});
    for (int round = 0; round < 50; ++round) {
        prepareAndStart();
        int pictures = 0;
        QObject::connect(&player(), &RvKpPlayer::sigPictureRendered, [&] { ++pictures; });
        ASSERT_TRUE(QTest::qWaitFor([&] { return pictures >= round % 4; }, PatienceMs));
        red->setAlpha(static_cast<float>(round) / 50.0F);
        player().seekTo(round * 57, true);
        if (round % 5 == 0) {
            const QString path = QDir(folder.path()).filePath("unfinished.mp4");
            ASSERT_TRUE(player().startSave(path.toStdString()));
            player().start();
        }
        if (round % 7 == 0)
            player().lockPlayer();
        application.reset();
        application = std::make_unique<RvKpApplication>();
        SetUp();
    }
}
