// The exchange functions: DLX_* put a value into a control, DSX_* read a control into a value,
// DSV_* and DV_* check, VelFail* record the standard failures. Controls are named by their
// identifier in the context's dialog window; a missing control reads as an empty text and takes
// nothing. Failures become error records in the context and never stop the exchange (only
// CheckIfEmptyAddErrorAndThrow throws). Texts are code page 1250; `_bstr_t` forms are wide
// strings.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "base/amount.h"
#include "base/date_time.h"
#include "base/export.h"
#include "base/time_value.h"
#include "base/variant.h"
#include "framework/data_exchange.h"
#include "framework/exchange_field.h"

using CDWordArray = std::vector<std::uint32_t>;

// Window text ------------------------------------------------------------------------------------

// Empty for a text length below 1; otherwise length+1 characters read and cut at the terminator.
VARION_API void VelGetWindowText(HWND window, std::string& text);
// The same, then only the first `max` characters.
VARION_API void VelGetWindowText(HWND window, std::string& text, int max);
VARION_API void VelGetWindowText(HWND window, std::wstring& text);
VARION_API void VelGetWindowText(HWND window, std::wstring& text, int max);

// Sum of the text lengths of the listed controls; an empty set gives 0.
VARION_API long GetStringFieldsTotalLength(CFlgDataExchange& dx, const std::set<int>& ctrlIds);
// Records "Pole nie może być puste." and throws varion::ComError E_FAIL when the text is empty.
VARION_API void CheckIfEmptyAddErrorAndThrow(CFlgDataExchange& dx, int ctrlId);

// Text of edits and statics -----------------------------------------------------------------------

VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, unsigned char value);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, short value);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, int value);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, unsigned int value);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, long value);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, unsigned long value);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, const char* text);
// A counted text: the first `length` characters (up to a terminator).
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, const char* text, int length);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, const std::string& text);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, const wchar_t* text);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, const std::wstring& text);
// Amounts and dates in their display forms: the amount as the currency edits show it, with two
// fraction digits or as many as it needs; the date as "YYYY-MM-DD" (with " HH:MM:SS" when it has
// a time of day).
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, const CY& value);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, const COleCurrency& value);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, const COleDateTime& value);
// A double is a date serial here, the counterpart of DSX_Text(double&); 0.0 is no date.
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, double value);
// Null and empty show as an empty text; amounts and dates in their display forms.
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, const _variant_t& value);

VARION_API void DLX_TextDateDDMMYYYY(CFlgDataExchange& dx, int ctrlId, const _variant_t& value);
VARION_API void DLX_TextDateDDMMYYYY(CFlgDataExchange& dx, int ctrlId, double value);

// Integers: at most 31 characters read; the whole text must be one number of the type.
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, unsigned char& value);
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, short& value);
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, int& value);
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, unsigned int& value);
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, long& value);
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, unsigned long& value);
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, std::string& text);
// Into a buffer of `size` bytes, terminator included.
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, char* buffer, int size);
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, std::wstring& text);
// Amounts: the system's currency parser with the user's default locale; zero on failure.
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, CY& value);
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, COleCurrency& value);
// Dates: an empty text is null; otherwise the system's date parser with the fixed locale 0x001D,
// whose year-month-day order matches the controls' canonical text on every machine.
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, COleDateTime& value);
// Deliberately the date path: the date serial, or 0.0 for an empty or refused text.
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, double& value);
// Into a variant of the given type (VT_BSTR, VT_I2, VT_I4, VT_UI1, VT_UI4, VT_I8, VT_R8, VT_CY,
// VT_DATE, VT_BOOL); an empty text gives null except for VT_BSTR.
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, _variant_t& value, VARTYPE type);

// Date-time pickers ------------------------------------------------------------------------------

// `long` is a time of day in seconds after midnight.
VARION_API void DLX_Time(CFlgDataExchange& dx, int ctrlId, long secondsOfDay);
VARION_API void DLX_Time(CFlgDataExchange& dx, int ctrlId, const CTime& value);
// A null date-time clears a picker that has a check box (DTS_SHOWNONE).
VARION_API void DLX_Time(CFlgDataExchange& dx, int ctrlId, const COleDateTime& value);
VARION_API void DSX_Time(CFlgDataExchange& dx, int ctrlId, long& secondsOfDay);
VARION_API void DSX_Time(CFlgDataExchange& dx, int ctrlId, CTime& value);
VARION_API void DSX_Time(CFlgDataExchange& dx, int ctrlId, COleDateTime& value);

