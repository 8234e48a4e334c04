#pragma once

#include <string>
#include <vector>

namespace ekinora::server::pdf {

// One paragraph of a text document.
struct Paragraph {
    std::string text; // UTF-8
    double size = 10;
    bool bold = false;
    double spaceBefore = 4;
};

// A PDF of A4 pages: the title on a green band at the top of the first page, then the paragraphs,
// wrapped to the page width and carried onto further pages as needed. The standard Helvetica
// faces are used, not embedded; Turkish letters outside Latin-1 are named glyphs of those faces,
// other characters outside Latin-1 come out as "?".
std::string textDocument(const std::string& title, const std::vector<Paragraph>& paragraphs);

} // namespace ekinora::server::pdf
