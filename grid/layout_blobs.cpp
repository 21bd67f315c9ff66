#include "grid/layout_blobs.h"

namespace varion {
namespace {

// The column record as one table of members, in stored order. The writer and the reader walk
// the same table, so the two cannot drift apart.
struct ColumnItem {
  std::int32_t CVelColInfoCustImpl::*number = nullptr;
  std::uint32_t CVelColInfoCustImpl::*unsignedNumber = nullptr;
  std::string CVelColInfoCustImpl::*text = nullptr;
};

using C = CVelColInfoCustImpl;
constexpr ColumnItem I(std::int32_t C::*m) { return {m, nullptr, nullptr}; }
constexpr ColumnItem U(std::uint32_t C::*m) { return {nullptr, m, nullptr}; }
constexpr ColumnItem T(std::string C::*m) { return {nullptr, nullptr, m}; }

const ColumnItem kColumnItems[] = {
    I(&C::source),      I(&C::width),        T(&C::listText),       T(&C::format),
    I(&C::minWidth),    I(&C::decimals),     I(&C::calcType),       I(&C::headerAlign),
    I(&C::multiLine),   I(&C::visible),      T(&C::caption),        T(&C::toolTip),
    T(&C::summaryFormat), T(&C::filterField), I(&C::textColor),    I(&C::backColor),
    I(&C::bold),        I(&C::italic),       I(&C::readOnly),       I(&C::hyperlink),
    U(&C::forcePresent), I(&C::fieldType),   I(&C::allowShow),      I(&C::align),
    I(&C::allowSort),   I(&C::allowFilter),  I(&C::kind),           T(&C::dbFieldName),
    T(&C::defCaption),  T(&C::orderByAsc),   T(&C::orderByDesc),    I(&C::isExpression),
    T(&C::resultName),
};
static_assert(std::size(kColumnItems) == 33);

struct ListItem {
  std::int32_t CVelListInfoCustImpl::*number = nullptr;
  std::string CVelListInfoCustImpl::*text = nullptr;
};
using L = CVelListInfoCustImpl;
constexpr ListItem LI(std::int32_t L::*m) { return {m, nullptr}; }
constexpr ListItem LT(std::string L::*m) { return {nullptr, m}; }

const ListItem kListItems[] = {
    LI(&L::listID),         LI(&L::defSortColumnID), LI(&L::defAscending),    LT(&L::title),
    LI(&L::allowMultiSel),  LI(&L::multiSel),        LI(&L::allowSelectedSum), LI(&L::selectedSum),
    LI(&L::wrapText),       LI(&L::horLines),        LI(&L::verLines),        LI(&L::rowHeaderVisible),
    LI(&L::rowHeight),      LI(&L::colHeaderHeight), LI(&L::rowHeaderWidth),  LT(&L::keyField),
    LI(&L::zoom),           LI(&L::frozenColCount),  LT(&L::where),           LT(&L::strikeOutField),
    LI(&L::strikeOutActive), LT(&L::helpKey),        LT(&L::printTitle),      LI(&L::shadowMode),
    LI(&L::autoStretch),    LI(&L::sortColumnID),    LI(&L::ascending),       LI(&L::allowCustomColumns),
};
static_assert(std::size(kListItems) == 28);

Status32 Finish(const LayoutReader& in) { return in.AtEnd() ? kOk : kFail; }

}  // namespace

void SaveColumnRecord(LayoutWriter& out, const CVelColInfoCustImpl& col) {
  for (const ColumnItem& item : kColumnItems) {
    if (item.number) out.PutInt32(col.*item.number);
    else if (item.unsignedNumber) out.PutInt32(static_cast<std::int32_t>(col.*item.unsignedNumber));
    else out.PutText(col.*item.text);
  }
}

bool LoadColumnRecord(LayoutReader& in, CVelColInfoCustImpl& col) {
  for (const ColumnItem& item : kColumnItems) {
    if (item.number) in.GetInt32(col.*item.number);
    else if (item.unsignedNumber) in.GetUInt32(col.*item.unsignedNumber);
    else in.GetText(col.*item.text);
  }
  return in.Ok();
}

void CopyStoredItems(const CVelColInfoCustImpl& from, CVelColInfoCustImpl& to) {
  for (const ColumnItem& item : kColumnItems) {
    if (item.number) to.*item.number = from.*item.number;
    else if (item.unsignedNumber) to.*item.unsignedNumber = from.*item.unsignedNumber;
    else to.*item.text = from.*item.text;
  }
}

LayoutBytes WriteListBlob(const CVelListInfoCustImpl& list) {
  LayoutWriter out;
  for (const ListItem& item : kListItems) {
    if (item.number) out.PutInt32(list.*item.number);
    else out.PutText(list.*item.text);
  }
  return out.Take();
}

LayoutBytes WriteColumnBlob(std::span<const StoredColumn> columns) {
  LayoutWriter out;
  out.Reserve(4 + columns.size() * (4 + kMinColumnRecordBytes + 64));
  out.PutInt32(static_cast<std::int32_t>(columns.size()));
  for (const StoredColumn& c : columns) {
    out.PutInt32(c.columnID);
    SaveColumnRecord(out, c.record);
  }
  return out.Take();
}

LayoutBytes WriteTableBlob(std::span<const CVelTableInfoImpl> tables) {
  LayoutWriter out;
  out.PutInt32(static_cast<std::int32_t>(tables.size()));
  for (const CVelTableInfoImpl& t : tables) {
    out.PutInt32(t.source);
    out.PutInt32(t.secondID);
    out.PutInt32(t.parentTableID);
    out.PutText(t.alias);
    out.PutText(t.tableName);
    out.PutText(t.keyField);
    out.PutText(t.linkField);
    out.PutText(t.condition);
    out.PutInt32(static_cast<std::int32_t>(t.joinDirection));
    out.PutText(t.extraJoin);
  }
  return out.Take();
}

LayoutBytes WriteVisibilityBlob(std::span<const std::int32_t> order) {
  LayoutWriter out;
  out.PutInt32(static_cast<std::int32_t>(order.size()));
  for (std::int32_t index : order) out.PutInt32(index);
  return out.Take();
}

Status32 ReadListBlob(std::span<const std::uint8_t> blob, CVelListInfoCustImpl& list) {
  LayoutReader in(blob);
  CVelListInfoCustImpl read;
  for (const ListItem& item : kListItems) {
    if (item.number) in.GetInt32(read.*item.number);
    else in.GetText(read.*item.text);
  }
  if (Failed(Finish(in))) return kFail;
  list = std::move(read);
  return kOk;
}

Status32 ReadColumnBlob(std::span<const std::uint8_t> blob, std::vector<StoredColumn>& columns) {
  LayoutReader in(blob);
  std::int32_t count = 0;
  if (!in.GetCount(count, 4 + kMinColumnRecordBytes)) return kFail;
  std::vector<StoredColumn> read(static_cast<std::size_t>(count));
  for (StoredColumn& c : read) {
    in.GetInt32(c.columnID);
    if (!LoadColumnRecord(in, c.record)) return kFail;
  }
  if (Failed(Finish(in))) return kFail;
  columns = std::move(read);
  return kOk;
}

Status32 ReadTableBlob(std::span<const std::uint8_t> blob, std::vector<CVelTableInfoImpl>& tables) {
  LayoutReader in(blob);
  std::int32_t count = 0;
  if (!in.GetCount(count, kMinTableRecordBytes)) return kFail;
  std::vector<CVelTableInfoImpl> read(static_cast<std::size_t>(count));
  for (CVelTableInfoImpl& t : read) {
    in.GetInt32(t.source);
    in.GetInt32(t.secondID);
    in.GetInt32(t.parentTableID);
    in.GetText(t.alias);
    in.GetText(t.tableName);
    in.GetText(t.keyField);
    in.GetText(t.linkField);
    in.GetText(t.condition);
    in.GetUInt32(t.joinDirection);
    in.GetText(t.extraJoin);
    if (!in.Ok()) return kFail;
  }
  if (Failed(Finish(in))) return kFail;
  tables = std::move(read);
  return kOk;
}

Status32 ReadVisibilityBlob(std::span<const std::uint8_t> blob, std::vector<std::int32_t>& order) {
  LayoutReader in(blob);
  std::int32_t count = 0;
  if (!in.GetCount(count, 4)) return kFail;
  std::vector<std::int32_t> read(static_cast<std::size_t>(count));
  for (std::int32_t& index : read) in.GetInt32(index);
  if (Failed(Finish(in))) return kFail;
  order = std::move(read);
  return kOk;
}

}  // namespace varion
