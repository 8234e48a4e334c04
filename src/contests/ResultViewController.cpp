#include "ResultViewController.h"

#include "ContestText.h"
#include "GameRequest.h"
#include "platform/NavigationController.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "widgets/Colors.h"

namespace ekinora::contests {

using namespace platform;

namespace {
// An id from the reply; what is not a number matches nobody.
qint64 idOf(const Json& v) { return v.isDouble() || v.isString() ? integerValue(v) : -1; }
} // namespace

ResultViewController::ResultViewController(QObject* parent)
    : ViewController(parent), tblScores(makeControl<TableView>("tblScores")), viewInfo(makeControl<View>("viewInfo")),
      lblInfo(makeControl<Label>("lblInfo")), lblCongrats(makeControl<Label>("lblCongrats")),
      lblScoreMessage(makeControl<Label>("lblScoreMessage")), constTblHeight(makeControl<LayoutConstraint>("constTblHeight", 0.0)) {
    lblCongrats->setText(QStringLiteral("Tebrikler, kazananlar arasındasınız!"));
    lblCongrats->setNumberOfLines(0);
    lblScoreMessage->setNumberOfLines(0);
    tblScores->setDataSource([this](int) { return int(arrScores.size()); },
                             [this](int, int row) { return cellRow(scoreCell(row), QSizeF(tblScores->size().width(), 41)); });
}

QUrl ResultViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Contests/ResultView.qml")); }

void ResultViewController::viewDidLoad() {
    arrScores = QJsonArray();
    tblScores->setCornerRadius(3);
    tblScores->setBorderWidth(1);
    tblScores->setBorderColor(widgets::Colors::cerulean());
    getScores();
    viewInfo->setHidden(true);
    tblScores->setHidden(true);
    lblCongrats->setHidden(true);
    setTitle(QStringLiteral("Çekiliş Sonucu"));
}

void ResultViewController::getScores() {
    service::ScreenCall call(this, QStringLiteral("getScores"), service::ScreenCall::WithHud);
    GameRequest request;
    request.doParam = QStringLiteral("surveys/detail");
    request.gameID = gameID;
    request.getContests(call.done([this](const Json& response) {
                            service::log(description(response));
                            const Json item = path(response, {QStringLiteral("data"), QStringLiteral("surveyItem")});
                            arrScores = service::listOf(member(item, QStringLiteral("winners")));
                            if (!arrScores.isEmpty()) {
                                viewInfo->setHidden(true);
                                tblScores->setHidden(false);
                                const Json current = member(item, QStringLiteral("current_user"));
                                lblScoreMessage->setText(stringOrNull(member(current, QStringLiteral("result_description"))));
                                currentUserID = idOf(member(current, QStringLiteral("farmer_id")));
                                lblCongrats->setHidden(!isString(member(current, QStringLiteral("result")), QStringLiteral("won")));
                                tblScores->reloadData();
                                constTblHeight->setConstant(double(arrScores.size()) * 41);
                            } else {
                                lblInfo->setText(dayOf(member(item, QStringLiteral("ends_at"))));
                                viewInfo->setHidden(false);
                                tblScores->setHidden(true);
                            }
                        }),
                        call.failed());
}

QVariantMap ResultViewController::scoreCell(int row) const {
    QVariantMap cell;
    if (row < 0 || row >= arrScores.size()) return cell;
    const Json winner = arrScores.at(row);
    const bool me = idOf(member(winner, QStringLiteral("farmer_id"))) == currentUserID &&
                    isString(member(winner, QStringLiteral("result")), QStringLiteral("won"));
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("ScoreCell"));
    cell.insert(QStringLiteral("lblOrder"), stringWithFormat(QStringLiteral("%ld."), {long(row + 1)}));
    cell.insert(QStringLiteral("lblName"), stringOrNull(member(winner, QStringLiteral("fullname"))));
    cell.insert(QStringLiteral("textColor"), me ? widgets::Colors::cerulean() : widgets::Colors::black());
    cell.insert(QStringLiteral("selectionStyle"), 0);
    return cell;
}

QString ResultViewController::stringFromTimeInterval(double seconds) {
    const long whole = long(seconds);
    return stringWithFormat(QStringLiteral("%0.2ld:%0.2ld"), {(whole / 60) % 60, whole % 60});
}

void ResultViewController::goHome(QObject*) {
    if (NavigationController* nav = navigationController()) {
        while (nav->depth() > 1) nav->popViewControllerAnimated(true);
    }
}

} // namespace ekinora::contests
