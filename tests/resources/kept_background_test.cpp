// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QImage>
#include <QWidget>

#include <gtest/gtest.h>

#include "resources/img/scaled_pictures.h"

namespace {

const QString path = QStringLiteral(":/img/background.png");
const QString sheet = QStringLiteral("#panel{ background-image: url(:/img/background.png); "
                                     "border: 2px solid gray; border-radius: 32px; }");

struct Panel : QWidget
{
    explicit Panel(const QString &look)
    {
        panel.setObjectName(QStringLiteral("panel"));
        panel.resize(326, 436);
        resize(panel.size());
        setAttribute(Qt::WA_TranslucentBackground);
        setStyleSheet(look);
    }
    QImage picture() { return grab().toImage(); }

    QWidget panel{ this };
};

TEST(KeptBackground, LooksAsTheStyleSheetDrawsIt)
{
    Panel drawn(sheet);
    Panel kept(sheet);
    keepBackground(kept.panel, path);
    EXPECT_FALSE(kept.panel.testAttribute(Qt::WA_StyledBackground));
    EXPECT_EQ(kept.picture(), drawn.picture());
    EXPECT_EQ(kept.picture(), drawn.picture());
    EXPECT_NE(kept.picture(), Panel(QString()).picture());
}

TEST(KeptBackground, FollowsTheStyleSheet)
{
    Panel kept(sheet);
    keepBackground(kept.panel, path);
    kept.picture();
    const QString other = QStringLiteral("#panel{ border: 4px solid red; border-radius: 9px; }");
    kept.setStyleSheet(other);
    EXPECT_EQ(kept.picture(), Panel(other).picture());
}

} // namespace
