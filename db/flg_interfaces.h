// The host's instance and object interfaces as the library consumes them: the instance hands out
// the database connection and who is working where; an object (a document, a contractor card)
// says what it is, so that log rows and messages can name it. The library's own implementation
// of the instance sits on CRtInstance.
#pragma once

#include <cstdint>
#include <string>

#include "base/export.h"
#include "db/connection.h"

struct VARION_API IFlgInstance {
  virtual ~IFlgInstance() = default;
  // Raises ComError when the instance has no open connection.
  virtual varion::db::Connection GetConnection() = 0;
  virtual std::int32_t GetUserId() = 0;
  virtual std::string GetUserIdentifier() = 0;  // code page 1250
  virtual std::string GetWorkstationName() = 0;
};

struct VARION_API IFlgItem {
  virtual ~IFlgItem() = default;
  // May raise ComError when the object cannot answer (a closed document, a lost server).
  virtual std::int32_t GetObjectType() = 0;
  virtual std::int32_t GetObjectTypeEx() = 0;
  virtual std::int32_t GetObjectId() = 0;
};

namespace varion {

// The running instance (CRtInstance) seen through IFlgInstance; one object for the whole process,
// which follows whatever instance is installed at the moment of each call.
VARION_API IFlgInstance* RunningFlgInstance();

}  // namespace varion
