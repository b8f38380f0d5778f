// An open file of the system, closed at the end.
#ifndef VELMORA_PLATFORM_POSIX_FILE_DESCRIPTOR_H_
#define VELMORA_PLATFORM_POSIX_FILE_DESCRIPTOR_H_

#include <unistd.h>

#include <utility>

namespace velmora {

class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int fd) : fd_(fd) {}
  FileDescriptor(FileDescriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    Close();
    fd_ = std::exchange(other.fd_, -1);
    return *this;
  }
  ~FileDescriptor() { Close(); }

  explicit operator bool() const { return fd_ >= 0; }
  int Get() const { return fd_; }
  void Close() {
    if (fd_ >= 0) close(fd_);
    fd_ = -1;
  }

 private:
  int fd_ = -1;
};

}  // namespace velmora

#endif  // VELMORA_PLATFORM_POSIX_FILE_DESCRIPTOR_H_
