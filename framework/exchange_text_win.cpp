// The text exchange: integers, texts, amounts, dates and variants in edits and statics.
#include <windows.h>
#include <oleauto.h>

#include <cstring>

#include "base/text.h"
#include "base/variant_win.h"
#include "controls/locale_info.h"
#include "framework/data_exchange_win.h"
#include "framework/exchange_internal_win.h"
#include "framework/exchange_rules.h"

using namespace varion;
using varion::exchange::ReadText;
using varion::exchange::WriteText;

namespace varion::exchange {

std::string ReadText(const CFlgDataExchange& dx, int ctrlId, int max) {
  std::string text;
  if (HWND h = Control(dx, ctrlId)) {
    if (max >= 0)
      VelGetWindowText(h, text, max);
    else
      VelGetWindowText(h, text);
  }
  return text;
}

void WriteText(HWND control, std::string_view text) {
  if (!control) return;
  const std::wstring wide = text::Cp1250ToWide(text);
  // Setting a text repaints the control and notifies its parent; a control that already shows
  // the text is left alone (reading is far cheaper than writing, and nothing flickers).
  std::wstring current;
  VelGetWindowText(control, current);
  if (current != wide) SetWindowTextW(control, wide.c_str());
}

void WriteText(const CFlgDataExchange& dx, int ctrlId, std::string_view text) { WriteText(Control(dx, ctrlId), text); }

bool ParseCurrencyText(const std::string& text, Amount& value) {
  std::wstring w = text::Cp1250ToWide(text);
  CY cy{};
  if (FAILED(VarCyFromStr(w.data(), LOCALE_USER_DEFAULT, 0, &cy))) return false;
  value = FromCY(cy);
  return true;
}

bool ParseDateText(const std::string& text, DateTime& value) {
  std::wstring w = text::Cp1250ToWide(text);
  DATE d = 0;
  // 0x001D: the canonical year-month-day text of the date edits reads the same on every machine.
  if (FAILED(VarDateFromStr(w.data(), 0x001D, 0, &d))) return false;
  value = DateTime(d);
  return value.IsValid();
}

namespace {
std::string LocaleText(LCTYPE type, const char* fallback) {
  wchar_t buf[16];
  int n = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buf, static_cast<int>(std::size(buf)));
  return n > 1 ? text::WideToCp1250(std::wstring_view(buf, static_cast<size_t>(n - 1))) : fallback;
}
}  // namespace

std::string AmountText(const Amount& value) {
  return CLocaleInfo::GetTheLocaleInfo().CurrencyToDispText(value, AmountDisplayDecimals(value), nullptr, 0);
}

std::string UserDecimalSeparator() { return LocaleText(LOCALE_SDECIMAL, ","); }

std::wstring ClassName(HWND window) {
  wchar_t buf[257];
  int n = GetClassNameW(window, buf, static_cast<int>(std::size(buf)));
  return std::wstring(buf, n > 0 ? static_cast<size_t>(n) : 0);
}

}  // namespace varion::exchange

// VelGetWindowText ---------------------------------------------------------------------------------

void VelGetWindowText(HWND window, std::wstring& text) {
  text.clear();
  const int length = window ? GetWindowTextLengthW(window) : 0;
  if (length < 1) return;
  text.resize(static_cast<size_t>(length) + 1);
  GetWindowTextW(window, text.data(), length + 1);
  text.resize(wcslen(text.c_str()));
}

void VelGetWindowText(HWND window, std::wstring& text, int max) {
  VelGetWindowText(window, text);
  if (max >= 0 && text.size() > static_cast<size_t>(max)) text.resize(static_cast<size_t>(max));
}

void VelGetWindowText(HWND window, std::string& text) {
  std::wstring w;
  VelGetWindowText(window, w);
  text = text::WideToCp1250(w);
}

void VelGetWindowText(HWND window, std::string& text, int max) {
  std::wstring w;
  VelGetWindowText(window, w, max);
  text = text::WideToCp1250(w);
}

// Integers -------------------------------------------------------------------------------------------

