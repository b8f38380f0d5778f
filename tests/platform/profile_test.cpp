// The expected values come from the Windows functions; the same tables hold on both systems.
#include "velmora/platform/profile.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/support/test_files.h"
#include "velmora/platform/files.h"
#include "velmora/platform/profile_text.h"

namespace velmora {
namespace {

using namespace std::string_literals;

// Each profile has a name of its own: the system may remember what it has read.
class Profile : public ::testing::Test {
 protected:
  CString Make(std::string_view bytes) {
    const CString path = NewName();
    WriteBytes(path, bytes);
    return path;
  }
  CString NewName() {
    CString name;
    name.Format(L"%d.ini", ++count_);
    return folder_.File(name);
  }

  TemporaryFolder folder_;

 private:
  int count_ = 0;
};

TEST_F(Profile, ReadsTheKeyOfTheseLines) {
  const struct {
    std::string lines;
    std::wstring value;
  } cases[] = {
      {" K =  v w ", L"v w"}, {"\tk\t=\tv\t", L"v"},   {"k=\xA0v", L"\u00A0v"}, {"k='v'", L"v"},
      {"k= ' v ' ", L" v "},  {"k=''v''", L"'v'"},     {"k=\"v'", L"\"v'"},     {"k=\"v\"", L"v"},
      {"k='", L"'"},          {";k=v\r\nk=w", L"w"},   {" ; k=v", L""},         {"k=v ; c", L"v ; c"},
      {"k=1\r\nK=2", L"1"},   {"k\r\nk=3", L""},       {"k=a=b", L"a=b"},       {"kk=v", L""},
      {"[T\r\nk=w", L"w"},    {"k=a\x1Az", L"a\x1Az"}, {"k=v\x1A", L"v"},       {"k=a\0z"s, L"a"}};
  for (const auto& each : cases)
    EXPECT_EQ(ReadProfile(L"S", L"k", Make("[S]\r\n" + each.lines + "\r\n")), each.value.c_str())
        << each.lines;
  EXPECT_EQ(ReadProfile(L"S", L"k", Make("[S]\r\nk='" + std::string(300, 'x') + "'")), CString(L'x', 254));
}

TEST_F(Profile, ReadsFromTheSection) {
  const struct {
    std::string bytes;
    const wchar_t* section;
    const wchar_t* key;
    const wchar_t* value;
  } cases[] = {
      {"[S]\r\nk=v", L" s ", L" K ", L"v"},
      {"[S\xC5]\r\n\xE4=\xF6\r\n", L"S\u00C5", L"\u00E4", L"\u00F6"},
      {"\t[ S ]\t more\r\nk=v\r\n", L"S", L"k", L"v"},
      {"k=v\r\n[S\r\nk=w\r\n", L"S", L"k", L""},
      {"[S]\r\n[T]\r\n[S]\r\nk=3\r\n", L"S", L"k", L""},
      {"[S]\nl=w\nk=v\n", L"S", L"k", L"v"},
      {"[S]\rl=w\rk=v\r", L"S", L"k", L"v"},
      {"\xFF\xFE[\0S\0]\0\r\0\n\0k\0=\0v\0\x16\x04\r\0\n\0"s, L"S", L"k", L"v\u0416"},
      {"\xEF\xBB\xBF[S]\r\nk=v\xC3\xA5\r\n", L"S", L"k", L"v\u00E5"},
      {"k=v\r\n[]\r\nk=x\r\n", L"", L"k", L""},
      {"[S]\r\n=w\r\n", L"S", L"", L""},
  };
  for (const auto& each : cases)
    EXPECT_EQ(ReadProfile(each.section, each.key, Make(each.bytes)), each.value) << each.bytes;
}

// The system's functions may drop blank lines, or put one before a section.
std::string WithoutBlankLines(std::string bytes) {
  for (size_t at = 0; (at = bytes.find("\n\r\n")) != std::string::npos;) bytes.erase(at + 1, 2);
  return bytes;
}

TEST_F(Profile, Writes) {
  const std::string end = "[T]\r\njunk\r\n[S]\r\nn=3\r\n", end_with_junk = "[T]\r\njunk=1\r\n[S]\r\nn=3\r\n";
  const std::string new_key = "; tail\r\nn=\"\xE5=\x80\";c\r\n";
  const CString path = Make("k=0\r\n[S]\r\nk=\"1\"\r\nK=2\r\n; tail\r\n" + end);
  const struct {
    const wchar_t* section;
    const wchar_t* key;
    const wchar_t* value;
    std::string expected;  // behind the first two lines
  } steps[] = {
      {L"s", L" K ", L"1", "k=1\r\nK=2\r\n; tail\r\n" + end},
      {L"S", L"k", nullptr, "K=2\r\n; tail\r\n" + end},
      {L"S", L"n", L"\"\u00E5=\u20AC\";c", "K=2\r\n" + new_key + end},
      {L"S", L"K", nullptr, new_key + end},
      {L"T", L"junk", L"1", new_key + end_with_junk},
      {L"T", L"x", nullptr, new_key + end_with_junk},
      {L"U", L"n", L"v", new_key + end_with_junk + "[U]\r\nn=v\r\n"},
  };
  for (const auto& each : steps) {
    EXPECT_TRUE(WriteProfile(each.section, each.key, each.value, path));
    EXPECT_EQ(WithoutBlankLines(ReadBytes(path)), "k=0\r\n[S]\r\n" + each.expected);
  }
  const CString other = Make("[S]\nk=1\n");  // from a system of another kind
  EXPECT_TRUE(WriteProfile(L"S", L"n", L"v", other) && WriteProfile(L"T", L"n", L"v", other));
  EXPECT_EQ(ReadBytes(other), "[S]\nk=1\nn=v\n[T]\nn=v\n");
}

TEST_F(Profile, WhatTheFileCannotHoldIsRefused) {
  const std::string bytes = "[S]\r\nk=1\r\n";
  const CString path = Make(bytes);
  const wchar_t* const cases[][3] = {
      {L"S", L"k", L"a\u0416"}, {L"S\u0416", L"k", L"a"}, {L"S", L"\u0416", L"a"}, {L"S", L"k", L"a\nb=2"},
      {L"S", L"k=l", L"a"},     {L"S", L"[k]", L"a"},     {L"S", L";k", L"a"},     {L"S]", L"k", L"a"},
      {L"", L"k", L"a"},        {L"S", L" ", L"a"},       {L"S", L"", nullptr}};
  for (const auto& [section, key, value] : cases) EXPECT_FALSE(WriteProfile(section, key, value, path));
  EXPECT_EQ(ReadBytes(path), bytes);
}

TEST_F(Profile, FilesThatAreNone) {
  const CString missing = NewName();
  EXPECT_TRUE(WriteProfile(L"S", L"k", nullptr, missing));
  EXPECT_FALSE(WriteProfile(L"S", L"k", L"\u0416", missing));
  EXPECT_FALSE(FileOrFolderExists(missing));
  EXPECT_TRUE(WriteProfile(L"S", L"k", L"", missing));
  EXPECT_TRUE(FileOrFolderExists(missing));
  for (const CString& none : {folder_.Path(), folder_.File(L"missing\\a.ini"), CString()}) {
    EXPECT_FALSE(WriteProfile(L"S", L"k", nullptr, none));
    EXPECT_FALSE(WriteProfile(L"S", L"k", L"v", none));
    EXPECT_TRUE(ReadProfile(L"S", L"k", none).IsEmpty());
  }
}

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
      {"[S]\nk=1", L"S", L"n", L"v", "[S]\nk=1\nn=v\n"},
      {"[\xC5]\r\n\xE4=1\r\n", L"\u00E5", L"\u00C4", L"2", "[\xC5]\r\n\xE4=2\r\n"},
      {"\xEF\xBB\xBF; \xE5\n[S]\nk=1\n", L"S", L"k", L"\u0416", "\xEF\xBB\xBF; \xE5\n[S]\nk=\xD0\x96\n"},
      {"\xFE\xFF\0[\0S\0]\0\n\0k\0=\x04\x16\0\n\0l"s, L"S", L"k", L"v",
       "\xFE\xFF\0[\0S\0]\0\n\0k\0=\0v\0\n\0l"s},
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
