#include "MessageViewController.h"

#include "MessageDetailViewController.h"
#include "MessageRequest.h"
#include "notifications/Bell.h"
#include "platform/NavigationController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"
#include "service/LocalStore.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "widgets/Colors.h"

namespace ekinora::conversations {

using namespace platform;
using service::LocalStore;

namespace {

Platform& P() { return Platform::current(); }

bool asks(const Json& user) {
    const Json type = member(user, QStringLiteral("type"));
    return isString(type, QStringLiteral("farmer")) || isString(type, QStringLiteral("loyalty"));
}

} // namespace

MessageViewController::MessageViewController(QObject* parent)
    : ViewController(parent), tblMessage(makeControl<TableView>("tblMessage")), lblInfo(makeControl<Label>("lblInfo")),
      btnNewMessage(makeControl<Button>("btnNewMessage")),
      constraintQuestionHeight(makeControl<LayoutConstraint>("constraintQuestionHeight", 50.0)) {
    setTitle(QStringLiteral("Mesajlarım"));
    notifications::Bell::install(this);
    lblInfo->setNumberOfLines(0);
    lblInfo->setText(QStringLiteral("Henüz cevaplanacak bir soru bulunmuyor."));
    btnNewMessage->setTitle(QStringLiteral("Uzmana Soru Sor"));
    btnNewMessage->addTarget(this, &MessageViewController::newMessage);
    tblMessage->setDataSource([this](int) { return numberOfRows(); },
                              [this](int, int row) { return cellRow(cellForRow(row), QSizeF(tblMessage->size().width(), 84)); });
    tblMessage->setDidSelectRow([this](int, int row) {
        m_selectedRow = row;
        performSegueWithIdentifier(QStringLiteral("MessageDetailSegue"), this);
    });
    addSegue(QStringLiteral("MessageDetailSegue"), SegueKind::Show, QStringLiteral("MessageDetailViewController"));
    addSegue(QStringLiteral("NewMessageSegue"), SegueKind::Present, QStringLiteral("NewMessageViewController"));
}

QUrl MessageViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Conversations/MessageView.qml"));
}

void MessageViewController::viewDidLoad() {
    P().notificationCenter().postNotificationName(QStringLiteral("checkMenuList"));
    arrMessages = QJsonArray();
    P().notificationCenter().addObserver(this, QStringLiteral("getMessages"), QStringLiteral("refreshMessages"));
}

void MessageViewController::viewDidAppear(bool) {
    lblInfo->setHidden(true);
    const Json user = LocalStore::userInfo();
    if (user.isUndefined()) {
        handOver(QStringLiteral("loginVC"));
        return;
    }
    constraintQuestionHeight->setConstant(asks(user) ? 50 : 0);
    P().notificationCenter().postNotificationName(QStringLiteral("checkUnreadMessages"));
    arrMessages = QJsonArray();
    fetch(false);
    setNotifBadge();
    notifications::Bell::observe(this);
}

void MessageViewController::handOver(const QString& identifier) {
    auto* content = qobject_cast<NavigationController*>(
        Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("contentViewController")));
    if (!content) return;
    ViewController* root = Storyboard::instantiateViewControllerWithIdentifier(identifier);
    content->setViewControllers(root ? QList<ViewController*>{root} : QList<ViewController*>{});
    if (SideMenuViewController* menu = sideMenuViewController()) {
        menu->setContentViewController(content, true);
        menu->hideMenuViewController();
    } else {
        content->deleteLater();
    }
}

void MessageViewController::setNotifBadge() { notifications::Bell::setNotifBadge(this); }

void MessageViewController::getMessages(const Notification&) { fetch(true); }

void MessageViewController::getMessages() { fetch(false); }

void MessageViewController::fetch(bool nextPage) {
    service::ScreenCall call(this, QStringLiteral("getMessages"), service::ScreenCall::WithHud);
    MessageRequest request;
    request.doParam = QStringLiteral("subjects");
    if (nextPage) request.pageToken = true;
    request.requestData(call.done([this](const Json& response) {
                            if (service::statusOf(response) == 200) {
                                const Json subjects = path(response, {QStringLiteral("data"), QStringLiteral("subjects")});
                                for (const auto& subject : service::listOf(subjects)) arrMessages.append(subject);
                            }
                            lblInfo->setHidden(!(arrMessages.isEmpty() && !asks(LocalStore::userInfo())));
                            tblMessage->reloadData();
                        }),
                        call.failed());
}

int MessageViewController::numberOfRows() const { return int(arrMessages.size()); }

QVariantMap MessageViewController::cellForRow(int row) const {
    const Json subject = arrMessages.at(row);
    const Json farmer = member(subject, QStringLiteral("farmer"));
    const bool hasFarmer = !farmer.isUndefined() && !farmer.isNull();
    QVariantMap cell{{QStringLiteral("reuseIdentifier"), QStringLiteral("MessageCell")},
                     {QStringLiteral("lblDate"), valueOrNil(member(subject, QStringLiteral("date"))).toString()},
                     {QStringLiteral("lblMessage"), member(subject, QStringLiteral("title")).toString()},
                     {QStringLiteral("lblName"), hasFarmer ? member(farmer, QStringLiteral("fullname")).toString() : QString()}};
    const Json status = member(subject, QStringLiteral("status"));
    const bool read = member(subject, QStringLiteral("isRead")).toBool();
    QString text;
    QColor colour;
    switch (status.isDouble() ? status.toInt(-1) : -1) {
    case 2: text = QStringLiteral("CEVAP BEKLENİYOR"); colour = widgets::Colors::black(); break;
    case 1: text = QStringLiteral("CEVAPLANDI"); colour = widgets::Colors::black(); break;
    case 0:
        text = hasFarmer ? (read ? QStringLiteral("OKUNDU") : QStringLiteral("İLETİLDİ"))
                         : (read ? QStringLiteral("CEVAPLANMADI") : QStringLiteral("OKUNMADI"));
        colour = widgets::Colors::cerulean();
        break;
    default: break; // any other status: the cell keeps what it showed
    }
    if (colour.isValid()) {
        cell.insert(QStringLiteral("lblReadCheck"), text);
        cell.insert(QStringLiteral("readColor"), colour);
    }
    return cell;
}

void MessageViewController::deleteRow(int row) {
    if (row < 0 || row >= arrMessages.size()) return;
    MessageRequest request;
    request.doParam = QStringLiteral("subject/delete");
    request.objectID = member(arrMessages.at(row), QStringLiteral("id"));
    service::ScreenCall call(this, QStringLiteral("subject/delete"));
    request.requestData(call.done([this, row](const Json&) {
                            // The reply is not read: the row goes by its place at the tap.
                            if (row < arrMessages.size()) arrMessages.removeAt(row);
                            tblMessage->reloadData();
                        }),
                        call.failed());
}

void MessageViewController::scrollViewDidEndDragging(int lastVisibleRow, bool willDecelerate) {
    if (willDecelerate && lastVisibleRow >= arrMessages.size() - 1) fetch(true);
}

void MessageViewController::newMessage(QObject*) { performSegueWithIdentifier(QStringLiteral("NewMessageSegue"), this); }

void MessageViewController::prepareForSegue(const StoryboardSegue& segue, QObject*) {
    if (segue.identifier != QLatin1String("MessageDetailSegue")) return;
    if (auto* detail = qobject_cast<MessageDetailViewController*>(segue.destination))
        if (m_selectedRow >= 0 && m_selectedRow < arrMessages.size())
            detail->messageID = member(arrMessages.at(m_selectedRow), QStringLiteral("id"));
}

} // namespace ekinora::conversations
