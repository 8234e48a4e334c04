#pragma once

#include <QList>
#include <QString>

namespace ekinora::shell {

// The side menu's items, keyed by the codes the service lists in the user's "menu". Labels are shown
// and compared as they stand, the "  YENİ " mark included.
struct MenuItem {
    int code;
    QString label;
    QString icon;
    QString target; // storyboard identifier of the content's root
};

const QList<MenuItem>& menuItems();
// The item of a code, or null for a code outside the table.
const MenuItem* menuItem(int code);

// The mark of the items that are new, as it stands in their labels.
inline const QString NewMark = QStringLiteral("  YENİ ");

} // namespace ekinora::shell