namespace {

// Integers are read from at most 31 characters, as a 32-character buffer holds.
constexpr int kIntTextMax = 31;
// Amounts and dates from at most 1024.
constexpr int kValueTextMax = 1024;

template <typename T>
void LoadInt(CFlgDataExchange& dx, int ctrlId, IntKind kind, T value) {
  WriteText(dx, ctrlId, FormatExchangeInt(kind, static_cast<std::int64_t>(value)));
}

template <typename T>
void SaveInt(CFlgDataExchange& dx, int ctrlId, IntKind kind, T& value) {
  std::int64_t v = static_cast<std::int64_t>(value);
  const bool ok = ParseExchangeInt(ReadText(dx, ctrlId, kIntTextMax), kind, v);
  value = static_cast<T>(v);
  if (!ok) dx.AddError(static_cast<std::uint32_t>(ctrlId), IntKindMessage(kind));
}

Amount ReadAmount(CFlgDataExchange& dx, int ctrlId) {
  Amount value = Amount::FromRaw(0);
  if (!exchange::ParseCurrencyText(ReadText(dx, ctrlId, kValueTextMax), value)) {
    value = Amount::FromRaw(0);
    dx.AddError(static_cast<std::uint32_t>(ctrlId), msg::kAmount);
  }
  return value;
}

// Only an empty text gives null; anything else, blanks included, goes to the parser, and a
// refused text records the failure and gives an invalid date.
DateTime ReadDate(CFlgDataExchange& dx, int ctrlId) {
  const std::string text = ReadText(dx, ctrlId, kValueTextMax);
  if (text.empty()) return DateTime::Null();
  DateTime value;
  if (!exchange::ParseDateText(text, value)) {
    dx.AddError(static_cast<std::uint32_t>(ctrlId), msg::kDate);
    return DateTime::Invalid();
  }
  return value;
}

std::string DoubleText(double v) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.15g", v);
  std::string s = buf;
  if (auto p = s.find('.'); p != std::string::npos) s.replace(p, 1, exchange::UserDecimalSeparator());
  return s;
}

std::string VariantDisplayText(const Variant& v) {
  switch (v.GetType()) {
    case Variant::Type::Empty:
    case Variant::Type::Null:
    case Variant::Type::Binary:
      return {};
    case Variant::Type::Amount: {
      Amount a;
      v.ToAmount(a);
      return exchange::AmountText(a);
    }
    case Variant::Type::Date: {
      DateTime d;
      v.ToDate(d);
      return DateDisplayText(d);
    }
    case Variant::Type::Double: {
      double d = 0;
      v.ToDouble(d);
      return DoubleText(d);
    }
    case Variant::Type::Bool: {
      bool b = false;
      v.ToBool(b);
      return b ? "1" : "0";
    }
    default:
      return v.AsText();
  }
}

}  // namespace

void DLX_Text(CFlgDataExchange& dx, int id, unsigned char v) { LoadInt(dx, id, IntKind::UChar, v); }
void DLX_Text(CFlgDataExchange& dx, int id, short v) { LoadInt(dx, id, IntKind::Short, v); }
void DLX_Text(CFlgDataExchange& dx, int id, int v) { LoadInt(dx, id, IntKind::Int, v); }
void DLX_Text(CFlgDataExchange& dx, int id, unsigned int v) { LoadInt(dx, id, IntKind::UInt, v); }
void DLX_Text(CFlgDataExchange& dx, int id, long v) { LoadInt(dx, id, IntKind::Long, v); }
void DLX_Text(CFlgDataExchange& dx, int id, unsigned long v) { LoadInt(dx, id, IntKind::ULong, v); }

void DSX_Text(CFlgDataExchange& dx, int id, unsigned char& v) { SaveInt(dx, id, IntKind::UChar, v); }
void DSX_Text(CFlgDataExchange& dx, int id, short& v) { SaveInt(dx, id, IntKind::Short, v); }
void DSX_Text(CFlgDataExchange& dx, int id, int& v) { SaveInt(dx, id, IntKind::Int, v); }
void DSX_Text(CFlgDataExchange& dx, int id, unsigned int& v) { SaveInt(dx, id, IntKind::UInt, v); }
void DSX_Text(CFlgDataExchange& dx, int id, long& v) { SaveInt(dx, id, IntKind::Long, v); }
void DSX_Text(CFlgDataExchange& dx, int id, unsigned long& v) { SaveInt(dx, id, IntKind::ULong, v); }

// Texts ------------------------------------------------------------------------------------------------

void DLX_Text(CFlgDataExchange& dx, int id, const char* text) { WriteText(dx, id, text ? text : ""); }

void DLX_Text(CFlgDataExchange& dx, int id, const char* text, int length) {
  if (!text || length <= 0) return WriteText(dx, id, "");
  WriteText(dx, id, std::string_view(text, strnlen(text, static_cast<size_t>(length))));
}

void DLX_Text(CFlgDataExchange& dx, int id, const std::string& text) { WriteText(dx, id, text); }

void DLX_Text(CFlgDataExchange& dx, int id, const wchar_t* text) {
  if (HWND h = exchange::Control(dx, id)) SetWindowTextW(h, text ? text : L"");
}

void DLX_Text(CFlgDataExchange& dx, int id, const std::wstring& text) { DLX_Text(dx, id, text.c_str()); }

void DSX_Text(CFlgDataExchange& dx, int id, std::string& text) { text = ReadText(dx, id); }

