#pragma once

#include "CalendarCells.h"
#include "platform/CollectionView.h"
#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"
#include "widgets/ProductDetailFlowLayout.h"

#include <QJsonArray>
#include <QSizeF>


namespace ekinora::farms {

// A label made in code and turned to read upwards beside a list.
class SideLabel : public ekinora::platform::Label {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    Q_PROPERTY(double rotation READ rotation NOTIFY changed)
    Q_PROPERTY(QString fontName READ fontName NOTIFY changed)
    Q_PROPERTY(double fontSize READ fontSize NOTIFY changed)
    Q_PROPERTY(double width READ width NOTIFY changed)
public:
    using Label::Label;
    double rotation() const { return m_rotation; }
    QString fontName() const { return m_fontName; }
    double fontSize() const { return m_fontSize; }
    double width() const { return m_width; }
    // The label as its panel gets it: width, font, colour, text and the turn in degrees.
    void make(double width, const QString& fontName, double fontSize, const QColor& color, const QString& text, double rotation);

private:
    double m_rotation = 0;
    QString m_fontName;
    double m_fontSize = 15;
    double m_width = 0;
};

// The crop calendar of one farm: the crop's periods as a chain of pictures with the farm's present one
// marked, and the weeds, harmful creatures and diseases of that period, each with the pictures of the
// products against it. A tap on a period moves the farm there.
class ProductDetailViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, lblTitle)
    UI_OUTLET(ekinora::platform::Button, btnEdit)
    UI_OUTLET(ekinora::platform::Button, btnCancel)
    UI_OUTLET(ekinora::platform::ImageView, imgBannerCrop)
    UI_OUTLET(ekinora::platform::View, viewBannerShade)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constBannerShadeHeight)
    UI_OUTLET(ekinora::farms::SideLabel, lblYabanciOtlar)
    UI_OUTLET(ekinora::farms::SideLabel, lblZararliCanlilar)
    UI_OUTLET(ekinora::farms::SideLabel, lblHastaliklar)
    UI_OUTLET(ekinora::platform::View, viewYabanciOtlar)
    UI_OUTLET(ekinora::platform::View, viewZararliCanlilar)
    UI_OUTLET(ekinora::platform::View, viewHastaliklar)
    UI_OUTLET(ekinora::platform::CollectionView, collPeriods)
    UI_OUTLET(ekinora::platform::CollectionView, collYabanciOtlar)
    UI_OUTLET(ekinora::platform::CollectionView, collZararliCanlilar)
    UI_OUTLET(ekinora::platform::CollectionView, collHastaliklar)
    UI_OUTLET(ekinora::widgets::ProductDetailFlowLayout, layoutYabanciOtlar)
    UI_OUTLET(ekinora::widgets::ProductDetailFlowLayout, layoutZararliCanlilar)
    UI_OUTLET(ekinora::widgets::ProductDetailFlowLayout, layoutHastaliklar)
    Q_PROPERTY(double periodItemSide READ periodItemSideValue CONSTANT)
public:
    explicit ProductDetailViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // Set by the caller before the screen loads.
    platform::Json objectID{QJsonValue::Undefined};
    platform::Json produceName{QJsonValue::Undefined};
    platform::Json produceImage{QJsonValue::Undefined};

    QJsonArray arrPeriods;
    QJsonArray arrYabanciOtlar;
    QJsonArray arrZararliCanlilar;
    QJsonArray arrHastaliklar;
    qint32 currentPeriod = 0;
    qint32 tempPeriod = 0;

    platform::Label* lblTitle;
    platform::Button* btnEdit;
    platform::Button* btnCancel;
    platform::ImageView* imgBannerCrop;
    // Laid over the banner once its picture has come.
    platform::View* viewBannerShade;
    platform::LayoutConstraint* constBannerShadeHeight;
    platform::View *viewYabanciOtlar, *viewZararliCanlilar, *viewHastaliklar;
    SideLabel *lblYabanciOtlar, *lblZararliCanlilar, *lblHastaliklar;
    platform::CollectionView *collPeriods, *collYabanciOtlar, *collZararliCanlilar, *collHastaliklar;
    // The pest lists snap a card 16 points from the left edge.
    widgets::ProductDetailFlowLayout *layoutYabanciOtlar, *layoutZararliCanlilar, *layoutHastaliklar;

    void viewDidLoad() override;
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;
    int preferredStatusBarStyle() const { return 1; }

    void getPeriods();
    void swipeToCurrent();
    void swipeEffect();

    // The width of the screen's view, and the side of a period's item and picture.
    static double screenWidth();
    static double periodItemSide() { return screenWidth() / 2 - 64; }
    static double periodPictureSide() { return screenWidth() / 2 - 64 - 53 - 20; }
    double periodItemSideValue() const { return periodItemSide(); }
    // A pest card: the collection's size less 32 each way.
    QSizeF pestItemSize(const platform::CollectionView* collection) const;

    // The list behind a collection.
    const QJsonArray& listOf(const platform::CollectionView* collection) const;

public slots:
    void activateEditing(QObject* sender = nullptr);
    void selectPeriod(QObject* sender = nullptr);
    void cancelEditing(QObject* sender = nullptr);
    void closeViewController(QObject* sender = nullptr);

private:
    platform::CollectionViewCell* periodCell(platform::CollectionView* collection, int item);
    platform::CollectionViewCell* pestCell(platform::CollectionView* collection, int section);
    void didSelectItem(platform::CollectionView* collection, int section, int item);
    // The buttons and the title of browsing.
    void endEditingMode();
};

} // namespace ekinora::farms
