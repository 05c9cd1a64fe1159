#pragma once

#include "color/GroupProfile.h"
#include "map/GroupLayout.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QtGlobal>

class Light;
class MapModel;
class QDomNode;

/// A named, typed node of a tree over the lights of the map: what an effect paints.
class Group : public QObject
{
    Q_OBJECT
public:
    enum Type : int { Unknown = 0, Chasing = 1, Synchronized = 2, Leaf = 3 };

    /// Reads the group from its element of the map file; null leaves every default.
    explicit Group(QDomNode* element);
    ~Group() override;

    /// Connects signals both ways and sets the model; always true.
    bool attach(MapModel* model);

    quint64 uid() const;
    const QString& name() const;
    /// As the file has it; any number but 1, 2 and 3 is an unknown kind.
    int type() const;
    /// Built on first use and kept; never null.
    const GroupLayout* layout();
    /// The lights in lightUids() order, a null entry for a uid that the model doesn't hold. Built
    /// on first use and kept; `count` takes the number of entries.
    Light* const* lights(int* count);
    /// Uids of all lights below this group, at most 1,000,000; a group that is reached from
    /// itself answers empty.
    QList<quint64> lightUids();
    /// Extents of the lights' positions, truncated to whole map units; without lights the minimum
    /// stays at 2147483647 and the maximum at -2147483647.
    void bounds(double* xMin, double* yMin, double* xMax, double* yMax);
    /// Steps of a chase: 1 for any other kind, -1 for a chase without a model.
    int elementCount();
    /// The distinct profiles of the lights, in the order met. Owned by the group.
    QList<GroupProfile*> profileList();
    /// The profile of most lights; profileId -1 without lights.
    GroupProfile primaryProfile();

public slots:
    void handleUpdatedLight(qulonglong uid);

signals:
    void msg(const QString& s);
    void updatedGroup(qulonglong uid);
};
