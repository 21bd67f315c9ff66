#include "framework/message_template.h"

#include <cctype>
#include <optional>

namespace varion {
namespace {

struct TextFormat {
  bool left = false;
  std::size_t width = 0;
  std::optional<std::size_t> precision;
};

bool Digit(char c) { return c >= '0' && c <= '9'; }

// Parses the printf part between the exclamation marks; only text conversions are taken.
std::optional<TextFormat> ParseFormat(std::string_view format) {
  TextFormat s;
  std::size_t i = 0;
  while (i < format.size() && format[i] == '-') s.left = true, ++i;
  while (i < format.size() && Digit(format[i])) s.width = s.width * 10 + static_cast<std::size_t>(format[i++] - '0');
  if (i < format.size() && format[i] == '.') {
    ++i;
    std::size_t p = 0;
    while (i < format.size() && Digit(format[i])) p = p * 10 + static_cast<std::size_t>(format[i++] - '0');
    s.precision = p;
  }
  const std::string_view type = format.substr(i);
  if (type != "s" && type != "ls" && type != "ws") return std::nullopt;
  if (s.width > 4096) return std::nullopt;  // a width is a column, not a memory request
  return s;
}

// Walks the template once; `emit` receives literal text, `insert` each argument reference.
// Returns the highest argument number, or -1 on a malformed template.
template <typename Emit, typename Insert>
int Walk(std::string_view t, Emit&& emit, Insert&& insert) {
  int highest = 0;
  for (std::size_t i = 0; i < t.size();) {
    const char c = t[i];
    if (c != '%') {
      emit(std::string_view(&t[i], 1));
      ++i;
      continue;
    }
    if (i + 1 >= t.size()) return -1;  // a lone '%' ends nothing
    const char n = t[i + 1];
    if (n == '0') return highest;  // ends the message, no line break added
    if (Digit(n)) {
      std::size_t j = i + 1;
      int number = n - '0';
      ++j;
      if (j < t.size() && Digit(t[j])) number = number * 10 + (t[j++] - '0');
      TextFormat format;
      if (j < t.size() && t[j] == '!') {
        const std::size_t close = t.find('!', j + 1);
        if (close == std::string_view::npos) return -1;
        const auto parsed = ParseFormat(t.substr(j + 1, close - j - 1));
        if (!parsed) return -1;
        format = *parsed;
        j = close + 1;
      }
      if (number > highest) highest = number;
      insert(number, format);
      i = j;
      continue;
    }
    switch (n) {
      case '%': emit("%"); break;
      case 'n': emit("\r\n"); break;
      case 'r': emit("\r"); break;
      case 't': emit("\t"); break;
      case ' ': emit(" "); break;
      case '.': emit("."); break;
      case '!': emit("!"); break;
      default: return -1;
    }
    i += 2;
  }
  return highest;
}

}  // namespace

int MessageTemplateArgCount(std::string_view tmpl) {
  return Walk(tmpl, [](std::string_view) {}, [](int, const TextFormat&) {});
}

bool FormatMessageTemplate(std::string_view tmpl, std::span<const std::string> args, std::string& out) {
  std::string text;
  bool missing = false;
  const int highest = Walk(
      tmpl, [&](std::string_view s) { text += s; },
      [&](int number, const TextFormat& format) {
        if (number > static_cast<int>(args.size())) {
          missing = true;
          return;
        }
        std::string_view value = args[static_cast<std::size_t>(number - 1)];
        if (format.precision && value.size() > *format.precision) value = value.substr(0, *format.precision);
        const std::size_t pad = format.width > value.size() ? format.width - value.size() : 0;
        if (!format.left) text.append(pad, ' ');
        text += value;
        if (format.left) text.append(pad, ' ');
      });
  if (highest < 0 || missing) return false;
  out = std::move(text);
  return true;
}

}  // namespace varion
