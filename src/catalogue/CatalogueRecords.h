#pragma once

// The records of the product and seed catalogues, each decoded from a keyed container with exactly
// its coding keys. A required member that is missing or null, or any member of the wrong JSON type,
// fails the whole reply; an optional member is nil when absent or null, but a wrong type still fails.

#include "platform/Foundation.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <array>
#include <optional>

namespace ekinora::catalogue {

using platform::Json;

// Reads the members of one JSON object. The first failure is kept (with its coding path) and every
// read after it gives an empty value, so that a record's decoding reads as a list of its fields.
class KeyedContainer {
public:
    KeyedContainer(const Json& value, QString codingPath, QString* error);
    bool failed() const { return !m_error->isEmpty(); }

    std::optional<qint64> optionalInteger(const QString& key);
    qint64 integer(const QString& key);
    std::optional<QString> optionalText(const QString& key);
    QString text(const QString& key);
    // A nested record or a list of them, through the record's own decode.
    template <class T> std::optional<T> optionalRecord(const QString& key) {
        const Json v = present(key);
        if (v.isUndefined()) return std::nullopt;
        return T::decode(v, childPath(key), m_error);
    }
    template <class T> T record(const QString& key) {
        return required(key) ? optionalRecord<T>(key).value_or(T{}) : T{};
    }
    template <class T> std::optional<QList<T>> optionalList(const QString& key) {
        const Json v = present(key);
        if (v.isUndefined()) return std::nullopt;
        return decodeList<T>(v, childPath(key), m_error);
    }
    template <class T> QList<T> list(const QString& key) {
        return required(key) ? optionalList<T>(key).value_or(QList<T>{}) : QList<T>{};
    }
    std::optional<QStringList> optionalTextList(const QString& key);
    QStringList textList(const QString& key);

    // A list of records from a JSON array; anything else fails.
    template <class T> static QList<T> decodeList(const Json& v, const QString& path, QString* error) {
        QList<T> out;
        if (!error->isEmpty()) return out;
        if (!v.isArray()) {
            *error = QStringLiteral("typeMismatch(Array, %1: expected an array)").arg(path);
            return out;
        }
        const auto array = v.toArray();
        for (int i = 0; i < array.size() && error->isEmpty(); ++i)
            out.append(T::decode(array.at(i), path + QStringLiteral("[%1]").arg(i), error));
        return out;
    }

private:
    // The member, or nil when it is absent or null (or after a failure, or when this is no object).
    Json present(const QString& key);
    bool required(const QString& key);
    QString childPath(const QString& key) const { return m_path + QLatin1Char('.') + key; }
    void fail(const QString& kind, const QString& key, const QString& what);

