#pragma once

#include <QtQml/qqmlregistration.h>

#include "platform/Controls.h"
#include "platform/Scheduler.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QStringList>
#include <functional>

namespace ekinora::widgets {

// A page control: dots for the pages, one of them current. The current page stays within the pages.
class PageControl : public ekinora::platform::View {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(int numberOfPages READ numberOfPages WRITE setNumberOfPages NOTIFY changed)
    Q_PROPERTY(int currentPage READ currentPage WRITE setCurrentPage NOTIFY changed)
public:
    using View::View;
    int numberOfPages() const { return m_pages; }
    void setNumberOfPages(int n);
    int currentPage() const { return m_current; }
    void setCurrentPage(int page);

private:
    int m_pages = 0;
    int m_current = 0;
};

// An image view placed by frame inside a scroll view.
class SlideImageView : public ekinora::platform::ImageView {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY changed)
    Q_PROPERTY(int contentMode READ contentMode WRITE setContentMode NOTIFY changed)
public:
    using ImageView::ImageView;
    QRectF frame() const { return m_frame; }
    void setFrame(const QRectF& f) { set(m_frame, f); }
    // UIViewContentMode: 0 stretches the picture over the frame.
    int contentMode() const { return m_mode; }
    void setContentMode(int m) { set(m_mode, m); }

private:
    QRectF m_frame;
    int m_mode = 0;
};

// A scroll view: its frame, content size and offset. An animated offset change is announced to the
// arrangement, which plays it; the model holds the end value at once, as the platform does.
class ScrollView : public ekinora::platform::View {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY changed)
    Q_PROPERTY(QSizeF contentSize READ contentSize WRITE setContentSize NOTIFY changed)
    Q_PROPERTY(QPointF contentOffset READ contentOffset NOTIFY changed)
    Q_PROPERTY(bool pagingEnabled READ pagingEnabled WRITE setPagingEnabled NOTIFY changed)
    Q_PROPERTY(QVariantList imageViews READ imageViewObjects NOTIFY subviewsChanged)
public:
    using View::View;
    using DidScroll = std::function<void(ScrollView*)>;

    QRectF frame() const { return m_frame; }
    void setFrame(const QRectF& f) { set(m_frame, f); }
    QSizeF contentSize() const { return m_contentSize; }
    void setContentSize(const QSizeF& s) { set(m_contentSize, s); }
    bool pagingEnabled() const { return m_paging; }
    void setPagingEnabled(bool p) { set(m_paging, p); }
    QPointF contentOffset() const { return m_offset; }
    // Sets the offset and tells the delegate; a duration above 0 animates it on screen.
    void setContentOffset(const QPointF& offset, double animationDuration = 0);
    // The user dragged the content there.
    Q_INVOKABLE void userScroll(qreal x, qreal y) { setContentOffset(QPointF(x, y)); }

    // scrollViewDidScroll: of the delegate.
    void setDidScroll(DidScroll f) { m_didScroll = std::move(f); }

    QList<SlideImageView*> imageViews() const { return m_imageViews; }
    void addImageView(SlideImageView* view);
    void removeImageViews();

signals:
    void offsetAnimated(double duration);
    void subviewsChanged();

private:
    QVariantList imageViewObjects() const {
        QVariantList views;
        for (SlideImageView* view : m_imageViews) views << QVariant::fromValue(view);
        return views;
    }

    QRectF m_frame;
    QSizeF m_contentSize;
    QPointF m_offset;
    bool m_paging = false;
    DidScroll m_didScroll;
    QList<SlideImageView*> m_imageViews;
};

// A row of pictures that pages by itself: one page per picture address, a move to the next page every
// 5 seconds, from the last one back to the first, and dots for the pages. With fewer than two pictures
// no timer is started. The timer is replaced only by the next setupSliderView; it holds its slider, which
// then outlives its screen and keeps paging.
class Slider : public ekinora::platform::View {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(ekinora::platform::View* customView READ customView CONSTANT)
    Q_PROPERTY(ekinora::widgets::PageControl* pagger READ pagger CONSTANT)
    Q_PROPERTY(ekinora::widgets::ScrollView* slider READ slider CONSTANT)
    Q_PROPERTY(QStringList slides READ slides WRITE setSlides NOTIFY changed)
    Q_PROPERTY(QSizeF size READ size WRITE setSize NOTIFY changed)
    Q_PROPERTY(QString placeholderImage READ placeholderImage CONSTANT)
public:
    static constexpr int AutoSlideInterval = 5000; // ms
    static constexpr double SlideAnimationDuration = 0.5;

    explicit Slider(const QString& name = QStringLiteral("slider"), QObject* parent = nullptr);
    ~Slider() override; // a slider destroyed on purpose takes its timer with it

    platform::View* customView() const { return m_customView; }
    PageControl* pagger() const { return m_pagger; }
    ScrollView* slider() const { return m_slider; }
    QStringList slides() const { return m_slides; }
    void setSlides(const QStringList& slides) { set(m_slides, slides); }
    // The view's bounds, from its arrangement; a change lays the pages out again.
    QSizeF size() const { return m_size; }
    void setSize(const QSizeF& size);
    QString placeholderImage() const { return QStringLiteral("Property"); }
    bool hasTimer() const { return m_timer != 0; }

    // Builds the pages from the slides and (re)starts the timer.
    Q_INVOKABLE void setupSliderView();
    void scrollViewDidScroll(ScrollView* scrollView);
    void autoStartSlide();
    // Lays the scroll view, the pages and the content size out on the bounds.
    void drawRect();

private:
    void initialize();

    platform::View* m_customView;
    PageControl* m_pagger;
    ScrollView* m_slider;
    QStringList m_slides;
    QSizeF m_size;
    platform::Scheduler::Id m_timer = 0;
};

} // namespace ekinora::widgets
