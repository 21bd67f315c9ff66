// The combo and list fillers: CB_Fill* fill a dialog's combo box, LB_Fill* a list box, with a
// fixed list or the rows of one dictionary, each item carrying its item data. The two forms share
// one body that differs only in the four control messages. A filler returns false when the
// control does not exist or its source fails (a failing query is logged and leaves the control
// as it was); it never throws. The DLX_Init...Filter functions fill a filter combo from the
// running instance's database and return the number of items it then holds (0 on failure).
#pragma once

#include <windows.h>

#include <span>
#include <string>
#include <vector>

#include "base/export.h"
#include "db/connection.h"
#include "framework/data_exchange.h"
#include "framework/exchange_field.h"
#include "framework/fill_items.h"

using CStringArray = std::vector<std::string>;

namespace varion::fill {

// The four messages that make a control's list: reset content, add string, set item data, set
// current selection.
struct ControlMessages {
  UINT reset, add, setData, setSel;
};
inline constexpr ControlMessages kComboMessages{CB_RESETCONTENT, CB_ADDSTRING, CB_SETITEMDATA, CB_SETCURSEL};
inline constexpr ControlMessages kListMessages{LB_RESETCONTENT, LB_ADDSTRING, LB_SETITEMDATA, LB_SETCURSEL};

// The shared body: empties the control when `reset` is set, then adds the items in order, each
// with its data; `select` is the position to select afterwards (-1 leaves the selection alone).
// False when `control` is not a window or the control refuses an item (out of memory).
VARION_API bool FillControl(HWND control, const ControlMessages& messages, const Items& items, bool reset,
                            int select = -1);

// A dictionary of framework/fill_dictionaries.cpp into a control, emptied first; the extra items
// the mask asks for come first, and then the first item is selected. False for an unknown name,
// a missing control or a failing query (logged; the control keeps what it had).
VARION_API bool FillDictionary(const db::Connection& c, CFlgDataExchange& dx, int ctrlId,
                               const ControlMessages& messages, const char* name, unsigned extras,
                               std::span<const long> numbers);
// Ready items into a control, emptied first.
VARION_API bool FillItems(CFlgDataExchange& dx, int ctrlId, const ControlMessages& messages, const Items& items);

}  // namespace varion::fill

// Generic fillers ---------------------------------------------------------------------------------

// The entries not excluded by item data, in array order. False for a missing control, a null
// array or a count below 1; an array whose every entry is excluded still returns true.
VARION_API bool CB_Fill(CFlgDataExchange& dx, int ctrlId, const LBEntry* entries, int count, bool reset = true,
                        const long* excluded = nullptr, int excludedCount = 0);
VARION_API bool LB_Fill(CFlgDataExchange& dx, int ctrlId, const LBEntry* entries, int count, bool reset = true,
                        const long* excluded = nullptr, int excludedCount = 0);
// Texts with their positions as item data.
VARION_API bool CB_Fill(CFlgDataExchange& dx, int ctrlId, const CStringArray& texts, bool reset = true);
VARION_API bool LB_Fill(CFlgDataExchange& dx, int ctrlId, const CStringArray& texts, bool reset = true);
// A string resource (the library's, else the program's), one item per line. A missing or empty
// resource fills nothing and returns false.
VARION_API bool CB_Fill(CFlgDataExchange& dx, int ctrlId, UINT resourceId, bool reset = true);
VARION_API bool LB_Fill(CFlgDataExchange& dx, int ctrlId, UINT resourceId, bool reset = true);
// Two texts, item data 0 and 1 (a yes/no or either/or choice).
VARION_API bool CB_Fill(CFlgDataExchange& dx, int ctrlId, const char* first, const char* second, bool reset = true);
VARION_API bool LB_Fill(CFlgDataExchange& dx, int ctrlId, const char* first, const char* second, bool reset = true);

// From the database: a table name or a whole query (varion::fill::SourceSql decides, by the
// seventh character), each row's text the text field (or the template over both text fields),
// its item data the identifier field.
VARION_API bool CB_Fill(CFlgDataExchange& dx, int ctrlId, const varion::db::Connection& connection,
                        const char* tableOrQuery, const char* textField, const char* idField, bool reset = true,
                        const char* tmpl = nullptr, const char* textField2 = nullptr);
