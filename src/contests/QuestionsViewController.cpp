#include "QuestionsViewController.h"

#include "ContestText.h"
#include "GameRequest.h"
#include "ImagePickerController.h"
#include "ResultViewController.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"
#include "widgets/Colors.h"

#include <QBuffer>
#include <QDir>
#include <QStandardPaths>
#include <QUuid>

namespace ekinora::contests {

using namespace platform;

const QString QuestionsViewController::Placeholder = QStringLiteral("Cevabınızı yazınız..");

namespace {
const QString Textarea = QStringLiteral("textarea");
const QString Image = QStringLiteral("image");

// A count from the reply; what is not a number counts as 0 rather than stopping the flow.
int wholeNumber(const Json& v) { return v.isDouble() || v.isString() ? intValue(v) : 0; }

QByteArray jpeg(const QImage& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "JPEG", 50);
    return bytes;
}
} // namespace

QuestionsViewController::QuestionsViewController(QObject* parent)
    : ViewController(parent), viewQuestion(makeControl<View>("viewQuestion")), lblQuestion(makeControl<Label>("lblQuestion")),
      lblDuration(makeControl<Label>("lblDuration")), lblQuestionNumber(makeControl<Label>("lblQuestionNumber")),
      collAnswers(makeControl<TableView>("collAnswers")), viewTextAnswer(makeControl<View>("viewTextAnswer")),
      textAnswer(makeControl<TextField>("textAnswer")), viewPhotoAnswer(makeControl<View>("viewPhotoAnswer")),
      imagePhoto(makeControl<ImageView>("imagePhoto")), buttonRePhoto(makeControl<Button>("buttonRePhoto")),
      buttonSubmit(makeControl<Button>("buttonSubmit")), viewResult(makeControl<View>("viewResult")),
      imgResultTop(makeControl<View>("imgResultTop")), lblResultDuration(makeControl<Label>("lblResultDuration")),
      lblResultTrue(makeControl<Label>("lblResultTrue")), lblResultFalse(makeControl<Label>("lblResultFalse")) {
    setTitle(QStringLiteral("Yarışma"));
    lblQuestion->setNumberOfLines(0);
    // A fixed label of the layout: nothing in the flow times the farmer.
    lblDuration->setText(QStringLiteral("Süre sınırı yok"));
    buttonRePhoto->setTitle(QStringLiteral("Fotoğrafı Değiştir"));
    buttonRePhoto->addTarget(this, &QuestionsViewController::addImage);
    buttonSubmit->setTitle(QStringLiteral("Devam"));
    buttonSubmit->addTarget(this, &QuestionsViewController::submitQuestion);
    collAnswers->setDataSource([this](int) { return numberOfItems(); },
                               [this](int, int row) { return cellRow(answerCell(row), sizeForItem(row, collAnswers->size().width())); });
    collAnswers->setDidSelectRow([this](int, int row) { didSelectItem(row); });
    addSegue(QStringLiteral("ResultSegue"), SegueKind::Show, QStringLiteral("ResultViewController"));
}

QUrl QuestionsViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Contests/QuestionsView.qml"));
}

void QuestionsViewController::viewDidLoad() {
    arrQuestions = QJsonArray();
    arrAnswers = QJsonArray();
    currentAnswerIndex = -1;
    viewResult->setHidden(true);
    viewTextAnswer->setHidden(true);
    viewPhotoAnswer->setHidden(true);
    // The gradient of the question's band and the panel's top is drawn by the view, left to right.
    for (View* band : {imgResultTop, viewQuestion}) band->setBackgroundColor(widgets::Colors::cerulean());
    textAnswer->setBorderWidth(1);
    textAnswer->setBorderColor(widgets::Colors::border());
    textAnswer->setCornerRadius(3);
    getQuestions();
}

Json QuestionsViewController::currentQuestion() const {
    if (currentQuestionIndex < 0 || currentQuestionIndex >= arrQuestions.size()) return nil();
    return arrQuestions.at(currentQuestionIndex);
}

