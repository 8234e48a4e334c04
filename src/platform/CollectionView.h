#pragma once

#include "Controls.h"

#include <QHash>
#include <QList>
#include <QSizeF>
#include <functional>

namespace ekinora::platform {

// A cell of a collection view: a view with its index path and reuse identifier. A cell is reused: the
// collection hands it out again after a reload, as it was left, so that what a screen does not set again
// stays from the item it showed before.
class CollectionViewCell : public ekinora::platform::View {
    Q_OBJECT
    QML_NAMED_ELEMENT(UICollectionViewCell)
    QML_UNCREATABLE("Made by its collection.")
    Q_PROPERTY(QString reuseIdentifier READ reuseIdentifier CONSTANT)
    Q_PROPERTY(int section READ section NOTIFY changed)
    Q_PROPERTY(int row READ item NOTIFY changed)
    Q_PROPERTY(QSizeF size READ size WRITE setSize NOTIFY changed)
public:
    explicit CollectionViewCell(const QString& reuseIdentifier, QObject* parent = nullptr);
    QString reuseIdentifier() const { return objectName(); }
    int section() const { return m_section; }
    int item() const { return m_item; }
    void setIndexPath(int section, int item) {
        set(m_section, section);
        set(m_item, item);
    }
    // The cell's size in the collection's layout.
    QSizeF size() const { return m_size; }
    void setSize(const QSizeF& s) { set(m_size, s); }

private:
    int m_section = 0;
    int m_item = 0;
    QSizeF m_size;
};

// A collection view: sections of items drawn from cells that the screen's data source fills. Its rows
// in the list model carry each cell object (role "cell"). A reload
// asks the data source again for every item and hands the cells it had out again, in their order, to
// the screen's dequeues. Scrolling to an item and flashing the scroll indicators are announced to the
// arrangement, which plays them.
class CollectionView : public ekinora::platform::TableView {
    Q_OBJECT
    QML_NAMED_ELEMENT(UICollectionView)
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(int flashCount READ flashCount NOTIFY scrollIndicatorsFlashed)
public:
    // UICollectionViewScrollPosition values.
    enum ScrollPosition { None = 0, Top = 1, CenteredVertically = 2, Bottom = 4, Left = 8, CenteredHorizontally = 16, Right = 32 };

    using NumberOfSections = std::function<int(CollectionView*)>;
    using NumberOfItems = std::function<int(CollectionView*, int section)>;
    using CellForItem = std::function<CollectionViewCell*(CollectionView*, int section, int item)>;
    using DidSelectItem = std::function<void(CollectionView*, int section, int item)>;
    using CellFactory = std::function<CollectionViewCell*()>;

    explicit CollectionView(const QString& name = {}, QObject* parent = nullptr);

    void setDataSource(NumberOfSections sections, NumberOfItems items, CellForItem cell);
    void setDidSelectItem(DidSelectItem f) { m_didSelect = std::move(f); }
    void registerCell(const QString& reuseIdentifier, CellFactory factory);

    // A cell waiting for reuse under the identifier, else a new one from its factory.
    CollectionViewCell* dequeueReusableCell(const QString& reuseIdentifier, int section, int item);
    template <class Cell> Cell* dequeue(const QString& reuseIdentifier, int section, int item) {
        return static_cast<Cell*>(dequeueReusableCell(reuseIdentifier, section, item));
    }

    int numberOfSections() const;
    int numberOfItemsInSection(int section) const;
    QList<CollectionViewCell*> visibleCells() const { return m_cells; }
    QList<QObject*> cellObjects() const;
    CollectionViewCell* cellForItem(int section, int item) const;

    // A tap on an item, from the arrangement or a test.
    Q_INVOKABLE void selectItem(int section, int item);

    Q_INVOKABLE void scrollToItem(int section, int item, int scrollPosition, bool animated);
    Q_INVOKABLE void flashScrollIndicators();
    int flashCount() const { return m_flashes; }
    // The last scroll asked for: section, item, position; -1 before any.
    int scrolledSection() const { return m_scrolled[0]; }
    int scrolledItem() const { return m_scrolled[1]; }
    int scrolledPosition() const { return m_scrolled[2]; }

signals:
    void cellsChanged();
    void scrollToItemRequested(int section, int item, int scrollPosition, bool animated);
    void scrollIndicatorsFlashed();

protected:
    // The model's rows carry the cells themselves.
    void refreshRows() override;

private:
    void layoutCells();

    NumberOfSections m_sections;
    NumberOfItems m_items;
    CellForItem m_cellForItem;
    DidSelectItem m_didSelect;
    QHash<QString, CellFactory> m_factories;
    QHash<QString, QList<CollectionViewCell*>> m_reusable;
    QList<CollectionViewCell*> m_cells;
    int m_flashes = 0;
    int m_scrolled[3] = {-1, -1, -1};
};

} // namespace ekinora::platform
