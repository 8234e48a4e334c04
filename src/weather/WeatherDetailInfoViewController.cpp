#include "WeatherDetailInfoViewController.h"

#include "WeatherApiRequest.h"
#include "WeatherTables.h"
#include "platform/Platform.h"
#include "platform/UserDefaults.h"
#include "service/LocalStore.h"
#include "service/Replies.h"

#include <QJsonObject>
#include <cmath>

namespace ekinora::weather {

using namespace platform;
using service::LocalStore;
using service::StoreKey::WeatherKeys;

Json countyOfUser() {
    return path(LocalStore::userInfo(), {QStringLiteral("location"), QStringLiteral("county")});
}

namespace {

const QString Condition = QStringLiteral("weatherCondition");

QString keyOf(const Json& entry) {
    const QStringList keys = entry.toObject().keys();
    return keys.isEmpty() ? QString() : keys.first();
}

QJsonArray storedKeys() { return service::listOf(LocalStore::defaults().jsonForKey(WeatherKeys)); }

} // namespace

WeatherDetailInfoViewController::WeatherDetailInfoViewController(QObject* parent)
    : ViewController(parent), collectionWeather(makeControl<TableView>("collectionWeather")),
      collectionWeatherHours(makeControl<TableView>("collectionWeatherHours")),
      lblWeatherLocation(makeControl<Label>("lblWeatherLocation")), lblWeatherDate(makeControl<Label>("lblWeatherDate")),
      viewEmptyScreen(makeControl<View>("viewEmptyScreen")), btnFavList(makeControl<Button>("btnFavList")) {
    btnFavList->setTitle(QStringLiteral("DETAYLAR"));
    btnFavList->addTarget(this, QStringLiteral("changeFavList"));
    collectionWeatherHours->setDataSource(
        [](int) { return 24; },
        [this](int, int item) { return cellRow(hourCell(item), hourCellSize(collectionWeatherHours->size().width())); });
    collectionWeatherHours->setDidSelectRow([this](int, int item) { didSelect(collectionWeatherHours, item); });
    collectionWeather->setDataSource(
        [this](int) { return numberOfValueRows(); },
        [this](int, int row) { return cellRow(valueCell(row), valueCellSize(collectionWeather->size().width())); });
    collectionWeather->setDidSelectRow([this](int, int row) { didSelect(collectionWeather, row); });
}

QUrl WeatherDetailInfoViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Weather/WeatherDetailInfoView.qml"));
}

void WeatherDetailInfoViewController::viewDidLoad() {
    arrayCurrentWeather = storedKeys();
    // The wind labels differ in case from the stored default; the favourite toggle compares labels.
    arrayWeatherInfoTypes = QJsonArray{
        QJsonObject{{Condition, ""}},
        QJsonObject{{"temperature", QStringLiteral("Sıcaklık")}},
        QJsonObject{{"precipitation", QStringLiteral("Yağış")}},
        QJsonObject{{"windspeed", QStringLiteral("Rüzgar Hızı")}},
        QJsonObject{{"winddirection", QStringLiteral("Rüzgar Yönü")}},
    };
    arrayWeatherTypes = weather::arrayWeatherTypes();
    currentHourIndexPath = 0;
    lblWeatherLocation->setText(stringOrNull(member(countyOfUser(), QStringLiteral("name"))));
    lblWeatherDate->setText(dateFormatted);
    isEditable = false;
    getWeatherInfo();
}

void WeatherDetailInfoViewController::getWeatherInfo() {
    const Json county = countyOfUser();
    WeatherApiRequest request;
    request.latValue = member(county, QStringLiteral("latitude"));
    request.lonValue = member(county, QStringLiteral("longitude"));
    request.dateYMD = dateYmd;
    auto self = strong(this);
    // Today's hours, whichever day was tapped.
    request.requestData(
        [self](const Json& response) {
            self->arrayWeather = service::listOf(member(response, QStringLiteral("data")));
            self->currentHourIndexPath = Platform::current().scheduler().now().time().hour();
            emit self->currentHourChanged();
            self->collectionWeatherHours->reloadData();
            self->collectionWeather->reloadData();
            emit self->scrollHourToCentre(self->currentHourIndexPath, true);
        },
        [](const Json&) {});
}

int WeatherDetailInfoViewController::numberOfValueRows() {
    viewEmptyScreen->setHidden(!arrayCurrentWeather.isEmpty());
    return int(arrayCurrentWeather.size());
}

QVariantMap WeatherDetailInfoViewController::hourCell(int item) const {
    const bool chosen = item == currentHourIndexPath;
    const Json record = item < arrayWeather.size() ? Json(arrayWeather.at(item)) : nil();
    QString text;
    if (!isNil(record)) text = stringWithFormat(QStringLiteral("%@"), {member(record, QStringLiteral("time"))});
    if (chosen && !isNil(record)) text += QStringLiteral(":00");
    return QVariantMap{
        {QStringLiteral("reuseIdentifier"), QStringLiteral("WeatherHourCell")},
        {QStringLiteral("labelHour"), text},
        {QStringLiteral("fontName"), chosen ? QStringLiteral("AvenirNext-Medium") : QStringLiteral("AvenirNext-Regular")},
        {QStringLiteral("fontSize"), chosen ? 16 : 14},
        {QStringLiteral("textColor"), chosen ? QStringLiteral("#000000") : QStringLiteral("#333333")},
        {QStringLiteral("chosen"), chosen},
    };
}