bool QuestionsViewController::isTextareaWithoutAnswers() const {
    const Json q = currentQuestion();
    return isString(member(q, QStringLiteral("typed")), Textarea) && count(member(q, QStringLiteral("answers"))) == 0;
}

void QuestionsViewController::getQuestions() {
    service::ScreenCall call(this, QStringLiteral("getQuestions"), service::ScreenCall::WithHud);
    GameRequest request;
    request.doParam = QStringLiteral("surveys/detail");
    request.gameID = gameID;
    request.getContests(call.done([this](const Json& response) {
                            service::log(description(response));
                            arrQuestions = service::listOf(
                                path(response, {QStringLiteral("data"), QStringLiteral("surveyItem"), QStringLiteral("questions")}));
                            collAnswers->reloadData();
                            currentQuestionIndex = -1;
                            changeQuestion();
                        }),
                        call.failed());
}

void QuestionsViewController::changeQuestion() {
    // 1. After the last question, or with none, the flow ends.
    if (currentQuestionIndex + 1 == int(arrQuestions.size())) {
        if (NavigationController* nav = navigationController()) nav->popViewControllerAnimated(true);
        return;
    }
    // 2.
    currentAnswerIndex = -1;
    ++currentQuestionIndex;
    const Json question = currentQuestion();
    currentQuestionID = description(member(question, QStringLiteral("question_id")));
    lblQuestion->setText(stringOrNull(member(question, QStringLiteral("content"))));
    lblQuestionNumber->setText(stringWithFormat(QStringLiteral("%d/%lu"), {currentQuestionIndex + 1, qint64(arrQuestions.size())}));
    // 3. Cleared before the list is drawn again, so that the new question shows no old picks.
    imagePhoto->setImageUrl(QUrl());
    imagePhoto->setBackgroundColor(Qt::transparent);
    postedImage = QImage();
    answerText = QString();
    arrAnswers = QJsonArray();
    questionHasText = false;
    buttonRePhoto->setHidden(true);
    collAnswers->reloadData();
    // 4.
    const QString typed = stringOrNull(member(question, QStringLiteral("typed")));
    if (typed == Textarea && count(member(question, QStringLiteral("answers"))) == 0) {
        viewTextAnswer->setHidden(false);
        textAnswer->setText(Placeholder);
        collAnswers->setHidden(true);
        viewPhotoAnswer->setHidden(true);
    } else if (typed == Image) {
        viewPhotoAnswer->setHidden(false);
        viewTextAnswer->setHidden(true);
        collAnswers->setHidden(true);
    } else {
        collAnswers->setHidden(false);
        viewTextAnswer->setHidden(true);
        viewPhotoAnswer->setHidden(true);
    }
    // 5.
    setSubmitEnabled(false);
    buttonSubmit->setTitle(currentQuestionIndex + 1 == int(arrQuestions.size()) ? QStringLiteral("Onayla") : QStringLiteral("Devam"));
}

void QuestionsViewController::setSubmitEnabled(bool enabled) {
    buttonSubmit->setBackgroundColor(enabled ? widgets::Colors::leaf() : widgets::Colors::border());
    buttonSubmit->setUserInteractionEnabled(enabled);
}

int QuestionsViewController::numberOfItems() const {
    if (arrQuestions.isEmpty() || currentQuestionIndex < 0) return 0;
    return count(member(currentQuestion(), QStringLiteral("answers"))) + (questionHasText ? 1 : 0);
}

