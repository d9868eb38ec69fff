// File jobs of the effect runner.
#include "FileStore.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSaveFile>
#include <QString>
#include <cerrno>
#include <filesystem>

#include "Text.h"

namespace velmar::FileStore {

std::optional<std::string> readText(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return std::nullopt;
    std::string contents;
    char buffer[65536];
    bool ok = true;
    for (;;) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n > 0) {
            contents.append(buffer, static_cast<std::size_t>(n));
        } else if (n == 0) {
            break;
        } else if (errno != EINTR) {
            ok = false;  // e.g. a folder: opens, then refuses to be read
            break;
        }
    }
    ::close(fd);
    if (!ok || !text::isValidUtf8(contents))
        return std::nullopt;
    return contents;
}

bool writeTextAtomically(const std::string& path, const std::string& contents) {
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::path(path).parent_path();
    if (!parent.empty()) {
        std::filesystem::create_directories(parent, error);
        if (error || !std::filesystem::is_directory(parent, error))
            return false;
    }
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(contents.data(), static_cast<qint64>(contents.size())) !=
        static_cast<qint64>(contents.size()))
        return false;  // QSaveFile drops the temporary file unless committed
    return file.commit();
}

SerialQueue::SerialQueue() : worker_([this] { work(); }) {}

SerialQueue::~SerialQueue() {
    {
        std::lock_guard guard(lock_);
        stopping_ = true;
        jobs_.clear();
    }
    wake_.notify_all();
    worker_.join();
}

void SerialQueue::post(std::function<void()> job) {
    {
        std::lock_guard guard(lock_);
        jobs_.push_back(std::move(job));
    }
    wake_.notify_one();
}

void SerialQueue::work() {
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock held(lock_);
            wake_.wait(held, [this] { return stopping_ || !jobs_.empty(); });
            if (stopping_)
                return;
            job = std::move(jobs_.front());
            jobs_.pop_front();
        }
        job();
    }
}

}  // namespace velmar::FileStore
