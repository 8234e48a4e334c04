#include "NewsDetailViewController.h"

#include "NewsViewController.h"
#include "service/ServiceCall.h"
#include "service/WSRequest.h"

namespace ekinora::news {

using namespace platform;

NewsDetailViewController::NewsDetailViewController(QObject* parent)
    : ViewController(parent), lblTitle(makeControl<Label>("lblTitle")), lblDate(makeControl<Label>("lblDate")),
      txtContent(makeControl<Label>("txtContent")), imagePhoto(makeControl<ImageView>("imagePhoto")),
      viewHeader(makeControl<View>("viewHeader")) {
    setTitle(QStringLiteral("Haberler"));
    lblTitle->setNumberOfLines(0);
    txtContent->setNumberOfLines(0);
}

QUrl NewsDetailViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/News/NewsDetailView.qml")); }

void NewsDetailViewController::viewDidLoad() { getDealDetail(); }

void NewsDetailViewController::getDealDetail() {
    service::WSRequest request;
    request.doParam = QStringLiteral("agricultural-news/detail");
    request.objectID = objectID;
    service::ScreenCall call(this, QStringLiteral("getDealDetail"));
    request.requestData(call.done([this](const Json& response) {
                            service::log(description(response));
                            const Json item = path(response, {QStringLiteral("data"), QStringLiteral("newsItem")});
                            lblTitle->setText(stringOrNull(member(item, QStringLiteral("header"))));
                            lblDate->setText(newsDateText(member(item, QStringLiteral("newsDate"))));
                            txtContent->setText(stringOrNull(member(item, QStringLiteral("longDescription"))));
                            imagePhoto->setImageWithURL(QUrl(stringOrNull(member(item, QStringLiteral("imageUrl")))));
                            m_scroll = true;
                            emit contentChanged();
                        }),
                        call.failed());
}

} // namespace ekinora::news
