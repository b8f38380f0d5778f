// Positions of keys in a list, looked up by the key's letters without regard to case.
#ifndef VELMORA_SETTINGS_KEY_INDEX_H_
#define VELMORA_SETTINGS_KEY_INDEX_H_

#include <string>
#include <string_view>
#include <unordered_map>

#include "velmora/export.h"

namespace velmora {

// Look-up and addition take constant time. Not thread-safe.
class VELMORA_API KeyIndex {
 public:
  // Where a key stands.
  struct Position {
    void* node = nullptr;  // the list's element; not owned
    int number = 0;        // from 1
  };

  // Forgets every key.
  void Clear() { positions_.clear(); }
  // A key that is there already keeps its position; an empty one is not added.
  void Add(std::wstring_view key, Position position);
  // Null when no such key was added.
  const Position* Find(std::wstring_view key) const;

 private:
  std::unordered_map<std::wstring, Position> positions_;
};

}  // namespace velmora

#endif  // VELMORA_SETTINGS_KEY_INDEX_H_
