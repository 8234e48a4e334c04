#pragma once

#include <QString>
#include <QTemporaryDir>

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <string>

namespace testing {

using Json = nlohmann::ordered_json;

inline QString q(const std::string& s) {
    return QString::fromStdString(s);
}
inline QString q(const Json& j) {
    return QString::fromStdString(j.dump());
}

struct Reply {
    int http = 0;
    std::string contentType;
    std::string body;
    Json json; // null when the body is not JSON

    static Reply from(const httplib::Result& result) {
        Reply r;
        if (!result) return r;
        r.http = result->status;
        r.contentType = result->get_header_value("Content-Type");
        r.body = result->body;
        r.json = Json::parse(r.body, nullptr, false);
        if (r.json.is_discarded()) r.json = nullptr;
        return r;
    }
};

} // namespace testing
