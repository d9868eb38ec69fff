// The stored files against a disk that fails: a full disk at every byte of a
// save, failing flushes and closes, a real small tmpfs, and files that are
// not regular files at all.
#include <gtest/gtest.h>

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

#include "EffectsTestSupport.h"
#include "FileStore.h"

namespace velmar {
namespace {

using testing::Scratch;

std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string sampleText(std::size_t lines) {
    std::string text;
    for (std::size_t i = 0; i < lines; ++i)
        text += "owner-" + std::to_string(i) + "/repository-" + std::to_string(i) + "\tfeat/*\t\n";
    return text;
}

// A disk that accepts `room` bytes and then reports itself full. Writes are
// also cut short on purpose, as a real kernel may do near a full disk.
FileStore::Io fullAfter(std::size_t room, std::size_t chunk) {
    auto written = std::make_shared<std::size_t>(0);
    FileStore::Io io = FileStore::Io::system();
    io.write = [written, room, chunk, real = io.write](int fd, const void* data, std::size_t size) -> ssize_t {
        if (*written >= room) {
            errno = ENOSPC;
            return -1;
        }
        const std::size_t n = std::min({size, chunk, room - *written});
        const ssize_t done = real(fd, data, n);
        if (done > 0)
            *written += static_cast<std::size_t>(done);
        return done;
    };
    return io;
}

TEST(file_store, a_full_disk_at_any_byte_leaves_the_old_file_whole) {
    Scratch scratch;
    const std::string path = scratch.path("cfg/repos.tsv");
    const std::string old = sampleText(8), replacement = sampleText(20);
    testing::writeFile(path, old);
    for (std::size_t room = 0; room < replacement.size(); ++room) {
        SCOPED_TRACE("room " + std::to_string(room));
        EXPECT_FALSE(FileStore::writeTextAtomically(path, replacement, fullAfter(room, 97)));
        ASSERT_EQ(testing::readFile(path), old);
        ASSERT_EQ(namesIn(scratch.path("cfg")), std::vector<std::string>{"repos.tsv"});
    }
    // With room enough, short writes still add up to the whole text.
    EXPECT_TRUE(FileStore::writeTextAtomically(path, replacement, fullAfter(replacement.size(), 97)));
    EXPECT_EQ(testing::readFile(path), replacement);
}

TEST(file_store, a_failed_flush_or_close_is_a_failed_save) {
    struct Row {
        const char* what;
        int fsyncError;
        int closeError;
    };
    const std::vector<Row> rows{
        {"fsync EIO", EIO, 0},
        {"fsync ENOSPC", ENOSPC, 0},
        {"close ENOSPC", 0, ENOSPC},
        {"close EDQUOT", 0, EDQUOT},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        Scratch scratch;
        const std::string path = scratch.path("settings.tsv");
        testing::writeFile(path, "onboarded\t1\n");
        FileStore::Io io = FileStore::Io::system();
        if (row.fsyncError != 0)
            io.fsync = [error = row.fsyncError](int) { errno = error; return -1; };
        if (row.closeError != 0)
            io.close = [error = row.closeError](int fd) { ::close(fd); errno = error; return -1; };
        EXPECT_FALSE(FileStore::writeTextAtomically(path, "", io));
        EXPECT_EQ(testing::readFile(path), "onboarded\t1\n");
        EXPECT_EQ(namesIn(scratch.path()), std::vector<std::string>{"settings.tsv"});
    }
}

TEST(file_store, a_real_full_tmpfs_keeps_the_old_file) {
    Scratch scratch;
    const std::string mountPoint = scratch.path("small");
    std::filesystem::create_directories(mountPoint);
    if (::mount("tmpfs", mountPoint.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "cannot mount a tmpfs here: " << std::strerror(errno);
    struct Unmount {
        std::string at;
        ~Unmount() { ::umount2(at.c_str(), MNT_DETACH); }
    } unmount{mountPoint};

    const std::string path = mountPoint + "/repos.tsv";
    const std::string old = sampleText(100);
    ASSERT_TRUE(FileStore::writeTextAtomically(path, old));
    // Fill what is left, so the next save cannot fit.
    testing::writeFile(mountPoint + "/filler", std::string(64 * 1024, 'x'));
    const std::string replacement = sampleText(300);
    EXPECT_FALSE(FileStore::writeTextAtomically(path, replacement));
    EXPECT_EQ(testing::readFile(path), old);
    EXPECT_EQ(namesIn(mountPoint), (std::vector<std::string>{"filler", "repos.tsv"}));
    // Room again: the save goes through.
    std::filesystem::remove(mountPoint + "/filler");
    EXPECT_TRUE(FileStore::writeTextAtomically(path, replacement));
    EXPECT_EQ(testing::readFile(path), replacement);
}

TEST(file_store, only_small_regular_files_are_read_and_nothing_blocks) {
    Scratch scratch;
    const std::string fifo = scratch.path("fifo.tsv");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    testing::writeFile(scratch.path("big.tsv"), std::string(FileStore::maxFileSize + 1, 'a'));
    testing::writeFile(scratch.path("cap.tsv"), std::string(FileStore::maxFileSize, 'a'));
    testing::writeFile(scratch.path("latin1.tsv"), "caf\xE9\n");
    ::symlink("cap.tsv", scratch.path("link.tsv").c_str());
    struct Row {
        std::string path;
        FileStore::ReadOutcome outcome;
    };
    using enum FileStore::ReadOutcome;
    const std::vector<Row> rows{
        {fifo, unusable},
        {"/dev/zero", unusable},
        {"/dev/null", unusable},
        {scratch.path(), unusable},
        {scratch.path("big.tsv"), unusable},
        {scratch.path("latin1.tsv"), unusable},
        {scratch.path("missing.tsv"), missing},
        {scratch.path("cap.tsv"), text},
        {scratch.path("link.tsv"), text},
    };
    for (const Row& row : rows) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(FileStore::probe(row.path), row.outcome) << row.path;
        EXPECT_EQ(FileStore::readText(row.path).has_value(), row.outcome == text) << row.path;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << row.path;
    }
}

TEST(file_store, quitting_removes_temporaries_and_a_cut_save_renames_nothing) {
    Scratch scratch;
    const std::string path = scratch.path("window.tsv");
    testing::writeFile(path, "1\t2\t300\t400\n");
    // A disk that hangs inside the write until the quit has cleaned up.
    std::atomic<bool> inside{false}, released{false};
    FileStore::Io io = FileStore::Io::system();
    io.write = [&, real = io.write](int fd, const void* data, std::size_t size) {
        inside = true;
        while (!released)
            std::this_thread::yield();
        return real(fd, data, size);
    };
    bool saved = true;
    std::thread save([&] { saved = FileStore::writeTextAtomically(path, "5\t6\t700\t800\n", io); });
    while (!inside)
        std::this_thread::yield();
    EXPECT_EQ(namesIn(scratch.path()).size(), 2u);  // the file and our temporary
    FileStore::removeTemporaries();
    EXPECT_EQ(namesIn(scratch.path()), std::vector<std::string>{"window.tsv"});
    released = true;
    save.join();
    FileStore::reopenTemporaries();
    EXPECT_FALSE(saved);
    EXPECT_EQ(testing::readFile(path), "1\t2\t300\t400\n");
    EXPECT_EQ(namesIn(scratch.path()), std::vector<std::string>{"window.tsv"});
}

}  // namespace
}  // namespace velmar
