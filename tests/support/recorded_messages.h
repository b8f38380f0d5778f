// What the library says to its user, caught while this lives.
#ifndef VELMORA_TESTS_SUPPORT_RECORDED_MESSAGES_H_
#define VELMORA_TESTS_SUPPORT_RECORDED_MESSAGES_H_

#include <utility>
#include <vector>

#include "tests/support/print_text.h"
#include "velmora/common/messages.h"

namespace velmora {

class RecordedMessages {
 public:
  RecordedMessages() {
    previous_box_ = SetMessageBoxHandler([this](const MessageBoxCall& call) {
      boxes.push_back(call);
      return answer;
    });
    previous_bar_ = SetStatusBarHandler([this](const CString& text) {
      status.push_back(text);
      return true;
    });
  }
  ~RecordedMessages() {
    SetMessageBoxHandler(std::move(previous_box_));
    SetStatusBarHandler(std::move(previous_bar_));
  }
  RecordedMessages(const RecordedMessages&) = delete;
  RecordedMessages& operator=(const RecordedMessages&) = delete;

  std::vector<MessageBoxCall> boxes;
  std::vector<CString> status;
  int answer = IDOK;  // to every box

 private:
  MessageBoxHandler previous_box_;
  StatusBarHandler previous_bar_;
};

}  // namespace velmora

#endif  // VELMORA_TESTS_SUPPORT_RECORDED_MESSAGES_H_
