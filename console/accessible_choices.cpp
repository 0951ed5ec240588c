// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "console/accessible_choices.h"

#include <QComboBox>
#include <QLabel>

namespace accessible_choices {

void label(QWidget &window)
{
    const auto choices = window.findChildren<QComboBox *>();
    for (QComboBox *const choice : choices) {
        auto *const label = new QLabel(choice->accessibleName(), choice->parentWidget());
        label->hide();
        label->setBuddy(choice);
    }
}

} // namespace accessible_choices
