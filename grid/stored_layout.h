// The stored layout of one grid for one user: a row of gr__KonfiguracjaEx, and the statements
// that read it and the user-defined grids of gr_GridWlasny.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/export.h"
#include "base/variant.h"
#include "grid/layout_stream.h"

namespace varion {

constexpr const char* kLayoutTable = "gr__KonfiguracjaEx";
constexpr const char* kLayoutSectionField = "cge_Section";
constexpr const char* kLayoutUserField = "cge_User";
constexpr const char* kLayoutServiceField = "cge_Service";
// Written into cge_LastUpdateVersion by every save.
constexpr const char* kLayoutVersionText = "1.8700.0.6757";

struct StoredLayoutRow {
  std::string section;
  std::int32_t user = 0;
  std::int32_t service = 0;
  Variant version;                        // cge_Version: the grid version of the saving program
  std::optional<LayoutBytes> listInfo;    // nullopt: the field is missing or NULL
  std::optional<LayoutBytes> columns;
  std::optional<LayoutBytes> tables;
  std::optional<LayoutBytes> visibility;
  std::string sql;                        // cge_Sql; NULL reads as ""
  std::string lastUpdateVersion;          // cge_LastUpdateVersion; NULL reads as ""
};

// SELECT of one layout row. The section is written with its apostrophes doubled.
VARION_API std::string MakeLayoutSelect(const std::string& section, std::int32_t user, std::int32_t service);
// The WHERE part alone, for the DELETE and existence checks that address the same row.
VARION_API std::string MakeLayoutKeyWhere(const std::string& section, std::int32_t user, std::int32_t service);
// SELECT of a user-defined grid; gridType adds the grid type condition.
VARION_API std::string MakeCustomGridSelect(const std::string& section, std::int32_t moduleId,
                                            std::optional<std::int32_t> gridType);

// Compares dotted version texts ("1.8700.0.6757") part by part as numbers, a missing part being
// 0. Returns nullopt when either text is not such a version.
VARION_API std::optional<int> CompareVersionTexts(const std::string& a, const std::string& b);

}  // namespace varion
