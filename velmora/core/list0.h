// The library's list of records: doubly linked, with a current element and a mark.
//
// Records are trivially copyable. The list owns its nodes; a pointer to a record is valid until that
// record is deleted. Positions count from 1.
//
//   list0<cfgtype> settings;
//   settings.Ny(1, &record);                       // append; the new element is current
//   for (int ok = settings.Home(); ok == 0; ok = settings++ ? 0 : -1) use(settings.pael);
//
// Results are 0, or -1 when there is no such element or the list is empty, except where stated.
// `pos` is updated by the moving operations, not by the sorts or Set_aktel: call Home, End or Goto_mark
// before using it.
//
// The only class of the library that throws: const wchar_t* when memory runs out or a list is copied, a
// CString when a sort finds the list inconsistent. Not thread-safe.
#ifndef VELMORA_CORE_LIST0_H_
#define VELMORA_CORE_LIST0_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>

#include "velmora/core/node_pool.h"
#include "velmora/core/tournament.h"
#include "velmora/export.h"
#include "velmora/text/string.h"

namespace velmora {

template <class T>
class VELMORA_TEMPLATE_API list0 {
  static_assert(std::is_trivially_copyable_v<T>, "records are copied byte for byte");

 public:
  list0() = default;  // empty
  virtual ~list0() = default;

  // Copying throws a const wchar_t*. @{
  list0(const list0&) { throw L"Internt fel (Initiering list0)"; }
  list0& operator=(const list0&) { throw L"Internt fel (Tilldelning list0)"; }
  // @}

  // One step forward or back; returns the list. Null, with nothing changed, at the end of the list. @{
  list0* operator++(int) { return Step(aktuell == nullptr ? nullptr : aktuell->next, +1); }
  list0* operator--(int) { return Step(aktuell == nullptr ? nullptr : aktuell->previous, -1); }
  // @}

  // Appends an element with an uninitialised record and makes it current. Returns the number of steps
  // from the old current element to the new one.
  int Add();
  // The same before the current element; at the end of an empty list. `pos` is unchanged.
  int Insert();
  // Appends (`where` 1) or inserts before the current element (any other value) and copies `source` into
  // the record, or zeros without one.
  int Ny(int where, const T* source = nullptr);
  // Removes the current element. Its successor becomes current, or its predecessor when it was the last;
  // a mark on it is cleared. -1 when no current element remains.
  int Delete();

  int Home() { return Reposition(forsta, 1); }    // makes the first element current; -1 on an empty list
  int End() { return Reposition(sista, antal); }  // the last one

  // Updates `pael` and returns it; null without a current element.
  T* Get_aktel() {
    Set_pael();
    return pael;
  }
  // Makes the element of this record current, compared by address. -1 leaves no current element.
  int Set_aktel(T* record);

  // Marks the current element. Always 0.
  int Set_mark() {
    ++changes_;
    mark = aktuell;
    Sort_mark();
    return 0;
  }
  // Makes the marked element current. -1 when there is no mark, or when it is no longer in the list: the
  // first element is then current and the mark cleared.
  int Goto_mark();
  // Updates `pael` from the current element.
  int Set_pael() {
    T* const record = aktuell == nullptr ? nullptr : &aktuell->record;
    if (record != pael) ++changes_;
    pael = record;
    return pael == nullptr ? -1 : 0;
  }

  // The position of the current element, -1 on an empty list; the number of elements into *count.
  int Where(int* count = nullptr) {
    if (count != nullptr) *count = antal;
    return forsta == nullptr ? -1 : pos;
  }

  // Sorts ascending by Sortval; stable. The current and the marked record are unchanged. O(n log n)
  // comparisons; tournament.h states the requirements on the comparison.
  int Sortera(int key);
  // Insertion sort, for lists with few elements out of order: one comparison per element, and one pass for
  // each element that moves. The current element and the mark are then those of the last comparison.
  int Omsortera(int key);

 protected:
  // An element: a record and its links.
  struct Node {
    Node* previous;  // null: the first
    Node* next;      // null: the last
    T record;        // the client's data
  };

