#pragma once

#include "PointLabel.h"
#include "platform/ScannerViewController.h"

namespace ekinora::loyalty {

struct Reply;

// The farmer scans the code on a product package and sees which product it is and the points it brought.
class ScanViewController : public ekinora::platform::ScannerViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::loyalty::PointLabel, purchasePtLabel)
    UI_OUTLET(ekinora::platform::View, titleView)
    UI_OUTLET(ekinora::platform::Label, titleLabel)
    UI_OUTLET(ekinora::platform::View, alertView)
    UI_OUTLET(ekinora::platform::ImageView, imgView)
    UI_OUTLET(ekinora::platform::Label, ilacAdiLabel)
    UI_OUTLET(ekinora::loyalty::PointLabel, ilacPuanLabel)
    // How long the card's next change of visibility takes: a cross dissolve, or at once.
    Q_PROPERTY(int cardTransitionMs READ cardTransitionMs NOTIFY cardTransitionChanged)
public:
    explicit ScanViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    PointLabel* purchasePtLabel;
    platform::View* titleView;
    platform::Label* titleLabel;
    platform::View* alertView;
    platform::ImageView* imgView;
    platform::Label* ilacAdiLabel;
    PointLabel* ilacPuanLabel;

    int cardTransitionMs() const { return m_cardTransitionMs; }

    void viewDidLoad() override;
    // The two point texts go crosswise: "purchasePoint" on ilacPuanLabel, "campaignPoint" on
    // purchasePtLabel; then the card comes up.
    void showPoints(const QString& campaignPoint, const QString& purchasePoint);
    // One point text into its label: a range between "<b>" and "</b>" is marked, "null" is empty.
    static void setPointText(PointLabel* label, const QString& text);

public slots:
    void closeButtonTapped(QObject* sender = nullptr);
    void yeniTaratButtonTapped(QObject* sender = nullptr);
    // A touch on a view of the screen: anything but the bare card puts the card away and scans again.
    void touchesBegan(QObject* touchedView);

signals:
    void cardTransitionChanged();
    // A fade over the window, played as the screen leaves.
    void windowTransition(int durationMs);

protected:
    void scanCode(const QString& code) override;

private:
    void scanReplied(const Reply& reply);
    void retryAlert(const QString& title, const QString& message);
    void setCardHidden(bool hidden, int transitionMs);
    void startRunningLater();
    void closeScreen();
    void rearmScanner();
    int m_cardTransitionMs = 0;
};

} // namespace ekinora::loyalty
