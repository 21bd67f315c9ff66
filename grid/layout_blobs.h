// The four stored layout blobs of a grid (list, columns, tables, visibility) and the column
// record inside the column blob. Readers parse into fresh values and return kFail for a blob
// that is truncated, has trailing bytes or holds an impossible count; the caller's data is then
// left as it was.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/export.h"
#include "base/status.h"
#include "grid/grid_info.h"
#include "grid/layout_stream.h"

namespace varion {

// Column identifier stored for a column that the user added (a custom column); it is not an
// identifier of any column the program declares.
constexpr std::int32_t kUserColumnID = 9999;

// Smallest sizes in bytes, used to refuse counts that the blob cannot hold.
constexpr std::size_t kMinColumnRecordBytes = 33 * 4;
constexpr std::size_t kMinTableRecordBytes = 10 * 4;

struct StoredColumn {
  std::int32_t columnID = 0;
  CVelColInfoCustImpl record;
};

// One column record: 33 items, without the identifier that precedes it in the column blob.
VARION_API void SaveColumnRecord(LayoutWriter& out, const CVelColInfoCustImpl& col);
VARION_API bool LoadColumnRecord(LayoutReader& in, CVelColInfoCustImpl& col);
// Copies the 33 stored items, leaving the identifiers and the other description items.
VARION_API void CopyStoredItems(const CVelColInfoCustImpl& from, CVelColInfoCustImpl& to);

VARION_API LayoutBytes WriteListBlob(const CVelListInfoCustImpl& list);
VARION_API LayoutBytes WriteColumnBlob(std::span<const StoredColumn> columns);
VARION_API LayoutBytes WriteTableBlob(std::span<const CVelTableInfoImpl> tables);
VARION_API LayoutBytes WriteVisibilityBlob(std::span<const std::int32_t> order);

VARION_API Status32 ReadListBlob(std::span<const std::uint8_t> blob, CVelListInfoCustImpl& list);
VARION_API Status32 ReadColumnBlob(std::span<const std::uint8_t> blob, std::vector<StoredColumn>& columns);
// Table identifiers are not stored: they come back as 0.
VARION_API Status32 ReadTableBlob(std::span<const std::uint8_t> blob, std::vector<CVelTableInfoImpl>& tables);
VARION_API Status32 ReadVisibilityBlob(std::span<const std::uint8_t> blob, std::vector<std::int32_t>& order);

}  // namespace varion
