#pragma once

#include "core/Database.h"
#include "core/Server.h"

#include <QTemporaryDir>

#include "TestSupport.h"

#include <memory>

namespace testing {

// A service on a file database, with a second connection to look at what it stored, and the SMS
// rounds that registration and login need.
struct AccountsService {
    QTemporaryDir dir;
    std::unique_ptr<ekinora::server::Server> server;
    std::unique_ptr<httplib::Client> client;
    std::unique_ptr<ekinora::server::Database> db;

    AccountsService() {
        ekinora::server::ServerOptions options;
        options.dbPath = dir.filePath("service.db").toStdString();
        server = std::make_unique<ekinora::server::Server>(options);
        client = std::make_unique<httplib::Client>("127.0.0.1", server->start());
        db = std::make_unique<ekinora::server::Database>(options.dbPath);
    }

    static httplib::Headers bearer(const std::string& token) {
        return {{"Authorization", "Bearer " + token}};
    }

    Reply get(const std::string& target, const httplib::Headers& headers = {}) {
        return Reply::from(client->Get(target.c_str(), headers));
    }
    // As the app posts: "do" in the URL, the parameters as a JSON body.
    Reply post(const std::string& command, const Json& body, const httplib::Headers& headers = {}) {
        return Reply::from(client->Post(("/api/?do=" + command).c_str(), headers, body.dump(),
                                        "application/json; charset=UTF-8"));
    }

    // The hash of a verified registration code for the phone.
    std::string verifiedHash(const std::string& phone) {
        const Json data = get("/api/?do=sms/get&type=register&phoneNumber=" + phone).json["data"];
        const std::string hash = data["hash"];
        get("/api/?do=sms/check&type=register&hash=" + hash + "&code=" + data["code"].get<std::string>());
        return hash;
    }

    // The reply of an SMS login for the phone.
    Reply login(const std::string& phone) {
        const Json data = get("/api/?do=sms/get&phoneNumber=" + phone).json["data"];
        return get("/api/?do=farmer/login&type=login&deviceType=2&hash=" + data["hash"].get<std::string>() +
                   "&code=" + data["code"].get<std::string>());
    }
};

inline std::vector<std::string> keys(const Json& object) {
    std::vector<std::string> out;
    for (auto it = object.begin(); it != object.end(); ++it)
        out.push_back(it.key());
    return out;
}

} // namespace testing
