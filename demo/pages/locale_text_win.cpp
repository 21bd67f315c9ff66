// Gallery page of the locale text tools: an amount in words and on screen, a year's public
// holidays, and the verdicts of the identifier checks, each recomputed as the user types.
#include <cstdio>
#include <cstdlib>

#include "base/amount.h"
#include "controls/amount_words.h"
#include "controls/holidays.h"
#include "controls/locale_info.h"
#include "controls/nip_unique.h"
#include "controls/validators.h"
#include "demo/gallery_database_win.h"
#include "demo/gallery_win.h"

namespace varion::demo {
namespace {

enum { kAmountEdit = 201, kYearEdit, kNipEdit, kPeselEdit, kRegonEdit, kEoriEdit, kCnEdit, kEmailEdit };
constexpr int kFirstEdit = kAmountEdit, kLastEdit = kEmailEdit;

const char* Verdict(bool ok) { return ok ? "poprawny" : "niepoprawny"; }

class LocaleTextPage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Kwoty s\u0142ownie, \u015bwi\u0119ta, identyfikatory"; }
  std::string Slug() const override { return "kwoty-swieta-identyfikatory"; }

  void Create(HWND page, GalleryContext& ctx) override {
    m_ctx = &ctx;
    AddLabel(page, ctx, 12, 12, 420, 20, "Kwota słownie i na ekranie", true);
    AddLabel(page, ctx, 12, 43, 60, 20, "Kwota:");
    m_amount = AddEdit(page, ctx, kAmountEdit, 80, 40, 180, 24, "1234567,89");
    m_amountOut = AddLabel(page, ctx, 12, 72, 420, 230, "");

    AddLabel(page, ctx, 12, 312, 420, 20, "Święta państwowe roku", true);
    AddLabel(page, ctx, 12, 343, 60, 20, "Rok:");
    m_year = AddEdit(page, ctx, kYearEdit, 80, 340, 80, 24, "2025");
    m_yearOut = AddLabel(page, ctx, 12, 372, 420, 290, "");

    AddLabel(page, ctx, 450, 12, 400, 20, "Identyfikatory", true);
    struct Row {
      int id;
      const char* label;
      const char* sample;
    } rows[] = {{kNipEdit, "NIP:", "PL5260250274"}, {kPeselEdit, "PESEL:", "44051401458"},
                {kRegonEdit, "REGON:", "123456785"},     {kEoriEdit, "EORI:", "PL12345678901234Z"},
                {kCnEdit, "Kod CN:", "8471.30.00"},      {kEmailEdit, "E-mail:", "biuro@firma.com.pl"}};
    int y = 40;
    for (const Row& r : rows) {
      AddLabel(page, ctx, 450, y + 3, 70, 20, r.label);
      m_edits[r.id - kNipEdit] = AddEdit(page, ctx, r.id, 525, y, 190, 24, r.sample);
      // The tax number gets more lines: what its split found and who in the database has it.
      int lines = r.id == kNipEdit ? 4 : 1;
      m_verdicts[r.id - kNipEdit] = AddLabel(page, ctx, 525, y + 27, 340, 17 * lines, "");
      y += 44 + 17 * lines;
    }
    m_ready = true;
    Refresh();
  }

  bool OnCommand(HWND, int id, int code, HWND) override {
    if (code != EN_CHANGE || id < kFirstEdit || id > kLastEdit) return false;
    Refresh();
    return true;
  }

  void Exercise(HWND) override { SetText(m_amount, "1234567,89"); }

 private:
  void Refresh() {
    if (!m_ready) return;
    RefreshAmount();
    RefreshYear();
    RefreshIdentifiers();
  }

