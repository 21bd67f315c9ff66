// The gallery's database: the library's schema and a few rows of every dictionary the pages show,
// created through the database layer on whatever backend the gallery runs on.
#pragma once

#include "db/connection.h"

namespace varion::demo {

// Creates the schema on an empty database and fills the dictionaries. Raises ComError.
void CreateGalleryDatabase(const db::Connection& connection);

}  // namespace varion::demo