VARION_API bool LB_Fill(CFlgDataExchange& dx, int ctrlId, const varion::db::Connection& connection,
                        const char* tableOrQuery, const char* textField, const char* idField, bool reset = true,
                        const char* tmpl = nullptr, const char* textField2 = nullptr);
// From a recordset opened on the statement as it stands (no table-name rule).
VARION_API bool CB_FillRS(const varion::db::Connection& connection, CFlgDataExchange& dx, int ctrlId, const char* sql,
                          const char* textField, const char* idField, bool reset = true);
VARION_API bool LB_FillRS(const varion::db::Connection& connection, CFlgDataExchange& dx, int ctrlId, const char* sql,
                          const char* textField, const char* idField, bool reset = true);
// From an open recordset, all of its rows from the first.
VARION_API bool CB_Fill(CFlgDataExchange& dx, int ctrlId, varion::db::Recordset& rs, const char* textField,
                        const char* idField, bool reset = true);
VARION_API bool LB_Fill(CFlgDataExchange& dx, int ctrlId, varion::db::Recordset& rs, const char* textField,
                        const char* idField, bool reset = true);
// The distinct values of one column, ordered by their text; the identifier expression gives
// the item data ("1 AS ID" when the values have none); a condition, when given, is joined with
// "WHERE".
VARION_API bool CB_FillDistinct(const varion::db::Connection& connection, CFlgDataExchange& dx, int ctrlId,
                                const char* from, const char* textExpr, const char* idExpr = "1 AS ID",
                                const char* condition = nullptr, bool reset = true);
VARION_API bool LB_FillDistinct(const varion::db::Connection& connection, CFlgDataExchange& dx, int ctrlId,
                                const char* from, const char* textExpr, const char* idExpr = "1 AS ID",
                                const char* condition = nullptr, bool reset = true);

// Named fillers (their dictionaries in framework/fill_dictionaries.cpp) --------------------------
// The flags put the extra items before the rows; their item data are varion::fill::kAnyItem
// ("(dowolny)", "(dowolna)"), kNoneItem ("(brak)", "(nie umieszczaj)") and kCurrentItem
// ("(zalogowany)", "(bieżący oddział)").

VARION_API bool CB_FillCrmBranza(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API bool CB_FillCrmPersonel(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId,
                                   bool withLoggedIn = true);
VARION_API bool CB_FillDivision(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId, bool withAny = true,
                                bool withCurrent = true);
VARION_API bool CB_FillDrukarkiFiskalne(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API bool CB_FillAtrybutyDnia(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId,
                                    bool withNone = true);
VARION_API bool CB_FillDokumentyDefiniowalneDlaTypu(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId,
                                                    long docType, long docSubtype);
VARION_API bool CB_FillDaneWystawiajacegoEmail(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId,
                                               bool withNotIncluded = true);
VARION_API bool CB_FillFlaga_Nazwy(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId, bool withAny = true,
                                   bool withNone = true);
VARION_API bool CB_FillMagazyn(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API bool LB_FillMagazyn(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API bool CB_FillPanstwo(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API bool LB_FillPanstwo(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API bool CB_FillPracownik(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API bool LB_FillPracownik(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);

// Fixed lists; item data are the positions from 0.
VARION_API bool CB_FillCzestotliwoscOdpisuAM(CFlgDataExchange& dx, int ctrlId);
// `day` goes into "%d. dzień miesiąca".
VARION_API bool CB_FillDataDomyslna(CFlgDataExchange& dx, int ctrlId, int day = 1);
VARION_API bool CB_FillFVDateType(CFlgDataExchange& dx, int ctrlId);
VARION_API bool CB_FillDokumentVatRodzaje(CFlgDataExchange& dx, int ctrlId);

// Days 1..31, weekdays from Monday as 1..7, months 1..12, each its number as item data.
VARION_API bool CB_Fill_DzienMiesiaca(CFlgDataExchange& dx, int ctrlId);
VARION_API bool CB_Fill_DzienTygodnia(CFlgDataExchange& dx, int ctrlId);
VARION_API bool CB_Fill_Miesiac(CFlgDataExchange& dx, int ctrlId);
VARION_API bool LB_Fill_DzienMiesiaca(CFlgDataExchange& dx, int ctrlId);
VARION_API bool LB_Fill_DzienTygodnia(CFlgDataExchange& dx, int ctrlId);
VARION_API bool LB_Fill_Miesiac(CFlgDataExchange& dx, int ctrlId);
