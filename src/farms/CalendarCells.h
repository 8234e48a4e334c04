#pragma once

#include "platform/CollectionView.h"

#include <QList>
#include <QRectF>

namespace ekinora::farms {

// A picture added to a cell in code: its frame in its parent view and its tag.
class ProductImageView : public platform::ImageView {
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
class PeriodCollectionViewCell : public platform::CollectionViewCell {
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
    Q_PROPERTY(QObject* lblTitle READ titleLabel CONSTANT)
    Q_PROPERTY(QObject* imgPeriod READ periodImage CONSTANT)
    Q_PROPERTY(QObject* imgPeriodLeft READ leftBar CONSTANT)
    Q_PROPERTY(QObject* imgPeriodRight READ rightBar CONSTANT)
    Q_PROPERTY(QObject* constraintImgPeriodWidth READ widthConstraint CONSTANT)
    Q_PROPERTY(QObject* constraintImgPeriodHeight READ heightConstraint CONSTANT)
    Q_PROPERTY(QObject* constraintImgPeriodLeftHeight READ leftHeightConstraint CONSTANT)
    Q_PROPERTY(QObject* constraintImgPeriodRightHeight READ rightHeightConstraint CONSTANT)
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

private:
    QObject* titleLabel() const { return lblTitle; }
    QObject* periodImage() const { return imgPeriod; }
    QObject* leftBar() const { return imgPeriodLeft; }
    QObject* rightBar() const { return imgPeriodRight; }
    QObject* widthConstraint() const { return constraintImgPeriodWidth; }
    QObject* heightConstraint() const { return constraintImgPeriodHeight; }
    QObject* leftHeightConstraint() const { return constraintImgPeriodLeftHeight; }
    QObject* rightHeightConstraint() const { return constraintImgPeriodRightHeight; }
};

// One pest: its name over a card with its picture behind the pictures of the products against it.
class PestsCollectionViewCell : public platform::CollectionViewCell {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, lblTitle)
    UI_OUTLET(ekinora::platform::View, viewPest)
    UI_OUTLET(ekinora::platform::ImageView, imgBack)
    Q_PROPERTY(QObject* lblTitle READ titleLabel CONSTANT)
    Q_PROPERTY(QObject* viewPest READ pestView CONSTANT)
    Q_PROPERTY(QObject* imgBack READ backImage CONSTANT)
    Q_PROPERTY(QList<QObject*> productImages READ productImageObjects NOTIFY subviewsChanged)
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
    QObject* titleLabel() const { return lblTitle; }
    QObject* pestView() const { return viewPest; }
    QObject* backImage() const { return imgBack; }
    QList<QObject*> productImageObjects() const;
    QList<ProductImageView*> m_images;
};

} // namespace ekinora::farms
