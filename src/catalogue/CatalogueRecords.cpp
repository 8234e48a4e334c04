#include "CatalogueRecords.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

namespace ekinora::catalogue {

namespace {

QString kindOf(const Json& v) {
    switch (v.type()) {
    case QJsonValue::Bool: return QStringLiteral("Bool");
    case QJsonValue::Double: return QStringLiteral("Number");
    case QJsonValue::String: return QStringLiteral("String");
    case QJsonValue::Array: return QStringLiteral("Array");
    case QJsonValue::Object: return QStringLiteral("Dictionary");
    default: return QStringLiteral("Null");
    }
}

// A JSON number that an Int takes exactly.
bool isInteger(const Json& v) {
    if (!v.isDouble()) return false;
    const double d = v.toDouble();
    return std::isfinite(d) && d == std::floor(d) && std::fabs(d) <= 9007199254740992.0;
}

} // namespace

KeyedContainer::KeyedContainer(const Json& value, QString codingPath, QString* error)
    : m_path(std::move(codingPath)), m_error(error) {
    if (failed()) return;
    if (!value.isObject())
        *m_error = QStringLiteral("typeMismatch(Dictionary, %1: expected a dictionary, found %2)").arg(m_path, kindOf(value));
    else
        m_object = value.toObject();
}

void KeyedContainer::fail(const QString& kind, const QString& key, const QString& what) {
    if (!failed()) *m_error = QStringLiteral("%1(%2: %3)").arg(kind, childPath(key), what);
}

Json KeyedContainer::present(const QString& key) {
    if (failed()) return platform::nil();
    const Json v = m_object.value(key);
    if (v.isNull()) return platform::nil();
    return v;
}

bool KeyedContainer::required(const QString& key) {
    if (failed()) return false;
    const auto it = m_object.constFind(key);
    if (it == m_object.constEnd()) fail(QStringLiteral("keyNotFound"), key, QStringLiteral("no value for the key"));
    else if (it->isNull()) fail(QStringLiteral("valueNotFound"), key, QStringLiteral("expected a value, found null"));
    return !failed();
}

std::optional<qint64> KeyedContainer::optionalInteger(const QString& key) {
    const Json v = present(key);
    if (v.isUndefined()) return std::nullopt;
    if (!isInteger(v)) {
        fail(QStringLiteral("typeMismatch"), key, QStringLiteral("expected Int, found %1").arg(kindOf(v)));
        return std::nullopt;
    }
    return qint64(v.toDouble());
}

qint64 KeyedContainer::integer(const QString& key) { return required(key) ? optionalInteger(key).value_or(0) : 0; }

std::optional<QString> KeyedContainer::optionalText(const QString& key) {
    const Json v = present(key);
    if (v.isUndefined()) return std::nullopt;
    if (!v.isString()) {
        fail(QStringLiteral("typeMismatch"), key, QStringLiteral("expected String, found %1").arg(kindOf(v)));
        return std::nullopt;
    }
    return v.toString();
}

QString KeyedContainer::text(const QString& key) { return required(key) ? optionalText(key).value_or(QString()) : QString(); }

std::optional<QStringList> KeyedContainer::optionalTextList(const QString& key) {
    const Json v = present(key);
    if (v.isUndefined()) return std::nullopt;
    if (!v.isArray()) {
        fail(QStringLiteral("typeMismatch"), key, QStringLiteral("expected Array, found %1").arg(kindOf(v)));
        return std::nullopt;
    }
    QStringList out;
    for (const Json& item : v.toArray()) {
        if (!item.isString()) {
            fail(QStringLiteral("typeMismatch"), key, QStringLiteral("expected String, found %1").arg(kindOf(item)));
            return std::nullopt;
        }
        out << item.toString();
    }
    return out;
}

QStringList KeyedContainer::textList(const QString& key) {
    return required(key) ? optionalTextList(key).value_or(QStringList()) : QStringList();
}

// The wire keys, in the order of each record's coding keys.
#define WIRE_KEYS(Record, ...)                                                                                         \
    QString Record::stringValue(CodingKeys key) {                                                                      \
        static const char* const names[] = {__VA_ARGS__};                                                              \
        return QString::fromLatin1(names[int(key)]);                                                                   \
    }

WIRE_KEYS(SubDataProduct, "id", "title", "group", "image")
WIRE_KEYS(Product, "status", "data")
WIRE_KEYS(FilteredProductSubdata, "id", "title", "group", "image")
WIRE_KEYS(FilteredProduct, "data", "status", "message", "errors")
WIRE_KEYS(MaizeProductsSubData, "id", "title", "group", "image")
WIRE_KEYS(MaizeProducts, "data", "status", "message", "errors")
WIRE_KEYS(Plants, "id", "name", "group")
WIRE_KEYS(Illness, "id", "name", "group")
WIRE_KEYS(Pgroups, "group", "id", "name")
WIRE_KEYS(Message, "type", "text")
WIRE_KEYS(Data, "plants", "illness", "pgroups")
WIRE_KEYS(Filter, "data", "status", "message")
WIRE_KEYS(SprayElement, "title", "image", "link")
WIRE_KEYS(Specialities, "group", "activeSubstance", "formulation", "packageSizes")
WIRE_KEYS(Document, "id", "fileId", "type", "extra", "path", "extraFilePath")
WIRE_KEYS(Datum, "contentItemId", "type", "data")
WIRE_KEYS(Content, "id", "header", "data")
WIRE_KEYS(ProcuctDetailSubData, "id", "title", "slogan", "group", "status", "path", "fileId", "contents", "specialities",
          "documents", "media")
WIRE_KEYS(ProductDetail, "data", "status", "message", "errors")

#define KEY(name) stringValue(CodingKeys::name)

SubDataProduct SubDataProduct::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    return {c.optionalInteger(KEY(id)), c.optionalText(KEY(title)), c.optionalText(KEY(group)), c.optionalText(KEY(image))};
}

