#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"
#include "widgets/GroupedRadioButton.h"

#include <QStringList>
#include <functional>

namespace ekinora::accounts {

// What differs between the screens that ask for consent.
struct ConsentPolicy {
    // Registration: the conditions of use come first, and accepting them leads to the permissions with
    // the notice over them. Without them (the home) the permissions come alone and the notice opens
    // from a link.
    bool withTerms = false;
    QStringList permissionTitles;
    // Square green boxes with black titles.
    bool squareBoxes = false;
    // What the permissions' button does where it does more than close the page.
    std::function<void()> confirm;

    QString permissionsHint;
    QString noticeLink;
    QString permissionsButton;
    QString noticeTitle;
    QString noticeButton;
};

// The consent pages: the conditions of use (registration only), the three message permissions and the
// information notice. The host embeds it over its view and reads the permissions when it sends them.
class ConsentPanel : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its host screen.")
    UI_OUTLET(ekinora::platform::View, viewKVKK)
    UI_OUTLET(ekinora::platform::View, viewETK)
    UI_OUTLET(ekinora::platform::View, viewETKWeb)
    UI_OUTLET(ekinora::platform::WebView, webKVKK)
    UI_OUTLET(ekinora::platform::WebView, webviewETK)
    UI_OUTLET(ekinora::widgets::GroupedRadioButton, radioETK1)
    UI_OUTLET(ekinora::widgets::GroupedRadioButton, radioETK2)
    UI_OUTLET(ekinora::widgets::GroupedRadioButton, radioETK3)
    UI_OUTLET(ekinora::platform::Button, btn1Enb)
    UI_OUTLET(ekinora::platform::Button, btn2Enb)
    UI_OUTLET(ekinora::platform::Button, btn3Enb)
    // The pages by what they hold; the terms page is null without terms.
    Q_PROPERTY(ekinora::platform::View* termsView READ termsView CONSTANT)
    Q_PROPERTY(ekinora::platform::View* permissionsView READ permissionsView CONSTANT)
    Q_PROPERTY(ekinora::platform::View* noticeView READ noticeView CONSTANT)
    Q_PROPERTY(bool withTerms READ withTerms CONSTANT)
    // The names of the actions the pages' buttons carry.
    Q_PROPERTY(QString openNoticeAction READ openNoticeAction CONSTANT)
    Q_PROPERTY(QString closeNoticeAction READ closeNoticeAction CONSTANT)
    Q_PROPERTY(QString permissionsAction READ permissionsAction CONSTANT)
    Q_PROPERTY(QString permissionsHint READ permissionsHint CONSTANT)
    Q_PROPERTY(QString noticeLink READ noticeLink CONSTANT)
    Q_PROPERTY(QString permissionsButton READ permissionsButton CONSTANT)
    Q_PROPERTY(QString noticeTitle READ noticeTitle CONSTANT)
    Q_PROPERTY(QString noticeButton READ noticeButton CONSTANT)
    // The page last brought to the front.
    Q_PROPERTY(QString frontPanel READ frontPanel NOTIFY frontPanelChanged)
public:
    ConsentPanel(ConsentPolicy policy, platform::ViewController* host);
    QUrl viewSource() const override;

    platform::View *viewKVKK, *viewETK, *viewETKWeb = nullptr;
    platform::WebView *webKVKK = nullptr, *webviewETK;
    // The three permissions; each is read by its own selected state.
    widgets::GroupedRadioButton *radioETK1, *radioETK2, *radioETK3;
    // The permissions' headings, registration only.
    platform::Button *btn1Enb = nullptr, *btn2Enb = nullptr, *btn3Enb = nullptr;

    platform::View* termsView() const { return m_policy.withTerms ? viewKVKK : nullptr; }
    platform::View* permissionsView() const { return m_policy.withTerms ? viewETK : viewKVKK; }
    platform::View* noticeView() const { return m_policy.withTerms ? viewETKWeb : viewETK; }
    bool withTerms() const { return m_policy.withTerms; }
    QString openNoticeAction() const;
    QString closeNoticeAction() const;
    QString permissionsAction() const;
    QString permissionsHint() const { return m_policy.permissionsHint; }
    QString noticeLink() const { return m_policy.noticeLink; }
    QString permissionsButton() const { return m_policy.permissionsButton; }
    QString noticeTitle() const { return m_policy.noticeTitle; }
    QString noticeButton() const { return m_policy.noticeButton; }
    QString frontPanel() const { return m_frontPanel; }

    // Every page closed.
    void hidePages();
    // The notice's text, and the conditions of use with the indicator over the host.
    void loadWebviewETK();
    void getInfo();
    void bringSubviewToFront(platform::View* panel);
    // A permission as it is sent: "1" when chosen, else "0".
    QString smsPermission() const;
    QString emailPermission() const;
    QString advPermission() const;

    // What the pages' buttons do, whatever their names here.
    Q_INVOKABLE void openNotice();
    Q_INVOKABLE void closeNotice();
    Q_INVOKABLE void confirmPermissions();

public slots:
    void acceptKVKK(QObject* sender = nullptr);
    void setETKinfo(QObject* sender = nullptr);
    void openETKView(QObject* sender = nullptr);
    void closeETKView(QObject* sender = nullptr);
    void openETKWebView(QObject* sender = nullptr);
    void closeETKWebView(QObject* sender = nullptr);

signals:
    void frontPanelChanged();

private:
    ConsentPolicy m_policy;
    platform::ViewController* m_host;
    QString m_frontPanel;
};

} // namespace ekinora::accounts
