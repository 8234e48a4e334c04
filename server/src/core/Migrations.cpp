#include "core/Migrations.h"
#include "catalogue/Catalogue.h"
#include "seeds/Seeds.h"
#include "conversations/Conversations.h"
#include "loyalty/Loyalty.h"

namespace ekinora::server {

const std::vector<Migration>& migrations() {
    static const std::vector<Migration> list = {
        {1, "regions", R"sql(
CREATE TABLE cities (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    latitude REAL NOT NULL,
    longitude REAL NOT NULL
);
CREATE TABLE counties (
    id INTEGER PRIMARY KEY,
    city_id INTEGER NOT NULL REFERENCES cities(id),
    name TEXT NOT NULL,
    latitude REAL NOT NULL,
    longitude REAL NOT NULL
);
CREATE INDEX counties_city ON counties(city_id);
)sql"},
        {2, "accounts", R"sql(
CREATE TABLE users (
    id INTEGER PRIMARY KEY,
    phone TEXT NOT NULL UNIQUE,
    fullname TEXT NOT NULL,
    email TEXT,
    type TEXT NOT NULL CHECK (type IN ('farmer', 'loyalty', 'dealer', 'adminUser')),
    active INTEGER NOT NULL DEFAULT 1,
    city_id INTEGER REFERENCES cities(id),
    county_id INTEGER REFERENCES counties(id),
    region_fullname TEXT NOT NULL DEFAULT '',
    region_phonenumber TEXT NOT NULL DEFAULT '',
    menu TEXT NOT NULL DEFAULT '[]',
    etk_answered INTEGER NOT NULL DEFAULT 0,
    created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now'))
);
CREATE TABLE tokens (
    token TEXT PRIMARY KEY,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now'))
);
CREATE INDEX tokens_user ON tokens(user_id);
)sql"},
        {3, "system", R"sql(
CREATE TABLE settings (
    key TEXT PRIMARY KEY,
    value TEXT NOT NULL
);
CREATE TABLE popups (
    id INTEGER PRIMARY KEY,
    code TEXT NOT NULL UNIQUE,
    header TEXT NOT NULL,
    content TEXT NOT NULL,
    file_path TEXT NOT NULL DEFAULT '',
    pest_id INTEGER,
    pest_file_path TEXT NOT NULL DEFAULT '',
    pest_name TEXT NOT NULL DEFAULT '',
    active INTEGER NOT NULL DEFAULT 0,
    created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now'))
);
)sql"},
        {4, "sms_login", R"sql(
CREATE TABLE sms_challenges (
    hash TEXT PRIMARY KEY,
    phone TEXT NOT NULL,
    code TEXT NOT NULL,
    purpose TEXT NOT NULL CHECK (purpose IN ('login', 'register')),
    created_at INTEGER NOT NULL,
    expires_at INTEGER NOT NULL,
    attempts INTEGER NOT NULL DEFAULT 0,
    verified_at INTEGER,
    consumed INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX sms_challenges_expiry ON sms_challenges(expires_at);
ALTER TABLE users ADD COLUMN device_id TEXT;
ALTER TABLE users ADD COLUMN device_type TEXT;
)sql"},
        {5, "conversations", R"sql(
CREATE TABLE subjects (
    id INTEGER PRIMARY KEY,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    title TEXT NOT NULL,
    status INTEGER NOT NULL DEFAULT 0,
    created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now'))
);
CREATE INDEX subjects_user ON subjects(user_id);
CREATE TABLE messages (
    id INTEGER PRIMARY KEY,
    subject_id INTEGER NOT NULL REFERENCES subjects(id) ON DELETE CASCADE,
    sender_user_id INTEGER NOT NULL REFERENCES users(id),
    text TEXT NOT NULL DEFAULT '',
    read INTEGER NOT NULL DEFAULT 0,
    created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now'))
);
CREATE INDEX messages_subject ON messages(subject_id);
)sql"},
        {6, "crops_and_products", R"sql(
CREATE TABLE produces (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    image_path TEXT NOT NULL,
    sort_order INTEGER NOT NULL
);
CREATE TABLE aps (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    sort_order INTEGER NOT NULL
);
)sql"},
        {7, "pages", R"sql(
CREATE TABLE pages (
    slug TEXT PRIMARY KEY,
    name TEXT NOT NULL,
    text TEXT NOT NULL
);
)sql"},
        {8, "user_popups", R"sql(
CREATE TABLE user_popups (
    popup_id INTEGER NOT NULL REFERENCES popups(id) ON DELETE CASCADE,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    PRIMARY KEY (popup_id, user_id)
);
CREATE INDEX user_popups_user ON user_popups(user_id);
)sql"},
        {10, "crop_calendar", R"sql(
-- period_documents: farms of this crop open the current period's document instead of the calendar.
CREATE TABLE crop_calendars (
    produce_id INTEGER PRIMARY KEY REFERENCES produces(id),
    farm_image_path TEXT,
    period_documents INTEGER NOT NULL DEFAULT 0
);
-- Within a crop the ids rise in growing order: the app tells past from future by comparing them.
CREATE TABLE periods (
    id INTEGER PRIMARY KEY,
    produce_id INTEGER NOT NULL REFERENCES produces(id),
    name TEXT NOT NULL,
    image_path TEXT,
    start_month INTEGER NOT NULL CHECK (start_month BETWEEN 1 AND 12)
);
CREATE INDEX periods_produce ON periods(produce_id, id);
CREATE TABLE pests (
    id INTEGER PRIMARY KEY,
    slug TEXT NOT NULL UNIQUE,
    name TEXT NOT NULL,
    group_name TEXT NOT NULL, -- "Yabancı Otlar", "Zararlı Canlılar" or a disease group
    image_path TEXT,
    summary TEXT NOT NULL DEFAULT ''
);
CREATE TABLE period_pests (
    period_id INTEGER NOT NULL REFERENCES periods(id) ON DELETE CASCADE,
    pest_id INTEGER NOT NULL REFERENCES pests(id) ON DELETE CASCADE,
    position INTEGER NOT NULL,
    PRIMARY KEY (period_id, pest_id)
);
CREATE TABLE pest_aps (
    pest_id INTEGER NOT NULL REFERENCES pests(id) ON DELETE CASCADE,
    ap_id INTEGER NOT NULL REFERENCES aps(id),
    position INTEGER NOT NULL,
    PRIMARY KEY (pest_id, ap_id)
);
)sql"},
        {11, "farms", R"sql(
CREATE TABLE farms (
    id INTEGER PRIMARY KEY,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    produce_id INTEGER NOT NULL REFERENCES produces(id),
    size_dekar REAL NOT NULL CHECK (size_dekar > 0),
    period_id INTEGER REFERENCES periods(id),
    created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now'))
);
CREATE INDEX farms_user ON farms(user_id);
CREATE TABLE farm_aps (
    farm_id INTEGER NOT NULL REFERENCES farms(id) ON DELETE CASCADE,
    ap_id INTEGER NOT NULL REFERENCES aps(id),
    position INTEGER NOT NULL,
    PRIMARY KEY (farm_id, ap_id)
);
)sql"},
        {20, "account_details", R"sql(
ALTER TABLE users ADD COLUMN etk_sms INTEGER;
ALTER TABLE users ADD COLUMN etk_email INTEGER;
ALTER TABLE users ADD COLUMN etk_advertising INTEGER;
ALTER TABLE users ADD COLUMN etk_answered_at TEXT;
ALTER TABLE users ADD COLUMN terms_accepted_at TEXT;
ALTER TABLE users ADD COLUMN dealer_name TEXT;
ALTER TABLE users ADD COLUMN tax_number TEXT;
ALTER TABLE users ADD COLUMN tc_no TEXT;
CREATE UNIQUE INDEX users_tax_number ON users(tax_number) WHERE tax_number IS NOT NULL;
CREATE TABLE registration_fields (
    id INTEGER PRIMARY KEY,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    produce_id INTEGER NOT NULL REFERENCES produces(id),
    size REAL NOT NULL,
    aps TEXT NOT NULL DEFAULT '[]',
    created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now'))
);
CREATE INDEX registration_fields_user ON registration_fields(user_id);
)sql"},
        {21, "notifications", R"sql(
CREATE TABLE notifications (
    id INTEGER PRIMARY KEY,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    message TEXT NOT NULL,
    read INTEGER NOT NULL DEFAULT 0,
    created_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%S', 'now'))
);
CREATE INDEX notifications_user ON notifications(user_id, id);
)sql"},
        // The first legal texts were short drafts; removing them lets the seed put the full ones in.
        {22, "full_legal_texts", R"sql(
DELETE FROM pages WHERE slug IN ('conditions-of-use', 'kvkk', 'etk', 'yarisma-kosullar');
)sql"},
        // The crops a farmer gives at registration are his farms: those kept apart so far move into
        // the farms, each in the period its crop is in this month in Turkey (the first period whose
        // season has begun, counted from the crop's first period), with their products in order.
        {23, "registration_fields_to_farms", R"sql(
CREATE TEMP TABLE moved_fields AS
SELECT r.id AS field_id,
       (SELECT IFNULL(MAX(id), 0) FROM farms) + ROW_NUMBER() OVER (ORDER BY r.id) AS farm_id
FROM registration_fields r
WHERE r.size > 0;
INSERT INTO farms (id, user_id, produce_id, size_dekar, period_id, created_at)
SELECT m.farm_id, r.user_id, r.produce_id, r.size,
       (SELECT MAX(p.id) FROM periods p
        WHERE p.produce_id = r.produce_id
          AND (p.start_month - f.start_month + 12) % 12
              <= (CAST(strftime('%m', 'now', '+3 hours') AS INTEGER) - f.start_month + 12) % 12),
       r.created_at
FROM moved_fields m
JOIN registration_fields r ON r.id = m.field_id
LEFT JOIN periods f ON f.id = (SELECT MIN(id) FROM periods WHERE produce_id = r.produce_id)
ORDER BY m.farm_id;
INSERT OR IGNORE INTO farm_aps (farm_id, ap_id, position)
SELECT m.farm_id, CAST(j.value AS INTEGER), j.key + 1
FROM moved_fields m
JOIN registration_fields r ON r.id = m.field_id, json_each(r.aps) j
WHERE EXISTS (SELECT 1 FROM aps a WHERE a.id = CAST(j.value AS INTEGER));
DROP TABLE moved_fields;
DROP TABLE registration_fields;
)sql"},
        {24, "analytics_collector", R"sql(
CREATE TABLE analytics_hits (
    id INTEGER PRIMARY KEY,
    received_at BIGINT NOT NULL,
    channel TEXT NOT NULL,
    method TEXT NOT NULL,
    encoding TEXT NOT NULL,
    parameters TEXT NOT NULL
);
CREATE TABLE analytics_collector (
    id INTEGER PRIMARY KEY,
    refuse_batches INTEGER NOT NULL DEFAULT 0
);
INSERT INTO analytics_collector (id, refuse_batches) VALUES (1, 0);
)sql"},
        {40, "contests", R"sql(
CREATE TABLE surveys (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    description TEXT NOT NULL DEFAULT '',
    prize TEXT NOT NULL DEFAULT '',
    winner_count INTEGER NOT NULL DEFAULT 3,
    starts_at BIGINT NOT NULL,
    ends_at BIGINT NOT NULL,
    drawn_at BIGINT
);
CREATE TABLE survey_questions (
    id INTEGER PRIMARY KEY,
    survey_id INTEGER NOT NULL REFERENCES surveys(id) ON DELETE CASCADE,
    position INTEGER NOT NULL,
    content TEXT NOT NULL,
    typed TEXT NOT NULL CHECK (typed IN ('single', 'multiple', 'textarea', 'image'))
);
CREATE INDEX survey_questions_survey ON survey_questions(survey_id, position);
CREATE TABLE survey_choices (
    id INTEGER PRIMARY KEY,
    question_id INTEGER NOT NULL REFERENCES survey_questions(id) ON DELETE CASCADE,
    position INTEGER NOT NULL,
    content TEXT NOT NULL,
    correct INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX survey_choices_question ON survey_choices(question_id, position);
CREATE TABLE survey_responses (
    id INTEGER PRIMARY KEY,
    survey_id INTEGER NOT NULL REFERENCES surveys(id) ON DELETE CASCADE,
    question_id INTEGER NOT NULL REFERENCES survey_questions(id) ON DELETE CASCADE,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    choice_ids TEXT NOT NULL DEFAULT '[]',
    text TEXT,
    upload TEXT,
    scored INTEGER NOT NULL DEFAULT 0,
    correct INTEGER NOT NULL DEFAULT 0,
    created_at BIGINT NOT NULL,
    UNIQUE (question_id, user_id)
);
CREATE INDEX survey_responses_user ON survey_responses(user_id, survey_id);
CREATE TABLE survey_winners (
    survey_id INTEGER NOT NULL REFERENCES surveys(id) ON DELETE CASCADE,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    position INTEGER NOT NULL,
    PRIMARY KEY (survey_id, user_id)
);
CREATE TABLE media_uploads (
    name TEXT PRIMARY KEY,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    size INTEGER NOT NULL,
    claimed INTEGER NOT NULL DEFAULT 0,
    created_at BIGINT NOT NULL
);
)sql"},
        {50, "catalogue", catalogue::schemaSql()},
        {51, "catalogue_seed", catalogue::seedSql()},
        {60, "grants", R"sql(
CREATE TABLE grant_programmes (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    type_name TEXT NOT NULL,
    end_month INTEGER NOT NULL,
    end_day INTEGER NOT NULL,
    description TEXT NOT NULL,
    conditions TEXT NOT NULL,
    sort_order INTEGER NOT NULL
);
CREATE TABLE grant_places (
    grant_id INTEGER NOT NULL REFERENCES grant_programmes(id),
    city_name TEXT NOT NULL,
    county_name TEXT
);
CREATE INDEX grant_places_grant ON grant_places(grant_id);
CREATE TABLE grant_crops (
    grant_id INTEGER NOT NULL REFERENCES grant_programmes(id),
    produce_id INTEGER NOT NULL,
    PRIMARY KEY (grant_id, produce_id)
);
CREATE TABLE grant_documents (
    id INTEGER PRIMARY KEY,
    grant_id INTEGER NOT NULL REFERENCES grant_programmes(id),
    position INTEGER NOT NULL,
    name TEXT NOT NULL,
    body TEXT NOT NULL
);
CREATE INDEX grant_documents_grant ON grant_documents(grant_id, position);
)sql"},
        {61, "market", R"sql(
CREATE TABLE market_categories (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    sort_order INTEGER NOT NULL
);
CREATE TABLE market_crops (
    agrivoid INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    source TEXT NOT NULL CHECK (source IN ('H', 'B')),
    category_id INTEGER NOT NULL REFERENCES market_categories(id),
    sort_order INTEGER NOT NULL
);
CREATE TABLE market_varieties (
    id INTEGER PRIMARY KEY,
    agrivoid INTEGER NOT NULL REFERENCES market_crops(agrivoid),
    name TEXT NOT NULL,
    base_price REAL NOT NULL
);
CREATE INDEX market_varieties_crop ON market_varieties(agrivoid);
CREATE TABLE market_places (
    agrivoid INTEGER NOT NULL REFERENCES market_crops(agrivoid),
    city_name TEXT NOT NULL,
    factor REAL NOT NULL,
    position INTEGER NOT NULL,
    PRIMARY KEY (agrivoid, city_name)
);
)sql"},
        {70, "content_feeds", R"sql(
CREATE TABLE news (
    id INTEGER PRIMARY KEY,
    header TEXT NOT NULL,
    news_date BIGINT NOT NULL,
    long_description TEXT NOT NULL,
    image TEXT NOT NULL,
    thumbnail TEXT NOT NULL
);
CREATE INDEX news_by_date ON news(news_date);
CREATE TABLE feed_positions (
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    feed TEXT NOT NULL,
    next_offset INTEGER NOT NULL,
    PRIMARY KEY (user_id, feed)
);
CREATE TABLE events (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    place TEXT NOT NULL,
    starts_on TEXT NOT NULL,
    ends_on TEXT NOT NULL,
    content TEXT NOT NULL,
    image TEXT,
    joinable INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE event_answers (
    event_id INTEGER NOT NULL REFERENCES events(id) ON DELETE CASCADE,
    user_id INTEGER NOT NULL REFERENCES users(id) ON DELETE CASCADE,
    attends INTEGER NOT NULL CHECK (attends IN (0, 1)),
    answered_at BIGINT NOT NULL,
    PRIMARY KEY (event_id, user_id)
);
CREATE TABLE videos (
    id INTEGER PRIMARY KEY,
    title TEXT NOT NULL,
    hash TEXT NOT NULL UNIQUE,
    published_at BIGINT NOT NULL
);
CREATE TABLE video_streams (
    video_id INTEGER NOT NULL REFERENCES videos(id) ON DELETE CASCADE,
    quality TEXT NOT NULL,
    file TEXT NOT NULL,
    PRIMARY KEY (video_id, quality)
);
)sql"},
        {80, "conversation_threads", conversations::conversationsSchemaSql()},
        {90, "seeds", seeds::schemaSql()},
        {91, "seeds_seed", seeds::seedSql()},
        {100, "loyalty", loyalty::schemaSql()},
        {101, "loyalty_seed", loyalty::seedSql()},
        // Product ids go under 100: a pest card of the crop calendar clears the pictures tagged 0 to 99
        // and tags a product's picture with its id, so a higher id left old pictures under new ones.
        // Databases seeded with 101 to 112 take 51 to 62, with every reference to them.
        {110, "products_under_100", R"sql(
PRAGMA defer_foreign_keys = ON;
UPDATE aps SET id = id - 50 WHERE id BETWEEN 101 AND 112;
UPDATE pest_aps SET ap_id = ap_id - 50 WHERE ap_id BETWEEN 101 AND 112;
UPDATE farm_aps SET ap_id = ap_id - 50 WHERE ap_id BETWEEN 101 AND 112;
UPDATE popups SET pest_id = pest_id - 50 WHERE pest_id BETWEEN 101 AND 112;
)sql"},
    };
    return list;
}

} // namespace ekinora::server
