// Status codes as 32-bit COM-style values, and the one error type that carries a code and a
// server's message across the database and COM boundaries.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "base/export.h"

namespace varion {

using Status32 = std::int32_t;

constexpr Status32 kOk = 0;
constexpr Status32 kFalse = 1;
constexpr Status32 kFail = static_cast<Status32>(0x80004005u);          // general failure
constexpr Status32 kPointer = static_cast<Status32>(0x80004003u);       // missing stream or field
constexpr Status32 kNotImpl = static_cast<Status32>(0x80004001u);
constexpr Status32 kUnexpected = static_cast<Status32>(0x8000FFFFu);
constexpr Status32 kInvalidArg = static_cast<Status32>(0x80070057u);
constexpr Status32 kOutOfMemory = static_cast<Status32>(0x8007000Eu);
constexpr Status32 kTypeMismatch = static_cast<Status32>(0x80020005u);  // DISP_E_TYPEMISMATCH
constexpr Status32 kOverflow = static_cast<Status32>(0x8002000Au);      // DISP_E_OVERFLOW
constexpr Status32 kBadVarType = static_cast<Status32>(0x80020008u);    // DISP_E_BADVARTYPE
constexpr Status32 kDbError = static_cast<Status32>(0x80040E14u);       // DB_E_ERRORSINCOMMAND
constexpr Status32 kDbConnection = static_cast<Status32>(0x80004005u);  // ADO reports a lost link as general failure
constexpr Status32 kDbNotOpen = static_cast<Status32>(0x800A0E78u);     // adErrObjectClosed
constexpr Status32 kDbEof = static_cast<Status32>(0x800A0BCDu);         // adErrNoCurrentRecord

constexpr bool Succeeded(Status32 s) { return s >= 0; }
constexpr bool Failed(Status32 s) { return s < 0; }

// The COM-style error: a status code, the message (code page 1250) and, for database errors,
// the five-character SQLSTATE the server reported.
class VARION_API ComError : public std::runtime_error {
 public:
  ComError(Status32 code, std::string message, std::string sqlState = {});
  Status32 Code() const { return m_code; }
  const std::string& Message() const { return m_message; }
  const std::string& SqlState() const { return m_sqlState; }

 private:
  Status32 m_code;
  std::string m_message;
  std::string m_sqlState;
};

// "0x80004005" style text of a code, for logs and messages.
VARION_API std::string StatusText(Status32 code);

}  // namespace varion
