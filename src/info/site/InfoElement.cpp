#include "InfoElement.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace ekinora::info::site {

std::optional<QList<InfoElement>> InfoElement::decodeList(const QByteArray& data) {
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(data, &error);
    if (error.error != QJsonParseError::NoError || !document.isArray()) return std::nullopt;
    QList<InfoElement> list;
    for (const QJsonValue& value : document.array()) {
        if (!value.isObject()) return std::nullopt;
        const QJsonObject block = value.toObject();
        const QJsonValue item = block.value(QStringLiteral("item"));
        const QJsonValue type = block.value(QStringLiteral("type"));
        const QJsonValue content = block.value(QStringLiteral("content"));
        if (!item.isString() || !type.isString() || !content.isString()) return std::nullopt;
        InfoElement element{};
        if (item == QStringLiteral("headline")) element.item = Item::Headline;
        else if (item == QStringLiteral("paragraph")) element.item = Item::Paragraph;
        else return std::nullopt;
        if (type == QStringLiteral("main")) element.type = TypeEnum::Main;
        else if (type == QStringLiteral("standard")) element.type = TypeEnum::Standard;
        else if (type == QStringLiteral("subtitle")) element.type = TypeEnum::Subtitle;
        else return std::nullopt;
        element.content = content.toString();
        list.append(element);
    }
    return list;
}

} // namespace ekinora::info::site
