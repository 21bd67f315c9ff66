// The exchange with buttons, lists, pickers, scroll bars and the library's own small controls.
#include <windows.h>
#include <commctrl.h>

#include <vector>

#include "base/text.h"
#include "framework/data_exchange_win.h"
#include "framework/exchange_internal_win.h"
#include "framework/exchange_rules.h"
#include "controls/vel_controls_win.h"

using namespace varion;
using varion::exchange::Control;

namespace {

std::uint32_t U(int id) { return static_cast<std::uint32_t>(id); }

// Check boxes ------------------------------------------------------------------------------------------

bool IsThreeState(HWND h) {
  const LONG type = GetWindowLongW(h, GWL_STYLE) & BS_TYPEMASK;
  return type == BS_3STATE || type == BS_AUTO3STATE;
}

void SetCheck(CFlgDataExchange& dx, int id, long long value) {
  if (HWND h = Control(dx, id)) SendMessageW(h, BM_SETCHECK, static_cast<WPARAM>(CheckStateFromValue(value)), 0);
}

// -1 without a control.
int GetCheck(CFlgDataExchange& dx, int id) {
  HWND h = Control(dx, id);
  return h ? static_cast<int>(SendMessageW(h, BM_GETCHECK, 0, 0)) : -1;
}

template <typename T>
void SaveCheck(CFlgDataExchange& dx, int id, T& value) {
  const int state = GetCheck(dx, id);
  if (state >= 0) value = static_cast<T>(state);
}

// Radio groups -------------------------------------------------------------------------------------------

std::vector<HWND> RadioGroup(HWND first) {
  std::vector<HWND> buttons;
  for (HWND h = first; h; h = GetWindow(h, GW_HWNDNEXT)) {
    if (h != first && (GetWindowLongW(h, GWL_STYLE) & WS_GROUP)) break;
    if (SendMessageW(h, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) buttons.push_back(h);
  }
  return buttons;
}

void LoadRadio(CFlgDataExchange& dx, int id, long long value) {
  HWND first = Control(dx, id);
  if (!first) return;
  long long i = 0;
  for (HWND b : RadioGroup(first)) SendMessageW(b, BM_SETCHECK, i++ == value ? BST_CHECKED : BST_UNCHECKED, 0);
}

// The chosen button's number, or -1 (and the failure recorded) when none is chosen.
int SaveRadio(CFlgDataExchange& dx, int id) {
  HWND first = Control(dx, id);
  if (!first) return -1;
  int i = 0;
  for (HWND b : RadioGroup(first)) {
    if (SendMessageW(b, BM_GETCHECK, 0, 0) == BST_CHECKED) return i;
    ++i;
  }
  VelFailRadio(dx, id);
  return -1;
}

// Combo and list boxes share their rules; only the message numbers differ.
struct ListMessages {
  UINT getItemData, getCount, setCurSel, getCurSel, selectString, findStringExact, getText, getTextLen;
  LRESULT error;
};
constexpr ListMessages kCombo{CB_GETITEMDATA,     CB_GETCOUNT,  CB_SETCURSEL,    CB_GETCURSEL, CB_SELECTSTRING,
                              CB_FINDSTRINGEXACT, CB_GETLBTEXT, CB_GETLBTEXTLEN, CB_ERR};
constexpr ListMessages kList{LB_GETITEMDATA,     LB_GETCOUNT, LB_SETCURSEL,  LB_GETCURSEL, LB_SELECTSTRING,
                             LB_FINDSTRINGEXACT, LB_GETTEXT,  LB_GETTEXTLEN, LB_ERR};

void SelectIdent(const ListMessages& m, HWND h, long ident) {
  const LRESULT count = SendMessageW(h, m.getCount, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    if (static_cast<long>(SendMessageW(h, m.getItemData, static_cast<WPARAM>(i), 0)) == ident) {
      SendMessageW(h, m.setCurSel, static_cast<WPARAM>(i), 0);
      return;
    }
  }
  SendMessageW(h, m.setCurSel, static_cast<WPARAM>(-1), 0);
}

// The selected item's data; false without a selection.
bool SelectedIdent(const ListMessages& m, HWND h, long& ident) {
  const LRESULT sel = SendMessageW(h, m.getCurSel, 0, 0);
  if (sel == m.error) return false;
  ident = static_cast<long>(SendMessageW(h, m.getItemData, static_cast<WPARAM>(sel), 0));
  return true;
}

std::string ItemText(const ListMessages& m, HWND h, LRESULT index) {
  const LRESULT len = SendMessageW(h, m.getTextLen, static_cast<WPARAM>(index), 0);
  if (len == m.error || len <= 0) return {};
  std::wstring w(static_cast<size_t>(len) + 1, L'\0');
  SendMessageW(h, m.getText, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(w.data()));
  w.resize(wcslen(w.c_str()));
  return text::WideToCp1250(w);
}

std::string SelectedText(const ListMessages& m, HWND h) {
  const LRESULT sel = SendMessageW(h, m.getCurSel, 0, 0);
  return sel == m.error ? std::string() : ItemText(m, h, sel);
}

// Selects by prefix or by whole text; a combo shows an unmatched text in its edit field.
void SelectString(const ListMessages& m, HWND h, const std::string& text, bool exact) {
  const std::wstring w = text::Cp1250ToWide(text);
  LRESULT found;
  if (exact) {
    found = SendMessageW(h, m.findStringExact, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(w.c_str()));
    if (found != m.error) SendMessageW(h, m.setCurSel, static_cast<WPARAM>(found), 0);
  } else {
    found = SendMessageW(h, m.selectString, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(w.c_str()));
  }
  if (found != m.error) return;
  SendMessageW(h, m.setCurSel, static_cast<WPARAM>(-1), 0);
  if (&m == &kCombo) SetWindowTextW(h, w.c_str());
}

// Date-time pickers -----------------------------------------------------------------------------------------

bool IsPicker(HWND h) { return exchange::ClassName(h) == DATETIMEPICK_CLASSW; }

SYSTEMTIME ToSystemTime(const DateTime& d) {
  DateParts p;
  d.GetParts(p);
  SYSTEMTIME st{};
  st.wYear = static_cast<WORD>(p.year);
  st.wMonth = static_cast<WORD>(p.month);
  st.wDay = static_cast<WORD>(p.day);
  st.wHour = static_cast<WORD>(p.hour);
  st.wMinute = static_cast<WORD>(p.minute);
  st.wSecond = static_cast<WORD>(p.second);
  st.wDayOfWeek = static_cast<WORD>(p.dayOfWeek - 1);
  return st;
}

DateTime FromSystemTime(const SYSTEMTIME& st) {
  return DateTime(st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond);
}

void SetPicker(HWND h, const DateTime& d) {
  if (!h) return;
  if (d.IsNull()) {
    // Some pickers refuse GDT_NONE without a time to point at, though they do not read it.
    SYSTEMTIME st;
    GetLocalTime(&st);
    SendMessageW(h, DTM_SETSYSTEMTIME, GDT_NONE, reinterpret_cast<LPARAM>(&st));
  } else if (d.IsValid()) {
    SYSTEMTIME st = ToSystemTime(d);
    SendMessageW(h, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&st));
  }
}

// A saved state, radio number or identifier as a variant of the type the caller asked for.
Variant TypedInteger(std::int64_t n, VARTYPE type) {
  switch (type) {
    case VT_I8:
    case VT_UI8: return Variant(n);
    case VT_R4:
    case VT_R8: return Variant(static_cast<double>(n));
    case VT_BOOL: return Variant(n != 0);
    case VT_CY: return Variant(Amount::FromUnits(n, 0));
    case VT_BSTR: return Variant(std::to_string(n));
    default: return Variant(static_cast<std::int32_t>(n));
  }
}

// Null for an unchecked picker; nothing without a control.
std::optional<DateTime> GetPicker(HWND h) {
  if (!h) return std::nullopt;
  SYSTEMTIME st{};
  const LRESULT r = SendMessageW(h, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&st));
  if (r == GDT_NONE) return DateTime::Null();
  if (r != GDT_VALID) return std::nullopt;
  return FromSystemTime(st);
}

}  // namespace

