// Cost of one step of `update`: merging the largest pull-request answer the
// fetch command can produce, and the copy of the model that every message
// pays, measured on a hover over watch lists of growing size.
#include <benchmark/benchmark.h>

#include <string>

#include "Model.h"

namespace {

std::string base64(std::string_view in) {
    static constexpr char abc[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    std::size_t i = 0;
    for (; i + 2 < in.size(); i += 3) {
        const unsigned v = (unsigned char)in[i] << 16 | (unsigned char)in[i + 1] << 8 |
                           (unsigned char)in[i + 2];
        out += {abc[v >> 18], abc[v >> 12 & 63], abc[v >> 6 & 63], abc[v & 63]};
    }
    const std::size_t rest = in.size() - i;
    if (rest > 0) {
        unsigned v = (unsigned char)in[i] << 16;
        if (rest == 2) v |= (unsigned char)in[i + 1] << 8;
        out += {abc[v >> 18], abc[v >> 12 & 63], rest == 2 ? abc[v >> 6 & 63] : '=', '='};
    }
    return out;
}

/// Pads a bot body to about 4 KB with the kind of markup the bots write
/// around their one useful link.
std::string padded(std::string head, const std::string& tail) {
    std::string body = std::move(head);
    while (body.size() + tail.size() < 4000)
        body += "| service-worker | \xE2\x9C\x85 Ready ([Inspect](https://dash.example.net/inspect/"
                "a1b2c3d4e5f6)) | 💬 [**Add feedback**](https://dash.example.net/feedback) |\n";
    return body + tail;
}

/// 50 pull requests, each with a Railway, a Vercel and a Netlify comment.
std::string maximalAnswer() {
    std::string out = "acme/storefront\n";
    for (int n = 1; n <= 50; ++n) {
        const std::string num = std::to_string(4000 + n);
        const std::string railway =
            padded("Railway deployment for this pull request:\n",
                   "[Web](https://storefront-pr-" + num + ".up.railway.example)\n");
        const std::string vercel =
            padded("**The latest updates on your projects.**\n\n| Name | Status | Preview |\n|---|---|---|\n",
                   "| **storefront** | Ready | [Visit Preview](https://storefront-git-b" + num +
                       ".vercel.example) |\n");
        const std::string netlify =
            padded("### Deploy Preview for storefront ready!\n\n",
                   "|<span aria-hidden=\"true\">😎</span> Deploy Preview | "
                   "[https://deploy-preview-" + num + "--storefront.netlify.example](https://deploy-preview-" +
                       num + "--storefront.netlify.example) |\n");
        out += num + "\tMake checkout remember the last used address " + num +
               "\tsomeone\tfeature/checkout-" + num + "\tfalse\thttps://github.com/acme/storefront/pull/" +
               num + "\t" + base64(railway + "\x1E" + vercel + "\x1E" + netlify) + "\n";
    }
    return out;
}

velmar::Model fetchingModel() {
    velmar::Model m;
    m.home = "/home/u";
    m.path = "/usr/bin";
    m.pathResolved = m.reposLoaded = m.settingsLoaded = true;
    velmar::Repo r;
    r.id = 1;
    r.name = "acme/storefront";
    r.state = velmar::RepoState::loading;
    m.repos.push_back(r);
    m.nextRepoId = 2;
    m.fetchInFlight = true;
    return m;
}

void BM_prsFetchedMaximalAnswer(benchmark::State& state) {
    const velmar::Model m = fetchingModel();
    const velmar::Msg msg = velmar::msg::PrsFetched{maximalAnswer(), true};
    for (auto _ : state) {
        auto result = velmar::update(m, msg);
        benchmark::DoNotOptimize(result);
    }
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::get<velmar::msg::PrsFetched>(msg).output.size()));
}
BENCHMARK(BM_prsFetchedMaximalAnswer)->Unit(benchmark::kMicrosecond);

velmar::Model modelWithPrs(std::int64_t count) {
    velmar::Model m = fetchingModel();
    m.fetchInFlight = false;
    m.repos.clear();
    for (std::int64_t i = 0; i < count; ++i) {
        const std::int64_t repoId = i / 40 + 1;
        if (m.repos.empty() || m.repos.back().id != repoId) {
            velmar::Repo r;
            r.id = repoId;
            r.name = "acme/service-" + std::to_string(repoId);
            r.state = velmar::RepoState::ok;
            m.repos.push_back(r);
        }
        velmar::PR p;
        p.repoId = repoId;
        p.number = 100 + i % 40;
        p.id = repoId * 100000 + p.number;
        p.repo = m.repos.back().name;
        p.title = "Make checkout remember the last used address " + std::to_string(i);
        p.author = "someone";
        p.branch = "feature/checkout-" + std::to_string(i);
        p.url = "https://github.com/" + p.repo + "/pull/" + std::to_string(p.number);
        p.commentPreview = "https://checkout-" + std::to_string(i) + ".preview.example";
        p.preview = p.commentPreview;
        p.previewSource = velmar::PreviewSource::comment;
        m.prs.push_back(std::move(p));
    }
    return m;
}

void BM_hoverPr(benchmark::State& state) {
    const velmar::Model m = modelWithPrs(state.range(0));
    const velmar::Msg msg = velmar::msg::HoverPr{100100};
    for (auto _ : state) {
        auto result = velmar::update(m, msg);
        benchmark::DoNotOptimize(result);
    }
}
BENCHMARK(BM_hoverPr)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Arg(2000)->Unit(benchmark::kMicrosecond);

}  // namespace
