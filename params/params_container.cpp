#include "params/params_container.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <mutex>
#include <vector>

#include "base/text.h"
#include "controls/regex_patterns.h"
#include "db/rt_instance.h"
#include "params/named_periods.h"
#include "params/param_hist_tools.h"

CDateRangeTags CZestParamsContainer::g_tags;

namespace {

using varion::Variant;

bool IsWordChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

// The identifier a parameter holds: its Value as a number when it is not empty.
bool ParamId(const ZEST_PARAMS* p, std::int32_t& id) {
  return p && !p->Empty && !p->Value.IsEmptyOrNull() && varion::Succeeded(p->Value.ToInt32(id));
}

// The stored configuration: "VZPC", version, then per named parameter its name, type, empty
// flag, named-period tag (or ""), the three values, the value text and the display text.
constexpr char kMagic[4] = {'V', 'Z', 'P', 'C'};
constexpr std::uint32_t kVersion = 1;
constexpr std::uint32_t kMaxText = 16u << 20;

class Writer {
 public:
  explicit Writer(varion::db::ByteStream& s) : m_stream(s) {}
  void Bytes(const void* p, std::size_t n) {
    if (varion::Failed(m_stream.Write(p, n))) m_ok = false;
  }
  template <typename T>
  void Pod(T v) { Bytes(&v, sizeof v); }  // little-endian hosts only, as the files are
  void Text(const std::string& s) {
    Pod(static_cast<std::uint32_t>(s.size()));
    Bytes(s.data(), s.size());
  }
  void Value(const Variant& v) {
    Pod(static_cast<std::uint8_t>(v.GetType()));
    switch (v.GetType()) {
      case Variant::Type::Int32: Pod(*v.GetInt32()); break;
      case Variant::Type::Text: Text(*v.GetText()); break;
      case Variant::Type::Binary: Text(std::string(v.GetBinary()->begin(), v.GetBinary()->end())); break;
      case Variant::Type::Int64: { std::int64_t x = 0; v.ToInt64(x); Pod(x); break; }
      case Variant::Type::Double: { double x = 0; v.ToDouble(x); Pod(x); break; }
      case Variant::Type::Bool: { bool x = false; v.ToBool(x); Pod(static_cast<std::uint8_t>(x)); break; }
      case Variant::Type::Amount: {
        varion::Amount a;
        v.ToAmount(a);
        Pod(a.Raw());
        Pod(static_cast<std::uint8_t>(a.Status()));
        break;
      }
      case Variant::Type::Date: {
        COleDateTime d;
        v.ToDate(d);
        Pod(d.Value());
        Pod(static_cast<std::uint8_t>(d.GetStatus()));
        break;
      }
      default: break;
    }
  }
  bool Ok() const { return m_ok; }

 private:
  varion::db::ByteStream& m_stream;
  bool m_ok = true;
};

class Reader {
 public:
  explicit Reader(varion::db::ByteStream& s) : m_stream(s) {}
  bool Bytes(void* p, std::size_t n) {
    std::size_t got = 0;
    if (varion::Failed(m_stream.Read(p, n, &got)) || got != n) m_ok = false;
    return m_ok;
  }
  template <typename T>
  T Pod() {
    T v{};
    Bytes(&v, sizeof v);
    return v;
  }
  std::string Text() {
    const auto n = Pod<std::uint32_t>();
    if (!m_ok || n > kMaxText) {
      m_ok = false;
      return {};
    }
    std::string s(n, '\0');
    Bytes(s.data(), n);
    return s;
  }
  Variant Value() {
    switch (static_cast<Variant::Type>(Pod<std::uint8_t>())) {
      case Variant::Type::Empty: return {};
      case Variant::Type::Null: return Variant::MakeNull();
      case Variant::Type::Int32: return Pod<std::int32_t>();
      case Variant::Type::Int64: return Pod<std::int64_t>();
      case Variant::Type::Double: return Pod<double>();
      case Variant::Type::Bool: return Pod<std::uint8_t>() != 0;
      case Variant::Type::Text: return Text();
      case Variant::Type::Binary: {
        std::string s = Text();
        return Variant::Bytes(s.begin(), s.end());
      }
      case Variant::Type::Amount: {
        const auto raw = Pod<std::int64_t>();
        const auto status = static_cast<varion::ValueStatus>(Pod<std::uint8_t>());
        return status == varion::ValueStatus::Valid  ? varion::Amount::FromRaw(raw)
               : status == varion::ValueStatus::Null ? varion::Amount::Null()
                                                     : varion::Amount::Invalid();
      }
      case Variant::Type::Date: {
        const auto serial = Pod<double>();
        const auto status = static_cast<varion::ValueStatus>(Pod<std::uint8_t>());
        return status == varion::ValueStatus::Valid  ? COleDateTime(serial)
               : status == varion::ValueStatus::Null ? COleDateTime::Null()
                                                     : COleDateTime::Invalid();
      }
      default: m_ok = false; return {};
    }
  }
  bool Ok() const { return m_ok; }

