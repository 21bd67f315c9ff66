// Helpers of the message boxes' Wine tests: keys as a user types them, and an answer given to a
// box that the test does not construct itself (the framework's seam, a warning).
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/win_support.h"

namespace CMB::testing {

inline void PostKey(HWND target, UINT key) { PostMessageW(target, WM_KEYDOWN, key, 1); }

// Answers the next box of the thread from a timer, which the box's modal loop dispatches.
class TimerAnswer {
 public:
  explicit TimerAnswer(std::function<void(HWND)> act) {
    s_act = std::move(act);
    s_seen.clear();
    m_timer = SetTimer(nullptr, 0, 50, &TimerAnswer::Tick);
  }
  ~TimerAnswer() { KillTimer(nullptr, m_timer); }
  static inline std::vector<std::string> s_seen;

 private:
  static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
    HWND box = GetActiveWindow();
    if (!box || !GetDlgItem(box, 30105)) return;
    std::string seen = varion::testing::GetTextA(box);
    for (int id = 30105; id <= 30107; ++id)
      if (IsWindowVisible(GetDlgItem(box, id))) seen += "|" + varion::testing::GetTextA(GetDlgItem(box, id));
    if (!s_seen.empty() && s_seen.back() == seen) return;
    s_seen.push_back(seen);
    s_act(box);
  }
  static inline std::function<void(HWND)> s_act;
  UINT_PTR m_timer = 0;
};

}  // namespace CMB::testing
