// Timings of the amount field on Windows (run under Wine): a typed character (WM_CHAR sent and
// answered) in the amount field against the same in a plain EDIT, and the cost of attaching the
// field to a new edit. A plain program: each figure is the median of several turns, timed with
// QueryPerformanceCounter.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "bench/win/bench_clock_win.h"
#include "base/text.h"
#include "controls/currency_edit_win.h"

namespace {

using varion::bench::Median;
using varion::bench::Now;

HWND MakeEdit(HWND parent, const wchar_t* text) {
  return CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", text, WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 0, 0, 200, 24,
                         parent, nullptr, nullptr, nullptr);
}

constexpr int kPairs = 1000;  // a digit and a Backspace each, per sample

// Seconds per WM_CHAR: a digit typed before the decimal point (the field's caret after setting
// its text; the end of the plain edit's text) and taken back with Backspace, so that every
// sample starts from the same text.
double TypeAndTakeBack(HWND edit) {
  const double start = Now();
  for (int i = 0; i < kPairs; ++i) {
    SendMessageW(edit, WM_CHAR, '5', 1);
    SendMessageW(edit, WM_CHAR, '\b', 1);
  }
  return (Now() - start) / (2.0 * kPairs);
}

std::string Text(HWND edit) {
  wchar_t buf[64] = {};
  GetWindowTextW(edit, buf, 64);
  return varion::text::WideToCp1250(buf);
}

}  // namespace

int main() {
  INITCOMMONCONTROLSEX icc{sizeof icc, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&icc);
  HWND parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 300, 100, nullptr, nullptr, nullptr, nullptr);
  HWND plain = MakeEdit(parent, L"12345");
  HWND field = MakeEdit(parent, L"12345");
  CVelCurrencyEdit::Attach(field);
  SendMessageW(plain, EM_SETSEL, 5, 5);
  for (int i = 0; i < 3; ++i) {  // warm-up: heaps, caches, the locale
    TypeAndTakeBack(plain);
    TypeAndTakeBack(field);
  }

  // The machine is shared and the window system is another process, so the timings drift: the
  // two edits are timed in turns, back to back, and the ratio is taken within each turn.
  constexpr int kTurns = 15;
  std::vector<double> plainTimes, fieldTimes, ratios;
  for (int turn = 0; turn < kTurns; ++turn) {
    plainTimes.push_back(TypeAndTakeBack(plain));
    fieldTimes.push_back(TypeAndTakeBack(field));
    ratios.push_back(fieldTimes.back() / plainTimes.back());
  }
  const bool steady = Text(plain) == "12345" && Text(field) == "12345,0000";
  std::printf("WM_CHAR round trip, %d turns of %d characters (median per character)\n", kTurns, 2 * kPairs);
  std::printf("  %-32s %8.2f us\n", "plain EDIT", Median(plainTimes) * 1e6);
  std::printf("  %-32s %8.2f us  ratio %.2f (median of the turns)%s\n", "amount field", Median(fieldTimes) * 1e6,
              Median(ratios), steady ? "" : "  (WRONG TEXT)");

  // Attaching: the bitmaps of the buttons are loaded and the frame recomputed for every field.
  constexpr int kWindows = 200;
  std::vector<double> plainMade, fieldMade;
  for (int turn = 0; turn < 7; ++turn) {
    for (bool attach : {false, true}) {
      std::vector<HWND> made(kWindows);
      const double start = Now();
      for (HWND& h : made) {
        h = MakeEdit(parent, L"1");
        if (attach) CVelCurrencyEdit::Attach(h);
      }
      (attach ? fieldMade : plainMade).push_back((Now() - start) / kWindows);
      for (HWND h : made) DestroyWindow(h);
    }
  }
  std::printf("creating an edit, %d per turn (median per edit)\n", kWindows);
  std::printf("  %-32s %8.2f us\n", "plain EDIT", Median(plainMade) * 1e6);
  std::printf("  %-32s %8.2f us\n", "EDIT with the amount field", Median(fieldMade) * 1e6);
  DestroyWindow(parent);
  return steady ? 0 : 1;
}