 private:
  varion::db::ByteStream& m_stream;
  bool m_ok = true;
};

struct StoredParam {
  std::string name, tag, valueStr, displayValue;
  std::int32_t type = 0, empty = 0;
  Variant value, value2, value3;
};

}  // namespace

CZestParamsContainer::CZestParamsContainer() { FillTags(); }

void CZestParamsContainer::FillTags() {
  static std::once_flag filled;
  std::call_once(filled, [] {
    g_tags["BIEZACY_DZIEN"] = {varion::kPeriodCurrentDay, "bieżący dzień"};
    g_tags["BIEZACY_TYDZIEN"] = {varion::kPeriodCurrentWeek, "bieżący tydzień"};
    g_tags["BIEZACY_MIESIAC"] = {varion::kPeriodCurrentMonth, "bieżący miesiąc"};
    g_tags["BIEZACY_KWARTAL"] = {varion::kPeriodCurrentQuarter, "bieżący kwartał"};
    g_tags["BIEZACY_ROK"] = {varion::kPeriodCurrentYear, "bieżący rok"};
    g_tags["OSTATNIE_7_DNI"] = {varion::kPeriodLast7Days, "ostatnie 7 dni"};
    g_tags["OSTATNIE_30_DNI"] = {varion::kPeriodLast30Days, "ostatnie 30 dni"};
    g_tags["POPRZEDNI_MIESIAC"] = {varion::kPeriodPreviousMonth, "poprzedni miesiąc"};
  });
}

const DateTools::IClock& CZestParamsContainer::Clock() const {
  static const DateTools::SystemClock system;
  return m_clock ? *m_clock : system;
}

ZEST_PARAMS* CZestParamsContainer::FindParam(const std::string& name) {
  for (ZEST_PARAMS& p : m_params)
    if (p.AuxText == name) return &p;
  return nullptr;
}

void CZestParamsContainer::CreateDefParams() {
  using namespace ZestParams;
  m_params.RemoveAll();
  auto add = [this](const ZEST_PARAMS& record, const char* name) {
    m_params[m_params.Add(record)].AuxText = name;
  };

  ZEST_PARAMS period = ZestParamsDate().SetLabel("Okres").ClearAndSetCompareOperatorDate(CompareDateBetween);
  GetTagDateTimeRange("BIEZACY_MIESIAC", period);
  period.Empty = false;
  add(period, "OKRES");
  add(ZestParamsSelectionDbObject()
          .SetLabel("Magazyn")
          .SetListFilterSql("SELECT mag_Id, mag_Nazwa FROM sl_Magazyn")
          .SetParamStr("(brak)")  // the list's choice of no warehouse
          .SetValue(Variant::MakeNull()),
      "MAGAZYN");
  struct Lookup {
    ZestParamsType type;
    const char* label;
    const char* lookupText;
    const char* name;
  };
  static const Lookup lookups[] = {
      {ZestParamsTypeInstynkt, "Towar", "TwInstynkt#Towary.Lookup", "TOWAR"},
      {ZestParamsTypeInstynkt, "Kontrahent", "Kontrahenci.Instynkt#Kontrahenci.Lookup", "KONTRAHENT"},
      {ZestParamsTypeInstynkt, "Konto", "PlanKont.KontoInstynkt#PlanKont.KontoLookup#4#3", "KONTO"},
      {ZestParamsTypeInstynkt, "Pracownik", "Pracownicy.CoPracInstynkt#Payvon.PracLookup#3#3", "PRACOWNIK"},
      {ZestParamsTypeLookupMultisel, "Towary", "Towary.Lookup", "TOWARY"},
      {ZestParamsTypeLookupMultisel, "Kontrahenci", "Kontrahenci.Lookup", "KONTRAHENCI"},
      {ZestParamsTypeLookupMultisel, "Pracownicy", "Payvon.PracLookup", "PRACOWNICY"},
  };
  // Reports show the parameters they use; the others stay hidden.
  for (const Lookup& l : lookups)
    add(ZestParamsEmpty().SetType(l.type).SetLabel(l.label).SetTypeStr(l.lookupText).SetVisible(false), l.name);
  add(ZestParamsEmpty()
          .SetType(ZestParamsTypeKlasyfikator)
          .SetLabel("Klasyfikator")
          .SetParamStr("SELECT ? = ksk_Id FROM ks_Klasyfikatory WHERE ksk_Nazwa = ?")
          .SetVisible(false),
      "KLASYFIKATOR");
}

