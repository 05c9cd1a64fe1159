#pragma once

#include "color/VelaColor.h"

#include <QAbstractItemModel>
#include <QDomElement>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class QDomDocument;
class VelaColorLibraryItem;

/// The swatches of the program: lists of named colours, in the order of their making. The user's
/// own lists are kept in a file of the user's; one list, "Project Swatches", belongs to the show.
/// A list is known by its name.
class VelaColorLibrary : public QAbstractItemModel
{
    Q_OBJECT
public:
    enum Column : int { SwatchColumn = 0, ColorIdColumn, ColumnCount };
    /// 1 on the list "Project Swatches".
    static constexpr int kProjectRole = Qt::UserRole + 5;

    explicit VelaColorLibrary(QObject* parent = nullptr);
    ~VelaColorLibrary() override;
    /// The program's one library.
    static VelaColorLibrary* instance();

    static QString explicitListName();
    static QString projectListName();
    /// A colour for a reader: its channels, or its name.
    static QString colorText(const VelaColor& color);
    /// The per-user folder, worked out once; and the user's file in it.
    static QString userFolder();
    static QString userFile();

    /// What the picker needs, on the first call of the process only: the user's file, the presets
    /// and the swatches that come with the program.
    void startForPicker();
    /// Reads the user's own lists, of the user's file by default: a list goes into the one of its
    /// name if that is empty, else under a name of its own. False, and `error` told, for what can't
    /// be read; a file that is no XML is kept beside, for the next save replaces it. Only the
    /// user's file opens the way for save().
    bool load(const QString& path = QString(), QString* error = nullptr);
    /// Reads the preset files in the folder "Presets" beside the program, by name. Their lists are
    /// nobody's own, whatever the files say: saved with the user's they would come twice next time.
    void loadPresets();
    /// Writes the user's own lists to the user's file, which stays as it was where that fails. Does
    /// nothing, and answers false, before that file was loaded.
    bool save();
    bool isDirty() const { return m_dirty; }
    /// Adds the lists of a file as the user's own. False, with the reason in `error`, for a file
    /// that can't be read or has no list.
    bool importFile(const QString& path, QString* error = nullptr);
    /// Writes the swatches of `items`, lists whole, as a library document.
    bool exportColors(const QModelIndexList& items, const QString& path) const;

    /// "Project Swatches" as a "ColorLibraryList" of `document`; null where it is empty.
    QDomElement projectElement(QDomDocument& document) const;
    /// Puts the swatches of all lists of a show's document into "Project Swatches", in place of
    /// what is there. `source` names the show in the debug log.
    void readProject(const QDomDocument& document, const QString& source = QString());

    /// Adds a colour to the end of a list, which is made as one of the user's if it isn't there.
    /// Answers its uid.
    QString insertColor(const VelaColor& color, const QString& name,
                        const QString& originatingPreset, const QString& listId,
                        const QString& colorId);
    /// The colour of a swatch; the current colour for an empty uid. A uid that is a colour's text
    /// gives that colour, and adds it to "Explicit Colors".
    VelaColor colorForUid(const QString& uid);
    const VelaColor& currentColor() const { return m_currentColor; }
    void setCurrentColor(const VelaColor& color) { m_currentColor = color; }
    /// `name`, or with the first number behind it, from 2, that no list bears.
    QString uniqueListName(const QString& name) const;
    /// Of a list's name; invalid where there is none.
    QModelIndex listIndex(const QString& listId) const;
    /// Null for an invalid index.
    VelaColorLibraryItem* itemAt(const QModelIndex& index) const;

    QModelIndex index(int row, int column,
                      const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool removeRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    /// On the lists that are kept: the user's own and the show's.
    bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                         const QModelIndex& parent) const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;
    Qt::DropActions supportedDropActions() const override { return Qt::CopyAction; }

public slots:
    /// Saves after a change of one of the user's lists.
    void onColorLibraryListChanged(const QString& listId);
    /// Makes a list at the end; nothing where one of that name is there.
    void createColorList(const QString& colorListName, bool isUserList);
    void handleInsertColor(const QString& uid, const QString& name, const QString& valueString,
                           const QString& originatingPreset, const QString& listId,
                           const QString& colorId);

signals:
    void changed(QString listId);
    void addedColorToList(QModelIndex& listId);

private:
    class Loading;
    struct Misread
    {
        QString name;
        QString value;
    };

    VelaColorLibraryItem* list(const QString& listId) const;
    QModelIndex indexOf(VelaColorLibraryItem* item) const;
    VelaColorLibraryItem* addColor(int row, const QString& uid, const QString& name,
                                   const VelaColor& color, const QString& originatingPreset,
                                   const QString& listId, const QString& colorId);
    void forget(const VelaColorLibraryItem& item);
    void listChanged(const VelaColorLibraryItem& list);
    static QString plainName(const QString& name);
    static bool readFile(const QString& path, QDomDocument* document, QString* error);
    QString newUid(const QString& wanted) const;
    static bool writeDocument(const QDomDocument& document, const QString& path);

    std::unique_ptr<VelaColorLibraryItem> m_root;
    QHash<QString, VelaColorLibraryItem*> m_lists;  // by name
    QHash<QString, VelaColorLibraryItem*> m_colors; // by uid
    mutable QHash<QString, int> m_firstNumbers;     // by name: no smaller one is free behind it
    QVector<Misread> m_misread;                     // of the file that is being read
    VelaColor m_currentColor = Qt::magenta;
    bool m_libraryLoaded = false;
    bool m_loading = false;
    bool m_dirty = false;
    bool m_started = false;
};

namespace VelaColorPickerLib {
using ::VelaColorLibrary;
} // namespace VelaColorPickerLib
