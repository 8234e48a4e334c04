#include "EntryViewControllers.h"

#include "Transaction.h"

namespace ekinora::loyalty {

TransactionEntryViewController::TransactionEntryViewController(QString type, QString heading, QString explanation,
                                                               QObject* parent)
    : ViewController(parent), m_type(std::move(type)), m_heading(std::move(heading)), m_explanation(std::move(explanation)) {
    setTitle(m_heading);
    addSegue(ScanSegue, SegueKind::Present, QStringLiteral("QRScanViewController"));
}

QUrl TransactionEntryViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Loyalty/TransactionEntryView.qml"));
}

// The type follows the entry screen loaded last, not the one on top.
void TransactionEntryViewController::viewDidLoad() { Transaction::transactionType() = m_type; }

void TransactionEntryViewController::openQrScan(QObject* sender) { performSegueWithIdentifier(ScanSegue, sender); }

BarcodeViewController::BarcodeViewController(QObject* parent)
    : TransactionEntryViewController(
          QStringLiteral("sales"), QStringLiteral("QR İle Satış Yap"),
          QStringLiteral("Satışı kaydetmek için önce çiftçinin QR kodunu okutun, ardından sattığınız ürünlerin "
                         "kodlarını tek tek okutun."),
          parent) {}

QrGiftViewController::QrGiftViewController(QObject* parent)
    : TransactionEntryViewController(
          QStringLiteral("award"), QStringLiteral("QR Hediye Et"),
          QStringLiteral("Hediyeyi kaydetmek için önce çiftçinin QR kodunu okutun, ardından hediye ettiğiniz ürünlerin "
                         "kodlarını tek tek okutun."),
          parent) {}

} // namespace ekinora::loyalty