// Check boxes ------------------------------------------------------------------------------------------------

void DLX_Check(CFlgDataExchange& dx, int id, bool v) { SetCheck(dx, id, v ? 1 : 0); }
void DLX_Check(CFlgDataExchange& dx, int id, unsigned char v) { SetCheck(dx, id, v); }
void DLX_Check(CFlgDataExchange& dx, int id, short v) { SetCheck(dx, id, v); }
void DLX_Check(CFlgDataExchange& dx, int id, int v) { SetCheck(dx, id, v); }
void DLX_Check(CFlgDataExchange& dx, int id, long v) { SetCheck(dx, id, v); }

void DLX_Check(CFlgDataExchange& dx, int id, const _variant_t& v) {
  HWND h = Control(dx, id);
  if (!h) return;
  if (v.IsNull()) {
    SendMessageW(h, BM_SETCHECK, IsThreeState(h) ? BST_INDETERMINATE : BST_UNCHECKED, 0);
    return;
  }
  std::int32_t n = 0;
  SetCheck(dx, id, Succeeded(v.ToInt32(n)) ? n : 0);
}

void DSX_Check(CFlgDataExchange& dx, int id, bool& v) {
  const int state = GetCheck(dx, id);
  if (state >= 0) v = state == BST_CHECKED;
}
void DSX_Check(CFlgDataExchange& dx, int id, unsigned char& v) { SaveCheck(dx, id, v); }
void DSX_Check(CFlgDataExchange& dx, int id, short& v) { SaveCheck(dx, id, v); }
void DSX_Check(CFlgDataExchange& dx, int id, int& v) { SaveCheck(dx, id, v); }
void DSX_Check(CFlgDataExchange& dx, int id, long& v) { SaveCheck(dx, id, v); }

