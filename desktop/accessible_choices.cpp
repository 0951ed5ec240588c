// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/accessible_choices.h"

#include <QComboBox>
#include <QLabel>

namespace desktop {

void labelChoices(QWidget &window)
{
    const auto choices = window.findChildren<QComboBox *>();
    for (QComboBox *const choice : choices) {
        auto *const label = new QLabel(choice->accessibleName(), choice->parentWidget());
        label->hide();
        label->setBuddy(choice);
    }
}

} // namespace desktop
