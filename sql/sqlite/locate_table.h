// The table-valued function velmora_locate(road, northing, easting): one row, with station, offset, level and
// status.
#ifndef SQL_SQLITE_LOCATE_TABLE_H_
#define SQL_SQLITE_LOCATE_TABLE_H_

#include <sqlite3ext.h>

#include <memory>

#include "sql/sqlite/road_cache.h"

namespace velmora::sql {

int RegisterLocateTable(sqlite3* database, const std::shared_ptr<RoadCache>& cache);

}  // namespace velmora::sql

#endif  // SQL_SQLITE_LOCATE_TABLE_H_
