// The values the screens read off the model: onboarding and banner flags, the
// status and footer lines, the rows of the pull-request list, the browsers on
// offer, the preview menu and the add field's validation and suggestions.
// All are pure and recomputed on every redraw, so they avoid needless copies.
#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_set>

#include "Model.h"
#include "Text.h"

namespace velmar {

std::string ListRow::id() const {
    if (const auto* r = std::get_if<Repo>(&item)) return "repo-" + std::to_string(r->id);
    if (const auto* m = std::get_if<MoreRow>(&item)) return "more-" + std::to_string(m->repoId);
    return "pr-" + std::to_string(std::get<PR>(item).id);
}

bool Model::showsOnboarding() const { return settingsLoaded && !onboarded; }

bool Model::showsGhBanner() const { return gh == GhStatus::missing || gh == GhStatus::loggedOut; }

bool Model::isRefreshing() const {
    if (fetchInFlight) return true;
    return std::any_of(repos.begin(), repos.end(),
                       [](const Repo& r) { return r.state != RepoState::ok; });
}

std::string Model::statusLine() const {
    std::string line = std::to_string(prs.size());
    line += " open PRs across ";
    line += std::to_string(repos.size());
    line += " repos";
    if (rateLimitedUntil) {
        line += " | ";
        line += rateLimitText();
    } else if (isRefreshing()) {
        line += " | refreshing...";
    } else if (flash) {
        line += " | ";
        line += *flash;
    }
    return line;
}

std::string Model::footerText() const {
    if (screen == Screen::manage || showsOnboarding()) return flash.value_or(std::string());
    return statusLine();
}

const PR* Model::pr(std::int64_t id) const {
    for (const auto& p : prs)
        if (p.id == id) return &p;
    for (const auto* group : {&reviewPrs, &yourPrs})
        if (*group)
            for (const auto& p : **group)
                if (p.id == id) return &p;
    return nullptr;
}

const Repo* Model::repo(std::int64_t id) const {
    for (const auto& r : repos)
        if (r.id == id) return &r;
    return nullptr;
}

const Browser* Model::browser(std::int64_t id) const {
    for (const auto& b : browsers)
        if (b.id == id) return &b;
    return nullptr;
}

std::vector<ListRow> Model::listRows() const {
    if (checksOn()) return extrasRows();
    // Every repository adds at least its header, so the list is full before
    // the repository after the first `maxRows` is reached; only those can
    // appear. Their pull requests are bucketed in one pass over `prs`, each
    // bucket keeping the first `maxPrsPerRepo` in answer order.
    const std::size_t reached = std::min(repos.size(), Constants::maxRows);
    if (reached == 0) return {};

    struct Bucket {
        std::int64_t repoId;
        std::vector<std::size_t> prIndices;
    };
    std::vector<Bucket> buckets;
    buckets.reserve(reached);
    for (std::size_t i = 0; i < reached; ++i) {
        const auto id = repos[i].id;
        const bool known = std::any_of(buckets.begin(), buckets.end(),
                                       [id](const Bucket& b) { return b.repoId == id; });
        if (!known) buckets.push_back({id, {}});
    }
    std::sort(buckets.begin(), buckets.end(),
              [](const Bucket& a, const Bucket& b) { return a.repoId < b.repoId; });

    // A fetch answer's rows sit together, so the previous bucket usually matches.
    Bucket* last = nullptr;
    for (std::size_t i = 0; i < prs.size(); ++i) {
        const auto repoId = prs[i].repoId;
        if (last == nullptr || last->repoId != repoId) {
            auto it = std::lower_bound(
                buckets.begin(), buckets.end(), repoId,
                [](const Bucket& b, std::int64_t id) { return b.repoId < id; });
            if (it == buckets.end() || it->repoId != repoId) {
                last = nullptr;
                continue;
            }
            last = &*it;
        }
        if (last->prIndices.size() < Constants::maxPrsPerRepo) last->prIndices.push_back(i);
    }

    std::vector<ListRow> rows;
    rows.reserve(Constants::maxRows);
    for (std::size_t r = 0; r < reached && rows.size() < Constants::maxRows; ++r) {
        rows.push_back(ListRow{repos[r]});
        const auto id = repos[r].id;
        const auto& bucket = *std::lower_bound(
            buckets.begin(), buckets.end(), id,
            [](const Bucket& b, std::int64_t v) { return b.repoId < v; });
        for (std::size_t index : bucket.prIndices) {
            if (rows.size() == Constants::maxRows) break;
            rows.push_back(ListRow{prs[index]});
        }
    }
    return rows;
}

std::vector<Browser> Model::visibleBrowsers() const {
    std::vector<Browser> visible;
    for (const auto& b : browsers)
        if (b.offeredIn(browserMode)) visible.push_back(b);
    return visible;
}

const Browser* Model::selectedBrowserEntry() const {
    return selectedBrowser ? browser(*selectedBrowser) : nullptr;
}

std::vector<std::string> Model::shownKeys() const {
    std::vector<std::string> keys;
    for (const auto& b : browsers)
        if (b.shown) keys.push_back(b.key());
    return keys;
}

std::vector<PreviewMenuItem> Model::previewMenu() const {
    std::vector<PreviewMenuItem> items;
    const Browser* selected = selectedBrowserEntry();
    items.push_back(menu::Open{
        "Open in " + (selected ? selected->name : std::string(Browser::systemDefaultName)),
        std::nullopt});

    std::size_t listed = 0;
    for (const auto& b : browsers) {
        if (listed == Constants::maxMenuBrowsers) break;
        if (!b.offeredIn(browserMode)) continue;
        if (listed == 0) items.push_back(menu::Separator{});
        items.push_back(menu::Open{"Open in " + b.name, b.id});
        ++listed;
    }

    items.push_back(menu::Separator{});
    items.push_back(menu::Copy{"Copy preview URL"});
    return items;
}

std::string Model::launcherApp(std::optional<std::int64_t> browserId) const {
    if (browserId)
        if (const Browser* b = browser(*browserId)) return b->app;
    return selectedApp();
}

std::string Model::selectedApp() const {
    const Browser* b = selectedBrowserEntry();
    return b ? b->app : std::string();
}

bool Model::canSubmitAdd() const {
    const std::string slug = text::trimWhitespaceAndNewlines(addText);
    // Three characters take at least three bytes, so shorter text needs no
    // segmentation.
    if (slug.size() < 3 || slug.find('/') == std::string::npos) return false;
    return text::characters(slug).size() > 2;
}

std::vector<Suggestion> Model::filteredSuggestions() const {
    const std::string needle = text::trimWhitespaceAndNewlines(addText);
    std::unordered_set<std::string_view> watched;
    watched.reserve(repos.size());
    for (const auto& r : repos) watched.insert(r.name);

    std::vector<Suggestion> owned;
    std::vector<Suggestion> shared;
    for (const auto& s : suggestions) {
        auto& group = s.mine ? owned : shared;
        if (group.size() == Constants::maxSuggestionsPerSource) {
            if (owned.size() == Constants::maxSuggestionsPerSource &&
                shared.size() == Constants::maxSuggestionsPerSource)
                break;
            continue;
        }
        if (watched.count(s.name) != 0) continue;
        if (!needle.empty() && !text::containsCaseInsensitive(s.name, needle)) continue;
        group.push_back(s);
    }
    owned.insert(owned.end(), std::make_move_iterator(shared.begin()),
                 std::make_move_iterator(shared.end()));
    return owned;
}

}  // namespace velmar
