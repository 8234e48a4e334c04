#pragma once

#include "core/Clock.h"
#include "core/Database.h"
#include "core/Dispatch.h"
#include "core/Envelope.h"

#include <cstdint>
#include <string>

namespace ekinora::server::contests {

// A contest's state as the list shows it: before its start, after its end or its draw, or running.
inline const std::string Pending = "pending";
inline const std::string Ended = "ended";
inline const std::string Running = "active";

// Question kinds. The app shows choices for every kind but "image" and "textarea"; a "textarea"
// question with choices has a written answer behind its last choice.
inline const std::string Single = "single";
inline const std::string Multiple = "multiple";
inline const std::string Written = "textarea";
inline const std::string Photo = "image";

// Draws the winners of a contest among the farmers who answered every question: those who answered
// every choice question right come first; when they are fewer than the prizes, the other entrants
// fill the places. Nothing happens to a contest already drawn. Returns how many won.
int draw(Database& db, std::int64_t surveyId, std::int64_t now);

// Draws every contest whose end has passed and that has not been drawn.
void drawEnded(Database& db, std::int64_t now);

// `surveys`, `surveys/detail` and `surveys/submit` for the farmer side; `surveys/draw` for staff.
void registerContestCommands(Dispatch& dispatch, Database& db, Clock clock);

// The demo contests: one finished and drawn (the demo farmer among its winners), one running that
// the demo farmer has not entered, one not started. Dates are set from now on the first run only.
void seedContests(Database& db, Clock clock);

} // namespace ekinora::server::contests
