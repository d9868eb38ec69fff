// Holds the script once and prints the transcript as it is made: the input has
// to be held whole, since nothing may be printed before it ends, but neither
// copies of it nor the output need to be.
#include "HeadlessEntry.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Headless.h"

namespace velmar::HeadlessEntry {

namespace {

// Standard input to its end as raw bytes: no newline translation, and NUL or
// invalid UTF-8 reach the decoder as they are. A regular file is mapped, so
// its bytes are the page cache's and are not copied; anything else is read
// into a buffer that grows by realloc, which can remap large blocks instead of
// copying them.
class Input {
public:
    explicit Input(int fd) {
        if (!map(fd)) readAll(fd);
    }
    ~Input() {
        if (mapped_) ::munmap(mapped_, mappedSize_);
        std::free(buffer_);
    }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    std::string_view text() const { return text_; }

private:
    bool map(int fd) {
        struct stat st {};
        if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_size <= 0) return false;
        // The script starts where the file's offset stands, as a read would.
        const off_t offset = ::lseek(fd, 0, SEEK_CUR);
        if (offset < 0 || offset >= st.st_size) return false;
        const auto size = static_cast<std::size_t>(st.st_size);
        void* p = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, fd, 0);
        if (p == MAP_FAILED) return false;
        mapped_ = p;
        mappedSize_ = size;
        text_ = std::string_view(static_cast<const char*>(p), size).substr(static_cast<std::size_t>(offset));
        return true;
    }

    void readAll(int fd) {
        std::size_t size = 0;
        std::size_t capacity = 0;
        for (;;) {
            if (size == capacity) {
                const std::size_t bigger = capacity == 0 ? std::size_t{1} << 16 : capacity * 2;
                char* grown = static_cast<char*>(std::realloc(buffer_, bigger));
                if (grown == nullptr) break;
                buffer_ = grown;
                capacity = bigger;
            }
            const ssize_t n = ::read(fd, buffer_ + size, capacity - size);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) break;
            size += static_cast<std::size_t>(n);
        }
        text_ = std::string_view(buffer_, size);
    }

    void* mapped_ = nullptr;
    std::size_t mappedSize_ = 0;
    char* buffer_ = nullptr;
    std::string_view text_;
};

// Lines end at "\n"; a last line without one still counts, and a trailing
// "\n" does not start an empty line. "\r" is left to the driver's trimming.
std::vector<std::string_view> splitLines(std::string_view data) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    while (start < data.size()) {
        std::size_t end = data.find('\n', start);
        if (end == std::string_view::npos) end = data.size();
        lines.push_back(data.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

}  // namespace

int run() {
    // Nothing is printed before the whole input has been read; after that each
    // line goes out as soon as the driver makes it.
    const Input input(STDIN_FILENO);
    const auto lines = splitLines(input.text());
    static char buffer[1 << 16];
    std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
    Headless::run(lines, [](std::string_view line) {
        std::fwrite(line.data(), 1, line.size(), stdout);
        std::fputc('\n', stdout);
    });
    std::fflush(stdout);
    return 0;
}

}  // namespace velmar::HeadlessEntry
