// The program's entry: the headless driver when "--headless" is among the
// arguments after the program's own path, else the windowed application.
#include <QGuiApplication>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#include "AppDelegate.h"
#include "Headless.h"

namespace {

// Standard input to its end as raw bytes: no newline translation, and NUL or
// invalid UTF-8 reach the decoder as they are. The script is the one thing the
// driver must hold whole, so it is held once: a regular file is read into a
// buffer of its size, and a pipe's buffer grows by realloc, which can move
// large blocks by remapping pages instead of copying them.
class Input {
public:
    explicit Input(int fd) {
        struct stat st {};
        std::size_t capacity = 1 << 16;
        if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size > 0)
            capacity = static_cast<std::size_t>(st.st_size) + 1;  // +1: the read that sees the end
        for (;;) {
            if (size_ == capacity_ && !grow(capacity_ == 0 ? capacity : capacity_ * 2)) break;
            const ssize_t n = ::read(fd, data_ + size_, capacity_ - size_);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) break;
            size_ += static_cast<std::size_t>(n);
        }
    }
    ~Input() { std::free(data_); }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    std::string_view text() const { return {data_, size_}; }

private:
    bool grow(std::size_t capacity) {
        char* bigger = static_cast<char*>(std::realloc(data_, capacity));
        if (bigger == nullptr) return false;
        data_ = bigger;
        capacity_ = capacity;
        return true;
    }
    char* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
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

int runHeadless() {
    // Nothing is printed before the whole input has been read; after that each
    // line goes out as soon as the driver makes it, so no output is held.
    const Input input(STDIN_FILENO);
    const auto lines = splitLines(input.text());
    static char buffer[1 << 16];
    std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
    velmar::Headless::run(lines, [](std::string_view line) {
        std::fwrite(line.data(), 1, line.size(), stdout);
        std::fputc('\n', stdout);
    });
    std::fflush(stdout);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--headless") == 0) return runHeadless();

    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Velmar"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Velmar"));
    // Closing the one window ends the process; nothing is saved at that moment.
    QGuiApplication::setQuitOnLastWindowClosed(true);

    velmar::AppDelegate delegate;
    delegate.start();
    return app.exec();
}
