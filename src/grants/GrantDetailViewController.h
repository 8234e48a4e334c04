#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QJsonArray>

namespace ekinora::grants {

// One programme: its title on the gradient, its kind, last date and description, and the button to
// its application documents.
class GrantDetailViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, lblTitle)
    UI_OUTLET(ekinora::platform::Label, lblDate)
    UI_OUTLET(ekinora::platform::Label, lblType)
    UI_OUTLET(ekinora::platform::View, viewTitle)
    UI_OUTLET(ekinora::platform::Label, txtContent)
public:
    explicit GrantDetailViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::Json dictGrant{QJsonValue::Undefined};

    platform::Label *lblTitle, *lblDate, *lblType, *txtContent;
    platform::View* viewTitle;

    void viewDidLoad() override;

public slots:
    void showDocs(QObject* sender = nullptr);

protected:
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;
};

// The application documents of a programme, one a row.
class GrantDocsViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tblDocs)
public:
    explicit GrantDocsViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    QJsonArray arrGrantDocs;
    platform::TableView* tblDocs;

    void viewDidLoad() override;

protected:
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;

private:
    int m_selectedRow = -1;
};

} // namespace ekinora::grants