// The date read from the first control (an edit, through the date path, or a picker) with the
// time of day read from the second (a picker, or an edit holding "HH:MM[:SS]").
VARION_API COleDateTime DSX_DateAndTime(CFlgDataExchange& dx, int dateCtrlId, int timeCtrlId);

// Check boxes ------------------------------------------------------------------------------------

// 0 unchecked, 1 checked, 2 indeterminate; any other value unchecks. A null variant makes a
// three-state box indeterminate.
VARION_API void DLX_Check(CFlgDataExchange& dx, int ctrlId, bool value);
VARION_API void DLX_Check(CFlgDataExchange& dx, int ctrlId, unsigned char value);
VARION_API void DLX_Check(CFlgDataExchange& dx, int ctrlId, short value);
VARION_API void DLX_Check(CFlgDataExchange& dx, int ctrlId, int value);
VARION_API void DLX_Check(CFlgDataExchange& dx, int ctrlId, long value);
VARION_API void DLX_Check(CFlgDataExchange& dx, int ctrlId, const _variant_t& value);
VARION_API void DSX_Check(CFlgDataExchange& dx, int ctrlId, bool& value);
VARION_API void DSX_Check(CFlgDataExchange& dx, int ctrlId, unsigned char& value);
VARION_API void DSX_Check(CFlgDataExchange& dx, int ctrlId, short& value);
VARION_API void DSX_Check(CFlgDataExchange& dx, int ctrlId, int& value);
VARION_API void DSX_Check(CFlgDataExchange& dx, int ctrlId, long& value);
// The variant overloads save into a variant of the given type (VT_I4 by default; VT_I2, VT_UI1
// and the other integer types hold the same number, VT_I8, VT_R8, VT_BOOL, VT_CY and VT_BSTR
// convert it), as DSX_Text does.
VARION_API void DSX_Check(CFlgDataExchange& dx, int ctrlId, _variant_t& value, VARTYPE type = VT_I4);

// Radio groups -----------------------------------------------------------------------------------

// The group runs from the named control through the following siblings up to the next window
// with WS_GROUP; its radio buttons count from 0. Saving with none chosen records
// "Proszę wybrać przycisk." and leaves the value.
VARION_API void DLX_Radio(CFlgDataExchange& dx, int ctrlId, unsigned char value);
VARION_API void DLX_Radio(CFlgDataExchange& dx, int ctrlId, int value);
VARION_API void DLX_Radio(CFlgDataExchange& dx, int ctrlId, long value);
VARION_API void DLX_Radio(CFlgDataExchange& dx, int ctrlId, const _variant_t& value);
VARION_API void DSX_Radio(CFlgDataExchange& dx, int ctrlId, unsigned char& value);
VARION_API void DSX_Radio(CFlgDataExchange& dx, int ctrlId, int& value);
VARION_API void DSX_Radio(CFlgDataExchange& dx, int ctrlId, long& value);
VARION_API void DSX_Radio(CFlgDataExchange& dx, int ctrlId, _variant_t& value, VARTYPE type = VT_I4);
// Two buttons for a yes/no value: the first stands for true, the second for false.
VARION_API void DLX_Radio(CFlgDataExchange& dx, int trueCtrlId, int falseCtrlId, bool value);
VARION_API void DSX_Radio(CFlgDataExchange& dx, int trueCtrlId, int falseCtrlId, bool& value);

// Combo boxes ------------------------------------------------------------------------------------

// By item data; no item with the identifier leaves no selection. Saving without a selection
// leaves a long as it was and makes a variant null.
VARION_API void DLX_CBIdent(CFlgDataExchange& dx, int ctrlId, long ident);
VARION_API void DLX_CBIdent(CFlgDataExchange& dx, int ctrlId, const _variant_t& ident);
VARION_API void DSX_CBIdent(CFlgDataExchange& dx, int ctrlId, long& ident);
VARION_API void DSX_CBIdent(CFlgDataExchange& dx, int ctrlId, _variant_t& ident, VARTYPE type = VT_I4);
VARION_API void DLX_CBIndex(CFlgDataExchange& dx, int ctrlId, int index);
VARION_API void DSX_CBIndex(CFlgDataExchange& dx, int ctrlId, int& index);
// The first item that begins with the text (the whole list is searched); without one, no
// selection and the text in the combo's edit field.
VARION_API void DLX_CBString(CFlgDataExchange& dx, int ctrlId, const std::string& text);
VARION_API void DSX_CBString(CFlgDataExchange& dx, int ctrlId, std::string& text);
VARION_API void DLX_CBStringExact(CFlgDataExchange& dx, int ctrlId, const std::string& text);
VARION_API void DSX_CBStringExact(CFlgDataExchange& dx, int ctrlId, std::string& text);
// The selected item's text, empty without a selection.
VARION_API void DSX_CBStringSelected(CFlgDataExchange& dx, int ctrlId, std::string& text);

