#include "CollectionView.h"

namespace ekinora::platform {

CollectionViewCell::CollectionViewCell(const QString& reuseIdentifier, QObject* parent) : View(reuseIdentifier, parent) {}

CollectionView::CollectionView(const QString& name, QObject* parent) : TableView(name, parent) {
    // Made before any view binds to the reload, so that the cells are ready when it reads them.
    connect(this, &TableView::reloaded, this, &CollectionView::layoutCells);
}

void CollectionView::setDataSource(NumberOfSections sections, NumberOfItems items, CellForItem cell) {
    m_sections = std::move(sections);
    m_items = std::move(items);
    m_cellForItem = std::move(cell);
}

void CollectionView::registerCell(const QString& reuseIdentifier, CellFactory factory) {
    m_factories.insert(reuseIdentifier, std::move(factory));
}

CollectionViewCell* CollectionView::dequeueReusableCell(const QString& reuseIdentifier, int section, int item) {
    CollectionViewCell* cell = nullptr;
    QList<CollectionViewCell*>& waiting = m_reusable[reuseIdentifier];
    if (!waiting.isEmpty()) {
        cell = waiting.takeFirst();
    } else {
        const CellFactory factory = m_factories.value(reuseIdentifier);
        cell = factory ? factory() : new CollectionViewCell(reuseIdentifier);
        cell->setParent(this);
    }
    cell->setIndexPath(section, item);
    return cell;
}

int CollectionView::numberOfSections() const { return m_sections ? m_sections(const_cast<CollectionView*>(this)) : 1; }

int CollectionView::numberOfItemsInSection(int section) const {
    return m_items ? m_items(const_cast<CollectionView*>(this), section) : 0;
}

void CollectionView::layoutCells() {
    // Every cell waits for reuse again, in the order it was shown.
    for (CollectionViewCell* cell : std::as_const(m_cells)) m_reusable[cell->reuseIdentifier()].append(cell);
    m_cells.clear();
    if (m_cellForItem) {
        const int sections = numberOfSections();
        for (int s = 0; s < sections; ++s) {
            const int items = numberOfItemsInSection(s);
            for (int i = 0; i < items; ++i)
                if (CollectionViewCell* cell = m_cellForItem(this, s, i)) m_cells.append(cell);
        }
    }
    emit cellsChanged();
}

void CollectionView::refreshRows() {
    QList<ListRow> rows;
    rows.reserve(m_cells.size());
    for (CollectionViewCell* c : std::as_const(m_cells))
        rows.append(ListRow{c->reuseIdentifier(), {}, c->size(), c->section(), c->item(), c});
    this->rows()->setRows(std::move(rows));
}

QList<QObject*> CollectionView::cellObjects() const {
    QList<QObject*> list;
    for (CollectionViewCell* c : m_cells) list << c;
    return list;
}

CollectionViewCell* CollectionView::cellForItem(int section, int item) const {
    for (CollectionViewCell* c : m_cells)
        if (c->section() == section && c->item() == item) return c;
    return nullptr;
}

void CollectionView::selectItem(int section, int item) {
    if (m_didSelect) m_didSelect(this, section, item);
}

void CollectionView::scrollToItem(int section, int item, int scrollPosition, bool animated) {
    m_scrolled[0] = section;
    m_scrolled[1] = item;
    m_scrolled[2] = scrollPosition;
    emit scrollToItemRequested(section, item, scrollPosition, animated);
}

void CollectionView::flashScrollIndicators() {
    ++m_flashes;
    emit scrollIndicatorsFlashed();
}

} // namespace ekinora::platform
