#include "db/schema/schema.h"

#include "db/recordset.h"

namespace varion::db::schema {
namespace {

using K = ColumnKind;

constexpr ColumnDef kDialogConfig[] = {
    {"vwcg_Id", K::Id},
    {"vwcg_Section", K::Text, 255, true},
    {"vwcg_User", K::Int, 0, true},
    {"vwcg_Service", K::Int, 0, true},
    {"vwcg_Data", K::Blob},
    {"vwcg_FiltersData", K::Blob},
};
constexpr IndexDef kDialogConfigIdx[] = {{"IX_vwcg_Klucz", "vwcg_Section, vwcg_User, vwcg_Service", true}};

constexpr ColumnDef kLog[] = {
    {"log_Id", K::Id},
    {"log_Obszar", K::Text, 255},
    {"log_Data", K::DateTime},
    {"log_Stanowisko", K::Text, 255},
    {"log_UzytkownikId", K::Int},
    {"log_UzytkownikIdentyfikator", K::Text, 255},
    {"log_ObiektTyp", K::Int},
    {"log_ObiektTypEx", K::Int},
    {"log_ObiektId", K::Int},
    {"log_ProcesId", K::Int},
    {"log_WatekId", K::Int},
    {"log_Rodzaj", K::Int},
    {"log_Informacje", K::LongText},
};

// The first row by identifier switches database logging: "logp_Wlaczone" not 0 turns it on.
constexpr ColumnDef kLogParams[] = {
    {"logp_Id", K::Id},
    {"logp_Wlaczone", K::Int, 0, true},
};

constexpr ColumnDef kWarnings[] = {
    {"ost_Id", K::Id},
    {"ost_NumerProgramowy", K::Int, 0, true},
    {"ost_IdUzytkownika", K::Int, 0, true},
    {"ost_NiePokazujWiecejFlagi", K::Int, 0, true},
    {"ost_PokazujRazDlaWszystkich", K::Int, 0, true},
};
constexpr IndexDef kWarningsIdx[] = {{"IX_ost_Klucz", "ost_NumerProgramowy, ost_IdUzytkownika", true}};

constexpr ColumnDef kGridConfig[] = {
    {"cge_Id", K::Id},
    {"cge_Section", K::Text, 255, true},
    {"cge_User", K::Int, 0, true},
    {"cge_Service", K::Int, 0, true},
    {"cge_Version", K::Int},
    {"cge_BinListInfo", K::Blob},
    {"cge_BinColumns", K::Blob},
    {"cge_BinTables", K::Blob},
    {"cge_BinVisibility", K::Blob},
    {"cge_Sql", K::LongText},
    {"cge_LastUpdateVersion", K::Text, 50},
};
constexpr IndexDef kGridConfigIdx[] = {{"IX_cge_Klucz", "cge_Section, cge_User, cge_Service", true}};

constexpr ColumnDef kGrid[] = {
    {"gr_Id", K::Id},
    {"gr_Section", K::Text, 255, true},
    {"gr_IdModulu", K::Int, 0, true},
    {"gr_TypEx", K::Int},
    {"gr_Nazwa", K::Text, 255},
};

constexpr ColumnDef kCustomGrid[] = {
    {"grg_Id", K::Id},
    {"grg_IdGrida", K::Int, 0, true},
    {"grg_Sql", K::LongText},
    {"grg_BinListInfo", K::Blob},
    {"grg_BinColumns", K::Blob},
    {"grg_BinTables", K::Blob},
    {"grg_BinVisibility", K::Blob},
    {"grg_SqlWhere", K::LongText},
    {"grg_KolumnyWlasneWidoczne", K::Int},
};

// Conditional row formats of the lists: per grid section and list, for every user (0) or one.
constexpr ColumnDef kGridFormats[] = {
    {"grf_Id", K::Id},
    {"grf_Section", K::Text, 255, true},
    {"grf_IdListy", K::Int, 0, true},
    {"grf_IdUzytkownika", K::Int, 0, true},
    {"grf_Nazwa", K::Text, 255},
    {"grf_Warunek", K::LongText},
    {"grf_Tabele", K::LongText},
    {"grf_Kolumna", K::Text, 255},
    {"grf_KolorTekstu", K::Int},
    {"grf_KolorTla", K::Int},
    {"grf_Pogrubienie", K::Int},
    {"grf_Kursywa", K::Int},
    {"grf_Przekreslenie", K::Int},
    {"grf_Aktywny", K::Int, 0, true},
    {"grf_Kolejnosc", K::Int},
};
constexpr IndexDef kGridFormatsIdx[] = {{"IX_grf_Lista", "grf_Section, grf_IdListy", false}};

constexpr ColumnDef kUsers[] = {
    {"uz_Id", K::Id},
    {"uz_Identyfikator", K::Text, 50},
    {"uz_Imie", K::Text, 50},
    {"uz_Nazwisko", K::Text, 100},
};

constexpr ColumnDef kBranches[] = {{"so_Id", K::Id}, {"so_Symbol", K::Text, 20}, {"so_Nazwa", K::Text, 100}};
constexpr ColumnDef kWarehouses[] = {{"mag_Id", K::Id}, {"mag_Symbol", K::Text, 20}, {"mag_Nazwa", K::Text, 100}};

constexpr ColumnDef kContractors[] = {
    {"kh_Id", K::Id},
    {"kh_Symbol", K::Text, 20},
    {"kh_Nazwa", K::Text, 255},
    {"kh_Nip", K::Text, 20},
    {"kh_OdbDet", K::Int, 0, true, "0"},  // 1 for a detail recipient, a contractor's sub-account
};

constexpr ColumnDef kAddresses[] = {
    {"adr_Id", K::Id},
    {"adr_IdObiektu", K::Int},
    {"adr_TypAdresu", K::Int},
    {"adr_Nazwa", K::Text, 255},
    {"adr_NazwaPelna", K::Text, 255},
    {"adr_Adres", K::Text, 255},
    {"adr_Miejscowosc", K::Text, 100},
    {"adr_Kod", K::Text, 10},
    {"adr_IdPanstwo", K::Int},
};

constexpr ColumnDef kCountries[] = {{"pa_Id", K::Id}, {"pa_Nazwa", K::Text, 100}, {"pa_KodPanstwaISO", K::Text, 2}};

constexpr ColumnDef kEmployees[] = {
    {"pr_Id", K::Id},
    {"pr_Imie", K::Text, 50},
    {"pr_Nazwisko", K::Text, 100},
    {"pr_Pesel", K::Text, 11},
};

constexpr ColumnDef kEntities[] = {{"pd_Id", K::Id}, {"pd_Nazwa", K::Text, 255}, {"pd_Email", K::Text, 255}};
constexpr ColumnDef kGroups[] = {{"ctg_Id", K::Id}, {"ctg_Nazwa", K::Text, 100}, {"ctg_Sql", K::LongText}};
constexpr ColumnDef kClassifiers[] = {{"ksk_Id", K::Id}, {"ksk_Nazwa", K::Text, 100}};

constexpr ColumnDef kDayAttributes[] = {
    {"agd_Id", K::Id},
    {"agd_Nazwa", K::Text, 100},
    {"agd_Wspolczynnik", K::Amount},
};

constexpr ColumnDef kDefinableDocuments[] = {
    {"dd_Id", K::Id},
    {"dd_DokTyp", K::Int},
    {"dd_DokPodtyp", K::Int},
    {"dd_Nazwa", K::Text, 100},
};

constexpr ColumnDef kFiscalYears[] = {
    {"robr_Id", K::Id},
    {"robr_Symbol", K::Text, 20},
    {"robr_DataOd", K::DateTime},
    {"robr_DataDo", K::DateTime},
    {"robr_Zamkniety", K::Int, 0, true},
};

constexpr ColumnDef kAccountRegisters[] = {{"kw_Id", K::Id}, {"kw_Nazwa", K::Text, 100}, {"kw_Filtr1", K::Int}};

constexpr ColumnDef kChartOfAccounts[] = {
    {"ko_Id", K::Id},
    {"ko_Numer", K::Text, 50},
    {"ko_Nazwa", K::Text, 255},
    {"ko_IdKartoteki", K::Int},
    {"ko_IdRokuObrotowego", K::Int},
};

// Dictionaries of the named fillers and the filter combos.
constexpr ColumnDef kTrades[] = {{"bra_Id", K::Id}, {"bra_Nazwa", K::Text, 100}};
constexpr ColumnDef kFiscalPrinters[] = {{"uko_id", K::Id}, {"uko_Nazwa", K::Text, 100}, {"uko_Komputer", K::Text, 100}};
constexpr ColumnDef kFlags[] = {{"flg_Id", K::Id}, {"flg_Text", K::Text, 100}};
// Insurance-title codes: four digits, leading zeros kept ("0110").
constexpr ColumnDef kZusCodes[] = {{"kz_Id", K::Id}, {"kz_Kod", K::Text, 4}, {"kz_Nazwa", K::Text, 255}};
constexpr ColumnDef kVehicles[] = {{"sam_Id", K::Id}, {"sam_NrRejestracyjny", K::Text, 20}, {"sam_Opis", K::Text, 100}};
constexpr ColumnDef kDocGroups[] = {{"gdk_Id", K::Id}, {"gdk_Nazwa", K::Text, 100}};
constexpr ColumnDef kCashDesks[] = {{"kas_Id", K::Id}, {"kas_Symbol", K::Text, 20}, {"kas_Nazwa", K::Text, 100}};
constexpr ColumnDef kCategories[] = {{"kat_Id", K::Id}, {"kat_Nazwa", K::Text, 100}};
constexpr ColumnDef kCnCodes[] = {{"cn_Id", K::Id}, {"cn_Kod", K::Text, 10}, {"cn_Opis", K::Text, 255}};
constexpr ColumnDef kModels[] = {{"mod_Id", K::Id}, {"mod_Nazwa", K::Text, 100}};
// Bank accounts of every owner: rb_TypObiektu 1 the entity itself, 2 an employee, 3 a contractor.
constexpr ColumnDef kBankAccounts[] = {{"rb_Id", K::Id},           {"rb_Nazwa", K::Text, 100}, {"rb_Numer", K::Text, 40},
                                       {"rb_TypObiektu", K::Int, 0, true}, {"rb_IdObiektu", K::Int}};
constexpr ColumnDef kPkwiu[] = {{"pkw_Id", K::Id}, {"pkw_Symbol", K::Text, 20}, {"pkw_Nazwa", K::Text, 255}};
constexpr ColumnDef kLedgers[] = {{"rk_Id", K::Id}, {"rk_Nazwa", K::Text, 100}};
constexpr ColumnDef kImportSchemes[] = {{"si_Id", K::Id}, {"si_Nazwa", K::Text, 100}};
constexpr ColumnDef kBankServices[] = {{"ub_Id", K::Id}, {"ub_Nazwa", K::Text, 100}};
constexpr ColumnDef kOrders[] = {{"zlc_Id", K::Id}, {"zlc_Numer", K::Text, 30}, {"zlc_Opis", K::Text, 255}};

constexpr TableDef kTables[] = {
    {kDialogConfigTable, kDialogConfig, kDialogConfigIdx},
    {"log_Logowanie", kLog, {}},
    {"log_Parametry", kLogParams, {}},
    {"pd_Ostrzezenia", kWarnings, kWarningsIdx},
    {"gr__KonfiguracjaEx", kGridConfig, kGridConfigIdx},
    {"gr__Grid", kGrid, {}},
    {"gr_GridWlasny", kCustomGrid, {}},
    {"gr_FormatowanieWarunkowe", kGridFormats, kGridFormatsIdx},
    {"pd_Uzytkownik", kUsers, {}},
    {"sl_Oddzialy", kBranches, {}},
    {"sl_Magazyn", kWarehouses, {}},
    {"kh__Kontrahent", kContractors, {}},
    {"adr__Ewid", kAddresses, {}},
    {"sl_Panstwo", kCountries, {}},
    {"pr_Pracownik", kEmployees, {}},
    {"pd__Podmiot", kEntities, {}},
    {"ctx_Grupa", kGroups, {}},
    {"ks_Klasyfikatory", kClassifiers, {}},
    {"sl_GratAtrybutGodzinDni", kDayAttributes, {}},
    {"dok_DokumentDefiniowalny", kDefinableDocuments, {}},
    {"pd_RokObrotowy", kFiscalYears, {}},
    {"pk_Kartoteka", kAccountRegisters, {}},
    {"pk_PlanKont", kChartOfAccounts, {}},
    {"sl_Branza", kTrades, {}},
    {"sl_UrzadzenieKasowe", kFiscalPrinters, {}},
    {"fl__Flagi", kFlags, {}},
    {"sl_KodZus", kZusCodes, {}},
    {"sl_Samochod", kVehicles, {}},
    {"sl_GrupaDokumentow", kDocGroups, {}},
    {"sl_Kasa", kCashDesks, {}},
    {"sl_Kategoria", kCategories, {}},
    {"sl_KodCN", kCnCodes, {}},
    {"sl_Model", kModels, {}},
    {"rb__RachBankowy", kBankAccounts, {}},
    {"sl_Pkwiu", kPkwiu, {}},
    {"sl_RejestrKsiegowy", kLedgers, {}},
    {"sl_SchematImportu", kImportSchemes, {}},
    {"sl_UslugaBankowa", kBankServices, {}},
    {"sl_Zlecenie", kOrders, {}},
};

}  // namespace

std::span<const TableDef> Tables() { return kTables; }

const TableDef* FindTable(std::string_view name) {
  for (const TableDef& t : kTables)
    if (SameName(t.name, name)) return &t;
  return nullptr;
}

std::string ColumnType(const SqlDialect& dialect, const ColumnDef& column) {
  switch (column.kind) {
    case K::Id: return dialect.IdentityType();
    case K::Int: return "INT";
    case K::Text: return dialect.TextType(column.length);
    case K::LongText: return dialect.TextType(1 << 20);
    case K::DateTime: return dialect.DateTimeType();
    case K::Amount: return dialect.AmountType();
    case K::Blob: return dialect.BlobType();
  }
  return {};
}

std::vector<std::string> CreateStatements(const SqlDialect& dialect) {
  std::vector<std::string> out;
  for (const TableDef& table : kTables) {
    std::string sql = "CREATE TABLE " + std::string(table.name) + " (";
    bool first = true;
    for (const ColumnDef& c : table.columns) {
      if (!first) sql += ", ";
      first = false;
      sql += c.name;
      sql += ' ';
      sql += ColumnType(dialect, c);
      if (c.defaultValue) sql += std::string(" DEFAULT ") + c.defaultValue;
      if (c.notNull) sql += " NOT NULL";
    }
    sql += ')';
    out.push_back(std::move(sql));
    for (const IndexDef& index : table.indexes) {
      out.push_back(std::string(index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") + index.name + " ON " +
                    table.name + " (" + index.columns + ")");
    }
  }
  return out;
}

void CreateSchema(const Connection& connection) {
  const auto statements = CreateStatements(connection.Dialect());
  connection.BeginTrans();
  try {
    for (const std::string& sql : statements) connection.Execute(sql);
    connection.CommitTrans();
  } catch (...) {
    if (connection.InTransaction()) {
      try {
        connection.RollbackTrans();
      } catch (const ComError&) {
        // The original error is the one worth reporting.
      }
    }
    throw;
  }
}

}  // namespace varion::db::schema
