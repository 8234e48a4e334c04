#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace ekinora::info::site {

// One block of the product site's document, decoded from JSON with every field required.
struct InfoElement {
    enum class Item { Headline, Paragraph };            // "headline", "paragraph"
    enum class TypeEnum { Main, Standard, Subtitle };    // "main", "standard", "subtitle"

    Item item;
    TypeEnum type;
    QString content;

    // The whole array, or nothing when the data isn't one, a block lacks a field, or a value is none
    // of the known ones: one bad block fails them all.
    static std::optional<QList<InfoElement>> decodeList(const QByteArray& data);
};

// A class of the document's model with no part in the flow.
class Ayy {
public:
    QString a;
};

} // namespace ekinora::info::site
