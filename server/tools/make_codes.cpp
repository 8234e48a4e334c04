// Writes the printable codes of the demo: QR, EAN-13 and Data Matrix images of seeded package
// serial numbers and the demo accounts' QR payloads, plus a damaged and a rotated package code for
// tests of the reader. Each image is read back before it is kept, so a code that does not scan is
// never shipped. Usage: make_codes <output folder>
#include "loyalty/Loyalty.h"

// Results as UTF-8 text.
#define ZX_USE_UTF8
#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>
#include <ZXing/ReadBarcode.h>

#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using ekinora::server::loyalty::serialNumber;

struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels; // 8-bit grey, 0 black
};

Image encode(ZXing::BarcodeFormat format, const std::string& text, int width, int height) {
    auto writer = ZXing::MultiFormatWriter(format).setMargin(format == ZXing::BarcodeFormat::EAN13 ? 12 : 8);
    if (format == ZXing::BarcodeFormat::QRCode) writer.setEccLevel(8); // the highest: packages get scuffed
    const ZXing::BitMatrix bits = writer.encode(text, width, height);
    Image image{bits.width(), bits.height(), {}};
    image.pixels.resize(size_t(image.width) * size_t(image.height));
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            image.pixels[size_t(y) * size_t(image.width) + size_t(x)] = bits.get(x, y) ? 0 : 255;
    return image;
}

// A white quiet zone around the code, as printed labels have.
Image padded(const Image& image, int border) {
    Image out{image.width + 2 * border, image.height + 2 * border, {}};
    out.pixels.assign(size_t(out.width) * size_t(out.height), 255);
    for (int y = 0; y < image.height; ++y)
        std::copy_n(&image.pixels[size_t(y) * size_t(image.width)], image.width,
                    &out.pixels[size_t(y + border) * size_t(out.width) + size_t(border)]);
    return out;
}

// A scuffed label: a grey blot over part of the code, within what the error correction restores.
Image damaged(Image image) {
    const int size = image.width / 7;
    const int left = image.width / 2 - size / 2, top = image.height / 2 + size / 3;
    for (int y = top; y < top + size; ++y)
        for (int x = left; x < left + size; ++x)
            image.pixels[size_t(y) * size_t(image.width) + size_t(x)] = 150;
    return image;
}

// The package held askew: turned by the angle about its centre, the corners filled white.
Image rotated(const Image& image, double degrees) {
    const double a = degrees * 3.14159265358979323846 / 180.0, c = std::cos(a), s = std::sin(a);
    const int side = int(std::ceil(std::abs(image.width * c) + std::abs(image.height * s)));
    Image out{side, side, std::vector<std::uint8_t>(size_t(side) * size_t(side), 255)};
    const double cx = image.width / 2.0, cy = image.height / 2.0, ox = side / 2.0;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const double dx = x - ox, dy = y - ox;
            const int sx = int(std::lround(cx + dx * c + dy * s)), sy = int(std::lround(cy - dx * s + dy * c));
            if (sx >= 0 && sy >= 0 && sx < image.width && sy < image.height)
                out.pixels[size_t(y) * size_t(side) + size_t(x)] = image.pixels[size_t(sy) * size_t(image.width) + size_t(sx)];
        }
    return out;
}

void chunk(std::string& png, const char* type, const std::string& data) {
    const std::uint32_t length = std::uint32_t(data.size());
    for (int shift = 24; shift >= 0; shift -= 8)
        png.push_back(char((length >> shift) & 0xff));
    const std::string body = std::string(type, 4) + data;
    png += body;
    const auto crc = std::uint32_t(crc32(0, reinterpret_cast<const Bytef*>(body.data()), uInt(body.size())));
    for (int shift = 24; shift >= 0; shift -= 8)
        png.push_back(char((crc >> shift) & 0xff));
}

std::string big(std::uint32_t value) {
    return {char(value >> 24), char((value >> 16) & 0xff), char((value >> 8) & 0xff), char(value & 0xff)};
}

bool writePng(const std::filesystem::path& path, const Image& image) {
    std::string raw;
    for (int y = 0; y < image.height; ++y) {
        raw.push_back(0); // no filter
        raw.append(reinterpret_cast<const char*>(&image.pixels[size_t(y) * size_t(image.width)]), size_t(image.width));
    }
    uLongf size = compressBound(uLong(raw.size()));
    std::string packed(size, '\0');
    if (compress2(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(raw.data()),
                  uLong(raw.size()), 9) != Z_OK)
        return false;
    packed.resize(size);
    std::string png = "\x89PNG\r\n\x1a\n";
    chunk(png, "IHDR", big(std::uint32_t(image.width)) + big(std::uint32_t(image.height)) + std::string("\x08\x00\x00\x00\x00", 5));
    chunk(png, "IDAT", packed);
    chunk(png, "IEND", "");
    std::ofstream file(path, std::ios::binary);
    file << png;
    return bool(file);
}

