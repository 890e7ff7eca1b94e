// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/player/QLabComparePlayer.h>

#include <norvel/widgets/player/LabCompareLayout.h>
#include <norvel/widgets/player/LabCompareMaskView.h>
#include <norvel/widgets/player/QLabComparePlayerForm.h>
#include <norvel/widgets/player/QLabPlayer.h>

#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <QDebug>
#include <QDialog>
#include <QEvent>
#include <QGraphicsView>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>
#include <utility>

namespace {

constexpr long long pictureDuration = 3000;
/// The framework's numbers for a matte that cuts one track by a path.
constexpr int matteBindType = 2;
constexpr int matteBlendMode = 25;
constexpr int mattePathType = 1;
/// The path of a matte is drawn on sides of at least this length, so that its edge is smooth.
constexpr double smallestPathSide = 800.0;

template <class Object>
void releaseAndForget(Object*& object)
{
    if (object)
        object->release();
    object = nullptr;
}

/// Puts a hint into its container, where it is seen.
void putInto(QWidget* container, QWidget* hint)
{
    if (!container || !hint)
        return;
    hint->setParent(container);
    hint->show();
}

/// Asks the file system as the framework does, by UTF-8: Qt goes by the locale, which may have no
/// letters for a name.
bool exists(const QString& path)
{
    std::error_code error;
    return std::filesystem::exists(std::filesystem::u8path(path.toStdString()), error);
}

/// Cut off to an int; far outside of any view when it is huge.
int truncated(double value)
{
    return std::isfinite(value) ? static_cast<int>(std::clamp(value, -1.0e6, 1.0e6)) : 0;
}

/// Makes a player whose timeline was taken away for a moment show it again where it was.
void resume(qrvkp::RvKpPlayer& player, int state, long long position)
{
    if (state == qrvkp::RvKpPlayerIdle)
        return;
    player.prepareAsync();
    player.seekTo(position, true);
    if (state == qrvkp::RvKpPlayerPlaying)
        player.start();
}

QSizeF sizeOf(const qrvkp::RvIMediaTrack& track)
{
    return {static_cast<double>(track.getWidth()), static_cast<double>(track.getHeight())};
}

} // namespace

void QLabComparePlayer::Shown::release()
{
    releaseAndForget(matteTrack);
    releaseAndForget(mixTrack);
    releaseAndForget(baseTrack);
    releaseAndForget(group);
    releaseAndForget(timeline);
}

QLabComparePlayer::QLabComparePlayer(qrvkp::RvKpApplication* app, QWidget* parent, bool ownPlayer)
    : QWidget(parent)
    , ui(std::make_unique<QLabComparePlayerForm>())
    , m_application(app)
{
    ui->setupUi(this);
    auto* const row = new LabCompareLayout;
    setLayout(row);
    QWidget* host = m_application->getGraphicsView();
    if (ownPlayer) {
        m_ownPlayer = new QLabPlayer(m_application, nullptr);
        row->addWidget(m_ownPlayer);
        host = m_ownPlayer->getCanvasWidget();
    } else if (host) {
        row->addWidget(host);
    }
    m_maskView = new LabCompareMaskView(host);
    connectMaskView();
    connect(row, &LabCompareLayout::subItemsDidChange, this, [this] {
        if (m_maskView)
            m_maskView->raise();
        updateEffect();
    });
}

void QLabComparePlayer::connectMaskView()
{
    connect(m_maskView, &LabCompareMaskView::maskCompareEvent, this, [this](QPointF point) {
        if (m_showType == QLabShowSplit)
            updateMaskEffectPoint(point);
    });
    connect(m_maskView, &LabCompareMaskView::maskChangeSize, this, [this] {
        if (m_limitMoveInVideoRect)
            m_maskView->setLimitRect(fetchVideoRect());
        m_maskView->setHintRect(fetchHintDrawRect());
    });
}

QLabComparePlayer::~QLabComparePlayer()
{
    // The view is the framework's and outlives the player in whose layout it stands.
    QGraphicsView* view = m_application->getGraphicsView();
    if (view && isAncestorOf(view))
        view->setParent(nullptr);
    delete m_ownPlayer; // its bar shows no state any more
    stopOwnTimeline();
    m_shown.release();
    ui.reset();
    delete m_maskView;
    qDebug() << "Complare Player delete";
}

