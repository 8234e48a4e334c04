#pragma once

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QMarginsF>
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace ekinora::widgets {

// One item's place in a collection: its index path and frame in content coordinates.
struct LayoutAttributes {
    int section = 0;
    int item = 0;
    QRectF frame;
};

// A flow layout that snaps: a scroll ends with an item 16 points from the left edge. It lays sections
// out one after another in the scroll direction; in a horizontal flow each column is a line, filled from
// the top.
class ProductDetailFlowLayout : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(QSizeF itemSize READ itemSize WRITE setItemSize NOTIFY changed)
    Q_PROPERTY(double minimumInteritemSpacing READ minimumInteritemSpacing WRITE setMinimumInteritemSpacing NOTIFY changed)
    Q_PROPERTY(double minimumLineSpacing READ minimumLineSpacing WRITE setMinimumLineSpacing NOTIFY changed)
    Q_PROPERTY(int scrollDirection READ scrollDirection WRITE setScrollDirection NOTIFY changed)
    Q_PROPERTY(QSizeF collectionViewSize READ collectionViewSize WRITE setCollectionViewSize NOTIFY changed)
    Q_PROPERTY(QList<int> sectionItemCounts READ sectionItemCounts WRITE setSectionItemCounts NOTIFY changed)
    Q_PROPERTY(QSizeF collectionViewContentSize READ collectionViewContentSize NOTIFY changed)
public:
    // UICollectionViewScrollDirection values.
    enum Direction { Vertical = 0, Horizontal = 1 };
    static constexpr double SnapInset = 16.0;

    // Made as the layout file makes it: the flow layout's own defaults, then awakeFromNib.
    explicit ProductDetailFlowLayout(QObject* parent = nullptr);

    // Item 75 by 75, both spacings 16, horizontal, a section inset of 16 all round.
    void awakeFromNib();

    // Where a scroll that would stop at the proposed offset stops instead: the proposed x moves by the
    // smallest distance that brings an item's left edge 16 points from the left; y stays. With no item
    // in view the distance stays at the largest float.
    Q_INVOKABLE QPointF targetContentOffsetForProposedContentOffset(QPointF proposedContentOffset, QPointF velocity) const;

    // Items whose frames meet the rectangle, in index order.
    QList<LayoutAttributes> layoutAttributesForElementsInRect(const QRectF& rect) const;
    Q_INVOKABLE QRectF frameForItem(int section, int item) const;
    QSizeF collectionViewContentSize() const;

    QSizeF itemSize() const { return m_itemSize; }
    void setItemSize(const QSizeF& s) { set(m_itemSize, s); }
    double minimumInteritemSpacing() const { return m_interitem; }
    void setMinimumInteritemSpacing(double s) { set(m_interitem, s); }
    double minimumLineSpacing() const { return m_line; }
    void setMinimumLineSpacing(double s) { set(m_line, s); }
    int scrollDirection() const { return m_direction; }
    void setScrollDirection(int d) { set(m_direction, d); }
    QMarginsF sectionInset() const { return m_inset; }
    void setSectionInset(const QMarginsF& m) { set(m_inset, m); }
    // The collection view's bounds and its sections' item counts.
    QSizeF collectionViewSize() const { return m_viewSize; }
    void setCollectionViewSize(const QSizeF& s) { set(m_viewSize, s); }
    QList<int> sectionItemCounts() const { return m_counts; }
    void setSectionItemCounts(const QList<int>& c) { set(m_counts, c); }

signals:
    void changed();

private:
    template <class T> void set(T& field, const T& value) {
        if (field == value) return;
        field = value;
        emit changed();
    }
    // Every item's frame; the content's extent along the scroll direction into extent.
    QList<LayoutAttributes> allAttributes(double* extent = nullptr) const;

    QSizeF m_itemSize;
    double m_interitem = 0;
    double m_line = 0;
    int m_direction = Vertical;
    QMarginsF m_inset;
    QSizeF m_viewSize;
    QList<int> m_counts;
};

} // namespace ekinora::widgets