void DSX_Check(CFlgDataExchange& dx, int id, _variant_t& v, VARTYPE type) {
  HWND h = Control(dx, id);
  if (!h) return;
  // The state 0, 1 or 2 as it is: an indeterminate box saves 2 (a NOT NULL column takes it, and
  // it loads back as indeterminate), never null.
  v = TypedInteger(SendMessageW(h, BM_GETCHECK, 0, 0), type);
}

// Radio groups -----------------------------------------------------------------------------------------------

void DLX_Radio(CFlgDataExchange& dx, int id, unsigned char v) { LoadRadio(dx, id, v); }
void DLX_Radio(CFlgDataExchange& dx, int id, int v) { LoadRadio(dx, id, v); }
void DLX_Radio(CFlgDataExchange& dx, int id, long v) { LoadRadio(dx, id, v); }
void DLX_Radio(CFlgDataExchange& dx, int id, const _variant_t& v) {
  std::int32_t n = -1;
  if (!v.IsEmptyOrNull()) v.ToInt32(n);
  LoadRadio(dx, id, n);
}

void DSX_Radio(CFlgDataExchange& dx, int id, unsigned char& v) {
  const int i = SaveRadio(dx, id);
  if (i >= 0) v = static_cast<unsigned char>(i);
}
void DSX_Radio(CFlgDataExchange& dx, int id, int& v) {
  const int i = SaveRadio(dx, id);
  if (i >= 0) v = i;
}
void DSX_Radio(CFlgDataExchange& dx, int id, long& v) {
  const int i = SaveRadio(dx, id);
  if (i >= 0) v = i;
}
void DSX_Radio(CFlgDataExchange& dx, int id, _variant_t& v, VARTYPE type) {
  const int i = SaveRadio(dx, id);
  if (i >= 0) v = TypedInteger(i, type);
}

void DLX_Radio(CFlgDataExchange& dx, int trueId, int falseId, bool value) {
  if (HWND h = Control(dx, trueId)) SendMessageW(h, BM_SETCHECK, value ? BST_CHECKED : BST_UNCHECKED, 0);
  if (HWND h = Control(dx, falseId)) SendMessageW(h, BM_SETCHECK, value ? BST_UNCHECKED : BST_CHECKED, 0);
}

