#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include "platform/ViewController.h"

namespace ekinora::service {

// The update prompt. It reads the version the service publishes and, when it is newer than the one
// installed, tells the user: a forced update (one button) for a new major or minor version, an optional
// one for a new patch. "Güncelle" opens the store page.
class UpdateCheck : public QObject {
    Q_OBJECT
public:
    enum AlertType { Force = 1, Option = 2, Skip = 3, None = 4 };
    enum class Change { None, Major, Minor, Patch, Revision };

    static UpdateCheck& sharedInstance();

    void setPresentingViewController(platform::ViewController* presenter) { m_presenter = presenter; }
    void setMajorUpdateAlertType(AlertType t) { m_major = t; }
    void setMinorUpdateAlertType(AlertType t) { m_minor = t; }
    void setPatchUpdateAlertType(AlertType t) { m_patch = t; }
    void setRevisionUpdateAlertType(AlertType t) { m_revision = t; }
    void setDebugEnabled(bool on) { m_debug = on; }
    void setDelegate(QObject* delegate) { m_delegate = delegate; }

    // Asks the service for its published version and prompts when there is a newer one.
    void checkVersion();

    // Which part of the version changed upward, if the published one is newer.
    static Change compare(const QString& installed, const QString& published);
    AlertType alertTypeFor(Change change) const;

private:
    void present(const QString& published, const QString& storeUrl, AlertType type);
    QPointer<platform::ViewController> m_presenter;
    QPointer<QObject> m_delegate;
    AlertType m_major = Option, m_minor = Option, m_patch = Option, m_revision = Option;
    bool m_debug = false;
};

} // namespace ekinora::service
