// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/player/QLabPlayerForm.h>

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

void QLabPlayerForm::setupUi(QWidget* player)
{
    if (player->objectName().isEmpty())
        player->setObjectName(QStringLiteral("QLabPlayer"));
    player->resize(429, 537);

    verticalLayout_2 = new QVBoxLayout(player);
    verticalLayout_2->setSpacing(0);
    verticalLayout_2->setObjectName(QStringLiteral("verticalLayout_2"));
    verticalLayout_2->setContentsMargins(0, 0, 0, 0);

    playBackWidget = new QWidget(player);
    playBackWidget->setObjectName(QStringLiteral("playBackWidget"));
    QSizePolicy expanding(QSizePolicy::Expanding, QSizePolicy::Expanding);
    expanding.setHorizontalStretch(0);
    expanding.setVerticalStretch(0);
    playBackWidget->setSizePolicy(expanding);
    playBackWidget->setStyleSheet(QString());
    verticalLayout_2->addWidget(playBackWidget);

    setupControls(player);
    retranslateUi(player);
    QMetaObject::connectSlotsByName(player);
}

void QLabPlayerForm::setupControls(QWidget* player)
{
    widget = new QWidget(player);
    widget->setObjectName(QStringLiteral("widget"));
    widget->setMaximumSize(QSize(16777215, 40));
    horizontalLayout_2 = new QHBoxLayout(widget);
    horizontalLayout_2->setObjectName(QStringLiteral("horizontalLayout_2"));
    horizontalLayout_2->setContentsMargins(12, 12, 0, -1);

    timeLabel = new QLabel(widget);
    timeLabel->setObjectName(QStringLiteral("timeLabel"));
    timeLabel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    timeLabel->setStyleSheet(QStringLiteral("color:rgb(187,187,187)"));
    horizontalLayout_2->addWidget(timeLabel);

    playButton = new QPushButton(widget);
    playButton->setObjectName(QStringLiteral("playButton"));
    playButton->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    playButton->setMinimumSize(QSize(60, 0));
    playButton->setMaximumSize(QSize(60, 60));
    playButton->setStyleSheet(QStringLiteral("border:0;color:gray;"));
    horizontalLayout_2->addWidget(playButton);

    widget_2 = new QWidget(widget);
    widget_2->setObjectName(QStringLiteral("widget_2"));
    horizontalLayout_2->addWidget(widget_2);
    verticalLayout_2->addWidget(widget);
}

void QLabPlayerForm::retranslateUi(QWidget* player)
{
    player->setWindowTitle(QCoreApplication::translate("QLabPlayer", "Form"));
    timeLabel->setText(QCoreApplication::translate("QLabPlayer", "00/00"));
    playButton->setText(QString());
}
