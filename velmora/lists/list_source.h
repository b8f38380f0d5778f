// Where the rows of a list come from: a text file, the group LOCA of an AGS4 file, or a layer of points of a
// GeoPackage. The last two are given as text with tabs between the fields and one line a row, so that
// columns, problems and carried columns are those of any other list.
#ifndef VELMORA_LISTS_LIST_SOURCE_H_
#define VELMORA_LISTS_LIST_SOURCE_H_

#include <cstdint>
#include <functional>
#include <string>

namespace velmora {

struct ListSource {
  // Appends about `size` bytes to *text, nothing at the end. False when the file cannot be read on.
  std::function<bool(size_t size, std::string* text)> read;
  std::uint64_t size = 0;  // bytes, 0 when unknown
  std::int64_t first_line = 1;
  bool packs_numbers = false;  // fields may be as in packed_number.h
};

// "-" is standard input, "x.gpkg:wells" the layer "wells" of a GeoPackage. A list in AGS has the lines of its
// file; of a GeoPackage the features are counted from 1. Throws a ListError when the file cannot be opened,
// and so does `read` where an AGS file is not a list.
ListSource OpenList(const std::string& list);

// Whether the list is text, to which separator, decimal sign and encoding apply.
bool IsTextList(const std::string& list);

// The file of a list, without a layer.
std::string FileOfList(const std::string& list);

// A file of at most 256 MB. Throws a ListError.
std::string ReadWholeList(const std::string& list);

}  // namespace velmora

#endif  // VELMORA_LISTS_LIST_SOURCE_H_
