// What the columns of lists hold, and the titles by which they are found. docs/point-lists.md lists the same
// titles; the test `titles` compares them.
#ifndef VELMORA_LISTS_TITLES_H_
#define VELMORA_LISTS_TITLES_H_

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

// A column that a reader asks for. Without a header the columns are in the order of their roles.
struct Role {
  std::string key;                        // in --columns
  std::string name;                       // in messages, and in --columns too
  bool required;                          // a number that every row needs
  std::vector<std::wstring_view> titles;  // of several present the earlier in this list wins
  bool has_position = true;               // false: found by its title or --columns alone
};

enum PointRole : size_t { kPointId, kNorthing, kEasting, kLevel };
const std::vector<Role>& PointRoles();

enum StationRole : size_t { kStationId, kStation, kOffset, kSide };
const std::vector<Role>& StationRoles();

// A title as titles are compared: without a unit in brackets, blanks and the marks - _ . : in it, in lower
// case, and with a for å and ä, o for ö.
std::wstring TitleKey(std::wstring_view title);

}  // namespace velmora

#endif  // VELMORA_LISTS_TITLES_H_
