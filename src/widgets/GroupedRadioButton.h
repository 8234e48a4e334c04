#pragma once

#include <QtQml/qqmlregistration.h>

#include "platform/Controls.h"

#include <QHash>
#include <QImage>
#include <QList>
#include <QPointer>

namespace ekinora::widgets {

// UIEdgeInsets: top, left, bottom, right.
struct EdgeInsets {
    double top = 0, left = 0, bottom = 0, right = 0;
    bool operator==(const EdgeInsets&) const = default;
};

// A radio button that belongs to a group: one assignment of the others to any member links the whole
// group. In single selection a tap selects (a second tap doesn't switch it off) and the rest of the
// group is cleared; in multiple selection a tap toggles, as a check box does. Unless pictures are
// given, both icons are drawn here from the title colours: a ring (or square), and for the selected
// state a dot inside it.
//
// Its own touchUpInside is the first of its targets, so a screen's action sees the new state.
class GroupedRadioButton : public ekinora::platform::Button {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    // Shadows the control's property, so that QML goes through the group's rules.
    Q_PROPERTY(bool selected READ isSelected WRITE setSelected NOTIFY changed)
    Q_PROPERTY(double iconSize READ iconSize WRITE setIconSize NOTIFY changed)
    Q_PROPERTY(QColor iconColor READ iconColor WRITE setIconColor NOTIFY changed)
    Q_PROPERTY(double iconStrokeWidth READ iconStrokeWidth WRITE setIconStrokeWidth NOTIFY changed)
    Q_PROPERTY(double indicatorSize READ indicatorSize WRITE setIndicatorSize NOTIFY changed)
    Q_PROPERTY(QColor indicatorColor READ indicatorColor WRITE setIndicatorColor NOTIFY changed)
    Q_PROPERTY(double marginWidth READ marginWidth WRITE setMarginWidth NOTIFY changed)
    Q_PROPERTY(bool iconOnRight READ iconOnRight WRITE setIconOnRight NOTIFY changed)
    Q_PROPERTY(bool iconSquare READ iconSquare WRITE setIconSquare NOTIFY changed)
    Q_PROPERTY(bool multipleSelectionEnabled READ isMultipleSelectionEnabled WRITE setMultipleSelectionEnabled NOTIFY changed)
    Q_PROPERTY(double animationDuration READ animationDuration WRITE setAnimationDuration NOTIFY changed)
    Q_PROPERTY(bool rightToLeft READ rightToLeft WRITE setRightToLeft NOTIFY changed)
    Q_PROPERTY(int contentHorizontalAlignment READ contentHorizontalAlignment WRITE setContentHorizontalAlignment NOTIFY changed)
    Q_PROPERTY(double frameWidth READ frameWidth WRITE setFrameWidth NOTIFY changed)
    // The pictures as data addresses for QML's Image.
    Q_PROPERTY(QString iconSource READ iconSource NOTIFY changed)
    Q_PROPERTY(QString iconSelectedSource READ iconSelectedSource NOTIFY changed)
    // The title's colour in the current state.
    Q_PROPERTY(QColor currentTitleColor READ currentTitleColor NOTIFY changed)
public:
    // UIControlState values.
    enum State { Normal = 0, Highlighted = 1, Selected = 4, SelectedHighlighted = 5 };
    // UIControlContentHorizontalAlignment values.
    enum Alignment { AlignCenter = 0, AlignLeft = 1, AlignRight = 2 };
    static constexpr int TouchUpInsideEvent = 64;
    static const QString GeneratedIconName; // "Generated Icon"

    explicit GroupedRadioButton(const QString& name = {}, QObject* parent = nullptr);
    ~GroupedRadioButton() override;

    // The rest of the group; held without ownership. Setting it on one button gives each button of the
    // list the others, this one included.
    QList<GroupedRadioButton*> otherButtons() const;
    void setOtherButtons(const QList<GroupedRadioButton*>& otherButtons);

    // The class-wide flag that stops a group setter from walking the group again.
    static bool isGroupModifing();
    static void groupModifing(bool modifying);

    // Single selection: this one or the group's selected one, or null. Multiple selection: always null.
    GroupedRadioButton* selectedButton() const;
    // This one when selected, then the group's selected ones in order.
    QList<GroupedRadioButton*> selectedButtons() const;
    void deselectOtherButtons();

    void setSelected(bool selected);

