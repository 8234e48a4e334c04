#include "news/Feed.h"

namespace ekinora::server::feed {

Json page(Database& db, std::int64_t userId, const std::string& feed, bool more, std::int64_t pageSize,
          const Rows& rows) {
    Json result;
    db.transaction([&] {
        const std::int64_t offset =
            more ? db.scalar("SELECT next_offset FROM feed_positions WHERE user_id = ? AND feed = ?",
                             {userId, feed}, 0)
                 : 0;
        result = rows(offset, pageSize);
        db.execute("INSERT INTO feed_positions (user_id, feed, next_offset) VALUES (?, ?, ?)"
                   " ON CONFLICT (user_id, feed) DO UPDATE SET next_offset = excluded.next_offset",
                   {userId, feed, offset + std::int64_t(result.size())});
    });
    return result;
}

} // namespace ekinora::server::feed