    QJsonObject m_object;
    QString m_path;
    QString* m_error;
};

// The coding keys of a record: a generated enumeration whose raw text is the wire key.
#define CATALOGUE_CODING_KEYS(...)                                                                                    \
    enum class CodingKeys { __VA_ARGS__ };                                                                             \
    static QString stringValue(CodingKeys key);

// The unfiltered plant-protection list: nothing can fail for absence here.
struct SubDataProduct {
    CATALOGUE_CODING_KEYS(id, title, group, image)
    std::optional<qint64> id;
    std::optional<QString> title, group, image;
    static SubDataProduct decode(const Json& v, const QString& path, QString* error);
};

// "message" and "errors" are not members of this record: they are ignored.
struct Product {
    CATALOGUE_CODING_KEYS(status, data)
    std::optional<qint64> status;
    std::optional<QList<SubDataProduct>> data;
    static Product decode(const Json& v, const QString& path, QString* error);
};

struct FilteredProductSubdata {
    CATALOGUE_CODING_KEYS(id, title, group, image)
    std::optional<qint64> id;
    QString title, group, image;
    static FilteredProductSubdata decode(const Json& v, const QString& path, QString* error);
};

// "message" and "errors" are texts here, so an object in either fails the whole list.
struct FilteredProduct {
    CATALOGUE_CODING_KEYS(data, status, message, errors)
    QList<FilteredProductSubdata> data;
    qint64 status = 0;
    std::optional<QString> message, errors;
    static FilteredProduct decode(const Json& v, const QString& path, QString* error);
};

struct MaizeProductsSubData {
    CATALOGUE_CODING_KEYS(id, title, group, image)
    qint64 id = 0;
    QString title, group, image;
    static MaizeProductsSubData decode(const Json& v, const QString& path, QString* error);
};

struct MaizeProducts {
    CATALOGUE_CODING_KEYS(data, status, message, errors)
    QList<MaizeProductsSubData> data;
    qint64 status = 0;
    std::optional<QString> message, errors;
    static MaizeProducts decode(const Json& v, const QString& path, QString* error);
};

// The three filter lists share their fields; "group" is read and never used.
struct Plants {
    CATALOGUE_CODING_KEYS(id, name, group)
    std::optional<qint64> id;
    std::optional<QString> name, group;
    static Plants decode(const Json& v, const QString& path, QString* error);
};
struct Illness {
    CATALOGUE_CODING_KEYS(id, name, group)
    std::optional<qint64> id;
    std::optional<QString> name, group;
    static Illness decode(const Json& v, const QString& path, QString* error);
};
struct Pgroups {
    CATALOGUE_CODING_KEYS(group, id, name)
    std::optional<QString> group;
    std::optional<qint64> id;
    std::optional<QString> name;
    static Pgroups decode(const Json& v, const QString& path, QString* error);
};

// An object here, not a text: a plain text "message" fails the filter reply.
struct Message {
    CATALOGUE_CODING_KEYS(type, text)
    std::optional<QString> type, text;
    static Message decode(const Json& v, const QString& path, QString* error);
};

struct Data {
    CATALOGUE_CODING_KEYS(plants, illness, pgroups)
    std::optional<QList<Plants>> plants;
    std::optional<QList<Illness>> illness;
    std::optional<QList<Pgroups>> pgroups;
    static Data decode(const Json& v, const QString& path, QString* error);
};

struct Filter {
    CATALOGUE_CODING_KEYS(data, status, message)
    std::optional<Data> data;
    std::optional<qint64> status;
    std::optional<Message> message;
    static Filter decode(const Json& v, const QString& path, QString* error);
};

// A spray programme of the bare array the product site gives.
struct SprayElement {
    CATALOGUE_CODING_KEYS(title, image, link)
    QString title, image, link;
    static SprayElement decode(const Json& v, const QString& path, QString* error);
};

// The declared detail records. No reply is decoded into them (the detail is read as a tree); they
// document the members of the detail reply, and `Datum.data` is a list of texts where the reply has
// an object, so a real decoding into them fails.
struct Specialities {
    CATALOGUE_CODING_KEYS(group, activeSubstance, formulation, packageSizes)
    QString group, activeSubstance, formulation, packageSizes;
    static Specialities decode(const Json& v, const QString& path, QString* error);
};

struct Document {
    CATALOGUE_CODING_KEYS(id, fileID, type, extra, path, extraFilePath)
    qint64 id = 0, fileID = 0;
    QString type, extra, path;
    std::optional<QString> extraFilePath;
    static Document decode(const Json& v, const QString& path, QString* error);
};

struct Datum {
    CATALOGUE_CODING_KEYS(contentItemID, type, data)
    qint64 contentItemID = 0;
    QString type;
    QStringList data;
    static Datum decode(const Json& v, const QString& path, QString* error);
};

struct Content {
    CATALOGUE_CODING_KEYS(id, header, data)
    qint64 id = 0;
    QString header;
    QList<Datum> data;
    static Content decode(const Json& v, const QString& path, QString* error);
};

struct ProcuctDetailSubData {
    CATALOGUE_CODING_KEYS(id, title, slogan, group, status, path, fileID, contents, specialities, documents, media)
    qint64 id = 0;
    QString title, slogan, group;
    qint64 status = 0;
    QString path;
    qint64 fileID = 0;
    QList<Content> contents;
    Specialities specialities;
    QList<Document> documents, media;
    static ProcuctDetailSubData decode(const Json& v, const QString& path, QString* error);
};

struct ProductDetail {
    CATALOGUE_CODING_KEYS(data, status, message, errors)
    ProcuctDetailSubData data;
    qint64 status = 0;
    std::optional<QString> message, errors;
    static ProductDetail decode(const Json& v, const QString& path, QString* error);
};

// JSON(data:): the bytes as a tree; nil with the error on bytes that are not JSON.
std::optional<Json> parseTree(const QByteArray& bytes, QString* error);

// JSONDecoder.decode: a new decoding of the whole reply; nil with the error's description on failure.
template <class T> std::optional<T> decodeReply(const QByteArray& bytes, QString* error) {
    const auto tree = parseTree(bytes, error);
    if (!tree) return std::nullopt;
    T value = T::decode(*tree, QStringLiteral("root"), error);
    if (!error->isEmpty()) return std::nullopt;
    return value;
}
// The spray reply: a top-level array of programmes.
std::optional<QList<SprayElement>> decodeSprayList(const QByteArray& bytes, QString* error);

} // namespace ekinora::catalogue
