#include "GroupedRadioButton.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <cmath>

namespace ekinora::widgets {

namespace {

bool groupFlag = false;

const QString accessibilityKey = QStringLiteral("accessibilityIdentifier");

double screenScale() {
    auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    QScreen* screen = app ? QGuiApplication::primaryScreen() : nullptr;
    return screen ? screen->devicePixelRatio() : 1.0;
}

} // namespace

const QString GroupedRadioButton::GeneratedIconName = QStringLiteral("Generated Icon");

GroupedRadioButton::GroupedRadioButton(const QString& name, QObject* parent) : Button(name, parent) {
    initRadioButton();
}

GroupedRadioButton::~GroupedRadioButton() = default;

void GroupedRadioButton::initRadioButton() {
    m_iconSize = 15.0;
    m_iconStrokeWidth = 0;
    m_indicatorSize = 0;
    m_marginWidth = 5.0;
    m_iconOnRight = false;
    m_iconSquare = false;
    m_multipleSelectionEnabled = false;
    m_animationDuration = 0.3;
    // A button from the layout always has a title colour; black stands in until the layout gives one.
    if (!titleColor().isValid()) Button::setTitleColor(QColor(Qt::black));
    addTarget(this, QStringLiteral("touchUpInside"));
    drawButton();
}

// Group

bool GroupedRadioButton::isGroupModifing() { return groupFlag; }
void GroupedRadioButton::groupModifing(bool modifying) { groupFlag = modifying; }

QList<GroupedRadioButton*> GroupedRadioButton::otherButtons() const {
    QList<GroupedRadioButton*> out;
    for (const auto& b : m_otherButtons)
        if (b) out << b.data();
    return out;
}

void GroupedRadioButton::setOtherButtons(const QList<GroupedRadioButton*>& otherButtons) {
    if (!isGroupModifing()) {
        groupModifing(true);
        for (GroupedRadioButton* button : otherButtons) {
            QList<GroupedRadioButton*> others = otherButtons;
            others.append(this);
            others.removeAll(button);
            button->setOtherButtons(others);
        }
        groupModifing(false);
    }
    m_otherButtons.clear();
    for (GroupedRadioButton* b : otherButtons) m_otherButtons << QPointer<GroupedRadioButton>(b);
}

void GroupedRadioButton::setMultipleSelectionEnabled(bool enabled) {
    if (!isGroupModifing()) {
        groupModifing(true);
        for (GroupedRadioButton* b : otherButtons()) b->setMultipleSelectionEnabled(enabled);
        groupModifing(false);
    }
    set(m_multipleSelectionEnabled, enabled);
}

void GroupedRadioButton::setAnimationDuration(double duration) {
    if (!isGroupModifing()) {
        groupModifing(true);
        for (GroupedRadioButton* b : otherButtons()) b->setAnimationDuration(duration);
        groupModifing(false);
    }
    set(m_animationDuration, duration);
}

GroupedRadioButton* GroupedRadioButton::selectedButton() const {
    if (m_multipleSelectionEnabled) return nullptr;
    if (isSelected()) return const_cast<GroupedRadioButton*>(this);
    for (GroupedRadioButton* b : otherButtons())
        if (b->isSelected()) return b;
    return nullptr;
}

QList<GroupedRadioButton*> GroupedRadioButton::selectedButtons() const {
    QList<GroupedRadioButton*> out;
    if (isSelected()) out << const_cast<GroupedRadioButton*>(this);
    for (GroupedRadioButton* b : otherButtons())
        if (b->isSelected()) out << b;
    return out;
}

void GroupedRadioButton::deselectOtherButtons() {
    for (GroupedRadioButton* b : otherButtons()) b->setSelected(false);
}

// Selection

void GroupedRadioButton::setSelected(bool selected) {
    // In multiple selection every set fades, even to the same state; otherwise only a real change
    // between two generated icons does.
    const bool fade = m_animationDuration > 0 &&
                      (m_multipleSelectionEnabled ||
                       (selected != isSelected() && isGeneratedIcon(m_icon) && isGeneratedIcon(m_iconSelected)));
    if (fade) emit iconAnimationAdded(isSelected(), m_animationDuration);
    Button::setSelected(selected);
    if (!m_multipleSelectionEnabled && selected) deselectOtherButtons();
}

void GroupedRadioButton::touchUpInside() {
    if (m_multipleSelectionEnabled) setSelected(!isSelected());
    else setSelected(true);
}

// Drawing

bool GroupedRadioButton::isGeneratedIcon(const QImage& image) {
    return !image.isNull() && image.text(accessibilityKey) == GeneratedIconName;
}

void GroupedRadioButton::setIcon(const QImage& icon) {
    m_icon = icon;
    m_iconSource = dataUrl(icon);
    emit changed();
}

void GroupedRadioButton::setIconSelected(const QImage& icon) {
    m_iconSelected = icon;
    m_iconSelectedSource = dataUrl(icon);
    emit changed();
}

QImage GroupedRadioButton::imageForState(int state) const {
    return (state & Selected) ? m_iconSelected : m_icon;
}

void GroupedRadioButton::drawButton() {
    if (m_icon.isNull() || isGeneratedIcon(m_icon)) setIcon(drawIconWithSelection(false));
    if (m_iconSelected.isNull() || isGeneratedIcon(m_iconSelected)) setIconSelected(drawIconWithSelection(true));

    const double margin = m_marginWidth;
    const double iconWidth = m_icon.isNull() ? 0 : m_icon.deviceIndependentSize().width();
    m_imageInsets = {};
    if (!m_rightToLeft) {
        m_titleInsets = {0, margin, 0, 0};
        if (m_iconOnRight) {
            // The icon goes to the far edge and the title takes its place, the margin before the icon.
            m_imageInsets = {0, m_frameWidth - iconWidth, 0, 0};
            m_titleInsets = {0, -iconWidth, 0, iconWidth + margin};
        }
    } else {
        m_alignment = AlignRight;
        m_titleInsets = {0, 0, 0, margin};
        if (m_iconOnRight) {
            m_imageInsets = {0, 0, 0, m_frameWidth - iconWidth};
            m_titleInsets = {0, iconWidth + margin, 0, -iconWidth};
        }
    }
}

QImage GroupedRadioButton::drawIconWithSelection(bool selected) {
    const QColor defaultColor = titleColorForState(selected ? SelectedHighlighted : Normal);
    const double side = m_iconSize;
    const double scale = screenScale();
    const int pixels = qMax(1, int(std::ceil(side * scale)));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(scale);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        const double stroke = effectiveStrokeWidth();
        const QRectF ring = QRectF(0, 0, side, side).adjusted(stroke / 2, stroke / 2, -stroke / 2, -stroke / 2);
        painter.setPen(QPen(m_iconColor.isValid() ? m_iconColor : defaultColor, stroke));
        painter.setBrush(Qt::NoBrush);
        if (m_iconSquare) painter.drawRect(ring);
        else painter.drawEllipse(ring);
        if (selected) {
            const double dot = effectiveIndicatorSize();
            const QRectF inner((side - dot) / 2, (side - dot) / 2, dot, dot);
            painter.setPen(Qt::NoPen);
            painter.setBrush(m_indicatorColor.isValid() ? m_indicatorColor : defaultColor);
            if (m_iconSquare) painter.drawRect(inner);
            else painter.drawEllipse(inner);
        }
    }
    image.setText(accessibilityKey, GeneratedIconName);
    return image;
}