bool CZestParamsContainer::GetTagDateTimeRange(const std::string& tag, ZEST_PARAMS& param) const {
  FillTags();
  const auto it = g_tags.find(tag);
  if (it == g_tags.end()) return false;
  param.Value = Variant::MakeNull();
  param.Value2 = Variant::MakeNull();
  param.Value3 = std::int32_t{it->second.first};
  param.ValueStr = GetDokOkresFormatBetween(it->second.first, param.Value, param.Value2, Clock());
  param.DisplayValue = it->second.second;
  return true;
}

bool CZestParamsContainer::GetSqlDateTimeRange(const std::string& tag, COleDateTime& date) const {
  FillTags();
  if (tag.size() < 4) return false;
  const std::string suffix = tag.substr(tag.size() - 3);
  if (suffix != "_OD" && suffix != "_DO") return false;
  const auto it = g_tags.find(tag.substr(0, tag.size() - 3));
  DateTools::Period period;
  if (it == g_tags.end() || !varion::NamedPeriod(it->second.first, Clock(), period)) return false;
  date = suffix == "_OD" ? period.GetStart() : period.GetEnd();
  return true;
}

void CZestParamsContainer::ParseTagSqlQuery(std::string& sql) const {
  if (m_polaWlasne) sql = m_polaWlasne->ParseSql(sql);
  // A braced placeholder prefix_name.prefix_name that no provider filled becomes NULL, so that
  // the statement still runs. The class [A-Za-z^\S+] is every non-blank character.
  static const varion::Regex placeholder =
      varion::CompilePattern(R"({[A-Za-z^\S+]+_[A-Za-z^\S+]+\.[A-Za-z^\S+]+_[A-Za-z^\S+]+})");
  try {
    sql = boost::regex_replace(sql, placeholder, "NULL");
  } catch (const std::runtime_error&) {
    // The engine gave up on a pathological text: the SQL stays as the provider left it.
  }
}

bool CZestParamsContainer::ParamPeriod(const ZEST_PARAMS& p, DateTools::Period& period) const {
  if (p.Empty) return false;
  if (const std::int32_t* code = p.Value3.GetInt32(); code && varion::NamedPeriod(*code, Clock(), period)) return true;
  COleDateTime from, to;
  if (varion::Failed(p.Value.ToDate(from)) || varion::Failed(p.Value2.ToDate(to)) || !from.IsValid() || !to.IsValid())
    return false;
  period = {from, to};
  return true;
}

bool CZestParamsContainer::TagValue(const std::string& tag, std::string& value) {
  std::int32_t id = 0;
  if (tag == "WYBRANY_MAGAZYN" || tag == "ID_WYBRANEGO_OKRESU") {
    value = ParamId(FindParam(tag == "WYBRANY_MAGAZYN" ? "MAGAZYN" : "ID_OKRESU"), id) ? std::to_string(id) : "NULL";
    return true;
  }
  if (tag == "WYBRANY_OKRES_OD" || tag == "WYBRANY_OKRES_DO") {
    const ZEST_PARAMS* p = FindParam("OKRES");
    DateTools::Period period;
    value = p && ParamPeriod(*p, period)
                ? Dialect().DateLiteral(tag == "WYBRANY_OKRES_OD" ? period.GetStart() : period.GetEnd())
                : "NULL";
    return true;
  }
  if (tag == "ID_UZYTKOWNIKA") {
    value = std::to_string(CRtInstance::GetUserId());
    return true;
  }
  if (tag == "ID_UZYTKOWNIKA_CRM") {
    value = std::to_string(CRtInstance::GetUserId());
    if (ParamId(FindParam("GRUPA_CRM"), id)) {
      varion::db::Recordset rs = CRtInstance::OpenRS("SELECT ctg_Sql FROM ctx_Grupa WHERE ctg_Id = " + std::to_string(id));
      if (!rs.IsEOF()) {
        const std::string groupSql = rs.GetCollect("ctg_Sql").AsText();
        if (!groupSql.empty()) value = groupSql;
      }
    }
    return true;
  }
  if (tag == "ID_PRACOWNIKA") {
    if (ParamId(FindParam("PRACOWNIK"), id)) {
      value = std::to_string(id);
      return true;
    }
    value.clear();
    for (varion::db::Recordset rs = CRtInstance::OpenRS("SELECT pr_Id FROM pr_Pracownik"); !rs.IsEOF(); rs.MoveNext()) {
      if (!value.empty()) value += ", ";
      value += rs.GetCollect(0).AsText();
    }
    if (value.empty()) value = "NULL";
    return true;
  }
  COleDateTime date;
  if (GetSqlDateTimeRange(tag, date)) {
    value = Dialect().DateLiteral(date);
    return true;
  }
  return false;
}

