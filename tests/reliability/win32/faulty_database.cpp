#include "tests/reliability/faulty_disk.h"

namespace velmora::testing {

DiskPromises Promises() {
  return {.database_is_a_file = false, .folders_are_flushed = false, .denials_are_waited_for = true};
}

void SetDiskOfDatabases(FaultyDisk* /*disk*/) {}

}  // namespace velmora::testing
