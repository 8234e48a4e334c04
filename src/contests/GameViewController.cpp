#include "GameViewController.h"

#include "ContestText.h"
#include "GameRequest.h"
#include "QuestionsViewController.h"
#include "ResultViewController.h"
#include "notifications/Bell.h"
#include "platform/AlertController.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "widgets/Colors.h"

namespace ekinora::contests {

using namespace platform;

namespace {
const QString Ended = QStringLiteral("ended");
const QString Pending = QStringLiteral("pending");

bool isEnded(const Json& game) { return isString(member(game, QStringLiteral("status")), Ended); }
// A null where a flag or a date should be reads as false or as nothing, never as a stop.
bool isCompleted(const Json& game) {
    const Json done = member(game, QStringLiteral("already_completed"));
    return !done.isUndefined() && !done.isNull() && (done.isBool() || done.isDouble() || done.isString()) && boolValue(done);
}
} // namespace

GameViewController::GameViewController(QObject* parent)
    : ViewController(parent), tblGame(makeControl<TableView>("tblGame")), imgInfoBack(makeControl<ImageView>("imgInfoBack")),
      lblInfoBack(makeControl<Label>("lblInfoBack")) {
    setTitle(QStringLiteral("Çekiliş"));
    notifications::Bell::install(this);
    imgInfoBack->setImage(QStringLiteral("gameInfoBack"));
    lblInfoBack->setNumberOfLines(0);
    lblInfoBack->setText(QStringLiteral("Şu anda katılabileceğiniz bir yarışma bulunmuyor. Yeni yarışmalar "
                                        "başladığında burada göreceksiniz."));
    tblGame->setDataSource([this](int) { return int(arrGames.size()); },
                           [this](int, int row) { return cellRow(gameCell(row), QSizeF(tblGame->size().width(), 150)); });
    tblGame->setDidSelectRow([this](int, int row) { didSelectRow(row); });
    addSegue(QStringLiteral("QuestionsSegue"), SegueKind::Show, QStringLiteral("QuestionsViewController"));
    addSegue(QStringLiteral("ResultSegue"), SegueKind::Show, QStringLiteral("ResultViewController"));
}

QUrl GameViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Contests/GameView.qml")); }

void GameViewController::viewDidLoad() {
    arrGames = QJsonArray();
    imgInfoBack->setHidden(true);
    lblInfoBack->setHidden(true);
}

void GameViewController::viewDidAppear(bool) {
    setNotifBadge();
    getGames(nullptr);
    notifications::Bell::observe(this);
}

void GameViewController::viewDidDisappear(bool) {
    // getGames only appends: a screen that comes back starts from an empty list.
    arrGames = QJsonArray();
}

void GameViewController::setNotifBadge() { notifications::Bell::setNotifBadge(this); }

void GameViewController::getGames(QObject* sender) {
    service::ScreenCall call(this, QStringLiteral("getGames"), service::ScreenCall::WithHud);
    GameRequest request;
    request.doParam = QStringLiteral("surveys");
    if (sender) request.pageToken = true;
    request.getContests(call.done([this](const Json& response) {
                            service::log(description(response));
                            for (const auto& game : service::listOf(path(response, {QStringLiteral("data"), QStringLiteral("surveys")})))
                                arrGames.append(game);
                            imgInfoBack->setHidden(!arrGames.isEmpty());
                            lblInfoBack->setHidden(!arrGames.isEmpty());
                            tblGame->reloadData();
                        }),
                        call.failed());
}

QVariantMap GameViewController::gameCell(int row) const {
    QVariantMap cell;
    if (row < 0 || row >= arrGames.size()) return cell;
    const Json game = arrGames.at(row);
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("GameCell"));
    cell.insert(QStringLiteral("lblContent"), stringOrNull(member(game, QStringLiteral("name"))));
    cell.insert(QStringLiteral("lblInfo"),
                stringWithFormat(QStringLiteral("Tamamlanma Tarihi: %@"), {dayOf(member(game, QStringLiteral("ends_at")))}));
    cell.insert(QStringLiteral("lblDescription"), stringOrNull(member(game, QStringLiteral("description"))));
    QColor back = widgets::Colors::leaf(), status = widgets::Colors::leaf();
    QString action = QStringLiteral("KATIL");
    if (isEnded(game)) {
        action = QStringLiteral("SONUÇLAR");
        back = widgets::Colors::cerulean();
        status = widgets::Colors::black();
    } else if (isCompleted(game)) {
        action = QStringLiteral("SONUÇLAR");
        back = widgets::Colors::border();
        status = widgets::Colors::black();
    }
    cell.insert(QStringLiteral("lblAction"), action);
    cell.insert(QStringLiteral("lblActionBackground"), back);
    cell.insert(QStringLiteral("imgStatusColor"), status);
    cell.insert(QStringLiteral("selectionStyle"), 0);
    return cell;
}

void GameViewController::didSelectRow(int row) {
    if (row < 0 || row >= arrGames.size()) return;
    const Json game = arrGames.at(row);
    QObject indexPath;
    indexPath.setProperty("row", row);
    if (isEnded(game) || isCompleted(game)) {
        performSegueWithIdentifier(QStringLiteral("ResultSegue"), &indexPath);
    } else if (isString(member(game, QStringLiteral("status")), Pending)) {
        auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"), QStringLiteral("Bu yarışma henüz başlamamıştır."));
        alert->addAction(QStringLiteral("Tamam"));
        presentViewController(alert, true);
    } else {
        performSegueWithIdentifier(QStringLiteral("QuestionsSegue"), &indexPath);
    }
}

void GameViewController::prepareForSegue(const StoryboardSegue& segue, QObject* sender) {
    const int row = sender ? sender->property("row").toInt() : -1;
    if (row < 0 || row >= arrGames.size()) return;
    const Json id = member(arrGames.at(row), QStringLiteral("id"));
    if (auto* questions = qobject_cast<QuestionsViewController*>(segue.destination)) questions->gameID = id;
    else if (auto* result = qobject_cast<ResultViewController*>(segue.destination)) result->gameID = id;
}

void GameViewController::scrollViewDidEndDragging(int lastVisibleRow, bool willDecelerate) {
    if (lastVisibleRow >= int(arrGames.size()) - 1 && willDecelerate) getGames(this);
}

} // namespace ekinora::contests
