#include "db/connection_string.h"

#include "db/recordset.h"

namespace varion::db {
namespace {

std::string_view Trim(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

}  // namespace

Status32 ConnectionString::Parse(std::string_view text, ConnectionString& out) {
  ConnectionString result;
  std::size_t i = 0;
  while (i < text.size()) {
    std::size_t eq = text.find_first_of("=;", i);
    if (eq == std::string_view::npos || text[eq] == ';') {
      // Blank segments between semicolons are tolerated; anything else needs a value.
      std::size_t end = eq == std::string_view::npos ? text.size() : eq;
      if (!Trim(text.substr(i, end - i)).empty()) return kInvalidArg;
      i = end + 1;
      continue;
    }
    std::string key(Trim(text.substr(i, eq - i)));
    if (key.empty()) return kInvalidArg;
    std::size_t j = eq + 1;
    while (j < text.size() && (text[j] == ' ' || text[j] == '\t')) ++j;
    std::string value;
    if (j < text.size() && text[j] == '{') {
      ++j;
      for (;;) {
        if (j >= text.size()) return kInvalidArg;
        if (text[j] == '}') {
          if (j + 1 < text.size() && text[j + 1] == '}') {
            value += '}';
            j += 2;
            continue;
          }
          ++j;
          break;
        }
        value += text[j++];
      }
      while (j < text.size() && (text[j] == ' ' || text[j] == '\t')) ++j;
      if (j < text.size() && text[j] != ';') return kInvalidArg;
    } else {
      std::size_t end = text.find(';', j);
      if (end == std::string_view::npos) end = text.size();
      value = std::string(Trim(text.substr(j, end - j)));
      j = end;
    }
    result.m_pairs.emplace_back(std::move(key), std::move(value));
    i = j + 1;
  }
  out = std::move(result);
  return kOk;
}

std::optional<std::string> ConnectionString::Get(std::string_view key) const {
  for (auto it = m_pairs.rbegin(); it != m_pairs.rend(); ++it)
    if (SameName(it->first, key)) return it->second;
  return std::nullopt;
}

void ConnectionString::Remove(std::string_view key) {
  std::erase_if(m_pairs, [&](const auto& p) { return SameName(p.first, key); });
}

void ConnectionString::Set(std::string_view key, std::string value) {
  Remove(key);
  m_pairs.emplace_back(std::string(key), std::move(value));
}

std::string ConnectionString::ToString() const {
  std::string out;
  for (const auto& [key, value] : m_pairs) {
    if (!out.empty()) out += ';';
    out += key;
    out += '=';
    bool brace = value.find_first_of(";{}") != std::string::npos ||
                 (!value.empty() && (value.front() == ' ' || value.back() == ' '));
    if (!brace) {
      out += value;
      continue;
    }
    out += '{';
    for (char c : value) {
      out += c;
      if (c == '}') out += '}';
    }
    out += '}';
  }
  return out;
}

}  // namespace varion::db
