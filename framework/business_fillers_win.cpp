#include "framework/business_fillers_win.h"

#include <exception>
#include <string>

#include "base/status.h"
#include "db/rt_instance.h"
#include "diagnostics/framework_log.h"
#include "framework/business_fill.h"
#include "framework/exchange_internal_win.h"
#include "framework/fill_dictionaries.h"
#include "framework/message_template_win.h"

using namespace varion;
using namespace varion::fill;

namespace {

constexpr const char* kLogArea = "Varion.Fillers";

void LogFailure(int ctrlId, std::string_view what) {
  FrameworkLog(kLogArea, "Kontrolka " + std::to_string(ctrlId) + " nie została wypełniona: " + std::string(what));
}

// Runs a business filler with the instance's connection; without one the failure is logged.
template <typename Body>
auto WithInstance(int ctrlId, Body&& body) -> decltype(body(std::declval<const db::Connection&>())) {
  try {
    return body(CRtInstance::GetConnection());
  } catch (const ComError& e) {
    LogFailure(ctrlId, e.Message());
  } catch (const std::exception& e) {
    LogFailure(ctrlId, e.what());
  }
  return {};
}

// A field's value as a code or number: null and empty give nothing, numbers their number form,
// anything else its text.
template <typename OnText, typename OnNumber>
void ByValue(const Variant& v, OnText&& onText, OnNumber&& onNumber) {
  using T = Variant::Type;
  switch (v.GetType()) {
    case T::Empty:
    case T::Null: onText(""); return;
    case T::Int32:
    case T::Int64:
    case T::Double:
    case T::Amount:
    case T::Bool: onNumber(static_cast<long>(v.AsInt32())); return;
    default: onText(v.AsText()); return;
  }
}

}  // namespace

// Insurance-title codes ---------------------------------------------------------------------------

void DLX_CB_Zus(const db::Connection& c, CFlgDataExchange& dx, int ctrlId, const char* code) {
  HWND combo = exchange::Control(dx, ctrlId);
  if (!combo) return;
  const Dictionary* d = FindDictionary("KodZus");
  Items items;
  try {
    items = LoadDictionary(c, *d, kNoExtras, {}, PlatformFormatMessage);
  } catch (const ComError& e) {
    LogFailure(ctrlId, e.Message());
    return;
  }
  if (!FillControl(combo, kComboMessages, items, true)) return;
  const std::string wanted = code ? code : "";
  const int at = FindCodeItem(items, wanted);
  SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(at), 0);
  if (at < 0 && !wanted.empty()) exchange::WriteText(combo, wanted);
}

void DLX_CB_Zus(CFlgDataExchange& dx, int ctrlId, const char* code) {
  WithInstance(ctrlId, [&](const db::Connection& c) {
    DLX_CB_Zus(c, dx, ctrlId, code);
    return 0;
  });
}
void DLX_CB_Zus(CFlgDataExchange& dx, int ctrlId, long code) {
  DLX_CB_Zus(dx, ctrlId, ZusCodeText(code).c_str());
}
void DLX_CB_Zus(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field) {
  ByValue(
      field.Value(), [&](const std::string& t) { DLX_CB_Zus(dx, ctrlId, t.c_str()); },
      [&](long n) { DLX_CB_Zus(dx, ctrlId, n); });
}
void DLX_CB_Zus(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field) {
  DLX_CB_Zus(dx, ctrlId, ExchangeField(rs, field ? field : ""));
}

// Vehicle registration numbers -------------------------------------------------------------------

void DLX_NrAuto(CFlgDataExchange& dx, int ctrlId, const char* number) {
  exchange::WriteText(dx, ctrlId, RegistrationNumberText(number ? number : ""));
}

void DLX_NrAuto(const db::Connection& c, CFlgDataExchange& dx, int ctrlId, long vehicleId) {
  std::string number;
  if (vehicleId > 0) {
    try {
      db::Recordset rs =
          c.OpenRS("SELECT sam_NrRejestracyjny FROM sl_Samochod WHERE sam_Id = " + std::to_string(vehicleId));
      if (!rs.IsEOF()) number = rs.GetCollect(0).AsText();
    } catch (const ComError& e) {
      LogFailure(ctrlId, e.Message());
      return;
    }
  }
  DLX_NrAuto(dx, ctrlId, number.c_str());
}

