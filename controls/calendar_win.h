// The month calendar window ("vel_calendar"): stands in a form by itself or drops down under a
// date field. It measures its font, paints what CalendarModel describes and carries out the
// model's actions; every rule lives in the model.
#pragma once

#include <windows.h>

#include <string>

#include "base/export.h"
#include "base/handles_win.h"
#include "controls/calendar_model.h"
#include "controls/window_base_win.h"

class VARION_API CVelCalendar : public varion::Window {
 public:
  // Creates the calendar; a zero-sized rectangle takes the size the font asks for. The object
  // belongs to the window (it goes with it).
  static CVelCalendar* Create(DWORD exStyle, const wchar_t* title, DWORD style, const RECT& rect, HWND parent,
                              UINT id);
  // Attaches a window-owned calendar to a window of class "vel_calendar" made by someone else
  // (a dialog template); returns the calendar already attached when there is one.
  static CVelCalendar* Attach(HWND window);
  static CVelCalendar* FromHandle(HWND window) { return FromHandleAs<CVelCalendar>(window); }

  // Where "today" comes from for calendars created from now on (the system clock when null).
  // The clock must outlive them; tests pass a fixed one.
  static void SetDefaultClock(const DateTools::IClock* clock);
  // Picks a command of a pop-up menu instead of tracking it: tests answer the months menu and
  // the context menu with it so that nothing waits on a user. Returns the command, 0 for none.
  using MenuChooser = UINT (*)(HMENU menu, POINT screenPoint);
  static void SetMenuChooser(MenuChooser chooser);

  varion::CalendarModel& Model() { return m_model; }
  const varion::CalendarLayout& Layout() const { return m_layout; }
  // The window that gets the notifications; the parent when none is set.
  void SetOwner(HWND owner) { m_owner = owner; }
  HWND GetOwner() const;
  // The role of a drop-down under a date field: a press anywhere else, and the application
  // losing activation, hide it with -5002.
  void SetDroppedDown(bool droppedDown);
  // The size of the window for its font, frame included.
  SIZE GetIdealSize() const;
  // The tooltip window that names the holidays of the shown grid.
  HWND GetTooltip() const { return m_tooltip.get(); }

  // Private messages of the calendar's own class.
  static constexpr UINT kMsgOutsidePress = WM_USER + 0x200;

 protected:
  CVelCalendar();
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;

 private:
  void Initialize();
  void Measure();
  void Apply(const varion::CalAction& action, POINT pointer);
  void SendNotification(const varion::CalNotification& n);
  void Paint(HDC dc, const RECT& clip);
  void PaintHeader(HDC dc);
  void PaintCell(HDC dc, const varion::CalendarCell& cell);
  void InvalidateCell(int index);
  void UpdateTooltips();
  void OpenMonthsMenu(POINT screen);
  void OpenContextMenu(POINT screen);
  UINT TrackMenu(HMENU menu, POINT screen);
  void Copy();
  void Paste();
  void HookMouse(bool on);
  static LRESULT CALLBACK MouseHookProc(int code, WPARAM wParam, LPARAM lParam);

  LRESULT OnKeyDown(WPARAM key);
  LRESULT OnButtonDown(LPARAM lParam);
  LRESULT OnButtonUp(LPARAM lParam);
  LRESULT OnGetText(WPARAM size, LPARAM buffer) const;
  LRESULT OnSetText(LPARAM text);
  LRESULT OnSetRange(WPARAM flags, LPARAM limits);
  LRESULT OnGetRange(LPARAM limits) const;
  LRESULT OnSetFont(HFONT font, bool redraw);

  const DateTools::IClock* m_clock;
  varion::CalendarModel m_model;
  varion::CalendarLayout m_layout;
  varion::CalendarCells m_cells{};
  HFONT m_font = nullptr;          // the font set by WM_SETFONT, or m_ownFont
  varion::unique_font m_ownFont;   // the message font of the system, at the screen's DPI
  varion::unique_font m_boldFont;  // the title and holidays
  varion::unique_bitmap m_navigation;
  varion::unique_window m_tooltip;
  varion::unique_hook m_mouseHook;
  HWND m_owner = nullptr;
  COleDateTime m_announced = COleDateTime::Null();  // the focused day readers were last told of
};
