#include "GameRequest.h"

#include "platform/Platform.h"
#include "service/LocalStore.h"
#include "service/ServiceRoots.h"

#include <QRandomGenerator>

namespace ekinora::contests {

using namespace platform;
using service::RequestFrame;

namespace {
const service::FrameSpec GetFrame{"GET", true, true, true};
const service::FrameSpec PostFrame{"POST", true, true, true};
const QString SubmitCommand = QStringLiteral("surveys/submit");

// A form field's parts: a list as "key[]" one per element, any other value as its text.
void appendField(QByteArray& body, const QByteArray& boundary, const QString& key, const Json& value) {
    if (value.isArray()) {
        for (const auto& element : value.toArray()) appendField(body, boundary, key + QStringLiteral("[]"), element);
        return;
    }
    body += "--" + boundary + "\r\n";
    body += "Content-Disposition: form-data; name=\"" + key.toUtf8() + "\"\r\n\r\n";
    body += (value.isString() ? value.toString() : description(value)).toUtf8();
    body += "\r\n";
}
} // namespace

service::Parameters GameRequest::dictionaryRepresentation() const {
    service::Parameters p;
    if (!isString(doParam, SubmitCommand)) RequestFrame::add(p, QStringLiteral("do"), doParam);
    RequestFrame::add(p, QStringLiteral("id"), gameID);
    RequestFrame::add(p, QStringLiteral("textarea"), textArea);
    if (arrAnswers.isArray() && count(arrAnswers) > 0) RequestFrame::add(p, QStringLiteral("answer_ids"), arrAnswers);
    RequestFrame::add(p, QStringLiteral("t"), timeInterval);
    RequestFrame::add(p, QStringLiteral("ptoken"), pageToken);
    RequestFrame::addBearer(p);
    return p;
}

void GameRequest::getContests(Callback success, Callback fail) const {
    RequestFrame::send(GetFrame, service::Roots::ServiceBase, dictionaryRepresentation(), std::move(success),
                       std::move(fail));
}

void GameRequest::submitAnswers(Callback success, Callback fail) const {
    const QString url = stringWithFormat(QStringLiteral("%@/?do=surveys/submit&question_id=%@"),
                                         {service::Roots::ServiceBase, questionID});
    RequestFrame::send(PostFrame, url, dictionaryRepresentation(), std::move(success), std::move(fail));
}

QByteArray GameRequest::multipartBody(const QByteArray& boundary) const {
    QByteArray body;
    for (const auto& [key, value] : dictionaryRepresentation())
        if (key != QLatin1String("do")) appendField(body, boundary, key, value);
    appendField(body, boundary, QStringLiteral("do"), SubmitCommand);
    appendField(body, boundary, QStringLiteral("question_id"), questionID.isNull() ? nil() : Json(questionID));
    body += "--" + boundary + "\r\n";
    body += "Content-Disposition: form-data; name=\"upload[0]\"; filename=\"photo.jpg\"\r\n";
    body += "Content-Type: image/jpeg\r\n\r\n";
    body += mediaData;
    body += "\r\n--" + boundary + "--\r\n";
    return body;
}

void GameRequest::sendMedia(Callback success, Callback fail) const {
    const QByteArray boundary = "Boundary+" + QByteArray::number(QRandomGenerator::global()->generate(), 16).toUpper().rightJustified(8, '0') +
                                QByteArray::number(QRandomGenerator::global()->generate(), 16).toUpper().rightJustified(8, '0');
    HttpRequest request;
    request.method = "POST";
    request.url = stringWithFormat(QStringLiteral("%@/omr/upload/"), {service::Roots::ServiceRoot}).toUtf8();
    request.headers = RequestFrame::defaultHeaders();
    request.setHeader("Authorization", stringWithFormat(QStringLiteral("Bearer %@"), {service::LocalStore::token()}).toUtf8());
    request.setHeader("Content-Type", "multipart/form-data; boundary=" + boundary);
    request.body = multipartBody(boundary);
    RedirectBlock redirect = [](const HttpRequest& proposed, const HttpResponse&) {
        return RequestFrame::redirectedRequest(proposed);
    };
    Platform::current().http().send(request, redirect,
                                    [success = std::move(success), fail = std::move(fail)](const HttpResponse& r) {
                                        RequestFrame::deliver(r, success, fail);
                                    });
}

} // namespace ekinora::contests
