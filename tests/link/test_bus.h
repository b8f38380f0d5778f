// What carries the conversations of a test: a bus of its own where that takes one, else the system's DDE.
#ifndef VELMORA_TESTS_LINK_TEST_BUS_H_
#define VELMORA_TESTS_LINK_TEST_BUS_H_

#include <memory>

namespace velmora::testing {

class TestBus {
 public:
  TestBus();
  ~TestBus();
  TestBus(const TestBus&) = delete;
  TestBus& operator=(const TestBus&) = delete;

  // A bus stands still from now on, as one that hangs.
  void Stop();
  // Whether what was poked is acknowledged to the client. Not under Wine.
  static bool TellsAnswers();

 private:
  struct System;
  std::unique_ptr<System> system_;
};

}  // namespace velmora::testing

#endif  // VELMORA_TESTS_LINK_TEST_BUS_H_
