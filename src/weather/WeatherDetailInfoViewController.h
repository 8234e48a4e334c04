#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QSizeF>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

namespace ekinora::weather {

// "location"."county" of the stored user record: the point the weather screens are about.
platform::Json countyOfUser();

// A day's screen: the 24 hours of today under the tapped day's date, and for the chosen hour the
// values the farmer keeps as favourites ("weatherKeys"); its second mode lists every value with a star
// to choose them.
class WeatherDetailInfoViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, collectionWeather)
    UI_OUTLET(ekinora::platform::TableView, collectionWeatherHours)
    UI_OUTLET(ekinora::platform::Label, lblWeatherLocation)
    UI_OUTLET(ekinora::platform::Label, lblWeatherDate)
    UI_OUTLET(ekinora::platform::View, viewEmptyScreen)
    UI_OUTLET(ekinora::platform::Button, btnFavList)
    Q_PROPERTY(int currentHour READ currentHourItem NOTIFY currentHourChanged)
public:
    explicit WeatherDetailInfoViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // State.
    QJsonArray arrayWeather;          // the hourly records
    QJsonArray arrayCurrentWeather;   // rows of collectionWeather: one-entry objects
    QJsonArray arrayWeatherInfoTypes; // every selectable row
    QStringList arrayWeatherTypes;
    int currentHourIndexPath = 0; // item of section 0
    bool isEditable = false;
    QString dateYmd, dateFormatted;

    // Views.
    platform::TableView* collectionWeather;
    platform::TableView* collectionWeatherHours;
    platform::Label *lblWeatherLocation, *lblWeatherDate;
    platform::View* viewEmptyScreen;
    platform::Button* btnFavList;

    int currentHourItem() const { return currentHourIndexPath; }

    void viewDidLoad() override;
    void getWeatherInfo();

    // The two collections' data sources and delegates.
    int numberOfValueRows();
    QVariantMap hourCell(int item) const;
    QVariantMap valueCell(int row);
    void didSelect(platform::TableView* collection, int item);
    QSizeF hourCellSize(double width) const { return QSizeF((width - 64) / 7, 20); }
    QSizeF valueCellSize(double width) const { return QSizeF(width - 32, 40); }

    // The hour list came to rest: each visible cell as {"item", "centerX"} in content coordinates, the
    // list's width and its content offset.
    Q_INVOKABLE void scrollViewDidEndDecelerating(const QVariantList& visibleCells, double width, double contentOffsetX);

public slots:
    void changeFavList(QObject* sender = nullptr);

signals:
    void currentHourChanged();
    // The hour list scrolls the item to its middle.
    void scrollHourToCentre(int item, bool animated);

private:
    void chooseHour(int item);
    // The row-0 condition keeps what it showed when the hour has no pictogram.
    QVariantMap m_conditionCell;
};

} // namespace ekinora::weather
