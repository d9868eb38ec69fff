// Times a refresh of ten watched repositories through the real runner and
// gh against the fake GitHub server, and splits the time into gh's part (the
// children's lifetimes) and Velmar's own (everything else on the way).
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QEventLoop>
#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "CommandLines.h"
#include "EffectsTestSupport.h"
#include "FakeGitHubBench.h"
#include "Model.h"

using namespace velmar;
using Clock = std::chrono::steady_clock;

extern char** environ;

namespace {

std::string fixture() {
    std::string repos;
    for (int r = 0; r < 10; ++r) {
        std::string prs;
        for (int n = 1; n <= 8; ++n) {
            const std::string num = std::to_string(n);
            const std::string preview = "https://app" + std::to_string(r) + "-pr-" + num + ".vercel.app";
            prs += std::string(n > 1 ? "," : "") + "{\"number\": " + num + ", \"title\": \"Change " + num +
                   "\", \"author\": \"dev\", \"branch\": \"b" + num +
                   "\", \"comments\": [{\"author\": \"vercel\", \"body\": \"[Visit Preview](" + preview +
                   ")\"}]}";
        }
        repos += std::string(r > 0 ? "," : "") + "\"acme/repo" + std::to_string(r) + "\": [" + prs + "]";
    }
    return "{\"token\": \"t\", \"login\": \"octo\", \"repos\": {" + repos + "}}";
}

// gh alone: the same ten children run back to back with nothing of ours
// around them, output read on this thread.
double directSeconds(const std::string& path) {
    const std::string script(CommandLines::pullRequests);
    std::vector<std::string> env;
    for (char** e = environ; *e != nullptr; ++e)
        if (std::string(*e).rfind("PATH=", 0) != 0)
            env.emplace_back(*e);
    env.push_back("PATH=" + path);
    std::vector<char*> envp;
    for (auto& e : env) envp.push_back(e.data());
    envp.push_back(nullptr);
    const auto start = Clock::now();
    for (int r = 0; r < 10; ++r) {
        const std::string slug = "acme/repo" + std::to_string(r);
        const char* argv[] = {"/bin/sh", "-c", script.c_str(), "sh", slug.c_str(), nullptr};
        int fds[2];
        if (::pipe(fds) != 0) return 0;
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, fds[1], 1);
        posix_spawn_file_actions_addclose(&actions, fds[0]);
        pid_t pid = 0;
        ::posix_spawn(&pid, "/bin/sh", &actions, nullptr, const_cast<char**>(argv), envp.data());
        posix_spawn_file_actions_destroy(&actions);
        ::close(fds[1]);
        char buffer[65536];
        while (::read(fds[0], buffer, sizeof buffer) > 0) {
        }
        ::close(fds[0]);
        int status = 0;
        ::waitpid(pid, &status, 0);
    }
    return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 7;
    testing::FakeGitHub server;
    if (!bench::startFakeGitHub(server, fixture(), "refresh_ten")) return 1;
    const std::string path = "/usr/bin:/bin";

    // Store stand-in: each fetch is timed from perform to the reply's arrival.
    Model model;
    for (const Msg& m : {Msg(msg::HomeResolved{"/nonexistent-home"}),
                         Msg(msg::FileRead{ConfigFile::repos, ""})})
        model = update(model, m).first;
    std::string reposText;
    for (int r = 0; r < 10; ++r)
        reposText += "acme/repo" + std::to_string(r) + "\t\n";

    std::vector<double> totals, ghTimes, own, direct;
    for (int round = 0; round <= rounds; ++round) {
        // A real event loop, woken by the reply itself, as the application's is.
        QObject receiver;
        QEventLoop loop;
        std::vector<Msg> replies;
        EffectRunner runner(&receiver, [&](Msg msg) {
            replies.push_back(std::move(msg));
            loop.quit();
        });
        Model m = update(model, msg::FileRead{ConfigFile::repos, reposText}).first;
        auto [ready, effects] = update(m, msg::PathResolved{path});
        m = ready;
        double ghSeconds = 0;
        const auto start = Clock::now();
        while (true) {
            const auto fetch = std::find_if(effects.begin(), effects.end(), [](const Effect& e) {
                return std::holds_alternative<effect::FetchPrs>(e);
            });
            if (fetch == effects.end())
                break;
            const auto childStart = Clock::now();
            replies.clear();
            runner.perform(*fetch);
            if (replies.empty())
                loop.exec();
            ghSeconds += std::chrono::duration<double>(Clock::now() - childStart).count();
            if (replies.size() != 1) {
                std::fprintf(stderr, "refresh_ten: no answer\n");
                return 1;
            }
            auto step = update(m, replies[0]);
            m = step.first;
            effects = step.second;
        }
        const double total = std::chrono::duration<double>(Clock::now() - start).count();
        if (round == 0)
            continue;  // warms gh's schema cache and the page cache
        totals.push_back(total * 1000);
        ghTimes.push_back(ghSeconds * 1000);
        own.push_back((total - ghSeconds) * 1000);
        direct.push_back(directSeconds(path) * 1000);
        if (m.prs.size() != 80)
            std::fprintf(stderr, "refresh_ten: expected 80 rows, got %zu\n", m.prs.size());
    }
    const double ours = bench::median(totals) - bench::median(direct);
    std::printf("rounds: %d (medians)\n"
                "refresh of ten repositories:        %8.1f ms\n"
                "  perform -> reply, summed:         %8.1f ms\n"
                "  update and loop, summed:          %8.2f ms\n"
                "same ten gh scripts run directly:   %8.1f ms\n"
                "Velmar's own share (refresh - direct): %5.1f ms (%.1f%%)\n",
                rounds, bench::median(totals), bench::median(ghTimes), bench::median(own), bench::median(direct), ours,
                100.0 * ours / bench::median(totals));
    return 0;
}
