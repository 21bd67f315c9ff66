// The errors tool window of a dialog: a small window with a list of the dialog's error messages
// that the user can dock to any edge of the dialog by dragging it there. Choosing a line asks
// the dialog to point at the faulty control.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "base/export.h"

class VARION_API CErrorsWnd {
 public:
  CErrorsWnd() = default;
  ~CErrorsWnd();
  CErrorsWnd(const CErrorsWnd&) = delete;
  CErrorsWnd& operator=(const CErrorsWnd&) = delete;

  // A hidden tool window owned by the dialog, `width` by `height` pixels.
  bool Create(HWND owner, int width = 320, int height = 140);
  void Destroy();
  HWND GetHwnd() const { return m_hwnd; }
  HWND GetList() const { return m_list; }
  bool Exists() const { return IsWindow(m_hwnd) != FALSE; }

  void SetLines(const std::vector<std::string>& lines);
  std::vector<std::string> GetLines() const;

  // A line was chosen (double click): its index.
  std::function<void(int)> onChoose;
  // The user let go of the window after moving it.
  std::function<void()> onMoved;

 private:
  static LRESULT CALLBACK WndProc(HWND, UINT, WPARAM, LPARAM);
  LRESULT Handle(UINT msg, WPARAM wp, LPARAM lp);
  HWND m_hwnd = nullptr;
  HWND m_list = nullptr;
};
