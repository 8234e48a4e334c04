#include "GetInfoRequest.h"

#include "platform/Platform.h"
#include "service/ServiceRoots.h"

#include <memory>

namespace ekinora::info::site {

using namespace platform;

QList<InfoElement> infoElements;

QString GetInfoRequest::url() { return service::Roots::ProductSiteBase + QStringLiteral("/scripts/components/static/page_182.php"); }

void GetInfoRequest::getInfo(Completion completion) {
    HttpRequest request;
    request.url = url().toUtf8();
    Platform::current().http().send(request, {}, [this, completion](const HttpResponse& response) {
        if (!response.transportOk) {
            Platform::current().application().log(QStringLiteral("GetInfoRequest: ") + response.errorText);
            return;
        }
        const auto list = InfoElement::decodeList(response.body);
        if (!list) return completion({}, QStringLiteral("The data couldn't be read because it isn't in the correct format."));
        infoElements = *list;
        json = decodeJson(response.body);
        completion(*list, QString());
    });
}

} // namespace ekinora::info::site
