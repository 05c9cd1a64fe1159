#pragma once

#include "color/VelaColor.h"

#include <QDomElement>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <QVariant>

class QDataStream;
class QDomDocument;

/// A node of the colour library: the root, a list, or a colour in a list.
class VelaColorLibraryItem : public QObject
{
    Q_OBJECT
public:
    /// A root for a null parent, a list below a root, a colour below a list. Not entered in
    /// `parent` yet: see insertChild().
    explicit VelaColorLibraryItem(VelaColorLibraryItem* parent = nullptr);
    ~VelaColorLibraryItem() override;

    bool isList() const { return m_depth == 1; }
    bool isColor() const { return m_depth == 2; }
    VelaColorLibraryItem* parentItem() const { return m_parent; }
    int childCount() const { return m_children.size(); }
    /// Null for a row that isn't there.
    VelaColorLibraryItem* child(int row) const;
    /// Place among the parent's children.
    int row() const { return m_row; }
    /// Takes `child` over, in front of the one at `row`.
    void insertChild(int row, VelaColorLibraryItem* child);
    /// Gives the child at `row` back.
    VelaColorLibraryItem* takeChild(int row);

    const QString& name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    const QString& uid() const { return m_uid; }
    void setUid(const QString& uid) { m_uid = uid; }
    const VelaColor& color() const { return m_color; }
    void setColor(const VelaColor& color) { m_color = color; }
    const QString& originatingPreset() const { return m_originatingPreset; }
    void setOriginatingPreset(const QString& preset) { m_originatingPreset = preset; }
    const QString& colorId() const { return m_colorId; }
    void setColorId(const QString& id) { m_colorId = id; }
    /// What a view has painted for the colour; null until then and after a change.
    const QPixmap& thumbnail() const { return m_thumbnail; }
    void setThumbnail(const QPixmap& picture) { m_thumbnail = picture; }
    /// Whether the list is the user's own; a colour is as its list is.
    bool isUserLibrary() const { return m_isUserLibrary; }
    void setUserLibrary(bool on) { m_isUserLibrary = on; }
    QVariant role(int role) const { return m_roles.value(role); }
    void setRole(int role, const QVariant& value) { m_roles.insert(role, value); }

    /// The list as an element "ColorLibrary" of `document`, a "Color" for each child that has a
    /// uid. A null element, and `ok` false, for any format but "Sorrel3".
    QDomElement toElement(QDomDocument& document, const QString& format, bool isUserLibrary,
                          bool* ok = nullptr) const;
    /// Writes uid and colour, both as Latin-1 bytes, for "data/x-velacolor"; false, and nothing
    /// written, for any other format.
    bool writeFormat(const QString& format, QDataStream& stream) const;

private:
    QList<VelaColorLibraryItem*> m_children; // owned
    QHash<int, QVariant> m_roles;
    VelaColorLibraryItem* m_parent = nullptr; // not owned
    QString m_name;
    QString m_uid;
    VelaColor m_color;
    QString m_originatingPreset;
    QString m_colorId;
    QPixmap m_thumbnail;
    bool m_isUserLibrary = true;
    int m_depth = 0;
    int m_row = 0;
};
