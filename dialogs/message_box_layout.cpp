#include "dialogs/message_box_layout.h"

#include <algorithm>

namespace CMB {
namespace {

using M = LayoutMetrics;

int TextLeft(const LayoutInput& in) { return M::kMargin + (in.hasIcon ? M::kIconSize + M::kIconGap : 0); }

int TextWidth(const LayoutInput& in, int width) { return std::max(1, width - TextLeft(in) - M::kMargin); }

int LineHeight(const ITextMeasure& measure) { return std::max(1, measure.MeasureLine("Ag").cy); }

// The heights the two texts get at a width: their natural heights while the box fits on the
// monitor, else the question keeps up to half of the room (it is what the user must answer) and
// the information text takes the rest; both keep a few lines and scroll.
struct TextHeights {
  int info = 0, question = 0;
  bool infoScrolls = false, questionScrolls = false;
};

int BelowTextsHeight(const LayoutInput& in, const ITextMeasure& measure) {
  int h = M::kGap + M::kButtonHeight + M::kMargin;
  if (!in.url.empty()) h += LineHeight(measure) + M::kGap;
  if (!in.dontShowAgain.empty()) h += std::max(LineHeight(measure), 16) + M::kGap;
  return h;
}

TextHeights Heights(const LayoutInput& in, const ITextMeasure& measure, int width) {
  const int textWidth = TextWidth(in, width);
  const auto natural = [&](const std::string& text, int asked) {
    if (text.empty()) return 0;
    return asked > 0 ? asked : measure.MeasureWrapped(text, textWidth).cy;
  };
  TextHeights h;
  const int infoNeed = natural(in.description, in.infoTextHeight);
  const int questionNeed = natural(in.question, in.questionTextHeight);
  const int between = infoNeed > 0 && questionNeed > 0 ? M::kGap : 0;
  const int room = in.maxClient.cy - M::kMargin - BelowTextsHeight(in, measure) - between;
  h.info = infoNeed;
  h.question = questionNeed;
  if (infoNeed + questionNeed <= room) return h;
  const int minText = M::kMinTextLines * LineHeight(measure);
  if (questionNeed > 0) h.question = std::min(questionNeed, std::max(minText, infoNeed > 0 ? room / 2 : room));
  if (infoNeed > 0) h.info = std::min(infoNeed, std::max(minText, room - h.question));
  // What the information text does not need goes back to the question.
  if (questionNeed > h.question) h.question = std::min(questionNeed, std::max(h.question, room - h.info));
  // Rectangles cut to whole lines, so that no line shows half.
  const int line = LineHeight(measure);
  if (h.info < infoNeed) h.info = std::max(line, h.info / line * line);
  if (h.question < questionNeed) h.question = std::max(line, h.question / line * line);
  h.infoScrolls = h.info < infoNeed;
  h.questionScrolls = h.question < questionNeed;
  return h;
}

int VisibleCaptionWidth(const LayoutInput& in, const ITextMeasure& measure) {
  int widest = 0;
  for (const auto& [id, setting] : in.buttons)
    if (GetButtonIDC(id) && setting.visible) widest = std::max(widest, measure.MeasureLine(setting.caption).cx);
  return widest;
}

}  // namespace

int GetButtonWidth(const LayoutInput& in, const ITextMeasure& measure) {
  return std::max({in.buttonWidth, int(M::kMinButtonWidth), VisibleCaptionWidth(in, measure) + M::kButtonPadding});
}

int CalculateWindowWidth(const LayoutInput& in, const ITextMeasure& measure) {
  int width = 0;
  if (in.windowWidth > 0) {
    width = in.windowWidth;
  } else {
    int text = M::kMinTextWidth;
    for (const std::string* s : {&in.description, &in.question})
      if (!s->empty()) text = std::max(text, measure.MeasureWrapped(*s, M::kPreferredTextWidth).cx);
    if (!in.url.empty()) text = std::max(text, std::min(measure.MeasureLine(in.url).cx, int(M::kPreferredTextWidth)));
    width = TextLeft(in) + text + M::kMargin;
  }
  const int buttons = GetVisibleButtonsNumber(in.buttons);
  if (buttons > 0)
    width = std::max(width, 2 * M::kMargin + buttons * GetButtonWidth(in, measure) + (buttons - 1) * M::kButtonGap);
  if (!in.dontShowAgain.empty())
    width = std::max(width, TextLeft(in) + measure.MeasureLine(in.dontShowAgain).cx + M::kCheckBoxExtra + M::kMargin);
  const int narrowest = TextLeft(in) + M::kMinTextWidth / 2 + M::kMargin;
  return std::max(std::min(width, in.maxClient.cx), std::min(narrowest, in.maxClient.cx));
}

int CalculateWindowHeight(const LayoutInput& in, const ITextMeasure& measure, int width) {
  const TextHeights h = Heights(in, measure, width);
  int texts = h.info + h.question + (h.info > 0 && h.question > 0 ? M::kGap : 0);
  if (in.hasIcon) texts = std::max(texts, int(M::kIconSize));
  return std::min(M::kMargin + texts + BelowTextsHeight(in, measure), std::max(in.maxClient.cy, 1));
}

void UpdateIconCtrlPos(const LayoutInput& in, MessageBoxLayout& out) {
  out.icon = in.hasIcon ? LayoutRect{M::kMargin, M::kMargin, M::kMargin + M::kIconSize, M::kMargin + M::kIconSize}
                        : LayoutRect{};
}

int UpdateInfoTextCtrlPos(const LayoutInput& in, const ITextMeasure& measure, MessageBoxLayout& out, int y) {
  const TextHeights h = Heights(in, measure, out.client.cx);
  out.infoScrolls = h.infoScrolls;
  if (h.info == 0) {
    out.info = {};
    return y;
  }
  out.info = {TextLeft(in), y, TextLeft(in) + TextWidth(in, out.client.cx), y + h.info};
  return out.info.bottom;
}

int UpdateQuestionCtrlPos(const LayoutInput& in, const ITextMeasure& measure, MessageBoxLayout& out, int y) {
  const TextHeights h = Heights(in, measure, out.client.cx);
  out.questionScrolls = h.questionScrolls;
  if (h.question == 0) {
    out.question = {};
    return y;
  }
  if (!out.info.IsEmpty()) y += M::kGap;
  out.question = {TextLeft(in), y, TextLeft(in) + TextWidth(in, out.client.cx), y + h.question};
  return out.question.bottom;
}

int UpdateLinkCtrlPos(const LayoutInput& in, const ITextMeasure& measure, MessageBoxLayout& out, int y) {
  if (in.url.empty()) {
    out.link = {};
    return y;
  }
  y += M::kGap;
  const int width = std::min(measure.MeasureLine(in.url).cx, TextWidth(in, out.client.cx));
  out.link = {TextLeft(in), y, TextLeft(in) + std::max(width, 1), y + LineHeight(measure)};
  return out.link.bottom;
}

int UpdateDontShowAgainCtrlPos(const LayoutInput& in, const ITextMeasure& measure, MessageBoxLayout& out, int y) {
  if (in.dontShowAgain.empty()) {
    out.checkBox = {};
    return y;
  }
  y += M::kGap;
  const int width =
      std::min(measure.MeasureLine(in.dontShowAgain).cx + M::kCheckBoxExtra, TextWidth(in, out.client.cx));
  out.checkBox = {TextLeft(in), y, TextLeft(in) + width, y + std::max(LineHeight(measure), 16)};
  return out.checkBox.bottom;
}

int UpdateButtonsCtrlPos(const LayoutInput& in, const ITextMeasure& measure, MessageBoxLayout& out, int y) {
  out.buttons = {};
  y += M::kGap;
  const int count = GetVisibleButtonsNumber(in.buttons);
  if (count == 0) return y + M::kButtonHeight;
  // On a box narrower than the row (a monitor too small) the buttons share what there is.
  const int room = out.client.cx - 2 * M::kMargin - (count - 1) * M::kButtonGap;
  const int width = std::max(1, std::min(GetButtonWidth(in, measure), room / count));
  const int row = count * width + (count - 1) * M::kButtonGap;
  int x = std::max(M::kMargin, (out.client.cx - row) / 2);
  for (const auto& [id, setting] : in.buttons) {
    if (!GetButtonIDC(id) || !setting.visible) continue;
    out.buttons[static_cast<int>(id)] = {x, y, x + width, y + M::kButtonHeight};
    x += width + M::kButtonGap;
  }
  return y + M::kButtonHeight;
}

MessageBoxLayout UpdateCtrlsPos(const LayoutInput& in, const ITextMeasure& measure) {
  MessageBoxLayout out;
  out.client.cx = CalculateWindowWidth(in, measure);
  out.client.cy = CalculateWindowHeight(in, measure, out.client.cx);
  UpdateIconCtrlPos(in, out);
  int y = UpdateInfoTextCtrlPos(in, measure, out, M::kMargin);
  y = UpdateQuestionCtrlPos(in, measure, out, y);
  if (in.hasIcon) y = std::max(y, out.icon.bottom);
  y = UpdateLinkCtrlPos(in, measure, out, y);
  y = UpdateDontShowAgainCtrlPos(in, measure, out, y);
  UpdateButtonsCtrlPos(in, measure, out, y);
  return out;
}

}  // namespace CMB