  Node* forsta = nullptr;                             // first
  Node* sista = nullptr;                              // last
  Node* aktuell = nullptr;                            // current
  Node* mark = nullptr;                               // the marked element; null without one
  int storlek = (sizeof(T) + 2 * sizeof(Node*)) / 4;  // of a record with its two links, in 32-bit words
  int antal = 0;                                      // number of elements
  int pos = 0;                                        // of the current element, from 1; see above
  CString felText;                                    // the last text thrown as a CString

  // Updates `pmark` from the mark. -1 without one.
  int Sort_mark() {
    pmark = mark == nullptr ? nullptr : &mark->record;
    return pmark == nullptr ? -1 : 0;
  }
  // Above 0 when the record at `pmark` comes before the one at `pael`.
  virtual int Sortval(int /*key*/) { return 0; }

  // Modification counter: the current element, the mark or the links changed. Derived classes use it to
  // invalidate data that they keep beside the list.
  std::uint64_t Changes() const { return changes_; }
  // The same of the links alone.
  std::uint64_t LinkChanges() const { return link_changes_; }
  // Removes every element, with the result of repeated Delete.
  void DeleteAll() {
    if (forsta == nullptr) return;
    NoteLinks();
    nodes_.FreeAll();
    forsta = sista = aktuell = mark = nullptr;
    antal = pos = 0;
    Set_pael();
    Sort_mark();
  }
  // Makes the element at this position current.
  int Reposition(Node* to, int position) {
    if (to == nullptr) return -1;
    aktuell = to;
    pos = position;
    return Set_pael();
  }

 public:
  T* pael = nullptr;   // the current record; null without one
  T* pmark = nullptr;  // the marked record; null without one

 private:
  static inline const T kZeros{};

  // Restores the current element and the mark after a sort, also when it throws.
  class CursorGuard {
   public:
    explicit CursorGuard(list0* list) : list_(list), aktuell_(list->aktuell), mark_(list->mark) {}
    ~CursorGuard() { list_->PutCursors(aktuell_, mark_); }
    CursorGuard(const CursorGuard&) = delete;
    CursorGuard& operator=(const CursorGuard&) = delete;

   private:
    list0* list_;
    Node* aktuell_;
    Node* mark_;
  };

  Node* NewNode(const wchar_t* out_of_memory) {
    void* memory = nodes_.Take();
    if (memory == nullptr) throw out_of_memory;
    return new (memory) Node;
  }

  void PutCursors(Node* current, Node* marked) {
    aktuell = current;
    mark = marked;
    Set_pael();
    Sort_mark();
  }
  // Whether `later` comes before `earlier`.
  bool ComesBefore(Node* later, Node* earlier, int key) {
    PutCursors(earlier, later);
    return Sortval(key) > 0;
  }

  list0* Step(Node* to, int by) {
    if (to == nullptr) return nullptr;
    aktuell = to;
    pos += by;
    Set_pael();
    return this;
  }
  void NoteLinks() {
    ++changes_;
    ++link_changes_;
  }
  // Links `node` before `next`, at the end when that is null.
  void Link(Node* node, Node* next) {
    NoteLinks();
    node->next = next;
    node->previous = next == nullptr ? sista : next->previous;
    (node->previous == nullptr ? forsta : node->previous->next) = node;
    (next == nullptr ? sista : next->previous) = node;
  }
  Node* Unlink(Node* node) {
    NoteLinks();
    (node->previous == nullptr ? forsta : node->previous->next) = node->next;
    (node->next == nullptr ? sista : node->next->previous) = node->previous;
    node->previous = node->next = nullptr;
    return node;
  }

