#pragma once

#include "platform/ViewController.h"

namespace ekinora::loyalty {

// A dealer's way into a transaction: the screen chooses the transaction's type when it loads and leads
// to the reading of the farmer's QR code. Every later screen is the same for a sale and a gift.
class TransactionEntryViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    Q_PROPERTY(QString screenName READ className CONSTANT)
    Q_PROPERTY(QString heading READ heading CONSTANT)
    Q_PROPERTY(QString explanation READ explanation CONSTANT)
public:
    static inline const QString ScanSegue = QStringLiteral("QRScanSegue");

    TransactionEntryViewController(QString type, QString heading, QString explanation, QObject* parent = nullptr);
    QUrl viewSource() const override;
    void viewDidLoad() override;

    QString heading() const { return m_heading; }
    QString explanation() const { return m_explanation; }

public slots:
    void openQrScan(QObject* sender = nullptr);

private:
    QString m_type, m_heading, m_explanation;
};

// "QR İle Satış Yap": a sale.
class BarcodeViewController : public ekinora::loyalty::TransactionEntryViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
public:
    explicit BarcodeViewController(QObject* parent = nullptr);
};

// "QR Hediye Et": a gift.
class QrGiftViewController : public ekinora::loyalty::TransactionEntryViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
public:
    explicit QrGiftViewController(QObject* parent = nullptr);
};

} // namespace ekinora::loyalty
