#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

namespace ekinora::server::conversations {

// A subject's status as the app reads it.
enum SubjectStatus { New = 0, Answered = 1, Waiting = 2 };

// The subjects between the asking side (farmer, loyalty) and the answering side (dealer, adminUser):
// `subjects` (paged), `subject/add`, `subject/delete`, `subject/messages`, `subject/message/send`
// (also through the media upload, with a picture or a video and its preview) and `subject/set-status`.
// An asker reaches only his own subjects; the answering side reaches all of them.
void registerConversationCommands(Dispatch& dispatch, Database& db);

// Demo threads of the demo farmers with the agronomist; once.
void seedConversations(Database& db);

// SQL of the tables' additions.
const char* conversationsSchemaSql();

} // namespace ekinora::server::conversations
