#include "ListModel.h"

namespace ekinora::platform {

void ListModel::setRows(QList<ListRow> rows) {
    const int common = int(std::min(rows.size(), m_rows.size()));
    // Rows that stay: changed in place where they differ, in runs, so a long list costs one signal a run.
    int runStart = -1;
    for (int i = 0; i <= common; ++i) {
        const bool differs = i < common && !(rows[i] == m_rows[i]);
        if (differs) {
            m_rows[i] = rows[i];
            if (runStart < 0) runStart = i;
        } else if (runStart >= 0) {
            emit dataChanged(index(runStart), index(i - 1));
            runStart = -1;
        }
    }
    if (rows.size() > m_rows.size()) {
        beginInsertRows({}, int(m_rows.size()), int(rows.size()) - 1);
        for (qsizetype i = m_rows.size(); i < rows.size(); ++i) m_rows.append(std::move(rows[i]));
        endInsertRows();
        emit countChanged();
    } else if (rows.size() < m_rows.size()) {
        beginRemoveRows({}, int(rows.size()), int(m_rows.size()) - 1);
        m_rows.resize(rows.size());
        endRemoveRows();
        emit countChanged();
    }
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_rows.size()) return {};
    const ListRow& r = m_rows[index.row()];
    switch (role) {
    case ReuseIdentifierRole: return r.reuseIdentifier;
    case ValuesRole: return r.values;
    case SizeRole: return r.size;
    case SectionRole: return r.section;
    case RowRole: return r.row;
    case CellRole: return QVariant::fromValue(r.cell);
    case ViewRole: return QVariant::fromValue(parent());
    default: return {};
    }
}

QHash<int, QByteArray> ListModel::roleNames() const {
    return {{ReuseIdentifierRole, "reuseIdentifier"}, {ValuesRole, "values"}, {SizeRole, "cellSize"},
            {SectionRole, "section"},                 {RowRole, "row"},       {CellRole, "cell"},
            {ViewRole, "view"}};
}

QVariantMap ListModel::valuesAt(int index) const {
    return index >= 0 && index < m_rows.size() ? m_rows[index].values : QVariantMap();
}

} // namespace ekinora::platform
