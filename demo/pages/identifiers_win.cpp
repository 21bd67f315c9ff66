// Gallery page of the identifier edits and the small controls: every identifier class with a
// correct and a wrong value after the user left the field (the wrong one marked), the four
// action buttons, a bitmap button, links (one with a choice), an information frame and a pie.
#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "base/text.h"
#include "controls/ident_edit_win.h"
#include "controls/small_controls_win.h"
#include "demo/gallery_win.h"
#include "framework/hook_supp_win.h"

namespace varion::demo {
namespace {

enum { kFirstEdit = 301, kAdd = 401, kEdit, kList, kDelete, kBitmap, kLink, kChoice, kInfo, kPie, kBackground };

struct Row {
  IdentKind kind;
  const char* label;
  const char* good;
  const char* bad;
};
const Row kRows[] = {
    {IdentKind::Nip, "NIP", "123-456-32-18", "1234563219"},
    {IdentKind::NipEx, "NIP z prefiksem kraju", "DE123456789", "PL1234563219"},
    {IdentKind::Pesel, "PESEL", "44051401458", "44051401459"},
    {IdentKind::Regon, "REGON", "123456785", "123456786"},
    {IdentKind::IdWewnetrzny, "Identyfikator wewnętrzny", "1010000001-00001", "0010000001-00001"},
    {IdentKind::Rachunek, "Numer rachunku", "61109010140000071219812874", "PL62109010140000071219812874"},
    {IdentKind::Email, "E-mail (Ctrl+klik)", "biuro@firma.pl", "biuro@firma"},
    {IdentKind::Www, "Strona WWW (Ctrl+klik)", "www.firma.pl", "localhost"},
    {IdentKind::Gg, "Numer GG", "1234567", "0123"},
    {IdentKind::Skype, "Skype", "jan.kowalski", "jan"},
    {IdentKind::Number, "Liczba 0..100, 2 miejsca", "99.5", "100,01"},
    {IdentKind::Time, "Godzina (strzałki)", "930", "25:00"},
    {IdentKind::Folder, "Folder (F4 lub ...)", "C:\\Dokumenty", "C:\\a:b"},
    {IdentKind::File, "Plik (F4 lub ...)", "C:\\Dokumenty\\raport.pdf", "C:\\Dokumenty\\"},
    {IdentKind::Adres, "Adres", "ul.  Długa 5/7", "Długa"},
    {IdentKind::Param, "Wartość parametru (dowolny tekst)", "Hurtownia \"Łódź\"", nullptr},
};
constexpr int kRowCount = static_cast<int>(std::size(kRows));

class IdentifiersPage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Identyfikatory i przyciski"; }
  std::string Slug() const override { return "identyfikatory-i-przyciski"; }

  void Create(HWND page, GalleryContext& ctx) override {
    m_page = page;
    CHookSupp::InitVXAXVelControls(nullptr);
    CHookSupp::InstallUIHook();
    AddLabel(page, ctx, 12, 8, 840, 20, "Pola identyfikatorów: poprawna i błędna wartość po opuszczeniu pola", true);
    AddLabel(page, ctx, 240, 30, 250, 18, "poprawna");
    AddLabel(page, ctx, 500, 30, 250, 18, "błędna (czerwona ramka)");
    m_edits.clear();
    for (int i = 0; i < kRowCount; ++i) {
      const Row& r = kRows[i];
      const int y = 50 + i * 25;
      AddLabel(page, ctx, 12, y + 3, 224, 18, r.label);
      for (int column = 0; column < (r.bad ? 2 : 1); ++column) {
        HWND h = CreateWindowExW(WS_EX_CLIENTEDGE, text::Cp1250ToWide(IdentClassName(r.kind)).c_str(), L"",
                                 WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL, 240 + column * 260, y, 250, 22,
                                 page, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kFirstEdit + i * 2 + column)),
                                 nullptr, nullptr);
        SendMessageW(h, WM_SETFONT, reinterpret_cast<WPARAM>(ctx.font), TRUE);
        if (CVelIdentEdit* field = CVelIdentEdit::FromHandle(h)) {
          if (r.kind == IdentKind::Number) {
            IdentOptions o;
            o.decimals = 2;
            o.min = 0;
            o.max = 100;
            field->SetOptions(o);
          }
          m_edits.push_back(field);
          m_texts.push_back(column == 0 ? r.good : r.bad);
        }
      }
    }

