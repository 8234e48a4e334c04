#include "accounts/Validation.h"

namespace ekinora::server::accounts {

namespace {

bool allDigits(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

} // namespace

bool isValidIdentityNumber(const std::string& text) {
    if (text.size() != 11 || !allDigits(text) || text[0] == '0') return false;
    int d[11];
    for (int i = 0; i < 11; ++i)
        d[i] = text[size_t(i)] - '0';
    const int odd = d[0] + d[2] + d[4] + d[6] + d[8];
    const int even = d[1] + d[3] + d[5] + d[7];
    const int tenth = ((odd * 7 - even) % 10 + 10) % 10;
    int firstTen = 0;
    for (int i = 0; i < 10; ++i)
        firstTen += d[i];
    return d[9] == tenth && d[10] == firstTen % 10;
}

bool isValidTaxNumber(const std::string& text) {
    return text.size() == 10 && allDigits(text);
}

bool isValidEmail(const std::string& text) {
    if (text.size() > 100 || text.find_first_of(" \t\r\n<>\"") != std::string::npos) return false;
    const auto at = text.find('@');
    if (at == std::string::npos || at == 0 || text.find('@', at + 1) != std::string::npos) return false;
    const std::string domain = text.substr(at + 1);
    const auto dot = domain.find('.');
    return dot != std::string::npos && dot > 0 && domain.back() != '.' &&
           domain.find("..") == std::string::npos;
}

size_t characterCount(const std::string& text) {
    size_t count = 0;
    for (unsigned char c : text)
        if ((c & 0xC0) != 0x80) ++count;
    return count;
}

} // namespace ekinora::server::accounts
