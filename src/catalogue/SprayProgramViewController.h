#pragma once

#include "platform/Controls.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"

namespace ekinora::catalogue {

// The company's spray programmes as a grid of tiles, from the product site's list.
class SprayProgramViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, collectionView)
public:
    explicit SprayProgramViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;
    platform::TableView* collectionView;
    void viewDidLoad() override;
    void loadSprayPrograms();
    void didSelectItem(int row);
};

// One programme's page under its own bar, which carries the title.
class SprayProgramWebViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::WebView, webView)
    UI_OUTLET(ekinora::platform::Label, navBar)
public:
    explicit SprayProgramWebViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;
    platform::WebView* webView;
    platform::Label* navBar; // its text is the bar's top title
    void viewDidLoad() override;
public slots:
    void closeButtonTapped(QObject* sender = nullptr);
};

} // namespace ekinora::catalogue
