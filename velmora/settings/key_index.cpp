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

void KeyIndex::Add(std::wstring_view key, Position position) {
  if (!key.empty()) positions_.emplace(InLowerCase(key), position);
}

const KeyIndex::Position* KeyIndex::Find(std::wstring_view key) const {
  const auto found = positions_.find(InLowerCase(key));
  return found == positions_.end() ? nullptr : &found->second;
}

}  // namespace velmora