std::string readBack(const Image& image) {
    ZXing::DecodeHints hints;
    hints.setTryHarder(true);
    hints.setTryRotate(true);
    const ZXing::ImageView view(image.pixels.data(), image.width, image.height, ZXing::ImageFormat::Lum);
    const auto result = ZXing::ReadBarcode(view, hints);
    return result.isValid() ? result.text() : std::string();
}

struct Entry {
    std::string file;
    std::string text;
    Image image;
    std::string what;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_codes <output folder>\n");
        return 2;
    }
    using ZXing::BarcodeFormat;
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);

    std::vector<Entry> entries;
    auto qr = [](const std::string& text) { return encode(BarcodeFormat::QRCode, text, 240, 240); };
    entries.push_back({"farmer-qr.png", ekinora::server::loyalty::DemoFarmerQr, qr(ekinora::server::loyalty::DemoFarmerQr),
                       "QR code of the demo farmer (Hasan Doğru): the dealer reads it to open a sale or a gift"});
    entries.push_back({"member-qr.png", ekinora::server::loyalty::DemoLoyaltyQr, qr(ekinora::server::loyalty::DemoLoyaltyQr),
                       "QR code of the demo club member (Ayşe Kaplan)"});
    for (int n = 1; n <= 12; ++n) {
        char name[32];
        std::snprintf(name, sizeof name, "package-%02d-qr.png", n);
        entries.push_back({name, serialNumber(n), qr(serialNumber(n)), "package " + std::to_string(n) + ", not scanned yet"});
    }
    for (int n = 1; n <= 4; ++n) {
        char name[40];
        std::snprintf(name, sizeof name, "package-%02d-ean13.png", n);
        entries.push_back({name, serialNumber(n), padded(encode(BarcodeFormat::EAN13, serialNumber(n), 300, 120), 24),
                           "package " + std::to_string(n) + " as an EAN-13 barcode"});
        std::snprintf(name, sizeof name, "package-%02d-datamatrix.png", n);
        entries.push_back({name, serialNumber(n), padded(encode(BarcodeFormat::DataMatrix, serialNumber(n), 160, 160), 16),
                           "package " + std::to_string(n) + " as a Data Matrix code"});
    }
    entries.push_back({"package-13-scanned-qr.png", serialNumber(13), qr(serialNumber(13)),
                       "package 13, already scanned by the demo farmer"});
    entries.push_back({"package-16-sold-qr.png", serialNumber(16), qr(serialNumber(16)),
                       "package 16, already sold to the demo farmer by the demo dealer"});
    entries.push_back({"package-24-no-points-qr.png", serialNumber(24), qr(serialNumber(24)),
                       "package 24, a product outside the points campaign"});
    const int bag = ekinora::server::loyalty::FirstSeedBagCode;
    entries.push_back({"seed-bag-" + std::to_string(bag) + "-qr.png", serialNumber(bag), qr(serialNumber(bag)),
                       "a maize seed bag: not a plant-protection package"});
    entries.push_back({"unknown-qr.png", "8690000000000", qr("8690000000000"), "a code the service does not know"});
    entries.push_back({"package-05-damaged-qr.png", serialNumber(5), damaged(qr(serialNumber(5))),
                       "package 5 with a blot over part of the code (still readable)"});
    entries.push_back({"package-06-rotated-qr.png", serialNumber(6), rotated(qr(serialNumber(6)), 25),
                       "package 6 turned by 25 degrees"});

    std::string readme =
        "# Printable demo codes\n\nMade by `make_codes` (server/tools/make_codes.cpp); every image is read back "
        "when it is made. Package n carries the serial number of the n-th seeded package.\n\n"
        "| File | Text | What |\n|---|---|---|\n";
    int failures = 0;
    for (const auto& e : entries) {
        const std::string read = readBack(e.image);
        if (read != e.text) {
            std::fprintf(stderr, "%s does not read back (got \"%s\")\n", e.file.c_str(), read.c_str());
            ++failures;
            continue;
        }
        if (!writePng(folder / e.file, e.image)) {
            std::fprintf(stderr, "cannot write %s\n", e.file.c_str());
            return 1;
        }
        readme += "| " + e.file + " | " + e.text + " | " + e.what + " |\n";
    }
    std::ofstream(folder / "README.md") << readme;
    std::printf("%zu images in %s, %d unreadable\n", entries.size() - size_t(failures), folder.c_str(), failures);
    return failures ? 1 : 0;
}
