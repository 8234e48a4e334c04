#pragma once

#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"

namespace ekinora::server::news {

// Items a page of "agricultural-news" holds.
inline constexpr int NewsPageSize = 6;

// The company's agricultural news, dated back from the first start; inserted once.
void seedNews(Database& db, const Clock& clock);

// "agricultural-news" (a page of "news", the next one with "ptoken" 1) and "agricultural-news/detail"
// ("id": "newsItem"). Pictures are addresses under /static/news of the host the app reached.
void registerNewsCommands(Dispatch& dispatch, Database& db);

} // namespace ekinora::server::news
