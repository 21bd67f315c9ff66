// A dialog's stored configuration: two streams per profile section, user and service, kept as one
// row of vw_KonfiguracjaDialogu through a data factory. The first stream opens with a four-byte
// format value so that a row written by something else (or damaged) is recognised and ignored.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/export.h"
#include "db/connection.h"
#include "db/stream.h"

namespace varion {

// "VFG1" read as a little-endian 32-bit number; change it when the stream layout of the base
// dialog changes.
inline constexpr std::uint32_t kDialogCfgFormat = 0x31474656;

struct DialogCfgRecord {
  std::string section;
  std::int32_t user = 0;
  std::int32_t service = 0;
  std::vector<std::uint8_t> data;         // "vwcg_Data"
  std::vector<std::uint8_t> filtersData;  // "vwcg_FiltersData"
  bool operator==(const DialogCfgRecord&) const = default;
};

}  // namespace varion

// Where dialogs keep their configuration. Failures raise varion::ComError.
class VARION_API IFlgDataFactory {
 public:
  virtual ~IFlgDataFactory() = default;
  virtual std::optional<varion::DialogCfgRecord> LoadDialogCfg(std::string_view section, std::int32_t user,
                                                               std::int32_t service) = 0;
  // Replaces the record of the same section, user and service.
  virtual void SaveDialogCfg(const varion::DialogCfgRecord& record) = 0;
};

namespace varion {

// The factory over a database connection: the table vw_KonfiguracjaDialogu, one row per key,
// replaced in one transaction.
class VARION_API DbDialogCfgFactory final : public IFlgDataFactory {
 public:
  explicit DbDialogCfgFactory(db::Connection connection) : m_connection(std::move(connection)) {}
  std::optional<DialogCfgRecord> LoadDialogCfg(std::string_view section, std::int32_t user,
                                               std::int32_t service) override;
  void SaveDialogCfg(const DialogCfgRecord& record) override;

 private:
  db::Connection m_connection;
};

// The save and load algorithm of the dialog base, with the dialog's stream forms as functions.
struct DialogCfgStreams {
  std::function<void(db::ByteStream&)> data;     // SaveDlgCfg / LoadDlgCfg with a stream
  std::function<void(db::ByteStream&)> filters;  // SaveCustomFiltersCfg / LoadCustomFiltersCfg
};

// Builds both streams and stores them. False when nothing was stored: a stream could not be
// made (skipped silently) or the factory failed (logged).
VARION_API bool SaveDialogCfg(IFlgDataFactory& factory, std::string_view section, std::int32_t user,
                              std::int32_t service, const DialogCfgStreams& writers);
// Reads the record back and hands each stream to its reader. A missing record does nothing; a
// data stream without the format value is skipped with a log entry; a reader that throws is
// logged and the other stream still read. True when the data stream was read.
VARION_API bool LoadDialogCfg(IFlgDataFactory& factory, std::string_view section, std::int32_t user,
                              std::int32_t service, const DialogCfgStreams& readers);

// Small helpers for the stream forms: little-endian integers and texts with a 32-bit length.
// The readers raise ComError kFail on a short stream, which LoadDialogCfg logs.
VARION_API void CfgWriteInt32(db::ByteStream& s, std::int32_t value);
VARION_API void CfgWriteText(db::ByteStream& s, std::string_view text);
VARION_API std::int32_t CfgReadInt32(db::ByteStream& s);
VARION_API std::string CfgReadText(db::ByteStream& s);

}  // namespace varion
