#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QImage>
#include <QJsonArray>
#include <QUrl>
#include <QVariantMap>

namespace ekinora::conversations {

// One subject: its title, description and date, the thread as a chat whose bubble side comes from
// the sender, the answer field, the attachments, and the closing row that depends on who looks and
// on the subject's status. The thread reloads only after a send, a status change or a picture.
class MessageDetailViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tblMessages)
    UI_OUTLET(ekinora::platform::TextField, txtMessage)
    UI_OUTLET(ekinora::platform::Label, lblQuestionTitle)
    UI_OUTLET(ekinora::platform::Label, lblQuestionDescription)
    UI_OUTLET(ekinora::platform::Label, lblQuestionDate)
    UI_OUTLET(ekinora::platform::Button, btnSend)
    UI_OUTLET(ekinora::platform::Button, btnVideo)
    UI_OUTLET(ekinora::platform::ImageView, viewImage)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constraintKeyboard)
    Q_PROPERTY(QUrl viewerImage READ viewerImage NOTIFY viewerChanged)
    Q_PROPERTY(bool viewerOpen READ viewerOpen NOTIFY viewerChanged)
    Q_PROPERTY(int scrollRequest READ scrollRequest NOTIFY scrollToRow)
    Q_PROPERTY(int scrollTarget READ scrollTarget NOTIFY scrollToRow)
public:
    explicit MessageDetailViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::Json messageID{QJsonValue::Undefined};
    QJsonArray arrMessages;
    int messageStatus = 0;
    bool keyboardIsShown = false;
    double keyboardHeight = 0;
    QImage postedImage;
    QUrl postedVideoURL;

    platform::TableView* tblMessages;
    platform::TextField* txtMessage;
    platform::Label *lblQuestionTitle, *lblQuestionDescription, *lblQuestionDate;
    platform::Button *btnSend, *btnVideo;
    platform::ImageView* viewImage; // the full-screen picture, hidden until a row's picture is tapped
    platform::LayoutConstraint* constraintKeyboard; // what the keyboard takes off the bottom of the view

    void viewDidLoad() override;

    // The picture of the open viewer; empty while it is closed.
    QUrl viewerImage() const { return viewImage->isHidden() ? QUrl() : viewImage->imageUrl(); }
    bool viewerOpen() const { return !viewImage->isHidden(); }
    int scrollRequest() const { return m_scrollRequest; }
    int scrollTarget() const { return m_scrollTarget; }

    void getMessages();
    // The rows: n messages, and the closing row unless an asker looks at a new subject.
    int numberOfRows() const;
    QVariantMap cellForRow(int row) const;
    double heightForRow(int row) const;
    void didSelectRow(int row);

    // The keyboard's end-frame height: the view gives it up once, and takes it back.
    Q_INVOKABLE void keyboardWillShow(double height);
    Q_INVOKABLE void keyboardWillHide(double height);

signals:
    // The last message comes to the top of the table.
    void scrollToRow(int row);
    void viewerChanged();

public slots:
    void sendMessage(QObject* sender = nullptr);
    void sendMessageStatus(QObject* sender = nullptr);
    void addImage(QObject* sender = nullptr);
    void addVideo(QObject* sender = nullptr);
    void sendMedia(QObject* sender = nullptr);
    void closeViewImage();
    void scrollToTableBottom();

private:
    int m_scrollRequest = 0;
    int m_scrollTarget = -1;
    void pickedImage(const QImage& picture);
    void pickedVideo(const QUrl& url, const QImage& frame);
};

} // namespace ekinora::conversations
