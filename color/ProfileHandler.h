#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QXmlDefaultHandler>

class ProfileTable;

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED // QXmlDefaultHandler and its reader

/// Reads a profile file into a ProfileTable. Unknown elements are skipped; a number that does
/// not parse, or that is not finite, is 0.
class ProfileHandler final : public QXmlDefaultHandler
{
public:
    explicit ProfileHandler(ProfileTable* table);

    bool startElement(const QString& namespaceUri, const QString& localName,
                      const QString& qualifiedName, const QXmlAttributes& attributes) override;
    /// False, which ends the parse, behind a profile whose index is out of range.
    bool endElement(const QString& namespaceUri, const QString& localName,
                    const QString& qualifiedName) override;
    QString errorString() const override;

private:
    enum class Depth { Outside, Profiles, Profile, Channel };
    struct Triple
    {
        double X;
        double Y;
        double Z;
    };

    void readChannel(const QXmlAttributes& attributes);
    bool storeProfile();
    void storeSet(const QList<Triple>& triples, int primarySet);

    ProfileTable* m_table; // not owned
    Depth m_depth = Depth::Outside;
    int m_index = -1;
    QList<Triple> m_calibrated;
    QList<Triple> m_nominal;
    QStringList m_names;
};

QT_WARNING_POP
