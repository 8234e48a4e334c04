#include "EventViewController.h"

#include "EventDetailViewController.h"
#include "notifications/Bell.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "service/WSRequest.h"
#include "widgets/Colors.h"

namespace ekinora::events {

using namespace platform;

namespace {

const QColor HeaderGrey = QColor::fromRgbF(0.9019607843137255, 0.9019607843137255, 0.9019607843137255);

struct IndexPath : QObject {
    IndexPath(int s, int r) : section(s), row(r) {}
    int section, row;
};

} // namespace

EventViewController::EventViewController(QObject* parent)
    : ViewController(parent), tblEvent(makeControl<TableView>("tblEvent")), slider(addControl(new widgets::Slider)),
      imgInfoBack(makeControl<ImageView>("imgInfoBack")), lblInfoBack(makeControl<Label>("lblInfoBack")) {
    setTitle(QStringLiteral("Etkinlikler"));
    notifications::Bell::install(this);
    addSegue(QStringLiteral("EventDetailSegue"), SegueKind::Show, QStringLiteral("EventDetailViewController"));
    lblInfoBack->setNumberOfLines(0);
    lblInfoBack->setText(QStringLiteral("Şu anda duyurulmuş bir etkinlik bulunmuyor. Yeni etkinlikler burada yer alacak."));
    imgInfoBack->setImage(QStringLiteral("eventEmpty"));
    tblEvent->setDataSource([this](int section) { return int(eventsOfSection(section).size()); },
                            [this](int section, int row) {
                                return cellRow(cellForRow(section, row), QSizeF(tblEvent->size().width(), 96));
                            },
                            [this] { return numberOfSections(); });
    tblEvent->setDidSelectRow([this](int section, int row) {
        IndexPath indexPath(section, row);
        indexPath.setObjectName(QStringLiteral("indexPath"));
        performSegueWithIdentifier(QStringLiteral("EventDetailSegue"), &indexPath);
    });
}

QUrl EventViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Events/EventView.qml")); }

void EventViewController::viewDidLoad() {
    arrEventPast = QJsonArray();
    arrEventActive = QJsonArray();
    imageData = QJsonArray();
    imgInfoBack->setHidden(true);
    lblInfoBack->setHidden(true);
}

void EventViewController::viewDidAppear(bool) {
    getEvents();
    setNotifBadge();
    notifications::Bell::observe(this);
}

void EventViewController::setNotifBadge() { notifications::Bell::setNotifBadge(this); }

void EventViewController::getEvents() {
    service::ScreenCall call(this, QStringLiteral("getEvents"), service::ScreenCall::WithHud);
    service::WSRequest request;
    request.doParam = QStringLiteral("events");
    request.requestData(call.done([this](const Json& response) {
                            service::log(description(response));
                            arrEventPast = QJsonArray();
                            arrEventActive = QJsonArray();
                            imageData = QJsonArray();
                            const Json data = member(response, QStringLiteral("data"));
                            arrEventPast = service::listOf(member(data, QStringLiteral("past")));
                            for (const Json& e : service::listOf(member(data, QStringLiteral("ongoing")))) arrEventActive.append(e);
                            for (const Json& e : service::listOf(member(data, QStringLiteral("coming")))) arrEventActive.append(e);
                            // The nearest events' pictures first; a null takes its place too.
                            for (const QJsonArray* list : {&arrEventActive, &arrEventPast})
                                for (const Json& event : *list) {
                                    if (imageData.size() >= SliderLimit) break;
                                    const Json image = member(event, QStringLiteral("image"));
                                    // A missing key can't go into the list: the reply always carries it.
                                    if (isNil(image)) fatal(QStringLiteral("event without \"image\" added to imageData"));
                                    imageData.append(image);
                                }
                            // Judged before the nulls go: events that all lack pictures show neither.
                            const bool empty = imageData.isEmpty();
                            imgInfoBack->setHidden(!empty);
                            lblInfoBack->setHidden(!empty);
                            QStringList slides;
                            for (const Json& image : imageData)
                                if (!image.isNull()) slides << description(image);
                            QJsonArray withoutNulls;
                            for (const Json& image : imageData)
                                if (!image.isNull()) withoutNulls.append(image);
                            imageData = withoutNulls;
                            if (slider) {
                                slider->setSlides(slides);
                                slider->setupSliderView();
                            }
                            tblEvent->reloadData();
                            emit sectionsChanged();
                        }),
                        call.failed());
}

int EventViewController::numberOfSections() const { return arrEventActive.isEmpty() || arrEventPast.isEmpty() ? 1 : 2; }

bool EventViewController::sectionIsActive(int section) const { return section == 0 && !arrEventActive.isEmpty(); }

const QJsonArray& EventViewController::eventsOfSection(int section) const {
    return sectionIsActive(section) ? arrEventActive : arrEventPast;
}

QVariantList EventViewController::sectionHeaders() const {
    QVariantList headers;
    for (int s = 0; s < numberOfSections(); ++s) {
        const bool active = sectionIsActive(s);
        headers << QVariantMap{{QStringLiteral("title"), active ? QStringLiteral("Gelecek Etkinlikler") : QStringLiteral("Geçmiş Etkinlikler")},
                               {QStringLiteral("textColor"), active ? widgets::Colors::leaf() : widgets::Colors::black()},
                               {QStringLiteral("tint"), active ? QColor(Qt::white) : HeaderGrey}};
    }
    return headers;
}

QVariantMap EventViewController::cellForRow(int section, int row) const {
    const bool active = sectionIsActive(section);
    const Json event = eventsOfSection(section).at(row);
    QVariantMap cell{{QStringLiteral("reuseIdentifier"), QStringLiteral("EventCell")},
                     {QStringLiteral("lblTitle"), stringOrNull(member(event, QStringLiteral("name")))},
                     {QStringLiteral("lblInfo"), stringOrNull(member(event, QStringLiteral("place")))},
                     {QStringLiteral("lblDay"), description(member(event, QStringLiteral("dayNumber")))},
                     {QStringLiteral("lblMonth"), stringOrNull(member(event, QStringLiteral("monthName")))},
                     {QStringLiteral("viewFrameAlpha"), active ? 1.0 : 0.6},
                     {QStringLiteral("background"), active ? QColor(Qt::white) : HeaderGrey}};
    // A past event's date frame keeps the colour it is laid out with.
    if (active) {
        const Json isJoin = member(event, QStringLiteral("isJoin"));
        const bool joined = isJoin.isBool() ? isJoin.toBool() : false;
        cell.insert(QStringLiteral("viewDateFrame"), joined ? widgets::Colors::leaf() : widgets::Colors::cerulean());
    } else {
        cell.insert(QStringLiteral("viewDateFrame"), widgets::Colors::cerulean());
    }
    return cell;
}

void EventViewController::prepareForSegue(const StoryboardSegue& segue, QObject* sender) {
    auto* detail = qobject_cast<EventDetailViewController*>(segue.destination);
    auto* indexPath = static_cast<IndexPath*>(sender);
    if (!detail || !indexPath) return;
    detail->objectID = member(eventsOfSection(indexPath->section).at(indexPath->row), QStringLiteral("id"));
}

} // namespace ekinora::events
