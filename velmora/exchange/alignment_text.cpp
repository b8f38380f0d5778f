#include "velmora/exchange/alignment_text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "velmora/alignment/alignment_format.h"
#include "velmora/text/codepage.h"

namespace velmora::exchange {
namespace {

void Put(double value, TextSink* out) {
  std::array<char, 400> room;  // 309 digits before the point, or 323 zeros after it and 17 digits
  const auto [end, error] =
      std::to_chars(room.data(), room.data() + room.size(), value + 0.0, std::chars_format::fixed);
  const std::string_view text(room.data(), static_cast<size_t>(end - room.data()));
  constexpr size_t kDecimals = 4;
  const size_t point = text.find('.');
  const size_t decimals = point == std::string_view::npos ? 0 : text.size() - point - 1;
  *out << text;
  if (point == std::string_view::npos) *out << ".";
  *out << std::string_view("0000").substr(std::min(decimals, kDecimals));
}

bool FitsName(wchar_t c) {
  return c >= L' ' && c != L'$' && (c < 0x7F || c > 0x9F) && EncodeWindows1252(c).has_value();
}

}  // namespace

std::string NameForFile(std::string_view name) {
  std::wstring wide = WideFromUtf8(name);
  std::replace_if(
      wide.begin(), wide.end(), [](wchar_t c) { return !FitsName(c); }, L'_');
  if (wide.size() > static_cast<size_t>(kLongestName)) wide.resize(static_cast<size_t>(kLongestName));
  return Utf8FromWide(wide);
}

void WriteAlignment(const Road& road, const Sink& sink) {
  TextSink out(sink);
  for (size_t i = 0; i < road.plan.size(); ++i) {
    const kovltype& point = road.plan[i];
    for (const double value : {point.x, point.y, point.bulge}) {
      Put(value, &out);
      out << " ";
    }
    Put(point.sek, &out);
    if (i == 0) {
      std::string name;
      if (!AppendEncoded(WideFromUtf8(NameForFile(road.name)), TextEncoding::kWindows1252, &name))
        name.clear();
      out << " " << std::to_string(kPlanType) << " $" << name;
    }
    out << "\r\n";
  }
  if (!road.profile.empty()) out << "*\r\nProfil\r\n*\r\n";
  for (const kovltype& point : road.profile) {
    Put(point.x, &out);
    out << " ";
    Put(point.y, &out);
    out << " ";
    Put(point.bulge, &out);
    out << "\r\n";
  }
  out.Flush();
}

}  // namespace velmora::exchange
