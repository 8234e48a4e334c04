#include "CatalogueRequests.h"

#include "platform/Platform.h"
#include "service/InlineRequest.h"
#include "service/RequestFrame.h"
#include "service/ServiceRoots.h"

#include <QVariantMap>

namespace ekinora::catalogue {

using namespace platform;

namespace {

void print(const QString& line) { Platform::current().application().log(line); }

// Sends a GET to root + path, with the bearer header when asked; the reply's bytes or the transport's
// error go to done. The HTTP status is not looked at.
void send(const QString& url, bool authorised, std::function<void(const HttpResponse&)> done) {
    HttpRequest request;
    request.method = "GET";
    request.url = url.toUtf8();
    request.headers = service::RequestFrame::defaultHeaders();
    // The token is read and forced before anything goes out: no token stops the application.
    if (authorised) request.setHeader("Authorization", ("Bearer " + service::InlineRequest::forcedToken()).toUtf8());
    Platform::current().http().send(request, {}, std::move(done));
}

QString transportError(const HttpResponse& r) {
    return r.errorText.isEmpty() ? QStringLiteral("The network connection was lost.") : r.errorText;
}

// The reply step of the decoder classes.
template <class Record, class Stored, class Completion>
void decodeInto(const HttpResponse& r, Stored& variable, bool callBackOnError, const Completion& completion) {
    if (!r.transportOk) {
        print(transportError(r));
        if (callBackOnError) completion(variable, transportError(r));
        return;
    }
    QString error;
    auto decoded = decodeReply<Record>(r.body, &error);
    if (!decoded) {
        print(error);
        return;
    }
    variable = *decoded;
    completion(variable, std::nullopt);
}

// The reply step of the tree classes.
void treeInto(const HttpResponse& r, std::optional<Json>& variable,
              const std::function<void(const std::optional<Json>&, const Error&)>& completion) {
    if (!r.transportOk) {
        print(transportError(r));
        completion(variable, transportError(r));
        return;
    }
    QString error;
    auto tree = parseTree(r.body, &error);
    if (!tree) {
        print(error);
        return;
    }
    variable = *tree;
    completion(variable, std::nullopt);
}

} // namespace

void GetProductsRequest::getProducts(std::function<void(const Product&, const Error&)> completion) {
    {
        // Prepared and dropped again: the command takes no "hash", and none is sent.
        QVariantMap parameters{{QStringLiteral("hash"), transactionHash()}};
        Q_UNUSED(parameters);
    }
    send(service::Roots::ServiceBase + paths::Products, true, [completion](const HttpResponse& r) {
        decodeInto<Product>(r, productList(), true, completion);
    });
}

void GetFilteredProductRequest::getFilteredProducts(
    const QString& path, std::function<void(const std::optional<FilteredProduct>&, const Error&)> completion) {
    send(service::Roots::ServiceBase + path, true, [completion](const HttpResponse& r) {
        decodeInto<FilteredProduct>(r, filteredProducts(), true, completion);
    });
}

void GetFiltersRequest::getFilters(const QString& path,
                                   std::function<void(const std::optional<Filter>&, const Error&)> completion) {
    // Its own copy of the root: the same text as the process-wide one.
    const QString root = service::Roots::ServiceBase;
    send(root + path, true, [completion](const HttpResponse& r) {
        decodeInto<Filter>(r, filterReply(), false, completion);
    });
}

void GetProducDetailRequest::getProductDetail(const QString& path,
                                              std::function<void(const std::optional<Json>&, const Error&)> completion) {
    send(service::Roots::ServiceBase + path, true,
         [completion](const HttpResponse& r) { treeInto(r, productDetailJSON(), completion); });
}

void GetMaizeAllProduct::getMaizeProducts(const QString& path,
                                          std::function<void(const std::optional<MaizeProducts>&, const Error&)> completion) {
    send(service::Roots::ServiceBase + path, true, [completion](const HttpResponse& r) {
        decodeInto<MaizeProducts>(r, maizeProducts(), true, completion);
    });
}

void GetMaizeProductDetail::getMaizeProductDetail(const QString& path,
                                                  std::function<void(const std::optional<Json>&, const Error&)> completion) {
    send(service::Roots::ServiceBase + path, true,
         [completion](const HttpResponse& r) { treeInto(r, maizeDetailJSON(), completion); });
}

void GetProgramsRequest::getPrograms(std::function<void(const QList<SprayElement>&, const Json&, const Error&)> completion) {
    send(service::Roots::ProductSiteBase + paths::Programs, false, [completion](const HttpResponse& r) {
        if (!r.transportOk) return print(transportError(r));
        QString error;
        const auto tree = parseTree(r.body, &error);
        if (!tree) return print(error);
        const auto list = decodeSprayList(r.body, &error);
        if (!list) return print(error);
        sprayPrograms() = *list;
        completion(sprayPrograms(), *tree, std::nullopt);
    });
}

void GetGpsSearchRequest::getRegionAttendant(std::function<void(const Json&, const Error&)> completion) {
    // The reply writes the request's own field, which the reply's block keeps alive.
    send(service::Roots::ServiceBase + paths::RegionAttendant, true, [box = json, completion](const HttpResponse& r) {
        if (!r.transportOk) return print(transportError(r));
        QString error;
        const auto tree = parseTree(r.body, &error);
        if (!tree) return print(error);
        *box = *tree;
        completion(*box, std::nullopt);
    });
}

} // namespace ekinora::catalogue
