#include "velmora/common/messages.h"

#include <gtest/gtest.h>

#include "tests/support/recorded_messages.h"
#include "velmora/common/last_message.h"
#include "velmora/common/string_table.h"

namespace velmora {
namespace {

TEST(Messages, ABoxWithoutACaptionHasTheApplicationTitle) {
  RecordedMessages messages;
  messages.answer = IDNO;
  EXPECT_EQ(ShowMessage(L"Kan ej öppna"), IDNO);
  EXPECT_EQ(ShowMessage(L"Skriva över?", MB_YESNO | MB_DEFBUTTON2, L"Läsning"), IDNO);
  ASSERT_EQ(messages.boxes.size(), 2u);
  EXPECT_EQ(messages.boxes[0].text, L"Kan ej öppna");
  EXPECT_EQ(messages.boxes[0].style, unsigned{MB_OK | MB_ICONEXCLAMATION});
  EXPECT_EQ(messages.boxes[0].caption, L"Velmora");
  EXPECT_EQ(messages.boxes[1].style, unsigned{MB_YESNO | MB_DEFBUTTON2});
  EXPECT_EQ(messages.boxes[1].caption, L"Läsning");
}

TEST(Messages, AHandlerMayReplaceItselfWhileItRuns) {
  RecordedMessages outer;
  MessageBoxHandler replaced;
  const MessageBoxHandler recording = SetMessageBoxHandler([&](const MessageBoxCall&) {
    const std::string held(1000, 'x');  // must stay alive although the handler is no longer set
    replaced = SetMessageBoxHandler([](const MessageBoxCall&) { return 2; });
    replaced = nullptr;
    return static_cast<int>(held.size());
  });
  EXPECT_EQ(ShowMessage(L"a"), 1000);
  EXPECT_EQ(ShowMessage(L"b"), 2);
  SetMessageBoxHandler(recording);
  EXPECT_EQ(ShowMessage(L"c"), IDOK);
  EXPECT_EQ(outer.boxes.size(), 1u);
}

TEST(Messages, StatusTextsGoToTheRegisteredBarOnly) {
  const StatusBarHandler none = SetStatusBarHandler(nullptr);
  ShowStatus(L"shown to nobody");
  std::vector<CString> shown;
  EXPECT_FALSE(SetStatusBarHandler([&](const CString& text) {
    shown.push_back(text);
    return shown.size() < 2;  // then its window is gone
  }));
  ShowStatus(L"Fel rad : x");
  ShowStatus(L"y");
  EXPECT_TRUE(SetStatusBarHandler(none));
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(shown[0], L"Fel rad : x");
}

TEST(Messages, TheBufferKeepsTheLastMessage) {
  EXPECT_EQ(FormatForUser(L"%s : %d", L"rad", 7), L"rad : 7");
  EXPECT_EQ(LastMessageText(), L"rad : 7");
  // A message made from the last one.
  EXPECT_EQ(FormatForUser(L"[%s]", LastMessageText()), L"[rad : 7]");
}

TEST(StringTable, UnknownTextsAreEmpty) {
  EXPECT_EQ(LoadText(LibraryModule(), 57344), L"Velmora");
  EXPECT_TRUE(LoadText(nullptr, 57344).IsEmpty());
  EXPECT_TRUE(LoadText(LibraryModule(), 1).IsEmpty());
}

}  // namespace
}  // namespace velmora
