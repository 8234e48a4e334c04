#pragma once

#include "platform/Controls.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QRectF>
#include <QVariantMap>

namespace ekinora::shell {

// The left panel of the side menu: the items of the user's "menu", in the service's order. Opening an
// item replaces the whole content of the container.
class LeftMenuViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tableView)
    UI_OUTLET(ekinora::platform::Label, lblReloadTime)
    Q_PROPERTY(int rowHeight READ rowHeightValue NOTIFY layoutChanged)
    Q_PROPERTY(QRectF tableFrame READ tableFrame NOTIFY layoutChanged)
public:
    explicit LeftMenuViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    QJsonArray arrList;     // only sizes the table at load
    QJsonArray menuListArr; // dictionaries with "name", "icon" and "id"
    qint32 rowHeight = 45;
    platform::TableView* tableView;
    platform::Label* lblReloadTime; // kept, never written

    void viewDidLoad() override;

    // The list's data source and delegate.
    int numberOfRowsInSection(int section) const;
    int heightForRow(int row) const { return rowHeight; }
    // A cell's content: "text" (plain), "html" (with the new mark) and "icon".
    QVariantMap cellForRow(int row) const;
    void didSelectRow(int row);

    int rowHeightValue() const { return rowHeight; }
    QRectF tableFrame() const { return m_tableFrame; }

    // Whole days since "menuItemCounter"; above 60 the new mark is gone.
    int daysSinceMenuItemCounter() const;

public slots:
    void checkMenuList();
    void checkUnreadMessages();
    void somethingHappens();
    void logout();
    void openScheme(const QString& url);
    bool schemeAvailable(const QString& url) const;

signals:
    void layoutChanged();

private:
    void handOver(const QString& target, bool hasTarget);
    QRectF m_tableFrame;
};

} // namespace ekinora::shell
