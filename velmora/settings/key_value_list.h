// What the configuration and parameter files share: a list of keys with their values, the look-up in it
// and the file of lines "key=value" that it is read from and written to.
#ifndef VELMORA_SETTINGS_KEY_VALUE_LIST_H_
#define VELMORA_SETTINGS_KEY_VALUE_LIST_H_

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "velmora/core/list0.h"
#include "velmora/export.h"
#include "velmora/platform/text_file.h"
#include "velmora/settings/key_index.h"
#include "velmora/settings/key_value_format.h"
#include "velmora/settings/settings_reader.h"
#include "velmora/text/letters.h"
#include "velmora/text/string.h"

namespace velmora {

// `Record` has the fields `nyckel` (key) and `varde` (value). Records stay in the order they were added
// in; of several with the same key the first one answers. Letters of keys compare without regard to case.
//
// An index beside the list answers look-ups in constant time. The first look-up after the list was changed,
// or walked where it has kMostShown records at most, builds it anew, and so does one that finds another key
// in the record where it led, or in the records that were the current and the marked one at the last look-up.
// A record can also be renamed through a pointer kept from before: the key is also sought in the records that
// a caller may have a pointer to and that stand before the one in the index. These are the ones that look-ups
// led to, and all of them after the list was walked or kMostShown were looked up. A look-up then takes as
// long as a walk, but in a list of more than kMostShown records only one that the index misses: there the
// index answers alone.
template <class Record>
class VELMORA_TEMPLATE_API KeyValueList : public list0<Record> {
 public:
  // Makes the first record with this key the current one. 0, or -1 when there is none: the last record
  // is then the current one. The empty key is never found. @{
  int FindKey(const CString& key) { return Seek(key.GetView()) ? 0 : -1; }
  int FindKey(const wchar_t* key) { return FindKey(CString(key)); }
  // @}

  // The value of the first record with this key, which becomes the current one. Empty when there is none. @{
  CString ReadKey(const CString& key) {
    return Seek(key.GetView()) ? CString(FieldText(this->pael->varde)) : CString();
  }
  CString ReadKey(const wchar_t* key) { return ReadKey(CString(key)); }
  // @}

 protected:
  // More records than the suite writes; a file with more is refused.
  static constexpr int kMostRecords = 1 << 17;

  // What PutKey did.
  enum class Put { kStored, kUnchanged, kRefused };

  // Stores the value in memory, under a new key at the end of the list. Refused are a new key without
  // characters or with too many, and a value that does not fit; a new key then stays, with no value.
  Put PutKey(const CString& key, const CString& value) {
    if (!Seek(key.GetView())) {
      if (key.IsEmpty() || key.GetLength() >= kKeyRoom || !Append(key.GetView(), {})) return Put::kRefused;
    } else if (FieldText(this->pael->varde) == value.GetView()) {
      return Put::kUnchanged;
    }
    if (value.GetLength() >= kValueRoom) return Put::kRefused;
    CopyToField(this->pael->varde, value.GetView());
    return Put::kStored;
  }

  // Appends a record; the index follows when it is in step. False when the list is full.
  bool Append(std::wstring_view key, std::wstring_view value) {
    if (this->antal >= kMostRecords) return false;
    const bool in_step = InStep();
    const bool seen = this->Changes() == seen_changes_;
    this->Ny(1);
    CopyToField(this->pael->nyckel, key);
    CopyToField(this->pael->varde, value);
    if (in_step) {
      index_.Add(FieldText(this->pael->nyckel), {this->aktuell, this->antal});
      KeepStep();
    }
    if (seen) seen_changes_ = this->Changes();
    return true;
  }

