// A self-pipe: the handler only counts and writes one byte; the event loop
// reads the byte and does the real work on the main thread.
#include "QuitSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <atomic>
#include <cerrno>

namespace velmar {
namespace {

int pipeFds[2] = {-1, -1};
std::atomic<int> caught{0};
static_assert(std::atomic<int>::is_always_lock_free);

constexpr int handled[] = {SIGTERM, SIGINT, SIGHUP};

extern "C" void onSignal(int) {
    const int saved = errno;
    caught.fetch_add(1, std::memory_order_relaxed);
    const char byte = 1;
    [[maybe_unused]] const ssize_t n = ::write(pipeFds[1], &byte, 1);
    errno = saved;
}

}  // namespace

QuitSignals::QuitSignals(QObject* parent) : QObject(parent) {
    if (::pipe2(pipeFds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;  // the signals keep their default: the program ends as before
    notifier_ = new QSocketNotifier(pipeFds[0], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        ssize_t n;
        while ((n = ::read(pipeFds[0], bytes, sizeof bytes)) > 0)
            for (ssize_t i = 0; i < n; ++i)
                emit received();
    });
    struct sigaction action {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;  // other threads' reads and writes carry on
    for (int number : handled)
        ::sigaction(number, &action, nullptr);
}

// The handlers stay: a signal after this point, while the rest of the
// program is taken down, is counted and otherwise ignored.
QuitSignals::~QuitSignals() = default;

int QuitSignals::count() { return caught.load(std::memory_order_relaxed); }

}  // namespace velmar
