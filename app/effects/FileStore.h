// Whole-file reads and writes of the stored text files, and the one serial
// queue they all run on, so a read performed after a write sees the write.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace velmar::FileStore {

/// The whole file as text; absent when it is missing, unreadable or not UTF-8.
std::optional<std::string> readText(const std::string& path);

/// Creates the parent folder with all missing parents, then replaces the file
/// atomically (a temporary file beside it, renamed over it): a reader sees the
/// old text or the new, never a mix. False when either step fails; a failed
/// folder creation skips the write.
bool writeTextAtomically(const std::string& path, const std::string& contents);

/// One worker thread running jobs in the order they were posted.
class SerialQueue {
public:
    SerialQueue();
    /// Waits for the running job; jobs not yet started are abandoned.
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void post(std::function<void()> job);

private:
    void work();

    std::mutex lock_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> jobs_;
    bool stopping_ = false;
    std::thread worker_;
};

}  // namespace velmar::FileStore
