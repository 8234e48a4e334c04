#include "InfoViewController.h"

#include "InfoDetailViewController.h"
#include "notifications/Bell.h"
#include "platform/Window.h"

#include <QJsonObject>

namespace ekinora::info {

using namespace platform;

InfoViewController::InfoViewController(QObject* parent)
    : ViewController(parent), tableViewInfo(makeControl<TableView>("tableViewInfo")) {
    setTitle(QStringLiteral("Bilgilendirme"));
    notifications::Bell::install(this);
    addSegue(QStringLiteral("InfoSegue"), SegueKind::Present, QStringLiteral("InfoDetailViewController"));
    addSegue(QStringLiteral("SiteInfoSegue"), SegueKind::Present, QStringLiteral("SiteInfoViewController"));
    tableViewInfo->setDataSource([this](int) { return int(arrInfo.size()) + 1; },
                                 [this](int, int row) {
                                     const double height = row == 0 ? screenWidth() * 3 / 4 : screenWidth() / 5;
                                     return cellRow(cellForRow(row), QSizeF(tableViewInfo->size().width(), height));
                                 });
    tableViewInfo->setDidSelectRow([this](int, int row) {
        if (row == 0) return;
        IndexPath indexPath(row);
        performSegueWithIdentifier(QStringLiteral("InfoSegue"), &indexPath);
    });
}

QUrl InfoViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Info/InfoView.qml")); }

double InfoViewController::screenWidth() { return Window::Width; }

void InfoViewController::viewDidLoad() {
    auto page = [](const char* name, const char* slug) {
        return QJsonObject{{QStringLiteral("name"), QString::fromUtf8(name)}, {QStringLiteral("slug"), QString::fromUtf8(slug)}};
    };
    arrInfo = QJsonArray{page("Genel Kullanım Şartları", "conditions-of-use"),
                         page("Kişisel Verilerin Korunması ve İşlenmesi Aydınlatma Metni", "kvkk"),
                         page("Yarışma Şart ve Koşullar", "yarisma-kosullar")};
    tableViewInfo->reloadData();
}

void InfoViewController::viewDidAppear(bool) {
    setNotifBadge();
    notifications::Bell::observe(this);
}

void InfoViewController::setNotifBadge() { notifications::Bell::setNotifBadge(this); }

QVariantMap InfoViewController::cellForRow(int row) const {
    if (row == 0) return {{QStringLiteral("reuseIdentifier"), QStringLiteral("HeaderCell")}};
    return {{QStringLiteral("reuseIdentifier"), QStringLiteral("InfoCell")},
            {QStringLiteral("labelTitle"), stringOrNull(member(arrInfo.at(row - 1), QStringLiteral("name")))}};
}

void InfoViewController::openInfoDetail(QObject* sender) { performSegueWithIdentifier(QStringLiteral("InfoSegue"), sender); }

void InfoViewController::openSiteGuide(QObject* sender) { performSegueWithIdentifier(QStringLiteral("SiteInfoSegue"), sender); }

void InfoViewController::prepareForSegue(const StoryboardSegue& segue, QObject* sender) {
    auto* detail = qobject_cast<InfoDetailViewController*>(segue.destination);
    if (!detail) return;
    // The sender is taken for an index path: anything else doesn't answer "row".
    auto* indexPath = qobject_cast<IndexPath*>(sender);
    if (!indexPath)
        fatal(QStringLiteral("-[%1 row]: unrecognized selector sent to instance")
                  .arg(sender ? QString::fromLatin1(sender->metaObject()->className()) : QStringLiteral("(null)")));
    detail->slugName = member(arrInfo.at(indexPath->row - 1), QStringLiteral("slug"));
}

} // namespace ekinora::info
