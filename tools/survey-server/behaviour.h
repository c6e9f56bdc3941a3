#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "answer.h"

// How one request is answered: as it should be, unless told otherwise.
struct Behaviour {
  enum Close { CLOSE_NEVER, CLOSE_BEFORE, CLOSE_MIDDLE };

  std::optional<int> status;                                // instead of the fitting one
  std::vector<std::string> without;                         // headers left out
  std::vector<std::pair<std::string, std::string>> headers; // headers added: name, value
  std::optional<std::string> redirect;                      // address to go to instead
  std::optional<std::string> type; // content type instead of the fitting one
  std::string damage;              // of an archive; empty: none
  unsigned delay_ms = 0;
  Close close = CLOSE_NEVER;
  bool garbage = false;
  bool trickle = false;

  // Whether the request is taken, that is, a survey kept.
  bool takes_request() const;
  // Changes an answer that is as it should be.
  void spoil(Answer& answer) const;
  // Whether the library cannot answer so.
  bool needs_raw_answer(const Answer& answer) const;
  // What goes over the wire, piece by piece. Nothing if it is closed before.
  std::vector<std::string> pieces(const Answer& answer) const;
};

// Reads the words of a SPEC. Throws std::invalid_argument with what is wrong;
// `may_damage` tells whether there is an archive to damage.
Behaviour parse_behaviour(const std::string& spec, bool may_damage);

// The behaviours of one road, request by request; the last one stays.
class Turns
{
public:
  Turns(const std::vector<std::string>& specs, bool may_damage);
  const Behaviour& next();

  std::vector<Behaviour> behaviours; // at least one
  std::size_t taken = 0;
};
