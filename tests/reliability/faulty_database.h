// The registry's database on the faulty disk, on systems where it is a file.
#ifndef VELMORA_TESTS_RELIABILITY_FAULTY_DATABASE_H_
#define VELMORA_TESTS_RELIABILITY_FAULTY_DATABASE_H_

#include "tests/reliability/faulty_disk.h"

namespace velmora::testing {

// What the disks of this system do.
struct DiskPromises {
  bool database_is_a_file;      // the registry's
  bool folders_are_flushed;     // so that names are sure
  bool denials_are_waited_for;  // another program may hold the file
};
DiskPromises Promises();

// From now on what databases do passes the disk given last; null: straight on.
void SetDiskOfDatabases(FaultyDisk* disk);

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_RELIABILITY_FAULTY_DATABASE_H_
