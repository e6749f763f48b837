#include "checkup/FactsReader.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>

#include "core/host/RawFile.h"
#include "core/host/Workers.h"

namespace quillon {
namespace {

constexpr auto kTickInterval = std::chrono::milliseconds(20);
constexpr std::size_t kPart = 16;  // files that a thread takes at once

void Number(const std::vector<FoundItem>& found, ItemTable& items, FileFacts& facts) {
  facts.items.reserve(found.size());
  for (const auto& item : found) {
    if (item.line != 0) facts.unsplit.emplace_back(static_cast<std::uint32_t>(facts.items.size()), item.line);
    facts.items.push_back(items.Add(item.kind, item.text));
  }
}

}  // namespace

/// Files of one kind, of which the cache does not know all.
struct FactsReader::Batch {
  FileKind kind;
  const std::vector<GameFile>& files;
  std::vector<FileFacts>& facts;
  std::vector<std::size_t> unread;  // places among the files
  std::vector<std::string> hostPaths;
};

/// What is read on threads of its own while more is found.
class FactsReader::Reading {
 public:
  explicit Reading(ItemTable& items) : items_(items) {}

  /// Whatever ends the waiting, no thread outlives it.
  ~Reading() {
    {
      const std::lock_guard lock(mutex_);
      ended_ = true;
      batch_ = batches_.size();
    }
    change_.notify_all();
    for (auto& thread : threads_) thread.join();
  }

  void Add(Batch batch) {
    if (!batch.unread.empty() && threads_.empty()) StartWorkers(threads_, WorkerCount(), [this] { Work(); });
    {
      const std::lock_guard lock(mutex_);
      all_ += batch.files.size();
      done_ += batch.files.size() - batch.unread.size();
      batches_.push_back(std::move(batch));
    }
    change_.notify_all();
  }

  /// Returns the batches, read.
  std::deque<Batch> Run(const std::function<void(std::size_t done, std::size_t all)>& tick) {
    {
      const std::lock_guard lock(mutex_);
      ended_ = true;
    }
    change_.notify_all();
    if (threads_.empty()) Work();
    std::unique_lock lock(mutex_);
    while (done_ < all_ && !failure_) {
      change_.wait_for(lock, kTickInterval);
      const std::size_t done = done_;
      lock.unlock();
      if (tick) tick(done, all_);
      lock.lock();
    }
    if (failure_) std::rethrow_exception(failure_);
    return std::move(batches_);
  }

 private:
  struct Part {
    const Batch* batch = nullptr;
    std::size_t begin = 0, end = 0;  // among its unread files
  };

  void Work() {
    try {
      for (Part part = NextPart(); part.batch != nullptr; part = NextPart()) Read(part);
    } catch (...) {
      const std::lock_guard lock(mutex_);
      failure_ = std::current_exception();
      change_.notify_all();
    }
  }

  /// Waits for one while there may be more.
  Part NextPart() {
    for (std::unique_lock lock(mutex_);;) {
      for (; batch_ < batches_.size(); ++batch_, next_ = 0) {
        const Batch& batch = batches_[batch_];
        if (next_ == batch.unread.size()) continue;
        const std::size_t begin = next_;
        next_ = std::min(begin + kPart, batch.unread.size());
        return {&batch, begin, next_};
      }
      if (ended_) return {};
      change_.wait(lock);
    }
  }

  void Read(const Part& part) {
    const Batch& batch = *part.batch;
    std::vector<std::vector<FoundItem>> found(part.end - part.begin);
    for (std::size_t i = part.begin; i < part.end; ++i)
      batch.facts[batch.unread[i]] = Take(batch, i, found[i - part.begin]);
    const std::lock_guard lock(mutex_);
    for (std::size_t i = part.begin; i < part.end; ++i)
      Number(found[i - part.begin], items_, batch.facts[batch.unread[i]]);
    done_ += part.end - part.begin;
    if (done_ == all_) change_.notify_all();
  }

  static FileFacts Take(const Batch& batch, std::size_t i, std::vector<FoundItem>& found) {
    std::string bytes;
    if (const RawInput input(batch.hostPaths[i]); input.IsOpen() && input.ReadAt(0, input.Size(), bytes))
      return TakeFacts(batch.kind, GameText(batch.files[batch.unread[i]].Path(), bytes), found);
    FileFacts facts;
    facts.broken = FileFacts::Broken::Reading;
    return facts;
  }

  ItemTable& items_;
  std::mutex mutex_;  // of all but the threads
  std::condition_variable change_;
  std::deque<Batch> batches_;
  std::size_t batch_ = 0, next_ = 0;  // the next file: its batch, and its place among the unread ones
  std::size_t done_ = 0, all_ = 0;    // files
  bool ended_ = false;                // no more batches come
  std::exception_ptr failure_;
  std::vector<std::thread> threads_;
};

FactsReader::FactsReader(Program& program, FactsCache& cache) : program_(program), cache_(cache) {}

FactsReader::~FactsReader() = default;

void FactsReader::Begin(FileKind kind, const std::vector<GameFile>& files, std::vector<FileFacts>& facts) {
  cache_.Open();
  facts.assign(files.size(), {});
  Batch batch{kind, files, facts, {}, {}};
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (cache_.Take(kind, files[i], facts[i])) continue;
    batch.unread.push_back(i);
    batch.hostPaths.push_back(program_.files.Host().HostPath(files[i].Path()));
  }
  if (!reading_) reading_ = std::make_unique<Reading>(Items());
  reading_->Add(std::move(batch));
}

void FactsReader::Finish(const std::function<void(std::size_t done, std::size_t all)>& tick) {
  const auto reading = std::move(reading_);
  if (!reading) return;
  for (const Batch& batch : reading->Run(tick)) SayWhatIsWrong(batch);
}

/// What could not be read is read in the ordinary way, which has the words for it.
void FactsReader::SayWhatIsWrong(const Batch& batch) {
  for (const std::size_t i : batch.unread) {
    if (batch.facts[i].broken != FileFacts::Broken::Reading) continue;
    const std::string path = batch.files[i].Path();
    try {
      program_.files.ReadAll(path);
      batch.facts[i].error = std::make_shared<RunTimeError>(ErrorNumber::DeviceIoError, path);
    } catch (const RunTimeError& error) {
      batch.facts[i].error = std::make_shared<RunTimeError>(error);
    }
  }
}

std::vector<FileFacts> FactsReader::Read(FileKind kind, const std::vector<GameFile>& files) {
  std::vector<FileFacts> facts;
  Begin(kind, files, facts);
  Finish();
  return facts;
}

FileFacts FactsReader::Take(FileKind kind, const std::string& path, std::string_view bytes) {
  cache_.Open();
  std::vector<FoundItem> found;
  FileFacts facts = TakeFacts(kind, GameText(path, bytes), found);
  Number(found, Items(), facts);
  return facts;
}

}  // namespace quillon
