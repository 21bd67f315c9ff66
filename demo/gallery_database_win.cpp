#include "demo/gallery_database_win.h"

#include "db/driver_path_win.h"
#include "db/rt_instance.h"
#include "demo/gallery_data.h"

namespace varion::demo {

db::Connection GalleryDatabase(const GalleryContext& ctx) {
  static db::Connection connection;
  if (connection.IsOpen()) return connection;
  // A fresh file each run: the gallery shows what the library creates.
  DeleteFileW(ctx.databasePath.c_str());
  db::Connection opened = db::Connection::Open(db::SqliteOdbcConnectionString(ctx.databasePath));
  CreateGalleryDatabase(opened);
  CRtInstance::Install({opened, 1, "ADMIN", ""});
  connection = opened;
  return connection;
}

}  // namespace varion::demo
