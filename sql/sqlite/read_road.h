// velmora_read(path [, name]): the road in a file of any format, as the bytes of an alignment file. An error
// unless the host has allowed files; never called from views, triggers and other parts of a schema.
#ifndef SQL_SQLITE_READ_ROAD_H_
#define SQL_SQLITE_READ_ROAD_H_

#include <sqlite3ext.h>

namespace velmora::sql {

int RegisterReadRoad(sqlite3* database, bool files);

}  // namespace velmora::sql

#endif  // SQL_SQLITE_READ_ROAD_H_
