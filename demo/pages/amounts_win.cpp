// Gallery page of the amount field: two and four decimals, minus forbidden, the copy button, the
// Enter variant and a read-only field, with what a form reads from each; the second picture shows
// the calculator dropped down.
#include <string>

#include "controls/currency_edit_win.h"
#include "demo/gallery_win.h"

namespace varion::demo {
namespace {

enum { kTwoDecimals = 301, kFourDecimals, kNoMinus, kCopy, kEnter, kReadOnly };
constexpr int kFirst = kTwoDecimals, kLast = kReadOnly, kCount = kLast - kFirst + 1;

class AmountsPage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Kwoty"; }
  std::string Slug() const override { return "kwoty"; }

  void Create(HWND page, GalleryContext& ctx) override {
    AddLabel(page, ctx, 12, 12, 800, 20, "Pole kwoty (vel_curredit)", true);
    AddLabel(page, ctx, 12, 38, 800, 40,
             "Każdy klawisz przechodzi przez reguły pola: litery nie wchodzą, trzynasta cyfra całkowita przepada, "
             "cyfra za dozwolonymi miejscami po przecinku daje sygnał. F4 lub przycisk z kalkulatorem otwiera "
             "kalkulator; Enter przyjmuje jego wynik, Esc przywraca kwotę.");
    struct Row {
      int id;
      const char* label;
      const char* text;
      DWORD style;
    } rows[] = {
        {kTwoDecimals, "Kwota (2 miejsca po przecinku):", "1234567,89", 0},
        {kFourDecimals, "Cena jednostkowa (4 miejsca, EUR):", "12,3456", 0},
        {kNoMinus, "Bez minusa (tylko dodatnia):", "250", 0},
        {kCopy, "Z przyciskiem kopiowania:", "99,99", 0},
        {kEnter, "Enter zgłaszany do okna (vel_currenteredit):", "15", 0},
        {kReadOnly, "Tylko do odczytu:", "5000", ES_READONLY},
    };
    int y = 90;
    for (const Row& r : rows) {
      AddLabel(page, ctx, 12, y + 4, 300, 20, r.label);
      HWND edit = AddEdit(page, ctx, r.id, 320, y, 220, 26, "", ES_RIGHT | r.style);
      CVelCurrencyEdit* field =
          r.id == kEnter ? CVelCurrencyEnterEdit::Attach(edit) : CVelCurrencyEdit::Attach(edit);
      m_fields[r.id - kFirst] = field;
      if (!field) continue;
      if (r.id == kFourDecimals) field->OnSetSettings("EUR", 4);
      if (r.id == kNoMinus) field->OnSetSettings("", kSetForbidMinus);
      if (r.id == kCopy) {
        field->OnSetSettings("zł", 2);
        field->OnSetSettings("", kSetShowCopyButton);
      }
      SetText(edit, r.text);
      y += 36;
    }
    AddLabel(page, ctx, 12, y + 10, 800, 20, "Co odczytuje formularz (tekst okna)", true);
    m_read = AddLabel(page, ctx, 12, y + 36, 800, 130, "");
    m_enter = AddLabel(page, ctx, 12, y + 170, 800, 20, "");
    m_ready = true;
    ShowRead();
  }

  bool OnCommand(HWND, int id, int code, HWND) override {
    if (code != EN_CHANGE || id < kFirst || id > kLast) return false;
    ShowRead();
    return true;
  }

  bool OnMessage(HWND, UINT msg, WPARAM wp, LPARAM, LRESULT& result) override {
    if (msg != kMsgCurrencyEnter) return false;
    std::string text;
    if (CVelCurrencyEdit* f = m_fields[kEnter - kFirst]; f && static_cast<int>(wp) == kEnter)
      text = "Enter w polu " + std::to_string(wp) + ": kwota " + f->Model().DisplayText() + " przyjęta.";
    SetText(m_enter, text);
    result = 0;
    return true;
  }

  void Exercise(HWND) override {
    // Typed as a user types: "12a,5x" gets in as 12,50; Enter in the Enter variant is reported.
    HWND two = Field(kTwoDecimals);
    SetFocus(two);
    SetText(two, "");
    for (char ch : std::string("12a,5x")) SendMessageW(two, WM_CHAR, static_cast<WPARAM>(ch), 1);
    SendMessageW(Field(kEnter), WM_KEYDOWN, VK_RETURN, 1);
  }

  bool NextShot(HWND, int shot) override {
    if (shot != 2 || !m_fields[0]) return false;
    HWND two = Field(kTwoDecimals);
    SetFocus(two);
    m_fields[0]->DropDownCalc(true);
    for (char ch : std::string("*4")) SendMessageW(two, WM_CHAR, static_cast<WPARAM>(ch), 1);
    return m_fields[0]->IsCalcShown();
  }

 private:
  HWND Field(int id) const { return m_fields[id - kFirst] ? m_fields[id - kFirst]->GetHwnd() : nullptr; }

  void ShowRead() {
    if (!m_ready) return;
    static const char* const kNames[kCount] = {"2 miejsca", "4 miejsca", "bez minusa", "kopiowanie", "Enter",
                                               "do odczytu"};
    std::string s;
    for (int i = 0; i < kCount; ++i)
      if (m_fields[i]) s += std::string(kNames[i]) + ": \"" + GetText(m_fields[i]->GetHwnd()) + "\"\n";
    SetText(m_read, s);
  }

  CVelCurrencyEdit* m_fields[kCount] = {};
  HWND m_read = nullptr, m_enter = nullptr;
  bool m_ready = false;
};

}  // namespace

VARION_GALLERY_PAGE(50, AmountsPage);

}  // namespace varion::demo
