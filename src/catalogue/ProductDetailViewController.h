#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"

#include <QMap>

namespace ekinora::catalogue {

// One plant-protection product: header, fact sheet, documents, sections that open one at a time with
// bodies built as HTML on the device and measured off-screen before they are shown, and a media strip.
class ProductDetailViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::ImageView, productImg)
    UI_OUTLET(ekinora::platform::Label, productNameLbl)
    UI_OUTLET(ekinora::platform::Label, productName2Lbl)
    UI_OUTLET(ekinora::platform::Label, productSloganLbl)
    UI_OUTLET(ekinora::platform::TableView, tableView1)
    UI_OUTLET(ekinora::platform::LayoutConstraint, tableView1Height)
    UI_OUTLET(ekinora::platform::TableView, tableView2)
    UI_OUTLET(ekinora::platform::LayoutConstraint, tableView2Height)
    UI_OUTLET(ekinora::platform::TableView, collectionView)
    UI_OUTLET(ekinora::platform::LayoutConstraint, collectionViewHeight)
    UI_OUTLET(ekinora::platform::View, fullImageView)
    UI_OUTLET(ekinora::platform::ImageView, largeImageView)
    UI_OUTLET(ekinora::platform::Button, closeImageButton)
    UI_OUTLET(ekinora::platform::View, topView)
    UI_OUTLET(ekinora::platform::Label, productGroupLbl)
    UI_OUTLET(ekinora::platform::Label, productMatterLbl)
    UI_OUTLET(ekinora::platform::Label, productFormulationLbl)
    UI_OUTLET(ekinora::platform::Label, productPackageLbl)
    UI_OUTLET(ekinora::platform::WebView, openSectionWebView)
    Q_PROPERTY(QVariantList measuringViews READ measuringViews NOTIFY measuringViewsChanged)
    Q_PROPERTY(double viewWidth READ viewWidth WRITE setViewWidth NOTIFY viewWidthChanged)
public:
    explicit ProductDetailViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::ImageView* productImg;
    platform::Label* productNameLbl;
    platform::Label* productName2Lbl;
    platform::Label* productSloganLbl;
    platform::TableView* tableView1;
    platform::LayoutConstraint* tableView1Height;
    platform::TableView* tableView2;
    platform::LayoutConstraint* tableView2Height;
    platform::TableView* collectionView;
    platform::LayoutConstraint* collectionViewHeight;
    platform::View* fullImageView;
    platform::ImageView* largeImageView;
    platform::Button* closeImageButton;
    platform::View* topView;
    platform::Label* productGroupLbl;
    platform::Label* productMatterLbl;
    platform::Label* productFormulationLbl;
    platform::Label* productPackageLbl;
    // The web view of the open section's cell.
    platform::WebView* openSectionWebView;

    bool checkWebView = false; // nothing reads it
    int selectedIndex = 0;
    QStringList contentStrings;
    QMap<int, double> contentHeights;
    int contentStringIndex = 0;
    // The hidden views that measure each entry of contentStrings; tag = position.
    QList<platform::WebView*> measurers;

    QVariantList measuringViews() const {
        QVariantList views;
        for (auto* w : measurers) views.append(QVariant::fromValue<QObject*>(w));
        return views;
    }
    double viewWidth() const { return m_viewWidth; }
    void setViewWidth(double w);

    void viewDidLoad() override;
    void loadProductDetail();
    void fillProductHeader();
    void updateDocumentTable();
    void measureContentStrings();
    void webViewDidFinishNavigation(platform::WebView* webView);
    void updateContentTable();
    // The table's height with every row at its own height.
    static double contentHeight(const platform::TableView* table);

public slots:
    void callButton(QObject* sender = nullptr);
    void closeImageView(QObject* sender = nullptr);

signals:
    void measuringViewsChanged();
    void viewWidthChanged();

private:
    platform::ListRow documentCell(int row) const;
    platform::ListRow sectionCell(int row);
    platform::ListRow mediaCell(int row) const;
    void didSelectSection(int row);
    void didSelectDocument(int row);
    void didSelectMedia(int row);
    platform::Json data() const;

    double m_viewWidth = 390;
};

} // namespace ekinora::catalogue
