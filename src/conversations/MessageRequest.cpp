#include "MessageRequest.h"

#include "platform/Platform.h"
#include "service/LocalStore.h"
#include "service/ServiceRoots.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QHttpMultiPart>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRandomGenerator>

namespace ekinora::conversations {

using namespace platform;
using service::RequestFrame;

namespace {
const service::FrameSpec GetFrame{"GET", true, true, true};
const service::FrameSpec PostFrame{"POST", true, true, true};
const QString SendCommand = QStringLiteral("subject/message/send");

QString textOf(const Json& value) { return value.isString() ? value.toString() : description(value); }

void appendField(QByteArray& body, const QByteArray& boundary, const QString& key, const Json& value) {
    body += "--" + boundary + "\r\n";
    body += "Content-Disposition: form-data; name=\"" + key.toUtf8() + "\"\r\n\r\n";
    body += textOf(value).toUtf8();
    body += "\r\n";
}

void appendFile(QByteArray& body, const QByteArray& boundary, const QByteArray& name, const QByteArray& fileName,
                const QByteArray& type, const QByteArray& content) {
    body += "--" + boundary + "\r\n";
    body += "Content-Disposition: form-data; name=\"" + name + "\"; filename=\"" + fileName + "\"\r\n";
    body += "Content-Type: " + type + "\r\n\r\n";
    body += content;
    body += "\r\n";
}

// The fields of the form: the dictionary without a "do" of its own, then "do".
service::Parameters formFields(const MessageRequest& request) {
    service::Parameters fields;
    for (const auto& field : request.dictionaryRepresentation())
        if (field.first != QLatin1String("do")) fields.append(field);
    fields.append({QStringLiteral("do"), SendCommand});
    return fields;
}

QByteArray uploadUrl() { return stringWithFormat(QStringLiteral("%@/omr/upload/"), {service::Roots::ServiceRoot}).toUtf8(); }

QByteArray bearerHeader() { return stringWithFormat(QStringLiteral("Bearer %@"), {service::LocalStore::token()}).toUtf8(); }

// The video's form, streamed: the file is a device the transport reads as it sends. Qt's own
// transport carries it; a redirection is not followed.
void sendStreamed(const MessageRequest& request, Callback success, Callback fail) {
    auto* file = new QFile(request.mediaURL.toLocalFile());
    if (!file->open(QIODevice::ReadOnly)) {
        delete file;
        QMetaObject::invokeMethod(qApp, [fail] { fail(nil()); }, Qt::QueuedConnection);
        return;
    }
    auto* form = new QHttpMultiPart(QHttpMultiPart::FormDataType);
    for (const auto& [key, value] : formFields(request)) {
        QHttpPart part;
        part.setHeader(QNetworkRequest::ContentDispositionHeader, QStringLiteral("form-data; name=\"%1\"").arg(key));
        part.setBody(textOf(value).toUtf8());
        form->append(part);
    }
    QHttpPart preview;
    preview.setHeader(QNetworkRequest::ContentDispositionHeader,
                      QStringLiteral("form-data; name=\"upload[1]\"; filename=\"photo.jpg\""));
    preview.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("image/jpeg"));
    preview.setBody(request.mediaData);
    form->append(preview);
    QHttpPart video;
    video.setHeader(QNetworkRequest::ContentDispositionHeader,
                    QStringLiteral("form-data; name=\"upload[0]\"; filename=\"video.mp4\""));
    video.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("video/mp4"));
    video.setBodyDevice(file);
    file->setParent(form);
    form->append(video);

