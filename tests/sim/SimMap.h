#pragma once

#include "map/MapModel.h"
#include "tests/output/SilentSocket.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <vector>

struct SimMapLight
{
    QString x;
    QString y;
    QString more = QString(); // further elements of the light
    quint64 uid = 0;          // 0: the light's place in the list, from 1

    SimMapLight(double atX, double atY)
        : x(QString::number(atX))
        , y(QString::number(atY))
    {}
    SimMapLight(const char* atX, const char* atY)
        : x(QString::fromLatin1(atX))
        , y(QString::fromLatin1(atY))
    {}
};

/// A model that has read a map file of the given lights.
class SimMap
{
public:
    explicit SimMap(const std::vector<SimMapLight>& lights, const QString& imageFile = QString())
        : m_model(std::make_unique<SilentSocket>())
    {
        QString text = QStringLiteral("<map><version>1</version>");
        if (!imageFile.isEmpty()) {
            text += QStringLiteral("<imagefile>%1</imagefile>").arg(imageFile);
        }
        quint64 next = 1;
        for (const SimMapLight& light : lights) {
            text += QStringLiteral("<light><self>%1</self><x>%2</x><y>%3</y>%4</light>")
                        .arg(light.uid == 0 ? next : light.uid, 0, 16)
                        .arg(light.x, light.y, light.more);
            ++next;
        }
        text += QStringLiteral("</map>");
        QFile file(m_directory.filePath(QStringLiteral("some.map")));
        m_isGood = file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0;
        file.close();
        m_isGood = m_isGood && m_model.load(file.fileName());
    }

    bool isGood() const { return m_isGood; }
    MapModel* model() { return &m_model; }

private:
    QTemporaryDir m_directory;
    MapModel m_model;
    bool m_isGood = false;
};
