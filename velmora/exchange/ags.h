// Points of AGS4 files (data transfer of ground investigations): group LOCA.
//
//   "GROUP","LOCA"
//   "HEADING","LOCA_ID","LOCA_NATE","LOCA_NATN","LOCA_GL"
//   "UNIT","","m","m","m"
//   "TYPE","ID","2DP","2DP","2DP"
//   "DATA","BH1","674060.00","6580050.00","12.50"
//
// UTF-8, lines that are not as Windows-1252; CR LF or LF.
#ifndef VELMORA_EXCHANGE_AGS_H_
#define VELMORA_EXCHANGE_AGS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "velmora/common/finding.h"
#include "velmora/exchange/ags_lines.h"
#include "velmora/exchange/sink.h"

namespace velmora::exchange {

// Reads the rows of LOCA, one after the other, from the bytes of a file, which outlive this.
class AgsRows {
 public:
  explicit AgsRows(std::string_view bytes) : lines_(bytes) {}

  // The headings, then each DATA row. False at the end, and when Problem() is set.
  bool Next();
  std::int64_t Line() const { return lines_.Number(); }
  // The fields as UTF-8, without "HEADING" or "DATA".
  size_t Fields() const { return lines_.Line().fields.size() - 1; }
  std::string Field(size_t column) const { return lines_.Field(column + 1); }
  // Why the list cannot be read on; the text is empty otherwise.
  const Finding& Problem() const { return problem_; }

 private:
  bool Refuse(std::string why);

  AgsLines lines_;
  bool has_heading_ = false;
  Finding problem_;
};

struct AgsPlace {
  std::int64_t line = 0;  // of the DATA row
  double station = 0;
  double offset = 0;
};

// Writes the file again with LOCA_ALID (the alignment's name), LOCA_OFFS and LOCA_CNGE filled in the rows
// of `places`, which are in the order of their lines, with the decimals that their TYPE says; every other
// byte is as it was. The name is written in Windows-1252, with "_" for characters that it lacks, where a line
// of the file is not UTF-8, else in UTF-8. Headings that are missing are added where the standard's order has
// them.
void WriteAgs(std::string_view bytes, const std::string& alignment, const std::vector<AgsPlace>& places,
              const Sink& sink);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_AGS_H_
