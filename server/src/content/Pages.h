#pragma once

#include "core/Database.h"
#include "core/Dispatch.h"

namespace ekinora::server::content {

// The legal texts the app shows by slug: "conditions-of-use", "kvkk", "etk", "yarisma-kosullar".
// Inserted when missing; a text already in the table is left as it is.
void seedPages(Database& db);

// `page/detail` with "slug": "data"."page" {"slug", "name", "text" (an HTML fragment)}.
void registerPageCommands(Dispatch& dispatch, Database& db);

} // namespace ekinora::server::content
