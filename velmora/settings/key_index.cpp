#include "velmora/settings/key_index.h"

#include <algorithm>

#include "velmora/text/letters.h"

namespace velmora {
namespace {

std::wstring InLowerCase(std::wstring_view key) {
  std::wstring lower(key);
  std::transform(lower.begin(), lower.end(), lower.begin(), LowerLetter);
  return lower;
}

}  // namespace

void KeyIndex::Add(std::wstring_view key, Place place) {
  if (!key.empty()) places_.emplace(InLowerCase(key), place);
}

const KeyIndex::Place* KeyIndex::Find(std::wstring_view key) const {
  const auto found = places_.find(InLowerCase(key));
  return found == places_.end() ? nullptr : &found->second;
}

}  // namespace velmora
