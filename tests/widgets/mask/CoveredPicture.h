// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/support/ShownEditor.h"

#include <QImage>
#include <QWidget>

#include <memory>

/// A picture of 400 x 300 in the editor's window, covered by a view of the kind under test.
template <class View>
class CoveredPicture : public ShownEditor
{
protected:
    void SetUp() override
    {
        ShownEditor::SetUp();
        if (HasFatalFailure())
            return;
        m_picture = std::make_unique<QWidget>(window.get());
        m_picture->setGeometry(0, 0, 400, 300);
        covering = new View(m_picture.get());
        m_picture->show();
        shown(); // takes the parent's size
    }
    void TearDown() override
    {
        m_picture.reset();
        ShownEditor::TearDown();
    }

    QWidget& picture() { return *m_picture; }

    /// What the view shows, without its parent.
    QImage shown() const
    {
        QImage image(400, 300, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        covering->render(&image, {}, {}, {});
        return image;
    }

    View* covering = nullptr; ///< belongs to the picture

private:
    std::unique_ptr<QWidget> m_picture;
};
