#pragma once

#include "platform/Controls.h"
#include "platform/ViewController.h"

#include <QVariantMap>

namespace ekinora::sale {

// The codes the service holds for the dealer's open transaction, with a last row of buttons to add
// and remove; from here the dealer ends the session or confirms the sale.
class ProductListViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tableView)
    // The table's background view: the empty-list label, shown while the list has no code.
    UI_OUTLET(ekinora::platform::Label, backgroundView)
    Q_PROPERTY(int separatorStyle READ separatorStyle NOTIFY tableLookChanged)
    Q_PROPERTY(bool refreshing READ isRefreshing NOTIFY refreshingChanged)
public:
    explicit ProductListViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::TableView* tableView;
    platform::Label* backgroundView;

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;

    int numberOfRows();
    QVariantMap cellForRow(int row) const;
    int separatorStyle() const { return m_separatorStyle; }
    bool isRefreshing() const { return m_refreshing; }

    void loadList();
    // The list's end of the transaction: it names the transaction by "hash".
    void endTransaction();
    void confirmTransaction();
    // The answer, then everything presented is taken back and the dealer is where he started.
    void showListAlert(const QString& text);

public slots:
    void ekleButtonTappedWithSender(QObject* sender = nullptr);
    void eraseButtonTappedWithSender(QObject* sender = nullptr);
    void closeButtonTapped(QObject* sender = nullptr);
    void completeProcessButtonTapped(QObject* sender = nullptr);
    // The pull on the table: its spinner ends at once, the wait overlay takes over.
    void loadData(QObject* sender = nullptr);
    // The arrangement's pull begins the refresh.
    void beginRefreshing();

signals:
    void tableLookChanged();
    void refreshingChanged();

private:
    int m_separatorStyle = 1;
    bool m_refreshing = false;
};

} // namespace ekinora::sale