Product Product::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    Product p;
    p.status = c.optionalInteger(KEY(status));
    p.data = c.optionalList<SubDataProduct>(KEY(data));
    return p;
}

FilteredProductSubdata FilteredProductSubdata::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    FilteredProductSubdata p;
    p.id = c.optionalInteger(KEY(id));
    p.title = c.text(KEY(title));
    p.group = c.text(KEY(group));
    p.image = c.text(KEY(image));
    return p;
}

FilteredProduct FilteredProduct::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    FilteredProduct p;
    p.data = c.list<FilteredProductSubdata>(KEY(data));
    p.status = c.integer(KEY(status));
    p.message = c.optionalText(KEY(message));
    p.errors = c.optionalText(KEY(errors));
    return p;
}

MaizeProductsSubData MaizeProductsSubData::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    MaizeProductsSubData p;
    p.id = c.integer(KEY(id));
    p.title = c.text(KEY(title));
    p.group = c.text(KEY(group));
    p.image = c.text(KEY(image));
    return p;
}

MaizeProducts MaizeProducts::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    MaizeProducts p;
    p.data = c.list<MaizeProductsSubData>(KEY(data));
    p.status = c.integer(KEY(status));
    p.message = c.optionalText(KEY(message));
    p.errors = c.optionalText(KEY(errors));
    return p;
}

Plants Plants::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    return {c.optionalInteger(KEY(id)), c.optionalText(KEY(name)), c.optionalText(KEY(group))};
}

Illness Illness::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    return {c.optionalInteger(KEY(id)), c.optionalText(KEY(name)), c.optionalText(KEY(group))};
}

Pgroups Pgroups::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    Pgroups p;
    p.group = c.optionalText(KEY(group));
    p.id = c.optionalInteger(KEY(id));
    p.name = c.optionalText(KEY(name));
    return p;
}

Message Message::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    return {c.optionalText(KEY(type)), c.optionalText(KEY(text))};
}

Data Data::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    Data d;
    d.plants = c.optionalList<Plants>(KEY(plants));
    d.illness = c.optionalList<Illness>(KEY(illness));
    d.pgroups = c.optionalList<Pgroups>(KEY(pgroups));
    return d;
}

Filter Filter::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    Filter f;
    f.data = c.optionalRecord<Data>(KEY(data));
    f.status = c.optionalInteger(KEY(status));
    f.message = c.optionalRecord<Message>(KEY(message));
    return f;
}

SprayElement SprayElement::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    SprayElement s;
    s.title = c.text(KEY(title));
    s.image = c.text(KEY(image));
    s.link = c.text(KEY(link));
    return s;
}

Specialities Specialities::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    Specialities s;
    s.group = c.text(KEY(group));
    s.activeSubstance = c.text(KEY(activeSubstance));
    s.formulation = c.text(KEY(formulation));
    s.packageSizes = c.text(KEY(packageSizes));
    return s;
}

Document Document::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    Document d;
    d.id = c.integer(KEY(id));
    d.fileID = c.integer(KEY(fileID));
    d.type = c.text(KEY(type));
    d.extra = c.text(KEY(extra));
    d.path = c.text(KEY(path));
    d.extraFilePath = c.optionalText(KEY(extraFilePath));
    return d;
}

Datum Datum::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    Datum d;
    d.contentItemID = c.integer(KEY(contentItemID));
    d.type = c.text(KEY(type));
    d.data = c.textList(KEY(data));
    return d;
}

Content Content::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    Content content;
    content.id = c.integer(KEY(id));
    content.header = c.text(KEY(header));
    content.data = c.list<Datum>(KEY(data));
    return content;
}

ProcuctDetailSubData ProcuctDetailSubData::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    ProcuctDetailSubData d;
    d.id = c.integer(KEY(id));
    d.title = c.text(KEY(title));
    d.slogan = c.text(KEY(slogan));
    d.group = c.text(KEY(group));
    d.status = c.integer(KEY(status));
    d.path = c.text(KEY(path));
    d.fileID = c.integer(KEY(fileID));
    d.contents = c.list<Content>(KEY(contents));
    d.specialities = c.record<Specialities>(KEY(specialities));
    d.documents = c.list<Document>(KEY(documents));
    d.media = c.list<Document>(KEY(media));
    return d;
}

ProductDetail ProductDetail::decode(const Json& v, const QString& path, QString* error) {
    KeyedContainer c(v, path, error);
    ProductDetail d;
    d.data = c.record<ProcuctDetailSubData>(KEY(data));
    d.status = c.integer(KEY(status));
    d.message = c.optionalText(KEY(message));
    d.errors = c.optionalText(KEY(errors));
    return d;
}

std::optional<Json> parseTree(const QByteArray& bytes, QString* error) {
    // Top-level fragments are JSON too.
    QJsonParseError parse{};
    const QJsonDocument doc = QJsonDocument::fromJson("[" + bytes + "]", &parse);
    if (bytes.trimmed().isEmpty() || parse.error != QJsonParseError::NoError || doc.array().size() != 1) {
        *error = QStringLiteral("The data couldn't be read because it isn't in the correct format.");
        return std::nullopt;
    }
    return doc.array().at(0);
}

std::optional<QList<SprayElement>> decodeSprayList(const QByteArray& bytes, QString* error) {
    const auto tree = parseTree(bytes, error);
    if (!tree) return std::nullopt;
    auto list = KeyedContainer::decodeList<SprayElement>(*tree, QStringLiteral("root"), error);
    if (!error->isEmpty()) return std::nullopt;
    return list;
}

} // namespace ekinora::catalogue
