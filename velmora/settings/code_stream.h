// The one open file of the code operations: it is read, or it is being rewritten.
#ifndef VELMORA_SETTINGS_CODE_STREAM_H_
#define VELMORA_SETTINGS_CODE_STREAM_H_

#include <functional>
#include <memory>
#include <string_view>

#include "velmora/platform/text_file.h"
#include "velmora/settings/settings_reader.h"
#include "velmora/settings/settings_text.h"
#include "velmora/text/string.h"

namespace velmora {

// One sequence at a time: beginning another, closing it and the destructor abandon a rewrite that is not
// finished, and the file stays as it was.
class CodeStream {
 public:
  [[nodiscard]] bool OpenForReading(const CString& path);
  // `on_failure` is called once, when a later write or Finish fails.
  [[nodiscard]] bool BeginRewrite(const CString& path, std::function<void()> on_failure,
                                  const CString& temporary = CString());
  bool IsOpen() const { return state_ != State::kClosed; }

  // The next line; false at the end and when nothing is being read.
  [[nodiscard]] bool ReadLine(CString* line);
  // The same, but false also at a line that begins with "*". This holds for every file: a call may continue a
  // sequence that another file's operation began.
  [[nodiscard]] bool ReadEntryLine(CString* line);
  // Whether reading ended before the end of the file.
  bool ReadFailed() const { return reader_.Failed(); }

  // Writes the text unchanged. False, with the stream closed, when it cannot be written; a stream that is
  // being read stays open and writes nothing.
  bool Write(std::wstring_view text);
  // Puts the new content in place. False when it could not be; closed either way.
  bool Finish();
  // Abandons the rewrite as failed. Always false.
  bool Fail();
  void Close();

 private:
  enum class State { kClosed, kReading, kRewriting };

  State state_ = State::kClosed;
  SettingsReader reader_;
  TextWriter writer_;
  std::function<void()> on_failure_;
};

// Opens the file at the first line of the section. Null, after a message box with this caption, when it
// cannot be opened.
std::shared_ptr<CodeStream> OpenCodeFile(const CString& path, const wchar_t* caption, SettingsFileKind kind,
                                         int section = 0);
// Begins a rewrite; null likewise. `paths` is what the message names; it is also shown when the rewrite fails
// later.
std::shared_ptr<CodeStream> RewriteCodeFile(const CString& path, const CString& paths, const wchar_t* caption,
                                            const CString& temporary = CString());

}  // namespace velmora

#endif  // VELMORA_SETTINGS_CODE_STREAM_H_
