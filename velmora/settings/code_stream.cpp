#include "velmora/settings/code_stream.h"

#include <utility>

#include "velmora/settings/code_lines.h"
#include "velmora/settings/settings_file.h"

namespace velmora {

bool CodeStream::OpenForReading(const CString& path) {
  Close();
  if (!reader_.Open(path)) return false;
  state_ = State::kReading;
  return true;
}

bool CodeStream::BeginRewrite(const CString& path, std::function<void()> on_failure,
                              const CString& temporary) {
  Close();
  if (!writer_.Begin(path, temporary)) return false;
  state_ = State::kRewriting;
  on_failure_ = std::move(on_failure);
  return true;
}

bool CodeStream::ReadLine(CString* line) { return state_ == State::kReading && reader_.ReadLine(line); }

bool CodeStream::ReadEntryLine(CString* line) { return ReadLine(line) && !IsStarLine(line->GetView()); }

bool CodeStream::Write(std::wstring_view text) {
  if (state_ != State::kRewriting) return false;
  writer_.Write(text);
  return !writer_.Failed() || Fail();
}

bool CodeStream::Finish() {
  if (state_ == State::kRewriting && !writer_.Commit()) return Fail();
  Close();
  return true;
}

bool CodeStream::Fail() {
  const std::function<void()> tell = std::exchange(on_failure_, nullptr);
  Close();
  if (tell) tell();
  return false;
}

void CodeStream::Close() {
  state_ = State::kClosed;
  reader_ = SettingsReader();
  writer_ = TextWriter();
  on_failure_ = nullptr;
}

std::shared_ptr<CodeStream> OpenCodeFile(const CString& path, const wchar_t* caption, SettingsFileKind kind,
                                         int section) {
  auto stream = std::make_shared<CodeStream>();
  if (!stream->OpenForReading(path)) {
    ShowUnreadable(path, caption);
    return nullptr;
  }
  CodeSections sections(kind);
  for (CString line; sections.Current() < section && stream->ReadLine(&line);) sections.Pass(line.GetView());
  return stream;
}

std::shared_ptr<CodeStream> RewriteCodeFile(const CString& path, const CString& paths, const wchar_t* caption,
                                            const CString& temporary) {
  const auto tell = [paths, caption] { ShowUnwritable(paths, caption); };
  auto stream = std::make_shared<CodeStream>();
  if (stream->BeginRewrite(path, tell, temporary)) return stream;
  tell();
  return nullptr;
}

}  // namespace velmora
