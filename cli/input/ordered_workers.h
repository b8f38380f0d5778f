// Work on blocks by several threads, with the results in the order of the blocks.
#ifndef VELMORA_CLI_INPUT_ORDERED_WORKERS_H_
#define VELMORA_CLI_INPUT_ORDERED_WORKERS_H_

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace velmora::cli {

// How many threads the machine runs at once, one at least.
inline int AllCores() { return std::max(1, static_cast<int>(std::thread::hardware_concurrency())); }

//   OrderedWorkers<Block> workers(threads, [](Block* block) { ... });
//   while (read a block) {
//     if (workers.Full()) write(workers.Take());
//     workers.Put(std::move(block));
//   }
//   while (!workers.Empty()) write(workers.Take());
//
// All but `work` runs in the caller's thread, which is one of the threads: it works too where it would wait.
template <class Block>
class OrderedWorkers {
 public:
  OrderedWorkers(int threads, std::function<void(Block*)> work) : work_(std::move(work)), threads_(threads) {
    // Fewer threads than asked for will do.
    try {
      for (int i = 1; i < threads; ++i) running_.emplace_back([this] { Run(); });
    } catch (const std::system_error&) {
      threads_ = 1 + static_cast<int>(running_.size());
    }
  }
  ~OrderedWorkers() {
    {
      const std::lock_guard lock(mutex_);
      stop_ = true;
    }
    wake_.notify_all();
    for (std::thread& thread : running_) thread.join();
  }
  OrderedWorkers(const OrderedWorkers&) = delete;
  OrderedWorkers& operator=(const OrderedWorkers&) = delete;

  bool Empty() const { return jobs_.empty(); }
  // Whether every thread has work now and next.
  bool Full() const { return jobs_.size() >= 2 * static_cast<size_t>(threads_); }

  void Put(std::unique_ptr<Block> block) {
    const std::shared_ptr<Job> job = std::make_shared<Job>();
    job->block = std::move(block);
    jobs_.push_back(job);
    {
      const std::lock_guard lock(mutex_);
      waiting_.push_back(job);
    }
    wake_.notify_one();
  }

  // The oldest block, when its work is done. Throws what the work threw.
  std::unique_ptr<Block> Take() {
    const std::shared_ptr<Job> job = jobs_.front();
    jobs_.pop_front();
    for (std::unique_lock lock(mutex_); !job->done;) {
      if (waiting_.empty())
        done_.wait(lock);
      else
        DoNext(&lock);
    }
    if (job->thrown) std::rethrow_exception(job->thrown);
    return std::move(job->block);
  }

 private:
  struct Job {
    std::unique_ptr<Block> block;
    std::exception_ptr thrown;
    bool done = false;
  };

  // Work is waiting, and `lock` is held, but while it is done.
  void DoNext(std::unique_lock<std::mutex>* lock) {
    const std::shared_ptr<Job> job = waiting_.front();
    waiting_.pop_front();
    lock->unlock();
    try {
      work_(job->block.get());
    } catch (...) {
      job->thrown = std::current_exception();
    }
    lock->lock();
    job->done = true;
    done_.notify_all();
  }

  void Run() {
    for (std::unique_lock lock(mutex_);;) {
      wake_.wait(lock, [this] { return stop_ || !waiting_.empty(); });
      if (stop_) return;
      DoNext(&lock);
    }
  }

  std::function<void(Block*)> work_;
  int threads_;
  std::deque<std::shared_ptr<Job>> jobs_;  // in order, for the caller
  std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable done_;
  std::deque<std::shared_ptr<Job>> waiting_;
  bool stop_ = false;
  std::vector<std::thread> running_;
};

}  // namespace velmora::cli

#endif  // VELMORA_CLI_INPUT_ORDERED_WORKERS_H_
