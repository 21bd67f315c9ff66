#include "params/params_page_layout.h"

#include <cctype>
#include <utility>

namespace varion::params {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

bool StartsWithNoCase(std::string_view s, std::string_view prefix) {
  if (s.size() < prefix.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i)
    if (std::tolower(static_cast<unsigned char>(s[i])) != std::tolower(static_cast<unsigned char>(prefix[i]))) return false;
  return true;
}

// The value of attribute `name` inside a tag's text, or "".
std::string Attribute(std::string_view tag, std::string_view name) {
  for (std::size_t at = 0; (at = tag.find(name, at)) != std::string_view::npos; at += name.size()) {
    std::size_t v = at + name.size();
    if (at > 0 && !IsBlank(tag[at - 1])) continue;
    if (v >= tag.size() || tag[v] != '=') continue;
    ++v;
    if (v < tag.size() && tag[v] == '"') {
      const std::size_t end = tag.find('"', v + 1);
      return std::string(tag.substr(v + 1, end == std::string_view::npos ? std::string_view::npos : end - v - 1));
    }
    std::size_t end = v;
    while (end < tag.size() && !IsBlank(tag[end]) && tag[end] != '>') ++end;
    return std::string(tag.substr(v, end - v));
  }
  return {};
}

}  // namespace

std::vector<PageRun> PageRuns(std::string_view html) {
  std::vector<PageRun> runs;
  std::size_t at = 0;
  for (; at < html.size(); ++at)  // the body starts after its tag
    if (html[at] == '<' && StartsWithNoCase(html.substr(at), "<body")) break;
  at = html.find('>', at);
  if (at == std::string_view::npos) return runs;
  ++at;
  PageRun current;
  bool lastBlank = true;  // blanks at the start of the body show nothing
  auto close = [&] {
    if (!current.text.empty()) runs.push_back(current);
    current = PageRun();
  };
  while (at < html.size()) {
    const char c = html[at];
    if (c == '<') {
      const std::size_t end = html.find('>', at);
      const std::string_view tag = html.substr(at, end == std::string_view::npos ? html.size() - at : end - at + 1);
      if (StartsWithNoCase(tag, "</body")) break;
      if (StartsWithNoCase(tag, "<a ") || StartsWithNoCase(tag, "</a")) {
        close();
        if (tag[1] != '/') {
          current.href = Attribute(tag, "href");
          current.defined = Attribute(tag, "class") == "Defined";
        }
      }
      at += tag.size();
      continue;
    }
    if (IsBlank(c)) {
      if (!lastBlank) current.text += ' ';
      lastBlank = true;
    } else if (c == '&') {
      // The four escapes the page writes for a shown value; any other '&' is a character.
      static constexpr std::pair<std::string_view, char> kEscapes[] = {
          {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}};
      char shown = '&';
      std::size_t length = 1;
      for (const auto& [escape, character] : kEscapes)
        if (html.substr(at, escape.size()) == escape) {
          shown = character;
          length = escape.size();
          break;
        }
      current.text += shown;
      lastBlank = false;
      at += length;
      continue;
    } else {
      current.text += c;
      lastBlank = false;
    }
    ++at;
  }
  close();
  if (!runs.empty() && !runs.back().text.empty() && runs.back().text.back() == ' ') runs.back().text.pop_back();
  if (!runs.empty() && runs.back().text.empty()) runs.pop_back();
  return runs;
}

std::vector<PageBox> FlowRuns(const std::vector<PageRun>& runs, int width, int lineHeight,
                              const std::function<int(std::string_view)>& measure) {
  std::vector<PageBox> boxes;
  int x = 0, y = 0;
  for (int r = 0; r < static_cast<int>(runs.size()); ++r) {
    const std::string& text = runs[r].text;
    for (std::size_t at = 0; at < text.size();) {
      // A word and the blank after it.
      std::size_t end = text.find(' ', at);
      end = end == std::string::npos ? text.size() : end + 1;
      std::string_view word(text.data() + at, end - at);
      const std::string_view ink = word.back() == ' ' ? word.substr(0, word.size() - 1) : word;
      if (x > 0 && x + measure(ink) > width) {
        x = 0;
        y += lineHeight;
      }
      if (x == 0 && ink.empty()) {  // a blank that would open a line shows nothing
        at = end;
        continue;
      }
      const int w = measure(word);
      if (!boxes.empty() && boxes.back().run == r && boxes.back().y == y) {
        boxes.back().text.append(word);
        boxes.back().width += w;
      } else {
        boxes.push_back({r, std::string(word), x, y, w});
      }
      x += w;
      at = end;
    }
  }
  return boxes;
}

}  // namespace varion::params
