// The groups of an ASCII DXF file: a line with a code, a line with its value.
#ifndef VELMORA_EXCHANGE_DXF_GROUPS_H_
#define VELMORA_EXCHANGE_DXF_GROUPS_H_

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace velmora::exchange {

struct DxfGroup {
  int code = 0;
  std::string_view value;  // until the next call
  std::int64_t line = 0;   // of the value, from 1
};

// Reads with a buffer of fixed size, whatever the file holds.
class DxfGroups {
 public:
  explicit DxfGroups(const std::function<std::int64_t(std::span<char>)>& read);

  // False at the end of the file and on an error; Error then says which.
  bool Next(DxfGroup* group);
  const std::string& Error() const { return error_; }

 private:
  bool ReadLine(std::string* line);
  bool Fill();
  bool Fail(std::string text);

  const std::function<std::int64_t(std::span<char>)>& read_;
  std::string buffer_;
  size_t start_ = 0;
  size_t end_ = 0;
  std::int64_t line_ = 0;  // read so far
  std::string code_;
  std::string value_;
  std::string error_;
  bool begun_ = false;
};

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_DXF_GROUPS_H_
