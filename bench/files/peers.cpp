#include "bench/files/peers.h"

#include <fast_float/fast_float.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace velmora::bench {
namespace {

class MappedFile {
 public:
  explicit MappedFile(const std::string& file) {
    const int fd = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (fd < 0 || fstat(fd, &status) != 0) std::abort();
    size_ = static_cast<size_t>(status.st_size);
    data_ = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, fd, 0);
    close(fd);
    if (data_ == MAP_FAILED) std::abort();
  }
  ~MappedFile() { munmap(data_, size_); }
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  std::string_view Text() const { return {static_cast<const char*>(data_), size_}; }

 private:
  void* data_ = nullptr;
  size_t size_ = 0;
};

std::string_view TakeLine(std::string_view* text) {
  const size_t end = std::min(text->find('\n'), text->size());
  const std::string_view line = text->substr(0, end);
  text->remove_prefix(std::min(end + 1, text->size()));
  return line;
}

template <class Number>
const char* Scan(const char* at, const char* end, Number* number) {
  while (at < end && *at == ' ') ++at;
  const auto read = fast_float::from_chars(at, end, *number);
  if (read.ec != std::errc()) std::abort();
  return read.ptr;
}

class Output {
 public:
  explicit Output(const std::string& file)
      : fd_(open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)) {
    if (fd_ < 0) std::abort();
  }
  ~Output() {
    Flush();
    close(fd_);
  }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void Put(double number, int decimals, char behind) {
    at_ = std::to_chars(at_, at_ + kLongest, number, std::chars_format::fixed, decimals).ptr;
    *at_++ = behind;
    if (at_ > buffer_ + sizeof buffer_ - 2 * kLongest) Flush();
  }
  void Put(std::string_view text) {
    std::memcpy(at_, text.data(), text.size());
    at_ += text.size();
  }

 private:
  static constexpr size_t kLongest = 330;

  void Flush() {
    if (write(fd_, buffer_, static_cast<size_t>(at_ - buffer_)) != at_ - buffer_) std::abort();
    at_ = buffer_;
  }

  int fd_;
  char buffer_[size_t{64} << 10];
  char* at_ = buffer_;
};

}  // namespace

Points ReadPoints(const std::string& file) {
  const MappedFile mapped(file);
  std::string_view text = mapped.Text();
  Points points;
  while (!text.empty()) {
    const std::string_view line = TakeLine(&text);
    if (line.starts_with('*')) {
      TakeLine(&text);
      TakeLine(&text);
      break;
    }
    kovltype p{};
    const char* end = line.data() + line.size();
    Scan(Scan(Scan(Scan(line.data(), end, &p.x), end, &p.y), end, &p.bulge), end, &p.sek);
    points.plan.push_back(p);
  }
  while (!text.empty()) {
    const std::string_view line = TakeLine(&text);
    kovltype p{};
    const char* end = line.data() + line.size();
    Scan(Scan(Scan(line.data(), end, &p.x), end, &p.y), end, &p.bulge);
    p.sek = p.y;
    points.profile.push_back(p);
  }
  return points;
}

void WritePoints(const std::string& file, const Points& points) {
  Output out(file);
  for (const kovltype& p : points.plan) {
    out.Put(p.x, 4, ' ');
    out.Put(p.y, 4, ' ');
    out.Put(p.bulge, 4, ' ');
    out.Put(p.sek, 4, '\r');
    out.Put("\n");
  }
  if (!points.profile.empty()) out.Put("*\r\nProfil\r\n*\r\n");
  for (const kovltype& p : points.profile) {
    out.Put(p.x, 4, ' ');
    out.Put(p.y, 4, ' ');
    out.Put(p.bulge, 4, '\r');
    out.Put("\n");
  }
}

std::vector<stdpkttype> ReadSupportPoints(const std::string& file) {
  const MappedFile mapped(file);
  std::string_view text = mapped.Text();
  for (int line = 0; line < 7; ++line) TakeLine(&text);
  std::vector<stdpkttype> points;
  while (!text.empty() && text.front() != '*') {
    stdpkttype p{};
    std::string_view name = TakeLine(&text);
    if (name.ends_with('\r')) name.remove_suffix(1);
    for (size_t i = 0; i < std::min(name.size(), std::size(p.namn) - 1); ++i)
      p.namn[i] = static_cast<unsigned char>(name[i]);
    const std::string_view level = TakeLine(&text);
    Scan(level.data(), level.data() + level.size(), &p.z);
    TakeLine(&text);
    points.push_back(p);
  }
  return points;
}

void WriteSupportPoints(const std::string& file, const std::vector<stdpkttype>& points) {
  Output out(file);
  out.Put("0.0\r\n0.0\r\n0.0\r\n0.0\r\n0.0\r\n0.0\r\n*\r\n");
  for (const stdpkttype& p : points) {
    char name[16];
    size_t length = 0;
    while (p.namn[length] != 0) {
      name[length] = static_cast<char>(p.namn[length]);
      ++length;
    }
    out.Put({name, length});
    out.Put("\r\n  ");
    out.Put(p.z, 4, '\r');
    out.Put("\n  ");
    for (int i = 0; i < 5; ++i) {
      out.Put(p.varden[i], 2, ' ');
      out.Put("  ");
    }
    out.Put(p.varden[5], 2, '\r');
    out.Put("\n");
  }
  out.Put("*\r\n");
}

}  // namespace velmora::bench
