#include "velmora/platform/text_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/test_files.h"

namespace velmora {
namespace {

struct Lines {
  std::vector<CString> lines;
  bool last_ended = false;
  bool failed = false;
};

Lines ReadAll(const CString& path, TextReader::Guess guess = TextReader::Guess::kWindows1252) {
  Lines result;
  TextReader reader;
  if (!reader.Open(path, guess)) return {{}, false, true};
  CString line;
  while (reader.ReadLine(&line)) {
    result.lines.push_back(line);
    result.last_ended = reader.LineWasEnded();
  }
  result.failed = reader.Failed();
  return result;
}

bool Rewrite(const CString& path, const Lines& content) {
  TextWriter writer;
  if (!writer.Begin(path)) return false;
  for (size_t i = 0; i < content.lines.size(); ++i) {
    writer.Write(content.lines[i].GetView());
    if (i + 1 < content.lines.size() || content.last_ended) writer.Write(L"\n");
  }
  return writer.Commit();
}

class TextFile : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
  CString path_ = folder_.File(L"A.TXT");
};

struct LineCase {
  std::string bytes;
  std::vector<CString> lines;
  bool last_ended;
};

std::string Bytes(const char* bytes, size_t size) { return {bytes, size}; }

TEST_F(TextFile, LineEnds) {
  const LineCase cases[] = {
      {"", {}, false},
      {"\n", {L""}, true},
      {"a", {L"a"}, false},
      {"a\n", {L"a"}, true},
      {"a\r\nb", {L"a", L"b"}, false},
      {"a\n\nb\r\n\r\n", {L"a", L"", L"b", L""}, true},
      {"a\r\r\n", {L"a\r"}, true},     // one CR belongs to the line end
      {"a\rb\r", {L"a\rb\r"}, false},  // without a LF it is a character
      {Bytes("a\0b\n", 4), {CString(L"a\0b", 3)}, true},
      {"\xE5\x81\n", {L"\u00E5\u0081"}, true},
      {"\xEF\xBB\xBF", {}, false},
      {"\xEF\xBB\xBF\xC3\xA5\r\nb\n", {L"\u00E5", L"b"}, true},
      {Bytes("\xFF\xFEg\0\r\0\n\0\x0A\x0D", 10), {L"g", L"\u0D0A"}, false},  // units, not bytes
      {Bytes("\xFE\xFF\0g\0\r\0\n\x0A\x00\0h", 12), {L"g", L"\u0A00h"}, false},
      {Bytes("\xFF\xFE\x67\x0A\0\x01", 6), {L"\u0A67\u0100"}, false},
      {Bytes("\xFE\xFF\x67\0\x0A\x67", 6), {L"\u6700\u0A67"}, false},
      {Bytes("\xFF\xFEg\0\n\0x", 7), {L"g", L"x"}, false},  // half a unit at the end
      {Bytes("\xFF\xFE\n", 3), {L"\n"}, false},
      {"\xFF", {L"\u00FF"}, false},
  };
  for (const LineCase& each : cases) {
    WriteBytes(path_, each.bytes);
    const Lines read = ReadAll(path_);
    EXPECT_EQ(read.lines, each.lines) << ::testing::PrintToString(each.bytes);
    EXPECT_EQ(read.last_ended, each.last_ended) << ::testing::PrintToString(each.bytes);
    EXPECT_FALSE(read.failed);
  }
}

TEST_F(TextFile, LinesOfAnyLengthMeetTheBuffersAnywhere) {
  for (const char* mark : {"", "\xFF\xFE"}) {
    const bool wide = *mark != '\0';
    std::string bytes = mark;
    std::vector<CString> lines;
    for (int length : {0, 1, 65'530, 65'536, 65'537, 3, 200'001, 0, 131'070}) {
      lines.emplace_back(L'x', length);
      for (const char c : std::string(static_cast<size_t>(length), 'x') + "\r\n") {
        bytes += c;
        if (wide) bytes += '\0';
      }
    }
    WriteBytes(path_, bytes);
    EXPECT_EQ(ReadAll(path_).lines, lines);
    ASSERT_TRUE(Rewrite(path_, ReadAll(path_)));
    EXPECT_EQ(ReadBytes(path_), bytes);
  }
}

TEST_F(TextFile, EveryByteSurvives) {
  std::string bytes;
  for (int c = 0; c < 256; ++c)
    if (c != '\n') bytes += static_cast<char>(c);
  bytes += "\r\n";
  for (int c = 255; c >= 0; --c)
    if (c != '\n') bytes += static_cast<char>(c);
  WriteBytes(path_, bytes);
  ASSERT_TRUE(Rewrite(path_, ReadAll(path_)));
  EXPECT_EQ(ReadBytes(path_), bytes);
}

TEST_F(TextFile, MarkStays) {
  const std::string files[] = {
      "\xEF\xBB\xBF", "\xEF\xBB\xBF\xC3\xA5\xE2\x82\xAC\xF0\x9F\x98\x80\r\nb\r\n",
      Bytes("\xFF\xFE\xE5\0\x3D\xD8\x00\xDE\x00\xD8\r\0\n\0", 14),  // with a lone surrogate
      Bytes("\xFE\xFF\0\xE5\xD8\x3D\xDE\x00\0\r\0\n", 12)};
  for (const std::string& bytes : files) {
    WriteBytes(path_, bytes);
    ASSERT_TRUE(Rewrite(path_, ReadAll(path_)));
    EXPECT_EQ(ReadBytes(path_), bytes);
  }
}

TEST_F(TextFile, NewFileIsWindows1252WithCarriageReturns) {
  ASSERT_TRUE(Rewrite(path_, {{L"\u00E5\u20AC", L""}, true}));
  EXPECT_EQ(ReadBytes(path_), "\xE5\x80\r\n\r\n");
}

TEST_F(TextFile, CharacterTheEncodingLacksLeavesTheFile) {
  WriteBytes(path_, "old\r\n");
  EXPECT_FALSE(Rewrite(path_, {{L"first", L"\u0416", CString(L'x', 100'000)}, true}));
  EXPECT_EQ(ReadBytes(path_), "old\r\n");
  EXPECT_FALSE(Rewrite(path_, {{CString(L'x', 100'000), L"\u0416"}, true}));  // late, much is written
  EXPECT_EQ(ReadBytes(path_), "old\r\n");
  EXPECT_EQ(NamesIn(folder_.Path()).size(), 1U);
  WriteBytes(path_, "\xEF\xBB\xBFold");
  EXPECT_TRUE(Rewrite(path_, {{L"\u0416"}, false}));
  EXPECT_EQ(ReadBytes(path_), "\xEF\xBB\xBF\xD0\x96");
}

TEST_F(TextFile, ReaderAtTheEndIsInNobodysWay) {
  WriteBytes(path_, "old\n");
  TextReader reader;
  ASSERT_TRUE(reader.Open(path_));
  CString line;
  while (reader.ReadLine(&line)) {
  }
  EXPECT_TRUE(Rewrite(path_, {{L"new"}, true}));
  EXPECT_EQ(reader.Size(), 4U);
}

TEST_F(TextFile, WriterGivesUpWithoutCommit) {
  WriteBytes(path_, "old");
  {
    TextWriter writer;
    ASSERT_TRUE(writer.Begin(path_));
    writer.Write(L"new");
  }
  EXPECT_EQ(ReadBytes(path_), "old");
  TextWriter never_begun;
  never_begun.Write(L"x");
  EXPECT_FALSE(never_begun.Commit());
}

TEST_F(TextFile, GuessIsMadeLineByLine) {
  WriteBytes(path_, "\xC3\xA5\n\xE5\n\xC3\xA5\xE5\n");
  const std::vector<CString> guessed = {L"\u00E5", L"\u00E5", L"\u00C3\u00A5\u00E5"};
  EXPECT_EQ(ReadAll(path_, TextReader::Guess::kUtf8First).lines, guessed);
  const std::vector<CString> plain = {L"\u00C3\u00A5", L"\u00E5", L"\u00C3\u00A5\u00E5"};
  EXPECT_EQ(ReadAll(path_).lines, plain);
}

TEST_F(TextFile, LineWithoutEndIsNoText) {
  WriteBytes(path_, "first\n" + std::string(TextReader::kLongestLine + 1, 'x') + "\n");
  const Lines read = ReadAll(path_);
  EXPECT_TRUE(read.failed);
  EXPECT_EQ(read.lines, std::vector<CString>{L"first"});
}

TEST_F(TextFile, ProgressReachesTheSize) {
  WriteBytes(path_, std::string(200'000, '\n'));
  TextReader reader;
  ASSERT_TRUE(reader.Open(path_));
  EXPECT_EQ(reader.Size(), 200'000U);
  EXPECT_LT(reader.Consumed(), 200'000U);
  int lines = 0;
  CString line;
  while (reader.ReadLine(&line)) ++lines;
  EXPECT_EQ(lines, 200'000);
  EXPECT_EQ(reader.Consumed(), reader.Size());
  EXPECT_FALSE(reader.ReadLine(&line));
  EXPECT_FALSE(reader.Failed());
}

TEST_F(TextFile, NothingToReadInAFolderOrNowhere) {
  TextReader reader;
  EXPECT_FALSE(reader.Open(folder_.Path()));
  EXPECT_FALSE(reader.Open(path_));
  CString line = L"kept";
  EXPECT_FALSE(reader.ReadLine(&line));
  EXPECT_EQ(line, L"kept");
}

}  // namespace
}  // namespace velmora
