// The small controls of the library's own window classes, each an object the creation hook
// attaches to the window as it is made:
//   "vel_addbtn", "vel_editbtn", "vel_listbtn", "vel_deletebtn"  flat action buttons with a drawn
//       symbol and the tooltips "Dodaj", "Edytuj", "Lista", "Usuń";
//   "vel_bmpbutton"       a flat button showing the bitmap resource its window text names;
//   "vel_hyperlink"       link text: tells the parent, and opens its address when it has one;
//   "vel_combohyperlink", "vel_combohyperlinkex"  a link showing the current choice of a list,
//       which drops down on a click (the "ex" form shows its window text in front of the link);
//   "vel_infoframe"       a framed panel with the information icon and its text wrapped;
//   "vel_bkgnd"           a panel painting the dialog background behind other controls;
//   "vel_piepercent"      a pie of a percentage set with PBM_SETPOS.
// Buttons and links send BN_CLICKED to the parent on a click, on Space and on Enter.
//
// The other classes registered with the default procedure stay as they are, on purpose:
// "vel_htmlctrl" and "vel_htmlcnt" need an HTML engine, which this system does not have (the
// parameter view draws its page itself); "vel_gridcnt" and "vel_planner" stand for containers of
// the grid and planner libraries the hosts bring; "vel_colorpopup" is the drop-down of the colour
// picker, which uses the system's colour dialog instead; "vel_eyes" is a decoration no form uses.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "base/export.h"
#include "base/handles_win.h"
#include "controls/vel_controls_win.h"

namespace varion {

// The choice list of a combo link drops down through this: the choices, the current one, and
// the index picked (-1: none). Tests answer without a menu; an empty function restores it.
using ChoiceMenuHook = std::function<int(HWND owner, const std::vector<std::string>& choices, int current)>;
VARION_API void SetChoiceMenuHook(ChoiceMenuHook hook);

}  // namespace varion

// A window of ours that paints itself, takes the focus, and clicks like a button.
class VARION_API CVelClickable : public CVelControlBase {
 public:
  static CVelClickable* FromHandle(HWND window) { return FromHandleAs<CVelClickable>(window); }
  // What a click does: BN_CLICKED to the parent; links also open their address.
  virtual void Click();

 protected:
  CVelClickable() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
  virtual void Paint(HDC dc, const RECT& client) = 0;
  bool Pressed() const { return m_pressed && m_inside; }
  bool Hot() const { return m_hot; }

 private:
  bool m_pressed = false, m_inside = false, m_hot = false, m_spaceDown = false;
};

// "vel_addbtn", "vel_editbtn", "vel_listbtn", "vel_deletebtn".
class VARION_API CVelActionButton : public CVelClickable {
 public:
  enum Action { kAdd, kEdit, kList, kDelete };
  static BOOL AttachCreating(HWND window, CREATESTRUCTW* create);
  static CVelActionButton* FromHandle(HWND window) { return FromHandleAs<CVelActionButton>(window); }
  Action GetAction() const { return m_action; }
  // The tooltip's text: "Dodaj", "Edytuj", "Lista" or "Usuń".
  static const char* TooltipText(Action action);
  HWND GetTooltip() const { return m_tooltip.get(); }

 protected:
  friend class CVelControlBase;
  CVelActionButton() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
  void Paint(HDC dc, const RECT& client) override;

 private:
  void MakeTooltip();
  Action m_action = kAdd;
  varion::unique_window m_tooltip;
};

// "vel_bmpbutton": the window text names a bitmap of the host program ("IDB_SAVE", or "#101"
// for a numeric identifier), else of the library; without one the text itself is drawn.
class VARION_API CVelBmpButton : public CVelClickable {
 public:
  static BOOL AttachCreating(HWND window, CREATESTRUCTW* create);
  static CVelBmpButton* FromHandle(HWND window) { return FromHandleAs<CVelBmpButton>(window); }
  HBITMAP GetBitmap() const { return m_bitmap.get(); }

 protected:
  friend class CVelControlBase;
  CVelBmpButton() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
  void Paint(HDC dc, const RECT& client) override;

 private:
  void LoadNamedBitmap();
  varion::unique_bitmap m_bitmap;
};

// "vel_hyperlink": its window text as a link. With an address (http, https or mailto) a click
// opens it through the shell's "open"; the parent hears of every click.
class VARION_API CVelHyperlink : public CVelClickable {
 public:
  static BOOL AttachCreating(HWND window, CREATESTRUCTW* create);
  static CVelHyperlink* FromHandle(HWND window) { return FromHandleAs<CVelHyperlink>(window); }
  // False, and no address kept, for anything but a checked web or mail address.
  bool SetAddress(const std::string& address);
  const std::string& GetAddress() const { return m_address; }
  void Click() override;

 protected:
  friend class CVelControlBase;
  CVelHyperlink() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
  void Paint(HDC dc, const RECT& client) override;
  void PaintLink(HDC dc, RECT r, const std::wstring& text);

 private:
  std::string m_address;
};

// "vel_combohyperlink", "vel_combohyperlinkex": a choice among texts shown as a link. It answers
// the combo box messages a host fills and reads it with (CB_ADDSTRING, CB_RESETCONTENT,
// CB_GETCOUNT, CB_SETCURSEL, CB_GETCURSEL, CB_GETLBTEXT, CB_GETLBTEXTLEN, CB_SETITEMDATA,
// CB_GETITEMDATA); a click, F4 or Alt+Down drops the list; Up and Down move the choice. A new
// choice sends CBN_SELCHANGE to the parent.
class VARION_API CVelComboHyperlink : public CVelHyperlink {
 public:
  static BOOL AttachCreating(HWND window, CREATESTRUCTW* create);
  static CVelComboHyperlink* FromHandle(HWND window) { return FromHandleAs<CVelComboHyperlink>(window); }
  void Click() override;

 protected:
  friend class CVelControlBase;
  CVelComboHyperlink() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
  void Paint(HDC dc, const RECT& client) override;

 private:
  void Choose(int index);
  struct Item {
    std::string text;
    LPARAM data = 0;
  };
  std::vector<Item> m_items;
  int m_current = -1;
  bool m_withCaption = false;
};

// "vel_infoframe": a framed panel with the information icon and its window text wrapped.
class VARION_API CVelInfoFrame : public CVelControlBase {
 public:
  static BOOL AttachCreating(HWND window, CREATESTRUCTW* create);

 protected:
  friend class CVelControlBase;
  CVelInfoFrame() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
};

// "vel_bkgnd": paints the background the parent dialog paints (its WM_CTLCOLORSTATIC brush, else
// the dialog colour) and lets the mouse through to whatever lies under it.
class VARION_API CVelBkgnd : public CVelControlBase {
 public:
  static BOOL AttachCreating(HWND window, CREATESTRUCTW* create);

 protected:
  friend class CVelControlBase;
  CVelBkgnd() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
};

// "vel_piepercent": PBM_SETPOS sets the percentage (cut to 0..100) and answers the previous one,
// PBM_GETPOS reads it; the pie shows it with the number in the middle.
class VARION_API CVelPiePercent : public CVelControlBase {
 public:
  static BOOL AttachCreating(HWND window, CREATESTRUCTW* create);
  static CVelPiePercent* FromHandle(HWND window) { return FromHandleAs<CVelPiePercent>(window); }
  int GetPercent() const { return m_percent; }

 protected:
  friend class CVelControlBase;
  CVelPiePercent() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;

 private:
  void Paint(HDC dc, const RECT& client);
  int m_percent = 0;
};
