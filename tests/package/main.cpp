// A client of the installed package: makes, derives from and destroys every public class, and calls across
// the rooms.
#include <cstdio>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include "velmora/velmora.h"

using namespace velmora;

namespace {

int failures = 0;

void Expect(bool holds, const char* what) {
  if (holds) return;
  std::printf("does not hold: %s\n", what);
  ++failures;
}

// A class derived from `Base`, made on the heap and destroyed as its base.
template <class Base, class... Arguments>
void MakeAndDerive(Arguments&&... arguments) {
  [[maybe_unused]] Base direct(arguments...);
  struct Derived : Base {
    using Base::Base;
    int added = 7;
  };
  auto* derived = new Derived(arguments...);
  Expect(derived->added == 7, "a derived object holds its own members");
  if constexpr (std::has_virtual_destructor_v<Base>)
    delete static_cast<Base*>(derived);
  else
    delete derived;
}

template <class... Bases>
void MakeAndDeriveAll() {
  (MakeAndDerive<Bases>(), ...);
}

struct Window : NotifyWindow {
  void Notify(unsigned, std::uintptr_t, std::intptr_t) override {}
};

void EveryClass() {
  CTundrilIni ini;
  CProjPath project;
  MakeAndDeriveAll<CString, CStringA, list0<int>, CRegistry, RegistryKey, CTundrilIni, CProjPath, CDirSort,
                   CProjektStatus, CTundrilInst, CLinkodLista, CVaglinje, CVag2, CRitningsFormat, CDdeCom,
                   Window, CFont, CPoint, CSize, CRect, COleDateTime>();
  MakeAndDerive<CTundrilCFG>(&ini);
  MakeAndDerive<CTundrilPAR>(&ini, &project);
  MakeAndDerive<CJb23Par>(&ini, &project);
  MakeAndDerive<CStodPunkt>(L"no such file.stp");
  MakeAndDerive<Locator>(std::vector<kovltype>(), 0);
  MakeAndDerive<Network>(std::span<const std::vector<kovltype>>());
#ifdef _WIN32
  MakeAndDerive<HwndNotifyWindow>(HWND{});
#endif
}

}  // namespace

int main() {
  SetMessageBoxHandler([](const MessageBoxCall&) { return IDOK; });
  EveryClass();

  Expect(Version() == VELMORA_VERSION, "the library is the one of the headers");
  CProjPath paths;
  Expect(paths.SetPath(L"D:\\ROAD") == 0, "SetPath");
  CString text;
  text.Format(L"%s %.1f", paths.m_ZipPath, 2.5);
  Expect(text == L"D:\\ROAD\\TUNDRIL.ZIP 2.5", "a path and a format");
  CLinkodLista codes;
  const linkodpartype code{};
  Expect(codes.Ny(1, &code) >= 0 && codes.Home() == 0, "a list of line codes");
  Expect(!LoadText(LibraryModule(), 57344).IsEmpty(), "the string table");
  try {
    list0<int> numbers;
    list0<int> copy(numbers);
    Expect(false, "lists are not copied");
  } catch (...) {
  }
  CVaglinje line;
  Expect(line.Init(L"D:\\no such file.vl") != 0, "a missing file is refused");
  if (failures == 0) std::puts("found");
  return failures;
}
