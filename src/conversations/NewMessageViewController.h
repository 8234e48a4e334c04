#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QImage>
#include <QUrl>

namespace ekinora::conversations {

// A new question: its title and description, sent as they are, and optionally a picture or a video
// that goes up once the subject exists.
class NewMessageViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TextField, txtQuestion)
    UI_OUTLET(ekinora::platform::TextField, txtDescription)
    UI_OUTLET(ekinora::platform::Button, btnImage)
    UI_OUTLET(ekinora::platform::Button, btnVideo)
public:
    explicit NewMessageViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    static const QString Placeholder; // "Mesajınızı giriniz..."

    platform::Json messageID{QJsonValue::Undefined};
    QImage postedImage;
    QUrl postedVideoURL;
    platform::TextField *txtQuestion, *txtDescription;
    platform::Button *btnImage, *btnVideo;

    void viewDidLoad() override;

    Q_INVOKABLE int positionForBar() const { return 3; }
    // The description empties when it still holds the placeholder.
    Q_INVOKABLE bool textViewShouldBeginEditing();

public slots:
    void doneButtonPressed(QObject* sender = nullptr);
    void addImage(QObject* sender = nullptr);
    void addVideo(QObject* sender = nullptr);
    void sendMedia(QObject* sender = nullptr);
    void closeView(QObject* sender = nullptr);
};

} // namespace ekinora::conversations
