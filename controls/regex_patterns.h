// Regular expressions of the validators: Boost.Regex in ECMAScript mode with the classic "C"
// character classes on every platform, so "\d", "\w" and "\s" mean ASCII classes both natively and
// under Windows (where Boost would otherwise classify code page 1250 letters by the user locale).
#pragma once

#include <optional>
#include <string_view>

#include <boost/regex.hpp>

namespace varion {

using Regex = boost::basic_regex<char, boost::cpp_regex_traits<char>>;
using RegexMatch = boost::match_results<const char*>;

// Compiles an ECMAScript pattern: "^" and "$" anchor only at the ends of the text.
Regex CompilePattern(std::string_view pattern);

// Whole-text match. As in ECMAScript, "." matches neither "\n" nor "\r". Nothing when the engine
// gives up (its bound on backtracking, reached only by long pathological texts).
std::optional<bool> TryMatchWhole(const Regex& re, std::string_view text);
// The same where giving up counts as not matching.
bool MatchWhole(const Regex& re, std::string_view text);
bool MatchWhole(const Regex& re, std::string_view text, RegexMatch& groups);

}  // namespace varion
