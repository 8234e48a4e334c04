#pragma once

#include "platform/CollectionView.h"

#include <QList>
#include <QRectF>

namespace ekinora::farms {

// A picture added to a cell in code: its frame in its parent view and its tag.
class ProductImageView : public ekinora::platform::ImageView {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    Q_PROPERTY(QRectF frame READ frame CONSTANT)
    Q_PROPERTY(int tag READ tag CONSTANT)
public:
    ProductImageView(const QRectF& frame, int tag, QObject* parent = nullptr);
    QRectF frame() const { return m_frame; }
    int tag() const { return m_tag; }

private:
    QRectF m_frame;
    int m_tag;
};

// One period in the chain: its picture between two connector bars, its name below.
class PeriodCollectionViewCell : public ekinora::platform::CollectionViewCell {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, lblTitle)
    UI_OUTLET(ekinora::platform::ImageView, imgPeriod)
    UI_OUTLET(ekinora::platform::ImageView, imgPeriodLeft)
    UI_OUTLET(ekinora::platform::ImageView, imgPeriodRight)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constraintImgPeriodWidth)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constraintImgPeriodHeight)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constraintImgPeriodLeftHeight)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constraintImgPeriodRightHeight)
public:
    explicit PeriodCollectionViewCell(QObject* parent = nullptr);

    platform::Label* lblTitle;
    platform::ImageView* imgPeriod;
    platform::ImageView* imgPeriodLeft;
    platform::ImageView* imgPeriodRight;
    platform::LayoutConstraint* constraintImgPeriodWidth;
    platform::LayoutConstraint* constraintImgPeriodHeight;
    platform::LayoutConstraint* constraintImgPeriodLeftHeight;
    platform::LayoutConstraint* constraintImgPeriodRightHeight;
};

// One pest: its name over a card with its picture behind the pictures of the products against it.
class PestsCollectionViewCell : public ekinora::platform::CollectionViewCell {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, lblTitle)
    UI_OUTLET(ekinora::platform::View, viewPest)
    UI_OUTLET(ekinora::platform::ImageView, imgBack)
    Q_PROPERTY(QVariantList productImages READ productImageObjects NOTIFY subviewsChanged)
    Q_PROPERTY(double titleHeight READ titleHeight CONSTANT)
public:
    // The name's band above the card.
    static constexpr double TitleHeight = 32;

    explicit PestsCollectionViewCell(QObject* parent = nullptr);

    platform::Label* lblTitle;
    platform::View* viewPest;
    platform::ImageView* imgBack;

    double titleHeight() const { return TitleHeight; }
    // The card's height in the cell.
    double viewPestHeight() const { return size().height() - TitleHeight; }

    // The pictures added to the card, in the order they were added (later ones lie above).
    QList<ProductImageView*> productImages() const { return m_images; }
    ProductImageView* addProductImage(const QRectF& frame, int tag);
    // viewWithTag: removeFromSuperview: the first picture with the tag goes; false when none has it.
    bool removeSubviewWithTag(int tag);

signals:
    void subviewsChanged();

private:
    QVariantList productImageObjects() const;
    QList<ProductImageView*> m_images;
};

} // namespace ekinora::farms
