#include "framework/fillers_win.h"

#include <exception>
#include <functional>

#include "base/library_module_win.h"
#include "base/status.h"
#include "base/text.h"
#include "diagnostics/framework_log.h"
#include "framework/exchange_internal_win.h"
#include "framework/fill_dictionaries.h"
#include "framework/message_template_win.h"

namespace varion::fill {

bool FillControl(HWND control, const ControlMessages& m, const Items& items, bool reset, int select) {
  if (!control || !IsWindow(control)) return false;
  // Large dictionaries: one allocation up front and no repainting per item.
  const bool large = items.size() > 64;
  if (large) {
    SendMessageW(control, WM_SETREDRAW, FALSE, 0);
    const UINT initStorage = m.add == CB_ADDSTRING ? CB_INITSTORAGE : LB_INITSTORAGE;
    SendMessageW(control, initStorage, items.size(), items.size() * 32);
  }
  if (reset) SendMessageW(control, m.reset, 0, 0);
  bool ok = true;
  for (const Item& item : items) {
    const LRESULT at =
        SendMessageW(control, m.add, 0, reinterpret_cast<LPARAM>(text::Cp1250ToWide(item.text).c_str()));
    if (at < 0) {  // CB_ERR, CB_ERRSPACE and their list twins
      ok = false;
      break;
    }
    SendMessageW(control, m.setData, static_cast<WPARAM>(at), static_cast<LPARAM>(item.data));
  }
  if (ok && select >= 0) SendMessageW(control, m.setSel, static_cast<WPARAM>(select), 0);
  if (large) {
    SendMessageW(control, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(control, nullptr, TRUE);
  }
  return ok;
}

namespace {

constexpr const char* kLogArea = "Varion.Fillers";

HWND Target(const CFlgDataExchange& dx, int ctrlId) {
  HWND control = exchange::Control(dx, ctrlId);
  return control && IsWindow(control) ? control : nullptr;
}

// Builds the items first and touches the control only when they are all there: a failing
// source leaves the control as it was. Nothing escapes: the fillers run in dialogs' load
// handlers, inside window procedures.
bool Fill(CFlgDataExchange& dx, int ctrlId, const ControlMessages& m, bool reset, int select,
          const std::function<Items()>& source) {
  HWND control = Target(dx, ctrlId);
  if (!control) return false;
  try {
    return FillControl(control, m, source(), reset, select);
  } catch (const ComError& e) {
    FrameworkLog(kLogArea, "Kontrolka " + std::to_string(ctrlId) + " nie została wypełniona: " + e.Message());
  } catch (const std::exception& e) {
    FrameworkLog(kLogArea, "Kontrolka " + std::to_string(ctrlId) + " nie została wypełniona: " + e.what());
  }
  return false;
}

Items FromEntries(const LBEntry* entries, int count, const long* excluded, int excludedCount) {
  std::vector<std::int32_t> skip;
  if (excluded && excludedCount > 0) skip.assign(excluded, excluded + excludedCount);
  return SelectEntries(entries, count, skip.data(), static_cast<int>(skip.size()));
}

bool FillEntries(CFlgDataExchange& dx, int ctrlId, const ControlMessages& m, const LBEntry* entries, int count,
                 bool reset, const long* excluded, int excludedCount) {
  if (!entries || count < 1) return false;
  return Fill(dx, ctrlId, m, reset, -1, [&] { return FromEntries(entries, count, excluded, excludedCount); });
}

bool FillResource(CFlgDataExchange& dx, int ctrlId, const ControlMessages& m, UINT resourceId, bool reset) {
  const std::string text = LoadResourceString(resourceId);
  if (text.empty()) return false;
  return Fill(dx, ctrlId, m, reset, -1, [&] { return ItemsFromLines(text); });
}

RowFormat Format(const char* textField, const char* idField, const char* tmpl, const char* textField2) {
  RowFormat f;
  if (tmpl) f.tmpl = tmpl;
  f.textFields.emplace_back(textField ? textField : "");
  if (textField2) f.textFields.emplace_back(textField2);
  f.idField = idField ? idField : "";
  return f;
}

bool FillQuery(CFlgDataExchange& dx, int ctrlId, const ControlMessages& m, const db::Connection& c, std::string sql,
               const RowFormat& format, bool reset) {
  return Fill(dx, ctrlId, m, reset, -1, [&] {
    db::Recordset rs = c.OpenRS(sql);
    return ReadItems(rs, format, PlatformFormatMessage);
  });
}

bool FillDistinct(const db::Connection& c, CFlgDataExchange& dx, int ctrlId, const ControlMessages& m,
                  const char* from, const char* textExpr, const char* idExpr, const char* condition, bool reset) {
  if (!from || !textExpr) return false;
  const std::string sql = DistinctSql(idExpr ? idExpr : "1 AS ID", textExpr, from, condition ? condition : "");
  return Fill(dx, ctrlId, m, reset, -1, [&] {
    db::Recordset rs = c.OpenRS(sql);
    // The identifier comes first whatever its expression is called.
    RowFormat f;
    f.textFields = {"TEXT_FIELD"};
    f.idField = rs.GetFieldCount() > 0 ? rs.GetFieldName(0) : "";
    return ReadItems(rs, f, PlatformFormatMessage);
  });
}

}  // namespace

// Named dictionaries: the extras the flags ask for come first; a filler with extra items selects
// the first, so that the control opens on "(dowolny)" rather than on an arbitrary row.
bool FillDictionary(const db::Connection& c, CFlgDataExchange& dx, int ctrlId, const ControlMessages& m,
                    const char* name, unsigned extras, std::span<const long> numbers) {
  const Dictionary* d = FindDictionary(name);
  if (!d) return false;
  return Fill(dx, ctrlId, m, true, extras ? 0 : -1,
              [&] { return LoadDictionary(c, *d, extras, numbers, PlatformFormatMessage); });
}

bool FillItems(CFlgDataExchange& dx, int ctrlId, const ControlMessages& m, const Items& items) {
  return Fill(dx, ctrlId, m, true, -1, [&] { return items; });
}

}  // namespace varion::fill

using namespace varion;
using namespace varion::fill;

bool CB_Fill(CFlgDataExchange& dx, int ctrlId, const LBEntry* entries, int count, bool reset, const long* excluded,
             int excludedCount) {
  return FillEntries(dx, ctrlId, kComboMessages, entries, count, reset, excluded, excludedCount);
}
bool LB_Fill(CFlgDataExchange& dx, int ctrlId, const LBEntry* entries, int count, bool reset, const long* excluded,
             int excludedCount) {
  return FillEntries(dx, ctrlId, kListMessages, entries, count, reset, excluded, excludedCount);
}

bool CB_Fill(CFlgDataExchange& dx, int ctrlId, const CStringArray& texts, bool reset) {
  return Fill(dx, ctrlId, kComboMessages, reset, -1, [&] { return ItemsFromTexts(texts); });
}
bool LB_Fill(CFlgDataExchange& dx, int ctrlId, const CStringArray& texts, bool reset) {
  return Fill(dx, ctrlId, kListMessages, reset, -1, [&] { return ItemsFromTexts(texts); });
}

bool CB_Fill(CFlgDataExchange& dx, int ctrlId, UINT resourceId, bool reset) {
  return FillResource(dx, ctrlId, kComboMessages, resourceId, reset);
}
bool LB_Fill(CFlgDataExchange& dx, int ctrlId, UINT resourceId, bool reset) {
  return FillResource(dx, ctrlId, kListMessages, resourceId, reset);
}

bool CB_Fill(CFlgDataExchange& dx, int ctrlId, const char* first, const char* second, bool reset) {
  const CStringArray texts{first ? first : "", second ? second : ""};
  return CB_Fill(dx, ctrlId, texts, reset);
}
bool LB_Fill(CFlgDataExchange& dx, int ctrlId, const char* first, const char* second, bool reset) {
  const CStringArray texts{first ? first : "", second ? second : ""};
  return LB_Fill(dx, ctrlId, texts, reset);
}

bool CB_Fill(CFlgDataExchange& dx, int ctrlId, const db::Connection& connection, const char* tableOrQuery,
             const char* textField, const char* idField, bool reset, const char* tmpl, const char* textField2) {
  if (!tableOrQuery) return false;
  return FillQuery(dx, ctrlId, kComboMessages, connection, SourceSql(tableOrQuery),
                   Format(textField, idField, tmpl, textField2), reset);
}
bool LB_Fill(CFlgDataExchange& dx, int ctrlId, const db::Connection& connection, const char* tableOrQuery,
             const char* textField, const char* idField, bool reset, const char* tmpl, const char* textField2) {
  if (!tableOrQuery) return false;
  return FillQuery(dx, ctrlId, kListMessages, connection, SourceSql(tableOrQuery),
                   Format(textField, idField, tmpl, textField2), reset);
}

bool CB_FillRS(const db::Connection& connection, CFlgDataExchange& dx, int ctrlId, const char* sql,
               const char* textField, const char* idField, bool reset) {
  if (!sql) return false;
  return FillQuery(dx, ctrlId, kComboMessages, connection, sql, Format(textField, idField, nullptr, nullptr), reset);
}
bool LB_FillRS(const db::Connection& connection, CFlgDataExchange& dx, int ctrlId, const char* sql,
               const char* textField, const char* idField, bool reset) {
  if (!sql) return false;
  return FillQuery(dx, ctrlId, kListMessages, connection, sql, Format(textField, idField, nullptr, nullptr), reset);
}

bool CB_Fill(CFlgDataExchange& dx, int ctrlId, db::Recordset& rs, const char* textField, const char* idField,
             bool reset) {
  const RowFormat f = Format(textField, idField, nullptr, nullptr);
  return Fill(dx, ctrlId, kComboMessages, reset, -1, [&] { return ReadItems(rs, f, PlatformFormatMessage); });
}
bool LB_Fill(CFlgDataExchange& dx, int ctrlId, db::Recordset& rs, const char* textField, const char* idField,
             bool reset) {
  const RowFormat f = Format(textField, idField, nullptr, nullptr);
  return Fill(dx, ctrlId, kListMessages, reset, -1, [&] { return ReadItems(rs, f, PlatformFormatMessage); });
}

bool CB_FillDistinct(const db::Connection& connection, CFlgDataExchange& dx, int ctrlId, const char* from,
                     const char* textExpr, const char* idExpr, const char* condition, bool reset) {
  return FillDistinct(connection, dx, ctrlId, kComboMessages, from, textExpr, idExpr, condition, reset);
}
bool LB_FillDistinct(const db::Connection& connection, CFlgDataExchange& dx, int ctrlId, const char* from,
                     const char* textExpr, const char* idExpr, const char* condition, bool reset) {
  return FillDistinct(connection, dx, ctrlId, kListMessages, from, textExpr, idExpr, condition, reset);
}

namespace {
unsigned Extras(bool first, bool second) { return (first ? 1u : 0u) | (second ? 2u : 0u); }
}  // namespace

bool CB_FillCrmBranza(const db::Connection& c, CFlgDataExchange& dx, int ctrlId) {
  return FillDictionary(c, dx, ctrlId, kComboMessages, "CrmBranza", kNoExtras, {});
}
bool CB_FillCrmPersonel(const db::Connection& c, CFlgDataExchange& dx, int ctrlId, bool withLoggedIn) {
  return FillDictionary(c, dx, ctrlId, kComboMessages, "CrmPersonel", Extras(withLoggedIn, false), {});
}
bool CB_FillDivision(const db::Connection& c, CFlgDataExchange& dx, int ctrlId, bool withAny, bool withCurrent) {
  return FillDictionary(c, dx, ctrlId, kComboMessages, "Division", Extras(withAny, withCurrent), {});
}
bool CB_FillDrukarkiFiskalne(const db::Connection& c, CFlgDataExchange& dx, int ctrlId) {
  return FillDictionary(c, dx, ctrlId, kComboMessages, "DrukarkiFiskalne", kNoExtras, {});
}
bool CB_FillAtrybutyDnia(const db::Connection& c, CFlgDataExchange& dx, int ctrlId, bool withNone) {
  return FillDictionary(c, dx, ctrlId, kComboMessages, "AtrybutyDnia", Extras(withNone, false), {});
}
bool CB_FillDokumentyDefiniowalneDlaTypu(const db::Connection& c, CFlgDataExchange& dx, int ctrlId, long docType,
                                         long docSubtype) {
  const long numbers[] = {docType, docSubtype};
  return FillDictionary(c, dx, ctrlId, kComboMessages, "DokumentyDefiniowalneDlaTypu", kNoExtras, numbers);
}
bool CB_FillDaneWystawiajacegoEmail(const db::Connection& c, CFlgDataExchange& dx, int ctrlId, bool withNotIncluded) {
  return FillDictionary(c, dx, ctrlId, kComboMessages, "DaneWystawiajacegoEmail", Extras(withNotIncluded, false), {});
}
bool CB_FillFlaga_Nazwy(const db::Connection& c, CFlgDataExchange& dx, int ctrlId, bool withAny, bool withNone) {
  return FillDictionary(c, dx, ctrlId, kComboMessages, "Flaga_Nazwy", Extras(withAny, withNone), {});
}
bool CB_FillMagazyn(const db::Connection& c, CFlgDataExchange& dx, int ctrlId) {
  return FillDictionary(c, dx, ctrlId, kComboMessages, "Magazyn", kNoExtras, {});
}
bool LB_FillMagazyn(const db::Connection& c, CFlgDataExchange& dx, int ctrlId) {
  return FillDictionary(c, dx, ctrlId, kListMessages, "Magazyn", kNoExtras, {});
}
bool CB_FillPanstwo(const db::Connection& c, CFlgDataExchange& dx, int ctrlId) {
  return FillDictionary(c, dx, ctrlId, kComboMessages, "Panstwo", kNoExtras, {});
}
bool LB_FillPanstwo(const db::Connection& c, CFlgDataExchange& dx, int ctrlId) {
  return FillDictionary(c, dx, ctrlId, kListMessages, "Panstwo", kNoExtras, {});
}
bool CB_FillPracownik(const db::Connection& c, CFlgDataExchange& dx, int ctrlId) {
  return FillDictionary(c, dx, ctrlId, kComboMessages, "Pracownik", kNoExtras, {});
}
bool LB_FillPracownik(const db::Connection& c, CFlgDataExchange& dx, int ctrlId) {
  return FillDictionary(c, dx, ctrlId, kListMessages, "Pracownik", kNoExtras, {});
}

namespace {
bool FillFixed(CFlgDataExchange& dx, int ctrlId, const char* name, int day = 1) {
  const FixedList* list = FindFixedList(name);
  return list && FillItems(dx, ctrlId, kComboMessages, FixedListItems(*list, day));
}
}  // namespace

bool CB_FillCzestotliwoscOdpisuAM(CFlgDataExchange& dx, int ctrlId) { return FillFixed(dx, ctrlId, "CzestotliwoscOdpisuAM"); }
bool CB_FillDataDomyslna(CFlgDataExchange& dx, int ctrlId, int day) { return FillFixed(dx, ctrlId, "DataDomyslna", day); }
bool CB_FillFVDateType(CFlgDataExchange& dx, int ctrlId) { return FillFixed(dx, ctrlId, "FVDateType"); }
bool CB_FillDokumentVatRodzaje(CFlgDataExchange& dx, int ctrlId) { return FillFixed(dx, ctrlId, "DokumentVatRodzaje"); }

bool CB_Fill_DzienMiesiaca(CFlgDataExchange& dx, int ctrlId) { return FillItems(dx, ctrlId, kComboMessages, DaysOfMonth()); }
bool CB_Fill_DzienTygodnia(CFlgDataExchange& dx, int ctrlId) { return FillItems(dx, ctrlId, kComboMessages, DaysOfWeek()); }
bool CB_Fill_Miesiac(CFlgDataExchange& dx, int ctrlId) { return FillItems(dx, ctrlId, kComboMessages, Months()); }
bool LB_Fill_DzienMiesiaca(CFlgDataExchange& dx, int ctrlId) { return FillItems(dx, ctrlId, kListMessages, DaysOfMonth()); }
bool LB_Fill_DzienTygodnia(CFlgDataExchange& dx, int ctrlId) { return FillItems(dx, ctrlId, kListMessages, DaysOfWeek()); }
bool LB_Fill_Miesiac(CFlgDataExchange& dx, int ctrlId) { return FillItems(dx, ctrlId, kListMessages, Months()); }
