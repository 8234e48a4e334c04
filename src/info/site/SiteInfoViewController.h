#pragma once

// The accordion's controller keeps the short class name of the list of legal pages; its file is named
// apart so that the two headers never stand for each other.

#include "platform/Controls.h"
#include "platform/ViewController.h"

#include <QList>
#include <QStringList>
#include <QVariantMap>

namespace ekinora::info::site {

// The product site's guide as an accordion: the document's two main headings as sections, at most one
// open, each opening onto the text of its half of the document.
class InfoViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_NAMED_ELEMENT(SiteInfoViewController)
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tableView)
    UI_OUTLET(ekinora::platform::Label, navBar)
public:
    explicit InfoViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::TableView* tableView;
    platform::Label* navBar;

    QStringList section;
    QString secilenString;
    int secilenIndex = 0; // kept, not used
    // Titles of the open sections; the name's spelling stays.
    QStringList collapaseHandlerArray;
    QString items1;
    QString items2;

    void viewDidLoad() override;
    void loadDocument();

    // Each section draws its header ("HeaderCell1") and then, when open, its one row ("Cell"), whose
    // text is what the header just set in secilenString.
    int numberOfRowsInSection(int s) const;
    QVariantMap headerViewForSection(int s);
    QVariantMap cellForRow(int s);
    // The header's show-or-hide button of a section, its tag the section's index.
    platform::Button* headerButton(int s);

public slots:
    void HandleheaderButtonWithSender(QObject* sender);
    // The accordion button of a section, as its view taps it.
    void tapHeaderButton(int s) { HandleheaderButtonWithSender(headerButton(s)); }
    void closeButtonTapped(QObject* sender = nullptr);

private:
    QList<platform::Button*> m_headerButtons;
};

} // namespace ekinora::info::site
