#pragma once
// Long files of rows (a line or more per sample) formatted on several threads at once: the
// rows are cut into stretches, each stretch is formatted into memory by whichever thread takes
// it, and the stretches are written to the file in order by the calling thread, which formats
// stretches itself while the next one to write is not ready. The file gets the same bytes as
// a loop over the rows on one thread would give it.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <exception>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "text/text_file.h"

namespace korvan {

// The threads a run uses when asked for `asked` (0: one for every core).
inline int RunThreads(int asked) {
  return asked > 0 ? asked : static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
}

// The threads that work on pieces of their own at once: as asked, but no more than there are
// cores (more would only hold more workspaces in memory) nor pieces.
inline int ThreadsForPieces(int asked, long pieces) {
  const long cores = std::max(1u, std::thread::hardware_concurrency());
  return static_cast<int>(std::max(1L, std::min({static_cast<long>(RunThreads(asked)), cores, pieces})));
}

// Runs job(t) for t = 0..threads - 1, t = 0 on the calling thread and the others on threads of
// their own; returns when all have ended, rethrowing the failure of the lowest t.
template <class Job>
void RunSideBySide(int threads, Job job) {
  std::vector<std::exception_ptr> failures(static_cast<std::size_t>(std::max(threads, 1)));
  auto guarded = [&](int t) {
    try {
      job(t);
    } catch (...) {
      failures[static_cast<std::size_t>(t)] = std::current_exception();
    }
  };
  std::vector<std::thread> pool;
  for (int t = 1; t < threads; ++t) pool.emplace_back(guarded, t);
  guarded(0);
  for (auto& t : pool) t.join();
  for (const std::exception_ptr& failure : failures)
    if (failure) std::rethrow_exception(failure);
}

inline constexpr long kRowsPerStretch = 1024;

// Writes row(i, sink) for i = first..last into out; each row writes whole lines to sink (a
// TextFile in memory for all but the short files). threads: at most so many threads work,
// and no more than there are cores.
template <class Row>
void WriteRowsSideBySide(TextFile& out, long first, long last, int threads, Row row) {
  const long count = last - first + 1;
  if (count <= 0) return;
  const long stretches = (count + kRowsPerStretch - 1) / kRowsPerStretch;
  // Threads beyond the cores would only hold more stretches in memory.
  const int helpers = ThreadsForPieces(threads, stretches) - 1;
  if (helpers < 1) {
    for (long i = first; i <= last; ++i) row(i, out);
    return;
  }
  struct Stretch {
    std::string text;
    std::exception_ptr failure;
    std::atomic<bool> ready{false};
  };
  std::unique_ptr<Stretch[]> parts(new Stretch[static_cast<std::size_t>(stretches)]);
  std::atomic<long> next{0};
  auto format = [&](long c) {
    Stretch& part = parts[static_cast<std::size_t>(c)];
    try {
      TextFile sink(&part.text);
      const long from = first + c * kRowsPerStretch, to = std::min(last, from + kRowsPerStretch - 1);
      for (long i = from; i <= to; ++i) row(i, sink);
    } catch (...) {
      part.failure = std::current_exception();
    }
    part.ready.store(true, std::memory_order_release);
  };
  // A helper keeps within a few stretches of the writer, so that memory holds no more.
  std::atomic<long> writtenSoFar{0};
  std::atomic<bool> stop{false};
  const long ahead = helpers + 2L;
  auto help = [&] {
    for (long c = next.fetch_add(1); c < stretches; c = next.fetch_add(1)) {
      while (c >= writtenSoFar.load(std::memory_order_acquire) + ahead && !stop.load())
        std::this_thread::sleep_for(std::chrono::microseconds(50));
      format(c);
    }
  };
  std::vector<std::thread> pool;
  struct Join {
    std::vector<std::thread>& pool;
    std::atomic<long>& next;
    std::atomic<bool>& stop;
    long end;
    ~Join() {
      next.store(end);  // after a failure of the writer: nothing more is begun, nobody waits
      stop.store(true);
      for (auto& t : pool) t.join();
    }
  } join{pool, next, stop, stretches};
  for (int h = 0; h < helpers; ++h) pool.emplace_back(help);
  for (long written = 0; written < stretches;) {
    Stretch& part = parts[static_cast<std::size_t>(written)];
    if (part.ready.load(std::memory_order_acquire)) {
      if (part.failure) std::rethrow_exception(part.failure);
      out.RawText(part.text);
      std::string().swap(part.text);
      writtenSoFar.store(++written, std::memory_order_release);
      continue;
    }
    const long c = next.fetch_add(1);
    if (c < stretches)
      format(c);
    else
      std::this_thread::yield();
  }
}

}  // namespace korvan
