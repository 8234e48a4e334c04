#include "farms/Pdf.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace ekinora::server::pdf {

namespace {

constexpr double PageWidth = 595, PageHeight = 842, Margin = 56;
constexpr double Leading = 1.35;

// Code points of UTF-8 text; a malformed byte becomes U+FFFD.
std::vector<std::uint32_t> codePoints(const std::string& utf8) {
    std::vector<std::uint32_t> out;
    for (size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const int length = lead < 0x80           ? 1
                           : (lead >> 5) == 0x6  ? 2
                           : (lead >> 4) == 0xE  ? 3
                           : (lead >> 3) == 0x1E ? 4
                                                 : 0;
        std::uint32_t cp = length == 1   ? lead
                           : length == 2 ? lead & 0x1F
                           : length == 3 ? lead & 0x0F
                                         : lead & 0x07;
        bool valid = length > 0 && i + size_t(length) <= utf8.size();
        for (int k = 1; valid && k < length; ++k) {
            const auto next = static_cast<unsigned char>(utf8[i + size_t(k)]);
            valid = (next & 0xC0) == 0x80;
            cp = (cp << 6) | (next & 0x3F);
        }
        out.push_back(valid ? cp : 0xFFFD);
        i += valid ? size_t(length) : 1;
    }
    return out;
}

// The fonts' encoding: WinAnsi, with the six Turkish letters it lacks on the codes of Latin-1
// letters Turkish does not use (the codes of Latin-5, where these letters sit).
const char* Encoding = "<< /Type /Encoding /BaseEncoding /WinAnsiEncoding /Differences [208 /Gbreve 221 "
                       "/Idotaccent 222 /Scedilla 240 /gbreve 253 /dotlessi 254 /scedilla] >>";

std::string encode(const std::string& utf8) {
    std::string out;
    for (auto cp : codePoints(utf8)) {
        switch (cp) {
        case 0x011E:
            out += char(208);
            break; // Ğ
        case 0x0130:
            out += char(221);
            break; // İ
        case 0x015E:
            out += char(222);
            break; // Ş
        case 0x011F:
            out += char(240);
            break; // ğ
        case 0x0131:
            out += char(253);
            break; // ı
        case 0x015F:
            out += char(254);
            break; // ş
        case 0x2013:
            out += char(150);
            break; // en dash
        case 0x2022:
            out += char(149);
            break; // bullet
        default:
            if (cp >= 0x20 && cp < 0x7F)
                out += char(cp);
            else if (cp >= 0xA0 && cp <= 0xFF && cp != 0xD0 && cp != 0xDD && cp != 0xDE && cp != 0xF0 &&
                     cp != 0xFD && cp != 0xFE)
                out += char(cp);
            else
                out += '?';
        }
    }
    return out;
}

std::string literal(const std::string& encoded) {
    std::string out = "(";
    for (char c : encoded) {
        if (c == '(' || c == ')' || c == '\\') out += '\\';
        out += c;
    }
    return out + ")";
}

// A text string for the document information: UTF-16BE with its byte order mark, in hexadecimal.
std::string infoText(const std::string& utf8) {
    std::string out = "<FEFF";
    char unit[8];
    auto put = [&](unsigned value) {
        std::snprintf(unit, sizeof unit, "%04X", value);
        out += unit;
    };
    for (auto cp : codePoints(utf8)) {
        if (cp >= 0x10000) {
            put(0xD800 + ((cp - 0x10000) >> 10));
            put(0xDC00 + ((cp - 0x10000) & 0x3FF));
        } else {
            put(cp);
        }
    }
    return out + ">";
}

// Lines of at most the width, by an average glyph width of Helvetica; a word longer than a line
// is broken.
std::vector<std::string> wrap(const std::string& encoded, double size, bool bold, double width) {
    const size_t perLine = std::max<size_t>(8, size_t(width / (size * (bold ? 0.56 : 0.51))));
    std::vector<std::string> lines;
    std::string line;
    size_t start = 0;
    while (start <= encoded.size()) {
        size_t end = encoded.find(' ', start);
        if (end == std::string::npos) end = encoded.size();
        std::string word = encoded.substr(start, end - start);
        start = end + 1;
        while (word.size() > perLine) {
            if (!line.empty()) lines.push_back(std::move(line)), line.clear();
            lines.push_back(word.substr(0, perLine));
            word.erase(0, perLine);
        }
        if (word.empty()) continue;
        if (!line.empty() && line.size() + 1 + word.size() > perLine)
            lines.push_back(std::move(line)), line.clear();
        line += (line.empty() ? "" : " ") + word;
    }
    if (!line.empty()) lines.push_back(std::move(line));
    return lines;
}

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

std::string textLine(const std::string& encoded, double size, bool bold, double x, double y) {
    return "BT /" + std::string(bold ? "F2 " : "F1 ") + number(size) + " Tf " + number(x) + " " + number(y) +
           " Td " + literal(encoded) + " Tj ET\n";
}

} // namespace

