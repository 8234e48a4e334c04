#pragma once

#include "platform/Controls.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QVariantMap>

namespace ekinora::notifications {

// The notice list, presented from the bell. Asking for it with "ignore_read" "0" is what lets the
// service mark the notices read; the client keeps no marks of its own.
class NotificationViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tblNotification)
    UI_OUTLET(ekinora::platform::Label, lblInfo)
public:
    explicit NotificationViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    QJsonArray arrNotifications;
    platform::TableView* tblNotification;
    platform::Label* lblInfo; // the empty state

    void viewDidLoad() override;
    void getNotifications();

    // The bar of the screen is attached to the top.
    Q_INVOKABLE int positionForBar() const { return 3; }
    // The table's data source. A cell ("NotificationCell"): "lblDate", "lblNotification", and the colour
    // of "imgReadColor", the same on every row.
    int numberOfRowsInSection(int section) const;
    QVariantMap cellForRow(int row) const;

public slots:
    void closeView(QObject* sender = nullptr);
};

} // namespace ekinora::notifications
