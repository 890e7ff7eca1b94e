// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayedTimeline.h"
#include "SampleMedia.h"
#include "support/ScopedCommaLocale.h"
#include "support/TestEnvironment.h"
#include "support/TestMedia.h"

#include <rvkpcore/private/CanvasView.h>

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <random>
#include <set>
#include <thread>
#include <utility>
#include <vector>

using namespace qrvkp;

namespace {

constexpr int lastNumber = SampleMedia::NumberedPictures - 1;

int numberAt(long long position)
{
    return std::min(static_cast<int>(position / SampleMedia::NumberedInterval), lastNumber);
}

/// What the player says while its numbered video is played.
class PlayerPictureTest : public PlayedTimeline
{
protected:
    struct Tick
    {
        int number; ///< of the picture that came last
        long long position;
    };

    PlayerPictureTest() { listen(); }

    /// Nothing new comes any more, and what is seen is this picture.
    void expectStays(int number)
    {
        while (m_rendered->wait(QuietMs)) {
        }
        EXPECT_EQ(seenNumber(), number);
    }

    void replaceApplication()
    {
        application.reset();
        application = std::make_unique<RvKpApplication>();
        application->getRvKpConfig()->setKpSize(static_cast<float>(CanvasWidth),
                                                static_cast<float>(CanvasHeight));
        listen();
    }

    /// The bars that are inside of the view show the number, over their whole height; gives how
    /// many there are.
    int expectBarsOf(int number)
    {
        const QImage image = grabbed();
        int bars = 0;
        for (int bit = 0; bit < SampleMedia::NumberedBits; ++bit) {
            const double x = (bit + 0.5) * CanvasWidth / SampleMedia::NumberedBits;
            for (const double y : {5.0, 90.0, 175.0}) {
                const QPoint pixel = application->convertCanvasToView({x, y}).toPoint();
                if (!image.rect().contains(pixel))
                    continue;
                const QRgb expected = (number >> bit & 1) != 0 ? White : Black;
                EXPECT_TRUE(isColour(image.pixel(pixel), expected, 40)) << "bar " << bit;
                ++bars;
            }
        }
        return bars;
    }

    /// Waits until a picture was shown whose number is at least this.
    bool playsTo(int number)
    {
        return QTest::qWaitFor([&] { return m_shown >= number; }, PatienceMs);
    }

    std::vector<int> m_numbers; ///< of all pictures
    std::vector<Tick> m_ticks;
    int m_shown = -1; ///< the number of the last picture
    QSize m_size;     ///< of the last picture

private:
    void listen()
    {
        m_rendered = std::make_unique<QSignalSpy>(&player(), &RvKpPlayer::sigPictureRendered);
        QObject::connect(&player(), &RvKpPlayer::sigPictureRendered, [this](const QImage& picture) {
            m_shown = picture.isNull() ? -1 : numberOf(picture);
            m_numbers.push_back(m_shown);
            m_size = picture.size();
        });
        QObject::connect(&player(), &RvKpPlayer::sigRenderTimeChanged, [this](long long position) {
            m_ticks.push_back({m_shown, position});
        });
    }

    std::unique_ptr<QSignalSpy> m_rendered;
};

} // namespace

TEST_F(PlayerPictureTest, ShowsTheFirstPictureOncePrepared)
{
    appendNumbers();
    EXPECT_EQ(seenAt({5, 5}), Black);
    prepare();
    EXPECT_TRUE(becomesNumber(0));
    EXPECT_TRUE(becomes({5, 5}, Black)) << "the lowest bit";
}

TEST_F(PlayerPictureTest, ShowsThePictureOfThePositionThatItWasSoughtTo)
{
    appendNumbers();
    prepare();
    for (const long long position : {40, 79, 1000, 2960, 1239, 2999, 200, 39, 1, 1040, 0, 3000}) {
        player().seekTo(position, true);
        EXPECT_TRUE(becomesNumber(numberAt(position))) << position << ": " << seenNumber();
    }
}

TEST_F(PlayerPictureTest, SeeksBackwardPictureByPicture)
{
    appendNumbers();
    prepare();
    for (int number = lastNumber; number > lastNumber - 12; --number) {
        player().seekTo(number * SampleMedia::NumberedInterval, true);
        EXPECT_TRUE(becomesNumber(number)) << seenNumber();
    }
}

