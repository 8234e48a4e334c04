#pragma once

#include "core/ApiCall.h"
#include "core/Envelope.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ekinora::server {

// How a text is read as a number. A JSON number is taken as it is in every form.
enum class NumberText {
    Point,        // a plain decimal: "37.5", "-3"; no exponent, no comma
    PointOrComma, // the same, with a decimal comma as well: "12,5"
    Leading,      // the number the text begins with, as the app's own conversion reads it: "12a" is 12,
                  // "abc" is 0
};

// A yes-or-no answer as the app sends it: "1" or "0", also as a number or a boolean.
enum class Answer { Absent, Yes, No, Invalid };

// Reads the parameters of a command, or one object among them (a farm of a list), in the forms the
// app sends them: texts, numbers as texts and as numbers, JSON inside texts. What is wrong is
// collected under the field's name in the order found, since the app shows the first message; the
// handler answers with rejection() when something is.
class Params {
public:
    explicit Params(const ApiCall& call) : Params(call.params) {}
    explicit Params(const Json& object);
    Params(Json&&) = delete; // kept by reference

    // Present and not JSON null.
    bool has(const std::string& name) const;
    // Not sent, null, or only blanks.
    bool blank(const std::string& name) const;

    // Strings as they are, numbers and booleans written out ("1" and "0"); nullopt when not sent
    // or null.
    std::optional<std::string> text(const std::string& name) const;
    // The text without blanks at either end; "" when not sent.
    std::string trimmed(const std::string& name) const;
    // The text as sent, an empty one counting as not sent.
    std::optional<std::string> filled(const std::string& name) const;
    // A whole number, sent as a number or as its text (blanks around it allowed).
    std::optional<std::int64_t> integer(const std::string& name) const;
    std::optional<double> number(const std::string& name, NumberText form = NumberText::Point) const;
    // Ids as a JSON array, the text of one, a text of ids between commas, or a single id; repeats
    // dropped, the order kept; nothing sent is no ids. nullopt when one of them is not an id.
    std::optional<std::vector<std::int64_t>> ids(const std::string& name) const;
    // A JSON array or the text of one; nothing sent is an empty list. nullopt for anything else.
    std::optional<Json> list(const std::string& name) const;
    Answer answer(const std::string& name) const;

    // Checked reads: the message goes under the name when the value is not there or unreadable.
    std::string required(const std::string& name, const std::string& missing);
    std::optional<std::int64_t> requiredInteger(const std::string& name, const std::string& missing,
                                                const std::string& invalid);
    std::optional<double> requiredNumber(const std::string& name, NumberText form, const std::string& missing,
                                         const std::string& invalid);
    Answer requiredAnswer(const std::string& name, const std::string& missing, const std::string& invalid);

    // A problem the handler found itself: an unknown id, a number taken by another account.
    void fail(const std::string& field, const std::string& message);
    bool ok() const { return m_errors.empty(); }
    const envelope::FieldErrors& errors() const { return m_errors; }
    // Status 400 with every problem under "errors" and the first one as "message".
    Json rejection(Json data = nullptr) const { return envelope::rejection(m_errors, std::move(data)); }

private:
    const Json* find(const std::string& name) const;

    const Json& m_object;
    envelope::FieldErrors m_errors;
};

// Blanks at both ends removed.
std::string trimmed(const std::string& text);

} // namespace ekinora::server
