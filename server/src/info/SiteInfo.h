#pragma once

#include <optional>
#include <string>

namespace ekinora::server::info {

// The product site's guide to the safe use of plant-protection products, at
// "/site/scripts/components/static/page_182.php": a bare JSON array (no envelope) of blocks
// {"item": "headline" | "paragraph", "type": "main" | "standard" | "subtitle", "content"}. Blocks 0 and
// 12 are the two main headings, each followed by its section's text. nullopt for any other path.
std::optional<std::string> siteInfoDocument(const std::string& path);

inline const std::string SiteInfoPath = "/site/scripts/components/static/page_182.php";

} // namespace ekinora::server::info