QColor GroupedRadioButton::explicitTitleColor(int state) const {
    return state == Normal ? titleColor() : m_titleColors.value(state);
}

QColor GroupedRadioButton::titleColorForState(int state) {
    if (state == SelectedHighlighted) {
        const QColor normal = explicitTitleColor(Normal);
        const QColor current = explicitTitleColor(SelectedHighlighted);
        if (!current.isValid() || current == normal) {
            for (int fallback : {int(Selected), int(Highlighted)}) {
                const QColor c = explicitTitleColor(fallback);
                if (c.isValid() && c != normal) {
                    m_titleColors.insert(SelectedHighlighted, c);
                    break;
                }
            }
        }
    }
    // A state without a colour of its own shows the normal one.
    const QColor own = explicitTitleColor(state);
    return own.isValid() ? own : explicitTitleColor(Normal);
}

void GroupedRadioButton::setTitleColor(const QColor& color, int state) {
    if (state == Normal) Button::setTitleColor(color);
    else m_titleColors.insert(state, color);
    drawButton();
    emit changed();
}

QColor GroupedRadioButton::currentTitleColor() {
    return titleColorForState(isSelected() ? Selected : Normal);
}

QString GroupedRadioButton::dataUrl(const QImage& image) {
    if (image.isNull()) return {};
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return QStringLiteral("data:image/png;base64,") + QString::fromLatin1(png.toBase64());
}

} // namespace ekinora::widgets
