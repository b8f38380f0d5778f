// What is expected here was found out with the system's own functions: the same tables hold there. The
// one difference is the lines that a write does not concern: the system's functions may drop blank
// lines and blanks, so that files are compared without those.
#include "velmora/platform/profile.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/test_files.h"
#include "velmora/platform/files.h"

namespace velmora {
namespace {

using namespace std::string_literals;

// Lines without blanks around them, none empty, each ended by LF.
std::string Essence(std::string_view bytes) {
  constexpr std::string_view kBlanks = " \t\v\f\x1A";
  std::string essence;
  while (!bytes.empty()) {
    const size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
    const std::string_view line = bytes.substr(0, end);
    const size_t first = line.find_first_not_of(kBlanks);
    if (first != std::string_view::npos)
      essence.append(line.substr(first, line.find_last_not_of(kBlanks) - first + 1)).append("\n");
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return essence;
}

std::string Utf16(std::u16string_view text, bool big) {
  std::string bytes = big ? "\xFE\xFF" : "\xFF\xFE";
  for (const char16_t unit : text) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes.append(1, big ? high : low).append(1, big ? low : high);
  }
  return bytes;
}

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

TEST_F(Profile, Reads) {
  const std::string x300(300, 'x');
  const struct {
    std::string bytes;
    const wchar_t* section;
    const wchar_t* key;
    std::wstring value;
  } cases[] = {
      {"[S]\r\nk=v\r\n", L"S", L"k", L"v"},
      {"[S]\r\nk=v\r\n", L"s", L"K", L"v"},
      {"[S]\r\nk=v\r\n", L"T", L"k", L""},
      {"[S]\r\nk=v\r\n", L"S", L"kk", L""},
      {"[S\xC5]\r\n\xE4=\xF6\r\n", L"S\u00C5", L"\u00E4", L"\u00F6"},
      // Blanks.
      {" [S] \r\n  k  =  v w  \r\n", L"S", L"k", L"v w"},
      {"\t[ S ]\t\r\n\tk\t=\ta\tb\t\r\n", L"S", L"k", L"a\tb"},
      {"[S]\r\nk=v\r\n", L" S ", L" k ", L"v"},
      {"[S]\r\nk a=v\r\n", L"S", L"k a", L"v"},
      {"[S]\r\nk=\xA0v\xA0\r\n", L"S", L"k", L"\u00A0v\u00A0"},
      {"\r\n[S]\r\n\r\n\r\nk=v\r\n", L"S", L"k", L"v"},
      // Quotes.
      {"[S]\r\nk=\"v\"\r\n", L"S", L"k", L"v"},
      {"[S]\r\nk='v'\r\n", L"S", L"k", L"v"},
      {"[S]\r\nk=  \" v \"  \r\n", L"S", L"k", L" v "},
      {"[S]\r\nk=\"\"v\"\"\r\n", L"S", L"k", L"\"v\""},
      {"[S]\r\nk=\"'v'\"\r\n", L"S", L"k", L"'v'"},
      {"[S]\r\nk=\"v'\r\n", L"S", L"k", L"\"v'"},
      {"[S]\r\nk=\"v\r\n", L"S", L"k", L"\"v"},
      {"[S]\r\nk=\"a\" b\r\n", L"S", L"k", L"\"a\" b"},
      {"[S]\r\nk=\"\r\n", L"S", L"k", L"\""},
      {"[S]\r\nk=\"\"\r\n", L"S", L"k", L""},
      {"[S]\r\n\"k\"=v\r\n", L"S", L"k", L""},
      // Comments begin a line only.
      {"[S]\r\n;k=v\r\n", L"S", L"k", L""},
      {"[S]\r\n  ; k=v\r\nk=w\r\n", L"S", L"k", L"w"},
      {"[S]\r\nk=v ; c\r\n", L"S", L"k", L"v ; c"},
      {"[S]\r\nk=;v\r\n", L"S", L"k", L";v"},
      {"[S]\r\n#k=v\r\n", L"S", L"#k", L"v"},
      // The first of equal ones.
      {"[S]\r\nk=1\r\nK=2\r\n", L"S", L"k", L"1"},
      {"[S]\r\na=1\r\n[T]\r\nk=2\r\n[S]\r\nk=3\r\n", L"S", L"k", L""},
      {"[S]\r\nk=\r\n[S]\r\nk=3\r\n", L"S", L"k", L""},
      {"[S]\r\nk\r\nk=3\r\n", L"S", L"k", L""},
      // Lines that are not quite right.
      {"[S]\r\nk=a=b\r\n", L"S", L"k", L"a=b"},
      {"[S]\r\nk==\r\n", L"S", L"k", L"="},
      {"[S] more\r\nk=v\r\n", L"S", L"k", L"v"},
      {"[S]x=1\r\nk=w\r\n", L"S", L"k", L"w"},
      {"[S\r\nk=w\r\n", L"S", L"k", L""},
      {"[S]\r\n[T\r\nk=w\r\n", L"S", L"k", L"w"},
      {"k=v\r\n[S]\r\n", L"S", L"k", L""},
      {"", L"S", L"k", L""},
      // Line ends.
      {"[S]\r\nk=v", L"S", L"k", L"v"},
      {"[S]\nl=w\nk=v\n", L"S", L"k", L"v"},
      {"[S]\rl=w\rk=v\r", L"S", L"k", L"v"},
      {"[S]\r\r\nk=v\r\r\n", L"S", L"k", L"v"},
      // The end mark of old systems, zeros.
      {"[S]\r\nk=v\x1A", L"S", L"k", L"v"},
      {"[S]\r\nk=a\x1Az\r\n\x1A\r\nl=b\r\n", L"S", L"k", L"a\x1Az"},
      {"[S]\r\nk=a\x1Az\r\n\x1A\r\nl=b\r\n", L"S", L"l", L"b"},
      {"[S]\r\nk=a\0z\r\n"s, L"S", L"k", L"a"},
      // 254 characters.
      {"[S]\r\nk=" + x300, L"S", L"k", std::wstring(254, L'x')},
      {"[S]\r\nk=\"" + x300 + "\"\r\n", L"S", L"k", std::wstring(254, L'x')},
      {"[S]\r\nk=" + x300.substr(0, 253) + "  y\r\n", L"S", L"k", std::wstring(253, L'x') + L" "},
      // Encodings.
      {"[S]\r\nk=\x80\x81\x8D\x9F\r\n", L"S", L"k", L"\u20AC\u0081\u008D\u0178"},
      {Utf16(u"[S]\r\nk=v\u0416\r\n", false), L"S", L"k", L"v\u0416"},
      {Utf16(u"[S]\nk=v\u0416\n", true), L"S", L"k", L"v\u0416"},
      {Utf16(u"", false), L"S", L"k", L""},
      {"\xEF\xBB\xBF[S]\r\nk=v\xC3\xA5\r\n", L"S", L"k", L"v\u00E5"},
      // Nothing has an empty name.
      {"k=v\r\n[S]\r\n=w\r\n[]\r\nk=x\r\n", L"", L"k", L""},
      {"[S]\r\n=w\r\n", L"S", L"", L""},
  };
  for (const auto& each : cases)
    EXPECT_EQ(ReadProfile(each.section, each.key, Make(each.bytes)), each.value.c_str())
        << each.bytes << " key " << ToUtf8(each.key);
}

TEST_F(Profile, Writes) {
  const struct {
    const char* bytes;
    const wchar_t* section;
    const wchar_t* key;
    const wchar_t* value;
    const char* expected;
  } cases[] = {
      {"", L"S", L"k", L"v", "[S]\nk=v\n"},
      {"[S]\r\nk=1\r\nl=2\r\n", L"S", L"k", L"new", "[S]\nk=new\nl=2\n"},
      {"[S]\r\nk=1\r\nl=2\r\n", L"s", L"K", L"new", "[S]\nk=new\nl=2\n"},
      {"[S]\r\n  k =  1  \r\nl=2\r\n", L"S", L" k ", L"new", "[S]\nk=new\nl=2\n"},
      {"[S]\r\n  k =  1  \r\nl=2\r\n", L"S", L"k", L"1", "[S]\nk =  1\nl=2\n"},
      {"[S]\r\nk=\"1\"\r\nl=2\r\n", L"S", L"k", L"1", "[S]\nk=1\nl=2\n"},
      {"[S]\r\nk=1\r\nl=2\r\n", L"S", L"k", L"", "[S]\nk=\nl=2\n"},
      {"[S]\r\nk=1\r\n", L"S", L"k", L"\"v\"", "[S]\nk=\"v\"\n"},
      {"[S]\r\nk=1\r\n", L"S", L"k", L"a=b ;c", "[S]\nk=a=b ;c\n"},
      {"[S]\r\nk=1\r\n", L"S", L"k", L"\u00E5\u20AC", "[S]\nk=\xE5\x80\n"},
      {"[S]\r\nk=\x81\x8D\r\n", L"S", L"l", L"v", "[S]\nk=\x81\x8D\nl=v\n"},
      {"[S]\r\nk\r\nl=1\r\n", L"S", L"k", L"v", "[S]\nk=v\nl=1\n"},
      // Deleting.
      {"[S]\r\nk=1\r\nl=2\r\n", L"S", L"k", nullptr, "[S]\nl=2\n"},
      {"[S]\r\nk=1\r\nk=2\r\n", L"S", L"k", nullptr, "[S]\nk=2\n"},
      {"[S]\r\nk\r\nl=1\r\n", L"S", L"k", nullptr, "[S]\nl=1\n"},
      {"[S]\r\nk=1", L"S", L"k", nullptr, "[S]\n"},
      {"[S]\r\nk=1\r\n; tail\r\n[T]\r\n", L"S", L"k", nullptr, "[S]\n; tail\n[T]\n"},
      {"[S]\r\nk=1\r\n", L"S", L"x", nullptr, "[S]\nk=1\n"},
      {"[S]\r\nk=1\r\n", L"T", L"k", nullptr, "[S]\nk=1\n"},
      // The first of equal ones.
      {"[S]\r\nk=1\r\nk=2\r\n", L"S", L"k", L"new", "[S]\nk=new\nk=2\n"},
      {"[S]\r\na=1\r\n[T]\r\nb=2\r\n[S]\r\nk=3\r\n", L"S", L"k", L"n", "[S]\na=1\nk=n\n[T]\nb=2\n[S]\nk=3\n"},
      // New keys stand at the end of the section.
      {"[S]\r\nk=1\r\n[T]\r\nb=2\r\n", L"S", L"n", L"v", "[S]\nk=1\nn=v\n[T]\nb=2\n"},
      {"[S]\r\nk=1\r\n\r\n; c\r\n\r\n[T]\r\n", L"S", L"n", L"v", "[S]\nk=1\n; c\nn=v\n[T]\n"},
      {"[S]\r\n[T]\r\n[U]\r\n", L"T", L"n", L"v", "[S]\n[T]\nn=v\n[U]\n"},
      {"[S]\r\nk=1", L"S", L"n", L"v", "[S]\nk=1\nn=v\n"},
      {"[S]", L"S", L"n", L"v", "[S]\nn=v\n"},
      {"[S]\r\n;k=1\r\n", L"S", L"k", L"v", "[S]\n;k=1\nk=v\n"},
      {"[S]\nk=1\n", L"S", L"n", L"v", "[S]\nk=1\nn=v\n"},
      {"[S]\r\nk=1\r\n\x1A", L"S", L"n", L"v", "[S]\nk=1\nn=v\n"},
      // New sections stand at the end of the file.
      {"[S]\r\nk=1\r\n", L"T", L"n", L"v", "[S]\nk=1\n[T]\nn=v\n"},
      {"[S]\r\nk=1", L"T", L"n", L"v", "[S]\nk=1\n[T]\nn=v\n"},
      {"k=0\r\njunk\r\n", L"S", L"k", L"v", "k=0\njunk\n[S]\nk=v\n"},
      {"\xEF\xBB\xBF[S]\r\nk=1\r\n", L"S", L"k", L"\u0416", "\xEF\xBB\xBF[S]\nk=\xD0\x96\n"},
      {"\xEF\xBB\xBF", L"S", L"k", L"\u0416", "\xEF\xBB\xBF[S]\nk=\xD0\x96\n"},
  };
  for (const auto& each : cases) {
    const CString path = Make(each.bytes);
    EXPECT_TRUE(WriteProfile(each.section, each.key, each.value, path)) << each.bytes;
    EXPECT_EQ(Essence(ReadBytes(path)), each.expected) << "from " << each.bytes;
  }
}

TEST_F(Profile, Utf16StaysUtf16) {
  for (const bool big : {false, true}) {
    const CString path = Make(Utf16(u"[S]\r\nk=1\r\nl=2\r\n", big));
    EXPECT_TRUE(WriteProfile(L"S", L"k", L"\u0416", path));
    EXPECT_EQ(ReadBytes(path), Utf16(u"[S]\r\nk=\u0416\r\nl=2\r\n", big));
  }
}

TEST_F(Profile, ValuesComeBack) {
  const CString path = NewName();
  for (const wchar_t* value :
       {L"a", L" a ", L"\t", L"[x]", L";", L"a=b", L"\u00E5\u20AC", L"it's", L"'", L"="}) {
    EXPECT_TRUE(WriteProfile(L"Two words", L"a key", value, path));
    CString trimmed = value;
    EXPECT_EQ(ReadProfile(L"Two words", L"a key", path), trimmed.Trim()) << ToUtf8(value);
  }
  EXPECT_TRUE(WriteProfile(L"Two words", L"a key", std::wstring(300, L'x').c_str(), path));
  EXPECT_EQ(ReadProfile(L"Two words", L"a key", path).GetLength(), 254);
  EXPECT_EQ(Essence(ReadBytes(path)), "[Two words]\na key=" + std::string(300, 'x') + "\n");
}

TEST_F(Profile, WhatTheFileCannotHoldIsRefused) {
  const std::string bytes = "[S]\r\nk=1\r\n";
  const CString path = Make(bytes);
  EXPECT_FALSE(WriteProfile(L"S", L"k", L"a\u0416", path));
  EXPECT_FALSE(WriteProfile(L"S\u0416", L"k", L"a", path));
  EXPECT_FALSE(WriteProfile(L"S", L"\u0416", L"a", path));
  EXPECT_FALSE(WriteProfile(L"S", L"k", L"a\r\n[T]\r\nb=2", path));
  EXPECT_FALSE(WriteProfile(L"S", L"k=l", L"a", path));
  EXPECT_FALSE(WriteProfile(L"S", L"[k]", L"a", path));
  EXPECT_FALSE(WriteProfile(L"S", L";k", L"a", path));
  EXPECT_FALSE(WriteProfile(L"S]", L"k", L"a", path));
  EXPECT_FALSE(WriteProfile(L"", L"k", L"a", path));
  EXPECT_FALSE(WriteProfile(L"S", L" ", L"a", path));
  EXPECT_FALSE(WriteProfile(L"S", L"", nullptr, path));
  EXPECT_EQ(ReadBytes(path), bytes);
}

TEST_F(Profile, FilesThatAreNone) {
  const CString missing = NewName();
  EXPECT_TRUE(ReadProfile(L"S", L"k", missing).IsEmpty());
  EXPECT_TRUE(WriteProfile(L"S", L"k", nullptr, missing));
  EXPECT_FALSE(WriteProfile(L"S", L"k", L"\u0416", missing));
  EXPECT_FALSE(FileOrFolderExists(missing));
  EXPECT_TRUE(WriteProfile(L"S", L"k", L"", missing));
  EXPECT_EQ(ReadBytes(missing), "[S]\r\nk=\r\n");

  for (const wchar_t* value : {static_cast<const wchar_t*>(nullptr), L"v"}) {
    EXPECT_FALSE(WriteProfile(L"S", L"k", value, folder_.Path()));
    EXPECT_FALSE(WriteProfile(L"S", L"k", value, folder_.File(L"missing\\a.ini")));
    EXPECT_FALSE(WriteProfile(L"S", L"k", value, L""));
  }
  EXPECT_TRUE(ReadProfile(L"S", L"k", folder_.Path()).IsEmpty());
  EXPECT_TRUE(ReadProfile(L"S", L"k", L"").IsEmpty());

  const CString guarded = Make("[S]\r\nk=1\r\n");
  SetWriteProtected(guarded, true);
  EXPECT_FALSE(WriteProfile(L"S", L"k", L"v", guarded));
  EXPECT_EQ(ReadProfile(L"S", L"k", guarded), L"1");
  EXPECT_EQ(ReadBytes(guarded), "[S]\r\nk=1\r\n");
}

}  // namespace
}  // namespace velmora
