#include "RTCDiglagi.h"

#include "Log.h"
#include "RAITrackerImpl.h"

#include <QRegularExpression>

namespace ekinora::analytics {

namespace {

const char* const ErrorDomain = "com.reipri.analytics.internal";

QString text(const QVariant& value) {
    if (value.typeId() == QMetaType::Double) {
        const double number = value.toDouble();
        return number == qint64(number) ? QString::number(qint64(number)) : QString::number(number, 'g', 15);
    }
    return value.toString();
}

const QVariantMap& defaultTransactionMap() {
    static const QVariantMap map{{"transactionId", "&ti"},          {"transactionAffiliation", "&ta"},
                                 {"transactionTax", "&tt"},         {"transactionShipping", "&ts"},
                                 {"transactionTotal", "&tr"},       {"transactionCurrency", "&cu"}};
    return map;
}

const QVariantMap& defaultItemMap() {
    static const QVariantMap map{{"name", "&in"},  {"sku", "&ic"},      {"category", "&iv"},
                                 {"price", "&ip"}, {"quantity", "&iq"}, {"currency", "&cu"}};
    return map;
}

Parameters mapped(const QVariantMap& data, const QVariantMap& map) {
    Parameters out;
    for (auto it = map.begin(); it != map.end(); ++it)
        if (data.contains(it.key())) out.insert(it.value().toString(), text(data.value(it.key())));
    return out;
}

// A product's fields under a prefix ("&pr1", "&il2pi3"). Custom dimensions and metrics are keyed
// "dimension<n>" and "metric<n>".
void addProduct(Parameters& hit, const QString& prefix, const QVariantMap& product) {
    static const std::pair<const char*, const char*> keys[] = {
        {"id", "id"},         {"name", "nm"},     {"brand", "br"},    {"category", "ca"}, {"variant", "va"},
        {"coupon", "cc"},     {"position", "ps"}, {"price", "pr"},    {"quantity", "qt"}};
    for (const auto& [key, wire] : keys)
        if (product.contains(QLatin1String(key))) hit.insert(prefix + QLatin1String(wire), text(product.value(QLatin1String(key))));
    static const QRegularExpression custom(QStringLiteral("^(dimension|metric)(\\d+)$"));
    for (auto it = product.begin(); it != product.end(); ++it) {
        const auto match = custom.match(it.key());
        if (!match.hasMatch()) continue;
        const bool dimension = match.captured(1) == QLatin1String("dimension");
        hit.insert(prefix + (dimension ? QLatin1String("cd") : QLatin1String("cm")) + match.captured(2), text(it.value()));
    }
}

} // namespace

RTCDiglagi::RTCDiglagi(TrackerFactory openTracker) : m_openTracker(std::move(openTracker)) {}

const QSet<QString>& RTCDiglagi::turnOffAnonymizeIpValues() {
    static const QSet<QString> values{QStringLiteral("false"), QStringLiteral("0"), QStringLiteral("no")};
    return values;
}

Parameters RTCDiglagi::raFieldsWithAnalyticsFields(const QVariantMap& fields) {
    Parameters out;
    for (auto it = fields.begin(); it != fields.end(); ++it) out.insert(it.key(), text(it.value()));
    const QString anonymize = QStringLiteral("&aip");
    if (out.contains(anonymize) && turnOffAnonymizeIpValues().contains(out.value(anonymize).toLower()))
        out.remove(anonymize);
    return out;
}

QVariantList RTCDiglagi::getArrayOfDictionariesFromObject(const QVariant& object, QString* error) {
    if (object.typeId() != QMetaType::QVariantList) {
        if (error) *error = QStringLiteral("%1: Provided object was not an array").arg(QLatin1String(ErrorDomain));
        return {};
    }
    const QVariantList list = object.toList();
    for (const QVariant& element : list)
        if (element.typeId() != QMetaType::QVariantMap) {
            if (error) *error = QStringLiteral("%1: Array contents were not a dictionary.").arg(QLatin1String(ErrorDomain));
            return {};
        }
    return list;
}

void RTCDiglagi::sendTag(const QVariantMap& tag, const QVariantMap& eventData) {
    const QVariant fieldsValue = tag.value(QStringLiteral("fields"));
    if (fieldsValue.typeId() != QMetaType::QVariantMap) {
        log(QStringLiteral("Diglagi tag requires a dictionary of fields."));
        return;
    }
    std::shared_ptr<RAITrackerImpl> tracker = m_openTracker(tag.value(QStringLiteral("trackingId")).toString());
    if (!tracker) return;
    tracker->setAllowIDFACollection(tag.value(QStringLiteral("allowIdfaCollection")).toBool());

    const QString type = tag.value(QStringLiteral("type")).toString();
    Parameters fields = raFieldsWithAnalyticsFields(fieldsValue.toMap());
    if (type == QLatin1String("ecommerce")) {
        const QVariantMap ecommerce = tag.value(QStringLiteral("useEcommerceDataLayer")).toBool()
                                          ? eventData.value(QStringLiteral("ecommerce")).toMap()
                                          : tag.value(QStringLiteral("ecommerce")).toMap();
        sendDetailedCommerceHitToTracker(*tracker, fields, ecommerce);
    } else if (type == QLatin1String("event") || type == QLatin1String("view")) {
        if (!fields.contains(QStringLiteral("&t")))
            fields.insert(QStringLiteral("&t"), type == QLatin1String("view") ? QStringLiteral("screenview") : type);
        tracker->send(fields);
        QStringList shown;
        for (auto it = fields.begin(); it != fields.end(); ++it) shown << it.key() + QLatin1Char('=') + it.value();
        log(QStringLiteral("Sending universal analytics hit: %1").arg(shown.join(QStringLiteral(", "))));
    } else if (type == QLatin1String("transaction")) {
        sendTransactionHitToTracker(*tracker, fields, eventData, tag.value(QStringLiteral("transactionMap")).toMap(),
                                    tag.value(QStringLiteral("transactionItemMap")).toMap());
    } else {
        log(QStringLiteral("Diglagi tag type malformed. Tag should be an event, view, or ecommerce type."));
    }
    tracker.reset(); // closes the tracker
}

void RTCDiglagi::sendTransactionHitToTracker(RAITrackerImpl& tracker, const Parameters& fields,
                                             const QVariantMap& eventData, const QVariantMap& transactionMap,
                                             const QVariantMap& transactionItemMap) {
    if (!eventData.contains(QStringLiteral("transactionId"))) {
        log(QStringLiteral("Diglagi cannot find transactionId in current event data."));
        return;
    }
    QList<Parameters> hits;
    Parameters transaction = fields;
    transaction.insert(mapped(eventData, transactionMap.isEmpty() ? defaultTransactionMap() : transactionMap));
    transaction.insert(QStringLiteral("&t"), QStringLiteral("transaction"));
    const QString transactionId = text(eventData.value(QStringLiteral("transactionId")));
    hits << transaction;

    if (eventData.contains(QStringLiteral("transactionProducts"))) {
        QString error;
        const QVariantList products =
            getArrayOfDictionariesFromObject(eventData.value(QStringLiteral("transactionProducts")), &error);
        if (!error.isEmpty()) {
            log(QStringLiteral("Diglagi error parsing transactionProducts in currentEventData."));
            return;
        }
        for (const QVariant& product : products) {
            Parameters item = fields;
            item.insert(mapped(product.toMap(), transactionItemMap.isEmpty() ? defaultItemMap() : transactionItemMap));
            if (!item.contains(QStringLiteral("&in"))) {
                log(QStringLiteral("Diglagi requires transaction items to have names."));
                return;
            }
            item.insert(QStringLiteral("&t"), QStringLiteral("item"));
            item.insert(QStringLiteral("&ti"), transactionId);
            hits << item;
        }
    }
    // Nothing goes unless the whole list could be built.
    for (const Parameters& hit : hits) tracker.send(hit);
}

void RTCDiglagi::sendDetailedCommerceHitToTracker(RAITrackerImpl& tracker, const Parameters& fields,
                                                  const QVariantMap& ecommerceData) {
    Parameters hit = fields;
    if (!hit.contains(QStringLiteral("&t"))) hit.insert(QStringLiteral("&t"), QStringLiteral("event"));
    if (ecommerceData.contains(QStringLiteral("currencyCode")) && !hit.contains(QStringLiteral("&cu")))
        hit.insert(QStringLiteral("&cu"), text(ecommerceData.value(QStringLiteral("currencyCode"))));

    if (ecommerceData.contains(QStringLiteral("impressions"))) {
        QString error;
        const QVariantList impressions =
            getArrayOfDictionariesFromObject(ecommerceData.value(QStringLiteral("impressions")), &error);
        if (!error.isEmpty()) {
            log(QStringLiteral("Diglagi error parsing impressions from ecommerce data."));
        } else {
            QStringList lists;
            QMap<QString, int> counts;
            for (const QVariant& element : impressions) {
                const QVariantMap impression = element.toMap();
                const QString list = impression.value(QStringLiteral("list")).toString();
                if (!lists.contains(list)) lists << list;
                const QString prefix = QStringLiteral("&il%1").arg(lists.indexOf(list) + 1);
                hit.insert(prefix + QStringLiteral("nm"), list);
                addProduct(hit, prefix + QStringLiteral("pi%1").arg(++counts[list]), impression);
                if (impression.contains(QStringLiteral("source")))
                    hit.insert(QStringLiteral("&pls"), text(impression.value(QStringLiteral("source"))));
            }
        }
    }

    const QString promoKey = ecommerceData.contains(QStringLiteral("promoClick")) ? QStringLiteral("promoClick")
                             : ecommerceData.contains(QStringLiteral("promoView")) ? QStringLiteral("promoView")
                                                                                   : QString();
    if (!promoKey.isEmpty()) {
        QString error;
        const QVariantList promotions = getArrayOfDictionariesFromObject(
            ecommerceData.value(promoKey).toMap().value(QStringLiteral("promotions")), &error);
        if (!error.isEmpty()) {
            log(QStringLiteral("Diglagi error parsing promotions from ecommerce data."));
        } else {
            static const std::pair<const char*, const char*> keys[] = {
                {"id", "id"}, {"name", "nm"}, {"creative", "cr"}, {"position", "ps"}};
            int index = 0;
            for (const QVariant& element : promotions) {
                const QVariantMap promotion = element.toMap();
                const QString prefix = QStringLiteral("&promo%1").arg(++index);
                for (const auto& [key, wire] : keys)
                    if (promotion.contains(QLatin1String(key)))
                        hit.insert(prefix + QLatin1String(wire), text(promotion.value(QLatin1String(key))));
            }
            hit.insert(QStringLiteral("&promoa"),
                       promoKey == QLatin1String("promoClick") ? QStringLiteral("click") : QStringLiteral("view"));
        }
    }

    static const char* const actions[] = {"detail", "checkout", "checkout_option", "click",
                                          "add",    "remove",   "purchase",        "refund"};
    for (const char* action : actions) {
        if (!ecommerceData.contains(QLatin1String(action))) continue;
        const QVariantMap data = ecommerceData.value(QLatin1String(action)).toMap();
        hit.insert(QStringLiteral("&pa"), QLatin1String(action));
        if (data.contains(QStringLiteral("products"))) {
            QString error;
            const QVariantList products = getArrayOfDictionariesFromObject(data.value(QStringLiteral("products")), &error);
            if (!error.isEmpty()) {
                log(QStringLiteral("Diglagi error parsing products from ecommerce data."));
            } else {
                int index = 0;
                for (const QVariant& product : products) addProduct(hit, QStringLiteral("&pr%1").arg(++index), product.toMap());
            }
        }
        static const std::pair<const char*, const char*> actionKeys[] = {
            {"id", "&ti"},     {"affiliation", "&ta"}, {"revenue", "&tr"}, {"tax", "&tt"}, {"shipping", "&ts"},
            {"coupon", "&tcc"}, {"list", "&pal"},       {"step", "&cos"},    {"option", "&col"}};
        const QVariantMap actionField = data.value(QStringLiteral("actionField")).toMap();
        for (const auto& [key, wire] : actionKeys)
            if (actionField.contains(QLatin1String(key)))
                hit.insert(QLatin1String(wire), text(actionField.value(QLatin1String(key))));
        break;
    }
    tracker.send(hit);
}

} // namespace ekinora::analytics
