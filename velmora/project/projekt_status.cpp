#include "velmora/project/projekt_status.h"

#include <algorithm>
#include <iterator>

#include "velmora/common/string_table.h"
#include "velmora/text/letters.h"

namespace velmora {
namespace {

constexpr int kLongestText = 254;
constexpr unsigned kUnknownText = 5012;

struct State {
  int number;
  unsigned text;
};
constexpr State kStandardStates[] = {
    {0, 5006},
    {1, 5007},
    {2, 5008},
    {3, 5009},
    {4, 5010},
    {5, 5011},
    {CProjektStatus::kUnknown, kUnknownText},
};

// A client's record may have no terminating zero.
std::wstring_view TextOf(const projektstatustype& record) {
  return {record.text, static_cast<size_t>(std::find(std::begin(record.text), std::end(record.text), L'\0') -
                                           std::begin(record.text))};
}

}  // namespace

CString CProjektStatus::TxLoadString(unsigned id) { return LoadText(m_hInst, id).Left(kLongestText); }

void CProjektStatus::Load() {
  if (forsta != nullptr) return;
  for (const State& state : kStandardStates) {
    projektstatustype record{};
    record.nummer = state.number;
    CopyToField(record.text, TxLoadString(state.text).GetView());
    Ny(1, &record);
  }
}

int CProjektStatus::Ny(int where, const projektstatustype* rec) { return list0::Ny(where, rec); }

// Makes the first record that matches the current one.
template <class Matches>
bool CProjektStatus::Seek(Matches matches) {
  for (bool more = Home() == 0; more; more = (*this)++ != nullptr) {
    if (!matches(*pael)) continue;
    m_bFound = 1;
    return true;
  }
  return false;
}

int CProjektStatus::SetStatus(int number) {
  m_nStatus = number;
  if (forsta == nullptr) return -1;
  if (!Seek([number](const projektstatustype& record) { return record.nummer == number; }))
    m_nStatus = kUnknown;
  return 0;
}

int CProjektStatus::Find(const CString& text) {
  const auto same = [&text](const projektstatustype& record) {
    return EqualNoCase(TextOf(record), text.GetView());
  };
  return Seek(same) ? pael->nummer : kUnknown;
}

CString CProjektStatus::GetStatus() {
  if (Home() < 0) return {};
  for (int steps = 0; steps < m_nStatus; ++steps) {
    if ((*this)++ != nullptr) continue;
    m_nStatus = kUnknown;
    return TxLoadString(kUnknownText);
  }
  return TextOf(*pael);
}

}  // namespace velmora