  void RefreshAmount() {
    Amount a = Amount::Parse(GetText(m_amount), NumberFormat());
    if (!a.IsValid()) {
      SetText(m_amountOut, "To nie jest kwota.");
      return;
    }
    const CLocaleInfo& locale = CLocaleInfo::GetTheLocaleInfo();
    std::string s = "Po polsku: " + KwotaSlownie(a) + "\n\n";
    s += "Po angielsku: " + KwotaSlownie(a, "USD", 9) + "\n\n";
    s += "Po niemiecku: " + KwotaSlownie(a, "EUR", kJezykNiemiecki) + "\n\n";
    s += "Na ekranie: " + locale.CurrencyToDispText(a, 2, "zł", 0) + "\n";
    s += "Tekst wartości: " + locale.CurrencyToText(a, true, false);
    SetText(m_amountOut, s);
  }

  void RefreshYear() {
    int year = std::atoi(GetText(m_year).c_str());
    if (year < 100 || year > 9999) {
      SetText(m_yearOut, "Rok spoza zakresu 100..9999.");
      return;
    }
    COleDateTime easter = CCalendarUtils::GetEasterDate(year);
    std::string s = "Wielkanoc: " + easter.Format("%d-%m-%Y") + "\n";
    for (COleDateTime d(year, 1, 1); d.IsValid() && d.GetYear() == year; d = d.AddDays(1)) {
      if (const char* name = HolidayNameOf(d)) {
        s += d.Format("%d-%m") + "  " + CCalendarUtils::GetDayName(d.GetDayOfWeek(), true) + "  " + name + "\n";
      }
    }
    SetText(m_yearOut, s);
  }

  void RefreshIdentifiers() {
    std::string nip = GetText(m_edits[0]);
    std::string s;
    if (PoprawnyNIP(nip.c_str(), true))
      s = "poprawny, suma kontrolna zgodna";
    else if (PoprawnyNIP(nip.c_str(), false))
      s = "zapis poprawny, suma kontrolna niesprawdzona\n(liczy się ją tylko dla 10 cyfr bez kresek)";
    else
      s = "niepoprawny";
    if (auto parts = ParsujNip(nip.c_str())) {
      s += "\nprefiks \"" + parts->prefiks + "\"" + (parts->CzyPrefiksZagraniczny() ? " (zagraniczny)" : "") +
           ", numer " + parts->PodajNumerZPrefiksemBezZnakowSpecjalnych();
    }
    s += "\n" + Clashes(nip);
    SetText(m_verdicts[0], s);
    SetText(m_verdicts[1], Verdict(PoprawnyPESEL(GetText(m_edits[1]).c_str())));
    SetText(m_verdicts[2], Verdict(PoprawnyREGON(GetText(m_edits[2]).c_str())));
    SetText(m_verdicts[3], Verdict(PoprawnyNrEORI(GetText(m_edits[3]).c_str())));
    std::string cn = GetText(m_edits[4]);
    std::string formatted = cn;
    FormatujKodCN(formatted);
    SetText(m_verdicts[4], std::string(Verdict(PoprawnyKodCN(cn.c_str()))) +
                               (formatted.empty() ? ", nie zawiera kodu" : ", po sformatowaniu: " + formatted));
    SetText(m_verdicts[5], Verdict(PoprawnyEmail(GetText(m_edits[5]).c_str())));
  }

  // Contractors of the gallery database that already carry the number.
  std::string Clashes(const std::string& nip) {
    try {
      auto [unique, rows] = CzyNipUnikalny(GalleryDatabase(*m_ctx), nip.c_str(), 0);
      if (unique) return "w bazie: nikt inny nie ma tego numeru";
      std::string names;
      for (; !rows.IsEOF(); rows.MoveNext()) names += (names.empty() ? "" : ", ") + rows.GetCollect("adr_Nazwa").AsText();
      return "w bazie ma go już: " + names;
    } catch (const ComError& e) {
      return "baza niedostępna: " + e.Message();
    }
  }

  GalleryContext* m_ctx = nullptr;
  bool m_ready = false;
  HWND m_amount = nullptr, m_amountOut = nullptr, m_year = nullptr, m_yearOut = nullptr;
  HWND m_edits[6] = {};
  HWND m_verdicts[6] = {};
};

VARION_GALLERY_PAGE(40, LocaleTextPage);

}  // namespace
}  // namespace varion::demo
