#pragma once

#include <QDomElement>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class QDomDocument;

/// Reads and writes swatch documents; knows nothing of the model that it fills. Made for one load.
class Sorrel3ProjectHelper : public QObject
{
    Q_OBJECT
public:
    struct Swatch
    {
        QString uid;
        QString name;
        QString value; // as VelaColor::toString() writes it
        QString originatingPreset;
        QString colorId;
    };
    /// The name that a list read as `name` is entered by.
    using ListNaming = std::function<QString(const QString& name)>;

    explicit Sorrel3ProjectHelper(ListNaming naming, QObject* parent = nullptr);

    /// Enters every list of the document, wherever it stands. `error` takes the last thing that was
    /// wrong, translated; reading goes on where it can. `sample` takes the uids of the first
    /// colours of each list, at most 12, while nothing is wrong and `ratio` is below 0.96.
    void read(const QDomDocument& document, QString* error, QStringList* sample, double ratio);

    /// A list as an element of `document`.
    static QDomElement listElement(QDomDocument& document, const QString& name, bool isUserLibrary,
                                   const QList<Swatch>& swatches);

signals:
    void insertList(const QString& name, bool isUserList);
    void insertColor(QString uid, QString name, QString value, QString originatingPreset,
                     const QString& listId, const QString& colorId);
    void listRead(const QString& listId);

private:
    ListNaming m_naming;
};
