#include "NewMessageViewController.h"

#include "MessageRequest.h"
#include "VideoPickerController.h"
#include "contests/ImagePickerController.h"
#include "platform/AlertController.h"
#include "platform/Overlays.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"

#include <QPointer>

namespace ekinora::conversations {

using namespace platform;

const QString NewMessageViewController::Placeholder = QStringLiteral("Mesajınızı giriniz...");

NewMessageViewController::NewMessageViewController(QObject* parent)
    : ViewController(parent), txtQuestion(makeControl<TextField>("txtQuestion")), txtDescription(makeControl<TextField>("txtDescription")),
      btnImage(makeControl<Button>("btnImage")), btnVideo(makeControl<Button>("btnVideo")) {
    setTitle(QStringLiteral("Yeni Soru"));
    txtQuestion->setPlaceholder(QStringLiteral("Sorunuzun başlığı"));
    txtDescription->setText(Placeholder);
    btnImage->setTitle(QStringLiteral("Fotoğraf Ekle"));
    btnImage->addTarget(this, &NewMessageViewController::addImage);
    btnVideo->setTitle(QStringLiteral("Video Ekle"));
    btnVideo->addTarget(this, &NewMessageViewController::addVideo);
}

QUrl NewMessageViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Conversations/NewMessageView.qml"));
}

void NewMessageViewController::viewDidLoad() { txtQuestion->becomeFirstResponder(); }

bool NewMessageViewController::textViewShouldBeginEditing() {
    if (txtDescription->text() == Placeholder) txtDescription->setText(QString());
    return true;
}

void NewMessageViewController::doneButtonPressed(QObject*) {
    service::ScreenCall call(this, QStringLiteral("subject/add"), service::ScreenCall::WithHudOnScreen);
    MessageRequest request;
    request.doParam = QStringLiteral("subject/add");
    request.questionSubject = txtQuestion->text();
    request.questionDescription = txtDescription->text();
    request.createSubject(call.done([this](const Json& response) {
                              if (service::statusOf(response) != 200) return;
                              messageID = path(response, {QStringLiteral("data"), QStringLiteral("subject"), QStringLiteral("id")});
                              if (postedImage.isNull()) {
                                  endEditing();
                                  closeView();
                              } else {
                                  sendMedia();
                              }
                          }),
                          call.failed());
}

void NewMessageViewController::addImage(QObject*) {
    auto* sheet = AlertController::alertControllerWithTitle(QString(), QString(), AlertController::ActionSheet);
    QPointer<NewMessageViewController> self(this);
    auto pick = [self](int source) {
        if (!self) return;
        auto* picker = new contests::ImagePickerController(contests::ImagePickerController::SourceType(source), [self](const QImage& picture) {
            if (!self || picture.isNull()) return;
            self->postedImage = picture;
            self->postedVideoURL = QUrl();
            self->txtQuestion->becomeFirstResponder();
        });
        self->presentViewController(picker, true);
    };
    sheet->addAction(QStringLiteral("Fotoğraf Seç"), AlertController::Default, [pick] { pick(contests::ImagePickerController::PhotoLibrary); });
    sheet->addAction(QStringLiteral("Fotoğraf Çek"), AlertController::Default, [pick] { pick(contests::ImagePickerController::Camera); });
    sheet->addAction(QStringLiteral("İptal"), AlertController::Cancel);
    presentViewController(sheet, true);
}

void NewMessageViewController::addVideo(QObject*) {
    QPointer<NewMessageViewController> self(this);
    auto* picker = new VideoPickerController([self](const QUrl& video, const QImage& frame) {
        if (!self) return;
        service::log(QStringLiteral("error==%1, Refimage==%2").arg(frame.isNull() ? QStringLiteral("kare alınamadı") : QStringLiteral("(null)"),
                                                                     frame.isNull() ? QStringLiteral("(null)") : QStringLiteral("<image>")));
        if (!frame.isNull()) self->postedImage = frame;
        self->postedVideoURL = video;
        self->txtQuestion->becomeFirstResponder();
    });
    picker->modalPresentationStyle = 3;
    presentViewController(picker, true);
}

void NewMessageViewController::sendMedia(QObject*) {
    auto* hud = ProgressHUD::showHUDAddedTo(this, true);
    QPointer<ProgressHUD> indicator(hud);
    MessageRequest request;
    request.doParam = QStringLiteral("omr/upload");
    request.objectID = QStringLiteral("0");
    request.subjectID = messageID;
    auto self = strong(this);
    auto fail = [indicator](const Json& error) {
        service::log(QStringLiteral("error %1").arg(description(error)));
        if (indicator) indicator->hideAnimated(true);
    };
    if (postedVideoURL.isValid()) {
        request.mediaData = jpegOf(postedImage);
        request.mediaURL = postedVideoURL;
        request.fileType = QStringLiteral("video");
        request.sendMedia(
            [self, indicator](const Json& response) {
                service::log(QStringLiteral("dict %1").arg(description(response)));
                if (indicator) indicator->hideAnimated(true);
                self->dismissViewControllerAnimated(true);
            },
            fail);
    } else if (!postedImage.isNull()) {
        request.mediaData = jpegOf(postedImage);
        request.fileType = QStringLiteral("image");
        request.sendMedia(
            [self, indicator](const Json& response) {
                service::log(QStringLiteral("dict %1").arg(description(response)));
                if (indicator) indicator->hideAnimated(true);
                self->endEditing();
                self->closeView();
            },
            fail);
    }
}

void NewMessageViewController::closeView(QObject*) { dismissViewControllerAnimated(true); }

} // namespace ekinora::conversations
