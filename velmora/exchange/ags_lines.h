// The lines of an AGS4 file, those of group LOCA divided into fields.
#ifndef VELMORA_EXCHANGE_AGS_LINES_H_
#define VELMORA_EXCHANGE_AGS_LINES_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::exchange {

struct AgsLine {
  std::string_view bytes;                // with its line end
  std::string_view end;                  // the line end
  std::vector<std::string_view> fields;  // as in the file, quotes included; none outside LOCA
  bool whole = true;                     // every quote is closed, and there are not too many fields
};

// Walks through the lines of a file, which outlives this.
class AgsLines {
 public:
  static constexpr size_t kNone = std::string_view::npos;

  explicit AgsLines(std::string_view bytes) : rest_(bytes) {}

  bool Next();
  const AgsLine& Line() const { return line_; }
  std::int64_t Number() const { return number_; }
  // Whether it is a line of LOCA of this kind.
  bool Is(std::string_view kind) const { return in_group_ && kind_ == kind; }
  // Those of LOCA, and the first field of their line.
  const std::vector<std::string>& Headings() const { return headings_; }
  // The number of a heading's column, from 1; kNone without it.
  size_t Find(std::string_view heading) const;
  // A field without its quotes, as UTF-8; empty when the line has no such field.
  std::string Field(size_t column) const;

 private:
  std::string_view rest_;
  AgsLine line_;
  std::int64_t number_ = 0;
  std::string kind_;  // of the line: "DATA"; empty outside LOCA
  bool in_group_ = false;
  std::vector<std::string> headings_;
};

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_AGS_LINES_H_
