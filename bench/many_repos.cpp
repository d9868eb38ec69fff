// What a long watch list costs: `repos` watched repositories (1,000 and
// 10,000 in many_repos.sh), each answered by gh with two pull requests.
//   core   the core's steps through the store, no screens: reading the repos
//          file, then a whole refresh cycle, one gh answer per repository;
//   panel  the real store, screens and view, offscreen: start-up to the list
//          shown, then the same cycle, the view drawing as it goes.
// Prints the time of each phase, the median and worst time of one answer, and
// the peak resident memory. One list length per process, so the peak is its own.
//   build/bench/many_repos core|panel REPOS
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTest>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <sys/resource.h>
#include <vector>

#include "PanelBench.h"

using namespace velmar;
using Clock = std::chrono::steady_clock;

namespace {

std::string slug(int i) { return "acme/repo-" + std::to_string(i); }

std::string reposFile(int repos) {
    std::string file;
    for (int i = 0; i < repos; ++i) file += slug(i) + "\t\n";
    return file;
}

// gh's answer for one repository: two pull requests, one with a bot comment.
std::string answer(const std::string& slug) {
    return slug + "\n1\tFix the build\tana\tfix/build\tfalse\thttps://github.com/" + slug +
           "/pull/1\tW1dlYl0oaHR0cHM6Ly93ZWItcHItMS51cC5yYWlsd2F5LmFwcCk=\n2\tAdd a feature\tbo\tfeat\ttrue\t"
           "https://github.com/" + slug + "/pull/2\t\n";
}

double ms(Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); }

double peakMb() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024.0;
}

void report(const char* phase, double total, std::vector<double> steps = {}) {
    std::printf("%-8s %9.1f ms", phase, total);
    if (!steps.empty()) {
        std::sort(steps.begin(), steps.end());
        std::printf("  per answer: median %.3f ms, worst %.3f ms", steps[steps.size() / 2], steps.back());
    }
    std::printf("  peak RSS %.1f MB\n", peakMb());
}

/// Sends `refresh`, then answers each fetch as gh would, one at a time;
/// `send` is the step under test, `pending` the slug it asks for next.
template <typename Send, typename Pending>
void cycle(Send send, Pending pending, int repos) {
    std::vector<double> steps;
    steps.reserve(std::size_t(repos));
    const auto start = Clock::now();
    send(msg::Refresh{});
    for (int i = 0; i < repos; ++i) {
        const std::string next = pending();
        if (next.empty()) break;
        const auto t = Clock::now();
        send(msg::PrsFetched{answer(next), true});
        steps.push_back(ms(Clock::now() - t));
    }
    report("refresh", ms(Clock::now() - start), steps);
}

void core(int repos) {
    Store store(nullptr);
    std::string next;  // the repository whose fetch is outstanding
    store.setPerform([&](const Effect& e) {
        if (const auto* f = std::get_if<effect::FetchPrs>(&e)) next = f->repo;
    });
    const auto send = [&](const Msg& msg) {
        if (std::holds_alternative<msg::PrsFetched>(msg)) next.clear();
        store.send(msg);
    };
    const auto start = Clock::now();
    send(msg::HomeResolved{"/nonexistent"});
    send(msg::FileRead{ConfigFile::settings, "auto\t0\nview\tlist\nonboarded\t1\nappearance\tdark\n"});
    send(msg::FileRead{ConfigFile::browsers, std::nullopt});
    send(msg::FileRead{ConfigFile::repos, reposFile(repos)});
    send(msg::PathResolved{"/usr/bin"});
    send(msg::GhChecked{0});
    report("start", ms(Clock::now() - start));
    // A refresh while the start's first fetch runs is remembered: one round
    // of answers then fetches every repository.
    cycle(send, [&] { return next; }, repos);
    std::printf("rows %zu, pull requests %zu\n", store.model().listRows().size(), store.model().prs.size());
}

void panel(int repos) {
    std::string next;
    const auto start = Clock::now();
    bench::PanelBench bench(reposFile(repos));
    bench.store.setPerform([&](const Effect& e) {
        if (const auto* f = std::get_if<effect::FetchPrs>(&e)) next = f->repo;
    });
    bench.show(0);
    report("start", ms(Clock::now() - start));
    // The start's fetches: the store asked for the first before it could
    // perform, so the first one is answered by name.
    const auto send = [&](const Msg& msg) {
        if (std::holds_alternative<msg::PrsFetched>(msg)) next.clear();
        bench.store.send(msg);
        // The view follows every answer, as when they come a second apart.
        QCoreApplication::processEvents();
    };
    next = slug(0);
    cycle(send, [&] { return next; }, repos);
    QTest::qWait(50);
    std::printf("rows %d\n", bench.panel.rows()->count());
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const std::string mode = argc > 1 ? argv[1] : "core";
    const int repos = argc > 2 ? std::atoi(argv[2]) : 1000;
    std::printf("%s, %d repositories\n", mode.c_str(), repos);
    if (mode == "core") {
        core(repos);
        return 0;
    }
    QGuiApplication app(argc, argv);
    panel(repos);
    return 0;
}
