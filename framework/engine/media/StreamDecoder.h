// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/Interrupt.h>

#include "DecoderThreads.h"
#include "Ffmpeg.h"
#include "MediaFile.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>

namespace rvengine {

/// Decodes one stream of a media file, in the order in which it is seen or heard. Used by one
/// thread at a time.
class StreamDecoder
{
public:
    /// Decodes the pictures of the file; null when it has none that can be decoded.
    static std::unique_ptr<StreamDecoder> openVideo(const std::string& path, Interrupt interrupt);
    /// Decodes the sound of the file; null when it has none that can be decoded.
    static std::unique_ptr<StreamDecoder> openSound(const std::string& path, Interrupt interrupt);

    /// The next picture or block of samples, with its time stamp in `pts`; null at the end, and
    /// from then on until the next `seek`. What is broken is left out.
    FramePointer next();
    /// Whether `next` came to the end of the file, and was not only interrupted.
    bool isAtEnd() const { return m_isAtEnd; }
    /// The next frame is that of a key frame at or before `time`, seconds since the file's start,
    /// as far as the container tells where that is; at 0 it is the first one of the file. False
    /// when the container cannot tell: it is the first one then, too.
    bool seek(double time);
    /// Whether `seek` finds something nearer to `time` than to decode on.
    bool isWorthSeeking(double time) const;

    /// Ends its threads, which others may have then, until the next `seek`; there is no `next`
    /// before.
    void rest();

    /// When the frame begins, seconds since the file's start.
    double timeOf(const AVFrame& frame) const;
    /// How many samples the first frame of sound has: that may be a part of one.
    int firstSamples() const { return m_firstSamples; }
    /// How many samples each of the others has; 0 when their numbers differ.
    int frameSamples() const { return m_frameSamples; }
    const MediaFile& file() const { return *m_file; }
    const AVStream& stream() const { return *m_stream; }
    const AVCodecContext& codec() const { return *m_codec; }

private:
    enum class Kind { Video, Sound };

    StreamDecoder(std::string path, Kind kind, Interrupt interrupt);
    static std::unique_ptr<StreamDecoder> opened(const std::string& path, Kind kind,
                                                 Interrupt interrupt);
    bool open();
    bool openCodec();
    bool canSeek(bool isToStart) const;
    bool emptyCodec();
    void forgetPosition();
    void meetFirstSound();
    FramePointer decodeNext();
    int sendNextPacket();
    bool isDecodable(const AVPacket& packet);
    void stamp(AVFrame& frame);

    const std::string m_path;
    const Kind m_kind;
    const Interrupt m_interrupt;
    std::unique_ptr<DecoderThreads> m_threads; ///< null for sound, and while it rests
    std::unique_ptr<MediaFile> m_file;
    AVStream* m_stream = nullptr;
    double m_start = 0.0; ///< the time stamp at which the file begins, seconds
    CodecPointer m_codec;
    PacketPointer m_packet;
    std::deque<FramePointer> m_waiting; ///< were decoded already and are the next ones
    int m_firstSamples = 0;
    int m_frameSamples = 0;
    bool m_isTimed = true;      ///< after a jump its time stamps tell where it ended
    bool m_isAfterJump = false; ///< nothing was decoded since
    bool m_isDraining = false;
    bool m_isAtEnd = false;
    std::int64_t m_nextStamp = AV_NOPTS_VALUE; ///< where the frame that was given last ends
    std::int64_t m_lastRead = AV_NOPTS_VALUE;  ///< the decoding time of the last packet
    int m_skippable = 0; ///< packets that may still be skipped on the way to a key frame
    /// Pictures before this one refer to others that were not decoded.
    std::int64_t m_firstStamp = AV_NOPTS_VALUE;
};

} // namespace rvengine
