#include "core/StaticFiles.h"

#include <algorithm>
#include <map>

namespace ekinora::server {

namespace fs = std::filesystem;

StaticFiles::StaticFiles(fs::path root) {
    std::error_code ec;
    m_root = fs::weakly_canonical(root, ec);
    if (ec) m_root = root;
}

std::optional<std::string> StaticFiles::mimeType(const fs::path& file) {
    static const std::map<std::string, std::string> types = {
        {".svg", "image/svg+xml"},
        {".png", "image/png"},
        {".jpg", "image/jpeg"},
        {".jpeg", "image/jpeg"},
        {".gif", "image/gif"},
        {".webp", "image/webp"},
        {".pdf", "application/pdf"},
        {".mp4", "video/mp4"},
        {".json", "application/json; charset=utf-8"},
        {".html", "text/html; charset=utf-8"},
        {".txt", "text/plain; charset=utf-8"},
    };
    std::string ext = file.extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return char(std::tolower(c)); });
    auto it = types.find(ext);
    if (it == types.end()) return std::nullopt;
    return it->second;
}

std::optional<StaticFiles::File> StaticFiles::find(const std::string& relative) const {
    if (relative.empty() || relative.find('\0') != std::string::npos) return std::nullopt;
    const fs::path rel(relative);
    if (rel.is_absolute()) return std::nullopt;
    for (const auto& part : rel)
        if (!part.empty() && part.string().front() == '.') return std::nullopt; // "..", ".", hidden files

    std::error_code ec;
    const fs::path resolved = fs::weakly_canonical(m_root / rel, ec);
    if (ec) return std::nullopt;
    // Still inside the folder after symbolic links are resolved.
    auto [rootEnd, _] = std::mismatch(m_root.begin(), m_root.end(), resolved.begin(), resolved.end());
    if (rootEnd != m_root.end()) return std::nullopt;
    if (!fs::is_regular_file(resolved, ec)) return std::nullopt;

    auto type = mimeType(resolved);
    if (!type) return std::nullopt;
    return File{resolved, *type, fs::file_size(resolved, ec)};
}

} // namespace ekinora::server
