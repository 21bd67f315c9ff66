// The errors tool window of a dialog: a small window with a list of the dialog's error messages
// that the user can dock to any edge of the dialog by dragging it there. Choosing a line asks
// the dialog to point at the faulty control.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "base/export.h"
#include "controls/window_base_win.h"

class VARION_API CErrorsWnd : public varion::Window {
 public:
  CErrorsWnd() = default;
  ~CErrorsWnd() override;

  // A hidden tool window owned by the dialog, `width` by `height` pixels.
  bool Create(HWND owner, int width = 320, int height = 140);
  void Destroy();
  HWND GetList() const { return m_list; }
  bool Exists() const { return IsWindow(m_hWnd) != FALSE; }

  void SetLines(const std::vector<std::string>& lines);
  std::vector<std::string> GetLines() const;

  // A line was chosen (double click): its index.
  std::function<void(int)> onChoose;
  // The user let go of the window after moving it.
  std::function<void()> onMoved;

 protected:
  LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
  void OnFinalMessage() override { m_list = nullptr; }

 private:
  HWND m_list = nullptr;  // a child: it goes with the window
};