// List boxes -------------------------------------------------------------------------------------

VARION_API void DLX_LBIdent(CFlgDataExchange& dx, int ctrlId, long ident);
VARION_API void DLX_LBIdent(CFlgDataExchange& dx, int ctrlId, const _variant_t& ident);
VARION_API void DSX_LBIdent(CFlgDataExchange& dx, int ctrlId, long& ident);
VARION_API void DSX_LBIdent(CFlgDataExchange& dx, int ctrlId, _variant_t& ident, VARTYPE type = VT_I4);
VARION_API void DLX_LBIndex(CFlgDataExchange& dx, int ctrlId, int index);
VARION_API void DSX_LBIndex(CFlgDataExchange& dx, int ctrlId, int& index);
VARION_API void DLX_LBString(CFlgDataExchange& dx, int ctrlId, const std::string& text);
VARION_API void DSX_LBString(CFlgDataExchange& dx, int ctrlId, std::string& text);
VARION_API void DLX_LBStringExact(CFlgDataExchange& dx, int ctrlId, const std::string& text);
VARION_API void DSX_LBStringExact(CFlgDataExchange& dx, int ctrlId, std::string& text);

// Check list boxes: a list view with check boxes whose items carry their identifiers in their
// item data. The identifiers or the positions of all checked items, in list order.
VARION_API void DSX_CLBIdent(CFlgDataExchange& dx, int ctrlId, CDWordArray& idents);
VARION_API void DSX_CLBIndex(CFlgDataExchange& dx, int ctrlId, CDWordArray& indexes);

// Scroll bars and sliders ------------------------------------------------------------------------

VARION_API void DLX_Scroll(CFlgDataExchange& dx, int ctrlId, int position);
VARION_API void DSX_Scroll(CFlgDataExchange& dx, int ctrlId, int& position);
VARION_API void DLX_Slider(CFlgDataExchange& dx, int ctrlId, int position);
VARION_API void DSX_Slider(CFlgDataExchange& dx, int ctrlId, int& position);

// The library's own small controls ---------------------------------------------------------------

// Attaches the picker object to a bare "vel_colorpicker" window when it has none yet.
VARION_API void DLX_ColorPicker(CFlgDataExchange& dx, int ctrlId, int mode, COLORREF color);
VARION_API void DSX_ColorPicker(CFlgDataExchange& dx, int ctrlId, int& mode, COLORREF& color);
// The account identifier (0 when none is chosen) and the text the control shows.
VARION_API void DSX_Analityka(CFlgDataExchange& dx, int ctrlId, long& accountId, std::wstring& text);

// Checks -----------------------------------------------------------------------------------------

VARION_API void VelFailMaxChars(CFlgDataExchange& dx, long max, int ctrlId);
VARION_API void VelFailRadio(CFlgDataExchange& dx, int ctrlId);

// 1 when the text has at most `max` bytes; else records the failure and gives 0.
VARION_API int DSV_MaxChars(CFlgDataExchange& dx, int ctrlId, const std::string& text, long max);
VARION_API int DSV_MaxChars(CFlgDataExchange& dx, int ctrlId, const char* text, long max);
VARION_API int DSV_MaxChars(CFlgDataExchange& dx, int ctrlId, long max);

// Nothing but blanks counts as empty. The message defaults to "Proszę wprowadzić wartość.".
VARION_API void DV_Required(CFlgDataExchange& dx, int ctrlId, const char* message = nullptr);
// No selection fails. The message defaults to "Proszę wybrać element.".
VARION_API void DV_CBRequired(CFlgDataExchange& dx, int ctrlId, const char* message = nullptr);

// Shorter than `min` fails. The resource form falls back to "Proszę wprowadzić przynajmniej %ld
// znaki(ów)." when the resource text is empty; a null message does the same.
VARION_API void DV_MinChars(CFlgDataExchange& dx, int ctrlId, long min, UINT messageId);
VARION_API void DV_MinChars(CFlgDataExchange& dx, int ctrlId, long min, const char* message);
VARION_API void DV_MinChars(CFlgDataExchange& dx, int ctrlId, const std::string& text, long min,
                            const char* message = nullptr);

