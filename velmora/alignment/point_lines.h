// Fast reading and writing of plain lines of alignment files, numbers with one blank between them: between a
// file's bytes and points, without a text for each line.
#ifndef VELMORA_ALIGNMENT_POINT_LINES_H_
#define VELMORA_ALIGNMENT_POINT_LINES_H_

#include <array>
#include <span>

#include "velmora/alignment/alignment_format.h"
#include "velmora/alignment/alignment_point.h"
#include "velmora/alignment/number_lines.h"
#include "velmora/platform/text_file.h"

namespace velmora {

// Passes the numbers of all plain lines that `reader` holds next to `take`. The line after them is for the
// general parser.
template <class Take>
void TakePlainLines(TextReader* reader, NumberLines* lines, Take take) {
  static_assert(TextReader::kZerosAfter >= NumberLines::kSlack);
  const std::string_view text = reader->Buffered();
  std::array<double, 4> numbers;
  size_t done = 0;
  while (const size_t length = lines->Read(text.substr(done), &numbers)) {
    take(numbers);
    done += length;
  }
  reader->Skip(done);
}

// Writes the lines of FormatPoint and FormatProfilePoint. The last ones wait for Flush.
class PointLineWriter {
 public:
  explicit PointLineWriter(TextWriter* writer) : writer_(writer) {}
  void PlanPoint(const kovltype& point);
  void ProfilePoint(const kovltype& point);
  void Flush();

 private:
  template <size_t kNumbers>
  bool WritePlain(const std::array<double, 4>& numbers);

  TextWriter* writer_;
  std::array<char, size_t{68} << 10> block_;  // large enough to be written as it is
  size_t used_ = 0;
};

}  // namespace velmora

#endif  // VELMORA_ALIGNMENT_POINT_LINES_H_
