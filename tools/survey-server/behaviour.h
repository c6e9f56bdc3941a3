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
  unsigned delay_ms = 0;                                    // before the answer
  Close close = CLOSE_NEVER; // when the connection closes early: before the answer or in its body
  bool garbage = false;      // bytes that are not HTTP instead of the answer
  bool trickle = false;      // the answer in small pieces

  // Returns whether the server accepts the request and stores the survey.
  bool accepts_request() const;
  // Applies the wrong status and headers to a correct answer.
  void spoil(Answer& answer) const;
  // Returns whether the server must write the answer to the connection itself, because the HTTP
  // library cannot send it.
  bool needs_raw_answer(const Answer& answer) const;
  // Returns the bytes of the answer in pieces; none if the connection closes before the answer.
  std::vector<std::string> pieces(const Answer& answer) const;
};

// Returns the behaviour that a SPEC describes; --help lists its words. `may_damage` says whether
// the answer has an archive that can be damaged. Throws std::invalid_argument with a message for
// the user if the SPEC is invalid.
Behaviour parse_behaviour(const std::string& spec, bool may_damage);

// The behaviours of one route, by request. The last one applies to all later requests.
class Turns
{
public:
  // Without a SPEC, all answers are correct. Throws std::invalid_argument like parse_behaviour().
  Turns(const std::vector<std::string>& specs, bool may_damage);
  // Returns the behaviour for the next request. It is valid as long as this object.
  const Behaviour& next();

  std::vector<Behaviour> behaviours; // at least one
  std::size_t taken = 0;             // the number of requests so far
};
