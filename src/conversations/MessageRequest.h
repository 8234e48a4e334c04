#pragma once

#include "service/RequestFrame.h"

#include <QImage>
#include <QUrl>

namespace ekinora::conversations {

using service::Callback;
using service::Json;

// The commands of the subjects and their threads, and a message's picture or video through the media
// upload. Every property is left out until a caller sets it.
class MessageRequest {
public:
    Json objectID{QJsonValue::Undefined};
    Json messageLimit{QJsonValue::Undefined};
    Json subjectID{QJsonValue::Undefined};
    Json questionSubject{QJsonValue::Undefined};
    Json questionDescription{QJsonValue::Undefined};
    Json message{QJsonValue::Undefined};
    Json pageToken{QJsonValue::Undefined};
    QString doParam;        // in the address, never among the parameters
    QByteArray mediaData;   // a picture, or a video's preview, as JPEG
    QUrl mediaURL;          // the video's file
    QString fileType;       // "image" or "video"

    // "id", "limit", "subjectId", "title", "description", "text", "ptoken", each only when set, then
    // "bearer" when a token is stored.
    service::Parameters dictionaryRepresentation() const;

    void requestData(Callback success, Callback fail) const;       // GET
    void createSubject(Callback success, Callback fail) const;     // POST
    void sendMessage(Callback success, Callback fail) const;       // POST
    void sendMessageStatus(Callback success, Callback fail) const; // GET
    // Multipart POST to "%@/omr/upload/" on ServiceRoot: the dictionary's fields with "do" always
    // "subject/message/send"; a picture as "upload[0]", or a video's preview as "upload[1]" before the
    // video as "upload[0]". The video goes out streamed from its file, never read whole.
    void sendMedia(Callback success, Callback fail) const;

    // The text fields and, for a picture, the file part, as they go out; a video's body is not built
    // here but streamed.
    QByteArray multipartBody(const QByteArray& boundary) const;
};

// A picture as it is sent: JPEG at quality 0.5, unscaled.
QByteArray jpegOf(const QImage& picture);

} // namespace ekinora::conversations
