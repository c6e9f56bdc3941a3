#include "behaviour.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "text-coding.h"

namespace {

const std::size_t trickle_pieces = 20;
// The number of bytes that are announced but not sent if the connection closes early.
const std::size_t missing_bytes = 1000;
const char not_http[] = "\x01\x02 not what you asked for \xff";

Behaviour::Close parse_close(const std::string& text)
{
  if (text == "before")
    return Behaviour::CLOSE_BEFORE;
  if (text == "middle")
    return Behaviour::CLOSE_MIDDLE;
  throw std::invalid_argument("close= takes before or middle");
}

int parse_status(const std::string& text)
{
  const int status = parse_number(text);
  if (status < 100 || status > 999)
    throw std::invalid_argument("\"" + text + "\" is not a status");
  return status;
}

std::pair<std::string, std::string> parse_header(const std::string& text)
{
  const auto colon = text.find(':');
  if (colon == std::string::npos || colon == 0)
    throw std::invalid_argument("header= takes NAME:VALUE");
  return {text.substr(0, colon), text.substr(colon + 1)};
}

std::string parse_damage(const std::string& text)
{
  for (const char* known : {"truncated", "empty", "not-bzip2", "not-tar"})
    if (text == known)
      return text;
  if (text.rfind("FILE:", 0) == 0)
    return text;
  throw std::invalid_argument("damaged= takes truncated, empty, not-bzip2, not-tar or FILE:PATH");
}

void read_flag(Behaviour& behaviour, const std::string& word)
{
  if (word == "garbage")
    behaviour.garbage = true;
  else if (word == "trickle")
    behaviour.trickle = true;
  else if (word != "ok")
    throw std::invalid_argument("unknown word \"" + word + "\"");
}

// The words that have a value, and their effects.
const struct {
  const char* name;
  void (*apply)(Behaviour& behaviour, const std::string& value);
} settings[] = {
    {"status", [](auto& behaviour, auto& value) { behaviour.status = parse_status(value); }},
    {"without", [](auto& behaviour, auto& value) { behaviour.without.push_back(value); }},
    {"header",
     [](auto& behaviour, auto& value) { behaviour.headers.push_back(parse_header(value)); }},
    {"error", [](auto& behaviour,
                 auto& value) { behaviour.headers.emplace_back("X-Survey-Upload-Error", value); }},
    {"long-header",
     [](auto& behaviour, auto& value) {
       const auto length = static_cast<std::size_t>(parse_number(value));
       behaviour.headers.emplace_back("X-Long", std::string(length, 'x'));
     }},
    {"delay", [](auto& behaviour,
                 auto& value) { behaviour.delay_ms = static_cast<unsigned>(parse_number(value)); }},
    {"close", [](auto& behaviour, auto& value) { behaviour.close = parse_close(value); }},
    {"redirect", [](auto& behaviour, auto& value) { behaviour.redirect = value; }},
    {"type", [](auto& behaviour, auto& value) { behaviour.type = value; }},
    {"damaged", [](auto& behaviour, auto& value) { behaviour.damage = parse_damage(value); }},
};

void read_setting(Behaviour& behaviour, const std::string& name, const std::string& value)
{
  const auto* const setting =
      std::find_if(std::begin(settings), std::end(settings),
                   [&name](const auto& known) { return name == known.name; });
  if (setting == std::end(settings))
    throw std::invalid_argument("unknown word \"" + name + "=\"");
  setting->apply(behaviour, value);
}

std::vector<std::string> cut(const std::string& bytes, std::size_t count)
{
  const std::size_t size = bytes.size() / count + 1;
  std::vector<std::string> pieces;
  for (std::size_t start = 0; start < bytes.size(); start += size)
    pieces.push_back(bytes.substr(start, size));
  return pieces;
}

} // namespace

bool Behaviour::accepts_request() const
{
  return !redirect && (!status || *status / 100 == 2);
}

void Behaviour::spoil(Answer& answer) const
{
  if (redirect) {
    answer.status = 302;
    answer.add_header("Location", *redirect);
  }
  if (status)
    answer.status = *status;
  for (const auto& name : without)
    answer.remove_header(name);
  for (const auto& [name, value] : headers)
    answer.add_header(name, value);
  if (type) {
    answer.remove_header("Content-Type");
    answer.add_header("Content-Type", *type);
  }
}

bool Behaviour::needs_raw_answer(const Answer& answer) const
{
  return delay_ms > 0 || close != CLOSE_NEVER || garbage || trickle || answer.status < 200 ||
         answer.has_broken_header();
}

std::vector<std::string> Behaviour::pieces(const Answer& answer) const
{
  if (close == CLOSE_BEFORE)
    return {};
  if (garbage)
    return {std::string(std::begin(not_http), std::end(not_http))};
  if (close == CLOSE_MIDDLE)
    return {answer.head(answer.body.size() + missing_bytes) +
            answer.body.substr(0, (answer.body.size() + 1) / 2)};
  const std::string all = answer.head(answer.body.size()) + answer.body;
  return trickle ? cut(all, trickle_pieces) : std::vector<std::string>{all};
}

Behaviour parse_behaviour(const std::string& spec, bool may_damage)
{
  Behaviour behaviour;
  for (const auto& word : split(spec, ',')) {
    const auto equals = word.find('=');
    if (equals == std::string::npos)
      read_flag(behaviour, word);
    else
      read_setting(behaviour, word.substr(0, equals), decode_percent(word.substr(equals + 1)));
  }
  if (!behaviour.damage.empty() && !may_damage)
    throw std::invalid_argument("only the archive can be damaged");
  return behaviour;
}

Turns::Turns(const std::vector<std::string>& specs, bool may_damage)
{
  for (const auto& spec : specs)
    behaviours.push_back(parse_behaviour(spec, may_damage));
  if (behaviours.empty())
    behaviours.emplace_back();
}

const Behaviour& Turns::next()
{
  const std::size_t turn = std::min(taken, behaviours.size() - 1);
  ++taken;
  return behaviours[turn];
}