    // Regenerates the missing or generated icons and sets the insets.
    void drawButton();
    // A picture of iconSize square at the screen's scale, tagged "Generated Icon".
    QImage drawIconWithSelection(bool selected);
    // For the selected-and-highlighted state, a missing colour, or one equal to the normal colour, is
    // replaced by the selected colour, else the highlighted one, when either differs from the normal one.
    QColor titleColorForState(int state);
    // Each sets the colour and redraws the generated icons.
    void setTitleColor(const QColor& color) { setTitleColor(color, Normal); }
    void setTitleColor(const QColor& color, int state);

    QImage icon() const { return m_icon; }
    void setIcon(const QImage& icon); // the normal state's picture
    QImage iconSelected() const { return m_iconSelected; }
    void setIconSelected(const QImage& icon); // the selected, and selected-highlighted, picture
    static bool isGeneratedIcon(const QImage& image);
    // The picture shown in a state: selected states show iconSelected.
    QImage imageForState(int state) const;

    double iconSize() const { return m_iconSize; }
    void setIconSize(double s) { redraw(m_iconSize, s); }
    QColor iconColor() const { return m_iconColor; }
    void setIconColor(const QColor& c) { redraw(m_iconColor, c); }
    double iconStrokeWidth() const { return m_iconStrokeWidth; }
    void setIconStrokeWidth(double w) { redraw(m_iconStrokeWidth, w); }
    double indicatorSize() const { return m_indicatorSize; }
    void setIndicatorSize(double s) { redraw(m_indicatorSize, s); }
    QColor indicatorColor() const { return m_indicatorColor; }
    void setIndicatorColor(const QColor& c) { redraw(m_indicatorColor, c); }
    double marginWidth() const { return m_marginWidth; }
    void setMarginWidth(double m) { redraw(m_marginWidth, m); }
    bool iconOnRight() const { return m_iconOnRight; }
    void setIconOnRight(bool r) { redraw(m_iconOnRight, r); }
    bool iconSquare() const { return m_iconSquare; }
    void setIconSquare(bool s) { redraw(m_iconSquare, s); }
    bool isMultipleSelectionEnabled() const { return m_multipleSelectionEnabled; }
    void setMultipleSelectionEnabled(bool enabled);
    double animationDuration() const { return m_animationDuration; }
    void setAnimationDuration(double duration);

    // The layout direction of the semantic content attribute.
    bool rightToLeft() const { return m_rightToLeft; }
    void setRightToLeft(bool r) { redraw(m_rightToLeft, r); }
    int contentHorizontalAlignment() const { return m_alignment; }
    void setContentHorizontalAlignment(int a) { set(m_alignment, a); }
    // The arrangement's width, which places an icon on the right.
    double frameWidth() const { return m_frameWidth; }
    void setFrameWidth(double w) { redraw(m_frameWidth, w); }
    EdgeInsets titleEdgeInsets() const { return m_titleInsets; }
    EdgeInsets imageEdgeInsets() const { return m_imageInsets; }

    // The strokes and dot as drawn: zero sizes mean a ninth, and a half, of the icon's side.
    double effectiveStrokeWidth() const { return m_iconStrokeWidth != 0 ? m_iconStrokeWidth : m_iconSize / 9; }
    double effectiveIndicatorSize() const { return m_indicatorSize != 0 ? m_indicatorSize : m_iconSize * 0.5; }

    QString iconSource() const { return m_iconSource; }
    QString iconSelectedSource() const { return m_iconSelectedSource; }
    QColor currentTitleColor();

public slots:
    void touchUpInside();

signals:
    // The cross-fade of the icon (key path "contents", key "icon") from one state's picture to the
    // other's.
    void iconAnimationAdded(bool fromSelected, double duration);

protected:
    void initRadioButton();

private:
    template <class T> void redraw(T& field, const T& value) {
        if (field == value) return;
        field = value;
        drawButton();
        emit changed();
    }
    static QString dataUrl(const QImage& image);
    QColor explicitTitleColor(int state) const;

    QList<QPointer<GroupedRadioButton>> m_otherButtons;
    QImage m_icon;
    QImage m_iconSelected;
    QString m_iconSource;
    QString m_iconSelectedSource;
    QHash<int, QColor> m_titleColors; // states other than normal
    double m_iconSize = 0;
    QColor m_iconColor;
    double m_iconStrokeWidth = 0;
    double m_indicatorSize = 0;
    QColor m_indicatorColor;
    double m_marginWidth = 0;
    bool m_iconOnRight = false;
    bool m_iconSquare = false;
    bool m_multipleSelectionEnabled = false;
    double m_animationDuration = 0;
    bool m_rightToLeft = false;
    int m_alignment = AlignCenter;
    double m_frameWidth = 0;
    EdgeInsets m_titleInsets;
    EdgeInsets m_imageInsets;
};

} // namespace ekinora::widgets
