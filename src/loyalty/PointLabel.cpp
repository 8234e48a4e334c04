#include "PointLabel.h"

namespace ekinora::loyalty {

PointLabel::PointLabel(const QString& name, Mark mark, QObject* parent) : platform::Label(name, parent), m_mark(mark) {}

void PointLabel::setAttributedText(const QString& text, int start, int length) {
    const bool same = text == this->text() && start == m_start && length == m_length;
    m_start = start;
    m_length = start < 0 ? 0 : length;
    setText(text);
    if (!same) emit changed();
}

QString PointLabel::richText() const {
    const QString all = text();
    if (m_start < 0) return all.toHtmlEscaped();
    QString style = QStringLiteral("font-size:%1px; font-weight:900;").arg(m_mark.fontSize);
    if (m_mark.foreground.isValid()) style += QStringLiteral(" color:%1;").arg(m_mark.foreground.name());
    if (m_mark.background.isValid()) style += QStringLiteral(" background-color:%1;").arg(m_mark.background.name());
    return all.left(m_start).toHtmlEscaped() + QStringLiteral("<span style=\"%1\">").arg(style) +
           all.mid(m_start, m_length).toHtmlEscaped() + QStringLiteral("</span>") +
           all.mid(m_start + m_length).toHtmlEscaped();
}

} // namespace ekinora::loyalty
