#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QSizeF>
#include <QVariantMap>

namespace ekinora::weather {

// "Hava Durumu": the coming days of the farmer's county, one card a day; a tap opens the day's hours.
class WeatherDetailViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, lblWeatherLocation)
    UI_OUTLET(ekinora::platform::TableView, collectionWeather)
    UI_OUTLET(ekinora::platform::ImageView, imgSegment)
public:
    explicit WeatherDetailViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    static inline const QString WeatherInfoSegue = QStringLiteral("WeatherInfoSegue");

    // State.
    QJsonArray arrayWeather;
    int currentTimeType = 0; // kept with the screen's state; nothing reads it

    // Views.
    platform::Label* lblWeatherLocation;
    platform::TableView* collectionWeather;
    platform::ImageView* imgSegment;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;

    void getWeatherInfo();

    // The day list's data source and delegate.
    QVariantMap dayCell(int row) const;
    QSizeF dayCellSize(double listWidth) const { return QSizeF(listWidth - 32, 112); }
    void didSelectDay(int row);

public slots:
    void setNotifBadge();

private:
    int m_tappedRow = -1;
};

} // namespace ekinora::weather
