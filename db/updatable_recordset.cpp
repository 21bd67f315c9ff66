#include "db/updatable_recordset.h"

#include <cctype>

#include "db/backend.h"
#include "db/connection.h"
#include "db/messages.h"

namespace varion::db {
namespace {

bool IsNameChar(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.' || c == '$' || c == '#' ||
         c == '[' || c == ']' || c == '"' || static_cast<unsigned char>(c) >= 0x80;
}

// Splits SQL into words and single punctuation marks at parenthesis depth 0; quoted texts and
// everything inside parentheses are skipped.
std::vector<std::string> TopLevelTokens(std::string_view sql) {
  std::vector<std::string> tokens;
  int depth = 0;
  std::size_t i = 0;
  while (i < sql.size()) {
    char c = sql[i];
    if (c == '\'') {
      for (++i; i < sql.size(); ++i)
        if (sql[i] == '\'') {
          if (i + 1 < sql.size() && sql[i + 1] == '\'') ++i;
          else break;
        }
      ++i;
      if (depth == 0) tokens.emplace_back("'");
      continue;
    }
    if (c == '(') {
      if (depth == 0) tokens.emplace_back("(");
      ++depth;
      ++i;
      continue;
    }
    if (c == ')') {
      if (depth > 0) --depth;
      ++i;
      continue;
    }
    if (std::isspace(static_cast<unsigned char>(c))) {
      ++i;
      continue;
    }
    std::size_t start = i;
    if (IsNameChar(c)) {
      while (i < sql.size() && IsNameChar(sql[i])) ++i;
    } else {
      ++i;
    }
    if (depth == 0) tokens.emplace_back(sql.substr(start, i - start));
  }
  return tokens;
}

Variant CoerceTo(FieldType type, const Variant& value, std::string_view name) {
  if (value.IsEmptyOrNull()) return Variant::MakeNull();
  Status32 s = kOk;
  Variant out;
  switch (type) {
    case FieldType::Integer: {
      std::int32_t v = 0;
      s = value.ToInt32(v);
      out = Variant(v);
      break;
    }
    case FieldType::BigInt: {
      std::int64_t v = 0;
      s = value.ToInt64(v);
      out = Variant(v);
      break;
    }
    case FieldType::Double: {
      double v = 0;
      s = value.ToDouble(v);
      out = Variant(v);
      break;
    }
    case FieldType::Amount: {
      Amount v;
      s = value.ToAmount(v);
      out = Variant(v);
      break;
    }
    case FieldType::Date: {
      DateTime v;
      s = value.ToDate(v);
      out = Variant(v);
      break;
    }
    case FieldType::Bool: {
      bool v = false;
      s = value.ToBool(v);
      out = Variant(v);
      break;
    }
    case FieldType::Text: {
      std::string v;
      s = value.ToText(v);
      out = Variant(std::move(v));
      break;
    }
    case FieldType::Binary:
      if (!value.GetBinary()) s = kTypeMismatch;
      out = value;
      break;
    case FieldType::Unknown: out = value; break;
  }
  if (Failed(s)) throw ComError(s, messages::FieldTypeMismatch(name));
  return out;
}

}  // namespace

std::string SingleTableOf(std::string_view select) {
  auto tokens = TopLevelTokens(select);
  std::size_t i = 0;
  while (i < tokens.size() && !SameName(tokens[i], "FROM")) ++i;
  if (i + 1 >= tokens.size()) return {};
  const std::string& table = tokens[i + 1];
  if (!IsNameChar(table.front())) return {};  // a subquery or something stranger
  for (std::size_t k = i + 2; k < tokens.size(); ++k) {
    const std::string& t = tokens[k];
    if (SameName(t, "WHERE") || SameName(t, "ORDER") || SameName(t, "GROUP") || SameName(t, "LIMIT") ||
        SameName(t, "HAVING"))
      break;
    if (t == "," || SameName(t, "JOIN") || SameName(t, "UNION") || SameName(t, "APPLY")) return {};
  }
  return table;
}

UpdatableRecordset::UpdatableRecordset(std::shared_ptr<detail::ConnectionBackend> connection, std::string table,
                                       Recordset rows)
    : m_connection(std::move(connection)), m_table(std::move(table)), m_rows(std::move(rows)) {
  m_values.resize(static_cast<std::size_t>(m_rows.GetFieldCount()));
  m_set.resize(m_values.size(), false);
}

UpdatableRecordset::UpdatableRecordset(UpdatableRecordset&&) noexcept = default;
UpdatableRecordset& UpdatableRecordset::operator=(UpdatableRecordset&& other) noexcept {
  m_insert.reset();  // before the connection it belongs to
  m_connection = std::move(other.m_connection);
  m_table = std::move(other.m_table);
  m_rows = std::move(other.m_rows);
  m_values = std::move(other.m_values);
  m_set = std::move(other.m_set);
  m_editing = other.m_editing;
  m_preparedFor = std::move(other.m_preparedFor);
  m_insert = std::move(other.m_insert);
  return *this;
}

UpdatableRecordset::~UpdatableRecordset() { m_insert.reset(); }

int UpdatableRecordset::RequireField(std::string_view name) const {
  int index = m_rows.FindField(name);
  if (index < 0) throw ComError(kPointer, messages::NoField(name));
  return index;
}

void UpdatableRecordset::AddNew() {
  for (auto& v : m_values) v = Variant();
  std::fill(m_set.begin(), m_set.end(), false);
  m_editing = true;
}

void UpdatableRecordset::PutCollect(std::string_view name, const Variant& value) {
  int index = RequireField(name);
  if (!m_editing) throw ComError(kDbEof, messages::NoNewRecord());
  auto i = static_cast<std::size_t>(index);
  m_values[i] = CoerceTo(m_rows.GetFieldType(index), value, m_rows.GetFieldName(index));
  m_set[i] = true;
}

const Variant& UpdatableRecordset::GetCollect(std::string_view name) const {
  return m_values[static_cast<std::size_t>(RequireField(name))];
}

void UpdatableRecordset::CancelUpdate() {
  for (auto& v : m_values) v = Variant();
  std::fill(m_set.begin(), m_set.end(), false);
  m_editing = false;
}

void UpdatableRecordset::Update() {
  if (!m_editing) throw ComError(kDbEof, messages::NoNewRecord());
  if (!m_connection || !m_connection->IsOpen()) throw ComError(kDbNotOpen, messages::ConnectionClosed());
  if (!m_insert || m_preparedFor != m_set) {
    m_insert.reset();
    std::string columns, markers;
    for (std::size_t i = 0; i < m_set.size(); ++i) {
      if (!m_set[i]) continue;
      if (!columns.empty()) {
        columns += ", ";
        markers += ", ";
      }
      columns += m_rows.GetFieldName(static_cast<int>(i));
      markers += '?';
    }
    // A row with no field set takes every column's default.
    std::string sql = columns.empty() ? "INSERT INTO " + m_table + " DEFAULT VALUES"
                                      : "INSERT INTO " + m_table + " (" + columns + ") VALUES (" + markers + ")";
    m_insert.reset(new Statement(m_connection, m_connection->Prepare(sql)));
    m_preparedFor = m_set;
  }
  int parameter = 0;
  for (std::size_t i = 0; i < m_set.size(); ++i)
    if (m_set[i]) m_insert->Bind(++parameter, m_values[i], m_rows.GetFieldType(static_cast<int>(i)));
  m_insert->Execute();
  m_editing = false;
}

}  // namespace varion::db
