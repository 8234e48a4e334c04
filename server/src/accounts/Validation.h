#pragma once

#include <cstddef>
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

// Characters, not bytes, of a UTF-8 text.
size_t characterCount(const std::string& text);

} // namespace ekinora::server::accounts
