#include "velmora/platform/profile_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "velmora/text/string.h"

namespace velmora {
namespace {

using namespace std::string_literals;

// Every byte that a change does not concern.
TEST(ProfileText, ChangesOneLineOnly) {
  const std::string start = "; \x81 head\r\n\r\n [S] ; x\r\n  k =  1  \r\n\tjunk \r\n\r\n";
  const std::string rest = "\r\n[T]\nk=\n\n";
  const std::string all = start + "l=2 \r\n" + rest;
  const struct {
    std::string before;
    const wchar_t* section;
    const wchar_t* key;
    const wchar_t* value;
    std::string after;
  } cases[] = {
      {all, L"s", L"L", L"new", start + "l=new\r\n" + rest},
      {all, L"s", L"l", nullptr, start + rest},
      {all, L"S", L"n", L"v", start + "l=2 \r\nn=v\r\n" + rest},
      {all, L"T", L"n", L"v", start + "l=2 \r\n\r\n[T]\nk=\nn=v\n\n"},  // LF as the lines there
      {all, L"U", L"n", L"v", all + "[U]\nn=v\n"},
      {"[S]\rk=1\r", L"S", L"n", L"v", "[S]\rk=1\rn=v\r"},
      {"[S]\nk=1", L"S", L"k", L"v", "[S]\nk=v"},
      {"[S]\nk\nk=2\n", L"S", L"k", nullptr, "[S]\nk=2\n"},
      {"\xEF\xBB\xBF", L"S", L"k", L"\u0416", "\xEF\xBB\xBF[S]\r\nk=\xD0\x96\r\n"},
      {"[S]\nk=1", L"S", L"n", L"v", "[S]\nk=1\r\nn=v\r\n"},
      {"[\xC5]\r\n\xE4=1\r\n", L"\u00E5", L"\u00C4", L"2", "[\xC5]\r\n\xE4=2\r\n"},
      {"\xEF\xBB\xBF; \xE5\n[S]\nk=1\n", L"S", L"k", L"\u0416", "\xEF\xBB\xBF; \xE5\n[S]\nk=\xD0\x96\n"},
      {"\xFF\xFE[\0S\0]\0"s, L"S", L"k", L"v", "\xFF\xFE[\0S\0]\0\r\0\n\0k\0=\0v\0\r\0\n\0"s},
  };
  for (const auto& each : cases) {
    const auto value = each.value == nullptr ? std::nullopt : std::optional<std::wstring_view>(each.value);
    std::string changed;
    EXPECT_EQ(ChangeProfile(each.before, each.section, each.key, value, &changed), ProfileChange::kDone);
    EXPECT_EQ(changed, each.after);
  }
}

}  // namespace
}  // namespace velmora
