#include "tests/link/test_bus.h"

#include <windows.h>

namespace velmora::testing {
namespace {

// Wine keeps an answered transaction on its queue, where it hides what comes for others.
bool IsWine() { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

}  // namespace

struct TestBus::System {};

TestBus::TestBus() = default;
TestBus::~TestBus() = default;
void TestBus::Stop() {}
bool TestBus::TellsAnswers() { return !IsWine(); }

}  // namespace velmora::testing
