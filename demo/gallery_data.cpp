#include "demo/gallery_data.h"

#include <initializer_list>
#include <vector>

#include "base/variant.h"
#include "db/schema/schema.h"

namespace varion::demo {
namespace {

struct Rows {
  const char* table;
  const char* columns;
  std::vector<std::vector<Variant>> rows;
};

// Identifiers are given so that the rows can refer to each other on every server.
std::vector<Rows> Dictionaries() {
  return {
      {"pd_Uzytkownik",
       "uz_Identyfikator, uz_Imie, uz_Nazwisko",
       {{"ADMIN", "Jan", "Kowalski"}, {"ANOWAK", "Anna", "Nowak"}, {"ZWOJCIK", "Zofia", "Wójcik"}}},
      {"sl_Oddzialy", "so_Symbol, so_Nazwa", {{"CEN", "Centrala"}, {"KRK", "Oddział Kraków"}, {"GDA", "Oddział Gdańsk"}}},
      {"sl_Magazyn",
       "mag_Symbol, mag_Nazwa",
       {{"MAG", "Magazyn główny"}, {"HURT", "Magazyn hurtowy"}, {"SKLEP", "Sklep Łódź Piotrkowska"}}},
      {"sl_Panstwo",
       "pa_Nazwa, pa_KodPanstwaISO",
       {{"Polska", "PL"}, {"Niemcy", "DE"}, {"Wielka Brytania", "GB"}, {"Czechy", "CZ"}}},
      {"kh__Kontrahent",
       "kh_Symbol, kh_Nazwa, kh_Nip",
       {{"ZIELAR", "Zielarnia \"Pod Świerkiem\" sp. z o.o.", "5260250274"},
        {"MLYN", "Młyn Żytni S.A.", "7791011327"},
        {"OBRIEN", "O'Brien Trading Ltd", ""}}},
      {"adr__Ewid",
       "adr_IdObiektu, adr_TypAdresu, adr_Nazwa, adr_Adres, adr_Miejscowosc, adr_Kod, adr_IdPanstwo",
       {{1, 1, "Zielarnia \"Pod Świerkiem\"", "ul. Leśna 5", "Zakopane", "34-500", 1},
        {2, 1, "Młyn Żytni", "ul. Młyńska 12", "Poznań", "61-729", 1},
        {3, 1, "O'Brien Trading", "14 Baker Street", "London", "NW1 6XE", 3}}},
      {"pr_Pracownik",
       "pr_Imie, pr_Nazwisko, pr_Pesel",
       {{"Katarzyna", "Źródłowska", "90010112345"}, {"Łukasz", "Żak", "85120354321"}}},
      {"pd__Podmiot", "pd_Nazwa, pd_Email", {{"Varion Demo sp. z o.o.", "biuro@example.pl"}}},
      {"log_Parametry", "logp_Wlaczone", {{1}}},
      {"ks_Klasyfikatory", "ksk_Nazwa", {{"Klienci hurtowi"}, {"Dostawcy"}}},
      {"ctx_Grupa", "ctg_Nazwa, ctg_Sql", {{"Kontrahenci z Polski", "SELECT adr_IdObiektu FROM adr__Ewid WHERE adr_IdPanstwo = 1"}}},
      {"sl_GratAtrybutGodzinDni",
       "agd_Nazwa, agd_Wspolczynnik",
       {{"Nadgodziny", Amount::FromUnits(1, 5000)}, {"Święto", Amount::FromUnits(2)}}},
      {"dok_DokumentDefiniowalny", "dd_DokTyp, dd_DokPodtyp, dd_Nazwa", {{2, 0, "Faktura eksportowa"}}},
      {"pd_RokObrotowy",
       "robr_Symbol, robr_DataOd, robr_DataDo, robr_Zamkniety",
       {{"2024", DateTime(2024, 1, 1), DateTime(2024, 12, 31), 1}, {"2025", DateTime(2025, 1, 1), DateTime(2025, 12, 31), 0}}},
      {"pk_Kartoteka", "kw_Nazwa, kw_Filtr1", {{"Rozrachunki z odbiorcami", 1}}},
      {"sl_Branza", "bra_Nazwa", {{"Budownictwo"}, {"Handel hurtowy"}, {"Usługi IT"}}},
      {"sl_UrzadzenieKasowe", "uko_Nazwa, uko_Komputer", {{"Drukarka fiskalna 1", "KASA-01"}, {"Drukarka zapasowa", "KASA-02"}}},
      {"fl__Flagi", "flg_Text", {{"Pilne"}, {"Do wyjaśnienia"}, {"Zamknięte"}}},
      {"sl_KodZus",
       "kz_Kod, kz_Nazwa",
       {{"0110", "Umowa o pracę"}, {"0411", "Umowa zlecenia"}, {"0510", "Prowadzenie działalności"}}},
      {"sl_Samochod", "sam_NrRejestracyjny, sam_Opis", {{"KR 12345", "Toyota Corolla"}, {"WA 9Z9Z", "Skoda Octavia"}}},
      {"sl_Kasa", "kas_Symbol, kas_Nazwa", {{"KG", "Kasa główna"}, {"KW", "Kasa walutowa"}}},
      {"rb__RachBankowy",
       "rb_Nazwa, rb_Numer, rb_TypObiektu",
       {{"Rachunek firmowy", "61 1090 1014 0000 0712 1981 2874", 1}, {"Rachunek VAT", "27 1140 2004 0000 3002 0135 5387", 1}}},
      {"pk_PlanKont",
       "ko_Numer, ko_Nazwa, ko_IdKartoteki, ko_IdRokuObrotowego",
       {{"201", "Rozrachunki z odbiorcami", 1, 2}}},
  };
}

}  // namespace

void CreateGalleryDatabase(const db::Connection& connection) {
  db::schema::CreateSchema(connection);
  connection.BeginTrans();
  try {
    for (const Rows& dictionary : Dictionaries()) {
      std::string markers;
      for (std::size_t i = 0; i < dictionary.rows.front().size(); ++i) markers += i ? ", ?" : "?";
      db::Statement insert = connection.Prepare(std::string("INSERT INTO ") + dictionary.table + " (" +
                                                dictionary.columns + ") VALUES (" + markers + ")");
      for (const auto& row : dictionary.rows) {
        for (std::size_t i = 0; i < row.size(); ++i) insert.Bind(static_cast<int>(i + 1), row[i]);
        insert.Execute();
      }
    }
    connection.CommitTrans();
  } catch (...) {
    if (connection.InTransaction()) connection.RollbackTrans();
    throw;
  }
}

}  // namespace varion::demo
