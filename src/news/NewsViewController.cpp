#include "NewsViewController.h"

#include "NewsDetailViewController.h"
#include "notifications/Bell.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "service/WSRequest.h"

#include <QDateTime>

namespace ekinora::news {

using namespace platform;

QString newsDateText(const Json& seconds) {
    return formatDate(QDateTime::fromMSecsSinceEpoch(qint64(doubleValue(seconds) * 1000)), QStringLiteral("dd.MM.yyyy"));
}

NewsViewController::NewsViewController(QObject* parent) : ViewController(parent), tblNews(makeControl<TableView>("tblNews")) {
    setTitle(QStringLiteral("Haberler"));
    notifications::Bell::install(this);
    addSegue(QStringLiteral("NewsDetailSegue"), SegueKind::Show, QStringLiteral("NewsDetailViewController"));
    tblNews->setDataSource([this](int) { return int(arrNews.size()); },
                           [this](int, int row) { return cellRow(cellForRow(row), QSizeF(tblNews->size().width(), 262)); });
    tblNews->setDidSelectRow([this](int section, int row) {
        IndexPath indexPath(row, section, nullptr);
        performSegueWithIdentifier(QStringLiteral("NewsDetailSegue"), &indexPath);
    });
}

QUrl NewsViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/News/NewsView.qml")); }

void NewsViewController::viewDidLoad() {
    arrNews = QJsonArray();
    getNews(false);
}

void NewsViewController::viewDidAppear(bool) {
    setNotifBadge();
    notifications::Bell::observe(this);
}

void NewsViewController::setNotifBadge() { notifications::Bell::setNotifBadge(this); }

void NewsViewController::getNews(bool more) {
    service::WSRequest request;
    request.doParam = QStringLiteral("agricultural-news");
    if (more) request.pageToken = true;
    service::ScreenCall call(this, QStringLiteral("getNews"));
    request.requestData(call.done([this](const Json& response) {
                            service::log(description(response));
                            for (const Json& item : service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("news")})))
                                arrNews.append(item);
                            tblNews->reloadData();
                        }),
                        call.failed());
}

void NewsViewController::scrollViewDidEndDragging(int lastVisibleRow, bool decelerate) {
    if (lastVisibleRow >= int(arrNews.size()) - 1 && decelerate) getNews(true);
}

QVariantMap NewsViewController::cellForRow(int row) const {
    const Json item = arrNews.at(row);
    return {{QStringLiteral("reuseIdentifier"), QStringLiteral("NewsCell")},
            {QStringLiteral("lblInfo"), newsDateText(member(item, QStringLiteral("newsDate")))},
            {QStringLiteral("lblContent"), stringOrNull(member(item, QStringLiteral("header")))},
            {QStringLiteral("imgScreen"), stringOrNull(member(item, QStringLiteral("thumbnailUrl")))}};
}

void NewsViewController::prepareForSegue(const StoryboardSegue& segue, QObject* sender) {
    auto* detail = qobject_cast<NewsDetailViewController*>(segue.destination);
    auto* indexPath = qobject_cast<IndexPath*>(sender);
    if (!detail || !indexPath) return;
    detail->objectID = member(arrNews.at(indexPath->row), QStringLiteral("id"));
}

} // namespace ekinora::news