void QLabComparePlayer::setupCompareVideoPath(QString first, QString second, bool isVideo)
{
    if (!exists(first) || !exists(second)) {
        qWarning().noquote().nospace() << QStringLiteral("输入的资源文件已丢失：") << first
                                       << QStringLiteral("或者") << second;
        return;
    }
    qrvkp::RvKpPlayer* player = m_application->getPlayer();
    qrvkp::RvKpTimeLine* previousTimeline = player->getTimeLine();
    const int previousState = player->getState();
    const long long previousPosition = player->getCurrentPosition();
    Shown previous = std::exchange(m_shown, Shown());
    player->stop();
    m_shown.timeline = qrvkp::RvKpTimeLine::create();
    player->setTimeLine(m_shown.timeline);
    const bool isShown = m_shown.timeline && showPair(first, second, isVideo);
    if (isShown) {
        player->prepareAsync();
        if (m_autoPlay)
            player->start();
    } else {
        player->setTimeLine(previousTimeline);
        resume(*player, previousState, previousPosition);
        std::swap(previous, m_shown);
    }
    releaseAndForget(previousTimeline);
    previous.release();
    if (!isShown)
        return;
    limitLine();
    setupShowType(m_showType);
    if (m_maskView)
        m_maskView->setHintRect(fetchHintDrawRect());
}

bool QLabComparePlayer::showPair(const QString& first, const QString& second, bool isVideo)
{
    // The paths change places: the upper track, which is seen right of the line, shows the first.
    if (!showBase(second, isVideo) || !showMix(first, isVideo) || !showMatte())
        return false;
    makeDurationsEqual();
    return true;
}

bool QLabComparePlayer::showBase(const QString& path, bool& isVideo)
{
    m_shown.baseTrack = createEitherTrack(path, isVideo);
    if (!m_shown.baseTrack)
        return false;
    m_shown.baseTrackSize = sizeOf(*m_shown.baseTrack);
    fitToCanvas(*m_shown.baseTrack);
    m_shown.group = qrvkp::RvKpGroup::create(m_shown.baseTrack->getDuration());
    return m_shown.group && m_shown.group->addTrack(m_shown.baseTrack) &&
           m_shown.timeline->pushBackGroup(m_shown.group);
}

bool QLabComparePlayer::showMix(const QString& path, bool& isVideo)
{
    m_shown.mixTrack = createEitherTrack(path, isVideo);
    if (!m_shown.mixTrack)
        return false;
    if (isVideo)
        m_shown.mixTrack->setVolumeAtTime(0.0F, 0);
    m_shown.mixTrackSize = sizeOf(*m_shown.mixTrack);
    m_shown.videoScale = fitToCanvas(*m_shown.mixTrack);
    return m_shown.timeline->addMixTrack(m_shown.mixTrack);
}

bool QLabComparePlayer::showMatte()
{
    m_shown.matteTrack =
        qrvkp::RvTrkMatteEffectTrack::createPathMatteTrack(0, m_shown.mixTrack->getDuration());
    if (!m_shown.matteTrack)
        return false;
    const QSizeF canvas = canvasSize();
    m_shown.matteTrack->setMatteEclosionPercent(0.0F);
    m_shown.matteTrack->setMatteCenter(static_cast<float>(canvas.width() * 0.5),
                                       static_cast<float>(canvas.height() * 0.5));
    m_shown.mixTrack->retain(); // the matte takes a reference over
    if (!m_shown.matteTrack->bind(m_shown.mixTrack, matteBindType))
        return false; // unbound, it would cut the whole canvas
    m_shown.matteTrack->setMatteBlendMode(static_cast<qrvkp::RvMatteBlendMode>(matteBlendMode));
    updateDrawPathWithSizeLimit(false);
    return m_shown.timeline->addMixTrack(m_shown.matteTrack);
}

void QLabComparePlayer::makeDurationsEqual()
{
    const long long base = m_shown.baseTrack->getDuration();
    const long long mix = m_shown.mixTrack->getDuration();
    if (base == mix)
        return;
    const long long longer = std::max(base, mix);
    m_shown.baseTrack->setDuration(longer);
    m_shown.mixTrack->setDuration(longer);
    m_shown.matteTrack->setDuration(longer);
    m_shown.group->setDuration(longer);
    if (m_maskView)
        m_maskView->setThrottle(false);
}

qrvkp::RvIMediaTrack* QLabComparePlayer::createMediaTrack(const QString& path, bool isVideo) const
{
    const std::string file = path.toStdString();
    if (isVideo)
        return qrvkp::RvKpTrack::create(file, 0, -1, 0);
    return qrvkp::RvSpriteTrack::create(file, 0, pictureDuration);
}

