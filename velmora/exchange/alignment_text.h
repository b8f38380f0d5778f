// Alignment files with all digits of their numbers: as the suite's own (alignment_format.h), but where those
// have four decimals, at least four and as many as a double needs.
#ifndef VELMORA_EXCHANGE_ALIGNMENT_TEXT_H_
#define VELMORA_EXCHANGE_ALIGNMENT_TEXT_H_

#include <string>
#include <string_view>

#include "velmora/exchange/road.h"
#include "velmora/exchange/sink.h"

namespace velmora::exchange {

// The name as the file can hold it, in UTF-8: characters outside Windows-1252, controls and "$" become "_",
// and it is cut at the longest name.
std::string NameForFile(std::string_view name);

// A combined file in Windows-1252 with CR LF. All numbers are finite.
void WriteAlignment(const Road& road, const Sink& sink);

}  // namespace velmora::exchange

#endif  // VELMORA_EXCHANGE_ALIGNMENT_TEXT_H_
