#include "grid/layout_blobs.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>

namespace varion {
namespace {

// Expected bytes are spelled out here, independently of the writer.
void I(LayoutBytes& b, std::int32_t v) {
  const auto u = static_cast<std::uint32_t>(v);
  b.insert(b.end(), {std::uint8_t(u), std::uint8_t(u >> 8), std::uint8_t(u >> 16), std::uint8_t(u >> 24)});
}
void T(LayoutBytes& b, std::u16string_view s) {
  I(b, static_cast<std::int32_t>(s.size()));
  for (char16_t c : s) b.insert(b.end(), {std::uint8_t(c & 0xFF), std::uint8_t(c >> 8)});
}

TEST(LayoutBlobs, TableBlobBytes) {
  CVelTableInfoImpl t;
  t.tableID = 9;  // not stored
  t.secondID = 5;
  t.parentTableID = -2;
  t.alias = "a";
  t.tableName = "Tą";
  t.joinDirection = 1;
  t.source = 3;
  t.extraJoin = "x";
  const LayoutBytes expected = {
      0x01, 0x00, 0x00, 0x00,                          // count
      0x03, 0x00, 0x00, 0x00,                          // source
      0x05, 0x00, 0x00, 0x00,                          // second identifier
      0xFE, 0xFF, 0xFF, 0xFF,                          // parent
      0x01, 0x00, 0x00, 0x00, 0x61, 0x00,              // "a"
      0x02, 0x00, 0x00, 0x00, 0x54, 0x00, 0x05, 0x01,  // "Tą"
      0x00, 0x00, 0x00, 0x00,                          // key field
      0x00, 0x00, 0x00, 0x00,                          // link field
      0x00, 0x00, 0x00, 0x00,                          // condition
      0x01, 0x00, 0x00, 0x00,                          // join direction
      0x01, 0x00, 0x00, 0x00, 0x78, 0x00,              // "x"
  };
  EXPECT_EQ(WriteTableBlob(std::span(&t, 1)), expected);

  std::vector<CVelTableInfoImpl> read;
  ASSERT_EQ(ReadTableBlob(expected, read), kOk);
  ASSERT_EQ(read.size(), 1u);
  CVelTableInfoImpl back = t;
  back.tableID = 0;
  EXPECT_EQ(read[0], back);
}

TEST(LayoutBlobs, VisibilityBlobBytes) {
  const std::int32_t order[] = {2, 0, 7};
  const LayoutBytes expected = {0x03, 0, 0, 0, 0x02, 0, 0, 0, 0x00, 0, 0, 0, 0x07, 0, 0, 0};
  EXPECT_EQ(WriteVisibilityBlob(order), expected);
  std::vector<std::int32_t> read;
  ASSERT_EQ(ReadVisibilityBlob(expected, read), kOk);
  EXPECT_EQ(read, std::vector<std::int32_t>(std::begin(order), std::end(order)));
}

TEST(LayoutBlobs, ListBlobItemsInStoredOrder) {
  CVelListInfoCustImpl l;
  l.listID = 1;
  l.defSortColumnID = 2;
  l.defAscending = 3;
  l.title = "L";
  std::int32_t* eleven[] = {&l.allowMultiSel, &l.multiSel,   &l.allowSelectedSum, &l.selectedSum,
                            &l.wrapText,      &l.horLines,   &l.verLines,         &l.rowHeaderVisible,
                            &l.rowHeight,     &l.colHeaderHeight, &l.rowHeaderWidth};
  for (int i = 0; i < 11; ++i) *eleven[i] = 4 + i;
  l.keyField = "";
  l.zoom = 15;
  l.frozenColCount = 16;
  l.where = "W";
  l.strikeOutField = "";
  l.strikeOutActive = 17;
  l.helpKey = "";
  l.printTitle = "Ż";
  l.shadowMode = 18;
  l.autoStretch = 19;
  l.sortColumnID = 20;
  l.ascending = 21;
  l.allowCustomColumns = 22;

  LayoutBytes expected;
  I(expected, 1), I(expected, 2), I(expected, 3), T(expected, u"L");
  for (int i = 4; i <= 14; ++i) I(expected, i);
  T(expected, u""), I(expected, 15), I(expected, 16), T(expected, u"W"), T(expected, u""), I(expected, 17);
  T(expected, u""), T(expected, u"\u017B");
  for (int i = 18; i <= 22; ++i) I(expected, i);
  EXPECT_EQ(WriteListBlob(l), expected);

  CVelListInfoCustImpl read;
  ASSERT_EQ(ReadListBlob(expected, read), kOk);
  EXPECT_EQ(read, l);
}

TEST(LayoutBlobs, ColumnBlobItemsInStoredOrder) {
  CVelColInfoCustImpl c;
  // Integer item n holds 100 + n; text items hold one letter.
  c.source = 101, c.width = 102, c.listText = "c", c.format = "d";
  c.minWidth = 105, c.decimals = 106, c.calcType = 107, c.headerAlign = 108, c.multiLine = 109, c.visible = 110;
  c.caption = "k", c.toolTip = "l", c.summaryFormat = "m", c.filterField = "n";
  c.textColor = 115, c.backColor = 116, c.bold = 117, c.italic = 118, c.readOnly = 119, c.hyperlink = 120;
  c.forcePresent = 121, c.fieldType = 122, c.allowShow = 123, c.align = 124, c.allowSort = 125;
  c.allowFilter = 126, c.kind = 127;
  c.dbFieldName = "B", c.defCaption = "C", c.orderByAsc = "D", c.orderByDesc = "E", c.isExpression = 132;
  c.resultName = "G";
  // Not stored: they come from the program's description.
  c.description = "opis", c.tableID = 4, c.columnID = 5, c.helpID = 6, c.licenceModule = 7;

  const char16_t* texts[34] = {};
  texts[3] = u"c", texts[4] = u"d", texts[11] = u"k", texts[12] = u"l", texts[13] = u"m", texts[14] = u"n";
  texts[28] = u"B", texts[29] = u"C", texts[30] = u"D", texts[31] = u"E", texts[33] = u"G";
  LayoutBytes expected;
  I(expected, 1);  // count
  I(expected, 3);  // stored identifier
  for (int item = 1; item <= 33; ++item) {
    if (texts[item]) T(expected, texts[item]);
    else I(expected, 100 + item);
  }
  const StoredColumn stored[] = {{3, c}};
  EXPECT_EQ(WriteColumnBlob(stored), expected);

  std::vector<StoredColumn> read;
  ASSERT_EQ(ReadColumnBlob(expected, read), kOk);
  ASSERT_EQ(read.size(), 1u);
  EXPECT_EQ(read[0].columnID, 3);
  CVelColInfoCustImpl back = c;
  back.description.clear();
  back.tableID = back.columnID = back.helpID = back.licenceModule = 0;
  EXPECT_EQ(read[0].record, back);
}

TEST(LayoutBlobs, ExtremeValuesAndTextsRoundTrip) {
  CVelColInfoCustImpl c;
  c.forcePresent = 0xFFFFFFFFu;
  c.width = INT_MIN;
  c.textColor = INT_MAX;
  c.dbFieldName = "Zażółć gęślą jaźń";
  c.defCaption = std::string(3000, 'x') + "\x8A\x9A";  // Š š
  c.listText = "1=Tak\n0=Nie\n";
  const StoredColumn stored[] = {{kUserColumnID, c}, {-1, CVelColInfoCustImpl{}}};
  std::vector<StoredColumn> read;
  ASSERT_EQ(ReadColumnBlob(WriteColumnBlob(stored), read), kOk);
  ASSERT_EQ(read.size(), 2u);
  EXPECT_EQ(read[0].columnID, kUserColumnID);
  EXPECT_EQ(read[0].record, c);
  EXPECT_EQ(read[1].columnID, -1);
}

// Every reader, with a valid blob to damage.
struct Reader {
  const char* name;
  std::function<Status32(std::span<const std::uint8_t>)> read;
  LayoutBytes valid;
};

// Each reader checks that a failure leaves its output as it was.
std::vector<Reader> Readers() {
  CVelTableInfoImpl table;
  table.alias = "kh";
  table.tableName = "kh__Kontrahent";
  CVelColInfoCustImpl column;
  column.dbFieldName = "kh_Symbol";
  const StoredColumn columns[] = {{1, column}, {2, column}};
  const std::int32_t order[] = {1, 0};
  CVelListInfoCustImpl list;
  list.title = "Lista";
  auto readList = [](std::span<const std::uint8_t> b) {
    CVelListInfoCustImpl l;
    l.title = "x";
    const Status32 st = ReadListBlob(b, l);
    if (st < 0) {
      EXPECT_EQ(l.title, "x");
    }
    return st;
  };
  auto readColumns = [](std::span<const std::uint8_t> b) {
    std::vector<StoredColumn> v(1);
    const Status32 st = ReadColumnBlob(b, v);
    if (st < 0) {
      EXPECT_EQ(v.size(), 1u);
    }
    return st;
  };
  auto readTables = [](std::span<const std::uint8_t> b) {
    std::vector<CVelTableInfoImpl> v(3);
    const Status32 st = ReadTableBlob(b, v);
    if (st < 0) {
      EXPECT_EQ(v.size(), 3u);
    }
    return st;
  };
  auto readOrder = [](std::span<const std::uint8_t> b) {
    std::vector<std::int32_t> v(5);
    const Status32 st = ReadVisibilityBlob(b, v);
    if (st < 0) {
      EXPECT_EQ(v.size(), 5u);
    }
    return st;
  };
  return {
      {"list", readList, WriteListBlob(list)},
      {"columns", readColumns, WriteColumnBlob(columns)},
      {"tables", readTables, WriteTableBlob(std::span(&table, 1))},
      {"visibility", readOrder, WriteVisibilityBlob(order)},
  };
}

TEST(LayoutBlobs, EveryTruncationAndTrailingByteFailsAndLeavesTheOutput) {
  for (const Reader& r : Readers()) {
    SCOPED_TRACE(r.name);
    ASSERT_EQ(r.read(r.valid), kOk);
    for (size_t n = 0; n < r.valid.size(); ++n) {
      SCOPED_TRACE(n);
      EXPECT_EQ(r.read(std::span(r.valid.data(), n)), kFail);
    }
    LayoutBytes longer = r.valid;
    longer.push_back(0);
    EXPECT_EQ(r.read(longer), kFail);
  }
}

TEST(LayoutBlobs, ImpossibleCountsFail) {
  auto withCount = [](std::int32_t count, size_t bytesAfter) {
    LayoutBytes b;
    I(b, count);
    b.resize(b.size() + bytesAfter, 0);
    return b;
  };
  auto tableWithText = [](std::int32_t aliasCount, std::u16string_view tail) {
    LayoutBytes b;
    I(b, 1), I(b, 0), I(b, 0), I(b, 0), I(b, aliasCount);
    for (char16_t c : tail) b.insert(b.end(), {std::uint8_t(c), std::uint8_t(c >> 8)});
    return b;
  };
  const auto readers = Readers();
  const Reader& columns = readers[1];
  const Reader& tables = readers[2];
  const Reader& visibility = readers[3];
  LayoutBytes oddLength = tableWithText(2, u"a");  // the alias ends half way through its second unit
  oddLength.push_back('b');
  struct Case {
    const char* name;
    const Reader& reader;
    LayoutBytes blob;
  } cases[] = {
      {"negative column count", columns, withCount(-1, 1000)},
      {"huge column count", columns, withCount(INT_MAX, 1000)},
      {"column count one more than the bytes hold", columns, withCount(2, 2 * 136 - 1)},
      {"negative visibility count", visibility, withCount(-5, 40)},
      {"huge visibility count", visibility, withCount(0x40000000, 16)},
      {"visibility count past the end", visibility, withCount(3, 8)},
      {"negative text count", tables, tableWithText(-1, std::u16string(40, u'a'))},
      {"text count past the end", tables, tableWithText(100, std::u16string(30, u'a'))},
      {"huge text count", tables, tableWithText(INT_MAX, std::u16string(30, u'a'))},
      {"odd byte length", tables, oddLength},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(c.reader.read(c.blob), kFail);
  }
  // A count the bytes can hold, with records of zero texts, still reads.
  EXPECT_EQ(visibility.read(withCount(2, 8)), kOk);
}

TEST(LayoutBlobs, OversizedBlobIsRefusedUnread) {
  auto orderOfSize = [](size_t bytes) {
    LayoutBytes b(bytes, 0);
    const auto count = static_cast<std::uint32_t>((bytes - 4) / 4);
    for (int i = 0; i < 4; ++i) b[static_cast<size_t>(i)] = std::uint8_t(count >> (8 * i));
    return b;
  };
  std::vector<std::int32_t> order;
  EXPECT_EQ(ReadVisibilityBlob(orderOfSize(kMaxLayoutBlob + 4), order), kFail);
  EXPECT_TRUE(order.empty());
  ASSERT_EQ(ReadVisibilityBlob(orderOfSize(kMaxLayoutBlob), order), kOk);
  EXPECT_EQ(order.size(), (kMaxLayoutBlob - 4) / 4);
}

}  // namespace
}  // namespace varion
