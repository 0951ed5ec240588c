// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/accessible_sliders.h"

#include <QAccessibleWidget>
#include <QSlider>

namespace desktop {

namespace {

class AccessibleSlider : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit AccessibleSlider(QSlider *slider) : QAccessibleWidget(slider, QAccessible::Slider) { }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? QString::number(slider()->value())
                                          : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return slider()->value(); }
    QVariant minimumValue() const override { return slider()->minimum(); }
    QVariant maximumValue() const override { return slider()->maximum(); }
    QVariant minimumStepSize() const override { return slider()->singleStep(); }

    void setCurrentValue(const QVariant &value) override
    {
        if (slider()->isEnabled())
            slider()->setSliderPosition(value.toInt());
    }

private:
    QSlider *slider() const { return static_cast<QSlider *>(widget()); }
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *const slider = qobject_cast<QSlider *>(object);
    return slider ? new AccessibleSlider(slider) : nullptr;
}

} // namespace

void installAccessibleSliders() { QAccessible::installFactory(makeInterface); }

} // namespace desktop
