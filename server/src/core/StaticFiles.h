#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace ekinora::server {

// Bundled media under one folder. Only regular files of known types are served; a path that
// leaves the folder (through "..", a dot entry or a symbolic link) is not found.
class StaticFiles {
public:
    explicit StaticFiles(std::filesystem::path root);

    struct File {
        std::filesystem::path path;
        std::string mimeType;
        std::uintmax_t size = 0;
    };

    // relative: the decoded path below the folder, e.g. "media/popup/kampanya.svg".
    std::optional<File> find(const std::string& relative) const;

    static std::optional<std::string> mimeType(const std::filesystem::path& file);

private:
    std::filesystem::path m_root;
};

} // namespace ekinora::server