  NodePool nodes_{sizeof(Node)};
  std::uint64_t changes_ = 0;
  std::uint64_t link_changes_ = 0;
};

template <class T>
int list0<T>::Add() {
  Node* node = NewNode(L"Minnesbrist (Class list0)");
  const bool from_current = aktuell != nullptr;
  Link(node, nullptr);
  ++antal;
  if (!from_current) {
    Reposition(node, antal);
    return 0;
  }
  int steps = 0;
  while ((*this)++ != nullptr) ++steps;
  return steps;
}

template <class T>
int list0<T>::Insert() {
  if (forsta == nullptr) return Add();
  if (aktuell == nullptr) return -1;
  Node* node = NewNode(L"Minnebrist (Class list0)");
  Link(node, aktuell);
  ++antal;
  aktuell = node;
  Set_pael();
  return 0;
}

template <class T>
int list0<T>::Ny(int where, const T* source) {
  const int made = where == 1 ? Add() : Insert();
  if (made < 0) return made;
  *pael = source == nullptr ? kZeros : *source;
  return 0;
}

template <class T>
int list0<T>::Delete() {
  if (aktuell == nullptr) return -1;
  Node* gone = aktuell;
  if (gone == mark) {
    mark = nullptr;
    Sort_mark();
  }
  aktuell = gone->next;
  if (aktuell == nullptr) {
    aktuell = gone->previous;
    --pos;
  }
  nodes_.Give(Unlink(gone));
  --antal;
  return Set_pael();
}

template <class T>
int list0<T>::Set_aktel(T* record) {
  aktuell = forsta;
  while (aktuell != nullptr && &aktuell->record != record) aktuell = aktuell->next;
  return Set_pael();
}

template <class T>
int list0<T>::Goto_mark() {
  if (mark == nullptr) return -1;
  int position = 1;
  for (Node* node = forsta; node != nullptr; node = node->next, ++position)
    if (node == mark) return Reposition(node, position);
  Home();
  mark = nullptr;
  Sort_mark();
  return -1;
}

template <class T>
int list0<T>::Sortera(int key) {
  if (antal < 1) return -1;
  if (antal == 1) return 0;
  const CursorGuard guard(this);
  const auto wanted = static_cast<size_t>(antal);

  const std::unique_ptr<Node*[]> order(new (std::nothrow) Node*[wanted + 1]);
  if (order == nullptr) throw L"Minnebrist (Pek-Class list0)";
  const std::unique_ptr<int[]> ranks(new (std::nothrow) int[TournamentSize(wanted)]);
  if (ranks == nullptr) throw L"Minnebrist (Sort-Class list0)";

  // One element more than `antal` shows that the links and the count disagree.
  size_t reached = 0;
  for (Node* node = forsta; node != nullptr && reached <= wanted; node = node->next) order[reached++] = node;
  if (reached != wanted) {
    felText.Format(L"Sorteringfel ! %ld st av %ld", reached, antal);
    throw CString(felText);
  }

  Tournament tournament(ranks.get(), wanted, [&](int later, int earlier) {
    return ComesBefore(order[static_cast<size_t>(later)], order[static_cast<size_t>(earlier)], key);
  });
  // The links change only after the last comparison, so that a comparison that throws leaves the list
  // unchanged.
  for (size_t place = 0; place < wanted; ++place) tournament.TakeWinner(place);
  Node* previous = nullptr;
  for (size_t place = 0; place < wanted; ++place) {
    Node* node = order[static_cast<size_t>(tournament.Placed(place))];
    node->previous = previous;
    node->next = nullptr;
    (previous == nullptr ? forsta : previous->next) = node;
    previous = node;
  }
  sista = previous;
  NoteLinks();
  return 0;
}

template <class T>
int list0<T>::Omsortera(int key) {
  if (antal < 1) return -1;
  if (antal == 1) return 0;
  int visited = 1;
  Node* examined = forsta;
  while (examined != nullptr && examined->next != nullptr) {
    Node* follower = examined->next;
    if (ComesBefore(follower, examined, key)) {
      // Its new position is found before it is unlinked, so that it is not lost when there is none.
      Node* before = forsta;
      while (before != nullptr && (before == follower || !ComesBefore(follower, before, key)))
        before = before->next;
      // An inconsistent comparison: it has just put `follower` before `examined`.
      if (before == nullptr) throw L"Internt sorteringsfel i Todbs::Sortera";
      Link(Unlink(follower), before);
    } else {
      examined = follower;
    }
    ++visited;
  }
  if (visited != antal) {
    felText.Format(L"Fel i sortering\nAntal poster %ld\nSorterade %ld", antal, visited);
    throw CString(felText);
  }
  return 0;
}

}  // namespace velmora

#endif  // VELMORA_CORE_LIST0_H_
