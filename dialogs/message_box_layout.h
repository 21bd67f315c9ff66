// The layout of CMB::CustomizableMessageBox: the client size computed from the measured texts
// and the visible buttons, and the rectangle of every control. Portable, so that it is tested
// with a fake text measure; the window measures with its dialog font and places the controls
// where this says. Every length is in pixels of the box's client area.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/export.h"
#include "dialogs/message_box_buttons.h"

namespace CMB {

struct LayoutSize {
  int cx = 0, cy = 0;
};

struct LayoutRect {
  int left = 0, top = 0, right = 0, bottom = 0;
  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  bool IsEmpty() const { return right <= left || bottom <= top; }
  bool Intersects(const LayoutRect& o) const {
    return !IsEmpty() && !o.IsEmpty() && left < o.right && o.left < right && top < o.bottom && o.top < bottom;
  }
};

// How the window measures text in its font.
class VARION_API ITextMeasure {
 public:
  virtual ~ITextMeasure() = default;
  // The size of a text broken into lines at word boundaries (and at line breaks) no wider than
  // `maxWidth`; a word longer than the width is broken inside.
  virtual LayoutSize MeasureWrapped(std::string_view text, int maxWidth) const = 0;
  // The size of a text on one line, '&' accelerator marks not counted.
  virtual LayoutSize MeasureLine(std::string_view text) const = 0;
};

// What the layout depends on. Zero in a setter's field means "computed".
struct LayoutInput {
  std::string description;   // the information text
  std::string question;
  std::string url;           // the link's text, empty for none
  std::string dontShowAgain; // the check box's caption, empty for none
  ButtonsSetting buttons;
  bool hasIcon = false;
  int windowWidth = 0;        // SetWindowWidth: the client width asked for
  int buttonWidth = 0;        // SetButtonWidth
  int infoTextHeight = 0;     // SetInfoTextHeight
  int questionTextHeight = 0; // SetQuestionTextHeight
  // The largest client area that still fits on the monitor's work area with the frame.
  LayoutSize maxClient{1024, 740};
};

// Metrics of the box: margins, the icon, the gaps and the buttons.
struct LayoutMetrics {
  static constexpr int kMargin = 12;
  static constexpr int kIconSize = 32;
  static constexpr int kIconGap = 12;
  static constexpr int kGap = 10;
  static constexpr int kButtonHeight = 25;
  static constexpr int kButtonGap = 8;
  static constexpr int kMinButtonWidth = 80;
  static constexpr int kButtonPadding = 24;  // caption to button edges, both sides together
  static constexpr int kCheckBoxExtra = 24;  // the box and its gap before the caption
  static constexpr int kMinTextWidth = 200;
  static constexpr int kPreferredTextWidth = 420;  // longer texts wrap at this width
  static constexpr int kMinTextLines = 3;  // a scrolled text keeps at least this many lines
};

// Every control's place. Hidden controls have empty rectangles.
struct MessageBoxLayout {
  LayoutSize client;
  LayoutRect icon, info, question, link, checkBox;
  std::array<LayoutRect, 3> buttons;  // by ButtonId
  bool infoScrolls = false;           // the text is taller than its rectangle
  bool questionScrolls = false;
};

// The width of each visible button: the asked width, at least the minimum, and wide enough for
// the widest caption, so that all buttons are equal.
VARION_API int GetButtonWidth(const LayoutInput& in, const ITextMeasure& measure);
// The client width: the asked width or the texts' natural width, never narrower than the button
// row or the check box and never wider than the monitor allows.
VARION_API int CalculateWindowWidth(const LayoutInput& in, const ITextMeasure& measure);
// The client height for a width; texts too tall for the monitor are cut to scrolling rectangles.
VARION_API int CalculateWindowHeight(const LayoutInput& in, const ITextMeasure& measure, int width);
// The whole layout, built by the per-control functions below from top to bottom.
VARION_API MessageBoxLayout UpdateCtrlsPos(const LayoutInput& in, const ITextMeasure& measure);

// The per-control steps. Each takes the layout so far and the cursor `y` (the first free row),
// places its control and returns the next free row.
VARION_API void UpdateIconCtrlPos(const LayoutInput& in, MessageBoxLayout& out);
VARION_API int UpdateInfoTextCtrlPos(const LayoutInput& in, const ITextMeasure& measure, MessageBoxLayout& out, int y);
VARION_API int UpdateQuestionCtrlPos(const LayoutInput& in, const ITextMeasure& measure, MessageBoxLayout& out, int y);
VARION_API int UpdateLinkCtrlPos(const LayoutInput& in, const ITextMeasure& measure, MessageBoxLayout& out, int y);
VARION_API int UpdateDontShowAgainCtrlPos(const LayoutInput& in, const ITextMeasure& measure, MessageBoxLayout& out, int y);
VARION_API int UpdateButtonsCtrlPos(const LayoutInput& in, const ITextMeasure& measure, MessageBoxLayout& out, int y);

}  // namespace CMB
