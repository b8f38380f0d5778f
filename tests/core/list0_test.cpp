#include "velmora/core/list0.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <list>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

// How many non-throwing allocations may still succeed; negative: all.
int allocations_left = -1;

void* Allocate(size_t size) { return std::malloc(size == 0 ? 1 : size); }
void* AllocateOrThrow(size_t size) {
  void* memory = Allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* AllocateUnlessSpent(size_t size) {
  if (allocations_left == 0) return nullptr;
  if (allocations_left > 0) --allocations_left;
  return Allocate(size);
}

}  // namespace

void* operator new(size_t size) { return AllocateOrThrow(size); }
void* operator new[](size_t size) { return AllocateOrThrow(size); }
void* operator new(size_t size, const std::nothrow_t&) noexcept { return AllocateUnlessSpent(size); }
void* operator new[](size_t size, const std::nothrow_t&) noexcept { return AllocateUnlessSpent(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, size_t) noexcept { std::free(memory); }

namespace velmora {
namespace {

struct Record {
  int key;
  int id;
};
constexpr int kNone = -1;  // the id of no record

enum SortKey { kUnsorted, kRising, kFalling, kFallingTiesToo };

// What Sortval answers for the candidate `best` and the later `other`.
int Compare(const Record& best, const Record& other, int key) {
  switch (key) {
    case kRising:
      return best.key - other.key;
    case kFalling:
      return other.key - best.key;
    case kFallingTiesToo:  // as a listing sorted falling does: never 0
      return best.key > other.key ? -1 : 1;
    default:
      return 0;
  }
}

class RecordList : public list0<Record> {
 public:
  using list0<Record>::antal;
  using list0<Record>::felText;
  using list0<Record>::pos;
  using list0<Record>::storlek;

  std::function<int()> override_compare;

  std::vector<int> Ids() const {
    std::vector<int> ids;
    const Node* last = nullptr;
    for (const Node* node = forsta; node != nullptr; last = node, node = node->next) {
      EXPECT_EQ(node->previous, last);
      ids.push_back(node->record.id);
    }
    EXPECT_EQ(sista, last);
    return ids;
  }
  int CurrentId() const {
    EXPECT_EQ(pael, aktuell == nullptr ? nullptr : &aktuell->record);
    return pael == nullptr ? kNone : pael->id;
  }
  int MarkedId() const {
    EXPECT_EQ(pmark, mark == nullptr ? nullptr : &mark->record);
    return pmark == nullptr ? kNone : pmark->id;
  }

 protected:
  int Sortval(int key) override {
    return override_compare ? override_compare() : Compare(*pael, *pmark, key);
  }
};

void Append(RecordList* list, const std::vector<int>& keys) {
  for (size_t i = 0; i < keys.size(); ++i) {
    const Record record{keys[i], static_cast<int>(i)};
    list->Ny(1, &record);
  }
}

template <class Action>
std::wstring ThrownLiteral(Action action) {
  try {
    action();
  } catch (const wchar_t* text) {
    return text;
  }
  return L"(nothing thrown)";
}
template <class Action>
std::wstring ThrownString(Action action) {
  try {
    action();
  } catch (const CString& text) {
    return text.GetString();
  }
  return L"(nothing thrown)";
}

// A list as a plain vector, with the cursor and the mark as ids.
struct Model {
  std::vector<int> ids;
  int current = kNone;
  int marked = kNone;
  int pos = 0;

  int Size() const { return static_cast<int>(ids.size()); }
  int IndexOf(int id) const {
    const auto at = std::find(ids.begin(), ids.end(), id);
    return at == ids.end() ? kNone : static_cast<int>(at - ids.begin());
  }
  bool Step(int by) {
    const int at = current == kNone ? kNone : IndexOf(current) + by;
    if (current == kNone || at < 0 || at >= Size()) return false;
    current = ids[static_cast<size_t>(at)];
    pos += by;
    return true;
  }
  int GoTo(int index) {
    if (ids.empty()) return -1;
    current = ids[static_cast<size_t>(index)];
    pos = index + 1;
    return 0;
  }
  int Add(int id) {
    ids.push_back(id);
    const int steps = current == kNone ? 0 : Size() - 1 - IndexOf(current);
    pos = current == kNone ? Size() : pos + steps;
    current = id;
    return steps;
  }
  int Insert(int id) {
    if (ids.empty()) return Add(id);
    if (current == kNone) return -1;
    ids.insert(ids.begin() + IndexOf(current), id);
    current = id;
    return 0;
  }
  int Delete() {
    if (current == kNone) return -1;
    const int at = IndexOf(current);
    if (marked == current) marked = kNone;
    ids.erase(ids.begin() + at);
    if (at == Size()) --pos;
    current = ids.empty() ? kNone : ids[static_cast<size_t>(std::min(at, Size() - 1))];
    return ids.empty() ? -1 : 0;
  }
};

TEST(List0, AgreesWithAPlainVectorThroughRandomSteps) {
  std::mt19937 random(20240501);
  RecordList list;
  Model model;
  Record foreign{0, 0};
  int next_id = 0;
  for (int step = 0; step < 40000; ++step) {
    // Long runs of growing and of shrinking, so that short lists and long ones both come up.
    const bool shrink = (step / 200) % 2 == 1;
    const int operation = static_cast<int>(random() % 14);
    SCOPED_TRACE(testing::Message() << "step " << step << ", operation " << operation);
    switch (operation) {
      case 0:
        EXPECT_EQ(list++ != nullptr, model.Step(+1));
        break;
      case 1:
        EXPECT_EQ(list-- != nullptr, model.Step(-1));
        break;
      case 2:
        EXPECT_EQ(list.Home(), model.GoTo(0));
        break;
      case 3:
        EXPECT_EQ(list.End(), model.GoTo(model.Size() - 1));
        break;
      case 4: {  // a record of the list, or one that is not in it
        std::vector<Record*> records = {&foreign};
        for (int at = list.Home(); at == 0; at = list++ == nullptr ? -1 : 0) records.push_back(list.pael);
        Record* wanted = records[random() % records.size()];
        list.pos = model.pos;  // as before the walk that collected them
        EXPECT_EQ(list.Set_aktel(wanted), wanted == &foreign ? -1 : 0);
        model.current = wanted == &foreign ? kNone : wanted->id;
        break;
      }
      case 5:
        EXPECT_EQ(list.Set_mark(), 0);
        model.marked = model.current;
        break;
      case 6:
        EXPECT_EQ(list.Goto_mark(), model.marked == kNone ? -1 : model.GoTo(model.IndexOf(model.marked)));
        break;
      case 7: {
        const Record record{step, next_id};
        const int where = static_cast<int>(random() % 3);
        const int made = where == 1 ? std::min(model.Add(next_id), 0) : model.Insert(next_id);
        EXPECT_EQ(list.Ny(where, &record), made);
        ++next_id;
        break;
      }
      case 8:
      case 9:
      case 10:
        if (shrink) {
          EXPECT_EQ(list.Delete(), model.Delete());
          break;
        }
        EXPECT_EQ(list.Add(), model.Add(next_id));
        list.pael->id = next_id++;
        break;
      case 11: {
        const int made = model.Insert(next_id);
        EXPECT_EQ(list.Insert(), made);
        if (made >= 0) list.pael->id = next_id;
        ++next_id;
        break;
      }
      default:
        EXPECT_EQ(list.Delete(), model.Delete());
    }
    int count = -5;
    EXPECT_EQ(list.Where(&count), model.ids.empty() ? -1 : model.pos);
    EXPECT_EQ(count, model.Size());
    EXPECT_EQ(list.Set_pael(), model.current == kNone ? -1 : 0);
    if (step % 16 == 0 || model.Size() < 8) {
      EXPECT_EQ(list.Ids(), model.ids);
    }
    EXPECT_EQ(list.CurrentId(), model.current);
    EXPECT_EQ(list.MarkedId(), model.marked);
    if (testing::Test::HasFailure()) return;
  }
}

TEST(List0, AddWalksFromTheCurrentElement) {
  RecordList list;
  Append(&list, {1, 2, 3, 4, 5});
  list.Home();
  list++;
  list++;
  EXPECT_EQ(list.Add(), 3);
  EXPECT_EQ(list.Where(), 6);
}

TEST(List0, NyWithoutASourceFillsWithZeros) {
  struct Wide {
    double real;
    wchar_t text[5];
    char tail;
  };
  list0<Wide> list;
  ASSERT_EQ(list.Ny(1), 0);
  EXPECT_EQ(list.pael->real, 0.0);
  EXPECT_EQ(std::wstring(list.pael->text, 5), std::wstring(5, L'\0'));
  EXPECT_EQ(list.pael->tail, 0);
}

TEST(List0, SizeOfANodeIsCountedInWords) {
  EXPECT_EQ(RecordList().storlek, static_cast<int>((sizeof(Record) + 2 * sizeof(void*)) / 4));
}

TEST(List0, CopyingThrows) {
  RecordList list;
  EXPECT_EQ(ThrownLiteral([&] { const list0<Record> copy(list); }), L"Internt fel (Initiering list0)");
  RecordList other;
  Append(&other, {7});
  EXPECT_EQ(ThrownLiteral([&] { static_cast<list0<Record>&>(other) = list; }),
            L"Internt fel (Tilldelning list0)");
  EXPECT_EQ(other.Ids(), std::vector<int>{0});
}

TEST(List0, RunningOutOfMemoryThrowsAndLeavesTheListWhole) {
  RecordList list;
  const auto with_allocations = [&](int left, const std::function<void()>& action) {
    allocations_left = left;
    const std::wstring thrown = ThrownLiteral(action);
    allocations_left = -1;
    return thrown;
  };
  EXPECT_EQ(with_allocations(0, [&] { list.Insert(); }), L"Minnesbrist (Class list0)");
  Append(&list, {3, 1, 2});
  EXPECT_EQ(with_allocations(0, [&] { list.Ny(1); }), L"Minnesbrist (Class list0)");
  EXPECT_EQ(with_allocations(0, [&] { list.Ny(0); }), L"Minnebrist (Class list0)");
  EXPECT_EQ(with_allocations(0, [&] { list.Sortera(kRising); }), L"Minnebrist (Pek-Class list0)");
  EXPECT_EQ(with_allocations(1, [&] { list.Sortera(kRising); }), L"Minnebrist (Sort-Class list0)");
  EXPECT_EQ(list.Ids(), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(list.CurrentId(), 2);
  EXPECT_EQ(list.Where(), 3);
}

// --- Sortera

// Passes over all unplaced records, each giving the next place to the best one.
std::vector<int> RankedInPasses(const std::vector<int>& keys, int key) {
  std::vector<int> order;
  std::vector<bool> placed(keys.size());
  const auto record = [&](size_t i) { return Record{keys[i], static_cast<int>(i)}; };
  for (;;) {
    std::optional<size_t> best;
    for (size_t i = 0; i < keys.size(); ++i) {
      if (placed[i]) continue;
      if (!best || Compare(record(*best), record(i), key) >= 1) best = i;
    }
    if (!best) return order;
    placed[*best] = true;
    order.push_back(static_cast<int>(*best));
  }
}

std::vector<int> RandomKeys(std::mt19937* random, size_t count, size_t spread) {
  std::vector<int> keys(count);
  for (int& key : keys) key = static_cast<int>((*random)() % spread);
  return keys;
}

TEST(List0Sort, RanksAsThePassesDo) {
  std::mt19937 random(7);
  for (int round = 0; round < 600; ++round) {
    const size_t count = 1 + random() % 40;
    const std::vector<int> keys = RandomKeys(&random, count, 1 + random() % 50);
    for (int key = kUnsorted; key <= kFallingTiesToo; ++key) {
      SCOPED_TRACE(testing::Message() << "round " << round << ", key " << key << ", records " << count);
      RecordList list;
      Append(&list, keys);
      list.Home();
      for (size_t i = random() % count; i > 0; --i) list++;
      list.Set_mark();
      list.Home();
      for (size_t i = random() % count; i > 0; --i) list++;
      const int current = list.CurrentId(), marked = list.MarkedId(), position = list.Where();
      ASSERT_EQ(list.Sortera(key), 0);
      ASSERT_EQ(list.Ids(), RankedInPasses(keys, key));
      EXPECT_EQ(list.CurrentId(), current);
      EXPECT_EQ(list.MarkedId(), marked);
      EXPECT_EQ(list.Where(), position);  // the old number, wherever the element stands now
    }
  }
}

TEST(List0Sort, AHundredThousandRecordsComeOutInOrder) {
  std::mt19937 random(3);
  RecordList list;
  Append(&list, RandomKeys(&random, 100000, 30000));
  ASSERT_EQ(list.Sortera(kRising), 0);
  Record last{-1, -1};
  int seen = 0;
  for (int at = list.Home(); at == 0; at = list++ == nullptr ? -1 : 0, ++seen) {
    ASSERT_LT(std::pair(last.key, last.id), std::pair(list.pael->key, list.pael->id));
    last = *list.pael;
  }
  EXPECT_EQ(seen, 100000);
}

TEST(List0Sort, EmptyListsAndSingleRecords) {
  RecordList list;
  EXPECT_EQ(list.Sortera(kRising), -1);
  EXPECT_EQ(list.Omsortera(kRising), -1);
  list.override_compare = []() -> int { throw "a single record is compared with nothing"; };
  Append(&list, {1});
  EXPECT_EQ(list.Sortera(kRising), 0);
  EXPECT_EQ(list.Omsortera(kRising), 0);
}

TEST(List0Sort, ACountThatDisagreesIsReported) {
  RecordList list;
  Append(&list, {3, 1, 2});
  list.antal = 4;
  EXPECT_EQ(ThrownString([&] { list.Sortera(kRising); }), L"Sorteringfel ! 3 st av 4");
  EXPECT_EQ(list.felText, L"Sorteringfel ! 3 st av 4");
  EXPECT_EQ(list.Ids(), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(list.CurrentId(), 2);
  list.antal = 2;
  EXPECT_EQ(ThrownString([&] { list.Sortera(kRising); }), L"Sorteringfel ! 3 st av 2");
  list.antal = 5;
  EXPECT_EQ(ThrownString([&] { list.Omsortera(kRising); }), L"Fel i sortering\nAntal poster 5\nSorterade 3");
  EXPECT_EQ(list.felText, L"Fel i sortering\nAntal poster 5\nSorterade 3");
}

// --- Omsortera

struct Insertion {
  std::vector<int> order;
  int current = kNone;  // of the last comparison
  int marked = kNone;
  int counter = 1;
};

Insertion SortedByInsertion(const std::vector<int>& keys, int key) {
  std::list<Record> records;
  for (size_t i = 0; i < keys.size(); ++i) records.push_back({keys[i], static_cast<int>(i)});
  Insertion result;
  const auto compare = [&](const Record& current, const Record& marked) {
    result.current = current.id;
    result.marked = marked.id;
    return Compare(current, marked, key);
  };
  for (auto examined = records.begin(); std::next(examined) != records.end(); ++result.counter) {
    const auto successor = std::next(examined);
    if (compare(*examined, *successor) < 1) {
      ++examined;
      continue;
    }
    const Record moved = *successor;
    records.erase(successor);
    auto before = records.begin();
    while (compare(*before, moved) <= 0) ++before;
    records.insert(before, moved);
  }
  for (const Record& record : records) result.order.push_back(record.id);
  return result;
}

TEST(List0Resort, InsertsStepByStep) {
  std::mt19937 random(11);
  for (int round = 0; round < 600; ++round) {
    const std::vector<int> keys = RandomKeys(&random, 2 + random() % 25, 1 + random() % 30);
    for (int key = kUnsorted; key <= kFallingTiesToo; ++key) {
      SCOPED_TRACE(testing::Message() << "round " << round << ", key " << key);
      const Insertion expected = SortedByInsertion(keys, key);
      ASSERT_EQ(expected.counter, static_cast<int>(keys.size()));
      RecordList list;
      Append(&list, keys);
      ASSERT_EQ(list.Omsortera(key), 0);
      ASSERT_EQ(list.Ids(), expected.order);
      EXPECT_EQ(list.CurrentId(), expected.current);
      EXPECT_EQ(list.MarkedId(), expected.marked);
    }
  }
}

TEST(List0Resort, AComparisonAtOddsWithItselfIsReported) {
  RecordList list;
  Append(&list, {1, 2, 3});
  int calls = 0;
  // Also no record is put before itself.
  list.override_compare = [&] { return ++calls == 1 || list.pael == list.pmark ? 1 : 0; };
  EXPECT_EQ(ThrownLiteral([&] { list.Omsortera(kRising); }), L"Internt sorteringsfel i Todbs::Sortera");
  EXPECT_EQ(list.Ids(), (std::vector<int>{0, 1, 2}));
}

}  // namespace
}  // namespace velmora
