#include "SprayProgramViewController.h"

#include "CatalogueAlerts.h"
#include "CatalogueRequests.h"
#include "DocumentViewers.h"
#include "platform/Overlays.h"
#include "platform/Platform.h"
#include "service/ServiceRoots.h"

namespace ekinora::catalogue {

using namespace platform;

SprayProgramViewController::SprayProgramViewController(QObject* parent)
    : ViewController(parent), collectionView(makeControl<TableView>("collectionView")) {
    addSegue(QStringLiteral("toSprayUrlVC"), SegueKind::Present, QStringLiteral("SprayProgramWebSB"));
}

QUrl SprayProgramViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Catalogue/SprayProgramView.qml"));
}

void SprayProgramViewController::viewDidLoad() {
    setTitle(QStringLiteral("İlaçlama Programları"));
    collectionView->setDataSource([](int) { return int(sprayPrograms().size()); },
                                  [this](int, int row) {
                                      const SprayElement& e = sprayPrograms().at(row);
                                      // Half the width less the spacing, by 150.
                                      const double frame = collectionView->size().width() > 0 ? collectionView->size().width() : 370;
                                      const double width = frame / 2 - 10;
                                      return ListRow{QStringLiteral("sprayCell"),
                                                     {{QStringLiteral("nameLabel"), e.title},
                                                      {QStringLiteral("imgView"), service::Roots::ProductSiteBase + e.image}},
                                                     QSizeF(width, 150), 0, row};
                                  });
    collectionView->setDidSelectRow([this](int, int row) { didSelectItem(row); });
    loadSprayPrograms();
}

void SprayProgramViewController::loadSprayPrograms() {
    // A failed fetch never calls back: the grid stays empty and silent.
    GetProgramsRequest().getPrograms([screen = strong(this)](const QList<SprayElement>&, const Json&, const Error& error) {
        if (error) return showAlert(QStringLiteral("Bilinmeyen Bir Hata Oluştu"), screen.get());
        WaitOverlay::removeAllOverlays(screen.get());
        screen->collectionView->reloadData();
    });
}

void SprayProgramViewController::didSelectItem(int row) {
    if (row < 0 || row >= sprayPrograms().size()) fatal(QStringLiteral("Fatal error: Index out of range"));
    sprayUrl() = service::Roots::ProductSiteBase + sprayPrograms().at(row).link;
    documentPath() = sprayPrograms().at(row).title;
    performSegueWithIdentifier(QStringLiteral("toSprayUrlVC"), this);
}

SprayProgramWebViewController::SprayProgramWebViewController(QObject* parent)
    : ViewController(parent), webView(makeControl<WebView>("webView")), navBar(makeControl<Label>("navBar")) {}

QUrl SprayProgramWebViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Catalogue/SprayProgramWebView.qml"));
}

void SprayProgramWebViewController::viewDidLoad() {
    navBar->setText(documentPath());
    const auto url = urlFromString(sprayUrl());
    Platform::current().application().log(sprayUrl());
    if (!url) fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (sprayUrl)"));
    webView->loadRequest(*url);
}

void SprayProgramWebViewController::closeButtonTapped(QObject*) { dismissViewControllerAnimated(true); }

} // namespace ekinora::catalogue
