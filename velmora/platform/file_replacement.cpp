#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "velmora/platform/files.h"
#include "velmora/platform/new_file.h"

namespace velmora {
namespace {

constexpr size_t kBufferSize = size_t{64} << 10;

struct HeldNames {
  std::mutex mutex;
  std::map<std::string, std::thread::id> by;
};

HeldNames& Held() {
  static auto* const held = new HeldNames;  // for objects that are destroyed late
  return *held;
}

}  // namespace

NewFile::~NewFile() {
  if (held_.empty()) return;
  const std::lock_guard<std::mutex> lock(Held().mutex);
  Held().by.erase(held_);
}

void NewFile::Hold(const std::string& name) {
  held_ = name;
  const std::lock_guard<std::mutex> lock(Held().mutex);
  Held().by[name] = std::this_thread::get_id();
}

bool NewFile::IsHeldByThisThread(const std::string& name) {
  const std::lock_guard<std::mutex> lock(Held().mutex);
  const auto found = Held().by.find(name);
  return found != Held().by.end() && found->second == std::this_thread::get_id();
}

bool NewFile::WriteAll(std::string_view bytes) {
  while (!bytes.empty() && !failed_) {
    const size_t written = WriteSome(bytes);
    failed_ = written == 0;
    bytes.remove_prefix(written);
  }
  return !failed_;
}

bool NewFile::Write(std::string_view bytes) {
  if (failed_) return false;
  if (buffer_.size() + bytes.size() > kBufferSize) {
    if (!WriteAll(buffer_)) return false;
    buffer_.clear();
  }
  if (bytes.size() >= kBufferSize) return WriteAll(bytes);
  buffer_.append(bytes);
  return true;
}

bool NewFile::WriteAllFrom(const std::function<std::int64_t(std::span<char>)>& read) {
  std::vector<char> piece(kBufferSize);
  std::int64_t count = 0;
  while ((count = read(piece)) > 0)
    if (!Write(std::string_view(piece.data(), static_cast<size_t>(count)))) return false;
  failed_ = failed_ || count < 0;
  return !failed_;
}

bool NewFile::Commit(Existing existing) {
  const bool done = WriteAll(buffer_) && RenameIntoPlace(existing);
  failed_ = true;
  return done;
}

FileReplacement::FileReplacement() = default;
FileReplacement::~FileReplacement() = default;
FileReplacement::FileReplacement(FileReplacement&&) noexcept = default;
FileReplacement& FileReplacement::operator=(FileReplacement&&) noexcept = default;

bool FileReplacement::Begin(const CString& target, const CString& temporary) {
  Abandon();  // it may be the same target's
  file_ = MakeNewFile(target, temporary);
  return file_ != nullptr;
}

bool FileReplacement::Write(std::string_view bytes) { return file_ && file_->Write(bytes); }

bool FileReplacement::Commit() {
  const bool done = file_ && file_->Commit(NewFile::Existing::kReplace);
  Abandon();
  return done;
}

void FileReplacement::Abandon() { file_.reset(); }

bool ReplaceFileContent(const CString& target, std::string_view bytes) {
  FileReplacement file;
  return file.Begin(target) && file.Write(bytes) && file.Commit();
}

}  // namespace velmora
