// A refresh of twenty repositories with checks off (one gh pr list each, one
// after another) against on (one batched query, then one for the comments of
// new pull requests), and on with the search for the viewer's own thirty pull
// requests ("Yours") against on without it: processes started, GraphQL points
// by GitHub's formula as the fake server computes it, and wall time with a gh
// that takes 1 s to answer.
#include <QEventLoop>
#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "EffectsTestSupport.h"
#include "FakeGitHubBench.h"
#include "Model.h"

using namespace velmar;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int kRepos = 20;
/// The viewer's own pull requests, in six repositories that are not watched.
constexpr int kMine = 30;

/// What the extras file says, and the mode's name in the table.
enum class Mode { off, checks, yours };
struct ModeTexts {
    const char* extras;
    const char* name;
};
const ModeTexts& texts(Mode mode) {
    static constexpr ModeTexts table[] = {{"checks\t0\n", "off"},
                                          {"checks\t1\nyours\t0\n", "on, without Yours"},
                                          {"checks\t1\nyours\t1\n", "on, with Yours"}};
    return table[static_cast<int>(mode)];
}

std::string fixture() {
    std::string repos;
    for (int r = 0; r < kRepos; ++r) {
        std::string prs;
        for (int n = 1; n <= 5; ++n) {
            const std::string num = std::to_string(n);
            prs += std::string(n > 1 ? "," : "") + "{\"number\": " + num + ", \"title\": \"Change " + num +
                   "\", \"author\": \"dev\", \"branch\": \"b" + num + "\", \"checks\": \"SUCCESS\"" +
                   ", \"comments\": [{\"author\": \"vercel\", \"body\": \"[Visit Preview](https://app" +
                   std::to_string(r) + "-pr-" + num + ".vercel.app)\"}]}";
        }
        repos += std::string(r > 0 ? "," : "") + "\"acme/repo" + std::to_string(r) + "\": [" + prs + "]";
    }
    for (int r = 0; r < kMine / 5; ++r) {
        std::string prs;
        for (int n = 1; n <= 5; ++n)
            prs += std::string(n > 1 ? "," : "") + "{\"number\": " + std::to_string(n) +
                   ", \"title\": \"Mine\", \"author\": \"octo\", \"branch\": \"m" + std::to_string(n) +
                   "\", \"checks\": \"" + (n == 1 ? "FAILURE" : "SUCCESS") + "\"}";
        repos += ",\"octo/own" + std::to_string(r) + "\": [" + prs + "]";
    }
    return "{\"token\": \"t\", \"login\": \"octo\", \"repos\": {" + repos + "}}";
}

struct Round {
    int processes = 0;
    int points = 0;
    double seconds = 0;
    /// Rows of "Yours" after the refresh: shows the search was answered.
    std::size_t yours = 0;
};

bool isFetch(const Effect& e) {
    return std::holds_alternative<effect::FetchPrs>(e) || std::holds_alternative<effect::FetchBatch>(e) ||
           std::holds_alternative<effect::FetchComments>(e);
}

int pointsSince(const testing::FakeGitHub& server, std::size_t from) {
    std::istringstream lines(server.costsLog().substr(from));
    int points = 0;
    std::string operation;
    int cost = 0;
    while (lines >> operation >> cost)
        if (operation == "PullRequestList" || operation == "Batch" || operation == "Comments") points += cost;
    return points;
}

// One refresh driven like the Store: the first one of a fresh model, or with
// `warm` a later one (the steady state of a panel left open), after a first
// that is not counted.
Round refresh(Mode mode, const std::string& path, const testing::FakeGitHub& server, bool warm) {
    Model m;
    std::string reposText;
    for (int r = 0; r < kRepos; ++r) reposText += "acme/repo" + std::to_string(r) + "\t\n";
    for (const Msg& msg : {Msg(msg::HomeResolved{"/nonexistent-home"}),
                           Msg(msg::FileRead{ConfigFile::extras, texts(mode).extras}),
                           Msg(msg::FileRead{ConfigFile::repos, reposText})})
        m = update(m, msg).first;
    QObject receiver;
    QEventLoop loop;
    std::vector<Msg> replies;
    EffectRunner runner(&receiver, [&](Msg msg) {
        replies.push_back(std::move(msg));
        loop.quit();
    });
    Round result;
    // Sends `msg`, then performs each fetch it leads to and hands its answer
    // back, until no fetch is left.
    const auto run = [&](const Msg& msg) {
        auto [next, effects] = update(m, msg);
        m = std::move(next);
        while (true) {
            const auto fetch = std::find_if(effects.begin(), effects.end(), isFetch);
            if (fetch == effects.end()) return;
            replies.clear();
            runner.perform(*fetch);
            ++result.processes;
            while (replies.empty()) loop.exec();
            auto step = update(m, replies[0]);
            m = std::move(step.first);
            effects = std::move(step.second);
        }
    };
    if (warm) run(msg::PathResolved{path});
    result = Round{};
    const std::size_t before = server.costsLog().size();
    const auto start = Clock::now();
    run(warm ? Msg(msg::Refresh{}) : Msg(msg::PathResolved{path}));
    result.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    result.points = pointsSince(server, before);
    result.yours = m.yourPrs ? m.yourPrs->size() : 0;
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 3;
    testing::FakeGitHub server;
    if (!bench::startFakeGitHub(server, fixture(), "extras_refresh")) return 1;
    // A gh that takes a second before it starts its work.
    testing::Scratch slow;
    const std::string slowPath = slow.stub("gh", "sleep 1; exec /usr/bin/gh \"$@\"") + ":/usr/bin:/bin";

    std::printf("twenty repositories, five pull requests each, and %d of the viewer's elsewhere; "
                "medians of %d rounds\n", kMine, rounds);
    std::printf("%-46s %10s %10s %12s %6s\n", "", "processes", "points", "wall (s)", "yours");
    for (Mode mode : {Mode::off, Mode::checks, Mode::yours}) {
        for (bool warm : {false, true}) {
            std::vector<double> seconds;
            Round last;
            for (int i = 0; i < rounds; ++i) {
                last = refresh(mode, slowPath, server, warm);
                seconds.push_back(last.seconds);
            }
            // The viewer's login comes with the first answer, so the search
            // for "Yours" starts with the second refresh.
            std::printf("%-46s %10d %10d %12.2f %6zu\n",
                        (std::string(texts(mode).name) + ", " + (warm ? "a later refresh" : "the first refresh")).c_str(),
                        last.processes, last.points, bench::median(seconds), last.yours);
        }
    }
    return 0;
}
