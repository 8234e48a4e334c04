#include "Controls.h"

#include "Foundation.h"

#include <QMetaMethod>

namespace ekinora::platform {

View::View(const QString& name, QObject* parent) : QObject(parent) { setObjectName(name); }

LayoutConstraint::LayoutConstraint(const QString& name, double constant, QObject* parent)
    : QObject(parent), m_constant(constant) {
    setObjectName(name);
}

void ImageView::setImageWithURL(const QUrl& url, Completion completed) {
    m_completion = std::move(completed);
    setPicture(m_url, url);
    emit imageRequested();
}

void ImageView::imageLoadEnded(const QUrl& url, bool loaded) {
    if (url != m_url || !m_completion) return;
    Completion done = std::move(m_completion);
    m_completion = nullptr;
    done(loaded);
}

void Control::addTarget(QObject* target, const QString& action) {
    if (!hasTarget(target, action, {})) m_targets.append(Target{target, action, {}, {}});
}

bool Control::hasTarget(const QObject* target, const QString& action, const QByteArray& method) const {
    for (const Target& t : m_targets)
        if (t.object == target && t.action == action && t.method == method) return true;
    return false;
}

void Control::sendActions() {
    const QList<Target> targets = m_targets;
    for (const Target& t : targets) {
        if (!t.object) continue;
        if (t.call) {
            t.call(this);
            continue;
        }
        const QMetaObject* meta = t.object->metaObject();
        const QByteArray name = t.action.toLatin1();
        int withSender = -1, plain = -1;
        for (int i = 0; i < meta->methodCount(); ++i) {
            const QMetaMethod m = meta->method(i);
            if (m.name() != name) continue;
            if (m.parameterCount() == 0) plain = i;
            else if (m.parameterCount() == 1 && m.parameterMetaType(0) == QMetaType::fromType<QObject*>()) withSender = i;
        }
        if (withSender >= 0) meta->method(withSender).invoke(t.object, Qt::DirectConnection, Q_ARG(QObject*, this));
        else if (plain >= 0) meta->method(plain).invoke(t.object, Qt::DirectConnection);
        else
            fatal(QStringLiteral("-[%1 %2:]: unrecognized selector sent to instance")
                      .arg(QString::fromLatin1(meta->className()), t.action));
    }
}

TableView::TableView(const QString& name, QObject* parent) : View(name, parent), m_model(this) {}

void TableView::setDataSource(NumberOfRows rows, CellForRow cell, NumberOfSections sections) {
    m_numberOfRows = std::move(rows);
    m_cellForRow = std::move(cell);
    m_numberOfSections = std::move(sections);
}

void TableView::reloadData() {
    ++m_revision;
    emit reloaded();
    refreshRows();
}

void TableView::refreshRows() {
    if (!m_cellForRow) return;
    QList<ListRow> rows;
    const int sections = m_numberOfSections ? m_numberOfSections() : 1;
    for (int s = 0; s < sections; ++s) {
        const int n = numberOfRows(s);
        for (int r = 0; r < n; ++r) {
            ListRow row = m_cellForRow(s, r);
            row.section = s;
            row.row = r;
            rows.append(std::move(row));
        }
    }
    m_model.setRows(std::move(rows));
}

void TableView::setSize(const QSizeF& s) {
    if (m_size == s) return;
    m_size = s;
    emit sizeChanged();
    // A list asks its data source at its first layout, before any reload, and cells sized from the
    // list's width follow it.
    refreshRows();
}

void TableView::selectRow(int row, int section) {
    if (m_didSelectRow) m_didSelectRow(section, row);
}

bool TextField::userEdit(int location, int length, const QString& replacement) {
    location = qBound(0, location, int(m_text.size()));
    length = qBound(0, length, int(m_text.size()) - location);
    if (m_shouldChange && !m_shouldChange(this, location, length, replacement)) return false;
    QString next = m_text;
    next.replace(location, length, replacement);
    setText(next);
    return true;
}

void TextField::userType(const QString& characters) {
    for (QChar c : characters) userEdit(int(m_text.size()), 0, QString(c));
}

void TextField::userReturn() {
    if (m_shouldReturn) m_shouldReturn(this);
}

} // namespace ekinora::platform