VARION_API void DV_MinLong(CFlgDataExchange& dx, int ctrlId, long value, long min, const char* message = nullptr);

// Both bounds included.
VARION_API void DV_MinMaxByte(CFlgDataExchange& dx, int ctrlId, unsigned char value, unsigned char min,
                              unsigned char max);
VARION_API void DV_MinMaxShort(CFlgDataExchange& dx, int ctrlId, short value, short min, short max);
VARION_API void DV_MinMaxInt(CFlgDataExchange& dx, int ctrlId, int value, int min, int max);
VARION_API void DV_MinMaxUInt(CFlgDataExchange& dx, int ctrlId, unsigned int value, unsigned int min, unsigned int max);
VARION_API void DV_MinMaxDWord(CFlgDataExchange& dx, int ctrlId, unsigned long value, unsigned long min,
                               unsigned long max);
VARION_API void DV_MinMaxLong(CFlgDataExchange& dx, int ctrlId, long value, long min, long max);
VARION_API void DV_MinMaxSlider(CFlgDataExchange& dx, int ctrlId, int value, int min, int max);

// The text must be an e-mail address ("Nieprawidłowy adres e-mail") or a tax number with a
// correct check digit ("Nieprawidłowy NIP"). An empty field passes: presence is DV_Required's.
VARION_API void DV_PoprawnyEmail(CFlgDataExchange& dx, int ctrlId);
VARION_API void DV_PoprawnyNIP(CFlgDataExchange& dx, int ctrlId);

// Recordset fields ---------------------------------------------------------------------------------
// Loading takes a field of a read-only recordset's current row (or of an updatable recordset's
// new row); saving writes into the new row of an updatable recordset. The field's value goes the
// way a variant goes; a control's text is read as the field's type. A save that records an error
// leaves the field as it was. A field that does not exist raises ComError kPointer.

using varion::ExchangeField;
using RecordsetR = const varion::db::Recordset&;
using RecordsetW = varion::db::UpdatableRecordset&;

VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field);
VARION_API void DLX_Text(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, ExchangeField& field);
VARION_API void DSX_Text(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);

VARION_API void DLX_Time(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_Time(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);

VARION_API void DLX_Check(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field);
VARION_API void DLX_Check(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_Check(CFlgDataExchange& dx, int ctrlId, ExchangeField& field);
VARION_API void DSX_Check(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);

VARION_API void DLX_Radio(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_Radio(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);

VARION_API void DLX_CBIdent(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field);
VARION_API void DLX_CBIdent(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_CBIdent(CFlgDataExchange& dx, int ctrlId, ExchangeField& field);
VARION_API void DSX_CBIdent(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);
VARION_API void DLX_CBIndex(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field);
VARION_API void DLX_CBIndex(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_CBIndex(CFlgDataExchange& dx, int ctrlId, ExchangeField& field);
VARION_API void DSX_CBIndex(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);
VARION_API void DLX_CBString(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field);
VARION_API void DLX_CBString(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_CBString(CFlgDataExchange& dx, int ctrlId, ExchangeField& field);
VARION_API void DSX_CBString(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);
VARION_API void DLX_CBStringExact(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_CBStringExact(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);
VARION_API void DSX_CBStringSelected(CFlgDataExchange& dx, int ctrlId, ExchangeField& field);

VARION_API void DLX_LBIdent(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field);
VARION_API void DLX_LBIdent(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_LBIdent(CFlgDataExchange& dx, int ctrlId, ExchangeField& field);
VARION_API void DSX_LBIdent(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);
VARION_API void DLX_LBIndex(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field);
VARION_API void DLX_LBIndex(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_LBIndex(CFlgDataExchange& dx, int ctrlId, ExchangeField& field);
VARION_API void DSX_LBIndex(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);
VARION_API void DLX_LBString(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field);
VARION_API void DLX_LBString(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_LBString(CFlgDataExchange& dx, int ctrlId, ExchangeField& field);
VARION_API void DSX_LBString(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);
VARION_API void DLX_LBStringExact(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_LBStringExact(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);

VARION_API void DLX_Scroll(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_Scroll(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);
VARION_API void DLX_Slider(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DSX_Slider(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* field);

// The account identifier into one field (null without an account) and its text into another.
VARION_API void DSX_Analityka(CFlgDataExchange& dx, int ctrlId, RecordsetW rs, const char* idField,
                              const char* textField);

// The field's value as text.
VARION_API int DSV_MaxChars(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field, long max);
VARION_API void DV_MinChars(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field, long min,
                            const char* message = nullptr);
