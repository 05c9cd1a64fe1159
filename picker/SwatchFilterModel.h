#pragma once

#include <QSortFilterProxyModel>
#include <QString>

namespace VelaColorPickerLib {

/// The library with only the swatches whose name or colour id holds a text, whatever its case. A
/// list whose own name holds it comes with all its swatches, any other with those that match; one
/// without any is left out.
class SwatchFilterModel : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit SwatchFilterModel(QObject* parent = nullptr);

    QString text() const { return m_text; }
    /// An empty text lets everything through.
    void setText(const QString& text);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    bool matches(int row, const QModelIndex& parent) const;

    QString m_text;
};

} // namespace VelaColorPickerLib
