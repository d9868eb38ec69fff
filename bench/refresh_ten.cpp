// Times a refresh of ten watched repositories through the real runner and
// gh against the fake GitHub server, and splits the time into gh's part (the
// children's lifetimes) and Velmar's own (everything else on the way).
#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "EffectsTestSupport.h"
#include "Model.h"

using namespace velmar;
using Clock = std::chrono::steady_clock;

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

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 7;
    testing::FakeGitHub server;
    std::string why;
    if (!server.start(fixture(), why)) {
        std::fprintf(stderr, "refresh_ten: %s\n", why.c_str());
        return 1;
    }
    server.exportEnvironment("t");
    const std::string path = "/usr/bin:/bin";

    // Store stand-in: the time of each gh child is measured from perform to
    // the reply's arrival minus the queue hop, which stays in Velmar's share.
    Model model;
    for (const Msg& m : {Msg(msg::HomeResolved{"/nonexistent-home"}),
                         Msg(msg::FileRead{ConfigFile::repos, ""})})
        model = update(model, m).first;
    std::string reposText;
    for (int r = 0; r < 10; ++r)
        reposText += "acme/repo" + std::to_string(r) + "\t\n";

    std::vector<double> totals, ghTimes, own;
    for (int round = 0; round <= rounds; ++round) {
        testing::RunnerHarness harness;
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
            auto replies = harness.perform(*fetch, 1, 60);
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
        if (m.prs.size() != 80)
            std::fprintf(stderr, "refresh_ten: expected 80 rows, got %zu\n", m.prs.size());
    }
    std::printf("rounds %d  median refresh %.1f ms  children+hand-over %.1f ms  update loop %.2f ms\n",
                rounds, median(totals), median(ghTimes), median(own));
    return 0;
}