std::string textDocument(const std::string& title, const std::vector<Paragraph>& paragraphs) {
    const double width = PageWidth - 2 * Margin;
    std::vector<std::string> pages(1);

    // The title band.
    const auto titleLines = wrap(encode(title), 20, true, width);
    const double band = 36 + 26 * double(titleLines.size());
    pages[0] += "0.471 0.725 0.188 rg 0 " + number(PageHeight - band) + " " + number(PageWidth) + " " +
                number(band) + " re f\n1 g\n";
    double y = PageHeight - 18;
    for (const auto& line : titleLines)
        pages[0] += textLine(line, 20, true, Margin, y -= 26);
    pages[0] += "0.2 g\n";

    y = PageHeight - band - 16;
    for (const auto& paragraph : paragraphs) {
        y -= paragraph.spaceBefore;
        for (const auto& line : wrap(encode(paragraph.text), paragraph.size, paragraph.bold, width)) {
            y -= paragraph.size * Leading;
            if (y < Margin) {
                pages.emplace_back("0.2 g\n");
                y = PageHeight - Margin - paragraph.size;
            }
            pages.back() += textLine(line, paragraph.size, paragraph.bold, Margin, y);
        }
    }

    // Objects: 1 catalog, 2 page tree, 3 and 4 fonts, 5 information, then a page and its content
    // for each page.
    std::vector<std::string> objects;
    std::string kids;
    for (size_t i = 0; i < pages.size(); ++i)
        kids += (i ? " " : "") + std::to_string(6 + 2 * i) + " 0 R";
    objects.push_back("<< /Type /Catalog /Pages 2 0 R >>");
    objects.push_back("<< /Type /Pages /Kids [" + kids + "] /Count " + std::to_string(pages.size()) + " >>");
    objects.push_back(std::string("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding ") +
                      Encoding + " >>");
    objects.push_back(std::string("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding ") +
                      Encoding + " >>");
    objects.push_back("<< /Title " + infoText(title) + " /Producer (Ekinora) >>");
    for (size_t i = 0; i < pages.size(); ++i) {
        objects.push_back("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " + number(PageWidth) + " " +
                          number(PageHeight) +
                          "] /Resources << /Font << /F1 3 0 R /F2 4 0 R >> >> /Contents " +
                          std::to_string(7 + 2 * i) + " 0 R >>");
        objects.push_back("<< /Length " + std::to_string(pages[i].size()) + " >>\nstream\n" + pages[i] +
                          "endstream");
    }

    // The binary comment line tells transfer programs that the file is not text.
    std::string out = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";
    std::vector<size_t> offsets;
    for (size_t i = 0; i < objects.size(); ++i) {
        offsets.push_back(out.size());
        out += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const size_t xref = out.size();
    out += "xref\n0 " + std::to_string(objects.size() + 1) + "\n0000000000 65535 f \n";
    char entry[24];
    for (auto offset : offsets) {
        std::snprintf(entry, sizeof entry, "%010zu 00000 n \n", offset);
        out += entry;
    }
    out += "trailer\n<< /Size " + std::to_string(objects.size() + 1) +
           " /Root 1 0 R /Info 5 0 R >>\nstartxref\n" + std::to_string(xref) + "\n%%EOF\n";
    return out;
}

} // namespace ekinora::server::pdf
