// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "DisplayGeometry.h"
#include "MediaFile.h"
#include "PictureConverter.h"
#include "PictureDecoder.h"

namespace rvengine {

namespace {

constexpr std::int64_t mostPixels = std::int64_t{16384} * 16384;

FramePointer decoded(const AVCodecParameters& parameters, const AVPacket& packet)
{
    const AVCodec* const decoder = avcodec_find_decoder(parameters.codec_id);
    const CodecPointer codec(decoder ? avcodec_alloc_context3(decoder) : nullptr);
    FramePointer frame(av_frame_alloc());
    if (!codec || !frame || avcodec_parameters_to_context(codec.get(), &parameters) < 0)
        return nullptr;
    codec->max_pixels = mostPixels;
    codec->thread_count = 1;
    // A part of a picture is none. That of TIFF is strict by itself, and would take any tag that it
    // does not know for an error.
    if (parameters.codec_id != AV_CODEC_ID_TIFF)
        codec->err_recognition = AV_EF_EXPLODE;
    if (avcodec_open2(codec.get(), decoder, nullptr) < 0 ||
        avcodec_send_packet(codec.get(), &packet) < 0)
        return nullptr;
    avcodec_send_packet(codec.get(), nullptr);
    const bool isWhole = avcodec_receive_frame(codec.get(), frame.get()) >= 0 &&
                         (frame->flags & AV_FRAME_FLAG_CORRUPT) == 0 &&
                         frame->decode_error_flags == 0;
    return isWhole ? std::move(frame) : nullptr;
}

FramePointer firstFrame(const std::filesystem::path& path)
{
    const auto file = MediaFile::open(path.u8string());
    const PacketPointer packet(av_packet_alloc());
    if (!file || !packet || !file->isPictureFormat())
        return nullptr;
    file->readOnly(file->video());
    if (file->read(packet.get()) < 0)
        return nullptr;
    return decoded(*file->video()->codecpar, *packet);
}

} // namespace

QImage decodePicture(const std::filesystem::path& path)
{
    const FramePointer frame = firstFrame(path);
    return frame ? PictureConverter().toImage(*frame, QSize(frame->width, frame->height))
                 : QImage();
}

} // namespace rvengine
