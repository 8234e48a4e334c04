#include "Slider.h"

#include "platform/Platform.h"

#include <QPointer>
#include <QUrl>
#include <utility>

namespace ekinora::widgets {

void PageControl::setNumberOfPages(int n) {
    m_pages = qMax(0, n);
    setCurrentPage(m_current);
    emit changed();
}

void PageControl::setCurrentPage(int page) { set(m_current, qBound(0, page, qMax(0, m_pages - 1))); }

void ScrollView::setContentOffset(const QPointF& offset, double animationDuration) {
    set(m_offset, offset);
    if (animationDuration > 0) emit offsetAnimated(animationDuration);
    if (m_didScroll) m_didScroll(this);
}

void ScrollView::addImageView(SlideImageView* view) {
    view->setParent(this);
    m_imageViews.append(view);
    emit subviewsChanged();
}

void ScrollView::removeImageViews() {
    const QList<SlideImageView*> gone = std::exchange(m_imageViews, {});
    emit subviewsChanged();
    qDeleteAll(gone);
}

Slider::Slider(const QString& name, QObject* parent)
    : View(name, parent),
      m_customView(new platform::View(QStringLiteral("customView"), this)),
      m_pagger(new PageControl(QStringLiteral("pagger"), this)),
      m_slider(new ScrollView(QStringLiteral("slider"), this)) {
    initialize();
}

Slider::~Slider() {
    if (m_timer && platform::Platform::exists()) platform::Platform::current().scheduler().cancel(m_timer);
}

void Slider::initialize() {
    m_slider->setFrame(QRectF(QPointF(0, 0), m_size));
    m_pagger->setCurrentPage(0);
}

void Slider::setSize(const QSizeF& size) {
    if (m_size == size) return;
    m_size = size;
    drawRect();
    emit changed();
}

void Slider::setupSliderView() {
    m_slider->setPagingEnabled(true);
    m_slider->setDidScroll([this](ScrollView* s) { scrollViewDidScroll(s); });
    m_pagger->setNumberOfPages(int(m_slides.size()));

    m_slider->removeImageViews();
    const double width = m_slider->frame().width(), height = m_slider->frame().height();
    for (int i = 0; i < m_slides.size(); ++i) {
        auto* page = new SlideImageView(QString(), m_slider);
        page->setContentMode(0);
        page->setImage(placeholderImage());
        page->setImageUrl(QUrl(m_slides.at(i)));
        page->setFrame(QRectF(i * width, 0, width, height));
        m_slider->addImageView(page);
    }
    m_slider->setContentSize(QSizeF(width * m_slides.size(), height));

    // Fewer than two pictures start nothing, and leave a running timer as it is.
    if (m_slides.size() >= 2) {
        platform::Scheduler& scheduler = platform::Platform::current().scheduler();
        if (m_timer) scheduler.cancel(m_timer);
        // The timer holds its slider: from now on the slider does not go with its screen, and a slider
        // in a screen that has gone keeps ticking.
        setParent(nullptr);
        m_timer = scheduler.every(AutoSlideInterval, [self = this] { self->autoStartSlide(); });
    }
    drawRect();
}

void Slider::scrollViewDidScroll(ScrollView* scrollView) {
    const double width = scrollView->frame().width();
    m_pagger->setCurrentPage(width > 0 ? int(scrollView->contentOffset().x() / width) : 0);
}

void Slider::autoStartSlide() {
    const int next = m_pagger->currentPage() + 1;
    const QPointF offset = m_slider->contentOffset();
    if (next < m_pagger->numberOfPages())
        m_slider->setContentOffset(QPointF(offset.x() + m_slider->frame().width(), offset.y()), SlideAnimationDuration);
    else
        m_slider->setContentOffset(QPointF(0, 0), SlideAnimationDuration);
}

void Slider::drawRect() {
    const double width = m_size.width(), height = m_size.height();
    m_slider->setFrame(QRectF(0, 0, width, height));
    const QList<SlideImageView*> pages = m_slider->imageViews();
    for (int i = 0; i < pages.size(); ++i) pages.at(i)->setFrame(QRectF(i * width, 0, width, height));
    m_slider->setContentSize(QSizeF(width * pages.size(), height));
    // The page control is drawn above the pages by the arrangement.
}

} // namespace ekinora::widgets
