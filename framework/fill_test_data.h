// Dictionary rows the filler tests put into a fresh database (native on every backend, and under
// Wine on ODBC to SQLite), with the items each dictionary must then give. Rows are inserted
// without identifiers, so each table's rows are 1, 2, 3 in insertion order on every server.
#pragma once

#include <string>
#include <vector>

#include "base/amount.h"
#include "base/variant.h"
#include "db/connection.h"
#include "db/schema/schema.h"
#include "framework/fill_items.h"

namespace varion::testing {

struct SeedTable {
  const char* table;
  const char* columns;
  std::vector<std::vector<Variant>> rows;
};

inline const std::vector<SeedTable>& FillSeeds() {
  static const std::vector<SeedTable> seeds = {
      {"sl_Branza", "bra_Nazwa", {{"Budownictwo"}, {"Handel hurtowy"}}},
      {"pd_Uzytkownik", "uz_Identyfikator, uz_Imie, uz_Nazwisko", {{"ADMIN", "Jan", "Kowalski"}, {"ZW", "Zofia", "Wójcik"}}},
      {"sl_Oddzialy", "so_Symbol, so_Nazwa", {{"CEN", "Centrala"}, {"GDA", "Oddział Gdańsk"}}},
      // A NULL field formats as an empty text: the parentheses stay.
      {"sl_UrzadzenieKasowe", "uko_Nazwa, uko_Komputer", {{"Drukarka 1", "KASA-01"}, {"Drukarka zapasowa", Variant::MakeNull()}}},
      {"sl_GratAtrybutGodzinDni", "agd_Nazwa, agd_Wspolczynnik",
       {{"Nadgodziny", Amount::FromUnits(1, 5000)}, {"Święto", Amount::FromUnits(2)}}},
      {"dok_DokumentDefiniowalny", "dd_DokTyp, dd_DokPodtyp, dd_Nazwa",
       {{2, 0, "Faktura eksportowa"}, {2, 1, "Faktura zaliczkowa"}, {3, 1, "Paragon"}}},
      {"pd__Podmiot", "pd_Nazwa, pd_Email", {{"Firma", "biuro@example.pl"}}},
      {"fl__Flagi", "flg_Text", {{"Pilne"}, {"Do wyjaśnienia"}}},
      {"sl_Magazyn", "mag_Symbol, mag_Nazwa", {{"MAG", "Magazyn główny"}, {"HURT", "Magazyn hurtowy"}}},
      {"sl_Panstwo", "pa_Nazwa, pa_KodPanstwaISO", {{"Polska", "PL"}, {"Niemcy", "DE"}}},
      {"pr_Pracownik", "pr_Imie, pr_Nazwisko", {{"Łukasz", "Żak"}}},
      {"sl_KodZus", "kz_Kod, kz_Nazwa", {{"0110", "Umowa o pracę"}, {"0411", "Umowa zlecenia"}, {"0411", "duplikat"}}},
      {"sl_Samochod", "sam_NrRejestracyjny, sam_Opis", {{"KR 12345", "Toyota"}, {"wa 9z9z ", "Skoda"}}},
      {"gr__Grid", "gr_Section, gr_IdModulu, gr_Nazwa", {{"Kontrahenci", 1, "Lista kontrahentów"}}},
      {"sl_GrupaDokumentow", "gdk_Nazwa", {{"Sprzedaż"}, {"Zakup"}}},
      {"sl_Kasa", "kas_Symbol, kas_Nazwa", {{"KG", "Kasa główna"}}},
      {"sl_Kategoria", "kat_Nazwa", {{"Materiały biurowe"}}},
      {"sl_KodCN", "cn_Kod, cn_Opis", {{"8471", "Maszyny do przetwarzania danych"}}},
      {"sl_Model", "mod_Nazwa", {{"Corolla"}, {"Octavia"}}},
      {"rb__RachBankowy", "rb_Nazwa, rb_Numer, rb_TypObiektu",
       {{"Rachunek firmowy", "61 1090 1014", 1}, {"Konto pracownika", "12 3456", 2}, {"Konto kontrahenta", "98 7654", 3}}},
      {"sl_Pkwiu", "pkw_Symbol, pkw_Nazwa", {{"62.01", "Usługi programowania"}}},
      {"sl_RejestrKsiegowy", "rk_Nazwa", {{"Rejestr sprzedaży VAT"}}},
      {"sl_SchematImportu", "si_Nazwa", {{"Import wyciągów"}}},
      {"sl_UslugaBankowa", "ub_Nazwa", {{"Przelewy Elixir"}}},
      {"sl_Zlecenie", "zlc_Numer, zlc_Opis", {{"ZL/1/2025", "Serwis drukarki"}}},
  };
  return seeds;
}

// The library's schema and the seed rows, on an empty database.
inline void CreateFillDatabase(const db::Connection& c) {
  db::schema::CreateSchema(c);
  for (const SeedTable& t : FillSeeds()) {
    std::string markers;
    for (std::size_t i = 0; i < t.rows.front().size(); ++i) markers += i ? ", ?" : "?";
    db::Statement insert =
        c.Prepare(std::string("INSERT INTO ") + t.table + " (" + t.columns + ") VALUES (" + markers + ")");
    for (const auto& row : t.rows) {
      for (std::size_t i = 0; i < row.size(); ++i) insert.Bind(static_cast<int>(i + 1), row[i]);
      insert.Execute();
    }
  }
}

struct DictionaryCase {
  const char* name;
  std::vector<long> numbers;
  fill::Items rows;  // without the extra items
};

// One row per dictionary of fill::Dictionaries(); the tests check that none is missing.
inline const std::vector<DictionaryCase>& DictionaryCases() {
  static const std::vector<DictionaryCase> cases = {
      {"CrmBranza", {}, {{"Budownictwo", 1}, {"Handel hurtowy", 2}}},
      {"CrmPersonel", {}, {{"Jan Kowalski", 1}, {"Zofia Wójcik", 2}}},
      {"Division", {}, {{"Centrala", 1}, {"Oddział Gdańsk", 2}}},
      {"DrukarkiFiskalne", {}, {{"Drukarka 1 (KASA-01)", 1}, {"Drukarka zapasowa ()", 2}}},
      {"AtrybutyDnia", {}, {{"Nadgodziny, 1.5 %", 1}, {"Święto, 2 %", 2}}},
      {"DokumentyDefiniowalneDlaTypu", {2, 1}, {{"Faktura zaliczkowa", 2}}},
      {"DaneWystawiajacegoEmail", {}, {{"biuro@example.pl", 1}}},
      {"Flaga_Nazwy", {}, {{"Pilne", 1}, {"Do wyjaśnienia", 2}}},
      {"Magazyn", {}, {{"MAG Magazyn główny", 1}, {"HURT Magazyn hurtowy", 2}}},
      {"Panstwo", {}, {{"Polska", 1}, {"Niemcy", 2}}},
      {"Pracownik", {}, {{"Łukasz Żak", 1}}},
      {"KodZus", {}, {{"0110 Umowa o pracę", 1}, {"0411 Umowa zlecenia", 2}, {"0411 duplikat", 3}}},
      {"ErpListFilter", {}, {{"Lista kontrahentów", 1}}},
      {"GrupyDokFilter", {}, {{"Sprzedaż", 1}, {"Zakup", 2}}},
      {"KasaFilter", {}, {{"KG Kasa główna", 1}}},
      {"KategoriaFilter", {}, {{"Materiały biurowe", 1}}},
      {"KodyCNFilter", {}, {{"8471 Maszyny do przetwarzania danych", 1}}},
      {"ModelFilter", {}, {{"Corolla", 1}, {"Octavia", 2}}},
      {"PanstwoFilter", {}, {{"Polska", 1}, {"Niemcy", 2}}},
      {"PdmRachBankListFilter", {}, {{"Rachunek firmowy (61 1090 1014)", 1}}},
      {"PracRachBankListFilter", {}, {{"Konto pracownika (12 3456)", 2}}},
      {"RachBankListFilter", {},
       {{"Rachunek firmowy (61 1090 1014)", 1}, {"Konto pracownika (12 3456)", 2}, {"Konto kontrahenta (98 7654)", 3}}},
      {"PkwiuFilter", {}, {{"62.01 Usługi programowania", 1}}},
      {"RejestrKsiegowyFilter", {}, {{"Rejestr sprzedaży VAT", 1}}},
      {"SchematImportuFilter", {}, {{"Import wyciągów", 1}}},
      {"SlMagListFilter", {}, {{"MAG Magazyn główny", 1}, {"HURT Magazyn hurtowy", 2}}},
      {"UslugaBankListFilter", {}, {{"Przelewy Elixir", 1}}},
      {"ZleceniaFilter", {}, {{"ZL/1/2025 Serwis drukarki", 1}}},
  };
  return cases;
}

}  // namespace varion::testing