TEST_F(PlayerPictureTest, ShowsTheLastPictureAtTheEndAndBehindIt)
{
    appendNumbers();
    prepare();
    for (const long long position : {3000LL, 3001LL, 1LL << 62}) {
        player().seekTo(0, true);
        EXPECT_TRUE(becomesNumber(0));
        player().seekTo(position, true);
        EXPECT_TRUE(becomesNumber(lastNumber)) << position;
    }
    player().seekTo(-5, true);
    EXPECT_TRUE(becomesNumber(0));
}

TEST_F(PlayerPictureTest, ManySeeksInARowEndOnTheLastOne)
{
    appendNumbers();
    prepare();
    std::mt19937 random(7);
    for (int round = 0; round < 5; ++round) {
        int number = 0;
        for (int i = 0; i < 200; ++i) {
            number = static_cast<int>(random() % SampleMedia::NumberedPictures);
            player().seekTo(number * SampleMedia::NumberedInterval, i % 2 == 0);
            if (i % 40 == 0)
                QCoreApplication::processEvents();
        }
        EXPECT_TRUE(becomesNumber(number)) << seenNumber();
        expectStays(number);
    }
}

TEST_F(PlayerPictureTest, GoesOnFromWhereItWasSoughtToWhilePlaying)
{
    appendNumbers();
    prepareAndStart();
    ASSERT_TRUE(playsTo(3));
    for (const int number : {50, 10}) {
        QElapsedTimer timer;
        timer.start();
        bool isPrompt = false;
        while (!isPrompt) {
            ASSERT_FALSE(timer.hasExpired(PatienceMs)) << "pictures come late in every try";
            player().seekTo(0, true);
            player().start(); // the film may have ended
            ASSERT_TRUE(QTest::qWaitFor([&] { return m_shown < 10; }, PatienceMs));
            m_numbers.clear();
            player().seekTo(number * SampleMedia::NumberedInterval, true);
            ASSERT_TRUE(QTest::qWaitFor(
                [&] { return m_numbers.size() >= 8 || player().getState() == RvKpPlayerCompleted; },
                PatienceMs));
            // One picture may have been waiting, and one may have been in work.
            const auto first = std::find_if(m_numbers.begin(), m_numbers.end(), [&](int shown) {
                return shown >= number && shown < number + 25;
            });
            EXPECT_TRUE(std::is_sorted(first, m_numbers.end()));
            isPrompt = m_numbers.size() >= 8 && first - m_numbers.begin() <= 2;
        }
    }
}

TEST_F(PlayerPictureTest, ThePictureIsWhereTheConversionsSayWhenZoomedAndMoved)
{
    appendNumbers();
    prepare();
    constexpr int number = 0x2b;
    player().seekTo(number * SampleMedia::NumberedInterval, true);
    for (const float scale : {0.5F, 1.0F, 1.9F, 3.0F}) {
        for (const QPointF& position : {QPointF(0, 0), QPointF(47, -31), QPointF(-60.5, 12.25)}) {
            application->setCanvasScale(scale);
            application->setCanvasPosition(static_cast<float>(position.x()),
                                           static_cast<float>(position.y()));
            const QSize wanted = dynamic_cast<CanvasView&>(view()).wantedPictureSize();
            EXPECT_TRUE(QTest::qWaitFor([&] { return m_size == wanted; }, PatienceMs));
            EXPECT_GE(expectBarsOf(number), 4) << scale;
        }
    }
}

TEST_F(PlayerPictureTest, PlaysThePicturesOfItsPositions)
{
    appendNumbers();
    prepare();
    QElapsedTimer timer;
    timer.start();
    bool isFluent = false;
    while (!isFluent) {
        ASSERT_FALSE(timer.hasExpired(PatienceMs))
            << "pictures are late, or left out, in every try";
        player().seekTo(0, true);
        ASSERT_TRUE(becomesNumber(0));
        m_numbers.clear();
        m_ticks.clear();
        player().start();
        ASSERT_TRUE(playsTo(60));
        player().pause();
        ASSERT_FALSE(m_ticks.empty());
        EXPECT_TRUE(std::is_sorted(m_numbers.begin(), m_numbers.end()));
        std::vector<int> behind;
        for (const Tick& tick : m_ticks) {
            EXPECT_LE(tick.number, numberAt(tick.position)) << "before its time";
            behind.push_back(numberAt(tick.position) - tick.number);
        }
        // Other programs on the processors delay some of them.
        const auto middle = behind.begin() + static_cast<std::ptrdiff_t>(behind.size() / 2);
        std::nth_element(behind.begin(), middle, behind.end());
        const std::set<int> different(m_numbers.begin(), m_numbers.end());
        isFluent = different.size() > 15 && *middle <= 2;
    }
}

