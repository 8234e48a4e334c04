#pragma once

#include "service/RequestFrame.h"

namespace ekinora::contests {

using service::Callback;
using service::Json;

// The contest commands: the list, a contest's questions and results, an answer, and an answer's
// photograph through the media upload. Every property is left out until a caller sets it.
class GameRequest {
public:
    Json doParam{QJsonValue::Undefined};
    Json gameID{QJsonValue::Undefined};
    Json textArea{QJsonValue::Undefined};
    Json arrAnswers{QJsonValue::Undefined};
    Json timeInterval{QJsonValue::Undefined}; // kept in the wire form; nothing sets it
    Json pageToken{QJsonValue::Undefined};
    Json contestID{QJsonValue::Undefined}; // kept; never sent
    QString questionID;                    // in the answer's address, or a field of the upload
    QByteArray mediaData;                  // the photograph, JPEG

    // "do" (except for "surveys/submit"), "id", "textarea", "answer_ids" (only with an element),
    // "t", "ptoken", then "bearer" when a token is stored.
    service::Parameters dictionaryRepresentation() const;

    // GET to ServiceBase with "do" among the parameters.
    void getContests(Callback success, Callback fail) const;
    // POST of a JSON body to "%@/?do=surveys/submit&question_id=%@".
    void submitAnswers(Callback success, Callback fail) const;
    // Multipart POST to "%@/omr/upload/" on ServiceRoot: the dictionary's fields with "do"
    // "surveys/submit" and "question_id", and one file part, "upload[0]".
    void sendMedia(Callback success, Callback fail) const;

    // The multipart body of sendMedia and its boundary, as they go out.
    QByteArray multipartBody(const QByteArray& boundary) const;
};

} // namespace ekinora::contests
