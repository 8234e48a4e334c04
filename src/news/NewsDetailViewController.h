#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

namespace ekinora::news {

// One news item: title and date on the coloured header, its picture and its text, which starts at its
// top whenever the screen is laid out.
class NewsDetailViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::Label, lblTitle)
    UI_OUTLET(ekinora::platform::Label, lblDate)
    UI_OUTLET(ekinora::platform::Label, txtContent)
    UI_OUTLET(ekinora::platform::ImageView, imagePhoto)
    UI_OUTLET(ekinora::platform::View, viewHeader)
    Q_PROPERTY(bool contentScrollEnabled READ contentScrollEnabled NOTIFY contentChanged)
public:
    explicit NewsDetailViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::Json objectID{QJsonValue::Undefined};
    platform::Label *lblTitle, *lblDate, *txtContent;
    platform::ImageView* imagePhoto;
    platform::View* viewHeader;

    bool contentScrollEnabled() const { return m_scroll; }

    void viewDidLoad() override;
    // The name keeps a leftover word of an older screen.
    void getDealDetail();

signals:
    void contentChanged();

private:
    bool m_scroll = false;
};

} // namespace ekinora::news