TEST_F(PlayerPictureTest, PausesOnThePictureOfItsPosition)
{
    appendNumbers();
    prepareAndStart();
    for (const int number : {5, 12, 21, 33}) {
        ASSERT_TRUE(playsTo(number));
        player().pause();
        const long long position = player().getCurrentPosition();
        EXPECT_TRUE(becomesNumber(numberAt(position))) << position << ": " << seenNumber();
        expectStays(numberAt(position));
        EXPECT_EQ(player().getCurrentPosition(), position);
        player().start();
    }
}

TEST_F(PlayerPictureTest, IsCompletedOnTheLastPictureAndStartsAgainWithTheFirst)
{
    appendNumbers();
    prepare();
    player().seekTo(2700, true);
    player().start();
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_TRUE(becomesNumber(lastNumber));
    expectStays(lastNumber);
    player().start();
    EXPECT_LT(player().getCurrentPosition(), 2700);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_shown >= 0 && m_shown < 60; }, PatienceMs));
    EXPECT_TRUE(player().isPlaying());
}

TEST_F(PlayerPictureTest, StopsOnTheFirstPicture)
{
    appendNumbers();
    prepareAndStart();
    ASSERT_TRUE(playsTo(6));
    player().stop();
    EXPECT_TRUE(becomesNumber(0));
    expectStays(0);
}

TEST_F(PlayerPictureTest, PlaysUnderADecimalComma)
{
    const QTemporaryDir folder;
    const ScopedCommaLocale locale(folder.path());
    const auto track = appendNumbers();
    track->setSpeed(1.5F);
    prepareAndStart();
    ASSERT_TRUE(playsTo(10));
    player().pause();
    player().seekTo(1000, true);
    EXPECT_TRUE(becomesNumber(37)) << seenNumber();
}

TEST_F(PlayerPictureTest, AViewThatIsMadeLateShowsThePictureOfThePosition)
{
    appendNumbers();
    replaceApplication();
    prepare();
    player().seekTo(1240, true);
    while (QTest::qWaitFor([&] { return !m_numbers.empty(); }, QuietMs))
        m_numbers.clear();
    showView();
    EXPECT_TRUE(becomesNumber(31)) << seenNumber();
}

TEST_F(PlayerPictureTest, AViewThatIsMadeAnewShowsThePictureOfThePosition)
{
    appendNumbers();
    prepare();
    {
        QWidget window;
        QVBoxLayout layout(&window);
        layout.setContentsMargins(0, 0, 0, 0);
        layout.setSizeConstraint(QLayout::SetNoConstraint); // of which the platform would warn
        layout.addWidget(&view());
        window.resize(CanvasWidth, CanvasHeight);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        player().seekTo(400, true);
        EXPECT_TRUE(becomesNumber(10)) << seenNumber();
    }
    player().seekTo(880, true);
    showView();
    EXPECT_TRUE(becomesNumber(22)) << seenNumber();
    player().seekTo(1600, true);
    EXPECT_TRUE(becomesNumber(40)) << seenNumber();
}

TEST_F(PlayerPictureTest, TheViewIsBlackWhenTheTimelineIsTakenAway)
{
    appendColour(Red);
    prepareAndStart();
    ASSERT_TRUE(becomes({160, 90}, Red));
    player().setTimeLine(nullptr);
    EXPECT_EQ(seenAt({160, 90}), Black);
    while (QTest::qWaitFor([&] { return !m_numbers.empty(); }, QuietMs))
        m_numbers.clear();
    EXPECT_EQ(seenAt({160, 90}), Black);
    EXPECT_EQ(seenAt({2, 178}), Black);
}

