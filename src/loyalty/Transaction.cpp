#include "Transaction.h"

namespace ekinora::loyalty {

QString& Transaction::transactionType() {
    static QString value;
    return value;
}

QString& Transaction::transactionHash() {
    static QString value;
    return value;
}

QList<QrProduct>& Transaction::barcodeProducts() {
    static QList<QrProduct> value;
    return value;
}

} // namespace ekinora::loyalty
