// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/player/QLabPlayer.h>

#include <norvel/widgets/player/QLabPlayerForm.h>

#include <rvkpcore/RvKpApplication.h>

#include <QDebug>
#include <QEvent>
#include <QGraphicsView>
#include <QHBoxLayout>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QStyle>
#include <QTime>

#include <algorithm>
#include <limits>

namespace {

QIcon iconOf(const QImage* image)
{
    return image ? QIcon(QPixmap::fromImage(*image)) : QIcon();
}

int limitedToInt(long long value)
{
    return static_cast<int>(std::clamp<long long>(value, std::numeric_limits<int>::min(),
                                                  std::numeric_limits<int>::max()));
}

} // namespace

QLabPlayer::QLabPlayer(qrvkp::RvKpApplication* app, QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<QLabPlayerForm>())
    , m_application(app)
    , m_player(app->getPlayer())
{
    ui->setupUi(this);
    auto* const layout = new QHBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    ui->playBackWidget->setLayout(layout);
    if (QGraphicsView* view = m_application->getGraphicsView())
        layout->addWidget(view);
    showStandardIcon();

    connect(m_player, &qrvkp::RvKpPlayer::sigRenderTimeChanged, this, [this] { showTime(); });
    connect(ui->playButton, &QPushButton::clicked, this, [this] { playOrPause(); });
    connect(m_player, &qrvkp::RvKpPlayer::sigStateChanged, this,
            [this](int state, const QString& text) { showState(state, text); });
}

QLabPlayer::~QLabPlayer() = default;

qrvkp::RvKpPlayer* QLabPlayer::getPlayer() const
{
    return m_player;
}

QWidget* QLabPlayer::getCanvasWidget() const
{
    return m_application->getGraphicsView();
}

void QLabPlayer::setupPlayIconImage(QImage* first, QImage* second)
{
    const QIcon idle = iconOf(first);
    const QIcon playing = iconOf(second);
    m_hasStandardIcons = false;
    ui->playButton->setIcon(idle);
    ui->playButton->setCheckable(true);
    connect(ui->playButton, &QPushButton::toggled, this, [this, idle, playing](bool checked) {
        ui->playButton->setIcon(checked ? playing : idle);
    });
}

void QLabPlayer::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        showStandardIcon();
}

void QLabPlayer::showStandardIcon()
{
    if (!m_hasStandardIcons)
        return;
    const auto icon = m_player->isPlaying() ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay;
    ui->playButton->setIcon(style()->standardIcon(icon, nullptr, ui->playButton));
}

void QLabPlayer::playOrPause()
{
    if (m_player->isPlaying())
        m_player->pause();
    else if (m_player->isPaused())
        m_player->start();
    else
        // A player that neither plays nor pauses is only rewound, which makes it paused.
        m_player->seekTo(0, true);
}

void QLabPlayer::showTime()
{
    if (m_player->getSaveMode())
        return;
    const QString total = converTimeString(limitedToInt(m_player->getDuration()));
    const QString current = converTimeString(limitedToInt(m_player->getCurrentPosition()));
    ui->timeLabel->setText(current + QLatin1Char('/') + total);
}

void QLabPlayer::showState(int state, const QString& text)
{
    qDebug() << "current status is:" << text << state;
    showStandardIcon();
    if (state == qrvkp::RvKpPlayerPlaying)
        ui->playButton->setChecked(true);
    else if (state == qrvkp::RvKpPlayerPaused || state == qrvkp::RvKpPlayerStopped ||
             state == qrvkp::RvKpPlayerCompleted)
        ui->playButton->setChecked(false);
}

QString QLabPlayer::converTimeString(int milliseconds) const
{
    const int seconds = milliseconds / 1000;
    const int minutes = seconds / 60;
    const int hours = minutes / 60;
    // Hours begin anew after 60 and not after 24: a day and more is no time of day, and no text.
    return QTime(hours % 60, minutes - 60 * hours, seconds - 60 * minutes, 0)
        .toString(QStringLiteral("hh:mm:ss"));
}