TEST_F(PlayerPictureTest, APictureOfTheTimelineBeforeIsNotSeenAfterItWasReplaced)
{
    const auto other = adopt(RvKpTimeLine::create());
    {
        const auto group = adopt(RvKpGroup::create(10000));
        const auto track = adopt(RvSpriteTrack::create(SampleMedia::colour(Green), 0, 10000));
        track->setScale(10.0F);
        group->addTrack(track.get());
        other->pushBackGroup(group.get());
    }
    appendColour(Red);
    std::vector<QRgb> colours;
    QObject::connect(&player(), &RvKpPlayer::sigPictureRendered, [&](const QImage& picture) {
        if (!picture.isNull())
            colours.push_back(picture.pixel(picture.rect().center()));
    });
    for (int round = 0; round < 30; ++round) {
        const bool isRed = round % 2 == 0;
        player().setTimeLine(isRed ? timeline.get() : other.get());
        colours.clear();
        player().prepareAsync();
        player().start();
        ASSERT_TRUE(QTest::qWaitFor([&] { return colours.size() >= 2; }, PatienceMs));
        for (const QRgb colour : colours)
            EXPECT_TRUE(isColour(colour, isRed ? Red : Green)) << "round " << round;
        // The next picture is in work then, or waiting to be shown.
        player().seekTo(round * 10, true);
        if (round % 3 == 1)
            std::this_thread::sleep_for(std::chrono::milliseconds(round % 7));
    }
}

TEST_F(PlayerPictureTest, AFileThatVanishedIsBlackAndWarnedOfOnce)
{
    const QTemporaryDir folder;
    const std::string path =
        TestMedia::copy(SampleMedia::numberedVideo(), folder.path(), "vanishing.mp4");
    const ExpectedWarning warning("cannot read the media file " + QString::fromStdString(path));
    appendColour(Red, 2600);
    const auto track = adopt(RvKpTrack::create(path, 0, -1, 0));
    ASSERT_TRUE(track);
    track->setWidthAndHeight(100, 100);
    ASSERT_TRUE(timeline->addMixTrack(track.get()));
    ASSERT_TRUE(QFile::remove(QString::fromStdString(path)));
    prepare();
    EXPECT_TRUE(becomes({20, 90}, Red));
    EXPECT_EQ(seenAt({160, 90}), Black);
    // Long enough for the file to be tried again.
    player().start();
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_EQ(player().getCurrentPosition(), 3000);
    player().seekTo(1000, true);
    EXPECT_TRUE(becomes({20, 90}, Red));
}

TEST_F(PlayerPictureTest, AFileThatComesBackIsShownAgain)
{
    const QTemporaryDir folder;
    const std::string path =
        TestMedia::copy(SampleMedia::numberedVideo(), folder.path(), "returning.mp4");
    const ExpectedWarning warning("cannot read the media file " + QString::fromStdString(path));
    const auto track = adopt(RvKpTrack::create(path, 0, -1, 0));
    append(*track);
    const QString name = QString::fromStdString(path);
    ASSERT_TRUE(QFile::rename(name, name + ".away"));
    prepare();
    m_numbers.clear();
    player().seekTo(1000, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_numbers.empty(); }, PatienceMs));
    ASSERT_TRUE(QFile::rename(name + ".away", name));
    player().seekTo(0, true);
    player().start();
    EXPECT_TRUE(playsTo(50)) << "it plays for longer than a file is left alone";
    application.reset(); // nobody reads the file when its folder goes
}

TEST_F(PlayerPictureTest, AFileThatTurnsIntoNoiseDoesNotStallIt)
{
    const QTemporaryDir folder;
    const std::string path =
        TestMedia::copy(SampleMedia::numberedVideo(), folder.path(), "broken.mp4");
    append(*adopt(RvKpTrack::create(path, 0, -1, 0)));
    prepareAndStart();
    ASSERT_TRUE(playsTo(8));
    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const qint64 size = file.size();
    QByteArray noise(static_cast<int>(size * 3 / 4), '\0');
    std::mt19937 random(3);
    for (char& byte : noise)
        byte = static_cast<char>(random());
    ASSERT_TRUE(file.seek(size / 4));
    ASSERT_EQ(file.write(noise), noise.size());
    file.close();
    player().seekTo(2000, true);
    const long long position = player().getCurrentPosition();
    ASSERT_TRUE(QTest::qWaitFor([&] { return player().getCurrentPosition() > position + 300; },
                                PatienceMs));
    m_numbers.clear();
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_numbers.size() > 3; }, PatienceMs));
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    player().seekTo(0, true);
    m_numbers.clear();
    player().start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_numbers.size() > 3; }, PatienceMs));
    application.reset(); // nobody reads the file when its folder goes
}
