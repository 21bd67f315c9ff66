#include "controls/regex_patterns.h"

#include <stdexcept>
#include <string>

namespace varion {

Regex CompilePattern(std::string_view pattern) {
  return Regex(std::string(pattern), boost::regex_constants::ECMAScript | boost::regex_constants::no_mod_m);
}

bool MatchWhole(const Regex& re, std::string_view text, RegexMatch& groups) {
  try {
    return boost::regex_match(text.data(), text.data() + text.size(), groups, re,
                              boost::regex_constants::match_not_dot_newline);
  } catch (const std::runtime_error&) {
    // Boost gives up on a match that would take too long (its state-count bound).
    groups = RegexMatch();
    return false;
  }
}

std::optional<bool> TryMatchWhole(const Regex& re, std::string_view text) {
  try {
    return boost::regex_match(text.data(), text.data() + text.size(), re,
                              boost::regex_constants::match_not_dot_newline);
  } catch (const std::runtime_error&) {
    return std::nullopt;
  }
}

bool MatchWhole(const Regex& re, std::string_view text) { return TryMatchWhole(re, text).value_or(false); }

}  // namespace varion
