// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/accessibility.h"

#include <QAccessibleWidget>
#include <QComboBox>
#include <QLabel>
#include <QSlider>
#include <QTimer>

#include <chrono>

namespace desktop {

namespace {

class AccessibleSlider : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit AccessibleSlider(QSlider *slider) : QAccessibleWidget(slider, QAccessible::Slider)
    {
        pushEnd.setSingleShot(true);
        QObject::connect(&pushEnd, &QTimer::timeout, slider, [slider] {
            if (!slider->isSliderDown()) // otherwise the mouse has taken over
                emit slider->sliderReleased();
        });
        QObject::connect(slider, &QSlider::sliderReleased, &pushEnd, &QTimer::stop);
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QVariant currentValue() const override { return slider()->value(); }
    QVariant minimumValue() const override { return slider()->minimum(); }
    QVariant maximumValue() const override { return slider()->maximum(); }
    QVariant minimumStepSize() const override { return slider()->singleStep(); }

    void setCurrentValue(const QVariant &value) override
    {
        using namespace std::chrono_literals;
        QSlider &handle = *slider();
        if (!handle.isEnabled() || handle.isSliderDown())
            return;
        const int before = handle.value();
        handle.setValue(value.toInt());
        if (handle.value() == before)
            return;
        emit handle.sliderMoved(handle.value());
        pushEnd.start(200ms);
    }

private:
    QSlider *slider() const { return static_cast<QSlider *>(widget()); }

    QTimer pushEnd;
};

QAccessibleInterface *makeInterface(const QString & /*className*/, QObject *object)
{
    auto *const slider = qobject_cast<QSlider *>(object);
    return slider ? new AccessibleSlider(slider) : nullptr;
}

} // namespace

void exposeSliders() { QAccessible::installFactory(makeInterface); }

void labelChoice(QComboBox &choice)
{
    auto *const label = new QLabel(choice.accessibleName(), choice.parentWidget());
    label->hide();
    label->setBuddy(&choice);
}

} // namespace desktop
