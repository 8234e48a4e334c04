#include "MessageDetailViewController.h"

#include "MessageRequest.h"
#include "VideoPickerController.h"
#include "contests/ImagePickerController.h"
#include "platform/AlertController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "service/LocalStore.h"
#include "service/ServiceCall.h"

#include <QPointer>

namespace ekinora::conversations {

using namespace platform;
using service::LocalStore;

namespace {

Platform& P() { return Platform::current(); }

bool askingSide(const Json& type) {
    return isString(type, QStringLiteral("farmer")) || isString(type, QStringLiteral("loyalty"));
}

bool viewerAsks() { return askingSide(member(LocalStore::userInfo(), QStringLiteral("type"))); }

bool hasImage(const Json& message) {
    const Json image = member(message, QStringLiteral("image"));
    return !image.isNull() && !image.isUndefined();
}

} // namespace

MessageDetailViewController::MessageDetailViewController(QObject* parent)
    : ViewController(parent), tblMessages(makeControl<TableView>("tblMessages")), txtMessage(makeControl<TextField>("txtMessage")),
      lblQuestionTitle(makeControl<Label>("lblQuestionTitle")), lblQuestionDescription(makeControl<Label>("lblQuestionDescription")),
      lblQuestionDate(makeControl<Label>("lblQuestionDate")), btnSend(makeControl<Button>("btnSend")),
      btnVideo(makeControl<Button>("btnVideo")), viewImage(makeControl<ImageView>("viewImage")),
      constraintKeyboard(makeControl<LayoutConstraint>("constraintKeyboard", 0.0)) {
    setTitle(QStringLiteral("Mesaj"));
    txtMessage->setPlaceholder(QStringLiteral("Mesajınızı yazınız"));
    btnSend->setTitle(QStringLiteral("Gönder"));
    btnSend->addTarget(this, &MessageDetailViewController::sendMessage);
    btnVideo->setTitle(QStringLiteral("Video"));
    btnVideo->addTarget(this, &MessageDetailViewController::addVideo);
    viewImage->setHidden(true);
    lblQuestionDescription->setNumberOfLines(0);
    tblMessages->setDataSource([this](int) { return numberOfRows(); },
                               [this](int, int row) {
                                   return cellRow(cellForRow(row), QSizeF(tblMessages->size().width(), heightForRow(row)));
                               });
    tblMessages->setDidSelectRow([this](int, int row) { didSelectRow(row); });
}

QUrl MessageDetailViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Conversations/MessageDetailView.qml"));
}

void MessageDetailViewController::viewDidLoad() {
    getMessages();
    auto* attach = new BarButtonItem(QStringLiteral("addImage"), this);
    attach->setImage(QStringLiteral("addphoto"));
    attach->addTarget(this, &MessageDetailViewController::addImage);
    setRightBarButtonItem(attach);
    keyboardIsShown = false;
}

void MessageDetailViewController::getMessages() {
    service::ScreenCall call(this, QStringLiteral("getMessages"), service::ScreenCall::WithHud);
    MessageRequest request;
    request.doParam = QStringLiteral("subject/messages");
    request.objectID = messageID;
    request.messageLimit = QStringLiteral("1000");
    request.requestData(call.done([this](const Json& response) {
                            const Json subject = path(response, {QStringLiteral("data"), QStringLiteral("subject")});
                            const Json messages = member(subject, QStringLiteral("messages"));
                            arrMessages = messages.isArray() ? messages.toArray() : QJsonArray();
                            messageStatus = member(subject, QStringLiteral("status")).toInt();
                            lblQuestionTitle->setText(member(subject, QStringLiteral("title")).toString());
                            lblQuestionDescription->setText(member(subject, QStringLiteral("description")).toString());
                            lblQuestionDate->setText(member(subject, QStringLiteral("date")).toString());
                            tblMessages->reloadData();
                            endEditing();
                            auto self = strong(this);
                            P().scheduler().after(500, [self] { self->scrollToTableBottom(); });
                        }),
                        call.failed());
}

void MessageDetailViewController::scrollToTableBottom() {
    if (arrMessages.isEmpty()) return;
    m_scrollTarget = int(arrMessages.size()) - 1;
    ++m_scrollRequest;
    emit scrollToRow(m_scrollTarget);
}

