#include "velmora/project/projekt_status.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "tests/support/print_text.h"
#include "velmora/common/string_table.h"

namespace velmora {
namespace {

const std::pair<int, const wchar_t*> kStandard[] = {
    {0, L"Pågående"}, {1, L"Avslutat"},      {2, L"Arkiverat"},      {3, L"Levererat"},
    {4, L"Vilande"},  {5, L"Ska arkiveras"}, {999, L"Status okänd"},
};

void LoadStandard(CProjektStatus* status) {
  status->SetHandle(LibraryModule());
  status->Load();
}

std::vector<std::pair<int, CString>> RecordsOf(CProjektStatus& status) {
  std::vector<std::pair<int, CString>> records;
  for (bool more = status.Home() == 0; more; more = status++ != nullptr)
    records.emplace_back(status.pael->nummer, CString(status.pael->text));
  return records;
}

projektstatustype Record(int number, const wchar_t* text) {
  projektstatustype record{};
  record.nummer = number;
  CopyToField(record.text, text);
  return record;
}

TEST(ProjektStatus, IsUnknownAtFirst) {
  CProjektStatus status;
  EXPECT_EQ(status.m_nStatus, 999);
  EXPECT_EQ(status.m_bFound, 0);
  EXPECT_EQ(status.m_hInst, nullptr);
}

TEST(ProjektStatus, LoadBuildsTheStandardListOnce) {
  CProjektStatus status;
  LoadStandard(&status);
  status.Load();
  const std::vector<std::pair<int, CString>> expected(std::begin(kStandard), std::end(kStandard));
  EXPECT_EQ(RecordsOf(status), expected);
}

TEST(ProjektStatus, LoadLeavesAListWithRecordsAlone) {
  CProjektStatus status;
  const projektstatustype own = Record(7, L"Eget");
  status.Ny(1, &own);
  LoadStandard(&status);
  EXPECT_EQ(RecordsOf(status).size(), 1U);
}

TEST(ProjektStatus, WithoutAModuleTheTextsAreEmpty) {
  CProjektStatus status;
  status.Load();
  const auto records = RecordsOf(status);
  ASSERT_EQ(records.size(), std::size(kStandard));
  for (size_t i = 0; i < records.size(); ++i)
    EXPECT_EQ(records[i], std::make_pair(kStandard[i].first, CString()));
  EXPECT_EQ(status.TxLoadString(5006), CString());
  status.SetHandle(LibraryModule());
  EXPECT_EQ(status.TxLoadString(5006), CString(L"Pågående"));
  EXPECT_EQ(status.TxLoadString(5013), CString());
}

// The list's position is not kept by Set_aktel; steps back from there lead it below the first place.
TEST(ProjektStatus, AListWithRecordsIsNotTakenForEmpty) {
  CProjektStatus status;
  LoadStandard(&status);
  projektstatustype* const last = status.pael;
  status.Home();
  status.Set_aktel(last);
  status--;
  status--;
  status.Load();
  EXPECT_EQ(RecordsOf(status).size(), std::size(kStandard));
  status.Home();
  status.Set_aktel(last);
  status--;
  status--;
  EXPECT_EQ(status.SetStatus(2), 0);
}

TEST(ProjektStatus, NumberAndPlaceAgreeInTheStandardList) {
  CProjektStatus status;
  LoadStandard(&status);
  for (const auto& [number, text] : kStandard) {
    EXPECT_EQ(status.SetStatus(number), 0);
    EXPECT_EQ(status.m_nStatus, number);
    EXPECT_EQ(status.pael->nummer, number);
    EXPECT_EQ(status.GetStatus(), CString(text));
    EXPECT_EQ(status.m_nStatus, number);
  }
}

TEST(ProjektStatus, AnUnknownNumberMakesTheStatusUnknown) {
  CProjektStatus status;
  LoadStandard(&status);
  for (const int number : {7, -1, 998, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(status.SetStatus(number), 0);
    EXPECT_EQ(status.m_nStatus, 999);
    EXPECT_EQ(status.m_bFound, 0);
    EXPECT_EQ(status.GetStatus(), CString(L"Status okänd"));
  }
}

TEST(ProjektStatus, FindIgnoresCaseOfAllLetters) {
  CProjektStatus status;
  LoadStandard(&status);
  const std::pair<const wchar_t*, int> kCases[] = {
      {L"avslutat", 1},       {L"PÅGÅENDE", 0},           {L"pågående", 0}, {L"SKA ARKIVERAS", 5},
      {L"status OKÄND", 999}, {L"Avslutat projekt", 999}, {L"Avslu", 999},  {L"", 999},
      {L" Avslutat", 999}};
  for (const auto& [text, number] : kCases) EXPECT_EQ(status.Find(text), number) << ToUtf8(text);
}

TEST(ProjektStatus, FindMovesTheCurrentRecordAndNotTheStatus) {
  CProjektStatus status;
  LoadStandard(&status);
  EXPECT_EQ(status.Find(L"Okänt"), 999);
  EXPECT_EQ(status.m_bFound, 0);
  EXPECT_EQ(status.Find(L"Vilande"), 4);
  EXPECT_EQ(status.m_bFound, 1);
  EXPECT_EQ(status.m_nStatus, 999);
  EXPECT_EQ(status.pael->nummer, 4);
  EXPECT_EQ(status.Where(), 5);
}

TEST(ProjektStatus, AnEmptyListAnswersWithoutRecords) {
  CProjektStatus status;
  status.SetHandle(LibraryModule());
  EXPECT_EQ(status.SetStatus(2), -1);
  EXPECT_EQ(status.m_nStatus, 2);
  EXPECT_EQ(status.GetStatus(), CString());
  EXPECT_EQ(status.m_nStatus, 2);
  EXPECT_EQ(status.Find(L"Avslutat"), 999);
}

TEST(ProjektStatus, GetStatusAnswersByPlace) {
  CProjektStatus status;
  status.SetHandle(LibraryModule());
  for (const projektstatustype& record : {Record(20, L"A"), Record(1, L"B"), Record(0, L"C")})
    status.Ny(1, &record);
  EXPECT_EQ(status.SetStatus(0), 0);
  EXPECT_STREQ(status.pael->text, L"C");
  EXPECT_EQ(status.GetStatus(), CString(L"A"));
  EXPECT_EQ(status.SetStatus(20), 0);
  EXPECT_EQ(status.m_nStatus, 20);
  EXPECT_EQ(status.GetStatus(), CString(L"Status okänd"));
  EXPECT_EQ(status.m_nStatus, 999);
}

TEST(ProjektStatus, NyAppendsOrInsertsACopy) {
  CProjektStatus status;
  const projektstatustype a = Record(1, L"A");
  const projektstatustype b = Record(2, L"B");
  EXPECT_EQ(status.Ny(2, &a), 0);
  EXPECT_EQ(status.Ny(1, &b), 0);
  EXPECT_EQ(status.Ny(0), 0);
  const std::vector<std::pair<int, CString>> expected = {{1, L"A"}, {0, L""}, {2, L"B"}};
  EXPECT_EQ(RecordsOf(status), expected);
}

// The field of a client's record may lack its terminating zero.
TEST(ProjektStatus, AFullTextEndsAtItsEnd) {
  CProjektStatus status;
  projektstatustype full{};
  std::fill(std::begin(full.text), std::end(full.text), L'x');
  status.Ny(1, &full);
  status.SetStatus(0);
  EXPECT_EQ(status.GetStatus(), CString(L'x', 80));
  EXPECT_EQ(status.Find(CString(L'X', 80)), 0);
}

}  // namespace
}  // namespace velmora
