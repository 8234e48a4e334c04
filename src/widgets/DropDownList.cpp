#include "DropDownList.h"
#include "Colors.h"

#include "platform/Foundation.h"


#include <QMetaMethod>

namespace ekinora::widgets {

using platform::Button;

DropDownList::DropDownList(const QString& name, QObject* parent)
    : View(name, parent), m_table(new platform::TableView(QStringLiteral("table"), this)) {
    m_table->setDataSource([this](int) { return numberOfRows(); },
                           [this](int, int row) {
                               return platform::ListRow{QStringLiteral("Cell"),
                                                        {{QStringLiteral("title"), titleForRow(row)},
                                                         {QStringLiteral("image"), imageForRow(row)}},
                                                        QSizeF(m_senderFrame.width(), heightForRow(row))};
                           });
    m_table->setDidSelectRow([this](int, int row) { didSelectRow(row); });
}

void DropDownList::showDropDown(Button* sender, float height, const QStringList& list, const QStringList& imageList,
                                const QString& direction) {
    m_sender = sender;
    m_direction = direction;
    m_list = list;
    m_imageList = imageList;
    m_height = height;
    // The list hangs in the button's superview, and lives as long as it does.
    if (sender && sender->parent() && !parent()) setParent(sender->parent());
    m_open = true;
    if (direction == QLatin1String("down")) m_flipped = true;
    m_table->reloadData();
    emit changed();
}

void DropDownList::hideDropDown(Button* sender) {
    Q_UNUSED(sender);
    m_open = false;
    m_flipped = false;
    emit changed();
}

QRectF DropDownList::frame() const {
    const QRectF b = m_senderFrame;
    const double h = m_open ? m_height : 0.0;
    if (m_direction == QLatin1String("up")) return QRectF(b.x(), m_open ? b.y() - h : b.y(), b.width(), h);
    if (m_direction == QLatin1String("down")) return QRectF(b.x(), b.y() + b.height(), b.width(), h);
    return {};
}

QPointF DropDownList::shadowOffset() const {
    if (m_direction == QLatin1String("up")) return {-5, -5};
    if (m_direction == QLatin1String("down")) return {-5, 5};
    return {0, -3}; // the layer's own default
}

double DropDownList::heightForRow(int) const { return m_rowHeight == 0.0f ? DefaultRowHeight : m_rowHeight; }

QString DropDownList::titleForRow(int row) const { return m_list.value(row); }

QString DropDownList::imageForRow(int row) const {
    // Pictures go with titles only when the two lists match, or as far as a shorter picture list
    // reaches; a longer picture list gives none.
    const qsizetype images = m_imageList.size(), titles = m_list.size();
    if (images == titles || (images < titles && row < images)) return m_imageList.value(row);
    return {};
}

void DropDownList::didSelectRow(int row) {
    if (row < 0 || row >= m_list.size()) return;
    hideDropDown(m_sender);
    setSelectedIndex(row);
    if (m_sender) m_sender->setTitle(titleForRow(row));
    callDelegate();
}

void DropDownList::callDelegate() {
    QObject* delegate = m_delegate;
    if (!delegate) return;
    const QMetaObject* meta = delegate->metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        const QMetaMethod m = meta->method(i);
        if (m.name() == "dropDownListDelegateMethod" && m.parameterCount() == 1 &&
            m.parameterMetaType(0) == QMetaType::fromType<QObject*>()) {
            m.invoke(delegate, Qt::DirectConnection, Q_ARG(QObject*, this));
            return;
        }
    }
    platform::fatal(QStringLiteral("-[%1 dropDownListDelegateMethod:]: unrecognized selector sent to instance")
                        .arg(QString::fromLatin1(meta->className())));
}

QColor DropDownList::tableBackgroundColor() const { return QColor::fromRgbF(0.239f, 0.239f, 0.239f, 1.0f); }
QColor DropDownList::tableBorderColor() const { return QColor::fromRgbF(1.0f / 3, 1.0f / 3, 1.0f / 3); }
QColor DropDownList::separatorColor() const { return Colors::cerulean(); }

} // namespace ekinora::widgets