QVariantMap QuestionsViewController::answerCell(int row) const {
    QVariantMap cell;
    const Json answers = member(currentQuestion(), QStringLiteral("answers"));
    const int n = count(answers);
    if (questionHasText && row == n) {
        cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("AnswerTextCell"));
        cell.insert(QStringLiteral("textAnswer"), answerText.isNull() ? Placeholder : answerText);
        cell.insert(QStringLiteral("placeholder"), answerText.isNull());
        cell.insert(QStringLiteral("cornerRadius"), 3);
        cell.insert(QStringLiteral("borderWidth"), 1);
        cell.insert(QStringLiteral("borderColor"), widgets::Colors::cerulean());
        return cell;
    }
    if (row < 0 || row >= n) return cell;
    const Json answer = element(answers, row);
    const bool picked = arrAnswers.contains(member(answer, QStringLiteral("id")));
    const QColor colour = picked ? widgets::Colors::cerulean() : widgets::Colors::black();
    cell.insert(QStringLiteral("reuseIdentifier"), QStringLiteral("AnswerCell"));
    cell.insert(QStringLiteral("lblAnswer"), stringOrNull(member(answer, QStringLiteral("content"))));
    cell.insert(QStringLiteral("cornerRadius"), 3);
    cell.insert(QStringLiteral("borderWidth"), 1);
    cell.insert(QStringLiteral("borderColor"), colour);
    cell.insert(QStringLiteral("imgCheckRightBorder"), colour);
    cell.insert(QStringLiteral("imgCheck"), picked ? QStringLiteral("checkAnswer") : QString());
    cell.insert(QStringLiteral("picked"), picked);
    cell.insert(QStringLiteral("clipsToBounds"), true);
    return cell;
}

QSizeF QuestionsViewController::sizeForItem(int row, double viewWidth) const {
    const int n = count(member(currentQuestion(), QStringLiteral("answers")));
    if (questionHasText && row == n) return {viewWidth - 32, 60};
    if (row < 0 || row >= n) return {viewWidth - 32, 0};
    const QString content = stringOrNull(member(element(member(currentQuestion(), QStringLiteral("answers")), row), QStringLiteral("content")));
    return {viewWidth - 32, getTextHeightFromString(content, viewWidth - 90, 16, QStringLiteral("AvenirNext-Medium"), 14)};
}

void QuestionsViewController::didSelectItem(int row) {
    const Json question = currentQuestion();
    const Json answers = member(question, QStringLiteral("answers"));
    const int n = count(answers);
    // A tap on the text cell does nothing here.
    if (row < 0 || row >= n) return;
    // 1.
    currentAnswer = QJsonObject{{currentQuestionID, QJsonObject{{QString::number(row + 1), QStringLiteral("1")}}}};
    // 2.
    if (isString(member(question, QStringLiteral("typed")), Textarea) && row == n - 1) {
        arrAnswers = QJsonArray();
        questionHasText = true;
    } else {
        if (questionHasText) arrAnswers = QJsonArray();
        questionHasText = false;
    }
    // 3.
    const Json id = member(element(answers, row), QStringLiteral("id"));
    qsizetype at = -1;
    for (qsizetype i = 0; i < arrAnswers.size() && at < 0; ++i)
        if (arrAnswers.at(i) == id) at = i;
    if (at >= 0) arrAnswers.removeAt(at);
    else arrAnswers.append(id);
    // 4.
    const bool textGiven = !answerText.isEmpty() && answerText != Placeholder;
    setSubmitEnabled((!arrAnswers.isEmpty() && !questionHasText) || (questionHasText && textGiven));
    // 5.
    currentAnswerIndex = row;
    collAnswers->reloadData();
}

void QuestionsViewController::textViewDidBeginEditing(bool ownTextAnswer) {
    if (ownTextAnswer && textAnswer->text() == Placeholder) textAnswer->setText(QString());
}

void QuestionsViewController::textViewDidEndEditing(bool ownTextAnswer, const QString& text) {
    if (ownTextAnswer) textAnswer->setText(text);
    else answerText = text;
    setSubmitEnabled(!text.isEmpty() && text != Placeholder);
}

