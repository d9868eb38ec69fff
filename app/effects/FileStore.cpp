// File jobs of the effect runner.
#include "FileStore.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <set>
#include <thread>

#include "Text.h"

namespace velmar::FileStore {
namespace {

// Temporary files of writes in progress. A rename happens under this lock and
// only while the name is still listed, so a quit that removes the list's
// files can never race a rename into leaving a stray temporary file.
struct Temporaries {
    std::mutex lock;
    std::set<std::string> names;
    bool closed = false;
};
Temporaries& temporaries() {
    static Temporaries* t = new Temporaries;  // outlives every worker thread
    return *t;
}

// Unlinks the temporary file unless a quit did so already.
void discard(const std::string& name) {
    Temporaries& t = temporaries();
    std::lock_guard guard(t.lock);
    if (t.names.erase(name) > 0)
        ::unlink(name.c_str());
}

std::optional<std::string> readOpen(int fd) {
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode) ||
        static_cast<std::uint64_t>(info.st_size) > maxFileSize)
        return std::nullopt;
    std::string contents;
    char buffer[65536];
    for (;;) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n > 0) {
            contents.append(buffer, static_cast<std::size_t>(n));
            if (contents.size() > maxFileSize)
                return std::nullopt;  // grew while we read it
        } else if (n == 0) {
            break;
        } else if (errno != EINTR) {
            return std::nullopt;
        }
    }
    if (!text::isValidUtf8(contents))
        return std::nullopt;
    return contents;
}

bool writeAll(const Io& io, int fd, const std::string& contents) {
    std::size_t done = 0;
    while (done < contents.size()) {
        const ssize_t n = io.write(fd, contents.data() + done, contents.size() - done);
        if (n > 0)
            done += static_cast<std::size_t>(n);
        else if (n < 0 && errno == EINTR)
            continue;
        else
            return false;  // ENOSPC, EIO, or a write that makes no progress
    }
    return true;
}

bool syncFolder(const std::string& folder) {
    const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool synced = ::fsync(fd) == 0 || errno == EINVAL;  // some file systems cannot
    return ::close(fd) == 0 && synced;
}

}  // namespace

std::optional<std::string> readText(const std::string& path) {
    // Non-blocking, so a FIFO without a writer opens at once instead of
    // waiting; readOpen then refuses it as not a regular file.
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0)
        return std::nullopt;
    auto contents = readOpen(fd);
    ::close(fd);
    return contents;
}

ReadOutcome probe(const std::string& path) {
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0 && errno == ENOENT)
        return ReadOutcome::missing;
    return readText(path) ? ReadOutcome::text : ReadOutcome::unusable;
}

bool keepUnreadable(const std::string& path) {
    if (probe(path) != ReadOutcome::unusable)
        return false;
    // A second name for the same file: the save's rename then replaces only
    // the first. link() never replaces an existing keep.
    return ::link(path.c_str(), (path + ".unreadable").c_str()) == 0;
}

Io Io::system() {
    return {[](int fd, const void* data, std::size_t size) { return ::write(fd, data, size); },
            [](int fd) { return ::fsync(fd); }, [](int fd) { return ::close(fd); }};
}

bool writeTextAtomically(const std::string& path, const std::string& contents, const Io& io) {
    std::error_code error;
    const std::string parent = std::filesystem::path(path).parent_path().string();
    if (!parent.empty()) {
        std::filesystem::create_directories(parent, error);
        if (error || !std::filesystem::is_directory(parent, error))
            return false;
    }

    std::string temporary = path + ".XXXXXX";
    Temporaries& t = temporaries();
    int fd = -1;
    {
        std::lock_guard guard(t.lock);
        if (t.closed)
            return false;
        fd = ::mkostemp(temporary.data(), O_CLOEXEC);
        if (fd < 0)
            return false;
        t.names.insert(temporary);
    }
    // Keep the permissions of the file being replaced; a new file is private.
    struct stat old {};
    ::fchmod(fd, ::stat(path.c_str(), &old) == 0 ? (old.st_mode & 07777) : 0600);

    bool ok = writeAll(io, fd, contents);
    ok = ok && io.fsync(fd) == 0;
    // close is called whatever happened, and its error counts: on network and
    // some local file systems a full disk is first reported there.
    ok = io.close(fd) == 0 && ok;
    if (!ok) {
        discard(temporary);
        return false;
    }
    {
        std::lock_guard guard(t.lock);
        if (t.names.erase(temporary) == 0)
            return false;  // removed by a quit that did not wait for us
        if (::rename(temporary.c_str(), path.c_str()) != 0) {
            ::unlink(temporary.c_str());
            return false;
        }
    }
    // The rename itself is only durable once the folder is.
    return syncFolder(parent);
}

void removeTemporaries() {
    Temporaries& t = temporaries();
    std::lock_guard guard(t.lock);
    t.closed = true;
    for (const std::string& name : t.names)
        ::unlink(name.c_str());
    t.names.clear();
}

void reopenTemporaries() {
    Temporaries& t = temporaries();
    std::lock_guard guard(t.lock);
    t.closed = false;
}

SerialQueue::SerialQueue() : state_(std::make_shared<State>()) {
    std::thread([state = state_] { work(state); }).detach();
}

SerialQueue::~SerialQueue() {
    std::unique_lock held(state_->lock);
    const bool finished = state_->stopping;  // finish() already had its wait
    state_->stopping = true;
    state_->jobs.clear();
    state_->wake.notify_all();
    // The running job finishes on its own thread if the disk hangs; the state
    // it needs is shared with it.
    if (!finished)
        state_->idle.wait_for(held, std::chrono::seconds(5), [this] { return !state_->running; });
}

void SerialQueue::post(std::function<void()> job) {
    {
        std::lock_guard guard(state_->lock);
        if (state_->stopping)
            return;
        state_->jobs.push_back(std::move(job));
    }
    state_->wake.notify_one();
}

bool SerialQueue::finish(std::chrono::steady_clock::time_point deadline,
                         const std::function<bool()>& giveUp) {
    std::unique_lock held(state_->lock);
    const auto done = [this] { return state_->jobs.empty() && !state_->running; };
    while (!done() && std::chrono::steady_clock::now() < deadline && !(giveUp && giveUp()))
        state_->idle.wait_for(held, std::chrono::milliseconds(10), done);
    const bool all = done();
    state_->stopping = true;
    state_->jobs.clear();
    state_->wake.notify_all();
    return all;
}

void SerialQueue::work(const std::shared_ptr<State>& state) {
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock held(state->lock);
            state->running = false;
            state->idle.notify_all();
            state->wake.wait(held, [&] { return state->stopping || !state->jobs.empty(); });
            if (state->stopping)
                return;
            job = std::move(state->jobs.front());
            state->jobs.pop_front();
            state->running = true;
        }
        job();
    }
}

}  // namespace velmar::FileStore
