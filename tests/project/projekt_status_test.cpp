#include "velmora/project/projekt_status.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "tests/support/print_text.h"
#include "velmora/common/string_table.h"

namespace velmora {
namespace {

struct LoadedStatus : CProjektStatus {
  LoadedStatus() {
    SetHandle(LibraryModule());
    Load();
  }
};

TEST(ProjektStatus, ANumberOfTheStandardListGivesItsTextAndAnyOtherMakesTheStatusUnknown) {
  LoadedStatus status;
  for (const int number : {0, 5, 999}) {
    EXPECT_EQ(status.SetStatus(number), 0);
    EXPECT_EQ(status.pael->nummer, number);
    EXPECT_EQ(status.GetStatus(), status.pael->text);
    EXPECT_EQ(status.m_nStatus, number);
  }
  for (const int number : {7, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(status.SetStatus(number), 0);
    EXPECT_EQ(status.m_nStatus, 999);
    EXPECT_EQ(status.GetStatus(), CString(L"Status okänd"));
  }
}

// The list's position is not kept by Set_aktel; steps back from there lead it below the first place.
TEST(ProjektStatus, AListWithRecordsIsNotTakenForEmpty) {
  LoadedStatus status;
  projektstatustype* const last = status.pael;
  status.Home();
  status.Set_aktel(last);
  status--;
  status--;
  status.Load();
  int count = 0;
  ASSERT_EQ(status.Where(&count), -1);
  EXPECT_EQ(count, 7);
  EXPECT_EQ(status.SetStatus(2), 0);
}

TEST(ProjektStatus, FindIgnoresCaseOfAllLettersAndLeavesTheStatus) {
  LoadedStatus status;
  const std::pair<const wchar_t*, int> kCases[] = {{L"Avslu", -1},   {L" Avslutat", -1},
                                                   {L"", -1},        {L"status OKÄND", 999},
                                                   {L"PÅGÅENDE", 0}, {L"SKA ARKIVERAS", 5}};
  for (const auto& [text, number] : kCases) {
    status.m_bFound = 0;
    EXPECT_EQ(status.Find(text), number < 0 ? 999 : number) << ToUtf8(text);
    EXPECT_EQ(status.m_bFound, number < 0 ? 0 : 1);
    EXPECT_TRUE(number < 0 || status.pael->nummer == number);
    EXPECT_EQ(status.m_nStatus, 999);
  }
}

TEST(ProjektStatus, WithoutRecordsOrAModuleTextsAreEmpty) {
  CProjektStatus status;
  EXPECT_EQ(status.SetStatus(2), -1);
  EXPECT_EQ(status.GetStatus(), CString());
  EXPECT_EQ(status.m_nStatus, 2);
  EXPECT_EQ(status.Find(L"Avslutat"), 999);
  status.Load();
  EXPECT_EQ(status.SetStatus(5), 0);
  EXPECT_EQ(status.GetStatus(), CString());
}

TEST(ProjektStatus, GetStatusAnswersByPlace) {
  CProjektStatus status;
  status.SetHandle(LibraryModule());
  for (const projektstatustype& record : {projektstatustype{0, L"C"}, {1, L"B"}, {20, L"A"}})
    status.Ny(0, &record);
  EXPECT_EQ(status.SetStatus(0), 0);
  EXPECT_STREQ(status.pael->text, L"C");
  EXPECT_EQ(status.GetStatus(), CString(L"A"));
  EXPECT_EQ(status.SetStatus(20), 0);
  EXPECT_EQ(status.m_nStatus, 20);
  EXPECT_EQ(status.GetStatus(), CString(L"Status okänd"));
  EXPECT_EQ(status.m_nStatus, 999);
}

// The field of a client's record may lack its terminating zero.
TEST(ProjektStatus, AFullTextEndsAtItsEnd) {
  CProjektStatus status;
  status.Ny(1);
  std::fill(std::begin(status.pael->text), std::end(status.pael->text), L'x');
  EXPECT_EQ(status.Find(CString(L'X', 80)), 0);
  status.SetStatus(0);
  EXPECT_EQ(status.GetStatus(), CString(L'x', 80));
}

}  // namespace
}  // namespace velmora
