// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/recorder/Qt5AudioRecorder.h>

#include <norvel/widgets/recorder/AudioLevels.h>
#include <norvel/widgets/recorder/OfferedEncoding.h>

#include <QAudioBuffer>
#include <QAudioEncoderSettings>
#include <QAudioProbe>
#include <QAudioRecorder>
#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <QVideoEncoderSettings>

#include <vector>

namespace {

/// A quality that has no name: backends take the number as it is.
QMultimedia::EncodingQuality quality(int number)
{
    return static_cast<QMultimedia::EncodingQuality>(number);
}

QAudioEncoderSettings recordingSettings()
{
    QAudioEncoderSettings settings;
    settings.setCodec(QStringLiteral("audio/amr"));
    settings.setSampleRate(16000);
    settings.setBitRate(128000);
    settings.setQuality(quality(10));
    settings.setEncodingMode(QMultimedia::ConstantBitRateEncoding);
    return settings;
}

/// How often a wait looks whether it is over.
constexpr int tickMs = 10;

bool isSamePath(const QString& a, const QString& b)
{
    return QFileInfo(a).absoluteFilePath() == QFileInfo(b).absoluteFilePath();
}

} // namespace

Qt5AudioRecorder::Qt5AudioRecorder(QObject* parent)
    : QObject(parent)
    , recorder(new QAudioRecorder(this))
    , probe(new QAudioProbe(this))
{
    connect(probe, &QAudioProbe::audioBufferProbed, this, &Qt5AudioRecorder::processBuffer);
    probe->setSource(recorder);
    const auto settle = [this] {
        if (isOver())
            settleKeptFile();
    };
    connect(recorder, &QMediaRecorder::stateChanged, this, settle);
    connect(recorder, &QMediaRecorder::statusChanged, this, settle);
}

QStringList Qt5AudioRecorder::audioInputs() const
{
    if (!recorder)
        return {};
    // The platform is asked twice, and the second answer counts; the first one does no harm.
    recorder->audioInputs();
    return recorder->audioInputs();
}

void Qt5AudioRecorder::setupRecorder(const QString&)
{
    recorder->setAudioInput(recorder->defaultAudioInput());
    recorder->setEncodingSettings(recordingSettings(), QVideoEncoderSettings(), QString());
}

void Qt5AudioRecorder::setOutputFile(const QString& path)
{
    recorder->setOutputLocation(QUrl::fromLocalFile(path));
}

void Qt5AudioRecorder::startRecord()
{
    want(true);
    // A backend that has not completed a file yet takes the next recording for its rest.
    const bool isAlive = waitWhile([this] {
        return isWanted && recorder->state() == QMediaRecorder::StoppedState && !isOver();
    });
    if (!isAlive || !isWanted || recorder->state() != QMediaRecorder::StoppedState)
        return;
    const QAudioEncoderSettings wanted = recorder->audioSettings();
    const QAudioEncoderSettings offered =
        norvel::offeredEncoding(wanted, recorder->supportedAudioCodecs());
    if (offered != wanted)
        recorder->setEncodingSettings(offered, recorder->videoSettings(),
                                      recorder->containerFormat());
    record();
}

void Qt5AudioRecorder::stopRecord()
{
    want(false);
    // A backend that is stopped while it opens the device does not tell when the file is complete.
    if (!waitWhile([this] { return !isWanted && isStarting(); }) || isWanted)
        return;
    hasLength = hasLength || recorder->duration() > 0;
    if (recorder->state() != QMediaRecorder::StoppedState)
        recorder->stop();
}

void Qt5AudioRecorder::finishRecord()
{
    const QPointer<Qt5AudioRecorder> self(this);
    stopRecord();
    if (self && waitWhile([this] { return !isWanted && !isOver(); }) && !isWanted)
        settleKeptFile();
}

void Qt5AudioRecorder::setWaitLimit(int milliseconds)
{
    waitLimit = milliseconds;
}

void Qt5AudioRecorder::processBuffer(const QAudioBuffer& buffer)
{
    isHeard = isHeard || buffer.frameCount() > 0;
    hasLength = hasLength || recorder->duration() > 0;
    for (const double level : norvel::getBufferLevels(buffer))
        emit updateProgressBar(level);
}

void Qt5AudioRecorder::want(bool recording)
{
    if (isWanted != recording)
        deadline.setRemainingTime(waitLimit);
    isWanted = recording;
}

/// Runs the event loop while the condition holds and the deadline is not over; returns whether the
/// object is still there.
template <class Condition>
bool Qt5AudioRecorder::waitWhile(const Condition& holds)
{
    if (deadline.hasExpired() || !holds())
        return true;
    const QPointer<Qt5AudioRecorder> self(this);
    // Not every dispatcher returns with the event that ends the wait, and none looks at the time.
    QTimer tick;
    tick.start(tickMs);
    // A QEventLoop of its own would be over at once while the application quits.
    while (self && holds() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                        QEventLoop::WaitForMoreEvents);
    return !self.isNull();
}

bool Qt5AudioRecorder::isStarting() const
{
    return recorder->state() != QMediaRecorder::StoppedState &&
           recorder->status() == QMediaRecorder::StartingStatus &&
           recorder->error() == QMediaRecorder::NoError;
}

/// Whether nothing is recorded and the file is complete: the state alone says less.
bool Qt5AudioRecorder::isOver() const
{
    return recorder->state() == QMediaRecorder::StoppedState &&
           recorder->status() <= QMediaRecorder::LoadedStatus;
}

/// Sound that came in is lost if the encoder failed, and a short recording may have no length.
bool Qt5AudioRecorder::hasRecorded() const
{
    return hasLength || (isHeard && recorder->error() == QMediaRecorder::NoError);
}

void Qt5AudioRecorder::record()
{
    settleKeptFile();
    isHeard = false;
    hasLength = false;
    const std::vector<norvel::KeptFile> files = setFilesAside();
    recorder->record();
    const QString written = recorder->actualLocation().toLocalFile();
    for (const norvel::KeptFile& file : files) {
        if (written.isEmpty() || isSamePath(file.path(), written))
            keptFile = file;
        else
            file.putBack();
    }
    if (isOver())
        settleKeptFile();
}

/// The files that the recording may take the place of: which one it does is known when it has
/// started, for Qt's backend for Windows appends an extension.
std::vector<norvel::KeptFile> Qt5AudioRecorder::setFilesAside() const
{
    const QString path = recorder->outputLocation().toLocalFile();
    std::vector<norvel::KeptFile> files;
    if (path.isEmpty())
        return files;
    for (const QString& candidate : {path + QStringLiteral(".wav"), path}) {
        if (const auto file = norvel::KeptFile::setAside(candidate))
            files.push_back(*file);
    }
    return files;
}

void Qt5AudioRecorder::settleKeptFile()
{
    if (!keptFile)
        return;
    if (!hasRecorded()) {
        if (keptFile->putBack())
            keptFile.reset();
    } else if (isOver()) {
        if (recorder->error() == QMediaRecorder::NoError)
            keptFile->remove();
        keptFile.reset();
    }
}
