#include "framework/fill_dictionaries.h"

#include <cstdio>

#include "controls/polish_words.h"

namespace varion::fill {
namespace {

constexpr const char* kName = "%1!ls!";
constexpr const char* kTwo = "%1!ls! %2!ls!";
constexpr const char* kInParens = "%1!ls! (%2!ls!)";

// Filter combos open on "(wszystkie)": a filter that restricts nothing until the user chooses.
#define VARION_FILTER_EXTRAS {{"(wszystkie)", kAnyItem}, {}}

constexpr Dictionary kDictionaries[] = {
    // Named fillers.
    {"CrmBranza", "sl_Branza", kName, {"bra_Nazwa"}, "bra_Id", {}},
    {"CrmPersonel", "pd_Uzytkownik", kTwo, {"uz_Imie", "uz_Nazwisko"}, "uz_Id", {{"(zalogowany)", kCurrentItem}, {}}},
    {"Division", "SELECT so_Id, so_Nazwa FROM sl_Oddzialy", kName, {"so_Nazwa"}, "so_Id",
     {{"(dowolny)", kAnyItem}, {"(bieżący oddział)", kCurrentItem}}},
    {"DrukarkiFiskalne", "sl_UrzadzenieKasowe", kInParens, {"uko_Nazwa", "uko_Komputer"}, "uko_id", {}},
    {"AtrybutyDnia", "SELECT * FROM sl_GratAtrybutGodzinDni ", "%1!ls!, %2!ls! %%", {"agd_Nazwa", "agd_Wspolczynnik"},
     "agd_Id", {{"(brak)", kNoneItem}, {}}},
    {"DokumentyDefiniowalneDlaTypu", "select * from dok_DokumentDefiniowalny where dd_DokTyp = %ld and dd_DokPodtyp = %ld",
     kName, {"dd_Nazwa"}, "dd_Id", {}},
    {"DaneWystawiajacegoEmail", "SELECT pd_Id, pd_Email FROM pd__Podmiot", kName, {"pd_Email"}, "pd_Id",
     {{"(nie umieszczaj)", kNoneItem}, {}}},
    {"Flaga_Nazwy", "fl__Flagi", kName, {"flg_Text"}, "flg_Id", {{"(dowolna)", kAnyItem}, {"(brak)", kNoneItem}}},
    {"Magazyn", "sl_Magazyn", kTwo, {"mag_Symbol", "mag_Nazwa"}, "mag_Id", {}},
    {"Panstwo", "sl_Panstwo", kName, {"pa_Nazwa"}, "pa_Id", {}},
    {"Pracownik", "pr_Pracownik", kTwo, {"pr_Imie", "pr_Nazwisko"}, "pr_Id", {}},
    {"KodZus", "sl_KodZus", kTwo, {"kz_Kod", "kz_Nazwa"}, "kz_Id", {}},
    // Filter dictionaries of the DLX_Init...Filter family.
    {"ErpListFilter", "gr__Grid", kName, {"gr_Nazwa"}, "gr_Id", VARION_FILTER_EXTRAS},
    {"GrupyDokFilter", "sl_GrupaDokumentow", kName, {"gdk_Nazwa"}, "gdk_Id", VARION_FILTER_EXTRAS},
    {"KasaFilter", "sl_Kasa", kTwo, {"kas_Symbol", "kas_Nazwa"}, "kas_Id", VARION_FILTER_EXTRAS},
    {"KategoriaFilter", "sl_Kategoria", kName, {"kat_Nazwa"}, "kat_Id", VARION_FILTER_EXTRAS},
    {"KodyCNFilter", "sl_KodCN", kTwo, {"cn_Kod", "cn_Opis"}, "cn_Id", VARION_FILTER_EXTRAS},
    {"ModelFilter", "sl_Model", kName, {"mod_Nazwa"}, "mod_Id", VARION_FILTER_EXTRAS},
    {"PanstwoFilter", "sl_Panstwo", kName, {"pa_Nazwa"}, "pa_Id", VARION_FILTER_EXTRAS},
    // The bank accounts of one table, by owner: 1 the entity itself, 2 an employee, 3 a contractor.
    {"PdmRachBankListFilter", "SELECT * FROM rb__RachBankowy WHERE rb_TypObiektu = 1", kInParens,
     {"rb_Nazwa", "rb_Numer"}, "rb_Id", VARION_FILTER_EXTRAS},
    {"PracRachBankListFilter", "SELECT * FROM rb__RachBankowy WHERE rb_TypObiektu = 2", kInParens,
     {"rb_Nazwa", "rb_Numer"}, "rb_Id", VARION_FILTER_EXTRAS},
    {"RachBankListFilter", "rb__RachBankowy", kInParens, {"rb_Nazwa", "rb_Numer"}, "rb_Id", VARION_FILTER_EXTRAS},
    {"PkwiuFilter", "sl_Pkwiu", kTwo, {"pkw_Symbol", "pkw_Nazwa"}, "pkw_Id", VARION_FILTER_EXTRAS},
    {"RejestrKsiegowyFilter", "sl_RejestrKsiegowy", kName, {"rk_Nazwa"}, "rk_Id", VARION_FILTER_EXTRAS},
    {"SchematImportuFilter", "sl_SchematImportu", kName, {"si_Nazwa"}, "si_Id", VARION_FILTER_EXTRAS},
    {"SlMagListFilter", "sl_Magazyn", kTwo, {"mag_Symbol", "mag_Nazwa"}, "mag_Id", VARION_FILTER_EXTRAS},
    {"UslugaBankListFilter", "sl_UslugaBankowa", kName, {"ub_Nazwa"}, "ub_Id", VARION_FILTER_EXTRAS},
    {"ZleceniaFilter", "sl_Zlecenie", kTwo, {"zlc_Numer", "zlc_Opis"}, "zlc_Id", VARION_FILTER_EXTRAS},
};

#undef VARION_FILTER_EXTRAS

// Item data of the fixed lists are the codes the host stores: positions from 0.
constexpr LBEntry kCzestotliwoscOdpisuAM[] = {{0, "jednorazowy"}, {1, "miesięczny"}, {2, "kwartalny"},
                                              {3, "roczny"},      {4, "sezonowa"},   {5, "inna"}};
constexpr LBEntry kDataDomyslna[] = {{0, "bieżący dzień"}, {1, "%d. dzień miesiąca"}, {2, "ostatni dzień miesiąca"}};
constexpr LBEntry kFVDateType[] = {{0, "bieżący dzień"}, {1, "data sprzedaży"}, {2, "ostatni dzień z miesiąca sprzedaży"}};
constexpr LBEntry kDokumentVatRodzaje[] = {{0, "sprzedaż"}, {1, "zakup"}};

constexpr FixedList kFixedLists[] = {
    {"CzestotliwoscOdpisuAM", kCzestotliwoscOdpisuAM},
    {"DataDomyslna", kDataDomyslna},
    {"FVDateType", kFVDateType},
    {"DokumentVatRodzaje", kDokumentVatRodzaje},
};

}  // namespace

std::span<const Dictionary> Dictionaries() { return kDictionaries; }

const Dictionary* FindDictionary(std::string_view name) {
  for (const Dictionary& d : kDictionaries)
    if (name == d.name) return &d;
  return nullptr;
}

std::string DictionarySql(const Dictionary& d, std::span<const long> numbers) {
  const std::string sql = SourceSql(d.source);
  std::string out;
  std::size_t next = 0;
  for (std::size_t i = 0; i < sql.size(); ++i) {
    if (sql.compare(i, 3, "%ld") == 0) {
      out += std::to_string(next < numbers.size() ? numbers[next] : 0L);
      ++next;
      i += 2;
    } else {
      out += sql[i];
    }
  }
  return out;
}

Items LoadDictionary(const db::Connection& connection, const Dictionary& d, unsigned extras,
                     std::span<const long> numbers, Formatter formatter) {
  RowFormat format;
  format.tmpl = d.tmpl;
  for (const char* f : d.textFields)
    if (f) format.textFields.emplace_back(f);
  format.idField = d.idField;
  db::Recordset rs = connection.OpenRS(DictionarySql(d, numbers));
  Items rows = ReadItems(rs, format, formatter);
  Items items;
  for (unsigned i = 0; i < 2; ++i)
    if (d.extras[i].text && (extras & (1u << i))) items.push_back({d.extras[i].text, d.extras[i].data});
  items.insert(items.end(), std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
  return items;
}

std::span<const FixedList> FixedLists() { return kFixedLists; }

const FixedList* FindFixedList(std::string_view name) {
  for (const FixedList& l : kFixedLists)
    if (name == l.name) return &l;
  return nullptr;
}

Items FixedListItems(const FixedList& list, int day) {
  Items items = SelectEntries(list.entries.data(), static_cast<int>(list.entries.size()), nullptr, 0);
  if (day < 1 || day > 31) day = 1;
  for (Item& item : items) {
    const std::size_t at = item.text.find("%d");
    if (at != std::string::npos) item.text.replace(at, 2, std::to_string(day));
  }
  return items;
}

Items DaysOfMonth() {
  Items items;
  for (int d = 1; d <= 31; ++d) items.push_back({std::to_string(d), d});
  return items;
}

Items DaysOfWeek() {
  static constexpr const char* kDays[] = {"poniedziałek", "wtorek", "środa", "czwartek", "piątek", "sobota", "niedziela"};
  Items items;
  for (int d = 0; d < 7; ++d) items.push_back({kDays[d], d + 1});
  return items;
}

Items Months() {
  Items items;
  for (int m = 1; m <= 12; ++m) items.push_back({PolishMonthLower(m), m});
  return items;
}

}  // namespace varion::fill
