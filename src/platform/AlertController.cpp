#include "AlertController.h"

namespace ekinora::platform {

AlertController* AlertController::alertControllerWithTitle(const QString& title, const QString& message, Style style) {
    auto* alert = new AlertController;
    alert->setTitle(title);
    alert->m_message = message;
    alert->m_style = style;
    return alert;
}

AlertController* AlertController::simple(const QString& title, const QString& message, const QString& button) {
    AlertController* alert = alertControllerWithTitle(title, message);
    alert->addAction(button, Default);
    return alert;
}

QUrl AlertController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Platform/Alert.qml")); }

QStringList AlertController::buttonTitles() const {
    QStringList titles;
    for (const auto& a : m_actions) titles << a.title;
    return titles;
}

QList<int> AlertController::buttonStyles() const {
    QList<int> styles;
    for (const auto& a : m_actions) styles << int(a.style);
    return styles;
}

void AlertController::addAction(const QString& title, ActionStyle style, std::function<void()> handler) {
    m_actions.append(Action{title, style, std::move(handler)});
    emit actionsChanged();
}

void AlertController::tapButton(int index) {
    if (index < 0 || index >= m_actions.size()) return;
    const auto handler = m_actions.at(index).handler;
    // Keep the alert alive while its handler runs: dismissing releases it.
    Strong<AlertController> self(this);
    dismissViewControllerAnimated(true);
    if (handler) handler();
}

} // namespace ekinora::platform