qrvkp::RvIMediaTrack* QLabComparePlayer::createEitherTrack(const QString& path, bool& isVideo) const
{
    if (auto* track = createMediaTrack(path, isVideo))
        return track;
    isVideo = !isVideo;
    return createMediaTrack(path, isVideo);
}

float QLabComparePlayer::fitToCanvas(qrvkp::RvIMediaTrack& track) const
{
    const QSizeF canvas = canvasSize();
    const float scale = videoScaleValue(sizeOf(track), canvas);
    track.setCenter(static_cast<float>(canvas.width() * 0.5),
                    static_cast<float>(canvas.height() * 0.5));
    track.setScale(scale);
    return scale;
}

float QLabComparePlayer::videoScaleValue(QSizeF video, QSizeF canvas) const
{
    if (video.isEmpty())
        return 1.0F;
    // One px more than the canvas, so that rounding leaves no seam at its edges.
    const QSizeF fitted = video.scaled(canvas + QSizeF(1.0, 1.0), Qt::KeepAspectRatio);
    return static_cast<float>(fitted.width() / video.width());
}

QSizeF QLabComparePlayer::canvasSize() const
{
    const qrvkp::RvKpConfig* config = m_application->getRvKpConfig();
    return {static_cast<double>(config->getKpSizeWidth()),
            static_cast<double>(config->getKpSizeHeight())};
}

void QLabComparePlayer::setupAutoPlay(bool autoPlay)
{
    m_autoPlay = autoPlay;
}

void QLabComparePlayer::setupShowType(QLabShowType type)
{
    m_showType = type;
    if (type == QLabShowSplit) {
        if (!m_maskView)
            return;
        m_maskView->setVisible(true);
        m_maskView->takeParentSize(); // it may have changed while nothing was painted
        if (m_limitMoveInVideoRect)
            limitLine();
        m_maskView->tellLine();
        return;
    }
    if (!m_shown.mixTrack)
        return;
    const double beyond = 5.0;
    updateMaskEffectCanvesX(
        type == QLabShowEdgeRight ? static_cast<float>(canvasSize().width() + beyond) : 0.0F);
    if (m_maskView)
        m_maskView->hide();
}

QLabComparePlayer::QLabShowType QLabComparePlayer::getShowType() const
{
    return m_showType;
}

void QLabComparePlayer::setupLimitMoveInVideoRect(bool limit)
{
    m_limitMoveInVideoRect = limit;
    limitLine();
}

void QLabComparePlayer::limitLine()
{
    if (m_maskView)
        m_maskView->setLimitRect(m_limitMoveInVideoRect ? fetchVideoRect() : QRect());
}

bool QLabComparePlayer::setVideoFileStartTimeTo(int start, int duration)
{
    auto* base = dynamic_cast<qrvkp::RvKpTrack*>(m_shown.baseTrack);
    auto* mix = dynamic_cast<qrvkp::RvKpTrack*>(m_shown.mixTrack);
    if (!base || !mix)
        return false;
    base->setFileStartTime(start);
    mix->setFileStartTime(start);
    // The mix track keeps its duration.
    base->setDuration(duration);
    m_shown.group->setDuration(duration);
    return true;
}

void QLabComparePlayer::updateEffect()
{
    if (m_showType != QLabShowSplit || !m_maskView)
        return;
    m_maskView->takeParentSize(); // the host may be in the middle of a resize
    m_maskView->setLimitRect(fetchVideoRect());
    m_maskView->tellLine();
    m_maskView->setHintRect(fetchHintDrawRect());
}

QSizeF QLabComparePlayer::getVideoTrackSize() const
{
    return m_shown.baseTrackSize;
}

void QLabComparePlayer::maskMoveToCenter()
{
    if (m_maskView)
        m_maskView->moveToCenter();
}

void QLabComparePlayer::setLineColor(QColor color)
{
    if (m_maskView)
        m_maskView->setLineColor(color);
}

void QLabComparePlayer::setLineWidth(int width)
{
    if (m_maskView)
        m_maskView->setLineWidth(width);
}

void QLabComparePlayer::setIconImage(QImage image)
{
    if (m_maskView)
        m_maskView->setIconImage(image);
}

void QLabComparePlayer::setIconSize(QSize size)
{
    if (m_maskView)
        m_maskView->setIconSize(size);
}

void QLabComparePlayer::setControlWidth(int width)
{
    if (m_maskView)
        m_maskView->setControlWidth(width);
}

