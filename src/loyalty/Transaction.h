#pragma once

#include "QrProduct.h"

#include <QList>
#include <QString>

namespace ekinora::loyalty {

// The dealer's transaction between its screens: three process-wide values, not fields of a screen.
// The entry screen loaded last decides the type; the list reply writes the hash and the products, and
// ending a transaction empties the products.
struct Transaction {
    // "sales" or "award"; "" until an entry screen has loaded.
    static QString& transactionType();
    // The list reply's "transactionId", sent back as "hash".
    static QString& transactionHash();
    static QList<QrProduct>& barcodeProducts();
};

// The user defaults key of the last create-transaction reply's "TransactionId"; only ever overwritten.
inline constexpr auto TransactionIdKey = "transaction_id";

} // namespace ekinora::loyalty