void DSX_Radio(CFlgDataExchange& dx, int trueId, int falseId, bool& value) {
  HWND yes = Control(dx, trueId), no = Control(dx, falseId);
  if (yes && SendMessageW(yes, BM_GETCHECK, 0, 0) == BST_CHECKED)
    value = true;
  else if (no && SendMessageW(no, BM_GETCHECK, 0, 0) == BST_CHECKED)
    value = false;
  else
    VelFailRadio(dx, trueId);
}

// Combo and list boxes -------------------------------------------------------------------------------------------

namespace {

void LoadIdent(const ListMessages& m, CFlgDataExchange& dx, int id, long ident) {
  if (HWND h = Control(dx, id)) SelectIdent(m, h, ident);
}
void LoadIdent(const ListMessages& m, CFlgDataExchange& dx, int id, const Variant& ident) {
  HWND h = Control(dx, id);
  if (!h) return;
  std::int32_t n = 0;
  if (ident.IsEmptyOrNull() || Failed(ident.ToInt32(n)))
    SendMessageW(h, m.setCurSel, static_cast<WPARAM>(-1), 0);
  else
    SelectIdent(m, h, n);
}
void SaveIdent(const ListMessages& m, CFlgDataExchange& dx, int id, long& ident) {
  if (HWND h = Control(dx, id)) SelectedIdent(m, h, ident);
}
void SaveIdent(const ListMessages& m, CFlgDataExchange& dx, int id, Variant& ident, VARTYPE type) {
  HWND h = Control(dx, id);
  if (!h) return;
  long v = 0;
  ident = SelectedIdent(m, h, v) ? TypedInteger(v, type) : Variant::MakeNull();
}
void LoadIndex(const ListMessages& m, CFlgDataExchange& dx, int id, int index) {
  if (HWND h = Control(dx, id)) SendMessageW(h, m.setCurSel, static_cast<WPARAM>(index), 0);
}
void SaveIndex(const ListMessages& m, CFlgDataExchange& dx, int id, int& index) {
  if (HWND h = Control(dx, id)) index = static_cast<int>(SendMessageW(h, m.getCurSel, 0, 0));
}
void LoadText(const ListMessages& m, CFlgDataExchange& dx, int id, const std::string& text, bool exact) {
  if (HWND h = Control(dx, id)) SelectString(m, h, text, exact);
}
void SaveSelectedText(const ListMessages& m, CFlgDataExchange& dx, int id, std::string& text) {
  HWND h = Control(dx, id);
  text = h ? SelectedText(m, h) : std::string();
}

}  // namespace

void DLX_CBIdent(CFlgDataExchange& dx, int id, long ident) { LoadIdent(kCombo, dx, id, ident); }
void DLX_CBIdent(CFlgDataExchange& dx, int id, const _variant_t& ident) { LoadIdent(kCombo, dx, id, ident); }
void DSX_CBIdent(CFlgDataExchange& dx, int id, long& ident) { SaveIdent(kCombo, dx, id, ident); }
void DSX_CBIdent(CFlgDataExchange& dx, int id, _variant_t& ident, VARTYPE type) {
  SaveIdent(kCombo, dx, id, ident, type);
}
void DLX_CBIndex(CFlgDataExchange& dx, int id, int index) { LoadIndex(kCombo, dx, id, index); }
void DSX_CBIndex(CFlgDataExchange& dx, int id, int& index) { SaveIndex(kCombo, dx, id, index); }
void DLX_CBString(CFlgDataExchange& dx, int id, const std::string& text) { LoadText(kCombo, dx, id, text, false); }
// A combo's own text: the selected item's, or what the user typed into its edit field.
void DSX_CBString(CFlgDataExchange& dx, int id, std::string& text) { text = exchange::ReadText(dx, id); }
void DLX_CBStringExact(CFlgDataExchange& dx, int id, const std::string& text) { LoadText(kCombo, dx, id, text, true); }
void DSX_CBStringExact(CFlgDataExchange& dx, int id, std::string& text) { text = exchange::ReadText(dx, id); }
void DSX_CBStringSelected(CFlgDataExchange& dx, int id, std::string& text) { SaveSelectedText(kCombo, dx, id, text); }

