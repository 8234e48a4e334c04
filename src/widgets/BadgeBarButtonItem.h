#pragma once

#include <QtQml/qqmlregistration.h>

#include "platform/Controls.h"

#include <QFont>
#include <QRectF>
#include <QSizeF>
#include <memory>

namespace ekinora::widgets {

// The badge's label: a frame in the button's view, a font, and the scale it shrinks by when removed.
class BadgeLabel : public ekinora::platform::Label {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY changed)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY changed)
    Q_PROPERTY(bool clipsToBounds READ clipsToBounds WRITE setClipsToBounds NOTIFY changed)
    Q_PROPERTY(double scale READ scale WRITE setScale NOTIFY changed)
public:
    using Label::Label;
    QRectF frame() const { return m_frame; }
    void setFrame(const QRectF& f) { set(m_frame, f); }
    QFont font() const { return m_font; }
    void setFont(const QFont& f) { set(m_font, f); }
    bool clipsToBounds() const { return m_clips; }
    void setClipsToBounds(bool c) { set(m_clips, c); }
    double scale() const { return m_scale; }
    void setScale(double s) { set(m_scale, s); }

    // The size the text needs in the label's font (nothing for no text).
    QSizeF sizeThatFits() const;
    void sizeToFit() { setFrame(QRectF(m_frame.topLeft(), sizeThatFits())); }

private:
    QRectF m_frame;
    QFont m_font;
    bool m_clips = false;
    double m_scale = 1.0;
};

// A bar button item with a count badge: red with white text in the top corner of the button, hidden for
// no value, for "" and, while shouldHideBadgeAtZero, for "0"; at least badgeMinSize high and as wide as
// high, badgePadding around the text, and a bounce when the shown value changes. The label is made on
// first use. Screens set badgeValue as on any bar button item; its arrangement is
// BarButtonBadge.qml, which the navigation bar draws over the button.
class BadgeBarButtonItem : public ekinora::platform::BarButtonItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    // The label, once made (reading it here makes nothing).
    Q_PROPERTY(ekinora::widgets::BadgeLabel* badge READ existingBadge NOTIFY badgeChanged)
    Q_PROPERTY(QColor badgeBGColor READ badgeBGColor WRITE setBadgeBGColor NOTIFY changed)
    Q_PROPERTY(QColor badgeTextColor READ badgeTextColor WRITE setBadgeTextColor NOTIFY changed)
    Q_PROPERTY(QFont badgeFont READ badgeFont WRITE setBadgeFont NOTIFY changed)
    Q_PROPERTY(double badgePadding READ badgePadding WRITE setBadgePadding NOTIFY changed)
    Q_PROPERTY(double badgeMinSize READ badgeMinSize WRITE setBadgeMinSize NOTIFY changed)
    Q_PROPERTY(double badgeOriginX READ badgeOriginX WRITE setBadgeOriginX NOTIFY changed)
    Q_PROPERTY(double badgeOriginY READ badgeOriginY WRITE setBadgeOriginY NOTIFY changed)
    Q_PROPERTY(bool shouldHideBadgeAtZero READ shouldHideBadgeAtZero WRITE setShouldHideBadgeAtZero NOTIFY changed)
    Q_PROPERTY(bool shouldAnimateBadge READ shouldAnimateBadge WRITE setShouldAnimateBadge NOTIFY changed)
    Q_PROPERTY(double viewWidth READ viewWidth WRITE setViewWidth NOTIFY changed)
    Q_PROPERTY(bool hasCustomView READ hasCustomView WRITE setHasCustomView NOTIFY changed)
    Q_PROPERTY(bool customViewClips READ customViewClips NOTIFY changed)
public:
    static constexpr double InitialBadgeSide = 20.0;
    static constexpr double FrameAnimationDuration = 0.2;
    static constexpr double RemoveAnimationDuration = 0.2;
    // The bounce: "transform.scale" from 1.5 to 1.0 in 0.2 s, eased by (0.4, 1.3) and (1.0, 1.0).
    static constexpr double BounceFromScale = 1.5;
    static constexpr double BounceToScale = 1.0;
    static constexpr double BounceDuration = 0.2;

    explicit BadgeBarButtonItem(const QString& name = {}, QObject* parent = nullptr);

    QUrl overlaySource() const override;

    // Made on first use: a 20 by 20 label at the origin, given its defaults by badgeInit.
    BadgeLabel* badge();
    BadgeLabel* existingBadge() const { return m_badge; }

    void badgeInit();
    void refreshBadge();
    QSizeF badgeExpectedSize() const;
    void updateBadgeFrame();
    void updateBadgeValueAnimated(bool animated);
    std::unique_ptr<BadgeLabel> duplicateLabel(const BadgeLabel* label) const;
    // Shrinks the label away in 0.2 s, then forgets it; the next use makes a new one.
    void removeBadge();

    QColor badgeBGColor() const { return m_bgColor; }
    void setBadgeBGColor(const QColor& c);
    QColor badgeTextColor() const { return m_textColor; }
    void setBadgeTextColor(const QColor& c);
    QFont badgeFont() const { return m_font; }
    void setBadgeFont(const QFont& f);
    double badgePadding() const { return m_padding; }
    void setBadgePadding(double p);
    double badgeMinSize() const { return m_minSize; }
    void setBadgeMinSize(double s);
    double badgeOriginX() const { return m_originX; }
    void setBadgeOriginX(double x);
    double badgeOriginY() const { return m_originY; }
    void setBadgeOriginY(double y);
    bool shouldHideBadgeAtZero() const { return m_hideAtZero; }
    void setShouldHideBadgeAtZero(bool h) { set(m_hideAtZero, h); }
    bool shouldAnimateBadge() const { return m_animate; }
    void setShouldAnimateBadge(bool a) { set(m_animate, a); }

    // The width of the item's view once the bar has laid it out; below 0 while it has none.
    double viewWidth() const { return m_viewWidth; }
    void setViewWidth(double w) { set(m_viewWidth, w); }
    // An item with a custom view carries the badge half out of its left edge and stops clipping.
    bool hasCustomView() const { return m_customView; }
    void setHasCustomView(bool c) { set(m_customView, c); }
    bool customViewClips() const { return m_customViewClips; }

signals:
    void badgeChanged();
    void bounceAnimationAdded();
    void frameAnimationAdded(double duration);
    void removeAnimationAdded(double duration);

private:
    void badgeValueSet();

    BadgeLabel* m_badge = nullptr;
    // Unset until badgeInit gives the defaults: zero, false, no colour.
    QColor m_bgColor;
    QColor m_textColor;
    QFont m_font;
    double m_padding = 0;
    double m_minSize = 0;
    double m_originX = 0;
    double m_originY = 0;
    bool m_hideAtZero = false;
    bool m_animate = false;
    double m_viewWidth = -1;
    bool m_customView = false;
    bool m_customViewClips = true;
};

} // namespace ekinora::widgets
