#pragma once

#include "color/GroupProfile.h"
#include "map/GroupLayout.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QtGlobal>

#include <memory>
#include <vector>

class Light;
class MapModel;
class MapNode;
class QDomNode;

/// A named, typed node of a tree over the lights of the map: what an effect paints.
///
/// A file may hold groups that contain themselves, very deep ones, and ones whose lights no memory
/// would hold. Trees are walked without recursion; a group that is reached from itself counts as
/// empty there, and a walk ends at 1,000,000 entries with one line in the debug log.
class Group : public QObject
{
    Q_OBJECT
public:
    enum Type : int { Unknown = 0, Chasing = 1, Synchronized = 2, Leaf = 3 };

    static constexpr int kMaxEntries = 1000000;

    /// Reads the group from its element of the map file; null leaves every default.
    explicit Group(QDomNode* element);
    /// The same from a map that is being read.
    explicit Group(const MapNode& element);
    ~Group() override;

    /// Connects signals both ways and sets the model; always true.
    bool attach(MapModel* model);

    quint64 uid() const { return m_uid; }
    const QString& name() const { return m_name; }
    /// As the file has it; any number but 1, 2 and 3 is an unknown kind.
    int type() const { return m_type; }
    /// The word for a kind: "Chasing", "Synchronized", "Leaf", else "Unknown".
    static QString typeName(int type);
    /// Built on first use and kept; never null.
    const GroupLayout* layout();
    /// The lights in lightUids() order, a null entry for a uid that the model doesn't hold. Built
    /// on first use and kept; `count` takes the number of entries.
    Light* const* lights(int* count);
    /// Uids of all lights below this group, at most 1,000,000; a group that is reached from
    /// itself answers empty.
    QList<quint64> lightUids();
    /// Extents of the lights' positions, truncated to whole map units; without lights the minimum
    /// stays at 2147483647 and the maximum at -2147483647. Lights at no place that counts (see
    /// LightPosition::countsForExtents) are passed over.
    void bounds(double* xMin, double* yMin, double* xMax, double* yMax);
    /// Steps of a chase: 1 for any other kind, -1 for a chase without a model.
    int elementCount();
    /// The distinct profiles of the lights, in the order met. Owned by the group.
    QList<GroupProfile*> profileList();
    /// The profile of most lights, the first met among equals; profileId -1 without lights.
    GroupProfile primaryProfile();

public slots:
    /// Takes over the name of the light of this uid, if it is the group's own.
    void handleUpdatedLight(qulonglong uid);

signals:
    void msg(const QString& s);
    void updatedGroup(qulonglong uid);

private:
    friend class MapModel; // enters groups by the thousand: see hold()

    struct Caches;
    struct Budget;

    /// attach() for a group in a model's own table: the model and the group call each other
    /// directly. A connection costs more memory than the group.
    void hold(MapModel* model);
    Caches& caches();
    Light* leafLight() const;
    template <typename Descends, typename Takes>
    void walk(Budget& budget, Descends descends, Takes takes);
    void reportCut(const Budget& budget);
    void collectLights(Budget& budget, std::vector<Light*>* lights);
    void resolve();
    void buildLayout();

    QList<quint64> m_children; // of a leaf: its light
    quint64 m_uid = 0;
    QString m_name;
    MapModel* m_model = nullptr; // not owned
    int m_type = Unknown;
    bool m_isHeld = false;
    bool m_isInWalk = false;
    bool m_hasLoggedLimit = false;
    std::unique_ptr<Caches> m_caches; // most groups are never painted
};