  // Fills the empty list from a file. False, with the list empty, when it cannot be opened or read to its
  // end, as a list that is written back must hold the whole file.
  bool ReadFrom(const CString& path) {
    SettingsReader reader;
    if (!reader.Open(path)) return false;
    bool good = true;
    for (CString line; good && reader.ReadLine(&line);) {
      const KeyValueLine parsed = ParseKeyValueLine(line.GetView());
      if (parsed.kind == KeyValueLine::Kind::kRecord)
        good = Append(parsed.key, parsed.value);
      else if (parsed.kind == KeyValueLine::Kind::kBlank)
        good = Append({}, {});
    }
    if (good && !reader.Failed()) return true;
    this->DeleteAll();
    return false;
  }

  // Writes every record that has a value.
  bool WriteTo(const CString& path) {
    TextWriter writer;
    if (!writer.Begin(path)) return false;
    for (auto* node = this->forsta; node != nullptr; node = node->next) {
      const auto value = FieldText(node->record.varde);
      if (!value.empty()) writer.Write(FormatKeyValueLine(FieldText(node->record.nyckel), value).GetView());
    }
    return writer.Commit();
  }

 private:
  using Node = typename list0<Record>::Node;

  static constexpr size_t kMostShown = 4096;

  bool Seek(std::wstring_view key) {
    if (this->Changes() != seen_changes_) all_shown_ = true;
    if (!InStep()) Build();
    const KeyIndex::Position* at = key.empty() ? nullptr : index_.Find(key);
    const Node* indexed = at == nullptr ? nullptr : static_cast<Node*>(at->node);
    if ((indexed != nullptr && !EqualNoCase(KeyAt(indexed), key)) || IsShownBefore(indexed, key)) {
      Build();
      at = index_.Find(key);
    }
    if (at == nullptr)
      this->End();
    else
      this->Reposition(static_cast<Node*>(at->node), at->number);
    KeepStep();
    return at != nullptr;
  }

  // Whether a record that a caller may have a pointer to has this key now, before the one in the index.
  // Look-ups lead to the first record with a key only.
  bool IsShownBefore(const Node* indexed, std::wstring_view key) const {
    const auto has = [&](const Node* node) { return node != indexed && EqualNoCase(KeyAt(node), key); };
    if (key.empty() || (indexed != nullptr && IsLong())) return false;
    if (!all_shown_) return std::any_of(shown_.begin(), shown_.end(), has);
    const Node* node = this->forsta;
    while (node != indexed && !has(node)) node = node->next;
    return node != indexed;
  }

  void Build() {
    index_.Clear();
    int position = 0;
    for (auto* node = this->forsta; node != nullptr; node = node->next)
      index_.Add(FieldText(node->record.nyckel), {node, ++position});
  }

  bool InStep() const {
    const bool walked = this->Changes() != seen_changes_;
    return built_ && this->LinkChanges() == seen_link_changes_ && !(walked && !IsLong()) &&
           KeyAt(current_) == current_key_ && KeyAt(marked_) == marked_key_;
  }
  bool IsLong() const { return this->antal > static_cast<int>(kMostShown); }
  void KeepStep() {
    built_ = true;
    seen_changes_ = this->Changes();
    seen_link_changes_ = this->LinkChanges();
    current_ = this->aktuell;
    marked_ = this->mark;
    current_key_ = KeyAt(current_);
    marked_key_ = KeyAt(marked_);
    if (!all_shown_ && this->aktuell != nullptr) shown_.insert(this->aktuell);
    all_shown_ = all_shown_ || shown_.size() > kMostShown;
  }
  static std::wstring_view KeyAt(const Node* node) {
    return node == nullptr ? std::wstring_view() : FieldText(node->record.nyckel);
  }

  KeyIndex index_;
  bool built_ = false;
  std::uint64_t seen_changes_ = 0;
  std::uint64_t seen_link_changes_ = 0;
  const Node* current_ = nullptr;  // at the last look-up, and the key it had
  const Node* marked_ = nullptr;
  std::wstring current_key_;
  std::wstring marked_key_;
  std::unordered_set<const Node*> shown_;
  bool all_shown_ = false;
};

}  // namespace velmora

#endif  // VELMORA_SETTINGS_KEY_VALUE_LIST_H_
