#pragma once

#include "core/ApiCall.h"

#include <optional>
#include <string>

namespace ekinora::server::accounts {

// Turkish identity number (T.C. Kimlik No): 11 digits, the first not 0; the 10th is
// (7 x (sum of digits 1, 3, 5, 7, 9) - (sum of digits 2, 4, 6, 8)) mod 10, the 11th is the sum
// of the first ten mod 10.
bool isValidIdentityNumber(const std::string& text);

// Tax number (vergi kimlik numarası): exactly 10 digits.
bool isValidTaxNumber(const std::string& text);

// A plausible e-mail address: one "@", something before it, a dotted domain after it, no blanks.
bool isValidEmail(const std::string& text);

// Blanks at both ends removed.
std::string trimmed(const std::string& text);

// Characters, not bytes, of a UTF-8 text.
size_t characterCount(const std::string& text);

// A parameter as trimmed text; "" when absent or null.
std::string trimmedText(const ApiCall& call, const std::string& name);

// A permission answer: "1" or "0" (also sent as a number or a boolean).
enum class Answer { Absent, Yes, No, Invalid };
Answer answer(const ApiCall& call, const std::string& name);

// A size as the app's float conversion reads it: the leading number of the text ("12a" is 12,
// "abc" is 0). nullopt only for a value that is neither text nor number.
std::optional<double> leadingNumber(const Json& value);

// A whole number sent as a JSON number or as its text.
std::optional<std::int64_t> wholeNumber(const Json& value);

} // namespace ekinora::server::accounts