void DLX_NrAuto(CFlgDataExchange& dx, int ctrlId, long vehicleId) {
  if (vehicleId <= 0) return DLX_NrAuto(dx, ctrlId, "");
  WithInstance(ctrlId, [&](const db::Connection& c) {
    DLX_NrAuto(c, dx, ctrlId, vehicleId);
    return 0;
  });
}
void DLX_NrAuto(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field) {
  ByValue(
      field.Value(), [&](const std::string& t) { DLX_NrAuto(dx, ctrlId, t.c_str()); },
      [&](long n) { DLX_NrAuto(dx, ctrlId, n); });
}
void DLX_NrAuto(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field) {
  DLX_NrAuto(dx, ctrlId, ExchangeField(rs, field ? field : ""));
}

// Filter combos -----------------------------------------------------------------------------------

namespace {

int ComboCount(const CFlgDataExchange& dx, int ctrlId) {
  const LRESULT n = SendMessageW(exchange::Control(dx, ctrlId), CB_GETCOUNT, 0, 0);
  return n > 0 ? static_cast<int>(n) : 0;
}

int InitFilter(const db::Connection& c, CFlgDataExchange& dx, int ctrlId, const char* name) {
  if (!FillDictionary(c, dx, ctrlId, kComboMessages, name, kAllExtras, {})) return 0;
  return ComboCount(dx, ctrlId);
}

}  // namespace

#define VARION_FILTER_INIT(Name)                                                                  \
  int DLX_Init##Name(const db::Connection& c, CFlgDataExchange& dx, int ctrlId) {                 \
    return InitFilter(c, dx, ctrlId, #Name);                                                      \
  }                                                                                               \
  int DLX_Init##Name(CFlgDataExchange& dx, int ctrlId) {                                          \
    return WithInstance(ctrlId, [&](const db::Connection& c) { return DLX_Init##Name(c, dx, ctrlId); }); \
  }
VARION_FILTER_INIT(ErpListFilter)
VARION_FILTER_INIT(GrupyDokFilter)
VARION_FILTER_INIT(KasaFilter)
VARION_FILTER_INIT(KategoriaFilter)
VARION_FILTER_INIT(KodyCNFilter)
VARION_FILTER_INIT(ModelFilter)
VARION_FILTER_INIT(PanstwoFilter)
VARION_FILTER_INIT(PdmRachBankListFilter)
VARION_FILTER_INIT(PkwiuFilter)
VARION_FILTER_INIT(PracRachBankListFilter)
VARION_FILTER_INIT(RachBankListFilter)
VARION_FILTER_INIT(RejestrKsiegowyFilter)
VARION_FILTER_INIT(SchematImportuFilter)
VARION_FILTER_INIT(SlMagListFilter)
VARION_FILTER_INIT(UslugaBankListFilter)
VARION_FILTER_INIT(ZleceniaFilter)
#undef VARION_FILTER_INIT

int DLX_InitErpListFilterRs(CFlgDataExchange& dx, int ctrlId, db::Recordset& rs) {
  const Dictionary* d = FindDictionary("ErpListFilter");
  Items items{{d->extras[0].text, d->extras[0].data}};
  try {
    RowFormat f;
    f.tmpl = d->tmpl;
    f.textFields = {d->textFields[0]};
    f.idField = d->idField;
    Items rows = ReadItems(rs, f, PlatformFormatMessage);
    items.insert(items.end(), rows.begin(), rows.end());
  } catch (const ComError& e) {
    LogFailure(ctrlId, e.Message());
    return 0;
  }
  if (!FillControl(exchange::Control(dx, ctrlId), kComboMessages, items, true, 0)) return 0;
  return ComboCount(dx, ctrlId);
}
