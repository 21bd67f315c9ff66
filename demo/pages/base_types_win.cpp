// Gallery page of the shared value types: an amount, a date and a text typed by the user, and
// what the library makes of them (locale forms, rounding, SQL literals for each server, bytes).
#include <cstdio>

#include "base/amount.h"
#include "base/date_time.h"
#include "base/sql_dialect.h"
#include "base/sql_literal.h"
#include "base/text.h"
#include "demo/gallery_win.h"

namespace varion::demo {
namespace {

enum { kAmountEdit = 101, kDateEdit, kTextEdit };

std::string Hex(std::string_view bytes, size_t max = 24) {
  std::string out;
  char buf[4];
  for (size_t i = 0; i < bytes.size() && i < max; ++i) {
    std::snprintf(buf, sizeof buf, "%02X ", static_cast<unsigned char>(bytes[i]));
    out += buf;
  }
  if (bytes.size() > max) out += "...";
  return out;
}

class BaseTypesPage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Typy podstawowe"; }
  std::string Slug() const override { return "typy-podstawowe"; }

  void Create(HWND page, GalleryContext& ctx) override {
    int y = 12;
    AddLabel(page, ctx, 12, y, 600, 20, "Kwota, data i tekst: jak biblioteka je czyta i zapisuje", true);
    y += 32;
    AddLabel(page, ctx, 12, y + 3, 120, 20, "Kwota:");
    m_amount = AddEdit(page, ctx, kAmountEdit, 140, y, 220, 24, "-1 234 567,895");
    m_amountOut = AddLabel(page, ctx, 140, y + 30, 680, 120, "");
    y += 160;
    AddLabel(page, ctx, 12, y + 3, 120, 20, "Data (ISO):");
    m_date = AddEdit(page, ctx, kDateEdit, 140, y, 220, 24, "2024-02-29 13:45:10");
    m_dateOut = AddLabel(page, ctx, 140, y + 30, 680, 110, "");
    y += 150;
    AddLabel(page, ctx, 12, y + 3, 120, 20, "Tekst:");
    m_text = AddEdit(page, ctx, kTextEdit, 140, y, 300, 24, "Zażółć 'gęślą' jaźń");
    m_textOut = AddLabel(page, ctx, 140, y + 30, 680, 80, "");
    Refresh();
  }

  bool OnCommand(HWND, int id, int code, HWND) override {
    if (code == EN_CHANGE && id >= kAmountEdit && id <= kTextEdit) {
      Refresh();
      return true;
    }
    return false;
  }

  void Exercise(HWND) override { SetText(m_amount, "-1 234 567,895"); }

 private:
  void Refresh() {
    if (!m_amountOut) return;
    const NumberFormat polish;
    const NumberFormat english{".", ",", "-", 3};
    Amount a = Amount::Parse(GetText(m_amount), polish);
    std::string s;
    if (!a.IsValid()) {
      s = "To nie jest kwota (za długa, niedozwolone znaki lub przekroczony zakres).";
    } else {
      s = "Dziesięciotysięczne części: " + std::to_string(a.Raw()) + "\n";
      s += "Polski zapis (2 miejsca): " + a.Format(polish, 2) + "\n";
      s += "Angielski zapis (2 miejsca): " + a.Format(english, 2) + "\n";
      s += "Zaokrąglenia do -3..3 miejsc:\n   ";
      for (int p = -3; p <= 3; ++p) s += "   " + Amount::FromRaw(VelRound64C(a.Raw(), p)).Format(polish, p < 0 ? 0 : p);
      s += "\nLiterał SQL: " + SqlOkCurrency(a) + "\nPodwojona: " + (a * 2).Format(polish, 4);
    }
    SetText(m_amountOut, s);

    DateTime d = DateTime::ParseIso(GetText(m_date));
    if (!d.IsValid()) {
      s = "To nie jest data (RRRR-MM-DD [GG:MM[:SS]], lata 100..9999).";
    } else {
      char serial[64];
      std::snprintf(serial, sizeof serial, "%.8f", d.Value());
      s = std::string("Liczba dni od 30.12.1899: ") + serial + "\n";
      s += "Dzień tygodnia (1 = poniedziałek): " + std::to_string(d.GetIsoDayOfWeek()) +
           ", dzień roku: " + std::to_string(d.GetDayOfYear()) + "\n";
      s += "Miesiąc później: " + d.AddMonths(1).Format("%Y-%m-%d %H:%M:%S") + "\n";
      s += "SQL Server: " + SqlOkDate(d) + "\nSQLite: " + SqliteDialect().DateLiteral(d) +
           "    PostgreSQL: " + PostgresDialect().DateLiteral(d);
    }
    SetText(m_dateOut, s);

    std::string t = GetText(m_text);
    s = "Do SQL: '" + SqlOkString(t) + "'\n";
    s += "Bajty CP1250: " + Hex(t) + "\n";
    s += "Bajty UTF-8: " + Hex(text::Cp1250ToUtf8(t));
    SetText(m_textOut, s);
  }

  HWND m_amount = nullptr, m_amountOut = nullptr, m_date = nullptr, m_dateOut = nullptr, m_text = nullptr,
       m_textOut = nullptr;
};

VARION_GALLERY_PAGE(10, BaseTypesPage);

}  // namespace
}  // namespace varion::demo
