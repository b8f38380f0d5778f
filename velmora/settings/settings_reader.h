// A settings or code file being read, line by line.
#ifndef VELMORA_SETTINGS_SETTINGS_READER_H_
#define VELMORA_SETTINGS_SETTINGS_READER_H_

#include <cstdint>

#include "velmora/export.h"
#include "velmora/platform/text_file.h"
#include "velmora/text/string.h"

namespace velmora {

// The file is read whole when it is opened, and closed: a sequence of reads that is left before its end must
// not keep others from replacing or deleting it.
class VELMORA_API SettingsReader {
 public:
  // False when there is no such file, when it is a folder or anything else than a file, cannot be read or is
  // larger than kLargestFile.
  [[nodiscard]] bool Open(const CString& path);
  // Whether what follows a zero byte in a line is cut, or kept for a copy of the file.
  enum class Zeros { kCut, kKeep };
  // The next line without its line end. False at the end.
  [[nodiscard]] bool ReadLine(CString* line, Zeros zeros = Zeros::kCut);
  // Whether the end came before the file's own.
  bool Failed() const { return reader_.Failed(); }
  // At the end: whether text that is not read follows an end-of-file character.
  bool HasTail() const { return reader_.HasTail(); }
  // Whether the last line had a zero byte.
  bool LineWasCut() const { return cut_; }

  static constexpr std::uint64_t kLargestFile = std::uint64_t{64} << 20;  // bytes

 private:
  TextReader reader_;
  bool cut_ = false;
};

}  // namespace velmora

#endif  // VELMORA_SETTINGS_SETTINGS_READER_H_