int MessageDetailViewController::numberOfRows() const {
    const int n = int(arrMessages.size());
    return viewerAsks() && messageStatus == 0 ? n : n + 1;
}

QVariantMap MessageDetailViewController::cellForRow(int row) const {
    if (row < arrMessages.size()) {
        const Json message = arrMessages.at(row);
        const bool outgoing = askingSide(member(message, QStringLiteral("sender")));
        QVariantMap cell{{QStringLiteral("lblMessageDate"), member(message, QStringLiteral("date")).toString()},
                         {QStringLiteral("outgoing"), outgoing}};
        if (hasImage(message)) {
            cell.insert(QStringLiteral("reuseIdentifier"), outgoing ? QStringLiteral("OutgoingMediaCell") : QStringLiteral("IncomingMediaCell"));
            cell.insert(QStringLiteral("imgPhoto"), member(message, QStringLiteral("image")).toString());
        } else {
            cell.insert(QStringLiteral("reuseIdentifier"), outgoing ? QStringLiteral("OutgoingTextCell") : QStringLiteral("IncomingTextCell"));
            cell.insert(QStringLiteral("lblMessage"), member(message, QStringLiteral("text")).toString());
        }
        return cell;
    }
    QVariantMap cell{{QStringLiteral("reuseIdentifier"), QStringLiteral("IncomingMoreCell")}};
    auto closing = [&cell](const QString& question, const QString& action) {
        cell.insert(QStringLiteral("labelQuestion"), question);
        cell.insert(QStringLiteral("buttonAction"), action);
        cell.insert(QStringLiteral("buttonHidden"), action.isEmpty());
        cell.insert(QStringLiteral("constraintButtonHeight"), action.isEmpty() ? 0 : 40);
    };
    const bool asks = viewerAsks();
    if (messageStatus == 2) closing(QStringLiteral("Cevap bekleniyor"), QString());
    else if (asks && messageStatus == 1) closing(QStringLiteral("Bu cevap size yardımcı oldu mu?"), QStringLiteral("Daha Fazla Bilgi"));
    else if (!asks && messageStatus == 1) closing(QStringLiteral("Cevaplandı"), QString());
    else if (!asks && messageStatus == 0) closing(QStringLiteral("Soru cevaplandı mı?"), QStringLiteral("Evet"));
    // Any other combination: the cell keeps what it showed.
    return cell;
}

double MessageDetailViewController::heightForRow(int row) const {
    if (row < arrMessages.size()) return hasImage(arrMessages.at(row)) ? 200 : -1; // -1: from its content
    if (viewerAsks()) return messageStatus == 0 || messageStatus == 2 ? 60 : 112;
    return messageStatus == 1 || messageStatus == 2 ? 60 : 112;
}

void MessageDetailViewController::didSelectRow(int row) {
    if (row >= arrMessages.size() || !hasImage(arrMessages.at(row))) return;
    viewImage->setImageUrl(QUrl(member(arrMessages.at(row), QStringLiteral("image")).toString()));
    viewImage->setHidden(false);
    emit viewerChanged();
}

void MessageDetailViewController::closeViewImage() {
    viewImage->setHidden(true);
    emit viewerChanged();
}

void MessageDetailViewController::sendMessage(QObject*) {
    MessageRequest request;
    request.doParam = QStringLiteral("subject/message/send");
    request.subjectID = messageID;
    request.message = txtMessage->text();
    auto self = strong(this);
    request.sendMessage(
        [self](const Json&) {
            self->txtMessage->setText(QString());
            self->getMessages();
        },
        [](const Json& error) { service::log(QStringLiteral("subject/message/send: %1").arg(description(error))); });
}

void MessageDetailViewController::sendMessageStatus(QObject*) {
    service::ScreenCall call(this, QStringLiteral("sendMessageStatus"), service::ScreenCall::WithHud);
    MessageRequest request;
    request.doParam = QStringLiteral("subject/set-status");
    request.subjectID = messageID;
    request.sendMessageStatus(call.done([this](const Json&) { getMessages(); }), call.failed());
}

