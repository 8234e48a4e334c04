#include "GrantDetailViewController.h"

#include "GrantDocDetailViewController.h"
#include "platform/AlertController.h"
#include "widgets/Colors.h"

namespace ekinora::grants {

using namespace platform;

GrantDetailViewController::GrantDetailViewController(QObject* parent)
    : ViewController(parent), lblTitle(makeControl<Label>("lblTitle")), lblDate(makeControl<Label>("lblDate")),
      lblType(makeControl<Label>("lblType")), viewTitle(makeControl<View>("viewTitle")),
      txtContent(makeControl<Label>("txtContent")) {
    setTitle(QStringLiteral("Hibe Destek"));
    lblTitle->setNumberOfLines(0);
    txtContent->setNumberOfLines(0);
    addSegue(QStringLiteral("GrantDocsSegue"), SegueKind::Show, QStringLiteral("GrantDocsViewController"));
}

QUrl GrantDetailViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Grants/GrantDetailView.qml"));
}

void GrantDetailViewController::viewDidLoad() {
    lblTitle->setText(stringOrNull(member(dictGrant, QStringLiteral("GrantSupportName"))));
    // The description is HTML, drawn as rich text by the arrangement.
    txtContent->setText(stringOrNull(member(dictGrant, QStringLiteral("SMSTemplateName"))));
    lblType->setText(stringWithFormat(QStringLiteral("Destek Tipi: %@"), {member(dictGrant, QStringLiteral("TypeName"))}));
    lblDate->setText(stringWithFormat(QStringLiteral("Son Başvuru Tarihi: %@"), {member(dictGrant, QStringLiteral("EndDateStr"))}));
    lblDate->setCornerRadius(3);
    lblDate->setBorderWidth(1);
    lblDate->setBorderColor(widgets::Colors::cerulean());
}

void GrantDetailViewController::showDocs(QObject*) {
    if (count(member(dictGrant, QStringLiteral("FileList"))) == 0) {
        auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"), QStringLiteral("Belge bulunamadı."));
        alert->addAction(QStringLiteral("Tamam"), AlertController::Default);
        presentViewController(alert, true);
        return;
    }
    performSegueWithIdentifier(QStringLiteral("GrantDocsSegue"));
}

void GrantDetailViewController::prepareForSegue(const StoryboardSegue& segue, QObject*) {
    if (auto* docs = qobject_cast<GrantDocsViewController*>(segue.destination)) {
        QJsonArray list;
        const Json files = member(dictGrant, QStringLiteral("FileList"));
        for (int i = 0, n = count(files); i < n; ++i) list.append(element(files, i));
        docs->arrGrantDocs = list;
    }
}

GrantDocsViewController::GrantDocsViewController(QObject* parent)
    : ViewController(parent), tblDocs(makeControl<TableView>("tblDocs")) {
    tblDocs->setDataSource([this](int) { return int(arrGrantDocs.size()); },
                           [this](int, int row) {
                               QVariantMap cell;
                               if (row < 0 || row >= arrGrantDocs.size()) return cellRow(cell, {});
                               cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("GrantDocCell"));
                               cell.insert(QStringLiteral("lblTitle"),
                                           stringOrNull(member(element(arrGrantDocs, row), QStringLiteral("ConstantValue"))));
                               cell.insert(QStringLiteral("selectionStyle"), 0);
                               return cellRow(cell, QSizeF(tblDocs->size().width(), 56));
                           });
    tblDocs->setDidSelectRow([this](int, int row) {
        if (row < 0 || row >= arrGrantDocs.size()) return;
        m_selectedRow = row;
        performSegueWithIdentifier(QStringLiteral("GrantDocSegue"));
    });
    addSegue(QStringLiteral("GrantDocSegue"), SegueKind::Present, QStringLiteral("GrantDocDetailViewController"));
}

QUrl GrantDocsViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Grants/GrantDocsView.qml")); }

void GrantDocsViewController::viewDidLoad() {
    setTitle(QStringLiteral("Başvuru Belgeleri"));
    tblDocs->reloadData();
}

void GrantDocsViewController::prepareForSegue(const StoryboardSegue& segue, QObject*) {
    if (auto* doc = qobject_cast<GrantDocDetailViewController*>(segue.destination))
        doc->dictGrantDoc = element(arrGrantDocs, m_selectedRow);
}

} // namespace ekinora::grants
