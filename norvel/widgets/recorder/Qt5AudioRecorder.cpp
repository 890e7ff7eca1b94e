// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/recorder/Qt5AudioRecorder.h>

#include <norvel/widgets/recorder/AudioLevels.h>
#include <norvel/widgets/recorder/OfferedEncoding.h>

#include <QAudioBuffer>
#include <QAudioEncoderSettings>
#include <QAudioProbe>
#include <QAudioRecorder>
#include <QUrl>
#include <QVideoEncoderSettings>

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

} // namespace

Qt5AudioRecorder::Qt5AudioRecorder(QObject* parent)
    : QObject(parent)
    , recorder(new QAudioRecorder(this))
    , probe(new QAudioProbe(this))
{
    connect(probe, &QAudioProbe::audioBufferProbed, this, &Qt5AudioRecorder::processBuffer);
    probe->setSource(recorder);
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
    if (recorder->state() != QMediaRecorder::StoppedState)
        return;
    const QAudioEncoderSettings wanted = recorder->audioSettings();
    const QAudioEncoderSettings offered =
        norvel::offeredEncoding(wanted, recorder->supportedAudioCodecs());
    if (offered != wanted)
        recorder->setEncodingSettings(offered, recorder->videoSettings(),
                                      recorder->containerFormat());
    recorder->record();
}

void Qt5AudioRecorder::stopRecord()
{
    if (recorder->state() != QMediaRecorder::StoppedState)
        recorder->stop();
}

void Qt5AudioRecorder::processBuffer(const QAudioBuffer& buffer)
{
    for (const double level : norvel::getBufferLevels(buffer))
        emit updateProgressBar(level);
}
