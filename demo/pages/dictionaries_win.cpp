// Gallery page of the combo and list fillers: named dictionaries with their extra items, fixed
// lists, the day and month lists, a filter combo with its item count, the insurance-title combo
// and the registration number, and the item data a form reads back from each combo.
#include <windows.h>

#include <string>

#include "base/status.h"
#include "base/text.h"
#include "db/rt_instance.h"
#include "demo/gallery_database_win.h"
#include "demo/gallery_win.h"
#include "framework/business_fillers_win.h"
#include "framework/data_exchange.h"
#include "framework/fillers_win.h"

namespace varion::demo {
namespace {

enum {
  kDivision = 401, kPersonel, kDayAttribute, kPrinter, kFlag, kZus, kFrequency, kDefaultDate, kCashFilter, kCar,
  kMonths, kWeekdays, kAccounts,
};
constexpr int kFirstCombo = kDivision, kLastCombo = kCashFilter;

class DictionariesPage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Listy i słowniki"; }
  std::string Slug() const override { return "listy-i-slowniki"; }

  void Create(HWND page, GalleryContext& ctx) override {
    m_page = page;
    m_context = &ctx;
    AddLabel(page, ctx, 12, 12, 860, 20, "Listy rozwijane i listy wypełniane ze słowników bazy galerii", true);
    struct Row {
      int id;
      const char* label;
    } rows[] = {
        {kDivision, "Oddział (CB_FillDivision):"},
        {kPersonel, "Pracownik CRM (CB_FillCrmPersonel):"},
        {kDayAttribute, "Atrybut dnia (CB_FillAtrybutyDnia):"},
        {kPrinter, "Drukarka fiskalna (CB_FillDrukarkiFiskalne):"},
        {kFlag, "Flaga (CB_FillFlaga_Nazwy):"},
        {kZus, "Tytuł ubezpieczenia (DLX_CB_Zus):"},
        {kFrequency, "Częstotliwość odpisu (stała lista):"},
        {kDefaultDate, "Data domyślna (stała lista):"},
        {kCashFilter, "Filtr kasy (DLX_InitKasaFilter):"},
    };
    int y = 44;
    for (const Row& r : rows) {
      AddLabel(page, ctx, 12, y + 4, 250, 20, r.label);
      HWND combo = CreateWindowExW(0, L"COMBOBOX", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL |
                                   (r.id == kZus ? CBS_DROPDOWN : CBS_DROPDOWNLIST), 262, y, 270, 240, page,
                                   reinterpret_cast<HMENU>(static_cast<INT_PTR>(r.id)), GetModuleHandleW(nullptr), nullptr);
      SendMessageW(combo, WM_SETFONT, reinterpret_cast<WPARAM>(ctx.font), TRUE);
      y += 32;
    }
    AddLabel(page, ctx, 12, y + 4, 250, 20, "Nr rejestracyjny (DLX_NrAuto):");
    AddEdit(page, ctx, kCar, 262, y, 270, 24, "");
    y += 40;
    AddLabel(page, ctx, 12, y, 520, 20, "Rachunki podmiotu (LB_Fill z szablonem \"%1!ls!: %2!ls!\"):");
    AddList(page, ctx, kAccounts, 12, y + 22, 520, 50);
    m_readBack = AddLabel(page, ctx, 12, y + 84, 520, 130, "");

    AddLabel(page, ctx, 552, 44, 270, 20, "Miesiące (LB_Fill_Miesiac):");
    AddList(page, ctx, kMonths, 552, 66, 270, 210);
    AddLabel(page, ctx, 552, 288, 270, 20, "Dni tygodnia (LB_Fill_DzienTygodnia):");
    AddList(page, ctx, kWeekdays, 552, 310, 270, 110);
    Load();
  }

  bool OnCommand(HWND, int id, int code, HWND) override {
    if (code != CBN_SELCHANGE || id < kFirstCombo || id > kLastCombo) return false;
    ShowReadBack();
    return true;
  }

  void Exercise(HWND page) override {
    // A user's choices: the second division row, the holiday attribute; the form reads their data.
    SendDlgItemMessageW(page, kDivision, CB_SETCURSEL, 3, 0);
    SendDlgItemMessageW(page, kDayAttribute, CB_SETCURSEL, 2, 0);
    SendDlgItemMessageW(page, kMonths, LB_SETCURSEL, 10, 0);
    ShowReadBack();
  }

