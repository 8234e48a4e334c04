#pragma once

#include "platform/Controls.h"

namespace ekinora::loyalty {

// A label whose text may carry one marked range drawn with attributes of its own (an attributed text).
// The arrangement draws `richText`: the text with the marked range styled.
class PointLabel : public ekinora::platform::Label {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(int markStart READ markStart NOTIFY changed)
    Q_PROPERTY(int markLength READ markLength NOTIFY changed)
    Q_PROPERTY(QString richText READ richText NOTIFY changed)
public:
    // The attributes of the marked range; an invalid colour leaves the label's own.
    struct Mark {
        double fontSize = 14;
        QColor foreground;
        QColor background;
    };

    PointLabel(const QString& name, Mark mark, QObject* parent = nullptr);

    // The text with a marked range; a start below 0 marks nothing.
    void setAttributedText(const QString& text, int start, int length);
    // A plain text, no range marked.
    void setPlainText(const QString& text) { setAttributedText(text, -1, 0); }

    int markStart() const { return m_start; }
    int markLength() const { return m_length; }
    QString markedText() const { return m_start < 0 ? QString() : text().mid(m_start, m_length); }
    const Mark& mark() const { return m_mark; }
    QString richText() const;

private:
    Mark m_mark;
    int m_start = -1;
    int m_length = 0;
};

} // namespace ekinora::loyalty