void DLX_LBIdent(CFlgDataExchange& dx, int id, long ident) { LoadIdent(kList, dx, id, ident); }
void DLX_LBIdent(CFlgDataExchange& dx, int id, const _variant_t& ident) { LoadIdent(kList, dx, id, ident); }
void DSX_LBIdent(CFlgDataExchange& dx, int id, long& ident) { SaveIdent(kList, dx, id, ident); }
void DSX_LBIdent(CFlgDataExchange& dx, int id, _variant_t& ident, VARTYPE type) {
  SaveIdent(kList, dx, id, ident, type);
}
void DLX_LBIndex(CFlgDataExchange& dx, int id, int index) { LoadIndex(kList, dx, id, index); }
void DSX_LBIndex(CFlgDataExchange& dx, int id, int& index) { SaveIndex(kList, dx, id, index); }
void DLX_LBString(CFlgDataExchange& dx, int id, const std::string& text) { LoadText(kList, dx, id, text, false); }
void DSX_LBString(CFlgDataExchange& dx, int id, std::string& text) { SaveSelectedText(kList, dx, id, text); }
void DLX_LBStringExact(CFlgDataExchange& dx, int id, const std::string& text) { LoadText(kList, dx, id, text, true); }
void DSX_LBStringExact(CFlgDataExchange& dx, int id, std::string& text) { SaveSelectedText(kList, dx, id, text); }

// Check list boxes -------------------------------------------------------------------------------------------------

namespace {
// A check list is a list view with check boxes. A plain list box keeps no check marks, so saving
// from one records an error and leaves the array as it was, instead of an empty array that would
// be stored as "nothing checked".
constexpr char kNotACheckList[] = "Ta lista nie ma pól wyboru.";

void CheckedItems(CFlgDataExchange& dx, int id, CDWordArray& out, bool idents) {
  HWND h = Control(dx, id);
  if (!h) return;
  wchar_t windowClass[32] = {};
  GetClassNameW(h, windowClass, static_cast<int>(std::size(windowClass)));
  if (lstrcmpiW(windowClass, WC_LISTVIEWW) != 0) {
    dx.AddError(U(id), kNotACheckList);
    return;
  }
  out.clear();
  const int count = static_cast<int>(SendMessageW(h, LVM_GETITEMCOUNT, 0, 0));
  for (int i = 0; i < count; ++i) {
    const UINT state =
        static_cast<UINT>(SendMessageW(h, LVM_GETITEMSTATE, static_cast<WPARAM>(i), LVIS_STATEIMAGEMASK));
    if ((state >> 12) != 2) continue;  // state image 2 is the checked box
    if (!idents) {
      out.push_back(static_cast<std::uint32_t>(i));
      continue;
    }
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = i;
    SendMessageW(h, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    out.push_back(static_cast<std::uint32_t>(item.lParam));
  }
}
}  // namespace

void DSX_CLBIdent(CFlgDataExchange& dx, int id, CDWordArray& idents) { CheckedItems(dx, id, idents, true); }
void DSX_CLBIndex(CFlgDataExchange& dx, int id, CDWordArray& indexes) { CheckedItems(dx, id, indexes, false); }

// Scroll bars and sliders
// ----------------------------------------------------------------------------------------------

void DLX_Scroll(CFlgDataExchange& dx, int id, int position) {
  if (HWND h = Control(dx, id)) SetScrollPos(h, SB_CTL, position, TRUE);
}
void DSX_Scroll(CFlgDataExchange& dx, int id, int& position) {
  if (HWND h = Control(dx, id)) position = GetScrollPos(h, SB_CTL);
}
void DLX_Slider(CFlgDataExchange& dx, int id, int position) {
  if (HWND h = Control(dx, id)) SendMessageW(h, TBM_SETPOS, TRUE, position);
}
void DSX_Slider(CFlgDataExchange& dx, int id, int& position) {
  if (HWND h = Control(dx, id)) position = static_cast<int>(SendMessageW(h, TBM_GETPOS, 0, 0));
}

// Time
// ------------------------------------------------------------------------------------------------------------------

void DLX_Time(CFlgDataExchange& dx, int id, long secondsOfDay) {
  HWND h = Control(dx, id);
  if (!h || secondsOfDay < 0 || secondsOfDay >= 86400) return;
  SYSTEMTIME st;
  GetLocalTime(&st);
  st.wHour = static_cast<WORD>(secondsOfDay / 3600);
  st.wMinute = static_cast<WORD>(secondsOfDay / 60 % 60);
  st.wSecond = static_cast<WORD>(secondsOfDay % 60);
  st.wMilliseconds = 0;
  SendMessageW(h, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&st));
}
void DLX_Time(CFlgDataExchange& dx, int id, const CTime& value) { SetPicker(Control(dx, id), value.ToDateTime()); }
void DLX_Time(CFlgDataExchange& dx, int id, const COleDateTime& value) { SetPicker(Control(dx, id), value); }

