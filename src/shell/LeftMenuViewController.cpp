#include "LeftMenuViewController.h"

#include "MenuItems.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"
#include "platform/Window.h"
#include "service/LocalStore.h"
#include "service/ServiceRoots.h"
#include "service/WSRequest.h"

#include <QUrl>

namespace ekinora::shell {

using namespace platform;
using service::LocalStore;
namespace StoreKey = service::StoreKey;

namespace {
Platform& P() { return Platform::current(); }

// The order in which a selected row's name is looked up among the labels.
const QList<int> SelectionOrder{0, 3, 4, 5, 6, 7, 8, 12, 13, 14, 15, 9, 18, 19, 10, 11, 1, 2, 16, 17};

QJsonObject entry(const QString& name, const QString& icon) {
    return QJsonObject{{QStringLiteral("name"), name}, {QStringLiteral("icon"), icon}};
}
} // namespace

LeftMenuViewController::LeftMenuViewController(QObject* parent)
    : ViewController(parent), tableView(makeControl<TableView>("tableView")),
      lblReloadTime(makeControl<Label>("lblReloadTime")) {
    tableView->setDataSource([this](int section) { return numberOfRowsInSection(section); },
                             [this](int, int row) {
                                 ListRow cell = cellRow(cellForRow(row), QSizeF(0, heightForRow(row)));
                                 cell.reuseIdentifier = QStringLiteral("Cell");
                                 return cell;
                             });
    tableView->setDidSelectRow([this](int, int row) { didSelectRow(row); });
}

QUrl LeftMenuViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Shell/LeftMenuView.qml")); }

void LeftMenuViewController::viewDidLoad() {
    arrList = QJsonArray{entry("Anasayfa", "home"),         entry("Profilim", "profile"),
                         entry("Tarlalarım", "tarla"),      entry("Tarım Borsası", "tarimBorsasiMenu"),
                         entry("Mesajlarım", "mesaj"),      entry("Videolar", "video"),
                         entry("Etkinlikler", "etkinlik"), entry("Haberler", "news"),
                         entry("Hibe Destek", "hibe"),      entry("Çekiliş", "firsat"),
                         entry("Bilgilendirme", "info"),    entry("Ürün Kataloğu", "download")};
    const double width = Window::Width;
    const double height = Window::Height;
    rowHeight = width > 320 ? 45 : 40;
    // Sized for twelve rows whatever the menu holds; a longer menu scrolls inside, then moved 20 left.
    const double tableHeight = double(arrList.size()) * rowHeight;
    m_tableFrame = QRectF(16 - 20, (height - tableHeight) / 2, width - 60, tableHeight);
    tableView->setScrollEnabled(true);
    emit layoutChanged();

    auto& center = P().notificationCenter();
    center.addObserver(this, QStringLiteral("checkUnreadMessages"), QStringLiteral("checkUnreadMessages"));
    center.addObserver(this, QStringLiteral("checkMenuList"), QStringLiteral("checkMenuList"));
    center.addObserver(this, QStringLiteral("somethingHappens"), QStringLiteral("goToLoyalty"));
}

void LeftMenuViewController::checkMenuList() {
    const Json user = LocalStore::userInfo();
    arrList = QJsonArray();
    if (!user.isUndefined()) {
        menuListArr = QJsonArray();
        const Json menu = member(user, QStringLiteral("menu"));
        for (int i = 0; i < count(menu); ++i) {
            // Codes come as numbers or as texts; the integer value is what counts.
            const MenuItem* item = menuItem(intValue(element(menu, i)));
            if (!item) continue;
            menuListArr.append(QJsonObject{{QStringLiteral("name"), item->label},
                                           {QStringLiteral("icon"), item->icon},
                                           {QStringLiteral("id"), QString::number(item->code)}});
        }
    }
    tableView->reloadData();
}

int LeftMenuViewController::numberOfRowsInSection(int) const { return int(menuListArr.size()); }

int LeftMenuViewController::daysSinceMenuItemCounter() const {
    const QString pattern = QStringLiteral("yyyy-MM-dd HH:mm:ss");
    const QDateTime stored = QDateTime::fromString(LocalStore::defaults().stringForKey(StoreKey::MenuItemCounter), pattern);
    const QDateTime now = QDateTime::fromString(formatDate(P().scheduler().now(), pattern), pattern);
    // Without a readable start the items are no longer new.
    if (!stored.isValid() || !now.isValid()) return std::numeric_limits<int>::max();
    return int(stored.secsTo(now) / 86400);
}

QVariantMap LeftMenuViewController::cellForRow(int row) const {
    QVariantMap cell;
    if (row < 0 || row >= menuListArr.size()) return cell;
    const QJsonObject item = menuListArr.at(row).toObject();
    QString text = item.value(QStringLiteral("name")).toString();
    QString html = text.toHtmlEscaped();
    bool marked = false;
    for (const MenuItem& m : menuItems()) {
        if (!m.label.endsWith(NewMark) || m.label != text) continue;
        if (daysSinceMenuItemCounter() > 60) {
            text.replace(NewMark, QString());
            html = text.toHtmlEscaped();
        } else {
            // " YENİ " on an orange ground in a heavy face.
            const QString mark = QStringLiteral(" YENİ ");
            const int at = text.indexOf(mark);
            html = text.left(at).toHtmlEscaped() +
                   QStringLiteral("<span style=\"background-color:#e39e29; font-size:14px; font-weight:900;\">%1</span>")
                       .arg(mark.toHtmlEscaped()) +
                   text.mid(at + mark.size()).toHtmlEscaped();
            marked = true;
        }
        break;
    }
    cell.insert(QStringLiteral("text"), text);
    cell.insert(QStringLiteral("html"), html);
    cell.insert(QStringLiteral("marked"), marked);
    cell.insert(QStringLiteral("icon"), item.value(QStringLiteral("icon")).toString());
    return cell;
}

void LeftMenuViewController::handOver(const QString& target, bool hasTarget) {
    auto* content = qobject_cast<NavigationController*>(
        Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("contentViewController")));
    if (!content) return;
    ViewController* root = hasTarget ? Storyboard::instantiateViewControllerWithIdentifier(target) : nullptr;
    // With no target the content is installed without any screen.
    content->setViewControllers(root ? QList<ViewController*>{root} : QList<ViewController*>{});
    if (auto* menu = sideMenuViewController()) {
        menu->setContentViewController(content, true);
        menu->hideMenuViewController();
    } else {
        content->deleteLater();
    }
}

