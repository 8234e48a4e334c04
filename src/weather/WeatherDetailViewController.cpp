#include "WeatherDetailViewController.h"

#include "WeatherApiRequest.h"
#include "WeatherDetailInfoViewController.h"
#include "WeatherTables.h"
#include "notifications/Bell.h"
#include "service/LocalStore.h"
#include "service/Replies.h"

namespace ekinora::weather {

using namespace platform;

namespace {
const QString WeatherInfoVC = QStringLiteral("weatherDetailInfoVC");
} // namespace

WeatherDetailViewController::WeatherDetailViewController(QObject* parent)
    : ViewController(parent), lblWeatherLocation(makeControl<Label>("lblWeatherLocation")),
      collectionWeather(makeControl<TableView>("collectionWeather")), imgSegment(makeControl<ImageView>("imgSegment")) {
    notifications::Bell::install(this);
    addSegue(WeatherInfoSegue, SegueKind::Show, WeatherInfoVC);
    collectionWeather->setDataSource([this](int) { return int(arrayWeather.size()); },
                                     [this](int, int row) {
                                         return cellRow(dayCell(row), dayCellSize(collectionWeather->size().width()));
                                     });
    collectionWeather->setDidSelectRow([this](int, int row) { didSelectDay(row); });
}

QUrl WeatherDetailViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Weather/WeatherDetailView.qml"));
}

void WeatherDetailViewController::viewDidLoad() {
    arrayWeather = QJsonArray();
    setTitle(QStringLiteral("Hava Durumu"));
    lblWeatherLocation->setText(stringOrNull(member(countyOfUser(), QStringLiteral("name"))));
    getWeatherInfo();
}

void WeatherDetailViewController::viewDidAppear(bool) {
    setNotifBadge();
    notifications::Bell::observe(this);
}

void WeatherDetailViewController::setNotifBadge() { notifications::Bell::setNotifBadge(this); }

void WeatherDetailViewController::getWeatherInfo() {
    const Json county = countyOfUser();
    WeatherApiRequest request;
    request.latValue = member(county, QStringLiteral("latitude"));
    request.lonValue = member(county, QStringLiteral("longitude"));
    auto self = strong(this);
    request.requestDetailData(
        [self](const Json& response) {
            // An empty week leaves the days already shown.
            const QJsonArray days = service::listOf(member(response, QStringLiteral("data")));
            if (days.isEmpty()) return;
            self->arrayWeather = days;
            self->collectionWeather->reloadData();
        },
        [](const Json&) {});
}

QVariantMap WeatherDetailViewController::dayCell(int row) const {
    const Json day = arrayWeather.at(row);
    const auto number = [&day](const char* key, const char* format) {
        return stringWithFormat(QString::fromUtf8(format), {intValue(member(day, QString::fromLatin1(key)))});
    };
    const Json code = member(day, QStringLiteral("pictocode"));
    return QVariantMap{
        {QStringLiteral("reuseIdentifier"), QStringLiteral("WeatherCell")},
        {QStringLiteral("labelDate"), stringOrNull(member(day, QStringLiteral("date")))},
        {QStringLiteral("labelTempMax"), number("maxTemp", "%d°C")},
        {QStringLiteral("labelTempMin"), number("minTemp", "%d°C")},
        {QStringLiteral("labelRainChance"), number("rainRisk", "%d%%")},
        {QStringLiteral("labelRainSize"), number("precipitation", "%dmm")},
        {QStringLiteral("imageConditionUrl"), isNil(code) ? QString() : weatherIconUrl(code)},
        {QStringLiteral("clipsToBounds"), true},
        {QStringLiteral("borderWidth"), 0.5},
        {QStringLiteral("cornerRadius"), 3},
    };
}

void WeatherDetailViewController::didSelectDay(int row) {
    m_tappedRow = row;
    performSegueWithIdentifier(WeatherInfoSegue, this);
}

void WeatherDetailViewController::prepareForSegue(const StoryboardSegue& segue, QObject*) {
    auto* info = qobject_cast<WeatherDetailInfoViewController*>(segue.destination);
    if (!info || m_tappedRow < 0 || m_tappedRow >= arrayWeather.size()) return;
    const Json day = arrayWeather.at(m_tappedRow);
    info->dateYmd = stringOrNull(member(day, QStringLiteral("dateYmd")));
    info->dateFormatted = stringOrNull(member(day, QStringLiteral("date")));
}

} // namespace ekinora::weather