QVariantMap WeatherDetailInfoViewController::valueCell(int row) {
    const Json d = currentHourIndexPath < arrayWeather.size() ? Json(arrayWeather.at(currentHourIndexPath)) : nil();
    const Json entry = arrayCurrentWeather.at(row);
    const QString key = keyOf(entry);
    QVariantMap cell{{QStringLiteral("reuseIdentifier"), QStringLiteral("WeatherCell")},
                     {QStringLiteral("clipsToBounds"), true},
                     {QStringLiteral("borderWidth"), 0.5},
                     {QStringLiteral("cornerRadius"), 3}};
    if (row == 0 && key == Condition) {
        const Json code = member(d, QStringLiteral("pictocode"));
        if (intValue(code) >= 1) {
            // A pictogram past the table is the service's own: its picture without a text.
            const int n = intValue(code);
            m_conditionCell = QVariantMap{
                {QStringLiteral("labelInfo"), n <= arrayWeatherTypes.size() ? arrayWeatherTypes.at(n - 1) : QString()},
                {QStringLiteral("labelInfoValue"), QString()},
                {QStringLiteral("imageConditionUrl"), weatherIconUrl(code)},
                {QStringLiteral("imageCondition"), QString()}};
        }
        cell.insert(m_conditionCell);
    } else {
        const Json value = member(d, key);
        QString text;
        if (key == QStringLiteral("winddirection"))
            text = isNil(value) ? QString() : getDirectionForAngle(floatValue(value));
        else if (!isNil(value))
            text = stringWithFormat(QStringLiteral("%@"), {value});
        cell.insert(QStringLiteral("labelInfo"), stringOrNull(member(entry, key)));
        cell.insert(QStringLiteral("labelInfoValue"), text);
        cell.insert(QStringLiteral("imageCondition"), key);
        cell.insert(QStringLiteral("imageConditionUrl"), QString());
    }
    // The star goes by key alone.
    bool favourite = false;
    for (const auto& stored : storedKeys()) favourite = favourite || keyOf(stored) == key;
    cell.insert(QStringLiteral("imageFav"), favourite ? QStringLiteral("favFilled") : QStringLiteral("favEmpty"));
    return cell;
}

void WeatherDetailInfoViewController::didSelect(TableView* collection, int item) {
    // Made for both collections: in edit mode the value row numbered like the chosen hour can't be toggled.
    if (item == currentHourIndexPath) return;
    if (collection == collectionWeatherHours) {
        chooseHour(item);
        return;
    }
    if (!isEditable || item < 0 || item >= arrayWeatherInfoTypes.size()) return;
    const QJsonValue type = arrayWeatherInfoTypes.at(item);
    QJsonArray keys = storedKeys();
    bool found = false;
    for (qsizetype i = keys.size() - 1; i >= 0; --i) {
        if (keys.at(i) == type) {
            keys.removeAt(i);
            found = true;
        }
    }
    if (!found) keys.append(type);
    LocalStore::defaults().setJson(WeatherKeys, keys);
    LocalStore::defaults().synchronize();
    collectionWeather->reloadData();
}

void WeatherDetailInfoViewController::chooseHour(int item) {
    currentHourIndexPath = item;
    emit currentHourChanged();
    collectionWeatherHours->reloadData();
    emit scrollHourToCentre(item, true);
    collectionWeather->reloadData();
}

void WeatherDetailInfoViewController::changeFavList(QObject* sender) {
    auto* button = qobject_cast<Button*>(sender);
    if (!button) button = btnFavList;
    if (isEditable) {
        button->setTitle(QStringLiteral("DETAYLAR"));
        arrayCurrentWeather = storedKeys();
        isEditable = false;
    } else {
        button->setTitle(QStringLiteral("ÖZET"));
        arrayCurrentWeather = arrayWeatherInfoTypes;
        isEditable = true;
    }
    collectionWeather->reloadData();
}

void WeatherDetailInfoViewController::scrollViewDidEndDecelerating(const QVariantList& visibleCells, double width,
                                                                   double contentOffsetX) {
    int nearest = -1;
    double best = 0;
    for (const QVariant& v : visibleCells) {
        const QVariantMap cell = v.toMap();
        const double distance = std::abs(cell.value(QStringLiteral("centerX")).toDouble() - width / 2 - contentOffsetX);
        if (nearest < 0 || distance < best) {
            nearest = cell.value(QStringLiteral("item")).toInt();
            best = distance;
        }
    }
    if (nearest >= 0 && nearest != currentHourIndexPath) chooseHour(nearest);
}

} // namespace ekinora::weather
