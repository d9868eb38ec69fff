// The announcer: what changed between two consecutive answers that a person
// wants to hear about. Quiet by default: the first answer only sets the
// baseline, a repository that failed says nothing (its rows came back empty
// and would all look new), and one pull request gives one event at most.
#include "Announce.h"

#include <algorithm>
#include <set>

namespace velmar::Announce {

namespace {

bool contains(const std::vector<std::string>& list, std::string_view item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

const SeenPr* find(const std::vector<SeenPr>& prs, std::string_view repo, std::int64_t number) {
    for (const auto& p : prs)
        if (p.number == number && p.repo == repo) return &p;
    return nullptr;
}

bool finished(std::optional<ChecksState> checks) {
    return checks == ChecksState::passing || checks == ChecksState::failing;
}

}  // namespace

std::string key(std::string_view repo, std::int64_t number) {
    return std::string(repo) + "#" + std::to_string(number);
}

std::vector<Event> compare(const Seen& before, const Seen& answer, std::string_view viewer,
                           Switches switches) {
    const auto quiet = [&](std::string_view repo) {
        return contains(answer.failed, repo) || contains(before.failed, repo);
    };
    const auto comparable = [&](std::string_view repo) {
        return !quiet(repo) && contains(answer.repos, repo) && contains(before.repos, repo);
    };

    std::vector<Event> events;
    std::set<std::string> announced;
    const auto add = [&](Kind kind, const SeenPr& p) {
        if (announced.insert(key(p.repo, p.number)).second) events.push_back({kind, p.repo, p.number});
    };

    // A review request weighs more than the news of the same pull request, so
    // the review list goes first.
    if (switches.review && before.review && answer.review)
        for (const auto& p : *answer.review)
            if (!quiet(p.repo) && !find(*before.review, p.repo, p.number))
                add(Kind::reviewRequested, p);

    for (const auto& p : answer.prs) {
        if (!comparable(p.repo)) continue;
        const SeenPr* was = find(before.prs, p.repo, p.number);
        const bool mine = !viewer.empty() && p.author == viewer;
        if (!was) {
            if (switches.newPrs && !mine) add(Kind::opened, p);
        } else if (switches.checks && mine && was->checks == ChecksState::running &&
                   finished(p.checks)) {
            add(p.checks == ChecksState::failing ? Kind::checksFailed : Kind::checksPassed, p);
        }
    }
    return events;
}

Seen merge(Seen before, const Seen& answer) {
    const auto asked = [&](const std::string& repo) {
        return contains(answer.repos, repo) || contains(answer.failed, repo);
    };
    std::erase_if(before.repos, asked);
    std::erase_if(before.failed, asked);
    std::erase_if(before.prs, [&](const SeenPr& p) { return asked(p.repo); });
    before.repos.insert(before.repos.end(), answer.repos.begin(), answer.repos.end());
    before.failed.insert(before.failed.end(), answer.failed.begin(), answer.failed.end());
    before.prs.insert(before.prs.end(), answer.prs.begin(), answer.prs.end());
    before.review = answer.review;
    return before;
}

std::string summary(const Event& event) {
    std::string text = event.repo + " #" + std::to_string(event.number) + " \u00b7 ";
    switch (event.kind) {
        case Kind::opened: return text + "new pull request";
        case Kind::checksPassed: return text + "checks passed";
        case Kind::checksFailed: return text + "checks failed";
        case Kind::reviewRequested: return text + "review requested";
    }
    return text;
}

std::string summaryOfMany(std::size_t count) {
    return std::to_string(count) + " pull requests need you";
}

}  // namespace velmar::Announce