void QuestionsViewController::addImage(QObject*) {
    auto* sheet = AlertController::alertControllerWithTitle(QString(), QString(), AlertController::ActionSheet);
    sheet->addAction(QStringLiteral("Fotoğraf Seç"), AlertController::Default, [this] { showImagePicker(ImagePickerController::PhotoLibrary); });
    sheet->addAction(QStringLiteral("Fotoğraf Çek"), AlertController::Default, [this] { showImagePicker(ImagePickerController::Camera); });
    sheet->addAction(QStringLiteral("İptal"), AlertController::Cancel);
    presentViewController(sheet, true);
}

void QuestionsViewController::showImagePicker(int source) {
    QPointer<QuestionsViewController> self(this);
    auto* picker = new ImagePickerController(ImagePickerController::SourceType(source), [self](const QImage& picture) {
        if (self) self->imagePickerDidFinish(picture);
    });
    presentViewController(picker, true);
}

void QuestionsViewController::imagePickerDidFinish(const QImage& picture) {
    if (picture.isNull()) return;
    postedImage = picture;
    // The picture is shown from a file of its own, made smaller: it is sent as it is.
    const QString file = QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation))
                             .filePath(QStringLiteral("ekinora-answer-%1.jpg").arg(QUuid::createUuid().toString(QUuid::Id128)));
    picture.scaled(900, 900, Qt::KeepAspectRatio, Qt::SmoothTransformation).save(file, "JPEG", 85);
    imagePhoto->setBackgroundColor(Qt::white);
    imagePhoto->setImageUrl(QUrl::fromLocalFile(file));
    buttonRePhoto->setHidden(false);
    setSubmitEnabled(true);
}

void QuestionsViewController::submitQuestion(QObject*) {
    // 1.
    endEditing();
    service::ScreenCall call(this, QStringLiteral("submitQuestion"), service::ScreenCall::WithHud);
    // 2.
    const QString duration = lblDuration->text();
    // 3.
    GameRequest request;
    request.doParam = QStringLiteral("surveys/submit");
    const Json question = currentQuestion();
    request.questionID = description(member(question, QStringLiteral("question_id")));
    const QString typed = stringOrNull(member(question, QStringLiteral("typed")));
    // 4.
    if (typed == Image) {
        request.mediaData = jpeg(postedImage);
        request.sendMedia(call.done([this](const Json&) { changeQuestion(); }), call.failed());
        return;
    }
    // 5.
    if (typed == Textarea && count(member(question, QStringLiteral("answers"))) == 0) request.textArea = textAnswer->text();
    else if (questionHasText && !answerText.isNull()) request.textArea = answerText;
    else request.arrAnswers = arrAnswers;
    // 6. The next question is on the screen before the panel comes up over it.
    request.submitAnswers(call.done([this, duration](const Json& response) {
                              changeQuestion();
                              if (service::statusOf(response) == 200) {
                                  const Json contestant = path(response, {QStringLiteral("data"), QStringLiteral("contestant")});
                                  const Json score = member(contestant, QStringLiteral("score"));
                                  lblResultTrue->setText(stringWithFormat(QStringLiteral("%@ Doğru"), {score}));
                                  lblResultFalse->setText(stringWithFormat(
                                      QStringLiteral("%@ Yanlış"),
                                      {wholeNumber(member(contestant, QStringLiteral("total"))) - wholeNumber(score)}));
                                  lblResultDuration->setText(duration);
                                  viewResult->setHidden(false);
                              } else {
                                  service::log(service::firstError(response));
                              }
                          }),
                          call.failed());
}

void QuestionsViewController::closeResultView(QObject*) { viewResult->setHidden(true); }

void QuestionsViewController::openResultSegue(QObject*) { performSegueWithIdentifier(QStringLiteral("ResultSegue"), this); }

void QuestionsViewController::prepareForSegue(const StoryboardSegue& segue, QObject*) {
    if (auto* result = qobject_cast<ResultViewController*>(segue.destination)) result->gameID = gameID;
}

} // namespace ekinora::contests
