#include "site/SiteInfoViewController.h"

#include "site/GetInfoRequest.h"
#include "platform/AlertController.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"

#include <memory>

namespace ekinora::info::site {

using namespace platform;

namespace {
const QString Show = QStringLiteral("Göster");
const QString Hide = QStringLiteral("Gizle");
} // namespace

InfoViewController::InfoViewController(QObject* parent)
    : ViewController(parent), tableView(makeControl<TableView>("tableView")), navBar(makeControl<Label>("navBar")) {
    navBar->setText(QStringLiteral("Güvenli Kullanım Rehberi"));
    // Rows come header first: the order the row's text relies on.
    tableView->setDataSource([this](int s) { return 1 + numberOfRowsInSection(s); },
                             [this](int s, int row) {
                                 const double width = tableView->size().width();
                                 return row == 0 ? cellRow(headerViewForSection(s), QSizeF(width, 60.0))
                                                 : cellRow(cellForRow(s), QSizeF(width, 0));
                             },
                             [this] { return int(section.size()); });
}

QUrl InfoViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Info/SiteInfoView.qml")); }

void InfoViewController::viewDidLoad() {
    tableView->reloadData();
    loadDocument();
}

void InfoViewController::loadDocument() {
    infoElements.clear();
    auto request = std::make_shared<GetInfoRequest>();
    request->getInfo([self = strong(this), request](const QList<InfoElement>& elements, const QString& error) {
        InfoViewController* screen = self.get();
        if (!error.isNull()) {
            auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"), QStringLiteral("Bilinmeyen bir hata oluştu"));
            alert->addAction(QStringLiteral("Tamam"), AlertController::Default);
            screen->presentViewController(alert, true);
            return;
        }
        screen->section.clear();
        screen->items1.clear();
        screen->items2.clear();
        for (const InfoElement& element : elements)
            if (element.type == InfoElement::TypeEnum::Main) screen->section << element.content;
        // The shape is fixed by position: 1 to 11 under the first heading, 12 is the second heading,
        // the rest under it, whatever their type.
        for (int i = 1; i < elements.size(); ++i) {
            const QString block = QStringLiteral("  ") + elements.at(i).content + QStringLiteral("\n\n");
            if (i < 12) screen->items1 += block;
            else if (i > 12) screen->items2 += block;
        }
        WaitOverlay::removeAllOverlays(screen);
        screen->tableView->reloadData();
    });
}

int InfoViewController::numberOfRowsInSection(int s) const {
    return collapaseHandlerArray.contains(section.value(s)) ? 1 : 0;
}

Button* InfoViewController::headerButton(int s) {
    while (m_headerButtons.size() <= s) {
        auto* button = addControl(new Button(QStringLiteral("ButtonToShowHide%1").arg(m_headerButtons.size())));
        button->addTarget(this, &InfoViewController::HandleheaderButtonWithSender);
        m_headerButtons << button;
    }
    return m_headerButtons.at(s);
}

QVariantMap InfoViewController::headerViewForSection(int s) {
    Button* button = headerButton(s);
    button->setTag(s);
    secilenString = s == 0 ? items1 : items2;
    button->setTitle(collapaseHandlerArray.contains(section.value(s)) ? Hide : Show);
    return {{QStringLiteral("reuseIdentifier"), QStringLiteral("HeaderCell1")},
            {QStringLiteral("titleLabel"), section.value(s)},
            {QStringLiteral("ButtonToShowHide"), button->title()},
            {QStringLiteral("tag"), s}};
}

QVariantMap InfoViewController::cellForRow(int) {
    return {{QStringLiteral("reuseIdentifier"), QStringLiteral("Cell")}, {QStringLiteral("textLabel"), secilenString}};
}

void InfoViewController::HandleheaderButtonWithSender(QObject* sender) {
    auto* button = qobject_cast<Button*>(sender);
    if (!button) return;
    // A button's label shows the title of its last layout: step 3 reads what the user tapped, not what
    // step 1 sets now. So the open section's "Gizle" closes it, and a closed one's "Göster" opens it.
    const QString shown = button->title();
    for (const QString& title : section)
        if (collapaseHandlerArray.contains(title)) {
            collapaseHandlerArray.removeAll(title);
            button->setTitle(QStringLiteral("˅"));
        }
    tableView->reloadData();
    if (shown == Show) {
        collapaseHandlerArray << section.value(button->tag());
        button->setTitle(Hide);
    }
    tableView->reloadData();
    double height = 0;
    for (const ListRow& row : tableView->rows()->rows()) height += row.size.height();
    Platform::current().application().log(QStringLiteral("content height: %1").arg(height));
}

void InfoViewController::closeButtonTapped(QObject*) { dismissViewControllerAnimated(true); }

} // namespace ekinora::info::site
