#include "velmora/settings/settings_reader.h"

#include "velmora/platform/files.h"

namespace velmora {

bool SettingsReader::Open(const CString& path) {
  too_large_ = false;
  return IsFile(path) && reader_.Open(path);
}

bool SettingsReader::ReadLine(CString* line, Zeros zeros) {
  too_large_ = too_large_ || reader_.Consumed() > kLargestFile;
  if (too_large_ || !reader_.ReadLine(line)) return false;
  const int zero = line->Find(L'\0');
  cut_ = zero >= 0 && zeros == Zeros::kCut;
  if (cut_) *line = line->Left(zero);
  return true;
}

}  // namespace velmora
