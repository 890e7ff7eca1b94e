// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeBackend.h"

#include "FakePlugin.h"

#include <QAudioEncoderSettingsControl>
#include <QAudioInputSelectorControl>
#include <QCoreApplication>
#include <QMediaAudioProbeControl>
#include <QMediaContainerControl>
#include <QMediaRecorderControl>
#include <QMediaService>
#include <QVideoEncoderSettingsControl>
#include <QtPlugin>

#include <algorithm>
#include <vector>

Q_IMPORT_PLUGIN(FakePlugin)

namespace {

FakeBackend& backend()
{
    return FakeBackend::instance();
}

class Inputs : public QAudioInputSelectorControl
{
public:
    QList<QString> availableInputs() const override
    {
        ++backend().inputLookups;
        return backend().inputs;
    }
    QString inputDescription(const QString& name) const override { return name; }
    QString defaultInput() const override { return backend().defaultInput; }
    QString activeInput() const override { return backend().activeInput; }
    void setActiveInput(const QString& name) override { backend().activeInput = name; }
};

class AudioEncoder : public QAudioEncoderSettingsControl
{
public:
    QStringList supportedAudioCodecs() const override { return backend().codecs; }
    QString codecDescription(const QString& codec) const override { return codec; }
    QList<int> supportedSampleRates(const QAudioEncoderSettings&, bool*) const override
    {
        return {8000, 16000};
    }
    QAudioEncoderSettings audioSettings() const override { return backend().audio; }
    void setAudioSettings(const QAudioEncoderSettings& settings) override
    {
        backend().calls.append("audio");
        backend().audio = settings;
    }
};

class VideoEncoder : public QVideoEncoderSettingsControl
{
public:
    QStringList supportedVideoCodecs() const override { return {}; }
    QString videoCodecDescription(const QString& codec) const override { return codec; }
    QList<QSize> supportedResolutions(const QVideoEncoderSettings&, bool*) const override
    {
        return {};
    }
    QList<qreal> supportedFrameRates(const QVideoEncoderSettings&, bool*) const override
    {
        return {};
    }
    QVideoEncoderSettings videoSettings() const override { return backend().video; }
    void setVideoSettings(const QVideoEncoderSettings& settings) override
    {
        backend().calls.append("video");
        backend().video = settings;
    }
};

class Container : public QMediaContainerControl
{
public:
    QStringList supportedContainers() const override { return {"audio/x-wav"}; }
    QString containerFormat() const override { return backend().container; }
    void setContainerFormat(const QString& format) override
    {
        backend().calls.append("container");
        backend().container = format;
    }
    QString containerDescription(const QString& format) const override { return format; }
};

class Recorder : public QMediaRecorderControl
{
public:
    QUrl outputLocation() const override { return backend().location; }
    bool setOutputLocation(const QUrl& location) override
    {
        backend().calls.append("location");
        backend().location = location;
        return true;
    }
    QMediaRecorder::State state() const override { return backend().state; }
    QMediaRecorder::Status status() const override { return backend().status; }
    qint64 duration() const override { return backend().duration; }
    bool isMuted() const override { return false; }
    qreal volume() const override { return 1.0; }
    void applySettings() override {}
    void setState(QMediaRecorder::State state) override
    {
        const QStringList names{"stop", "record (" + backend().audio.codec() + ")", "pause"};
        backend().calls.append(names[state]);
        if (state == QMediaRecorder::RecordingState) {
            backend().change(state, backend().isSlow ? QMediaRecorder::StartingStatus
                                                     : QMediaRecorder::RecordingStatus);
            if (!backend().actualLocation.isEmpty())
                emit actualLocationChanged(backend().actualLocation);
            if (backend().whenRecording)
                backend().whenRecording();
        } else if (state == QMediaRecorder::StoppedState) {
            if (backend().whenStopping)
                backend().whenStopping();
            backend().change(state, backend().isSlow ? QMediaRecorder::FinalizingStatus
                                                     : QMediaRecorder::LoadedStatus);
        }
    }
    void setMuted(bool) override {}
    void setVolume(qreal) override {}
};

class Probe : public QMediaAudioProbeControl
{
};

class Service;

std::vector<Service*>& services()
{
    static std::vector<Service*> all;
    return all;
}

class Service : public QMediaService
{
public:
    Service()
        : QMediaService(nullptr)
    {
        services().push_back(this);
    }
    ~Service() override { services().erase(std::find(services().begin(), services().end(), this)); }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    QMediaControl* requestControl(const char* name) override
    {
        const QByteArray wanted(name);
        if (wanted == QAudioInputSelectorControl_iid)
            return &m_inputs;
        if (wanted == QAudioEncoderSettingsControl_iid)
            return &m_audio;
        if (wanted == QVideoEncoderSettingsControl_iid)
            return &m_video;
        if (wanted == QMediaContainerControl_iid)
            return &m_container;
        if (wanted == QMediaRecorderControl_iid)
            return &recorder;
        if (wanted == QMediaAudioProbeControl_iid)
            return &probe;
        return nullptr;
    }
    void releaseControl(QMediaControl*) override {}

    Probe probe;
    Recorder recorder;

private:
    Inputs m_inputs;
    AudioEncoder m_audio;
    VideoEncoder m_video;
    Container m_container;
};

} // namespace

FakeBackend& FakeBackend::instance()
{
    static FakeBackend backend = [] {
        QCoreApplication::setLibraryPaths({});
        return FakeBackend();
    }();
    return backend;
}

void FakeBackend::probe(const QAudioBuffer& buffer) const
{
    for (Service* service : services())
        emit service->probe.audioBufferProbed(buffer);
}

void FakeBackend::change(QMediaRecorder::State newState, QMediaRecorder::Status newStatus)
{
    state = newState;
    status = newStatus;
    for (Service* service : services()) {
        emit service->recorder.stateChanged(state);
        emit service->recorder.statusChanged(status);
    }
}

void FakeBackend::fail()
{
    for (Service* service : services())
        emit service->recorder.error(QMediaRecorder::ResourceError, "as a test wants it");
    change(QMediaRecorder::StoppedState, QMediaRecorder::LoadedStatus);
}

std::size_t FakeBackend::recorderCount()
{
    return services().size();
}

QMediaService* FakePlugin::create(const QString&)
{
    return new Service;
}

void FakePlugin::release(QMediaService* service)
{
    delete service;
}
