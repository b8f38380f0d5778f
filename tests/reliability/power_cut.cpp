#include "tests/reliability/power_cut.h"

#include <algorithm>
#include <utility>

namespace velmora::testing {
namespace {

// "." for the root.
std::string FolderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash);
}

}  // namespace

UnsureDisk::UnsureDisk(const Tree& tree) {
  for (const auto& [path, entry] : tree) names_[path] = Add(entry);
  sure_names_ = names_;
}

size_t UnsureDisk::Add(TreeEntry entry) {
  files_.push_back({.sure = std::move(entry), .unsure = {}});
  return files_.size() - 1;
}

void UnsureDisk::Perform(const NameChange& change, Names* names) {
  names->erase(change.former_path);
  if (change.file == kGone)
    names->erase(change.path);
  else
    (*names)[change.path] = change.file;
}

void UnsureDisk::Perform(const Write& write, std::string* bytes) {
  const size_t offset = write.offset == DiskEvent::kAtEnd ? bytes->size() : write.offset;
  const size_t end = offset + write.bytes.size();
  if (write.truncates || end > bytes->size()) bytes->resize(end);
  bytes->replace(offset, write.bytes.size(), write.bytes);
}

void UnsureDisk::Change(const NameChange& change) {
  Perform(change, &names_);
  unsure_names_.push_back(change);
}

void UnsureDisk::FlushFolder(const std::string& folder) {
  std::erase_if(unsure_names_, [&](const NameChange& change) {
    if (FolderOf(change.path) != folder) return false;
    Perform(change, &sure_names_);
    return true;
  });
}

void UnsureDisk::Apply(const DiskEvent& event) {
  const auto at = names_.find(event.path);
  const size_t file = at == names_.end() ? kGone : at->second;
  switch (event.action) {
    case DiskAction::kCreate:
      return Change({.file = Add({}), .path = event.path, .former_path = {}});
    case DiskAction::kMakeFolder:
      return Change({.file = Add({.folder = true, .bytes = {}, .modified = {}}),
                     .path = event.path,
                     .former_path = {}});
    case DiskAction::kRename:
      return Change({.file = file, .path = event.new_path, .former_path = event.path});
    case DiskAction::kRemove:
    case DiskAction::kRemoveFolder:
      return Change({.file = kGone, .path = event.path, .former_path = {}});
    case DiskAction::kWrite: {
      // An offset at the end is taken now: what lies before it may get lost.
      const size_t size = Content(files_.at(file), Bytes::kKept).size();
      const size_t offset = event.offset == DiskEvent::kAtEnd ? size : event.offset;
      files_.at(file).unsure.push_back({event.bytes, offset, event.truncates});
      return;
    }
    case DiskAction::kFlush:
      files_.at(file).sure.bytes = Content(files_.at(file), Bytes::kKept);
      files_.at(file).unsure.clear();
      return;
    case DiskAction::kFlushFolder:
      return FlushFolder(event.path);
    case DiskAction::kOpenToRead:
    case DiskAction::kRead:
      return;
  }
}

std::string UnsureDisk::Content(const File& file, Bytes which) {
  std::vector<Write> writes = file.unsure;
  const auto first_half = [&](size_t i) {
    writes.resize(i + 1);
    writes[i].bytes.resize(writes[i].bytes.size() / 2);
  };
  if (!writes.empty()) {
    if (which == Bytes::kLost) writes.clear();
    if (which == Bytes::kCutShort) first_half(writes.size() / 2);
    if (which == Bytes::kLastTorn) first_half(writes.size() - 1);
    if (which == Bytes::kFirstMissing) {
      const size_t half = writes[0].bytes.size() / 2;
      writes[0].bytes.erase(0, half);
      writes[0].offset += half;
    }
  }
  std::string bytes = file.sure.bytes;
  for (const Write& write : writes) Perform(write, &bytes);
  return bytes;
}

std::vector<Tree> UnsureDisk::States() const {
  const bool all_flushed =
      std::all_of(files_.begin(), files_.end(), [](const File& f) { return f.unsure.empty(); });
  std::vector<Bytes> kinds = {Bytes::kKept};
  if (!all_flushed)
    kinds = {Bytes::kKept, Bytes::kLost, Bytes::kCutShort, Bytes::kLastTorn, Bytes::kFirstMissing};
  std::vector<Tree> states;
  Names names = sure_names_;
  for (size_t kept = 0;; ++kept) {
    for (const Bytes which : kinds) {
      Tree& tree = states.emplace_back();
      for (const auto& [path, file] : names) {
        const std::string folder = FolderOf(path);
        if (folder != "." && !tree.contains(folder)) continue;  // it went with its folder
        TreeEntry entry = files_[file].sure;
        entry.bytes = Content(files_[file], which);
        tree[path] = std::move(entry);
      }
    }
    if (kept == unsure_names_.size()) return states;
    Perform(unsure_names_[kept], &names);
  }
}

}  // namespace velmora::testing