varion::Status32 CZestParamsContainer::FormatSql(std::string& sql) {
  try {
    std::string out;
    out.reserve(sql.size() + 64);
    std::vector<std::pair<std::string, std::string>> resolved;  // each tag's value, read once
    for (std::size_t i = 0; i < sql.size();) {
      const char c = sql[i];
      if (c == '\'') {  // a text literal is copied whole: a word inside it is no tag
        std::size_t end = i + 1;
        while (end < sql.size() && !(sql[end] == '\'' && (end + 1 >= sql.size() || sql[end + 1] != '\'')))
          end += sql[end] == '\'' ? 2 : 1;
        end = std::min(end + 1, sql.size());
        out.append(sql, i, end - i);
        i = end;
      } else if (IsWordChar(c)) {
        std::size_t end = i;
        while (end < sql.size() && IsWordChar(sql[end])) ++end;
        const std::string word = sql.substr(i, end - i);
        auto known = std::find_if(resolved.begin(), resolved.end(), [&](const auto& r) { return r.first == word; });
        std::string value;
        if (known != resolved.end()) {
          out += known->second;
        } else if (std::isupper(static_cast<unsigned char>(word[0])) && TagValue(word, value)) {
          resolved.emplace_back(word, value);
          out += value;
        } else {
          out += word;
        }
        i = end;
      } else {
        out += c;
        ++i;
      }
    }
    ParseTagSqlQuery(out);
    sql = std::move(out);
    return varion::kOk;
  } catch (const varion::ComError& e) {
    return e.Code();
  }
}

varion::Status32 CZestParamsContainer::SaveCfg(varion::db::ByteStream& stream) const {
  FillTags();
  Writer w(stream);
  w.Bytes(kMagic, sizeof kMagic);
  w.Pod(kVersion);
  std::uint32_t count = 0;
  for (const ZEST_PARAMS& p : m_params) count += !p.AuxText.empty();
  w.Pod(count);
  for (const ZEST_PARAMS& p : m_params) {
    if (p.AuxText.empty()) continue;
    std::string tag;
    if (const std::int32_t* code = p.Value3.GetInt32(); code && p.Value.IsNull())
      for (const auto& [name, entry] : g_tags)
        if (entry.first == *code) tag = name;
    w.Text(p.AuxText);
    w.Pod(static_cast<std::int32_t>(p.Type));
    w.Pod(p.Empty);
    w.Text(tag);
    w.Value(p.Value);
    w.Value(p.Value2);
    w.Value(p.Value3);
    w.Text(p.ValueStr);
    w.Text(p.DisplayValue);
  }
  return w.Ok() ? varion::kOk : varion::kFail;
}

varion::Status32 CZestParamsContainer::LoadCfg(varion::db::ByteStream& stream) {
  Reader r(stream);
  char magic[4] = {};
  r.Bytes(magic, sizeof magic);
  if (!r.Ok() || std::memcmp(magic, kMagic, sizeof magic) != 0 || r.Pod<std::uint32_t>() != kVersion) return varion::kFail;
  const auto count = r.Pod<std::uint32_t>();
  std::vector<StoredParam> stored;
  for (std::uint32_t i = 0; i < count && r.Ok(); ++i) {
    StoredParam s;
    s.name = r.Text();
    s.type = r.Pod<std::int32_t>();
    s.empty = r.Pod<std::int32_t>();
    s.tag = r.Text();
    s.value = r.Value();
    s.value2 = r.Value();
    s.value3 = r.Value();
    s.valueStr = r.Text();
    s.displayValue = r.Text();
    stored.push_back(std::move(s));
  }
  if (!r.Ok()) return varion::kFail;
  for (StoredParam& s : stored) {
    ZEST_PARAMS* p = FindParam(s.name);
    if (!p || p->Type != s.type || !ParamHistTools::IsParameterUpdatable(varion::text::Cp1250ToWide(s.name))) continue;
    p->Empty = s.empty;
    if (!s.tag.empty() && GetTagDateTimeRange(s.tag, *p)) continue;
    p->Value = std::move(s.value);
    p->Value2 = std::move(s.value2);
    p->Value3 = std::move(s.value3);
    p->ValueStr = std::move(s.valueStr);
    p->DisplayValue = std::move(s.displayValue);
  }
  return varion::kOk;
}
