// Child processes over posix_spawn. Three kinds of worker take part in one
// run: the reader drains the pipe, the waiter waits for the child's end, and
// the optional guard sends SIGTERM at the time limit. The last of the reader
// and the waiter to finish calls the completion.
#include "Subprocess.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <set>
#include <thread>

#include "Text.h"

extern char** environ;

namespace velmar::Subprocess {
namespace {

// Process groups of the bounded runs not yet answered: what quitting ends.
struct LiveGroups {
    std::mutex lock;
    std::condition_variable changed;
    std::set<pid_t> groups;
};
LiveGroups& liveGroups() {
    static LiveGroups* live = new LiveGroups;  // outlives every worker thread
    return *live;
}

void forgetRun(pid_t group) {
    LiveGroups& live = liveGroups();
    {
        std::lock_guard guard(live.lock);
        live.groups.erase(group);
    }
    live.changed.notify_all();
}

// Everything the workers of one run share; each worker holds it alive.
struct RunState {
    pid_t pid = -1;
    Completion completion;

    bool bounded = false;  // has a time limit, so it ends with us too

    std::mutex lock;
    std::condition_variable exitedChanged;
    bool exited = false;  // set before the child is reaped, so its pid cannot be reused yet
    bool finished = false;  // the completion has been called
    int pending = 0;      // workers still to finish: the waiter, and the reader if any
    std::int32_t status = 0;
    std::string bytes;

    // Called by the reader and the waiter; the last one runs the finisher.
    void workerDone() {
        std::string out;
        std::int32_t st = 0;
        {
            std::lock_guard guard(lock);
            if (--pending > 0)
                return;
            out.swap(bytes);
            st = status;
            finished = true;
        }
        exitedChanged.notify_all();
        if (bounded)
            forgetRun(pid);
        Result result{st, text::repairUtf8(out)};
        Completion done = std::move(completion);
        done(std::move(result));
    }
};

std::vector<std::string> environmentWithPath(const std::optional<std::string>& path) {
    std::vector<std::string> env;
    const bool replace = path.has_value() && !path->empty();
    for (char** e = environ; e != nullptr && *e != nullptr; ++e) {
        if (replace && std::strncmp(*e, "PATH=", 5) == 0)
            continue;
        env.emplace_back(*e);
    }
    if (replace)
        env.push_back("PATH=" + *path);
    return env;
}

std::vector<char*> pointers(std::vector<std::string>& strings) {
    std::vector<char*> out;
    out.reserve(strings.size() + 1);
    for (auto& s : strings)
        out.push_back(s.data());
    out.push_back(nullptr);
    return out;
}

void readToEnd(const std::shared_ptr<RunState>& state, int fd) {
    std::string collected;
    char buffer[65536];
    bool over = false;
    for (;;) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n > 0) {
            if (over)
                continue;  // drained and dropped until the group has gone
            collected.append(buffer, std::min(static_cast<std::size_t>(n), maxOutput - collected.size()));
            if (collected.size() >= maxOutput) {
                // No answer of ours is this large: the child is ended, which
                // its caller sees as a failed run.
                over = true;
                ::kill(-state->pid, SIGKILL);
            }
        } else if (n == 0 || errno != EINTR) {
            break;
        }
    }
    ::close(fd);
    {
        std::lock_guard guard(state->lock);
        state->bytes = std::move(collected);
    }
    state->workerDone();
}

void waitForEnd(const std::shared_ptr<RunState>& state) {
    // Wait without reaping first: while the child is a zombie its pid stays
    // taken, so the guard can never signal a stranger.
    siginfo_t info{};
    while (::waitid(P_PID, static_cast<id_t>(state->pid), &info, WEXITED | WNOWAIT) != 0 &&
           errno == EINTR) {
    }
    {
        std::lock_guard guard(state->lock);
        state->exited = true;
    }
    state->exitedChanged.notify_all();

    int raw = 0;
    std::int32_t status = -1;
    pid_t reaped;
    do {
        reaped = ::waitpid(state->pid, &raw, 0);
    } while (reaped < 0 && errno == EINTR);
    if (reaped == state->pid) {
        if (WIFEXITED(raw))
            status = WEXITSTATUS(raw);
        else if (WIFSIGNALED(raw))
            status = WTERMSIG(raw);
    }
    {
        std::lock_guard guard(state->lock);
        state->status = status;
    }
    state->workerDone();
}

