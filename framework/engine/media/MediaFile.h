// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/Interrupt.h>

#include "Ffmpeg.h"
#include "MediaInfo.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace rvengine {

/// An open media file: where its streams are, and their packets. Used by one thread at a time.
///
/// Nothing but the one local file is ever read, whatever a playlist or a description inside names.
class MediaFile
{
public:
    /// How long it may take to find out what a file holds.
    static constexpr std::chrono::seconds LongestProbing{15};

    /// Null when there is no file that can be read, or nothing to be seen or heard in it.
    static std::unique_ptr<MediaFile> open(const std::string& path, Interrupt interrupt = {});
    ~MediaFile();
    MediaFile(const MediaFile&) = delete;
    MediaFile& operator=(const MediaFile&) = delete;

    /// The moving pictures; null when there are none. The cover of a sound file is none.
    AVStream* video() const { return m_video; }
    /// The sound; null when there is none.
    AVStream* sound() const { return m_sound; }
    AVFormatContext* format() const;

    /// The time stamp of the stream, in seconds, at which the file begins: when the first of its
    /// pictures and sounds does. Pictures and sounds that begin almost together do so at once.
    double startFor(const AVStream* stream) const;
    /// Whether the container tells where its key frames are, now or once it is read.
    bool hasIndex() const;
    /// The same for the sound, of which what is heard first has the time stamp `first`, in seconds.
    double startOfSound(double first) const;
    /// From there to the end of its last picture or sound, seconds; nothing when that cannot be
    /// known. Reads the whole file where nothing else tells, and leaves it at its end then.
    std::optional<double> measureLength();
    /// Whether the format is that of still pictures, of which there is one.
    bool isPictureFormat() const;
    /// Whether the only picture is all that the video has. Leaves the file behind that picture.
    bool isSinglePicture();

    /// Reads nothing but the packets of this stream from now on.
    void readOnly(const AVStream* stream);
    /// The next packet into `packet`; 0, or FFmpeg's error, which is AVERROR_EOF at the end.
    int read(AVPacket* packet);
    /// Goes to a key frame at or before `time`, seconds since the start, or to where the container
    /// believes that one is. False when it cannot be done: the file is then to be opened anew.
    bool seek(const AVStream* stream, double time);

private:
    struct Input;
    explicit MediaFile(std::unique_ptr<Input> input);

    bool findStreams();
    std::optional<double> toldLength() const;
    std::optional<double> scannedLength();
    void noteEnd(const AVPacket& packet);

    const std::unique_ptr<Input> m_input;
    AVStream* m_video = nullptr;
    AVStream* m_sound = nullptr;
    double m_start = 0.0;
    double m_readTo = 0.0; ///< where the packets end that were read to measure the file
};

/// A time stamp of a stream in seconds.
inline double secondsOf(long long stamp, AVRational base)
{
    return static_cast<double>(stamp) * base.num / base.den;
}

} // namespace rvengine
