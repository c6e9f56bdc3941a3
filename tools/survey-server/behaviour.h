#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "answer.h"

// How the server answers one request. By default it answers correctly.
struct Behaviour {
  enum Close { CLOSE_NEVER, CLOSE_BEFORE, CLOSE_MIDDLE };

  std::optional<int> status;                                // instead of the correct status
  std::vector<std::string> without;                         // omitted headers
  std::vector<std::pair<std::string, std::string>> headers; // additional headers: name, value
  std::optional<std::string> redirect;                      // the address of a redirection
  std::optional<std::string> type;                          // instead of the correct content type
  std::string damage;                                       // the damage of an archive; empty: none
  unsigned delay_ms = 0;
  Close close = CLOSE_NEVER;
  bool garbage = false;
  bool trickle = false;

  // Returns whether the server accepts the request and stores the survey.
  bool takes_request() const;
  // Changes a correct answer.
  void spoil(Answer& answer) const;
  // Returns whether the library cannot send this answer.
  bool needs_raw_answer(const Answer& answer) const;
  // Returns the bytes of the answer in pieces; none if the connection closes before.
  std::vector<std::string> pieces(const Answer& answer) const;
};

// Reads the words of a SPEC. `may_damage` says whether the answer has an archive that can be
// damaged. Throws std::invalid_argument with a message for the user.
Behaviour parse_behaviour(const std::string& spec, bool may_damage);

// The behaviours of one route, by request. The last one applies to all later requests.
class Turns
{
public:
  Turns(const std::vector<std::string>& specs, bool may_damage);
  const Behaviour& next();

  std::vector<Behaviour> behaviours; // at least one
  std::size_t taken = 0;
};
