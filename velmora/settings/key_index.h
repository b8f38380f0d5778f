// Places of keys in a list, looked up by the key's letters without regard to case.
#ifndef VELMORA_SETTINGS_KEY_INDEX_H_
#define VELMORA_SETTINGS_KEY_INDEX_H_

#include <string>
#include <string_view>
#include <unordered_map>

#include "velmora/export.h"

namespace velmora {

class VELMORA_API KeyIndex {
 public:
  struct Place {
    void* node = nullptr;
    int position = 0;  // from 1
  };

  void Clear() { places_.clear(); }
  // A key that is there already keeps its place; an empty one has none.
  void Add(std::wstring_view key, Place place);
  // Null when no such key was added.
  const Place* Find(std::wstring_view key) const;

 private:
  std::unordered_map<std::wstring, Place> places_;
};

}  // namespace velmora

#endif  // VELMORA_SETTINGS_KEY_INDEX_H_
