#pragma once

#include "platform/Controls.h"

#include <QPointF>
#include <QPointer>
#include <QRectF>
#include <QStringList>

namespace ekinora::widgets {

// A list that unrolls up or down from a button and writes the picked title into the button. The screen
// that opens it is its delegate: once a row is picked, the list has closed and the button carries the
// title, the delegate's dropDownListDelegateMethod(QObject* sender) is called with the list.
//
// The list lives as long as the button's screen (it joins the button's parent when shown); a closed
// list keeps its place with a height of 0. Its arrangement is DropDownListView.qml, which writes the
// button's geometry into senderFrame.
class DropDownList : public ekinora::platform::View {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(ekinora::platform::TableView* table READ table CONSTANT)
    Q_PROPERTY(ekinora::platform::Button* btnSender READ btnSender NOTIFY changed)
    Q_PROPERTY(QStringList list READ list NOTIFY changed)
    Q_PROPERTY(QStringList imageList READ imageList NOTIFY changed)
    Q_PROPERTY(QString animationDirection READ animationDirection NOTIFY changed)
    Q_PROPERTY(float rowHeight READ rowHeight WRITE setRowHeight NOTIFY changed)
    Q_PROPERTY(int selectedIndex READ selectedIndex WRITE setSelectedIndex NOTIFY changed)
    Q_PROPERTY(int tag READ tag WRITE setTag NOTIFY changed)
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(double listHeight READ listHeight NOTIFY changed)
    Q_PROPERTY(QRectF senderFrame READ senderFrame WRITE setSenderFrame NOTIFY changed)
    Q_PROPERTY(QRectF frame READ frame NOTIFY changed)
    Q_PROPERTY(QPointF shadowOffset READ shadowOffset NOTIFY changed)
    Q_PROPERTY(bool senderImageFlipped READ senderImageFlipped NOTIFY changed)
    Q_PROPERTY(double animationDuration READ animationDuration CONSTANT)
    Q_PROPERTY(double shadowOpacity READ shadowOpacity CONSTANT)
    Q_PROPERTY(QColor tableBackgroundColor READ tableBackgroundColor CONSTANT)
    Q_PROPERTY(QColor tableBorderColor READ tableBorderColor CONSTANT)
    Q_PROPERTY(double tableBorderWidth READ tableBorderWidth CONSTANT)
    Q_PROPERTY(QColor separatorColor READ separatorColor CONSTANT)
    Q_PROPERTY(QString cellFontName READ cellFontName CONSTANT)
    Q_PROPERTY(double cellFontSize READ cellFontSize CONSTANT)
public:
    static constexpr double AnimationDuration = 0.5;
    static constexpr float DefaultRowHeight = 50.0f;
    static constexpr double ShadowOpacity = 0.1;
    static constexpr double TableBorderWidth = 0.5;
    static constexpr double CellFontSize = 16.0;
    static constexpr int SeparatorStyleSingleLine = 1;

    explicit DropDownList(const QString& name = QStringLiteral("dropDownList"), QObject* parent = nullptr);

    // showDropDown:::::: the button, the height, the titles, the images (names or addresses; may be
    // shorter or longer than the titles) and the direction, "up" or "down".
    void showDropDown(platform::Button* sender, float height, const QStringList& list,
                      const QStringList& imageList, const QString& direction);
    void hideDropDown(platform::Button* sender);

    // The screen, which answers dropDownListDelegateMethod with a QObject* sender; a delegate without
    // it stops the application when a row is picked, as an unrecognised selector does.
    QObject* delegate() const { return m_delegate; }
    void setDelegate(QObject* delegate) { m_delegate = delegate; }

    platform::TableView* table() const { return m_table; }
    platform::Button* btnSender() const { return m_sender; }
    QStringList list() const { return m_list; }
    QStringList imageList() const { return m_imageList; }
    QString animationDirection() const { return m_direction; }
    float rowHeight() const { return m_rowHeight; }
    void setRowHeight(float h) { set(m_rowHeight, h); }
    int selectedIndex() const { return m_selectedIndex; }
    void setSelectedIndex(int i) { set(m_selectedIndex, i); }
    int tag() const { return m_tag; }
    void setTag(int t) { set(m_tag, t); }
    // Kept with the list's state; nothing draws into it.
    platform::ImageView* imgView() const { return m_imgView; }

    // Open between a show and the next hide; the height asked for at the show.
    bool isOpen() const { return m_open; }
    double listHeight() const { return m_height; }
    // The button's frame in its parent's coordinates, kept current by the arrangement.
    QRectF senderFrame() const { return m_senderFrame; }
    void setSenderFrame(const QRectF& f) { set(m_senderFrame, f); }
    // Above the button for "up", under it for "down", 0 high when closed; unset for any other direction.
    QRectF frame() const;
    QPointF shadowOffset() const;
    // Opening downwards turns the button's picture upside down until the list closes.
    bool senderImageFlipped() const { return m_flipped; }

    // The table's data source and delegate.
    Q_INVOKABLE int numberOfRows() const { return int(m_list.size()); }
    Q_INVOKABLE double heightForRow(int row) const;
    Q_INVOKABLE QString titleForRow(int row) const;
    // The row's picture, or an empty text for a row without one.
    Q_INVOKABLE QString imageForRow(int row) const;
    // A tap on a row.
    Q_INVOKABLE void didSelectRow(int row);

    double animationDuration() const { return AnimationDuration; }
    double shadowOpacity() const { return ShadowOpacity; }
    QColor tableBackgroundColor() const;
    QColor tableBorderColor() const;
    double tableBorderWidth() const { return TableBorderWidth; }
    QColor separatorColor() const;
    QString cellFontName() const { return QStringLiteral("AvenirNext-Medium"); }
    double cellFontSize() const { return CellFontSize; }

private:
    void callDelegate();

    platform::TableView* m_table;
    platform::ImageView* m_imgView = nullptr;
    QPointer<platform::Button> m_sender;
    QPointer<QObject> m_delegate;
    QStringList m_list;
    QStringList m_imageList;
    QString m_direction;
    float m_rowHeight = 0.0f;
    int m_selectedIndex = 0;
    int m_tag = 0;
    bool m_open = false;
    double m_height = 0;
    QRectF m_senderFrame;
    bool m_flipped = false;
};

} // namespace ekinora::widgets
