#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QPointer>
#include <QSizeF>
#include <QString>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

namespace ekinora::platform {

// One row of a list or grid as its arrangement draws it: the cell's reuse identifier, its place, its
// size in the list's layout, and the values of its controls by name (or, for cells that are objects of
// their own, the cell itself).
struct ListRow {
    QString reuseIdentifier;
    QVariantMap values;
    QSizeF size;
    int section = 0;
    int row = 0;
    QObject* cell = nullptr;

    bool operator==(const ListRow& o) const {
        return reuseIdentifier == o.reuseIdentifier && values == o.values && size == o.size && section == o.section &&
               row == o.row && cell == o.cell;
    }
};

// A row from a cell written as a map of its controls' values with its "reuseIdentifier" among them.
inline ListRow cellRow(const QVariantMap& values, const QSizeF& size) {
    return ListRow{values.value(QStringLiteral("reuseIdentifier")).toString(), values, size};
}

// The one model every list and grid is drawn from. It changes by rows: a new set of rows changes the
// rows that differ, and inserts or removes rows only at the end, so that a delegate on screen stays
// where it is when its row did not change.
class ListModel : public QAbstractListModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(UIListModel)
    QML_UNCREATABLE("A list's rows come from its table view.")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    // "view" is the table or collection view the rows belong to: a delegate taps its row through it
    // without reaching outside itself for the screen.
    enum Role { ReuseIdentifierRole = Qt::UserRole + 1, ValuesRole, SizeRole, SectionRole, RowRole, CellRole, ViewRole };

    explicit ListModel(QObject* parent = nullptr) : QAbstractListModel(parent) {}

    int count() const { return int(m_rows.size()); }
    const QList<ListRow>& rows() const { return m_rows; }
    void setRows(QList<ListRow> rows);

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : count(); }
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // A row's values, for scripts and tests; empty past the end.
    Q_INVOKABLE QVariantMap valuesAt(int index) const;

signals:
    void countChanged();

private:
    QList<ListRow> m_rows;
};

} // namespace ekinora::platform
