#pragma once

#include "ConsentPanel.h"
#include "RegistrationWizard.h"

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"

namespace ekinora::accounts {

// Sign-in by mobile number and SMS code. The same screen holds the registration wizard and the consent
// pages as panels that are shown and hidden over it; none is pushed. The wizard is a child controller
// (its panels, fields, crops and actions); the screen still answers the wizard's actions by their
// names and hands them on.
class LoginViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::View, viewLogin)
    UI_OUTLET(ekinora::platform::View, viewLoginPhone)
    UI_OUTLET(ekinora::platform::View, viewLoginCode)
    UI_OUTLET(ekinora::platform::View, viewLogout)
    UI_OUTLET(ekinora::platform::View, viewRegister)
    UI_OUTLET(ekinora::platform::View, viewRegisterPhone)
    UI_OUTLET(ekinora::platform::View, viewRegisterCode)
    UI_OUTLET(ekinora::platform::TextField, txtLoginPhone)
    UI_OUTLET(ekinora::platform::TextField, txtLoginPhoneCode)
    UI_OUTLET(ekinora::platform::TextField, txtLoginCode)
    UI_OUTLET(ekinora::platform::TextField, txtRegisterPhone)
    UI_OUTLET(ekinora::platform::TextField, txtRegisterPhoneCode)
    UI_OUTLET(ekinora::platform::TextField, txtRegisterCode)
public:
    explicit LoginViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // State.
    platform::Json actionType{QJsonValue::Undefined};
    RegistrationWizard* registration() const { return m_wizard; }
    ConsentPanel* consentPanel() const { return m_consent; }
    QList<platform::ViewController*> childViewControllers() const override { return {m_wizard, m_consent}; }

    // Panels.
    platform::View *viewLogin, *viewLoginPhone, *viewLoginCode, *viewLogout;
    platform::View *viewRegister, *viewRegisterPhone, *viewRegisterCode;
    // Fields.
    platform::TextField *txtLoginPhone, *txtLoginPhoneCode, *txtLoginCode;
    platform::TextField *txtRegisterPhone, *txtRegisterPhoneCode, *txtRegisterCode;

    void viewDidLoad() override;

    bool textFieldShouldChangeCharacters(platform::TextField* field, int location, int length, const QString& replacement);
    bool textFieldShouldReturn(platform::TextField* field);
    // The navigation delegate of both web views: a "mailto:" link the user tapped goes to mail.
    bool decidePolicyForNavigationAction(platform::WebView* webView, const QUrl& url, int navigationType);

public slots:
    void getSmsCodeForLogin(QObject* sender = nullptr);
    void validateSmsCodeForLogin(QObject* sender = nullptr);
    void getSmsCode(QObject* sender = nullptr);
    void validateSmsCode(QObject* sender = nullptr);
    void loginBack(QObject* sender = nullptr);
    void openRegisterView(QObject* sender = nullptr);

    // The wizard's actions, by their names on the screen; the wizard does them.
    void selectCity(QObject* sender = nullptr) { m_wizard->selectCity(sender); }
    void selectCounty(QObject* sender = nullptr) { m_wizard->selectCounty(sender); }
    void farmerButtonTapped(QObject* sender = nullptr) { m_wizard->farmerButtonTapped(sender); }
    void dealerButtonTapped(QObject* sender = nullptr) { m_wizard->dealerButtonTapped(sender); }
    void canOpenKvkkView() { m_wizard->canOpenKvkkView(); }
    void continueToActivation(QObject* sender = nullptr) { m_wizard->continueToActivation(sender); }
    void continueToInfo(QObject* sender = nullptr) { m_wizard->continueToInfo(sender); }
    void continueToFarm(QObject* sender = nullptr) { m_wizard->continueToFarm(sender); }
    void continueToFinish(QObject* sender = nullptr) { m_wizard->continueToFinish(sender); }
    void finishRegistration(QObject* sender = nullptr) { m_wizard->finishRegistration(sender); }
    void checkDealer() { m_wizard->checkDealer(); }

private:
    void showAlert(const QString& title, const QString& message, int style = 0);
    void enterApplication(const platform::Json& data);
    void showActivationPending();
    void backToLogin();

    ConsentPanel* m_consent;
    RegistrationWizard* m_wizard;
};

} // namespace ekinora::accounts
