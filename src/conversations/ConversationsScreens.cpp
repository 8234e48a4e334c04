#include "ConversationsScreens.h"

#include "MessageDetailViewController.h"
#include "MessageViewController.h"
#include "NewMessageViewController.h"
#include "platform/Storyboard.h"

namespace ekinora::conversations {

void registerScreens() {
    using platform::Storyboard;
    Storyboard::registerIdentifier(QStringLiteral("messageVC"), [] { return new MessageViewController; });
    Storyboard::registerIdentifier(QStringLiteral("MessageDetailViewController"), [] { return new MessageDetailViewController; });
    Storyboard::registerIdentifier(QStringLiteral("NewMessageViewController"), [] { return new NewMessageViewController; });
}

} // namespace ekinora::conversations
