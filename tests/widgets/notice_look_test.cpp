// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Both notices as they stand on the screen: form, window, pictures, texts.

#include <QFile>
#include <QMetaMethod>
#include <QRegularExpression>
#include <QTranslator>

#include <set>
#include <utility>

#include "tests/widgets/notice_fixture.h"

namespace {

TYPED_TEST_SUITE(NoticeTest, Notices, NoticeName);

TYPED_TEST(NoticeTest, IsBuiltLikeItsForm)
{
    using Is = Expected<TypeParam>;
    TypeParam notice;
    EXPECT_STREQ(notice.metaObject()->className(), Is::name);
    EXPECT_EQ(notice.objectName(), Is::name);
    EXPECT_EQ(notice.windowTitle(), "Dialog");
    EXPECT_EQ(notice.styleSheet(), Is::styleSheet);
    EXPECT_EQ(notice.parent(), nullptr);

    ASSERT_EQ(notice.children().size(), 1);
    auto *face = qobject_cast<QWidget *>(notice.children().first());
    ASSERT_NE(face, nullptr);
    EXPECT_STREQ(face->metaObject()->className(), "QWidget");
    EXPECT_EQ(face->objectName(), "widget");
    EXPECT_EQ(face->geometry(), QRect(0, 0, 326, 187));
    EXPECT_EQ(face->styleSheet(), "");

    const std::vector<ButtonRow> rows = Is::buttons();
    ASSERT_EQ(face->children().size(), static_cast<int>(rows.size()));
    int index = 0;
    for (const ButtonRow &row : rows) {
        auto *button = qobject_cast<QPushButton *>(face->children().at(index++));
        ASSERT_NE(button, nullptr) << row.name;
        EXPECT_EQ(button->objectName(), row.name);
        EXPECT_EQ(button->geometry(), row.geometry) << row.name;
        EXPECT_EQ(button->styleSheet(), row.styleSheet) << row.name;
        EXPECT_EQ(button->text(), "") << row.name;
        EXPECT_TRUE(button->isFlat()) << row.name;
        EXPECT_FALSE(button->autoDefault()) << row.name;
        EXPECT_FALSE(button->isDefault()) << row.name;
    }
}

TYPED_TEST(NoticeTest, IsAFramelessTranslucentWindowOfFixedSize)
{
    TypeParam notice;
    EXPECT_TRUE(notice.isHidden());
    EXPECT_TRUE(notice.isWindow());
    EXPECT_EQ(notice.windowFlags(), Qt::Window | Qt::FramelessWindowHint);
    EXPECT_TRUE(notice.testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_EQ(notice.size(), QSize(326, 187));
    EXPECT_EQ(notice.minimumSize(), QSize(326, 187));
    EXPECT_EQ(notice.maximumSize(), QSize(326, 187));
}

TYPED_TEST(NoticeTest, SpeaksToScreenReaders)
{
    TypeParam notice;
    std::set<QString> names;
    QList<QWidget *> controls{ &notice };
    for (QPushButton *button : notice.template findChildren<QPushButton *>())
        controls.append(button);
    for (const QWidget *control : qAsConst(controls)) {
        EXPECT_NE(control->accessibleName(), "") << qPrintable(control->objectName());
        EXPECT_NE(control->accessibleDescription(), "") << qPrintable(control->objectName());
        EXPECT_TRUE(names.insert(control->accessibleName()).second)
            << qPrintable(control->accessibleName());
    }
}

TYPED_TEST(NoticeTest, ButtonsLeaveTheKeyboardAloneWhenClicked)
{
    TypeParam notice;
    for (const QPushButton *button : notice.template findChildren<QPushButton *>())
        EXPECT_EQ(button->focusPolicy(), Qt::TabFocus) << qPrintable(button->objectName());
}

TYPED_TEST(NoticeTest, EveryPictureExists)
{
    TypeParam notice;
    QString sheets = notice.styleSheet();
    for (const QPushButton *button : notice.template findChildren<QPushButton *>())
        sheets += button->styleSheet();
    QRegularExpressionMatchIterator paths =
        QRegularExpression("url\\(([^)]*)\\)").globalMatch(sheets);
    int found = 0;
    while (paths.hasNext()) {
        const QString path = paths.next().captured(1);
        EXPECT_TRUE(QFile::exists(path)) << qPrintable(path);
        ++found;
    }
    EXPECT_EQ(found, 1 + static_cast<int>(Expected<TypeParam>::buttons().size()));
}

class Listener : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        heard.insert({ context, text });
        return QString::fromLatin1("<%1>").arg(QLatin1String(text));
    }
    mutable std::set<std::pair<std::string, std::string>> heard;
};

TYPED_TEST(NoticeTest, TitleIsTranslatedInTheContextOfTheClass)
{
    Listener listener;
    QCoreApplication::installTranslator(&listener);
    TypeParam notice;
    QCoreApplication::removeTranslator(&listener);
    EXPECT_EQ(notice.windowTitle(), "<Dialog>");
    EXPECT_EQ(listener.heard.count({ Expected<TypeParam>::name, "Dialog" }), 1U);
}

TYPED_TEST(NoticeTest, DeclaresItsSlotsInOrderAndNoSignals)
{
    const QMetaObject &meta = TypeParam::staticMetaObject;
    EXPECT_STREQ(meta.superClass()->className(), "QDialog");
    QList<QByteArray> slotNames;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        EXPECT_EQ(meta.method(index).methodType(), QMetaMethod::Slot);
        slotNames.append(meta.method(index).methodSignature());
    }
    EXPECT_EQ(slotNames, Expected<TypeParam>::slotNames());
}

} // namespace
