#include "velmora/settings/settings_reader.h"

#include "velmora/platform/files.h"

namespace velmora {

bool SettingsReader::Open(const CString& path) {
  return IsFile(path) && reader_.Open(path) && reader_.ReadRest(kLargestFile);
}

bool SettingsReader::ReadLine(CString* line, Zeros zeros) {
  if (!reader_.ReadLine(line)) return false;
  const int zero = line->Find(L'\0');
  cut_ = zero >= 0 && zeros == Zeros::kCut;
  if (cut_) *line = line->Left(zero);
  return true;
}

}  // namespace velmora
