#include "velmora/environment/date_text.h"

#include <ctime>

namespace velmora {

CString DateText(int years_since_1900, int month, int day) {
  CString text;
  text.Format(L"%4d-%02d-%02d", years_since_1900 + (years_since_1900 <= 79 ? 2000 : 1900), month, day);
  return text;
}

CString TodayText() {
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);
  return local == nullptr ? CString() : DateText(local->tm_year, local->tm_mon + 1, local->tm_mday);
}

}  // namespace velmora
