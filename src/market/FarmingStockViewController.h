#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"
#include "widgets/DropDownList.h"

#include <QJsonArray>
#include <QPointer>
#include <QVariantMap>

namespace ekinora::market {

// An on-off switch; a change sends its actions.
class Switch : public ekinora::platform::Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(UISwitch)
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(bool on READ isOn WRITE setOn NOTIFY changed)
public:
    using Control::Control;
    bool isOn() const { return m_on; }
    void setOn(bool on) { set(m_on, on); }
    // A change by the user: the new state, then the actions.
    Q_INVOKABLE void toggle(bool on) {
        setOn(on);
        sendActions();
    }

private:
    bool m_on = true;
};

// "Tarım Borsası": crop prices of two sources, by product group, everywhere or in the farmer's city.
class FarmingStockViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tblStocks)
    UI_OUTLET(ekinora::platform::ImageView, imgSegment)
    UI_OUTLET(ekinora::platform::Button, btnFilter)
    UI_OUTLET(ekinora::platform::Button, btnStockH)
    UI_OUTLET(ekinora::platform::Button, btnStockB)
    UI_OUTLET(ekinora::market::Switch, switchLocation)
    Q_PROPERTY(ekinora::widgets::DropDownList* dropDownMenu READ dropDownMenu NOTIFY dropDownChanged)
public:
    static constexpr int TabH = 101, TabB = 102;

    explicit FarmingStockViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    QJsonArray arrProduce, arrProduceCategories;
    QString paramStockType = QStringLiteral("H");
    int paramLocationType = 0;
    platform::Json paramCategory{QJsonValue::Undefined};
    QString strLocationName;
    widgets::DropDownList* dropDownMenu() const { return m_dropDown; }

    platform::TableView* tblStocks;
    platform::ImageView* imgSegment;
    platform::Button *btnFilter, *btnStockH, *btnStockB;
    Switch* switchLocation;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;

    void getProduces();
    void getProduceCategories();
    QVariantMap stockCell(int row) const;

public slots:
    void setNotifBadge();
    void changeStockType(QObject* sender = nullptr);
    void changeLocationType(QObject* sender = nullptr);
    void openProductMenu(QObject* sender = nullptr);
    void dropDownListDelegateMethod(QObject* sender);
    void rel();

signals:
    void dropDownChanged();
    // The list goes back to its first row, unanimated.
    void scrollToTop();

protected:
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;

private:
    void setDropDown(widgets::DropDownList* list);
    QPointer<widgets::DropDownList> m_dropDown;
    int m_selectedRow = -1;
};

// One crop's prices by variety and city.
class FSDetailViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tblStocks)
public:
    explicit FSDetailViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::Json dictProduce{QJsonValue::Undefined};
    QString strProduceType;
    QJsonArray arrProduce;
    platform::TableView* tblStocks;

    void viewDidLoad() override;
    void getProduceDetail();
    QVariantMap stockCell(int row) const;

signals:
    void scrollToTop();
};

// "%.2f TL" of a price read through a 32-bit float.
QString priceText(const platform::Json& value);

} // namespace ekinora::market
