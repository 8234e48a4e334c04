#include "BadgeBarButtonItem.h"

#include "platform/Platform.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPointer>
#include <cmath>

namespace ekinora::widgets {

namespace {

bool hasGui() { return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr; }

} // namespace

QSizeF BadgeLabel::sizeThatFits() const {
    if (text().isEmpty()) return {0, 0};
    const double pixels = m_font.pixelSize() > 0 ? m_font.pixelSize() : m_font.pointSizeF();
    if (!hasGui()) {
        // No font machinery without a GUI application (controller tests): an average glyph's measure.
        return {std::ceil(0.6 * pixels * text().size()), std::ceil(1.2 * pixels)};
    }
    const QFontMetricsF metrics(m_font);
    return {std::ceil(metrics.horizontalAdvance(text())), std::ceil(metrics.height())};
}

BadgeBarButtonItem::BadgeBarButtonItem(const QString& name, QObject* parent) : BarButtonItem(name, parent) {
    // The value is the item's own property; every assignment goes through the badge's rules, an
    // unchanged value too (after a removal, the same value again makes a new label).
    connect(this, &BarButtonItem::badgeValueAssigned, this, &BadgeBarButtonItem::badgeValueSet);
}

QUrl BadgeBarButtonItem::overlaySource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Widgets/BarButtonBadge.qml")); }

void BadgeBarButtonItem::badgeValueSet() {
    updateBadgeValueAnimated(true);
    refreshBadge();
}

BadgeLabel* BadgeBarButtonItem::badge() {
    if (!m_badge) {
        m_badge = new BadgeLabel(QStringLiteral("badge"), this);
        m_badge->setFrame(QRectF(m_originX, m_originY, InitialBadgeSide, InitialBadgeSide));
        emit badgeChanged();
        badgeInit();
    }
    return m_badge;
}

void BadgeBarButtonItem::badgeInit() {
    const double labelWidth = m_badge->frame().width();
    double defaultOriginX = 0.0;
    if (m_customView) {
        defaultOriginX = -0.5 * labelWidth;
        set(m_customViewClips, false);
    } else if (m_viewWidth >= 0) {
        defaultOriginX = m_viewWidth - labelWidth;
    }
    QFont font = hasGui() ? QGuiApplication::font() : QFont();
    font.setPixelSize(12);
    setBadgeBGColor(QColor(Qt::red));
    setBadgeTextColor(QColor(Qt::white));
    setBadgeFont(font);
    setBadgePadding(6.0);
    setBadgeMinSize(8.0);
    setBadgeOriginX(defaultOriginX - 12.0);
    setBadgeOriginY(0.0);
    setShouldHideBadgeAtZero(true);
    setShouldAnimateBadge(true);
}

void BadgeBarButtonItem::refreshBadge() {
    BadgeLabel* label = badge();
    label->setTextColor(m_textColor);
    label->setBackgroundColor(m_bgColor);
    label->setFont(m_font);
    const QString value = badgeValue();
    if (value.isEmpty() || (value == QLatin1String("0") && m_hideAtZero)) {
        label->setHidden(true);
    } else {
        label->setHidden(false);
        updateBadgeValueAnimated(true);
    }
}

std::unique_ptr<BadgeLabel> BadgeBarButtonItem::duplicateLabel(const BadgeLabel* label) const {
    auto copy = std::make_unique<BadgeLabel>();
    copy->setFrame(label->frame());
    copy->setText(label->text());
    copy->setFont(label->font());
    return copy;
}

QSizeF BadgeBarButtonItem::badgeExpectedSize() const {
    // Measured on a copy, so that the shown label doesn't jump.
    std::unique_ptr<BadgeLabel> copy = duplicateLabel(m_badge);
    copy->sizeToFit();
    return copy->frame().size();
}

void BadgeBarButtonItem::updateBadgeFrame() {
    const QSizeF expected = badgeExpectedSize();
    const double height = qMax(expected.height(), m_minSize);
    const double width = qMax(expected.width(), height);
    m_badge->setFrame(QRectF(m_originX, m_originY, width + m_padding, height + m_padding));
    m_badge->setCornerRadius((height + m_padding) / 2);
    m_badge->setClipsToBounds(true);
}

void BadgeBarButtonItem::updateBadgeValueAnimated(bool animated) {
    BadgeLabel* label = badge();
    if (animated && m_animate && label->text() != badgeValue()) emit bounceAnimationAdded();
    label->setText(badgeValue());
    if (animated) emit frameAnimationAdded(FrameAnimationDuration);
    updateBadgeFrame();
}

void BadgeBarButtonItem::removeBadge() {
    if (!m_badge) return;
    m_badge->setScale(0.0);
    emit removeAnimationAdded(RemoveAnimationDuration);
    QPointer<BadgeLabel> label = m_badge;
    platform::Platform::current().scheduler().after(int(RemoveAnimationDuration * 1000),
                                                    [self = QPointer<BadgeBarButtonItem>(this), label] {
        delete label.data();
        if (!self) return;
        self->m_badge = nullptr;
        emit self->badgeChanged();
    });
}

void BadgeBarButtonItem::setBadgeBGColor(const QColor& c) {
    set(m_bgColor, c);
    refreshBadge();
}

void BadgeBarButtonItem::setBadgeTextColor(const QColor& c) {
    set(m_textColor, c);
    refreshBadge();
}

void BadgeBarButtonItem::setBadgeFont(const QFont& f) {
    set(m_font, f);
    refreshBadge();
}

void BadgeBarButtonItem::setBadgePadding(double p) {
    set(m_padding, p);
    if (m_badge) updateBadgeFrame();
}

void BadgeBarButtonItem::setBadgeMinSize(double s) {
    set(m_minSize, s);
    if (m_badge) updateBadgeFrame();
}

void BadgeBarButtonItem::setBadgeOriginX(double x) {
    set(m_originX, x);
    if (m_badge) updateBadgeFrame();
}

void BadgeBarButtonItem::setBadgeOriginY(double y) {
    set(m_originY, y);
    if (m_badge) updateBadgeFrame();
}

} // namespace ekinora::widgets
