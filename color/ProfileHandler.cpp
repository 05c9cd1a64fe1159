#include "color/ProfileHandler.h"

#include "color/ColorUtils.h"
#include "color/ProfileTable.h"

#include <QtDebug>

#include <cmath>

QT_WARNING_DISABLE_DEPRECATED // the whole file speaks to the reader's old interface

namespace {

constexpr int kNoIndex = -1;
constexpr int kLastIndex = 47;

/// A decimal attribute; kNoIndex where it is missing or no number.
int indexOf(const QXmlAttributes& attributes)
{
    bool ok = false;
    const int index = attributes.value(QStringLiteral("index")).toInt(&ok);
    return ok ? index : kNoIndex;
}

double number(const QXmlAttributes& attributes, const QString& key)
{
    const double value = attributes.value(key).toDouble();
    return std::isfinite(value) ? value : 0.0;
}

template <typename List, typename Value>
void insertAt(List* list, int position, const Value& value)
{
    if (position < 0 || position > list->size()) {
        list->append(value);
    } else {
        list->insert(position, value);
    }
}

} // namespace

ProfileHandler::ProfileHandler(ProfileTable* table)
    : m_table(table)
{}

bool ProfileHandler::startElement(const QString& /*namespaceUri*/, const QString& /*localName*/,
                                  const QString& qualifiedName, const QXmlAttributes& attributes)
{
    if (m_depth == Depth::Outside && qualifiedName == QLatin1String("Profiles")) {
        m_depth = Depth::Profiles;
    } else if (m_depth == Depth::Profiles && qualifiedName == QLatin1String("Profile")) {
        m_depth = Depth::Profile;
        m_index = indexOf(attributes); // its name is not kept: the fixture table has its own
        m_calibrated.clear();
        m_nominal.clear();
        m_names.clear();
    } else if (m_depth == Depth::Profile && qualifiedName == QLatin1String("Channel")) {
        m_depth = Depth::Channel;
        readChannel(attributes);
    }
    return true;
}

bool ProfileHandler::endElement(const QString& /*namespaceUri*/, const QString& /*localName*/,
                                const QString& qualifiedName)
{
    if (m_depth == Depth::Channel && qualifiedName == QLatin1String("Channel")) {
        m_depth = Depth::Profile;
    } else if (m_depth == Depth::Profile && qualifiedName == QLatin1String("Profile")) {
        m_depth = Depth::Profiles;
        return storeProfile();
    } else if (m_depth == Depth::Profiles && qualifiedName == QLatin1String("Profiles")) {
        m_depth = Depth::Outside;
    }
    return true;
}

QString ProfileHandler::errorString() const
{
    return QString();
}

void ProfileHandler::readChannel(const QXmlAttributes& attributes)
{
    const int position = indexOf(attributes);
    insertAt(&m_calibrated, position,
             Triple{number(attributes, QStringLiteral("X")),
                    number(attributes, QStringLiteral("Y")),
                    number(attributes, QStringLiteral("Z"))});
    if (attributes.index(QStringLiteral("Xn")) >= 0 &&
        attributes.index(QStringLiteral("Yn")) >= 0 &&
        attributes.index(QStringLiteral("Zn")) >= 0) {
        insertAt(&m_nominal, position,
                 Triple{number(attributes, QStringLiteral("Xn")),
                        number(attributes, QStringLiteral("Yn")),
                        number(attributes, QStringLiteral("Zn"))});
    }
    insertAt(&m_names, position, attributes.value(QStringLiteral("name")));
}

bool ProfileHandler::storeProfile()
{
    if (m_index == kNoIndex) {
        return true;
    }
    if (m_index < 0 || m_index > kLastIndex) {
        qDebug("invalid profile definition");
        return false;
    }
    storeSet(m_calibrated, 0);
    if (!m_nominal.isEmpty()) {
        storeSet(m_nominal, 1);
    }
    return true;
}

void ProfileHandler::storeSet(const QList<Triple>& triples, int primarySet)
{
    ColorProfile* const record =
        m_table->profile(m_index, ColorUtils::layoutOfProfile(m_index), primarySet);
    record->X.clear();
    record->Y.clear();
    record->Z.clear();
    for (const Triple& triple : triples) {
        record->X.append(triple.X);
        record->Y.append(triple.Y);
        record->Z.append(triple.Z);
    }
    record->channelNames = m_names;
    ProfileTable::computeGamut(record);
}
