#include "core/Params.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace ekinora::server {

namespace {

const char* const Blanks = " \t\r\n";

std::optional<std::int64_t> integerOf(const Json& value) {
    if (value.is_number_integer()) return value.get<std::int64_t>();
    if (value.is_number_float()) {
        const double d = value.get<double>();
        if (std::isfinite(d) && d == std::floor(d) && std::fabs(d) < 1e15) return std::int64_t(d);
        return std::nullopt;
    }
    if (!value.is_string()) return std::nullopt;
    const std::string text = trimmed(value.get<std::string>());
    std::int64_t out = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return out;
}

// A sign, digits, and a fraction after a point (or a comma, where allowed); nothing else.
std::optional<double> plainDecimal(std::string text, bool comma) {
    text = trimmed(text);
    const size_t begin = !text.empty() && text[0] == '+' ? 1 : 0; // from_chars takes no plus sign
    size_t i = begin == 0 && !text.empty() && text[0] == '-' ? 1 : begin;
    bool digits = false, point = false;
    for (; i < text.size(); ++i) {
        char& c = text[i];
        if (c >= '0' && c <= '9') {
            digits = true;
        } else if ((c == '.' || (comma && c == ',')) && !point) {
            point = true;
            c = '.';
        } else {
            return std::nullopt;
        }
    }
    if (!digits) return std::nullopt;
    double value = 0;
    const auto [end, error] =
        std::from_chars(text.data() + begin, text.data() + text.size(), value, std::chars_format::fixed);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

} // namespace

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(Blanks);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

Params::Params(const Json& object) : m_object(object) {}

const Json* Params::find(const std::string& name) const {
    if (!m_object.is_object()) return nullptr;
    auto it = m_object.find(name);
    return it == m_object.end() || it->is_null() ? nullptr : &*it;
}

bool Params::has(const std::string& name) const {
    return find(name) != nullptr;
}

bool Params::blank(const std::string& name) const {
    const Json* value = find(name);
    return !value || (value->is_string() && server::trimmed(value->get<std::string>()).empty());
}

std::optional<std::string> Params::text(const std::string& name) const {
    const Json* value = find(name);
    if (!value) return std::nullopt;
    if (value->is_string()) return value->get<std::string>();
    if (value->is_boolean()) return value->get<bool>() ? "1" : "0";
    return value->dump();
}

std::string Params::trimmed(const std::string& name) const {
    return server::trimmed(text(name).value_or(""));
}

std::optional<std::string> Params::filled(const std::string& name) const {
    auto value = text(name);
    if (value && value->empty()) return std::nullopt;
    return value;
}

std::optional<std::int64_t> Params::integer(const std::string& name) const {
    const Json* value = find(name);
    return value ? integerOf(*value) : std::nullopt;
}

std::optional<double> Params::number(const std::string& name, NumberText form) const {
    const Json* value = find(name);
    if (!value) return std::nullopt;
    if (value->is_number()) return value->get<double>();
    if (!value->is_string()) return std::nullopt;
    const std::string text = value->get<std::string>();
    if (form == NumberText::Leading) return std::strtod(text.c_str(), nullptr); // 0 when nothing is read
    return plainDecimal(text, form == NumberText::PointOrComma);
}

std::optional<std::vector<std::int64_t>> Params::ids(const std::string& name) const {
    std::vector<std::int64_t> out;
    if (blank(name)) return out;
    const Json& value = *find(name);
    Json list = value;
    if (value.is_string()) {
        list = Json::parse(value.get<std::string>(), nullptr, false);
        if (!list.is_array()) {
            list = Json::array();
            const std::string text = value.get<std::string>();
            for (size_t start = 0; start <= text.size();) {
                const size_t comma = std::min(text.find(',', start), text.size());
                const std::string part = server::trimmed(text.substr(start, comma - start));
                if (!part.empty()) list.push_back(part);
                start = comma + 1;
            }
        }
    } else if (!value.is_array()) {
        list = Json::array({value});
    }
    for (const auto& element : list) {
        auto id = integerOf(element);
        if (!id) return std::nullopt;
        if (std::find(out.begin(), out.end(), *id) == out.end()) out.push_back(*id);
    }
    return out;
}

std::optional<Json> Params::list(const std::string& name) const {
    const Json* value = find(name);
    if (!value) return Json::array();
    if (value->is_array()) return *value;
    if (!value->is_string()) return std::nullopt;
    Json parsed = Json::parse(value->get<std::string>(), nullptr, false);
    if (!parsed.is_array()) return std::nullopt;
    return parsed;
}

Answer Params::answer(const std::string& name) const {
    const auto value = text(name);
    if (!value) return Answer::Absent;
    if (*value == "1") return Answer::Yes;
    if (*value == "0") return Answer::No;
    return Answer::Invalid;
}

std::string Params::required(const std::string& name, const std::string& missing) {
    std::string value = trimmed(name);
    if (value.empty()) fail(name, missing);
    return value;
}

std::optional<std::int64_t> Params::requiredInteger(const std::string& name, const std::string& missing,
                                                    const std::string& invalid) {
    if (blank(name)) {
        fail(name, missing);
        return std::nullopt;
    }
    auto value = integer(name);
    if (!value) fail(name, invalid);
    return value;
}

std::optional<double> Params::requiredNumber(const std::string& name, NumberText form,
                                             const std::string& missing, const std::string& invalid) {
    if (blank(name)) {
        fail(name, missing);
        return std::nullopt;
    }
    auto value = number(name, form);
    if (!value) fail(name, invalid);
    return value;
}

Answer Params::requiredAnswer(const std::string& name, const std::string& missing,
                              const std::string& invalid) {
    const Answer value = answer(name);
    if (value == Answer::Absent) fail(name, missing);
    if (value == Answer::Invalid) fail(name, invalid);
    return value;
}

void Params::fail(const std::string& field, const std::string& message) {
    m_errors.emplace_back(field, message);
}

} // namespace ekinora::server
