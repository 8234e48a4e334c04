#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QVariantMap>

namespace ekinora::info {

// "Bilgilendirme": a heading row and the three legal pages, each opened in InfoDetailViewController.
// Below the list, the product site's guide to safe use opens in its accordion.
class InfoViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tableViewInfo)
public:
    explicit InfoViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // "name" and "slug" of the three pages, made in viewDidLoad.
    QJsonArray arrInfo;
    platform::TableView* tableViewInfo;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;

    QVariantMap cellForRow(int row) const;
    // The main screen's width, from which the rows take their heights.
    static double screenWidth();

public slots:
    void setNotifBadge();
    void openInfoDetail(QObject* sender = nullptr);
    // The way into the product site's guide, a connection of the layout.
    void openSiteGuide(QObject* sender = nullptr);
};

// A row's index path as a segue's sender.
class IndexPath : public QObject {
    Q_OBJECT
public:
    IndexPath(int row, QObject* parent = nullptr) : QObject(parent), row(row) {}
    const int row;
};

} // namespace ekinora::info
