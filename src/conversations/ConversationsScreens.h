#pragma once

namespace ekinora::conversations {
// Registers the conversation screens with the storyboard: "messageVC" (the subject list), the thread
// and the new question.
void registerScreens();
} // namespace ekinora::conversations
