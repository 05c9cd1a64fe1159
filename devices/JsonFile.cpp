#include "devices/JsonFile.h"

#include <QByteArray>
#include <QDebug>
#include <QFile>
#include <QJsonDocument>

#include <cmath>
#include <limits>

QJsonObject readJsonObject(const QString& path)
{
    QFile file(path);
    if (!file.exists() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    file.close();
    if (object.isEmpty()) {
        qDebug() << "File" << path << "is empty or improperly formatted";
    }
    return object;
}

QString jsonText(const QJsonValue& value)
{
    if (value.isString()) {
        return value.toString();
    }
    if (!value.isDouble()) {
        return {};
    }
    constexpr double kExact = 9007199254740992.0; // 2^53: whole numbers up to here are exact
    const double number = value.toDouble();
    if (std::abs(number) <= kExact && number == std::trunc(number)) {
        return QString::number(static_cast<qint64>(number));
    }
    return QString::number(number, 'g', 17);
}

quint32 jsonU32(const QJsonValue& value)
{
    constexpr quint32 kMost = std::numeric_limits<quint32>::max();
    const double number = value.toDouble();
    if (!(number > 0.0)) {
        return 0;
    }
    return number >= static_cast<double>(kMost) ? kMost : static_cast<quint32>(number);
}
