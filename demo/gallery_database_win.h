// The gallery's database, opened once through the library's ODBC backend on the SQLite driver
// and made the running instance's connection, so that every page reaches it as a host would.
#pragma once

#include "db/connection.h"
#include "demo/gallery_win.h"

namespace varion::demo {

// Opens the database, creating it afresh on the first call of the run. Raises ComError.
db::Connection GalleryDatabase(const GalleryContext& ctx);

}  // namespace varion::demo
