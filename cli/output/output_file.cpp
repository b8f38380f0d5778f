#include "cli/output/output_file.h"

#include "cli/terminal/error.h"
#include "velmora/platform/console.h"
#include "velmora/platform/device_file.h"

namespace velmora::cli {
namespace {

bool IsStandard(const std::string& file) { return file.empty() || file == "-"; }

// Whether a file to be written, its name as spelled, is one that is read: its name is found in any letter
// case, and "-" is the file that standard input is.
bool IsInput(const std::string& output, const std::string& input) {
  if (IsStandard(output) || input.empty()) return false;
  if (input == "-") return IsStandardInput(PathAsSpelled(output));
  return IsSameFile(PathAsSpelled(output), PathFromSystem(input));
}

}  // namespace

OutputFile::OutputFile(const std::string& file, const std::vector<std::string>& inputs) : file_(file) {
  if (IsStandard(file)) {
    stream_ = stdout;
    return;
  }
  for (const std::string& input : inputs)
    if (IsInput(file, input))
      throw Refusal(
          At(file, "is read by this command and would be replaced by the result; give -o another name"));
  const CString path = PathAsSpelled(file);
  const std::optional<FileStatus> status = GetFileStatus(path);
  if (status && status->kind == FileKind::kOther) {
    stream_ = OpenDeviceToWrite(path);
    if (stream_ == nullptr) Fail();
    return;
  }
  if (status && status->kind == FileKind::kFolder)
    throw Refusal(At(file, "is a folder; give -o the name of a file"));
  replacement_.emplace();
  if (!replacement_->Begin(path)) Fail();
}

OutputFile::~OutputFile() {
  if (stream_ != nullptr && stream_ != stdout) std::fclose(stream_);
}

size_t OutputFile::TerminalColumns() const {
  return stream_ == stdout ? TerminalWidth(StandardStream::kOutput) : 0;
}
bool OutputFile::ShowsColours() const {
  return stream_ == stdout && velmora::ShowsColours(StandardStream::kOutput);
}

void OutputFile::Write(std::string_view text) {
  const bool good = stream_ != nullptr ? std::fwrite(text.data(), 1, text.size(), stream_) == text.size()
                                       : replacement_->Write(text);
  if (!good) Fail();
}

void OutputFile::Finish() {
  if (stream_ != nullptr ? std::fflush(stream_) != 0 : !replacement_->Commit()) Fail();
}

void OutputFile::Fail() const {
  if (IsStandard(file_)) throw Refusal("standard output cannot be written; is the disk full?");
  RefuseUnwritable(file_);
}

void RefuseUnwritable(const std::string& file) {
  throw Refusal(At(file,
                   "cannot be written (no such folder, write-protected, or the disk is full); nothing "
                   "was changed there"));
}

}  // namespace velmora::cli
