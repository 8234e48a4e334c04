#include "videos/Videos.h"

#include "core/Envelope.h"
#include "core/Params.h"
#include "news/Feed.h"

namespace ekinora::server::videos {

namespace {

const std::string BadPageFlag = "Sayfa isteği anlaşılamadı.";

struct Seed {
    const char* hash;
    const char* title;
};

// Newest first. Each has a 480 x 270 stream (quality 18) and a 320 x 180 one (quality 36):
// static/videos/<hash>-18.mp4 and <hash>-36.mp4 (VP9).
const Seed Seeds[] = {
    {"Ek4bG7tRw2M", "Buğdayda Yabancı Ot Mücadelesi: Doğru Zaman, Doğru Doz"},
    {"Dm9sQ1aVz8K", "Örtü Altı Domateste Damla Sulama ve Gübreleme"},
    {"Pk2lX5nHc3J", "Pülverizatör Kalibrasyonu Adım Adım"},
    {"Ms7yT4eWq6B", "Mısırda Ekim Derinliği ve Sıra Arası"},
    {"Bg3uR8fLp1N", "Bağda Külleme ve Mildiyö Belirtileri"},
};

Json videoList(Database& db, const ApiCall& call) {
    Params p(call);
    const Answer more = p.answer("ptoken");
    if (more == Answer::Invalid) {
        p.fail("ptoken", BadPageFlag);
        return p.rejection();
    }
    Json videos = feed::page(db, call.userId, "videos", more == Answer::Yes, VideoPageSize,
                             [&](std::int64_t offset, std::int64_t limit) {
                                 return db.query("SELECT title, hash AS youtubeVideoHash FROM videos"
                                                 " ORDER BY published_at DESC, id DESC LIMIT ? OFFSET ?",
                                                 {limit, offset});
                             });
    return envelope::success(Json{{"videos", std::move(videos)}});
}

} // namespace

void seedVideos(Database& db, const Clock& clock) {
    auto guard = db.lock();
    if (db.scalar("SELECT COUNT(*) FROM videos") > 0) return;
    const std::int64_t now = clock ? clock() : systemSeconds();
    db.transaction([&] {
        std::int64_t age = 0;
        for (auto it = std::rbegin(Seeds); it != std::rend(Seeds); ++it) {
            const std::int64_t publishedAt = now - (std::int64_t(std::size(Seeds)) - age++) * 7 * 86400;
            db.execute("INSERT INTO videos (title, hash, published_at) VALUES (?, ?, ?)",
                       {std::string(it->title), std::string(it->hash), publishedAt});
            const auto id = db.lastInsertId();
            for (const char* quality : {"18", "36"})
                db.execute("INSERT INTO video_streams (video_id, quality, file) VALUES (?, ?, ?)",
                           {id, std::string(quality), std::string(it->hash) + "-" + quality + ".mp4"});
        }
    });
}

void registerVideoCommands(Dispatch& dispatch, Database& db) {
    dispatch.add("videos", Access::Account, videoList, db);
}

std::optional<ServiceReply> videoServiceReply(Database& db, const std::string& path, const std::string& videoId,
                                              const std::string& baseUrl) {
    if (path != VideoServicePrefix + "/get_video_info") return std::nullopt;
    const auto video = db.queryRow("SELECT id, title FROM videos WHERE hash = ?", {videoId});
    if (!video) return ServiceReply{404, Json{{"error", "Video bulunamadı."}}.dump()};
    Json streams = Json::object();
    for (const auto& stream : db.query("SELECT quality, file FROM video_streams WHERE video_id = ? ORDER BY quality",
                                       {video->at("id").get<std::int64_t>()}))
        streams[stream.at("quality").get<std::string>()] = baseUrl + "/static/videos/" + stream.at("file").get<std::string>();
    return ServiceReply{200, Json{{"identifier", videoId}, {"title", video->at("title")}, {"streamURLs", std::move(streams)}}.dump()};
}

} // namespace ekinora::server::videos