void DSX_Time(CFlgDataExchange& dx, int id, long& secondsOfDay) {
  auto d = GetPicker(Control(dx, id));
  if (d && d->IsValid()) secondsOfDay = d->GetHour() * 3600 + d->GetMinute() * 60 + d->GetSecond();
}
void DSX_Time(CFlgDataExchange& dx, int id, CTime& value) {
  auto d = GetPicker(Control(dx, id));
  if (d && d->IsValid()) value = CTime::FromDateTime(*d);
}
void DSX_Time(CFlgDataExchange& dx, int id, COleDateTime& value) {
  if (auto d = GetPicker(Control(dx, id))) value = *d;
}

COleDateTime DSX_DateAndTime(CFlgDataExchange& dx, int dateId, int timeId) {
  DateTime date;
  HWND dateCtrl = Control(dx, dateId);
  if (dateCtrl && IsPicker(dateCtrl)) {
    date = GetPicker(dateCtrl).value_or(DateTime::Null());
  } else {
    COleDateTime d;
    DSX_Text(dx, dateId, d);
    date = d;
  }
  if (!date.IsValid()) return date;

  int seconds = 0;
  HWND timeCtrl = Control(dx, timeId);
  if (timeCtrl && IsPicker(timeCtrl)) {
    auto t = GetPicker(timeCtrl);
    if (t && t->IsValid()) seconds = t->GetHour() * 3600 + t->GetMinute() * 60 + t->GetSecond();
  } else {
    const std::string text = exchange::ReadText(dx, timeId);
    if (!TrimBlanks(text).empty() && !ParseTimeOfDay(text, seconds)) {
      dx.AddError(U(timeId), msg::kTime);
      return DateTime::Invalid();
    }
  }
  return DateTime(date.GetYear(), date.GetMonth(), date.GetDay(), seconds / 3600, seconds / 60 % 60, seconds % 60);
}

// The library's own small controls ------------------------------------------------------------------------------------

void DLX_ColorPicker(CFlgDataExchange& dx, int id, int mode, COLORREF color) {
  if (CVelColorPicker* picker = CVelColorPicker::Attach(Control(dx, id))) picker->SetColor(mode, color);
}

void DSX_ColorPicker(CFlgDataExchange& dx, int id, int& mode, COLORREF& color) {
  if (CVelColorPicker* picker = CVelColorPicker::FromHandle(Control(dx, id))) {
    mode = picker->GetMode();
    color = picker->GetColor();
  }
}

void DSX_Analityka(CFlgDataExchange& dx, int id, long& accountId, std::wstring& text) {
  HWND h = Control(dx, id);
  CVelAnalitykaEdit* edit = CVelAnalitykaEdit::FromHandle(h);
  accountId = edit ? edit->GetAccountId() : 0;
  text.clear();
  if (h) VelGetWindowText(h, text);
}