    auto* manager = new QNetworkAccessManager;
    QNetworkRequest http{QUrl::fromEncoded(uploadUrl())};
    for (const auto& [name, value] : RequestFrame::defaultHeaders())
        if (name.compare("Content-Type", Qt::CaseInsensitive) != 0) http.setRawHeader(name, value);
    http.setRawHeader("Authorization", bearerHeader());
    http.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    QNetworkReply* reply = manager->post(http, form);
    form->setParent(reply);
    QObject::connect(reply, &QNetworkReply::finished, reply, [reply, manager, success, fail] {
        HttpResponse response;
        response.transportOk = reply->error() == QNetworkReply::NoError || reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
        response.statusCode = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        for (const auto& header : reply->rawHeaderPairs()) response.headers.append(header);
        response.body = reply->readAll();
        response.url = reply->url().toEncoded();
        response.errorText = reply->errorString();
        reply->deleteLater();
        manager->deleteLater();
        RequestFrame::deliver(response, success, fail);
    });
}
} // namespace

QByteArray jpegOf(const QImage& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "JPEG", 50);
    return bytes;
}

service::Parameters MessageRequest::dictionaryRepresentation() const {
    service::Parameters p;
    RequestFrame::add(p, QStringLiteral("id"), objectID);
    RequestFrame::add(p, QStringLiteral("limit"), messageLimit);
    RequestFrame::add(p, QStringLiteral("subjectId"), subjectID);
    RequestFrame::add(p, QStringLiteral("title"), questionSubject);
    RequestFrame::add(p, QStringLiteral("description"), questionDescription);
    RequestFrame::add(p, QStringLiteral("text"), message);
    RequestFrame::add(p, QStringLiteral("ptoken"), pageToken);
    RequestFrame::addBearer(p);
    return p;
}

void MessageRequest::requestData(Callback success, Callback fail) const {
    RequestFrame::send(GetFrame, RequestFrame::commandUrl(doParam), dictionaryRepresentation(), std::move(success), std::move(fail));
}

void MessageRequest::createSubject(Callback success, Callback fail) const {
    RequestFrame::send(PostFrame, RequestFrame::commandUrl(doParam), dictionaryRepresentation(), std::move(success), std::move(fail));
}

void MessageRequest::sendMessage(Callback success, Callback fail) const {
    RequestFrame::send(PostFrame, RequestFrame::commandUrl(doParam), dictionaryRepresentation(), std::move(success), std::move(fail));
}

void MessageRequest::sendMessageStatus(Callback success, Callback fail) const {
    RequestFrame::send(GetFrame, RequestFrame::commandUrl(doParam), dictionaryRepresentation(), std::move(success), std::move(fail));
}

QByteArray MessageRequest::multipartBody(const QByteArray& boundary) const {
    QByteArray body;
    for (const auto& [key, value] : formFields(*this)) appendField(body, boundary, key, value);
    if (fileType == QLatin1String("image")) appendFile(body, boundary, "upload[0]", "photo.jpg", "image/jpeg", mediaData);
    body += "--" + boundary + "--\r\n";
    return body;
}

void MessageRequest::sendMedia(Callback success, Callback fail) const {
    if (fileType != QLatin1String("image")) return sendStreamed(*this, std::move(success), std::move(fail));
    const QByteArray boundary = "Boundary+" + QByteArray::number(QRandomGenerator::global()->generate(), 16).toUpper().rightJustified(8, '0') +
                                QByteArray::number(QRandomGenerator::global()->generate(), 16).toUpper().rightJustified(8, '0');
    HttpRequest request;
    request.method = "POST";
    request.url = uploadUrl();
    request.headers = RequestFrame::defaultHeaders();
    request.setHeader("Authorization", bearerHeader());
    request.setHeader("Content-Type", "multipart/form-data; boundary=" + boundary);
    request.body = multipartBody(boundary);
    RedirectBlock redirect = [](const HttpRequest& proposed, const HttpResponse&) { return RequestFrame::redirectedRequest(proposed); };
    Platform::current().http().send(request, redirect, [success = std::move(success), fail = std::move(fail)](const HttpResponse& r) {
        RequestFrame::deliver(r, success, fail);
    });
}

} // namespace ekinora::conversations
