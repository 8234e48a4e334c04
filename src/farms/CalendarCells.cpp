#include "CalendarCells.h"

namespace ekinora::farms {

using namespace platform;

ProductImageView::ProductImageView(const QRectF& frame, int tag, QObject* parent)
    : ImageView(QStringLiteral("productImage"), parent), m_frame(frame), m_tag(tag) {}

PeriodCollectionViewCell::PeriodCollectionViewCell(QObject* parent)
    : CollectionViewCell(QStringLiteral("PeriodCell"), parent), lblTitle(new Label(QStringLiteral("lblTitle"), this)),
      imgPeriod(new ImageView(QStringLiteral("imgPeriod"), this)), imgPeriodLeft(new ImageView(QStringLiteral("imgPeriodLeft"), this)),
      imgPeriodRight(new ImageView(QStringLiteral("imgPeriodRight"), this)),
      constraintImgPeriodWidth(new LayoutConstraint(QStringLiteral("constraintImgPeriodWidth"), 0, this)),
      constraintImgPeriodHeight(new LayoutConstraint(QStringLiteral("constraintImgPeriodHeight"), 0, this)),
      constraintImgPeriodLeftHeight(new LayoutConstraint(QStringLiteral("constraintImgPeriodLeftHeight"), 0, this)),
      constraintImgPeriodRightHeight(new LayoutConstraint(QStringLiteral("constraintImgPeriodRightHeight"), 0, this)) {
    lblTitle->setNumberOfLines(2);
}

PestsCollectionViewCell::PestsCollectionViewCell(QObject* parent)
    : CollectionViewCell(QStringLiteral("PestCell"), parent), lblTitle(new Label(QStringLiteral("lblTitle"), this)),
      viewPest(new View(QStringLiteral("viewPest"), this)), imgBack(new ImageView(QStringLiteral("imgBack"), this)) {}

ProductImageView* PestsCollectionViewCell::addProductImage(const QRectF& frame, int tag) {
    auto* image = new ProductImageView(frame, tag, this);
    m_images.append(image);
    emit subviewsChanged();
    return image;
}

bool PestsCollectionViewCell::removeSubviewWithTag(int tag) {
    for (qsizetype i = 0; i < m_images.size(); ++i) {
        if (m_images.at(i)->tag() != tag) continue;
        ProductImageView* gone = m_images.takeAt(i);
        emit subviewsChanged();
        gone->deleteLater();
        return true;
    }
    return false;
}

QVariantList PestsCollectionViewCell::productImageObjects() const {
    QVariantList list;
    for (ProductImageView* image : m_images) list << QVariant::fromValue(image);
    return list;
}

} // namespace ekinora::farms