 private:
  static void AddList(HWND page, const GalleryContext& ctx, int id, int x, int y, int w, int h) {
    HWND list = CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", L"",
                                WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | LBS_NOINTEGRALHEIGHT | LBS_NOTIFY, x,
                                y, w, h, page, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                GetModuleHandleW(nullptr), nullptr);
    SendMessageW(list, WM_SETFONT, reinterpret_cast<WPARAM>(ctx.font), TRUE);
  }

  void Load() {
    std::string report;
    try {
      const db::Connection c = GalleryDatabase(*m_context);
      CFlgDataExchange dx(nullptr, m_page, "galeria");
      CB_FillDivision(c, dx, kDivision);
      CB_FillCrmPersonel(c, dx, kPersonel);
      CB_FillAtrybutyDnia(c, dx, kDayAttribute);
      CB_FillDrukarkiFiskalne(c, dx, kPrinter);
      SendDlgItemMessageW(m_page, kPrinter, CB_SETCURSEL, 0, 0);
      CB_FillFlaga_Nazwy(c, dx, kFlag);
      DLX_CB_Zus(dx, kZus, 411L);
      CB_FillCzestotliwoscOdpisuAM(dx, kFrequency);
      SendDlgItemMessageW(m_page, kFrequency, CB_SETCURSEL, 1, 0);
      CB_FillDataDomyslna(dx, kDefaultDate, 10);
      SendDlgItemMessageW(m_page, kDefaultDate, CB_SETCURSEL, 1, 0);
      m_cashCount = DLX_InitKasaFilter(dx, kCashFilter);
      DLX_NrAuto(dx, kCar, 1L);
      LB_Fill_Miesiac(dx, kMonths);
      LB_Fill_DzienTygodnia(dx, kWeekdays);
      LB_Fill(dx, kAccounts, c, "SELECT * FROM rb__RachBankowy WHERE rb_TypObiektu = 1", "rb_Nazwa", "rb_Id", true,
              "%1!ls!: %2!ls!", "rb_Numer");
    } catch (const ComError& e) {
      report = "Błąd bazy danych: " + e.Message();
    }
    ShowReadBack(report);
  }

  // What a form's save reads: each combo's selected text and its item data.
  void ShowReadBack(const std::string& prefix = {}) {
    std::string s = prefix.empty() ? "Odczyt jak w zapisie formularza (tekst pozycji: dane pozycji):\n" : prefix + "\n";
    for (int id : {kDivision, kDayAttribute, kZus, kCashFilter}) {
      HWND combo = GetDlgItem(m_page, id);
      const LRESULT sel = SendMessageW(combo, CB_GETCURSEL, 0, 0);
      if (sel < 0) continue;
      std::wstring t(static_cast<size_t>(SendMessageW(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(sel), 0)) + 1, L'\0');
      SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(sel), reinterpret_cast<LPARAM>(t.data()));
      t.resize(wcslen(t.c_str()));
      s += "  " + text::WideToCp1250(t) + ": " +
           std::to_string(static_cast<long>(SendMessageW(combo, CB_GETITEMDATA, static_cast<WPARAM>(sel), 0))) + "\n";
    }
    const LRESULT month = SendDlgItemMessageW(m_page, kMonths, LB_GETCURSEL, 0, 0);
    if (month >= 0)
      s += "  miesiąc: " + std::to_string(static_cast<long>(SendDlgItemMessageW(m_page, kMonths, LB_GETITEMDATA,
                                                                                   static_cast<WPARAM>(month), 0))) +
           "\n";
    s += "Filtr kasy: " + std::to_string(m_cashCount) + " pozycje (z \u201e(wszystkie)\u201d).";
    SetText(m_readBack, s);
  }

  HWND m_page = nullptr, m_readBack = nullptr;
  const GalleryContext* m_context = nullptr;
  int m_cashCount = 0;
};

VARION_GALLERY_PAGE(65, DictionariesPage);

}  // namespace
}  // namespace varion::demo
