// The exchange with recordset fields: each form goes the way of the variant or value form.
#include "base/text.h"
#include "framework/data_exchange_win.h"
#include "framework/exchange_internal_win.h"
#include "framework/exchange_rules.h"

using namespace varion;

namespace {

// Runs a save into a variant and writes it to the field only when the save recorded nothing.
template <typename Save>
void SaveInto(CFlgDataExchange& dx, ExchangeField& field, Save save) {
  Variant v = field.Value();
  const std::size_t before = dx.GetCount();
  save(v);
  if (dx.GetCount() == before || !dx.GetErrorsArray()) field.SetValue(v);
}

std::int32_t IntOf(const Variant& v, std::int32_t fallback) {
  std::int32_t n = fallback;
  if (!v.IsEmptyOrNull()) v.ToInt32(n);
  return n;
}

std::string TextOf(const Variant& v) { return v.IsEmptyOrNull() ? std::string() : v.AsText(); }

}  // namespace

// Text ------------------------------------------------------------------------------------------------

void DLX_Text(CFlgDataExchange& dx, int id, const ExchangeField& f) { DLX_Text(dx, id, f.Value()); }
void DLX_Text(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) { DLX_Text(dx, id, ExchangeField(rs, f)); }
void DSX_Text(CFlgDataExchange& dx, int id, ExchangeField& f) {
  SaveInto(dx, f, [&](Variant& v) { DSX_Text(dx, id, v, f.VariantType()); });
}
void DSX_Text(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  DSX_Text(dx, id, field);
}

// Time -------------------------------------------------------------------------------------------------

void DLX_Time(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  const Variant v = ExchangeField(rs, f).Value();
  DateTime d = DateTime::Null();
  if (!v.IsEmptyOrNull()) v.ToDate(d);
  DLX_Time(dx, id, d);
}
void DSX_Time(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  SaveInto(dx, field, [&](Variant& v) {
    COleDateTime d = DateTime::Invalid();
    DSX_Time(dx, id, d);
    if (d.IsNull())
      v = Variant::MakeNull();
    else if (d.IsValid())
      v = Variant(d);
  });
}

// Check boxes and radio groups -------------------------------------------------------------------------

void DLX_Check(CFlgDataExchange& dx, int id, const ExchangeField& f) { DLX_Check(dx, id, f.Value()); }
void DLX_Check(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) { DLX_Check(dx, id, ExchangeField(rs, f)); }
void DSX_Check(CFlgDataExchange& dx, int id, ExchangeField& f) {
  SaveInto(dx, f, [&](Variant& v) {
    DSX_Check(dx, id, v);
    // A yes/no column takes the state as a truth value.
    if (f.Type() == db::FieldType::Bool && !v.IsNull()) v = Variant(v.AsInt32() == BST_CHECKED);
  });
}
void DSX_Check(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  DSX_Check(dx, id, field);
}

void DLX_Radio(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  DLX_Radio(dx, id, ExchangeField(rs, f).Value());
}
void DSX_Radio(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  SaveInto(dx, field, [&](Variant& v) { DSX_Radio(dx, id, v); });
}

// Combo and list boxes ------------------------------------------------------------------------------------
// Both families have the same field forms, built from their value forms.

namespace {

using LoadIdentFn = void (*)(CFlgDataExchange&, int, const _variant_t&);
using SaveIdentFn = void (*)(CFlgDataExchange&, int, _variant_t&, VARTYPE);
using LoadIndexFn = void (*)(CFlgDataExchange&, int, int);
using SaveIndexFn = void (*)(CFlgDataExchange&, int, int&);
using LoadTextFn = void (*)(CFlgDataExchange&, int, const std::string&);
using SaveTextFn = void (*)(CFlgDataExchange&, int, std::string&);

void LoadIdentField(LoadIdentFn load, CFlgDataExchange& dx, int id, const ExchangeField& f) { load(dx, id, f.Value()); }
void LoadIndexField(LoadIndexFn load, CFlgDataExchange& dx, int id, const ExchangeField& f) {
  load(dx, id, IntOf(f.Value(), -1));
}
void LoadTextField(LoadTextFn load, CFlgDataExchange& dx, int id, const ExchangeField& f) {
  load(dx, id, TextOf(f.Value()));
}
void SaveIdentField(SaveIdentFn save, CFlgDataExchange& dx, int id, ExchangeField& f) {
  SaveInto(dx, f, [&](Variant& v) { save(dx, id, v, VT_I4); });
}
void SaveIndexField(SaveIndexFn save, CFlgDataExchange& dx, int id, ExchangeField& f) {
  SaveInto(dx, f, [&](Variant& v) {
    int index = -1;
    save(dx, id, index);
    v = Variant(static_cast<std::int32_t>(index));
  });
}
void SaveTextField(SaveTextFn save, CFlgDataExchange& dx, int id, ExchangeField& f) {
  SaveInto(dx, f, [&](Variant& v) {
    std::string text;
    save(dx, id, text);
    v = Variant(text);
  });
}

}  // namespace

