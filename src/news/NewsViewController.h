#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QJsonArray>
#include <QVariantMap>

namespace ekinora::news {

// "Haberler": the agricultural news, a page at a time. The app asks for "more" with a bare flag and
// the service alone knows which page comes next; the list is only ever appended to.
class NewsViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::TableView, tblNews)
public:
    explicit NewsViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    QJsonArray arrNews;
    platform::TableView* tblNews;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;

    // The row of one item: "NewsCell" with its date, title and thumbnail.
    QVariantMap cellForRow(int row) const;

public slots:
    void setNotifBadge();
    // With more true, "ptoken" goes out and the reply's items are added behind the others.
    void getNews(bool more);
    // The end of a drag: the last visible row and whether the list goes on moving by itself.
    void scrollViewDidEndDragging(int lastVisibleRow, bool decelerate);
};

// Row index paths travel to prepareForSegue as a sender object.
class IndexPath : public QObject {
    Q_OBJECT
public:
    IndexPath(int row, int section, QObject* parent) : QObject(parent), row(row), section(section) {}
    const int row;
    const int section;
};

// "dd.MM.yyyy" of seconds since 1970 in the local zone; what isn't a number reads as 0.
QString newsDateText(const platform::Json& seconds);

} // namespace ekinora::news
