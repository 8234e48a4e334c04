#include "RTCJSExportedInstructions.h"

#include "Log.h"
#include "RTCDiglagi.h"
#include "RTCHitStore.h"

#include <openssl/evp.h>
#include <openssl/provider.h>

namespace ekinora::analytics {

namespace {

bool validMethod(const QString& method) {
    return method == QLatin1String("GET") || method == QLatin1String("HEAD") || method == QLatin1String("POST") ||
           method == QLatin1String("PUT");
}

// DES, RC2, RC4 and Blowfish live in OpenSSL's legacy provider.
void loadProviders() {
    static const bool loaded = [] {
        OSSL_PROVIDER_load(nullptr, "legacy");
        OSSL_PROVIDER_load(nullptr, "default");
        return true;
    }();
    (void)loaded;
}

} // namespace

RTCJSExportedInstructions::RTCJSExportedInstructions(const QString& containerId, RTCHitStore* hitStore,
                                                     RTCDiglagi* diglagi, QObject* parent)
    : QObject(parent), m_containerId(containerId), m_hitStore(hitStore), m_diglagi(diglagi) {}

void RTCJSExportedInstructions::setCurrentEvent(const QString& name, const QVariantMap& parameters) {
    std::lock_guard guard(m_mutex);
    m_eventName = name;
    m_eventParameters = parameters;
}

void RTCJSExportedInstructions::clearCurrentEvent() {
    std::lock_guard guard(m_mutex);
    m_eventName.clear();
    m_eventParameters.clear();
}

bool RTCJSExportedInstructions::queueHit(const QString& url, const QString& method, const QVariantMap& headers,
                                         const QString& body, const QString& uniqueId) {
    const QString verb = method.isEmpty() ? QStringLiteral("GET") : method.toUpper();
    if (!validMethod(verb) || !QUrl(url).isValid() || url.isEmpty()) {
        log(QStringLiteral("Invalid hit for container %1: %2 %3").arg(m_containerId, method, url));
        return false;
    }
    if (!m_hitStore) return false;
    RTCHit hit;
    hit.URL = url;
    hit.method = verb;
    hit.headers = headers;
    hit.body = body;
    hit.uniqueId = uniqueId;
    m_hitStore->addHit(hit);
    return true;
}

QByteArray RTCJSExportedInstructions::decode(const QString& input, const QString& format, bool* ok) {
    *ok = true;
    if (format == QLatin1String("text")) return input.toUtf8();
    if (format == QLatin1String("base16")) {
        const QByteArray hex = input.toLatin1();
        *ok = hex.size() % 2 == 0 &&
              std::all_of(hex.begin(), hex.end(), [](char c) { return std::isxdigit(static_cast<unsigned char>(c)); });
        return *ok ? QByteArray::fromHex(hex) : QByteArray();
    }
    if (format == QLatin1String("base64") || format == QLatin1String("base64url")) {
        QByteArray::Base64Options options = format == QLatin1String("base64") ? QByteArray::Base64Encoding
                                                                               : QByteArray::Base64UrlEncoding;
        options |= QByteArray::AbortOnBase64DecodingErrors;
        auto result = QByteArray::fromBase64Encoding(input.toLatin1(), options);
        *ok = bool(result);
        return result.decoded;
    }
    *ok = false;
    log(QStringLiteral("Unsupported encode string input format: %1").arg(format));
    return {};
}

QString RTCJSExportedInstructions::encode(const QByteArray& data, const QString& format, bool padding, bool* ok) {
    *ok = true;
    if (format == QLatin1String("base16")) return QString::fromLatin1(data.toHex());
    if (format == QLatin1String("base64") || format == QLatin1String("base64url")) {
        QByteArray::Base64Options options = format == QLatin1String("base64") ? QByteArray::Base64Encoding
                                                                               : QByteArray::Base64UrlEncoding;
        if (!padding) options |= QByteArray::OmitTrailingEquals;
        return QString::fromLatin1(data.toBase64(options));
    }
    *ok = false;
    log(QStringLiteral("Unsupported encode string output format: %1").arg(format));
    return {};
}

QString RTCJSExportedInstructions::encodeString(const QString& input, const QString& inputFormat,
                                                const QString& outputFormat, bool padding) {
    bool ok = false;
    const QByteArray data = decode(input, inputFormat, &ok);
    if (!ok) return QString();
    const QString out = encode(data, outputFormat, padding, &ok);
    return ok ? out : QString();
}

QString RTCJSExportedInstructions::encryptString(const QString& specification, const QString& keyHex,
                                                 const QString& ivHex, const QString& input,
                                                 const QString& inputFormat, const QString& outputFormat) {
    const QString algorithm = specification.section(QLatin1Char('/'), 0, 0);
    const QString mode = specification.contains(QLatin1Char('/')) ? specification.section(QLatin1Char('/'), 1)
                                                                  : QStringLiteral("CBC");
    static const QStringList algorithms{"AES", "DES", "DESede", "RC4", "RC2", "Blowfish"};
    static const QStringList modes{"CBC", "ECB", "CFB", "CTR", "OFB", "RC4", "CFB8"};
    if (!algorithms.contains(algorithm)) {
        log(QStringLiteral("Unsupported encryption algorithm: %1").arg(algorithm));
        return {};
    }
    if (!modes.contains(mode)) {
        log(QStringLiteral("Unsupported cipher mode: %1").arg(mode));
        return {};
    }
    const QByteArray key = QByteArray::fromHex(keyHex.toLatin1());
    const QByteArray iv = QByteArray::fromHex(ivHex.toLatin1());

    QString name;
    if (algorithm == QLatin1String("RC4") || mode == QLatin1String("RC4")) {
        if (algorithm != QLatin1String("RC4") || mode != QLatin1String("RC4")) {
            log(QStringLiteral("Unsupported cipher mode: %1").arg(mode));
            return {};
        }
        name = QStringLiteral("RC4");
    } else if (algorithm == QLatin1String("AES")) {
        name = QStringLiteral("AES-%1-%2").arg(key.size() * 8).arg(mode);
    } else {
        const QString family = algorithm == QLatin1String("DESede") ? QStringLiteral("DES-EDE3")
                               : algorithm == QLatin1String("Blowfish") ? QStringLiteral("BF")
                                                                        : algorithm;
        name = family + QLatin1Char('-') + mode;
    }

    bool ok = false;
    const QByteArray plain = decode(input, inputFormat, &ok);
    if (!ok) return {};

    loadProviders();
    EVP_CIPHER* cipher = EVP_CIPHER_fetch(nullptr, name.toLatin1().constData(), nullptr);
    if (!cipher) {
        log(QStringLiteral("Unsupported cipher mode: %1").arg(mode));
        return {};
    }
    QByteArray out;
    EVP_CIPHER_CTX* ctx = EVP_CIPHER_CTX_new();
    bool good = EVP_EncryptInit_ex2(ctx, cipher, nullptr, nullptr, nullptr) == 1 &&
                (EVP_CIPHER_get_key_length(cipher) == key.size() ||
                 EVP_CIPHER_CTX_set_key_length(ctx, int(key.size())) == 1) &&
                (EVP_CIPHER_get_iv_length(cipher) == 0 || EVP_CIPHER_get_iv_length(cipher) == iv.size()) &&
                EVP_EncryptInit_ex2(ctx, nullptr, reinterpret_cast<const unsigned char*>(key.constData()),
                                    iv.isEmpty() ? nullptr : reinterpret_cast<const unsigned char*>(iv.constData()),
                                    nullptr) == 1;
    if (good) {
        out.resize(plain.size() + EVP_CIPHER_get_block_size(cipher) + 16);
        int written = 0, last = 0;
        good = EVP_EncryptUpdate(ctx, reinterpret_cast<unsigned char*>(out.data()), &written,
                                 reinterpret_cast<const unsigned char*>(plain.constData()), int(plain.size())) == 1 &&
               EVP_EncryptFinal_ex(ctx, reinterpret_cast<unsigned char*>(out.data()) + written, &last) == 1;
        out.resize(good ? written + last : 0);
    }
    EVP_CIPHER_CTX_free(ctx);
    EVP_CIPHER_free(cipher);
    if (!good) {
        log(QStringLiteral("Encryption with %1 failed: the key or the iv does not fit").arg(specification));
        return {};
    }
    const QString encoded = encode(out, outputFormat, true, &ok);
    return ok ? encoded : QString();
}

void RTCJSExportedInstructions::sendDiglagiTag(const QVariantMap& tag) {
    QVariantMap eventData;
    {
        std::lock_guard guard(m_mutex);
        eventData = m_eventParameters;
    }
    if (m_diglagi) m_diglagi->sendTag(tag, eventData);
}

void RTCJSExportedInstructions::logMessage(const QString& message) {
    log(message);
}

} // namespace ekinora::analytics