void DLX_CBIdent(CFlgDataExchange& dx, int id, const ExchangeField& f) { LoadIdentField(DLX_CBIdent, dx, id, f); }
void DLX_CBIdent(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  DLX_CBIdent(dx, id, ExchangeField(rs, f));
}
void DSX_CBIdent(CFlgDataExchange& dx, int id, ExchangeField& f) { SaveIdentField(DSX_CBIdent, dx, id, f); }
void DSX_CBIdent(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  DSX_CBIdent(dx, id, field);
}
void DLX_CBIndex(CFlgDataExchange& dx, int id, const ExchangeField& f) { LoadIndexField(DLX_CBIndex, dx, id, f); }
void DLX_CBIndex(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  DLX_CBIndex(dx, id, ExchangeField(rs, f));
}
void DSX_CBIndex(CFlgDataExchange& dx, int id, ExchangeField& f) { SaveIndexField(DSX_CBIndex, dx, id, f); }
void DSX_CBIndex(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  DSX_CBIndex(dx, id, field);
}
void DLX_CBString(CFlgDataExchange& dx, int id, const ExchangeField& f) { LoadTextField(DLX_CBString, dx, id, f); }
void DLX_CBString(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  DLX_CBString(dx, id, ExchangeField(rs, f));
}
void DSX_CBString(CFlgDataExchange& dx, int id, ExchangeField& f) { SaveTextField(DSX_CBString, dx, id, f); }
void DSX_CBString(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  DSX_CBString(dx, id, field);
}
void DLX_CBStringExact(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  LoadTextField(DLX_CBStringExact, dx, id, ExchangeField(rs, f));
}
void DSX_CBStringExact(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) { DSX_CBString(dx, id, rs, f); }
void DSX_CBStringSelected(CFlgDataExchange& dx, int id, ExchangeField& f) {
  SaveTextField(DSX_CBStringSelected, dx, id, f);
}

void DLX_LBIdent(CFlgDataExchange& dx, int id, const ExchangeField& f) { LoadIdentField(DLX_LBIdent, dx, id, f); }
void DLX_LBIdent(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  DLX_LBIdent(dx, id, ExchangeField(rs, f));
}
void DSX_LBIdent(CFlgDataExchange& dx, int id, ExchangeField& f) { SaveIdentField(DSX_LBIdent, dx, id, f); }
void DSX_LBIdent(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  DSX_LBIdent(dx, id, field);
}
void DLX_LBIndex(CFlgDataExchange& dx, int id, const ExchangeField& f) { LoadIndexField(DLX_LBIndex, dx, id, f); }
void DLX_LBIndex(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  DLX_LBIndex(dx, id, ExchangeField(rs, f));
}
void DSX_LBIndex(CFlgDataExchange& dx, int id, ExchangeField& f) { SaveIndexField(DSX_LBIndex, dx, id, f); }
void DSX_LBIndex(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  DSX_LBIndex(dx, id, field);
}
void DLX_LBString(CFlgDataExchange& dx, int id, const ExchangeField& f) { LoadTextField(DLX_LBString, dx, id, f); }
void DLX_LBString(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  DLX_LBString(dx, id, ExchangeField(rs, f));
}
void DSX_LBString(CFlgDataExchange& dx, int id, ExchangeField& f) { SaveTextField(DSX_LBString, dx, id, f); }
void DSX_LBString(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  DSX_LBString(dx, id, field);
}
void DLX_LBStringExact(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  LoadTextField(DLX_LBStringExact, dx, id, ExchangeField(rs, f));
}
void DSX_LBStringExact(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) { DSX_LBString(dx, id, rs, f); }

// Positions ------------------------------------------------------------------------------------------------

void DLX_Scroll(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  DLX_Scroll(dx, id, IntOf(ExchangeField(rs, f).Value(), 0));
}
void DSX_Scroll(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  SaveInto(dx, field, [&](Variant& v) {
    int position = IntOf(v, 0);
    DSX_Scroll(dx, id, position);
    v = Variant(static_cast<std::int32_t>(position));
  });
}
void DLX_Slider(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f) {
  DLX_Slider(dx, id, IntOf(ExchangeField(rs, f).Value(), 0));
}
void DSX_Slider(CFlgDataExchange& dx, int id, RecordsetW rs, const char* f) {
  ExchangeField field(rs, f);
  SaveInto(dx, field, [&](Variant& v) {
    int position = IntOf(v, 0);
    DSX_Slider(dx, id, position);
    v = Variant(static_cast<std::int32_t>(position));
  });
}

// The analytic account and the checks ------------------------------------------------------------------------

void DSX_Analityka(CFlgDataExchange& dx, int id, RecordsetW rs, const char* idField, const char* textField) {
  long account = 0;
  std::wstring text;
  DSX_Analityka(dx, id, account, text);
  ExchangeField(rs, idField).SetValue(account ? Variant(static_cast<std::int32_t>(account)) : Variant::MakeNull());
  ExchangeField(rs, textField).SetValue(Variant(text::WideToCp1250(text)));
}

int DSV_MaxChars(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f, long max) {
  return DSV_MaxChars(dx, id, TextOf(ExchangeField(rs, f).Value()), max);
}

void DV_MinChars(CFlgDataExchange& dx, int id, RecordsetR rs, const char* f, long min, const char* message) {
  DV_MinChars(dx, id, TextOf(ExchangeField(rs, f).Value()), min, message);
}
