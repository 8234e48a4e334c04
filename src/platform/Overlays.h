#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

namespace ekinora::platform {

class ViewController;

// The progress indicator shown over a screen's navigation view while a blocking call runs. It blocks
// touches on that view until it is hidden.
class ProgressHUD : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY changed)
public:
    static ProgressHUD* showHUDAddedTo(ViewController* host, bool animated = true);
    void hideAnimated(bool animated = true);
    void hideAnimated(bool animated, double delaySeconds);
    bool isShown() const { return m_shown; }
    QString label() const { return m_label; }
    void setLabel(const QString& l) {
        m_label = l;
        emit changed();
    }
    ViewController* host() const { return m_host; }

signals:
    void changed();

private:
    explicit ProgressHUD(ViewController* host);
    QPointer<ViewController> m_host;
    QString m_label;
    bool m_shown = true;
};

// The wait overlay with a text, used by the catalogue and loyalty screens.
class WaitOverlay {
public:
    static void showWaitOverlayWithText(ViewController* host, const QString& text);
    static void removeAllOverlays(ViewController* host);
};

} // namespace ekinora::platform
