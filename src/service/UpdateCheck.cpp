#include "UpdateCheck.h"

#include "RequestFrame.h"
#include "ServiceRoots.h"
#include "platform/AlertController.h"
#include "platform/Platform.h"

namespace ekinora::service {

using namespace platform;

UpdateCheck& UpdateCheck::sharedInstance() {
    static UpdateCheck check;
    return check;
}

UpdateCheck::Change UpdateCheck::compare(const QString& installed, const QString& published) {
    const QStringList a = installed.split(u'.'), b = published.split(u'.');
    for (int i = 0; i < 4; ++i) {
        const int x = i < a.size() ? a[i].toInt() : 0;
        const int y = i < b.size() ? b[i].toInt() : 0;
        if (y > x) return i == 0 ? Change::Major : i == 1 ? Change::Minor : i == 2 ? Change::Patch : Change::Revision;
        if (y < x) return Change::None;
    }
    return Change::None;
}

UpdateCheck::AlertType UpdateCheck::alertTypeFor(Change change) const {
    switch (change) {
    case Change::Major: return m_major;
    case Change::Minor: return m_minor;
    case Change::Patch: return m_patch;
    case Change::Revision: return m_revision;
    case Change::None: break;
    }
    return None;
}

void UpdateCheck::checkVersion() {
    HttpRequest request;
    request.url = RequestFrame::appendQuery(Roots::ServiceBase + QStringLiteral("/"), "do=app/version");
    request.headers = RequestFrame::defaultHeaders();
    Platform::current().http().send(request, {}, [this](const HttpResponse& response) {
        if (!response.transportOk || response.statusCode != 200) return;
        const Json reply = decodeJson(response.body);
        const Json data = reply.isObject() ? reply.toObject().value(QStringLiteral("data")) : nil();
        if (!data.isObject()) return;
        const QString published = data.toObject().value(QStringLiteral("version")).toString();
        const QString store = data.toObject().value(QStringLiteral("storeUrl")).toString(Roots::StoreAppURL);
        const QString installed = Platform::current().application().bundleShortVersion();
        if (m_debug) Platform::current().application().log(QStringLiteral("update check: %1 installed, %2 published").arg(installed, published));
        const AlertType type = alertTypeFor(compare(installed, published));
        if (type == Force || type == Option || type == Skip) present(published, store, type);
    });
}

void UpdateCheck::present(const QString& published, const QString& storeUrl, AlertType type) {
    if (!m_presenter) return;
    auto* alert = AlertController::alertControllerWithTitle(
        QStringLiteral("Güncelleme Mevcut"),
        QStringLiteral("Ekinora uygulamasının yeni bir sürümü (%1) yayımlandı. Lütfen uygulamanızı güncelleyiniz.").arg(published));
    const QUrl store(storeUrl);
    if (type == Option || type == Skip) alert->addAction(QStringLiteral("Sonraki Sefere"), AlertController::Cancel);
    alert->addAction(QStringLiteral("Güncelle"), AlertController::Default,
                     [store] { Platform::current().application().openURL(store); });
    if (type == Skip) alert->addAction(QStringLiteral("Bu Sürümü Atla"), AlertController::Default);
    m_presenter->presentViewController(alert, true);
}

} // namespace ekinora::service
