// Cost of the values the list screen recomputes on every redraw, on a large
// watch list: 50 repositories with 40 open pull requests each.
#include <benchmark/benchmark.h>

#include <string>

#include "Model.h"

namespace {

velmar::Model bigModel() {
    velmar::Model m;
    std::int64_t prId = 1;
    for (std::int64_t r = 1; r <= 50; ++r) {
        const std::string slug = "example-org/service-" + std::to_string(r);
        m.repos.push_back(velmar::Repo{r, slug, "https://{branch}.preview.example.com",
                                       velmar::RepoState::ok, 40, false, ""});
    }
    // Answers arrive per repository, but not in watch-list order.
    for (std::int64_t r = 50; r >= 1; --r) {
        for (int n = 0; n < 40; ++n, ++prId) {
            velmar::PR p;
            p.id = prId;
            p.repoId = r;
            p.repo = "example-org/service-" + std::to_string(r);
            p.number = 1000 + n;
            p.title = "Make the settings screen remember its last tab " + std::to_string(n);
            p.author = "someone-with-a-login";
            p.branch = "feature/remember-settings-tab-" + std::to_string(n);
            p.url = "https://github.com/" + p.repo + "/pull/" + std::to_string(p.number);
            p.preview = "https://" + p.branch + ".preview.example.com";
            p.previewSource = velmar::PreviewSource::pattern;
            m.prs.push_back(std::move(p));
        }
    }
    m.flash.reset();
    return m;
}

void BM_listRows(benchmark::State& state) {
    const velmar::Model m = bigModel();
    for (auto _ : state) benchmark::DoNotOptimize(m.listRows());
}
BENCHMARK(BM_listRows);

void BM_footerText(benchmark::State& state) {
    const velmar::Model m = bigModel();
    for (auto _ : state) benchmark::DoNotOptimize(m.footerText());
}
BENCHMARK(BM_footerText);

}  // namespace