void LeftMenuViewController::didSelectRow(int row) {
    if (row < 0 || row >= menuListArr.size()) return;
    const QString name = menuListArr.at(row).toObject().value(QStringLiteral("name")).toString();
    for (int code : SelectionOrder) {
        const MenuItem* item = menuItem(code);
        if (item->label != name) continue;
        if (code == 16 || code == 17) {
            LocalStore::defaults().setString(StoreKey::MaizeCanola, code == 16 ? QStringLiteral("maize") : QStringLiteral("canola"));
        }
        handOver(item->target, true);
        return;
    }
    handOver(QString(), false);
}

void LeftMenuViewController::somethingHappens() { handOver(QStringLiteral("loyaltyVC"), true); }

void LeftMenuViewController::checkUnreadMessages() {
    // The record's type is read and changes nothing.
    const Json user = LocalStore::userInfo();
    Q_UNUSED(user);
    service::WSRequest request;
    request.doParam = QStringLiteral("subject/message/check");
    auto self = strong(this);
    request.requestData(
        [self](const Json& response) {
            if (intValue(member(response, QStringLiteral("status"))) == 200) self->tableView->reloadData();
        },
        [](const Json& error) { P().application().log(QStringLiteral("checkUnreadMessages: %1").arg(description(error))); });
}

void LeftMenuViewController::logout() {
    // The store goes first, so the logout itself is sent without a token.
    LocalStore::logoutReset();
    service::WSRequest request;
    request.doParam = QStringLiteral("farmer/logout");
    auto self = strong(this);
    request.requestData(
        [self](const Json& response) {
            P().application().log(description(response));
            self->handOver(QStringLiteral("loginVC"), true);
        },
        [](const Json& error) { P().application().log(QStringLiteral("logout: %1").arg(description(error))); });
}

bool LeftMenuViewController::schemeAvailable(const QString& url) const {
    return P().application().canOpenURL(QUrl(url));
}

void LeftMenuViewController::openScheme(const QString& url) {
    if (schemeAvailable(url)) {
        if (P().application().openURL(QUrl(url))) P().application().log(stringWithFormat(QStringLiteral("Opened %@"), {url}));
    } else {
        P().application().openURL(QUrl(service::Roots::StoreAppURL));
    }
}

} // namespace ekinora::shell
