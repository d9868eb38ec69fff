// Whole-file reads and writes of the stored text files, and the one serial
// queue they all run on, so a read performed after a write sees the write.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace velmar::FileStore {

/// Larger than any stored file a person could produce; anything bigger is
/// treated as unreadable rather than pulled into memory.
inline constexpr std::size_t maxFileSize = 1 << 20;

/// The whole file as text; absent when it is missing, unreadable, not UTF-8,
/// not a regular file, or larger than maxFileSize. Never blocks on a FIFO or
/// a device.
std::optional<std::string> readText(const std::string& path);

/// What the last read of a path found, for telling "no file yet" apart from
/// "a file we could not use".
enum class ReadOutcome { missing, text, unusable };
ReadOutcome probe(const std::string& path);

/// Before a save replaces a file that exists but cannot be used (not UTF-8,
/// unreadable, not a regular file, too large), keeps it beside as
/// "<path>.unreadable", so a hand-edited or damaged file is never lost to
/// the next save. Once only: an older keep is never replaced. True when a
/// keep was made now.
bool keepUnreadable(const std::string& path);

/// The system calls a write goes through. Tests replace them to make the disk
/// fail at a chosen moment; the defaults are the real calls.
struct Io {
    std::function<ssize_t(int, const void*, std::size_t)> write;
    std::function<int(int)> fsync;
    std::function<int(int)> close;
    static Io system();
};

/// Creates the parent folder with all missing parents, then replaces the file
/// atomically: the text goes to a temporary file beside it, which is renamed
/// over the file only once every byte was written and flushed to the disk;
/// then the folder is flushed too. A reader sees the old text or the new,
/// never a mix, and a full disk leaves the old file as it was. False when any
/// step fails; a failed folder creation skips the write.
bool writeTextAtomically(const std::string& path, const std::string& contents,
                         const Io& io = Io::system());

/// Unlinks every temporary file a write still holds and makes writes still
/// running fail instead of renaming. Used when the program quits without
/// waiting for the disk.
void removeTemporaries();
/// Allows writes again after removeTemporaries (tests).
void reopenTemporaries();

/// One worker thread running jobs in the order they were posted.
class SerialQueue {
public:
    SerialQueue();
    /// Abandons the jobs not yet started; waits briefly for the running one,
    /// and leaves it to finish on its own when the disk does not answer.
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void post(std::function<void()> job);

    /// Waits until every posted job has run, `deadline` passes or `giveUp`
    /// holds (it is asked every few milliseconds); then takes no more jobs.
    /// True when everything ran.
    bool finish(std::chrono::steady_clock::time_point deadline,
                const std::function<bool()>& giveUp);

private:
    struct State {
        std::mutex lock;
        std::condition_variable wake;
        std::condition_variable idle;
        std::deque<std::function<void()>> jobs;
        bool running = false;
        bool stopping = false;
    };
    static void work(const std::shared_ptr<State>& state);

    std::shared_ptr<State> state_;
};

}  // namespace velmar::FileStore
