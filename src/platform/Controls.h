#pragma once

// Controls as small models named like the screen's controls. QML binds to them; the screen's code sets
// them. A control's objectName is its name in the screen.

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QSizeF>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>
#include <functional>

#include "ListModel.h"

// A named control that the screen's view reaches as a typed property of its controller: put
// `UI_OUTLET(ekinora::platform::Label, lblFarm)` beside the member `platform::Label* lblFarm;`.
#define UI_OUTLET(Type, name) Q_PROPERTY(Type* name MEMBER name CONSTANT)

namespace ekinora::platform {

class View : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(UIView)
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(bool hidden READ isHidden WRITE setHidden NOTIFY changed)
    Q_PROPERTY(double alpha READ alpha WRITE setAlpha NOTIFY changed)
    Q_PROPERTY(bool userInteractionEnabled READ userInteractionEnabled WRITE setUserInteractionEnabled NOTIFY changed)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY changed)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor NOTIFY changed)
    Q_PROPERTY(double borderWidth READ borderWidth WRITE setBorderWidth NOTIFY changed)
    Q_PROPERTY(double cornerRadius READ cornerRadius WRITE setCornerRadius NOTIFY changed)
    Q_PROPERTY(bool clipsToBounds READ clipsToBounds WRITE setClipsToBounds NOTIFY changed)
public:
    explicit View(const QString& name = {}, QObject* parent = nullptr);

    bool isHidden() const { return m_hidden; }
    void setHidden(bool h) { set(m_hidden, h); }
    double alpha() const { return m_alpha; }
    void setAlpha(double a) { set(m_alpha, a); }
    bool userInteractionEnabled() const { return m_interaction; }
    void setUserInteractionEnabled(bool e) { set(m_interaction, e); }
    QColor backgroundColor() const { return m_background; }
    void setBackgroundColor(const QColor& c) { set(m_background, c); }
    QColor borderColor() const { return m_borderColor; }
    void setBorderColor(const QColor& c) { set(m_borderColor, c); }
    double borderWidth() const { return m_borderWidth; }
    void setBorderWidth(double w) { set(m_borderWidth, w); }
    double cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(double r) { set(m_cornerRadius, r); }
    bool clipsToBounds() const { return m_clips; }
    void setClipsToBounds(bool c) { set(m_clips, c); }

signals:
    void changed();

protected:
    template <class T> void set(T& field, const T& value) {
        if (field == value) return;
        field = value;
        emit changed();
    }

private:
    bool m_hidden = false;
    double m_alpha = 1.0;
    bool m_interaction = true;
    QColor m_background = Qt::transparent;
    QColor m_borderColor = Qt::transparent;
    double m_borderWidth = 0;
    double m_cornerRadius = 0;
    bool m_clips = false;
};

class Label : public ekinora::platform::View {
    Q_OBJECT
    QML_NAMED_ELEMENT(UILabel)
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY changed)
    Q_PROPERTY(int numberOfLines READ numberOfLines WRITE setNumberOfLines NOTIFY changed)
public:
    using View::View;
    QString text() const { return m_text; }
    void setText(const QString& t) { set(m_text, t); }
    QColor textColor() const { return m_color; }
    void setTextColor(const QColor& c) { set(m_color, c); }
    int numberOfLines() const { return m_lines; }
    void setNumberOfLines(int n) { set(m_lines, n); }

private:
    QString m_text;
    QColor m_color;
    int m_lines = 1;
};

// Target-action pairs accumulate, as addTarget:action: does; a pair the control already has is not
// added again, so it is called once.
class Control : public ekinora::platform::View {
    Q_OBJECT
    QML_NAMED_ELEMENT(UIControl)
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY changed)
    Q_PROPERTY(bool selected READ isSelected WRITE setSelected NOTIFY changed)
public:
    using View::View;
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool e) { set(m_enabled, e); }
    bool isSelected() const { return m_selected; }
    void setSelected(bool s) { set(m_selected, s); }

    // By selector name: a name the target lacks stops the application when the control fires.
    void addTarget(QObject* target, const QString& action);
    // By method, checked by the compiler; the action's name stays the selector's for the log.
    template <class T> void addTarget(T* target, void (T::*action)(QObject*)) {
        const QByteArray method(reinterpret_cast<const char*>(&action), sizeof(action));
        if (hasTarget(target, QString(), method)) return;
        QPointer<T> t(target);
        m_targets.append(Target{target, QString(), [t, action](QObject* sender) {
                                    if (t) (t.data()->*action)(sender);
                                }, method});
    }
    void removeTargets() { m_targets.clear(); }
    int targetCount() const { return int(m_targets.size()); }
    // Calls every target's action with this control as the sender.
    Q_INVOKABLE void sendActions();

private:
    struct Target {
        QPointer<QObject> object;
        QString action;
        std::function<void(QObject*)> call;
        QByteArray method; // the method's identity, for a pair added by method
    };
    bool hasTarget(const QObject* target, const QString& action, const QByteArray& method) const;
    QList<Target> m_targets;
    bool m_enabled = true;
    bool m_selected = false;
};

