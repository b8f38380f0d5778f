// The groups of an ASCII DXF file: a line with a code, a line with its value.
#ifndef VELMORA_EXCHANGE_DXF_GROUPS_H_
#define VELMORA_EXCHANGE_DXF_GROUPS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "velmora/exchange/dxf.h"

namespace velmora::exchange {

struct DxfGroup {
  int code = 0;
  std::string_view value;  // until the next call
  std::int64_t line = 0;   // of the value, from 1
};

// Reads with a buffer of fixed size, whatever the file holds.
class DxfGroups {
 public:
  explicit DxfGroups(const Source& source) : source_(source), buffer_(kBufferSize, '\0') {}

  // False at the end of the file and on an error; Error then says which.
  bool Next(DxfGroup* group);
  const Finding& Error() const { return error_; }

 private:
  bool ReadLine(std::string* line);
  bool Fill();
  bool Fail(std::int64_t line, std::string text);

  static constexpr size_t kBufferSize = 64 << 10;

  const Source& source_;
  std::string buffer_;
  size_t start_ = 0;
  size_t end_ = 0;
  std::int64_t line_ = 0;  // read so far
  std::string code_;
  std::string value_;
  Finding error_;
};

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_DXF_GROUPS_H_
