#include "Mutator.h"

#include "FakePlatform.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <functional>

namespace ekinora::fuzz {

using platform::HttpResponse;

namespace {

// Texts that have broken text handling elsewhere: format directives, direction marks, joined emoji,
// stacked accents, a NUL, characters outside the basic plane, markup, the platform's nil renderings.
const QStringList OddTexts{
    QStringLiteral("%@ %d %s %n %%"),
    QString::fromUtf8("\u202Etxet\u202C ters"),
    QString::fromUtf8("👨‍🌾🌾🍅🇹🇷"),
    QString::fromUtf8("e\u0301\u0301\u0301\u0301"),
    QString(QChar(0)) + QStringLiteral("nul"),
    QString::fromUtf8("İıŞşĞğÇçÖöÜü"),
    QStringLiteral("<script>alert(1)</script><b><sup>"),
    QStringLiteral("\n\n\t  "),
    QStringLiteral("<null>"),
    QStringLiteral("(null)"),
    QString(),
    QString::fromUtf8("٣٤٥"),
    QString::fromUtf8("𝟘𝟙𝟚"),
    QString::fromUtf8("\uFEFF"),
    QStringLiteral("99999999999999999999999"),
    QStringLiteral("-1"),
    QStringLiteral("1e308"),
    QStringLiteral("http://"),
    QStringLiteral("javascript:void(0)"),
};

enum class Shape { Any, Array, String, Object };

// Every value in the tree as a path of keys and indexes.
using Path = QList<QJsonValue>;

void collect(const QJsonValue& v, Path& here, Shape shape, QList<Path>& out, bool membersOnly) {
    const bool fits = shape == Shape::Any || (shape == Shape::Array && v.isArray()) ||
                      (shape == Shape::String && v.isString()) || (shape == Shape::Object && v.isObject());
    if (!here.isEmpty() && fits && (!membersOnly || here.last().isString())) out << here;
    if (v.isObject()) {
        const QJsonObject o = v.toObject();
        for (auto it = o.begin(); it != o.end(); ++it) {
            here << QJsonValue(it.key());
            collect(it.value(), here, shape, out, membersOnly);
            here.removeLast();
        }
    } else if (v.isArray()) {
        const QJsonArray a = v.toArray();
        // A list's first items stand for the rest.
        for (int i = 0; i < qMin(int(a.size()), 3); ++i) {
            here << QJsonValue(i);
            collect(a.at(i), here, shape, out, membersOnly);
            here.removeLast();
        }
    }
}

// Rebuilds the tree with the value at the path changed (removed when `change` returns Undefined).
QJsonValue rewrite(const QJsonValue& v, const Path& path, int depth, const std::function<QJsonValue(const QJsonValue&)>& change) {
    if (depth == path.size()) return change(v);
    const QJsonValue step = path.at(depth);
    if (v.isObject() && step.isString()) {
        QJsonObject o = v.toObject();
        const QJsonValue next = rewrite(o.value(step.toString()), path, depth + 1, change);
        if (next.isUndefined()) o.remove(step.toString());
        else o.insert(step.toString(), next);
        return o;
    }
    if (v.isArray() && step.isDouble()) {
        QJsonArray a = v.toArray();
        const int i = step.toInt();
        const QJsonValue next = rewrite(a.at(i), path, depth + 1, change);
        if (next.isUndefined()) a.removeAt(i);
        else a.replace(i, next);
        return a;
    }
    return v;
}

QString pathText(const Path& path) {
    QStringList parts;
    for (const auto& step : path) parts << (step.isString() ? step.toString() : QString::number(step.toInt()));
    return parts.join(u'.');
}

} // namespace

QStringList Mutator::kinds() {
    return {QStringLiteral("missing key"),    QStringLiteral("wrong type"),   QStringLiteral("null"),
            QStringLiteral("empty list"),     QStringLiteral("huge list"),    QStringLiteral("long text"),
            QStringLiteral("odd text"),       QStringLiteral("not JSON"),     QStringLiteral("HTTP 401"),
            QStringLiteral("HTTP 500"),       QStringLiteral("refused"),      QStringLiteral("slow"),
            QStringLiteral("dropped"),        QStringLiteral("empty body")};
}

Mutated Mutator::mutate(const HttpResponse& base, double chance) {
    if (std::uniform_real_distribution<double>(0, 1)(m_rng) >= chance) return Mutated{QString(), 0, base};
    const QStringList all = kinds();
    // Structural mutations need a JSON body; a reply without one gets the others.
    const bool json = QJsonDocument::fromJson(base.body).isObject();
    QString kind = all.at(below(int(all.size())));
    if (!json && QStringList{"missing key", "wrong type", "null", "empty list", "huge list", "long text", "odd text"}.contains(kind))
        kind = QStringList{"not JSON", "HTTP 500", "dropped", "slow"}.at(below(4));
    return apply(kind, base);
}

Mutated Mutator::apply(const QString& kind, const HttpResponse& base) {
    Mutated m{kind, 0, base};
    const QJsonValue root = QJsonDocument::fromJson(base.body).object();
    auto withBody = [&](const QJsonValue& body) {
        m.reply = testing::jsonReply(body, base.statusCode ? base.statusCode : 200);
    };
    auto pick = [&](Shape shape, bool membersOnly = false) -> Path {
        QList<Path> paths;
        Path here;
        collect(root, here, shape, paths, membersOnly);
        if (paths.isEmpty()) return {};
        // Half the time somewhere under "data", where the screens read.
        QList<Path> data;
        for (const auto& p : paths)
            if (p.first() == QJsonValue(QStringLiteral("data")) && p.size() > 1) data << p;
        if (!data.isEmpty() && below(2)) return data.at(below(int(data.size())));
        return paths.at(below(int(paths.size())));
    };
    auto change = [&](const Path& p, const std::function<QJsonValue(const QJsonValue&)>& f) {
        if (p.isEmpty()) return false;
        withBody(rewrite(root, p, 0, f));
        m.kind += QStringLiteral(" at ") + pathText(p);
        return true;
    };

    if (kind == QLatin1String("missing key")) {
        change(pick(Shape::Any, true), [](const QJsonValue&) { return QJsonValue(QJsonValue::Undefined); });
    } else if (kind == QLatin1String("wrong type")) {
        const int choice = below(4);
        change(pick(Shape::Any), [choice](const QJsonValue& v) -> QJsonValue {
            const QList<QJsonValue> others{QJsonValue(42), QJsonValue(QStringLiteral("12abc")), QJsonValue(true),
                                           QJsonObject{{"x", 1}}, QJsonArray{1, "a"}, QJsonValue(-1.5)};
            QList<QJsonValue> candidates;
            for (const auto& o : others)
                if (o.type() != v.type()) candidates << o;
            return candidates.at(choice % candidates.size());
        });
    } else if (kind == QLatin1String("null")) {
        change(pick(Shape::Any), [](const QJsonValue&) { return QJsonValue(QJsonValue::Null); });
    } else if (kind == QLatin1String("empty list")) {
        Path p = pick(Shape::Array);
        if (p.isEmpty()) p = pick(Shape::Any);
        change(p, [](const QJsonValue&) { return QJsonArray{}; });
    } else if (kind == QLatin1String("huge list")) {
        Path p = pick(Shape::Array);
        const int n = 2000 + below(3000);
        if (!change(p, [n](const QJsonValue& v) {
                const QJsonArray a = v.toArray();
                QJsonArray out;
                for (int i = 0; i < n; ++i) out.append(a.isEmpty() ? QJsonValue(i) : a.at(i % a.size()));
                return out;
            }))
            change(pick(Shape::Any), [n](const QJsonValue& v) {
                QJsonArray out;
                for (int i = 0; i < n; ++i) out.append(v);
                return out;
            });
    } else if (kind == QLatin1String("long text")) {
        Path p = pick(Shape::String);
        if (p.isEmpty()) p = pick(Shape::Any);
        const int n = 20000 + below(200000);
        change(p, [n](const QJsonValue&) { return QString::fromUtf8("Çiftçi şİ 🌾 ").repeated(n / 12 + 1).left(n); });
    } else if (kind == QLatin1String("odd text")) {
        Path p = pick(Shape::String);
        if (p.isEmpty()) p = pick(Shape::Any);
        const QString text = OddTexts.at(below(int(OddTexts.size())));
        change(p, [text](const QJsonValue&) { return text; });
    } else if (kind == QLatin1String("not JSON")) {
        const QList<QPair<QByteArray, QByteArray>> bodies{
            {"<html><body>502 Bad Gateway</body></html>", "text/html"},
            {base.body.left(qMax(1, int(base.body.size()) / 2)), "application/json"},
            {"\xEF\xBB\xBF{\"status\":200", "application/json"},
            {"\x00\x01\x02\xFF", "application/octet-stream"},
            {"null", "application/json"},
            {"\"metin\"", "application/json"},
            {"[1,2,3]", "application/json"},
        };
        const auto& b = bodies.at(below(int(bodies.size())));
        m.reply = testing::rawReply(b.first, 200, b.second);
        m.kind += QStringLiteral(" (") + QString::fromLatin1(b.second) + u')';
    } else if (kind == QLatin1String("HTTP 401")) {
        m.reply = testing::jsonReply(QJsonObject{{"status", 401}, {"message", "Oturumunuz sona erdi, lütfen tekrar giriş yapınız."}, {"data", QJsonValue::Null}}, 401);
    } else if (kind == QLatin1String("HTTP 500")) {
        m.reply = below(2) ? testing::rawReply("<h1>Internal Server Error</h1>", 500)
                           : testing::jsonReply(QJsonObject{{"status", 500}, {"message", "Sunucu hatası"}, {"data", QJsonValue::Null}}, 500);
    } else if (kind == QLatin1String("refused")) {
        // The service says no in the envelope, under HTTP 200.
        const int status = QList<int>{400, 401, 403, 404, 500}.at(below(5));
        const QList<QJsonValue> errors{QJsonObject{{"phone", "Geçersiz telefon"}}, QJsonValue::Null, QJsonArray{"hata"},
                                       QJsonValue(QStringLiteral("hata")), QJsonObject{}};
        QJsonObject envelope{{"status", status}, {"message", below(2) ? QJsonValue(QStringLiteral("İşlem yapılamadı")) : QJsonValue(QJsonObject{{"text", "Bakım"}})},
                             {"errors", errors.at(below(int(errors.size())))}};
        if (below(2)) envelope.insert(QStringLiteral("data"), root.toObject().value(QStringLiteral("data")));
        else envelope.insert(QStringLiteral("data"), QJsonValue::Null);
        withBody(envelope);
        m.kind += QStringLiteral(" ") + QString::number(status);
    } else if (kind == QLatin1String("slow")) {
        m.delayMs = 20000 + below(70000);
    } else if (kind == QLatin1String("dropped")) {
        m.reply = testing::transportFailure();
        m.reply.errorText = QStringLiteral("Connection closed");
    } else if (kind == QLatin1String("empty body")) {
        m.reply = testing::rawReply(QByteArray(), 200, "application/json");
    }
    return m;
}

} // namespace ekinora::fuzz