class Button : public ekinora::platform::Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(UIButton)
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY changed)
    Q_PROPERTY(QString image READ image WRITE setImage NOTIFY changed)
    Q_PROPERTY(QColor titleColor READ titleColor WRITE setTitleColor NOTIFY changed)
    Q_PROPERTY(int tag READ tag WRITE setTag NOTIFY changed)
public:
    using Control::Control;
    QString title() const { return m_title; }
    void setTitle(const QString& t) { set(m_title, t); }
    QString image() const { return m_image; }
    void setImage(const QString& i) { set(m_image, i); }
    QColor titleColor() const { return m_titleColor; }
    void setTitleColor(const QColor& c) { set(m_titleColor, c); }
    int tag() const { return m_tag; }
    void setTag(int t) { set(m_tag, t); }
    // A tap: what the user does, and what tests do through the object contract.
    Q_INVOKABLE void tap() {
        if (isEnabled() && userInteractionEnabled() && !isHidden()) sendActions();
    }

private:
    QString m_title;
    QString m_image;
    QColor m_titleColor;
    int m_tag = 0;
};

class TextField : public ekinora::platform::Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(UITextField)
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(QString placeholder READ placeholder WRITE setPlaceholder NOTIFY changed)
    Q_PROPERTY(bool secureTextEntry READ secureTextEntry WRITE setSecureTextEntry NOTIFY changed)
    Q_PROPERTY(int keyboardType READ keyboardType WRITE setKeyboardType NOTIFY changed)
    Q_PROPERTY(bool firstResponder READ isFirstResponder NOTIFY changed)
public:
    using Control::Control;
    // textField:shouldChangeCharactersInRange:replacementString:; true lets the change through.
    using ShouldChange = std::function<bool(TextField*, int location, int length, const QString& replacement)>;
    using ShouldReturn = std::function<bool(TextField*)>;

    QString text() const { return m_text; }
    void setText(const QString& t) { set(m_text, t); }
    QString placeholder() const { return m_placeholder; }
    void setPlaceholder(const QString& p) { set(m_placeholder, p); }
    bool secureTextEntry() const { return m_secure; }
    void setSecureTextEntry(bool s) { set(m_secure, s); }
    int keyboardType() const { return m_keyboard; }
    void setKeyboardType(int k) { set(m_keyboard, k); }
    bool isFirstResponder() const { return m_firstResponder; }
    Q_INVOKABLE void becomeFirstResponder() { set(m_firstResponder, true); }
    Q_INVOKABLE void resignFirstResponder() { set(m_firstResponder, false); }

    void setShouldChange(ShouldChange f) { m_shouldChange = std::move(f); }
    void setShouldReturn(ShouldReturn f) { m_shouldReturn = std::move(f); }

    // The user replaces the characters in [location, location + length) with the replacement; the
    // delegate may refuse. Returns whether the text changed.
    Q_INVOKABLE bool userEdit(int location, int length, const QString& replacement);
    // Typing at the end of the text, one character at a time.
    Q_INVOKABLE void userType(const QString& characters);
    Q_INVOKABLE void userReturn();

private:
    QString m_text;
    QString m_placeholder;
    bool m_secure = false;
    int m_keyboard = 0;
    bool m_firstResponder = false;
    ShouldChange m_shouldChange;
    ShouldReturn m_shouldReturn;
};

class ImageView : public ekinora::platform::View {
    Q_OBJECT
    QML_NAMED_ELEMENT(UIImageView)
    QML_UNCREATABLE("Made by its screen.")
    // A bundled picture's name, or a remote address. The picture's own properties notify apart from the
    // view's, so that what draws the picture loads it again only when the picture changes.
    Q_PROPERTY(QString image READ image WRITE setImage NOTIFY imageChanged)
    Q_PROPERTY(QUrl imageUrl READ imageUrl WRITE setImageUrl NOTIFY imageChanged)
    // The size a vector picture is drawn at; empty: its own size.
    Q_PROPERTY(QSizeF renderSize READ renderSize WRITE setRenderSize NOTIFY imageChanged)
    // The view's size once the arrangement has laid it out, written by the arrangement.
    Q_PROPERTY(QSizeF frameSize READ frameSize WRITE setFrameSize NOTIFY frameSizeChanged)
public:
    // Runs once the view has finished loading the address it was given, with or without a picture.
    using Completion = std::function<void(bool loaded)>;

    using View::View;
    QString image() const { return m_image; }
    void setImage(const QString& i) { setPicture(m_image, i); }
    QUrl imageUrl() const { return m_url; }
    void setImageUrl(const QUrl& u) { setImageWithURL(u); }
    QSizeF renderSize() const { return m_renderSize; }
    void setRenderSize(const QSizeF& s) { setPicture(m_renderSize, s); }
    QSizeF frameSize() const { return m_frameSize; }
    void setFrameSize(const QSizeF& s) {
        if (m_frameSize == s) return;
        m_frameSize = s;
        emit frameSizeChanged();
    }

