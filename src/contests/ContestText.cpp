#include "ContestText.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <cmath>

namespace ekinora::contests {

double getTextHeightFromString(const QString& text, double viewWidth, double padding, const QString&, double fontSize) {
    if (text.isEmpty() || viewWidth <= 0) return padding;
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(int(fontSize));
        const QFontMetricsF metrics(font);
        const QRectF box = metrics.boundingRect(QRectF(0, 0, viewWidth, 1e6), Qt::TextWordWrap, text);
        return std::ceil(box.height()) + padding;
    }
    const double perLine = std::max(1.0, std::floor(viewWidth / (fontSize * 0.55)));
    const double lines = std::ceil(double(text.size()) / perLine);
    return std::ceil(lines * fontSize * 1.2) + padding;
}

QString dayOf(const platform::Json& seconds) {
    const qint64 value = seconds.isDouble() || seconds.isString() ? platform::integerValue(seconds) : 0;
    return platform::formatDate(QDateTime::fromSecsSinceEpoch(value), QStringLiteral("dd.MM.yyyy"));
}

} // namespace ekinora::contests
