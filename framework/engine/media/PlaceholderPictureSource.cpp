// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/base/Utf8.h>

#include "PictureSource.h"

#include <QColor>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace rvengine {

namespace {

constexpr int largestSide = 1920;

/// Draws every layer as a rectangle in a colour of its own, with the name and the time of its file.
class PlaceholderPictures : public PictureSource
{
public:
    QImage picture(const Layer& layer, std::uintptr_t, double fileTime, QSize wanted) override
    {
        const QSize size = sizeFor(layer, wanted);
        QImage picture(size, QImage::Format_RGB32);
        if (picture.isNull())
            return picture;
        const QString name = QFileInfo(textOf(layer.source)).fileName();
        picture.fill(QColor::fromHsv(static_cast<int>(qHash(name) % 360U), 160, 160));
        QPainter painter(&picture);
        painter.setPen(QPen(Qt::white, std::max(2, size.height() / 90)));
        painter.drawRect(picture.rect().adjusted(1, 1, -2, -2));
        // Without a QGuiApplication there are no fonts.
        if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
            QFont font;
            font.setPixelSize(std::max(8, size.height() / 12));
            painter.setFont(font);
            painter.drawText(picture.rect(), Qt::AlignCenter,
                             QStringLiteral("%1\n%2 ms").arg(name).arg(std::llround(fileTime)));
        }
        return picture;
    }

    void prepare(const Layer& /*layer*/, double /*fileTime*/) override {}
    void endFrame() override {}

private:
    static QSize sizeFor(const Layer& layer, QSize wanted)
    {
        if (!wanted.isEmpty())
            return wanted.boundedTo(QSize(largestSide, largestSide));
        const auto side = [](double px) {
            return static_cast<int>(std::clamp(px, 1.0, static_cast<double>(largestSide)));
        };
        return {side(layer.placement.width), side(layer.placement.height)};
    }
};

} // namespace

std::unique_ptr<PictureSource> makePictureSource(MonotonicClock /*now*/, EnoughAsked /*isEnough*/,
                                                 Interrupt /*interrupt*/)
{
    return std::make_unique<PlaceholderPictures>();
}

} // namespace rvengine
