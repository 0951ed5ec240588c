// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a screen reader is told that a choice is about.

#include "desktop/accessible_choices.h"

#include <QAccessible>
#include <QComboBox>

#include <gtest/gtest.h>

namespace {

TEST(AccessibleChoices, AreLabelledByTheirAccessibleName)
{
    QWidget window;
    auto *const choice = new QComboBox(&window);
    choice->addItems({ "OFF", "50HZ" });
    choice->setAccessibleName("Anti-flicker");
    desktop::labelChoices(window);
    window.show();

    const auto labels =
        QAccessible::queryAccessibleInterface(choice)->relations(QAccessible::Label);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.first().first->text(QAccessible::Name), QString("Anti-flicker"));
    EXPECT_TRUE(labels.first().first->state().invisible);
}

} // namespace