    const int y = 50 + kRowCount * 25 + 12;
    AddLabel(page, ctx, 12, y, 300, 20, "Przyciski, odnośniki, ramka informacji", true);
    m_background = Make(L"vel_bkgnd", L"", kBackground, 8, y + 24, 630, 44, ctx);
    SetWindowPos(m_background, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    const wchar_t* buttons[] = {L"vel_addbtn", L"vel_editbtn", L"vel_listbtn", L"vel_deletebtn"};
    for (int i = 0; i < 4; ++i) Make(buttons[i], L"", kAdd + i, 12 + i * 30, y + 30, 26, 26, ctx);
    Make(L"vel_bmpbutton", L"IDB_CALC_BTN", kBitmap, 140, y + 30, 30, 26, ctx);
    HWND link = Make(L"vel_hyperlink", L"Strona producenta", kLink, 186, y + 34, 140, 20, ctx);
    if (auto* l = CVelHyperlink::FromHandle(link)) l->SetAddress("https://www.example.com");
    m_choice = Make(L"vel_combohyperlinkex", L"Okres:", kChoice, 340, y + 34, 220, 20, ctx);
    for (const wchar_t* t : {L"bieżący miesiąc", L"poprzedni miesiąc", L"bieżący rok"})
      SendMessageW(m_choice, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(t));
    SendMessageW(m_choice, CB_SETCURSEL, 0, 0);
    m_pie = Make(L"vel_piepercent", L"", kPie, 580, y + 26, 44, 44, ctx);
    SendMessageW(m_pie, PBM_SETPOS, 65, 0);
    Make(L"vel_infoframe",
         L"Pole z błędną wartością dostaje czerwoną ramkę, gdy użytkownik je opuści, i traci ją po poprawieniu. "
         L"Przyciski obok wysyłają BN_CLICKED do okna; Spacja i Enter działają jak kliknięcie.",
         kInfo, 12, y + 76, 612, 52, ctx);
    m_status = AddLabel(page, ctx, 640, y + 24, 220, 100, "Kliknij przycisk lub odnośnik.");
    TypeAndLeave();
  }

  void Exercise(HWND) override { TypeAndLeave(); }

  bool OnCommand(HWND, int id, int code, HWND) override {
    static const char* const kNames[] = {"Dodaj", "Edytuj", "Lista", "Usuń", "Przycisk z obrazkiem", "Odnośnik"};
    if (id >= kAdd && id <= kLink && code == BN_CLICKED) {
      SetText(m_status, std::string("Kliknięto: ") + kNames[id - kAdd]);
      return true;
    }
    if (id == kChoice && code == CBN_SELCHANGE) {
      const auto index = SendMessageW(m_choice, CB_GETCURSEL, 0, 0);
      SetText(m_status, "Wybrano pozycję " + std::to_string(index + 1));
      return true;
    }
    return false;
  }

  bool NextShot(HWND, int shot) override {
    if (shot != 2 || m_edits.empty()) return false;
    // The second picture: the wrong PESEL corrected (its mark gone), a click on "Dodaj" seen by
    // the page, and the pie at another value.
    HWND bad = GetDlgItem(m_page, kFirstEdit + 2 * 2 + 1);
    SetFocus(bad);
    SetText(bad, "");
    for (char ch : std::string("44051401458")) SendMessageW(bad, WM_CHAR, static_cast<WPARAM>(ch), 1);
    SetFocus(GetDlgItem(m_page, kAdd));
    SendMessageW(GetDlgItem(m_page, kAdd), WM_KEYDOWN, VK_SPACE, 1);
    SendMessageW(GetDlgItem(m_page, kAdd), WM_KEYUP, VK_SPACE, 1);
    SendMessageW(m_pie, PBM_SETPOS, 30, 0);
    return true;
  }

 private:
  HWND Make(const wchar_t* cls, const wchar_t* text, int id, int x, int y, int w, int h, const GalleryContext& ctx) {
    HWND window = CreateWindowExW(0, cls, text, WS_CHILD | WS_VISIBLE | WS_TABSTOP, x, y, w, h, m_page,
                                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(ctx.font), TRUE);
    return window;
  }

  // Each value typed as a user types it, then the field left, so that the page shows what the
  // user would see: the tidied text and the marks.
  void TypeAndLeave() {
    for (std::size_t i = 0; i < m_edits.size(); ++i) {
      HWND h = m_edits[i]->GetHwnd();
      SetFocus(h);
      SetText(h, "");
      for (wchar_t ch : text::Cp1250ToWide(m_texts[i])) SendMessageW(h, WM_CHAR, ch, 1);
    }
    SetFocus(m_page);
  }

  HWND m_page = nullptr, m_status = nullptr, m_choice = nullptr, m_pie = nullptr, m_background = nullptr;
  std::vector<CVelIdentEdit*> m_edits;
  std::vector<std::string> m_texts;
};

}  // namespace

VARION_GALLERY_PAGE(47, IdentifiersPage);

}  // namespace varion::demo
