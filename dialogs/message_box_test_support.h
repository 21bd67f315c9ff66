// A text measure for tests of the message box layout: every character is 7 pixels wide, a line
// is 15 high, and lines break at blanks (or inside a word longer than the width), the way the
// system's word break does.
#pragma once

#include <algorithm>
#include <string_view>

#include "dialogs/message_box_layout.h"

namespace CMB::testing {

class FakeMeasure : public ITextMeasure {
 public:
  static constexpr int kChar = 7, kLine = 15;

  LayoutSize MeasureLine(std::string_view text) const override {
    const auto marks = std::count(text.begin(), text.end(), '&');
    return {static_cast<int>(text.size() - marks) * kChar, kLine};
  }

  LayoutSize MeasureWrapped(std::string_view text, int maxWidth) const override {
    const int perLine = std::max(1, maxWidth / kChar);
    int lines = 1, column = 0, widest = 0;
    std::size_t i = 0;
    while (i < text.size()) {
      if (text[i] == '\n') {
        widest = std::max(widest, column);
        ++lines, column = 0, ++i;
        continue;
      }
      std::size_t end = text.find_first_of(" \n", i);
      if (end == std::string_view::npos) end = text.size();
      int word = static_cast<int>(end - i);
      if (column > 0 && column + 1 + word > perLine) {
        widest = std::max(widest, column);
        ++lines, column = 0;
      } else if (column > 0) {
        ++column;  // the blank before the word
      }
      while (word > perLine) {  // a word longer than a line breaks inside
        widest = perLine;
        ++lines, word -= perLine;
      }
      column += word;
      i = end < text.size() && text[end] == ' ' ? end + 1 : end;
    }
    widest = std::max(widest, column);
    return {widest * kChar, lines * kLine};
  }
};

}  // namespace CMB::testing
