#include "velmora/platform/text_file.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/test_files.h"

namespace velmora {
namespace {

using namespace std::string_literals;

constexpr wchar_t kFailed[] = L"(failed)";

// The lines, each with a "\n" behind it when it was ended.
std::wstring ReadAll(const CString& path, TextReader::Guess guess = TextReader::Guess::kWindows1252) {
  std::wstring text;
  TextReader reader;
  if (!reader.Open(path, guess)) return kFailed;
  CString line;
  while (reader.ReadLine(&line)) {
    text += line.GetView();
    if (reader.LineWasEnded()) text += L'\n';
  }
  return reader.Failed() ? text + kFailed : text;
}

bool Rewrite(const CString& path, const std::wstring& text) {
  TextWriter writer;
  if (!writer.Begin(path)) return false;
  for (size_t at = 0; at < text.size(); at += 1000) writer.Write(text.substr(at, 1000));
  return writer.Commit();
}

class TextFile : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
  CString path_ = folder_.File(L"A.TXT");
};

TEST_F(TextFile, LineEnds) {
  const struct {
    std::string bytes;
    std::wstring text;
  } cases[] = {
      {"", L""},
      {"a\n\nb\r\n\r\n", L"a\n\nb\n\n"},
      {"a\r\r\nb", L"a\r\nb"},  // one CR belongs to the line end
      {"a\rb\r", L"a\rb\r"},    // without a LF it is a character
      {"a\0b\n"s, L"a\0b\n"s},
      {"\xEF\xBB\xBF\xC3\xA5\r\nb\n", L"\u00E5\nb\n"},
      {"\xFF\xFEg\0\r\0\n\0\x0A\x0D"s, L"g\n\u0D0A"},  // units, not bytes
      {"\xFE\xFF\0g\0\r\0\n\x0A\x00\0h"s, L"g\n\u0A00h"},
      {"\xFF\xFE\x67\x0A\0\x01"s, L"\u0A67\u0100"},
      {"\xFE\xFF\x67\0\x0A\x67"s, L"\u6700\u0A67"},
      {"\xFF\xFEg\0\n\0x"s, L"g\nx"},  // half a unit at the end
      {"\xFF\xFEg\0\r\0\n"s, L"g\n"},  // that ends a line
      {"\xFF", L"\u00FF"},
      {"a\r\n\x1A", L"a\n"},  // the end-of-file character of DOS
      {"a\x1A\r\nb\n", L"a"},
      {"\xFF\xFEg\0\x1A\x01\n\0\x1A\0x\0"s, L"g\u011A\n"},
  };
  for (const auto& each : cases) {
    WriteBytes(path_, each.bytes);
    EXPECT_EQ(ReadAll(path_), each.text) << ::testing::PrintToString(each.bytes);
  }
}

TEST_F(TextFile, LinesOfAnyLengthMeetTheBuffersAnywhere) {
  for (const std::string& mark : {""s, "\xFF\xFE"s}) {
    std::string bytes = mark;
    std::wstring text;
    for (const size_t length :
         std::initializer_list<size_t>{0, 1, 65'530, 65'536, 65'537, 3, 200'001, 0, 131'070}) {
      text += std::wstring(length, L'x') + L'\n';
      for (const char c : std::string(length, 'x') + "\r\n") {
        bytes += c;
        if (!mark.empty()) bytes += '\0';
      }
    }
    WriteBytes(path_, bytes);
    EXPECT_TRUE(ReadAll(path_) == text);
    ASSERT_TRUE(Rewrite(path_, text));
    EXPECT_TRUE(ReadBytes(path_) == bytes);
  }
}

TEST_F(TextFile, EveryByteAndTheMarkSurvive) {
  std::string every;
  for (int c = 0; c < 256; ++c)
    if (c != '\n' && c != 0x1A) every += static_cast<char>(c);
  for (const std::string& bytes :
       {every + "\r\n" + every, every + "\r\n\x1A" + std::string(65'532, 'x') + "\n\x1A",
        std::string(200'000, 'x') + "\r\n\x1A\x1A", "\xFF\xFEg\0\r\0\n\0\x1A\0half"s, "\xEF\xBB\xBF"s,
        "\xEF\xBB\xBF\xC3\xA5\xE2\x82\xAC\xF0\x9F\x98\x80\r\nb\r\n"s,
        "\xFF\xFE\xE5\0\x3D\xD8\x00\xDE\x00\xD8\r\0\n\0"s,  // a lone surrogate
        "\xFE\xFF\0\xE5\xD8\x3D\xDE\x00\0\r\0\n"s}) {
    WriteBytes(path_, bytes);
    ASSERT_TRUE(Rewrite(path_, ReadAll(path_)));
    EXPECT_EQ(ReadBytes(path_), bytes);
  }
}

TEST_F(TextFile, WriterThatFailsLeavesTheFile) {
  ASSERT_TRUE(Rewrite(path_, L"\u00E5\u20AC\n\n"));
  EXPECT_FALSE(Rewrite(path_, L"\u0416\n" + std::wstring(100'000, L'x')));
  EXPECT_FALSE(Rewrite(path_, std::wstring(100'000, L'x') + L"\u0416"));  // late, much is written
  EXPECT_FALSE(Rewrite(path_, L"\u00FF\u00FEx"));                         // would be read as a mark
  EXPECT_FALSE(Rewrite(path_, L"a\u001Ab"));                              // would end the text
  EXPECT_FALSE(TextWriter().Commit());                                    // never begun
  EXPECT_EQ(ReadBytes(path_), "\xE5\x80\r\n\r\n");
  EXPECT_EQ(NamesIn(folder_.Path()).size(), 1U);
}

TEST_F(TextFile, GuessIsMadeLineByLine) {
  WriteBytes(path_, "\xC3\xA5\n\xE5\n\xC3\xA5\xE5\n");
  EXPECT_EQ(ReadAll(path_, TextReader::Guess::kUtf8First), L"\u00E5\n\u00E5\n\u00C3\u00A5\u00E5\n");
  EXPECT_EQ(ReadAll(path_), L"\u00C3\u00A5\n\u00E5\n\u00C3\u00A5\u00E5\n");
}

TEST_F(TextFile, WhatIsNoTextFails) {
  for (const CString& none : {folder_.Path(), path_}) EXPECT_EQ(ReadAll(none), kFailed);
  WriteBytes(path_, "first\n" + std::string(TextReader::kLongestLine + 1, 'x') + "\n");
  EXPECT_TRUE(ReadAll(path_) == std::wstring(L"first\n") + kFailed);
}

}  // namespace
}  // namespace velmora