void guard(const std::shared_ptr<RunState>& state, double seconds) {
    const auto deadline = std::chrono::steady_clock::now() +
                          std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                              std::chrono::duration<double>(seconds));
    std::unique_lock held(state->lock);
    // An early answer only wakes the guard sooner; it then finds nothing to stop.
    state->exitedChanged.wait_until(held, deadline, [&] { return state->finished; });
    // The whole group: /bin/sh forks gh rather than replacing itself, and a
    // gh left behind would hold our pipe and outlive us. The group keeps its
    // number while any member lives, so this reaches no stranger.
    if (!state->finished)
        ::kill(-state->pid, SIGTERM);
}

struct SpawnSetup {
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    SpawnSetup() {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
    }
    ~SpawnSetup() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
};

}  // namespace

void endAll(double grace) {
    LiveGroups& live = liveGroups();
    std::unique_lock held(live.lock);
    for (pid_t group : live.groups)
        ::kill(-group, SIGTERM);
    const auto deadline = std::chrono::steady_clock::now() +
                          std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                              std::chrono::duration<double>(grace));
    live.changed.wait_until(held, deadline, [&] { return live.groups.empty(); });
    // Whatever ignored SIGTERM does not get to outlive us.
    for (pid_t group : live.groups)
        ::kill(-group, SIGKILL);
}

std::size_t liveCount() {
    std::lock_guard guard(liveGroups().lock);
    return liveGroups().groups.size();
}

void run(const std::string& executable, const std::vector<std::string>& arguments,
         const std::optional<std::string>& path, bool captureStdout,
         std::optional<double> timeout, Completion completion) {
    std::vector<std::string> argvStrings;
    argvStrings.reserve(arguments.size() + 1);
    argvStrings.push_back(executable);
    argvStrings.insert(argvStrings.end(), arguments.begin(), arguments.end());
    std::vector<std::string> envStrings = environmentWithPath(path);
    std::vector<char*> argv = pointers(argvStrings);
    std::vector<char*> envp = pointers(envStrings);

    // Both ends close on exec, so no other child (started concurrently) can
    // inherit this pipe and keep it open by accident.
    int pipeFds[2] = {-1, -1};
    if (captureStdout && ::pipe2(pipeFds, O_CLOEXEC) != 0) {
        completion(std::nullopt);
        return;
    }

    SpawnSetup setup;
    posix_spawn_file_actions_addopen(&setup.actions, 0, "/dev/null", O_RDONLY, 0);
    if (captureStdout)
        posix_spawn_file_actions_adddup2(&setup.actions, pipeFds[1], 1);
    else
        posix_spawn_file_actions_addopen(&setup.actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&setup.actions, 2, "/dev/null", O_WRONLY, 0);

    // A session of its own keeps the child off any terminal we were started
    // from: an interactive login shell in a background group of that terminal
    // would stop itself (SIGTTIN) instead of answering, and a browser we
    // launch must not die with the terminal. Signal dispositions and the mask
    // start clean whatever our threads hold.
    sigset_t none;
    sigemptyset(&none);
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_setflags(&setup.attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawnattr_setsigmask(&setup.attributes, &none);
    posix_spawnattr_setsigdefault(&setup.attributes, &all);

    pid_t pid = -1;
    const int failed =
        ::posix_spawn(&pid, executable.c_str(), &setup.actions, &setup.attributes, argv.data(),
                      envp.data());
    if (captureStdout)
        ::close(pipeFds[1]);
    if (failed != 0) {
        if (captureStdout)
            ::close(pipeFds[0]);
        completion(std::nullopt);
        return;
    }

    auto state = std::make_shared<RunState>();
    state->pid = pid;
    state->completion = std::move(completion);
    state->pending = captureStdout ? 2 : 1;
    // Only bounded runs are ours to end: a browser we launch is the user's.
    state->bounded = timeout.has_value();
    if (state->bounded) {
        std::lock_guard guard(liveGroups().lock);
        liveGroups().groups.insert(pid);
    }

    if (captureStdout)
        std::thread([state, fd = pipeFds[0]] { readToEnd(state, fd); }).detach();
    if (timeout.has_value())
        std::thread([state, seconds = *timeout] { guard(state, seconds); }).detach();
    std::thread([state] { waitForEnd(state); }).detach();
}

}  // namespace velmar::Subprocess
