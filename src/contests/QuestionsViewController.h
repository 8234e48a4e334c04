#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/ViewController.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QSizeF>
#include <QVariantMap>

namespace ekinora::contests {

// One contest's questions, one at a time with no going back. Each answer goes to the service as soon
// as it is given; the service scores, the screen only shows what comes back.
class QuestionsViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::View, viewQuestion)
    UI_OUTLET(ekinora::platform::Label, lblQuestion)
    UI_OUTLET(ekinora::platform::Label, lblDuration)
    UI_OUTLET(ekinora::platform::Label, lblQuestionNumber)
    UI_OUTLET(ekinora::platform::TableView, collAnswers)
    UI_OUTLET(ekinora::platform::View, viewTextAnswer)
    UI_OUTLET(ekinora::platform::TextField, textAnswer)
    UI_OUTLET(ekinora::platform::View, viewPhotoAnswer)
    UI_OUTLET(ekinora::platform::ImageView, imagePhoto)
    UI_OUTLET(ekinora::platform::Button, buttonRePhoto)
    UI_OUTLET(ekinora::platform::Button, buttonSubmit)
    UI_OUTLET(ekinora::platform::View, viewResult)
    UI_OUTLET(ekinora::platform::View, imgResultTop)
    UI_OUTLET(ekinora::platform::Label, lblResultDuration)
    UI_OUTLET(ekinora::platform::Label, lblResultTrue)
    UI_OUTLET(ekinora::platform::Label, lblResultFalse)
public:
    explicit QuestionsViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    static const QString Placeholder; // "Cevabınızı yazınız.."

    // State.
    platform::Json gameID{QJsonValue::Undefined};
    QJsonArray arrQuestions;
    int currentQuestionIndex = -1;
    QString currentQuestionID;
    QJsonArray arrAnswers;
    int currentAnswerIndex = -1;
    QJsonObject currentAnswer; // written at each tap, read by nobody
    QString answerText;        // null: unset
    QImage postedImage;
    bool questionHasText = false;

    // Views.
    platform::View* viewQuestion;
    platform::Label *lblQuestion, *lblDuration, *lblQuestionNumber;
    platform::TableView* collAnswers;
    platform::View* viewTextAnswer;
    platform::TextField* textAnswer;
    platform::View* viewPhotoAnswer;
    platform::ImageView* imagePhoto;
    platform::Button *buttonRePhoto, *buttonSubmit;
    platform::View *viewResult, *imgResultTop;
    platform::Label *lblResultDuration, *lblResultTrue, *lblResultFalse;

    void viewDidLoad() override;
    void prepareForSegue(const platform::StoryboardSegue& segue, QObject* sender) override;

    void getQuestions();
    void changeQuestion();

    // The answer list: its items and their sizes, as the list asks.
    int numberOfItems() const;
    QVariantMap answerCell(int row) const;
    QSizeF sizeForItem(int row, double viewWidth) const;
    void didSelectItem(int row);

    // The text views: the answer cell's (not the screen's own) keeps its text when editing ends.
    Q_INVOKABLE void textViewDidBeginEditing(bool ownTextAnswer);
    Q_INVOKABLE void textViewDidEndEditing(bool ownTextAnswer, const QString& text);
    // A picture from the picker.
    void imagePickerDidFinish(const QImage& picture);

public slots:
    void addImage(QObject* sender = nullptr);
    void submitQuestion(QObject* sender = nullptr);
    void openResultSegue(QObject* sender = nullptr);
    void closeResultView(QObject* sender = nullptr);

private:
    platform::Json currentQuestion() const;
    bool isTextareaWithoutAnswers() const;
    void setSubmitEnabled(bool enabled);
    void showImagePicker(int source);
};

} // namespace ekinora::contests
