#pragma once

#include <QtQml/qqmlregistration.h>

#include "ViewController.h"

#include <QStringList>

namespace ekinora::platform {

// A presented alert: title, message and buttons in order. A button's press dismisses the alert, then
// runs the button's handler.
class AlertController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_NAMED_ELEMENT(UIAlertController)
    QML_UNCREATABLE("Made by the application.")
    Q_PROPERTY(QString message READ message CONSTANT)
    Q_PROPERTY(QStringList buttonTitles READ buttonTitles NOTIFY actionsChanged)
    Q_PROPERTY(QList<int> buttonStyles READ buttonStyles NOTIFY actionsChanged)
    Q_PROPERTY(bool actionSheet READ isActionSheet CONSTANT)
public:
    enum Style { ActionSheet = 0, Alert = 1 };
    enum ActionStyle { Default = 0, Cancel = 1, Destructive = 2 };

    static AlertController* alertControllerWithTitle(const QString& title, const QString& message, Style style = Alert);
    // The common case: one button that only closes the alert.
    static AlertController* simple(const QString& title, const QString& message, const QString& button);

    QUrl viewSource() const override;
    QString message() const { return m_message; }
    QStringList buttonTitles() const;
    QList<int> buttonStyles() const;
    bool isActionSheet() const { return m_style == ActionSheet; }

    void addAction(const QString& title, ActionStyle style = Default, std::function<void()> handler = {});
    Q_INVOKABLE void tapButton(int index);

signals:
    void actionsChanged();

private:
    struct Action {
        QString title;
        ActionStyle style;
        std::function<void()> handler;
    };
    QString m_message;
    Style m_style = Alert;
    QList<Action> m_actions;
};

} // namespace ekinora::platform
