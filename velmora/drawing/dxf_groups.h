// The groups of a DXF file as text: a line with a code, a line with its value.
#ifndef VELMORA_DRAWING_DXF_GROUPS_H_
#define VELMORA_DRAWING_DXF_GROUPS_H_

#include <string>
#include <string_view>

namespace velmora::drawing {

class DxfGroupText {
 public:
  DxfGroupText& Text(int code, std::string_view bytes);
  DxfGroupText& Integer(int code, long long value);
  DxfGroupText& Handle(int code, long long value);
  // With at most so many decimals, so that every system writes the same bytes.
  DxfGroupText& Real(int code, double value, int decimals = 4);
  DxfGroupText& At(int code, double x, double y);
  // A group a line: "70 1". The value begins after the first blank.
  DxfGroupText& Lines(std::string_view lines);

  const std::string& Bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

}  // namespace velmora::drawing

#endif  // VELMORA_DRAWING_DXF_GROUPS_H_
