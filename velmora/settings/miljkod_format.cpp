#include "velmora/settings/miljkod_format.h"

#include "velmora/settings/field_text.h"
#include "velmora/text/letters.h"
#include "velmora/text/numbers.h"

namespace velmora {
namespace {

constexpr int kLargestLimit = 100'000;

// Takes the setting `key` ("steg=") off the end of the text, from the last letter like the key's first on.
// A number out of its bounds gives `usual`.
int TakeLimit(CString* text, const wchar_t* key, int lowest, int usual) {
  CString lower = *text;
  lower.MakeLower();
  const int start = lower.ReverseFind(key[0]);
  if (start <= 0) return usual;
  const CString tail = lower.Mid(start);
  if (tail.Find(key) < 0) return usual;
  int value = usual;
  if (!NumberScanner(tail.Mid(CString(key).GetLength()).GetView()).Next(&value)) value = usual;
  *text = text->Left(start - 1);
  text->TrimRight();
  return value < lowest || value > kLargestLimit ? usual : value;
}

}  // namespace

MiljkodLine ParseMiljkodLine(std::wstring_view line) {
  MiljkodLine parsed;
  const std::wstring_view name = TakeWord(&line);
  if (name.empty()) return parsed;
  parsed.name = name;
  parsed.text = TrimBlanks(line);
  parsed.kind = name.size() > kLongestMiljkodName ? MiljkodLine::Kind::kTooLong : MiljkodLine::Kind::kEntry;
  return parsed;
}

MiljkodLimits TakeMiljkodLimits(CString* text) {
  MiljkodLimits limits;
  limits.step = TakeLimit(text, L"steg=", 1, kUsualStep);
  limits.max = TakeLimit(text, L"max=", 0, kUsualMax);
  return limits;
}

CString FormatMiljkodClass(std::wstring_view name, std::wstring_view text, MiljkodLimits limits) {
  CString line;
  line.Format(L"%s %s max=%d steg=%d\n", name, text, limits.max, limits.step);
  return line;
}

}  // namespace velmora