void DSX_Text(CFlgDataExchange& dx, int id, char* buffer, int size) {
  if (!buffer || size <= 0) return;
  const std::string text = ReadText(dx, id, size - 1);
  std::memcpy(buffer, text.c_str(), text.size() + 1);
}

void DSX_Text(CFlgDataExchange& dx, int id, std::wstring& text) {
  text.clear();
  if (HWND h = exchange::Control(dx, id)) VelGetWindowText(h, text);
}

// Amounts and dates ----------------------------------------------------------------------------------

void DLX_Text(CFlgDataExchange& dx, int id, const CY& value) { DLX_Text(dx, id, FromCY(value)); }

void DLX_Text(CFlgDataExchange& dx, int id, const COleCurrency& value) {
  WriteText(dx, id, exchange::AmountText(value));
}

void DLX_Text(CFlgDataExchange& dx, int id, const COleDateTime& value) { WriteText(dx, id, DateDisplayText(value)); }

void DLX_Text(CFlgDataExchange& dx, int id, double value) {
  WriteText(dx, id, value == 0.0 ? std::string() : DateDisplayText(DateTime(value)));
}

void DLX_Text(CFlgDataExchange& dx, int id, const _variant_t& value) { WriteText(dx, id, VariantDisplayText(value)); }

void DLX_TextDateDDMMYYYY(CFlgDataExchange& dx, int id, const _variant_t& value) {
  DateTime d;
  WriteText(dx, id, !value.IsEmptyOrNull() && Succeeded(value.ToDate(d)) ? DateTextDDMMYYYY(d) : std::string());
}

void DLX_TextDateDDMMYYYY(CFlgDataExchange& dx, int id, double value) {
  WriteText(dx, id, value == 0.0 ? std::string() : DateTextDDMMYYYY(DateTime(value)));
}

void DSX_Text(CFlgDataExchange& dx, int id, CY& value) { value = ToCY(ReadAmount(dx, id)); }

void DSX_Text(CFlgDataExchange& dx, int id, COleCurrency& value) { value = ReadAmount(dx, id); }

void DSX_Text(CFlgDataExchange& dx, int id, COleDateTime& value) { value = ReadDate(dx, id); }

void DSX_Text(CFlgDataExchange& dx, int id, double& value) {
  const DateTime d = ReadDate(dx, id);
  value = d.IsValid() ? d.Value() : 0.0;
}

void DSX_Text(CFlgDataExchange& dx, int id, _variant_t& value, VARTYPE type) {
  const std::uint32_t ctrl = static_cast<std::uint32_t>(id);
  const std::string text = ReadText(dx, id, kValueTextMax);
  if (type == VT_BSTR) {
    value = Variant(text);
    return;
  }
  // A date is null only for an empty text; blanks are a date the parser refuses.
  if (type == VT_DATE ? text.empty() : TrimBlanks(text).empty()) {
    value = Variant::MakeNull();
    return;
  }
  auto asInt = [&](IntKind kind) {
    std::int64_t v = 0;
    if (!ParseExchangeInt(text, kind, v)) return dx.AddError(ctrl, IntKindMessage(kind));
    value = IntKindMax(kind) > INT32_MAX ? Variant(v) : Variant(static_cast<std::int32_t>(v));
  };
  switch (type) {
    case VT_I2:
      return asInt(IntKind::Short);
    case VT_I4:
    case VT_INT:
      return asInt(IntKind::Int);
    case VT_UI1:
      return asInt(IntKind::UChar);
    case VT_UI4:
    case VT_UINT:
      return asInt(IntKind::ULong);
    case VT_I8: {
      std::wstring w = text::Cp1250ToWide(text);
      LONG64 v = 0;
      if (FAILED(VarI8FromStr(w.data(), LOCALE_USER_DEFAULT, 0, &v))) return dx.AddError(ctrl, msg::kInteger);
      value = Variant(static_cast<std::int64_t>(v));
      return;
    }
    case VT_R8: {
      std::wstring w = text::Cp1250ToWide(text);
      double v = 0;
      if (FAILED(VarR8FromStr(w.data(), LOCALE_USER_DEFAULT, 0, &v))) return dx.AddError(ctrl, msg::kNumber);
      value = Variant(v);
      return;
    }
    case VT_CY: {
      Amount a;
      if (!exchange::ParseCurrencyText(text, a)) return dx.AddError(ctrl, msg::kAmount);
      value = Variant(a);
      return;
    }
    case VT_DATE: {
      DateTime d;
      if (!exchange::ParseDateText(text, d)) return dx.AddError(ctrl, msg::kDate);
      value = Variant(d);
      return;
    }
    case VT_BOOL: {
      std::int64_t v = 0;
      if (!ParseExchangeInt(text, IntKind::Int, v)) return dx.AddError(ctrl, msg::kInteger);
      value = Variant(v != 0);
      return;
    }
    default:
      value = Variant(text);
  }
}
