#include "ContestsScreens.h"

#include "GameViewController.h"
#include "QuestionsViewController.h"
#include "ResultViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::contests {

void registerScreens() {
    using platform::Storyboard;
    Storyboard::registerIdentifier(QStringLiteral("gameVC"), [] { return new GameViewController; });
    Storyboard::registerIdentifier(QStringLiteral("QuestionsViewController"), [] { return new QuestionsViewController; });
    Storyboard::registerIdentifier(QStringLiteral("ResultViewController"), [] { return new ResultViewController; });
}

} // namespace ekinora::contests
