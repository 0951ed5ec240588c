// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "virtual_camera/viewer/camera_picture.h"

namespace virtual_camera {

namespace {

constexpr QSize size(320, 180);

View still()
{
    View view;
    view.autoFocus = false;
    return view;
}

class Picture : public testing::Test
{
protected:
    Picture()
    {
        picture.resize(size);
        picture.show();
        picture.report(still());
    }

    CameraPicture picture{ QStringLiteral("CAM1"), size };
};

} // namespace

TEST_F(Picture, FollowsTheCamera)
{
    const QImage before = picture.frame();
    View moved = still();
    moved.pan = 20;
    picture.report(moved);
    EXPECT_NE(picture.frame(), before);
}

TEST_F(Picture, StaysAsItWasWhileItIsFrozen)
{
    View view = still();
    view.freeze = true;
    picture.report(view);
    const QImage frozen = picture.frame();
    view.pan = 20;
    view.mirror = true;
    picture.report(view);
    EXPECT_EQ(picture.frame(), frozen);
    view.freeze = false;
    picture.report(view);
    EXPECT_NE(picture.frame(), frozen);
}

TEST_F(Picture, StaysAsItWasWhileAFrozenCameraFocuses)
{
    View view = still();
    view.focus = 1;
    picture.report(view);
    view.freeze = true;
    view.autoFocus = true;
    picture.report(view);
    const QImage frozen = picture.frame();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !picture.animated(); }, 10000));
    EXPECT_EQ(picture.frame(), frozen);
    view.freeze = false;
    picture.report(view);
    EXPECT_NE(picture.frame(), frozen);
}

TEST_F(Picture, WearsASignWhileTheCameraIsMuted)
{
    const QRect corner(size.width() * 3 / 4, 0, size.width() / 4, size.height() / 4);
    const QImage before = picture.grab().toImage();
    View muted = still();
    muted.mute = true;
    picture.report(muted);
    const QImage after = picture.grab().toImage();
    EXPECT_NE(after.copy(corner), before.copy(corner));
    EXPECT_EQ(
        picture.frame().copy(corner), before.copy(corner).convertToFormat(QImage::Format_RGB32))
        << "the sign is not in the picture that the camera sends";
}

TEST_F(Picture, WearsASignWhileTheCameraFrames)
{
    View framing = still();
    framing.framing = true;
    picture.report(framing);
    const QImage with = picture.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QRect corner(size.width() * 3 / 4, 0, size.width() / 4, size.height() / 4);
    EXPECT_NE(with.copy(corner), picture.frame().copy(corner));
}

TEST_F(Picture, IsUpToDateWhenItIsShownAgain)
{
    picture.hide();
    View moved = still();
    moved.pan = 20;
    picture.report(moved);
    picture.show();
    CameraPicture other{ QStringLiteral("CAM1"), size };
    other.resize(size);
    other.report(moved);
    EXPECT_EQ(picture.grab().toImage(), other.grab().toImage());
}

TEST_F(Picture, IsDarkWhileTheCameraIsUnplugged)
{
    View unplugged = still();
    unplugged.powered = false;
    picture.report(unplugged);
    const QImage shown = picture.grab().toImage();
    EXPECT_LT(qGray(shown.pixel(2, 2)), 40);
    EXPECT_LT(qGray(shown.pixel(size.width() - 3, size.height() - 3)), 40);
}

TEST_F(Picture, RunsOnlyWhileSomethingMoves)
{
    EXPECT_FALSE(picture.animated());
    View focusing = still();
    focusing.autoFocus = true;
    picture.report(focusing);
    EXPECT_TRUE(picture.animated());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !picture.animated(); }, 10000));
}

TEST_F(Picture, IsChosenWithAClick)
{
    QSignalSpy clicks(&picture, &CameraPicture::clicked);
    QTest::mouseClick(&picture, Qt::LeftButton);
    EXPECT_EQ(clicks.count(), 1);
}

} // namespace virtual_camera