    // sd_setImageWithURL:completed: a later address replaces the wait for an earlier one.
    void setImageWithURL(const QUrl& url, Completion completed = {});
    bool isWaitingForImage() const { return bool(m_completion); }
    // Called by the view (or a test) when loading an address has ended.
    Q_INVOKABLE void imageLoadEnded(const QUrl& url, bool loaded);

signals:
    void imageChanged();
    void frameSizeChanged();
    // An address was given, also the one already shown.
    void imageRequested();

private:
    template <class T> void setPicture(T& field, const T& value) {
        if (field == value) return;
        field = value;
        emit imageChanged();
        emit changed();
    }
    QString m_image;
    QUrl m_url;
    QSizeF m_renderSize;
    QSizeF m_frameSize;
    Completion m_completion;
};

// An Auto Layout constraint whose constant a screen changes (a height of 0 hides a box).
class LayoutConstraint : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(NSLayoutConstraint)
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(double constant READ constant WRITE setConstant NOTIFY changed)
public:
    explicit LayoutConstraint(const QString& name = {}, double constant = 0, QObject* parent = nullptr);
    double constant() const { return m_constant; }
    void setConstant(double c) {
        if (m_constant == c) return;
        m_constant = c;
        emit changed();
    }
signals:
    void changed();

private:
    double m_constant = 0;
};

// A table or collection view: the rows come from the data source on the controller and are refreshed
// only by reloadData, which asks the data source for every row and hands them to the list's model; the
// model changes only the rows that differ.
class TableView : public ekinora::platform::View {
    Q_OBJECT
    QML_NAMED_ELEMENT(UITableView)
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(int revision READ revision NOTIFY reloaded)
    Q_PROPERTY(bool scrollEnabled READ scrollEnabled WRITE setScrollEnabled NOTIFY changed)
    Q_PROPERTY(ekinora::platform::ListModel* rows READ rows CONSTANT)
    // The list's size once laid out, written by the arrangement; cells sized from it are sized again.
    Q_PROPERTY(QSizeF size READ size WRITE setSize NOTIFY sizeChanged)
public:
    using NumberOfSections = std::function<int()>;
    using NumberOfRows = std::function<int(int section)>;
    using CellForRow = std::function<ListRow(int section, int row)>;
    using DidSelectRow = std::function<void(int section, int row)>;

    explicit TableView(const QString& name = {}, QObject* parent = nullptr);

    int revision() const { return m_revision; }
    bool scrollEnabled() const { return m_scroll; }
    void setScrollEnabled(bool s) { set(m_scroll, s); }
    ListModel* rows() { return &m_model; }
    QSizeF size() const { return m_size; }
    void setSize(const QSizeF& s);

    // The data source and delegate, functions of the screen.
    void setDataSource(NumberOfRows rows, CellForRow cell, NumberOfSections sections = {});
    void setDidSelectRow(DidSelectRow f) { m_didSelectRow = std::move(f); }

    Q_INVOKABLE void reloadData();
    // A tap on a row, from the arrangement or a test.
    Q_INVOKABLE void selectRow(int row, int section = 0);
    // What the data source says now: the screen's rules run as when the list asks.
    int numberOfRows(int section = 0) const { return m_numberOfRows ? m_numberOfRows(section) : 0; }
    ListRow cellForRow(int row, int section = 0) const { return m_cellForRow ? m_cellForRow(section, row) : ListRow{}; }

signals:
    void reloaded();
    void sizeChanged();

protected:
    // Rows from the data source into the model.
    virtual void refreshRows();

private:
    int m_revision = 0;
    bool m_scroll = true;
    QSizeF m_size;
    ListModel m_model;
    NumberOfSections m_numberOfSections;
    NumberOfRows m_numberOfRows;
    CellForRow m_cellForRow;
    DidSelectRow m_didSelectRow;
};

class BarButtonItem : public ekinora::platform::Button {
    Q_OBJECT
    QML_NAMED_ELEMENT(UIBarButtonItem)
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(QString badgeValue READ badgeValue WRITE setBadgeValue NOTIFY changed)
    Q_PROPERTY(QUrl overlaySource READ overlaySource CONSTANT)
public:
    using Button::Button;
    QString badgeValue() const { return m_badge; }
    // Every assignment is told, an unchanged value included: an item's own badge may act on each.
    void setBadgeValue(const QString& b) {
        set(m_badge, b);
        emit badgeValueAssigned();
    }
    // An arrangement of the item's own drawn over its button, with the item as its model (a badge that
    // behaves otherwise than the plain one); empty for the plain badge.
    virtual QUrl overlaySource() const { return {}; }

signals:
    void badgeValueAssigned();

private:
    QString m_badge;
};

} // namespace ekinora::platform
