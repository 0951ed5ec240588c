// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>
#include <QMap>
#include <QRect>
#include <QString>
#include <QXmlStreamReader>

// What a form says about its widgets, read from its source.
struct FormFile
{
    QMap<QString, QRect> geometry; // by object name, within the parent
    QString styleSheet;            // of the form itself
};

inline FormFile readForm(const QString &name)
{
    FormFile form;
    QFile file(QStringLiteral(FORM_FOLDER "/") + name);
    if (!file.open(QIODevice::ReadOnly))
        return form;
    QXmlStreamReader xml(&file);
    QString widget;
    QString property;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QString element = xml.name().toString();
        QRect &geometry = form.geometry[widget];
        if (element == QLatin1String("widget"))
            widget = xml.attributes().value(QLatin1String("name")).toString();
        else if (element == QLatin1String("property"))
            property = xml.attributes().value(QLatin1String("name")).toString();
        else if (property == QLatin1String("styleSheet") && element == QLatin1String("string")
            && form.styleSheet.isEmpty())
            form.styleSheet = xml.readElementText();
        else if (property != QLatin1String("geometry"))
            continue;
        else if (element == QLatin1String("x"))
            geometry.moveLeft(xml.readElementText().toInt());
        else if (element == QLatin1String("y"))
            geometry.moveTop(xml.readElementText().toInt());
        else if (element == QLatin1String("width"))
            geometry.setWidth(xml.readElementText().toInt());
        else if (element == QLatin1String("height"))
            geometry.setHeight(xml.readElementText().toInt());
    }
    return form;
}
