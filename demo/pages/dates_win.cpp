// Gallery page of the date fields and the month calendar: segmented fields (one with its
// calendar dropped down, one refusing a step past its range), a standalone calendar of December
// 2025 with its holidays, a calendar limited to a range, and one in a font half as large again,
// as a 144 DPI screen would give it.
#include <windows.h>

#include <commctrl.h>

#include "base/date_time.h"
#include "base/handles_win.h"
#include "controls/calendar_win.h"
#include "controls/date_edit_win.h"
#include "controls/system_time_win.h"
#include "demo/gallery_win.h"

namespace varion::demo {
namespace {

enum { kDocumentDate = 301, kRangeDate, kPatternDate, kCalendar, kRangeCalendar, kLargeCalendar };

SYSTEMTIME Day(int y, int m, int d) { return ToSystemTime(COleDateTime(y, m, d)); }

class DatesPage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Daty i kalendarz"; }
  std::string Slug() const override { return "daty-i-kalendarz"; }

  void Create(HWND page, GalleryContext& ctx) override {
    AddLabel(page, ctx, 12, 12, 760, 20, "Pola dat w segmentach i kalendarz miesięczny", true);

    AddLabel(page, ctx, 12, 48, 190, 20, "Data dokumentu:");
    m_document = AttachField(page, ctx, kDocumentDate, 200, 44, "24-12-2025");
    if (m_document) m_document->ShowCopyButton(true);

    AddLabel(page, ctx, 12, 312, 190, 20, "Termin w grudniu 2025:");
    m_range = AttachField(page, ctx, kRangeDate, 200, 308, "31-12-2025");
    if (m_range) m_range->SetRange(COleDateTime(2025, 12, 1), COleDateTime(2025, 12, 31));
    m_rangeNote = AddLabel(page, ctx, 200, 338, 240, 48, "");

    AddLabel(page, ctx, 12, 400, 190, 20, "Wzorzec rrrr.mm.dd:");
    m_pattern = AttachField(page, ctx, kPatternDate, 200, 396, "");
    if (m_pattern) {
      m_pattern->SetPattern("rrrr.mm.dd");
      m_pattern->SetValue(COleDateTime(2025, 11, 11));
    }
    m_status = AddLabel(page, ctx, 12, 436, 430, 40, "Wartość dla wymiany danych pojawia się tu po zmianie.");

    AddLabel(page, ctx, 460, 44, 190, 20, "Grudzień 2025 ze świętami:", true);
    m_calendar = AddCalendar(page, ctx, kCalendar, 460, 68, ctx.font);
    if (m_calendar) {
      SYSTEMTIME st = Day(2025, 12, 15);
      SendMessageW(m_calendar, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&st));
    }
    AddLabel(page, ctx, 650, 44, 190, 20, "Tylko 8-19 grudnia 2025:", true);
    m_rangeCalendar = AddCalendar(page, ctx, kRangeCalendar, 650, 68, ctx.font);
    if (m_rangeCalendar) {
      SYSTEMTIME limits[2] = {Day(2025, 12, 8), Day(2025, 12, 19)};
      SendMessageW(m_rangeCalendar, DTM_SETRANGE, GDTR_MIN | GDTR_MAX, reinterpret_cast<LPARAM>(limits));
    }

    // The same calendar in a font half as large again: it sizes itself from the font alone.
    LOGFONTW lf{};
    GetObjectW(ctx.font, sizeof lf, &lf);
    lf.lfHeight = lf.lfHeight * 3 / 2;
    m_largeFont.reset(CreateFontIndirectW(&lf));
    AddLabel(page, ctx, 460, 300, 300, 20, "Czcionka jak przy 144 DPI:", true);
    m_largeCalendar = AddCalendar(page, ctx, kLargeCalendar, 460, 324, m_largeFont.get());
    if (m_largeCalendar) {
      SYSTEMTIME st = Day(2025, 12, 24);
      SendMessageW(m_largeCalendar, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&st));
    }
  }

  void Exercise(HWND) override {
    // Up on the last day of the range would leave it: the field keeps its day.
    if (m_range) {
      SetFocus(m_range->GetHwnd());
      SendMessageW(m_range->GetHwnd(), WM_KEYDOWN, VK_UP, 1);
      SetText(m_rangeNote, "Strzałka w górę na 31-12-2025 odrzucona\n(poza zakresem); wartość nadal: " +
                               GetText(m_range->GetHwnd()));
    }
    if (m_document) {
      SetFocus(m_document->GetHwnd());
      m_document->DropDown();
    }
  }

  bool OnNotify(HWND, const NMHDR& header, LRESULT& result) override {
    if (header.code != DTN_DATETIMECHANGE) return false;
    SetText(m_status, "Wymiana danych odczyta: \"" + GetText(header.hwndFrom) + "\"");
    result = 0;
    return true;
  }

  void OnPageDestroyed() override {
    m_document = m_range = m_pattern = nullptr;
    m_calendar = m_rangeCalendar = m_largeCalendar = nullptr;
  }

 private:
  static CVelDateEdit* AttachField(HWND page, GalleryContext& ctx, int id, int x, int y, const char* text) {
    HWND edit = AddEdit(page, ctx, id, x, y, 150, 24, text);
    return edit ? CVelDateEdit::Attach(edit) : nullptr;
  }
  static HWND AddCalendar(HWND page, GalleryContext&, int id, int x, int y, HFONT font) {
    CVelCalendar* calendar = CVelCalendar::Create(WS_EX_CLIENTEDGE, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP,
                                                  RECT{x, y, x, y}, page, static_cast<UINT>(id));
    if (!calendar) return nullptr;
    SendMessageW(calendar->GetHwnd(), WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    return calendar->GetHwnd();
  }

  CVelDateEdit *m_document = nullptr, *m_range = nullptr, *m_pattern = nullptr;
  HWND m_rangeNote = nullptr, m_status = nullptr;
  HWND m_calendar = nullptr, m_rangeCalendar = nullptr, m_largeCalendar = nullptr;
  unique_font m_largeFont;
};

VARION_GALLERY_PAGE(45, DatesPage);

}  // namespace
}  // namespace varion::demo