QWidget* QLabComparePlayer::getLeftHintWidget()
{
    return m_maskView ? m_maskView->leftHintWidget() : nullptr;
}

QWidget* QLabComparePlayer::getRightHintWidget()
{
    return m_maskView ? m_maskView->rightHintWidget() : nullptr;
}

void QLabComparePlayer::setLeftHintWidget(QWidget* hint)
{
    putInto(getLeftHintWidget(), hint);
}

void QLabComparePlayer::setRightHintWidget(QWidget* hint)
{
    putInto(getRightHintWidget(), hint);
}

void QLabComparePlayer::closeEvent(QCloseEvent* event)
{
    m_application->getPlayer()->stop();
    m_shown.release();
    QWidget::closeEvent(event);
}

void QLabComparePlayer::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // Only what is closed itself is told: what is around has to be watched for that.
    for (QWidget* around = parentWidget(); around; around = around->parentWidget())
        around->installEventFilter(this);
}

bool QLabComparePlayer::eventFilter(QObject* watched, QEvent* event)
{
    auto* const around = qobject_cast<QWidget*>(watched);
    if (around && around->isAncestorOf(this)) {
        if (event->type() == QEvent::Close) {
            m_closing = around;
            // It may refuse, and be hidden later for another reason.
            QMetaObject::invokeMethod(
                this, [this] { m_closing = nullptr; }, Qt::QueuedConnection);
        }
        // A dialog that is done is hidden without being asked to close.
        if (event->type() == QEvent::Hide && !event->spontaneous() &&
            (around == m_closing || qobject_cast<QDialog*>(around)))
            stopOwnTimeline();
    }
    return QWidget::eventFilter(watched, event);
}

void QLabComparePlayer::stopOwnTimeline()
{
    qrvkp::RvKpPlayer* player = m_application->getPlayer();
    qrvkp::RvKpTimeLine* current = player->getTimeLine();
    if (current && current == m_shown.timeline)
        player->stop();
    releaseAndForget(current);
}

QRect QLabComparePlayer::fetchVideoRect() const
{
    return fetchVideoRect(m_maskView ? m_maskView->size() : QSize());
}

QRect QLabComparePlayer::fetchVideoRect(QSize area) const
{
    if (!m_shown.mixTrack)
        return {0, 0, area.width(), area.height()};
    const auto viewX = [this](double trackX) {
        return m_application
            ->convertCanvasToView(
                m_application->convertTrackToCanvas(m_shown.mixTrack, QPointF(trackX, 0.0)))
            .x();
    };
    const double left = viewX(0.0);
    const double right = viewX(static_cast<double>(m_shown.mixTrack->getWidth()));
    return {truncated(left), 0, truncated(right - left), area.height()};
}

QRect QLabComparePlayer::fetchHintDrawRect() const
{
    const QSize area = m_maskView ? m_maskView->size() : QSize();
    QSizeF size = fetchVideoRect(area).size();
    if (m_application->getCanvasScale() < 1.0F)
        size = m_application->getCanvasShowDimension();
    if (!size.isEmpty())
        size.scale(area, Qt::KeepAspectRatio);
    return {truncated((area.width() - size.width()) * 0.5), 0, truncated(size.width()),
            area.height()};
}

void QLabComparePlayer::updateDrawPathWithSizeLimit(bool enable)
{
    m_shown.matteTrack->setEnableDrawPathSizeLimit(enable);
    QSizeF size = m_shown.mixTrackSize;
    if (!size.isEmpty() && std::max(size.width(), size.height()) < smallestPathSide)
        size *= std::min(smallestPathSide / size.width(), smallestPathSide / size.height());
    auto* const rightHalf = new QPainterPath; // the matte takes it over
    rightHalf->addRect(size.width() * 0.5, 0.0, size.width() * 0.5, size.height());
    m_shown.matteTrack->setMattePath(rightHalf, static_cast<float>(size.width()),
                                     static_cast<float>(size.height()), m_shown.videoScale,
                                     static_cast<qrvkp::RvMattePathType>(mattePathType));
}

void QLabComparePlayer::updateMaskEffectCanvesX(float x)
{
    if (m_shown.matteTrack)
        m_shown.matteTrack->setMatteCenter(x, static_cast<float>(canvasSize().height() * 0.5));
}

void QLabComparePlayer::updateMaskEffectPoint(QPointF point)
{
    if (m_shown.mixTrack)
        updateMaskEffectCanvesX(static_cast<float>(m_application->convertViewToCanvas(point).x()));
}
