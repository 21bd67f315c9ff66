// The business fillers of the exchange family: the insurance-title combo (DLX_CB_Zus), the
// vehicle registration number (DLX_NrAuto) and the filter combos of the lists
// (DLX_Init...Filter). They read the running instance's database (CRtInstance) unless given a
// connection, log a failing query and never throw.
#pragma once

#include "db/connection.h"
#include "framework/data_exchange_win.h"
#include "framework/fillers_win.h"

// Fills the combo with the insurance-title codes ("0110 Umowa o pracę", item data the row's
// identifier) and selects the code: a text is a code as written ("0110"), a number the same code
// written with four digits (110 is "0110"). An empty code or 0 leaves no selection; a code not in
// the dictionary is shown in the combo's edit field, as DLX_CBString shows an unknown text.
VARION_API void DLX_CB_Zus(CFlgDataExchange& dx, int ctrlId, const char* code);
VARION_API void DLX_CB_Zus(CFlgDataExchange& dx, int ctrlId, long code);
VARION_API void DLX_CB_Zus(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field);
VARION_API void DLX_CB_Zus(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DLX_CB_Zus(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId, const char* code);

// Shows a vehicle's registration number in an edit: a text as the number itself (upper case,
// blanks at both ends dropped), a number as the identifier of a vehicle of the dictionary whose
// number is shown (an unknown vehicle or 0 shows nothing). A field holding a number is an
// identifier, any other field the number itself.
VARION_API void DLX_NrAuto(CFlgDataExchange& dx, int ctrlId, const char* number);
VARION_API void DLX_NrAuto(CFlgDataExchange& dx, int ctrlId, long vehicleId);
VARION_API void DLX_NrAuto(CFlgDataExchange& dx, int ctrlId, const ExchangeField& field);
VARION_API void DLX_NrAuto(CFlgDataExchange& dx, int ctrlId, RecordsetR rs, const char* field);
VARION_API void DLX_NrAuto(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId, long vehicleId);

// The filter combos: "(wszystkie)" (item data varion::fill::kAnyItem, selected) and then the
// dictionary's rows; the result is the number of items the combo holds, 0 when it could not be
// filled. The Rs form takes the lists' rows ("gr_Nazwa", "gr_Id") from an open recordset.
VARION_API int DLX_InitErpListFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitErpListFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitGrupyDokFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitGrupyDokFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitKasaFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitKasaFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitKategoriaFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitKategoriaFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitKodyCNFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitKodyCNFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitModelFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitModelFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitPanstwoFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitPanstwoFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitPdmRachBankListFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitPdmRachBankListFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitPkwiuFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitPkwiuFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitPracRachBankListFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitPracRachBankListFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitRachBankListFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitRachBankListFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitRejestrKsiegowyFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitRejestrKsiegowyFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitSchematImportuFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitSchematImportuFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitSlMagListFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitSlMagListFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitUslugaBankListFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitUslugaBankListFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitZleceniaFilter(CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitZleceniaFilter(const varion::db::Connection& c, CFlgDataExchange& dx, int ctrlId);
VARION_API int DLX_InitErpListFilterRs(CFlgDataExchange& dx, int ctrlId, varion::db::Recordset& rs);
