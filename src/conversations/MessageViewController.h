#pragma once

#include "platform/Controls.h"
#include "platform/NotificationCenter.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QVariantMap>

namespace ekinora::conversations {

// The subjects of the signed-in account: an asker's own questions, or for the answering side every
// asker's with the asker's name. Pages follow one another as the list is dragged to its end; a
// "refreshMessages" broadcast asks for the next page too and appends it.
class MessageViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tblMessage)
    UI_OUTLET(ekinora::platform::Label, lblInfo)
    UI_OUTLET(ekinora::platform::Button, btnNewMessage)
    UI_OUTLET(ekinora::platform::LayoutConstraint, constraintQuestionHeight)
public:
    explicit MessageViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    QJsonArray arrMessages;
    platform::TableView* tblMessage;
    platform::Label* lblInfo;
    platform::Button* btnNewMessage;
    platform::LayoutConstraint* constraintQuestionHeight;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;

    // A row ("MessageCell"): "lblDate", "lblMessage", "lblName", and for a known status "lblReadCheck"
    // and "readColor".
    int numberOfRows() const;
    QVariantMap cellForRow(int row) const;

    // The swipe action "Sil" of a row: no confirmation, removed by its place at the tap.
    Q_INVOKABLE void deleteRow(int row);
    // The end of a drag: the next page when the last row is in sight and the list moves on.
    Q_INVOKABLE void scrollViewDidEndDragging(int lastVisibleRow, bool willDecelerate);

public slots:
    // Without a broadcast the first page; with one ("refreshMessages") the next page.
    void getMessages(const ekinora::platform::Notification& notification);
    void getMessages();
    void setNotifBadge();
    void newMessage(QObject* sender = nullptr);

private:
    void fetch(bool nextPage);
    void handOver(const QString& identifier);
    int m_selectedRow = -1;
};

} // namespace ekinora::conversations
