// The parameter view as a window. The page is drawn by the window itself from the page's own HTML
// (its body read back into text and links and flowed like inline text): Wine ships no HTML engine
// of its own (mshtml needs Wine Gecko, which is a separate download), and the page is a single
// paragraph of labels and links that needs nothing more. A click on a link, or Enter on the link
// that has the focus (Tab moves it), is a followed link of the view.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "base/export.h"
#include "base/handles_win.h"
#include "controls/window_base_win.h"
#include "params/params_html_ctrl.h"
#include "params/params_page_layout.h"

class VARION_API CParamsHtmlWnd : public CParamsHtmlCtrl, public varion::Window {
 public:
  static constexpr const wchar_t* kClassName = L"vel_paramsview";
  // The parent is told that a followed link changed a parameter (and so the WHERE text) by
  // WM_COMMAND with this code and the view's identifier; the parameter's index is in GetLastChanged.
  static constexpr WORD kNotifyParamChanged = 1;

  CParamsHtmlWnd() = default;
  ~CParamsHtmlWnd() override;

  // Creates the child window and shows the home page.
  bool Create(HWND parent, const RECT& rect, int id);
  HWND GetSafeHwnd() const { return m_hWnd; }

  void WriteContents(const char* html) override;
  void OnParamChanged(int index) override;
  int GetLastChanged() const { return m_lastChanged; }

  // The links as laid out: count, and the first line's rectangle, address and text of one.
  int GetLinkCount() const;
  bool GetLink(int index, RECT& rect, std::string& href, std::string& text) const;

 protected:
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
  std::string FailureCaption() const override { return "Parametry zestawienia"; }

 private:
  void MakeFonts();
  void Reflow();
  void Paint(HDC dc);
  int LinkRunAt(POINT pt) const;   // run index of the link under a point, or -1
  std::vector<int> LinkRuns() const;
  void MoveFocus(bool back);
  void Follow(int run);

  varion::unique_font m_font, m_linkFont;
  std::string m_fontKey;
  int m_lineHeight = 16;
  std::vector<varion::params::PageRun> m_runs;
  std::vector<varion::params::PageBox> m_boxes;
  int m_focusRun = -1;
  int m_lastChanged = -1;
};
