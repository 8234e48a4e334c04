#include "ProductDetailFlowLayout.h"

#include <cmath>
#include <limits>

namespace ekinora::widgets {

ProductDetailFlowLayout::ProductDetailFlowLayout(QObject* parent) : QObject(parent) {
    // The flow layout's own defaults, which the layout file's values replace.
    m_itemSize = QSizeF(50, 50);
    m_interitem = 10;
    m_line = 10;
    m_direction = Vertical;
    awakeFromNib();
}

void ProductDetailFlowLayout::awakeFromNib() {
    setItemSize(QSizeF(75.0, 75.0));
    setMinimumInteritemSpacing(16.0);
    setMinimumLineSpacing(16.0);
    setScrollDirection(Horizontal);
    setSectionInset(QMarginsF(16.0, 16.0, 16.0, 16.0));
}

QList<LayoutAttributes> ProductDetailFlowLayout::allAttributes(double* extent) const {
    // Worked out along the scroll direction ("along") and across it; a vertical flow is the same with
    // the axes swapped.
    const bool horizontal = m_direction == Horizontal;
    const double itemAlong = horizontal ? m_itemSize.width() : m_itemSize.height();
    const double itemAcross = horizontal ? m_itemSize.height() : m_itemSize.width();
    const double startAlong = horizontal ? m_inset.left() : m_inset.top();
    const double endAlong = horizontal ? m_inset.right() : m_inset.bottom();
    const double startAcross = horizontal ? m_inset.top() : m_inset.left();
    const double endAcross = horizontal ? m_inset.bottom() : m_inset.right();
    const double viewAcross = horizontal ? m_viewSize.height() : m_viewSize.width();
    const double room = viewAcross - startAcross - endAcross;
    const int perLine = qMax(1, int(std::floor((room + m_interitem) / (itemAcross + m_interitem) + 1e-9)));

    QList<LayoutAttributes> out;
    double along = 0;
    for (int section = 0; section < m_counts.size(); ++section) {
        const int count = qMax(0, m_counts.at(section));
        along += startAlong;
        for (int item = 0; item < count; ++item) {
            const double a = along + (item / perLine) * (itemAlong + m_line);
            const double c = startAcross + (item % perLine) * (itemAcross + m_interitem);
            const QRectF frame = horizontal ? QRectF(a, c, itemAlong, itemAcross) : QRectF(c, a, itemAcross, itemAlong);
            out.append(LayoutAttributes{section, item, frame});
        }
        const int lines = (count + perLine - 1) / perLine;
        if (lines > 0) along += lines * itemAlong + (lines - 1) * m_line;
        along += endAlong;
    }
    if (extent) *extent = along;
    return out;
}

QList<LayoutAttributes> ProductDetailFlowLayout::layoutAttributesForElementsInRect(const QRectF& rect) const {
    QList<LayoutAttributes> out;
    for (const LayoutAttributes& a : allAttributes())
        if (a.frame.intersects(rect)) out.append(a);
    return out;
}

QRectF ProductDetailFlowLayout::frameForItem(int section, int item) const {
    for (const LayoutAttributes& a : allAttributes())
        if (a.section == section && a.item == item) return a.frame;
    return {};
}

QSizeF ProductDetailFlowLayout::collectionViewContentSize() const {
    double extent = 0;
    allAttributes(&extent);
    return m_direction == Horizontal ? QSizeF(extent, m_viewSize.height()) : QSizeF(m_viewSize.width(), extent);
}

QPointF ProductDetailFlowLayout::targetContentOffsetForProposedContentOffset(QPointF proposedContentOffset,
                                                                           QPointF velocity) const {
    Q_UNUSED(velocity);
    const QRectF visible(proposedContentOffset.x(), 0, m_viewSize.width(), m_viewSize.height());
    const double target = proposedContentOffset.x() + SnapInset;
    double adjustment = std::numeric_limits<float>::max();
    for (const LayoutAttributes& a : layoutAttributesForElementsInRect(visible)) {
        const double distance = a.frame.x() - target;
        if (std::abs(distance) < std::abs(adjustment)) adjustment = distance;
    }
    return QPointF(proposedContentOffset.x() + adjustment, proposedContentOffset.y());
}

} // namespace ekinora::widgets
