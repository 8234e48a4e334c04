#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"
#include "widgets/Slider.h"

#include <QJsonArray>
#include <QPointer>
#include <QVariantList>
#include <QVariantMap>

namespace ekinora::events {

// "Etkinlikler": the events to come (under way and coming, one list to the client) and the past ones,
// in up to two sections, with the pictures of the nearest events sliding on top. Reloaded at every
// appearance, so that an answer given on the detail shows on return.
class EventViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tblEvent)
    UI_OUTLET(ekinora::platform::ImageView, imgInfoBack)
    UI_OUTLET(ekinora::platform::Label, lblInfoBack)
    Q_PROPERTY(ekinora::widgets::Slider* slider READ sliderView CONSTANT)
    Q_PROPERTY(QVariantList sectionHeaders READ sectionHeaders NOTIFY sectionsChanged)
public:
    // Pictures the slider takes at most.
    static constexpr int SliderLimit = 11;

    explicit EventViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::TableView* tblEvent;
    QPointer<widgets::Slider> slider;
    platform::ImageView* imgInfoBack;
    platform::Label* lblInfoBack;
    QJsonArray arrEventPast, arrEventActive, imageData;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;

    int numberOfSections() const;
    // The list a section shows: the active one in section 0 when it has events, else the past one.
    const QJsonArray& eventsOfSection(int section) const;
    bool sectionIsActive(int section) const;
    QVariantMap cellForRow(int section, int row) const;
    // tableView:willDisplayHeaderView:forSection: "title", "textColor", "tint" of each section.
    QVariantList sectionHeaders() const;

public slots:
    void setNotifBadge();
    void getEvents();

signals:
    void sectionsChanged();

private:
    widgets::Slider* sliderView() const { return slider; }
};

} // namespace ekinora::events