void MessageDetailViewController::addImage(QObject*) {
    auto* sheet = AlertController::alertControllerWithTitle(QString(), QString(), AlertController::ActionSheet);
    QPointer<MessageDetailViewController> self(this);
    auto pick = [self](int source) {
        if (!self) return;
        auto* picker = new contests::ImagePickerController(contests::ImagePickerController::SourceType(source), [self](const QImage& picture) {
            if (self && !picture.isNull()) self->pickedImage(picture);
        });
        self->presentViewController(picker, true);
    };
    sheet->addAction(QStringLiteral("Fotoğraf Seç"), AlertController::Default, [pick] { pick(contests::ImagePickerController::PhotoLibrary); });
    sheet->addAction(QStringLiteral("Fotoğraf Çek"), AlertController::Default, [pick] { pick(contests::ImagePickerController::Camera); });
    sheet->addAction(QStringLiteral("İptal"), AlertController::Cancel);
    presentViewController(sheet, true);
}

void MessageDetailViewController::addVideo(QObject*) {
    QPointer<MessageDetailViewController> self(this);
    auto* picker = new VideoPickerController([self](const QUrl& video, const QImage& frame) {
        if (self) self->pickedVideo(video, frame);
    });
    picker->modalPresentationStyle = 3; // over the current context
    presentViewController(picker, true);
}

void MessageDetailViewController::pickedImage(const QImage& picture) {
    postedImage = picture;
    postedVideoURL = QUrl();
    sendMedia();
}

void MessageDetailViewController::pickedVideo(const QUrl& url, const QImage& frame) {
    service::log(QStringLiteral("error==%1, Refimage==%2").arg(frame.isNull() ? QStringLiteral("kare alınamadı") : QStringLiteral("(null)"),
                                                                 frame.isNull() ? QStringLiteral("(null)") : QStringLiteral("<image>")));
    if (!frame.isNull()) postedImage = frame;
    postedVideoURL = url;
    sendMedia();
}

void MessageDetailViewController::sendMedia(QObject*) {
    auto* hud = ProgressHUD::showHUDAddedTo(this, true);
    MessageRequest request;
    request.doParam = QStringLiteral("omr/upload");
    request.subjectID = messageID;
    if (!arrMessages.isEmpty()) request.objectID = member(arrMessages.last(), QStringLiteral("id"));
    QPointer<ProgressHUD> indicator(hud);
    auto self = strong(this);
    auto fail = [indicator](const Json& error) {
        service::log(QStringLiteral("error %1").arg(description(error)));
        if (indicator) indicator->hideAnimated(true);
    };
    if (postedVideoURL.isValid()) {
        request.mediaData = jpegOf(postedImage);
        request.mediaURL = postedVideoURL;
        request.fileType = QStringLiteral("video");
        // After a video the thread does not reload by itself.
        request.sendMedia(
            [self, indicator](const Json& response) {
                service::log(QStringLiteral("dict %1").arg(description(response)));
                if (indicator) indicator->hideAnimated(true);
                if (self->presentedViewController()) self->dismissViewControllerAnimated(true);
            },
            fail);
    } else if (!postedImage.isNull()) {
        request.mediaData = jpegOf(postedImage);
        request.fileType = QStringLiteral("image");
        request.sendMedia(
            [self, indicator](const Json& response) {
                service::log(QStringLiteral("dict %1").arg(description(response)));
                self->getMessages();
                if (indicator) indicator->hideAnimated(true);
                if (self->presentedViewController()) self->dismissViewControllerAnimated(true);
            },
            fail);
    }
    // Neither: the indicator stays, as nothing hides it.
}

void MessageDetailViewController::keyboardWillShow(double height) {
    if (keyboardIsShown) return;
    keyboardHeight = height;
    constraintKeyboard->setConstant(constraintKeyboard->constant() + height);
    keyboardIsShown = true;
}

void MessageDetailViewController::keyboardWillHide(double height) {
    constraintKeyboard->setConstant(constraintKeyboard->constant() - height);
    keyboardIsShown = false;
    keyboardHeight = 0;
}

} // namespace ekinora::conversations
