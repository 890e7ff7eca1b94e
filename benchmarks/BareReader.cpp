// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "BareReader.h"

#include <array>
#include <cmath>

std::unique_ptr<BareReader> BareReader::open(const std::string& path, int threads)
{
    std::unique_ptr<BareReader> reader(new BareReader);
    AVFormatContext* file = nullptr;
    if (avformat_open_input(&file, path.c_str(), nullptr, nullptr) < 0)
        return nullptr;
    reader->m_file.reset(file);
    return reader->openCodec(threads) ? std::move(reader) : nullptr;
}

bool BareReader::openCodec(int threads)
{
    if (avformat_find_stream_info(m_file.get(), nullptr) < 0)
        return false;
    const AVCodec* decoder = nullptr;
    m_stream = av_find_best_stream(m_file.get(), AVMEDIA_TYPE_VIDEO, -1, -1, &decoder, 0);
    if (m_stream < 0)
        return false;
    for (unsigned i = 0; i < m_file->nb_streams; ++i) {
        if (static_cast<int>(i) != m_stream)
            m_file->streams[i]->discard = AVDISCARD_ALL;
    }
    m_codec.reset(avcodec_alloc_context3(decoder));
    const AVStream& stream = *m_file->streams[m_stream];
    avcodec_parameters_to_context(m_codec.get(), stream.codecpar);
    m_codec->pkt_timebase = stream.time_base;
    m_codec->thread_count = threads;
    return avcodec_open2(m_codec.get(), decoder, nullptr) >= 0;
}

bool BareReader::next()
{
    while (true) {
        const int result = avcodec_receive_frame(m_codec.get(), m_frame.get());
        if (result != AVERROR(EAGAIN))
            return result >= 0;
        if (av_read_frame(m_file.get(), m_packet.get()) < 0) {
            avcodec_send_packet(m_codec.get(), nullptr);
            continue;
        }
        if (m_packet->stream_index == m_stream)
            avcodec_send_packet(m_codec.get(), m_packet.get());
        av_packet_unref(m_packet.get());
    }
}

bool BareReader::goToKeyFrame(std::int64_t stamp)
{
    if (av_seek_frame(m_file.get(), m_stream, stamp, AVSEEK_FLAG_BACKWARD) < 0)
        return false;
    avcodec_flush_buffers(m_codec.get());
    return true;
}

bool BareReader::rewind()
{
    return goToKeyFrame(0);
}

bool BareReader::seek(double time)
{
    const AVRational base = m_file->streams[m_stream]->time_base;
    const auto stamp = static_cast<std::int64_t>(std::floor(time / av_q2d(base)));
    if (!goToKeyFrame(stamp))
        return false;
    while (next()) {
        if (m_frame->best_effort_timestamp + m_frame->pkt_duration > stamp)
            return true;
    }
    return false;
}

const QImage& BareReader::image(QSize size)
{
    if (m_image.size() != size) {
        m_image = QImage(size, QImage::Format_RGB32);
        const bool isWhole = size == QSize(m_frame->width, m_frame->height);
        m_scaler.reset(sws_getContext(
            m_frame->width, m_frame->height, static_cast<AVPixelFormat>(m_frame->format),
            size.width(), size.height(), AV_PIX_FMT_BGRA,
            isWhole ? SWS_FAST_BILINEAR : SWS_BILINEAR, nullptr, nullptr, nullptr));
        constexpr int one = 1 << 16; // brightness 0, contrast and saturation 1 for swscale
        const int* const colors =
            sws_getCoefficients(m_frame->height >= 720 ? SWS_CS_ITU709 : SWS_CS_ITU601);
        sws_setColorspaceDetails(m_scaler.get(), colors, 0, colors, 1, 0, one, one);
    }
    const std::array<std::uint8_t*, 4> out{m_image.bits()};
    const std::array<int, 4> strides{m_image.bytesPerLine()};
    sws_scale(m_scaler.get(), m_frame->data, m_frame->linesize, 0, m_frame->height, out.data(),
              strides.data());
    return m_image;
}
