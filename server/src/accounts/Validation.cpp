#include "accounts/Validation.h"

#include <charconv>
#include <cstdlib>

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

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) return {};
    const auto last = text.find_last_not_of(" \t\r\n");
    return text.substr(first, last - first + 1);
}

size_t characterCount(const std::string& text) {
    size_t count = 0;
    for (unsigned char c : text)
        if ((c & 0xC0) != 0x80) ++count;
    return count;
}

std::string trimmedText(const ApiCall& call, const std::string& name) {
    return trimmed(call.text(name).value_or(""));
}

Answer answer(const ApiCall& call, const std::string& name) {
    const auto value = call.text(name);
    if (!value) return Answer::Absent;
    if (*value == "1") return Answer::Yes;
    if (*value == "0") return Answer::No;
    return Answer::Invalid;
}

std::optional<double> leadingNumber(const Json& value) {
    if (value.is_number()) return value.get<double>();
    if (!value.is_string()) return std::nullopt;
    const std::string text = value.get<std::string>();
    const double number = std::strtod(text.c_str(), nullptr); // 0 when nothing is read
    return number;
}

std::optional<std::int64_t> wholeNumber(const Json& value) {
    if (value.is_number_integer()) return value.get<std::int64_t>();
    if (value.is_number_float()) {
        const double d = value.get<double>();
        if (d == double(std::int64_t(d))) return std::int64_t(d);
        return std::nullopt;
    }
    if (!value.is_string()) return std::nullopt;
    const std::string text = trimmed(value.get<std::string>());
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

} // namespace ekinora::server::accounts
