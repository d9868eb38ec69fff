// The fetch queue: repositories are fetched one at a time, in the order of
// the user's list, and `fetchInFlight` guarantees that at most one fetch is
// outstanding. Every answer, good or bad, clears the flag and starts the next
// queued repository, so a failure never stalls the queue. It also holds what
// the batched fetch shares with this one: the copy an answer is for, its rows,
// the pattern they teach, and how an answer ends.
#include <algorithm>
#include <utility>

#include "Formats.h"
#include "Model.h"

namespace velmar {

namespace {

/// The part of the slug behind its last "/", ignoring empty parts
/// ("acme/web/" gives "web"); empty if there is none.
std::string_view shortName(std::string_view slug) {
    while (!slug.empty() && slug.back() == '/') slug.remove_suffix(1);
    const auto slash = slug.rfind('/');
    return slash == std::string_view::npos ? slug : slug.substr(slash + 1);
}

}  // namespace

std::int64_t prId(std::int64_t repoId, std::int64_t number) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(repoId) * 100000u +
                                     static_cast<std::uint64_t>(number));
}

PR answerRow(Formats::PrRow row, const Repo& repo, std::int64_t id) {
    PR pr;
    pr.id = id;
    pr.repoId = repo.id;
    pr.repo = repo.name;
    pr.number = row.number;
    pr.title = std::move(row.title);
    pr.author = std::move(row.author);
    pr.branch = std::move(row.branch);
    pr.isDraft = row.isDraft;
    pr.url = std::move(row.url);
    pr.commentPreview = std::move(row.commentPreview);
    return pr;
}

Repo* answerCopy(const std::vector<Repo*>& copies) {
    for (Repo* r : copies)
        if (r->state == RepoState::loading) return r;
    return copies.empty() ? nullptr : copies.front();
}

Effects Model::takeRows(Repo& repo, const std::vector<PR*>& rows) {
    std::vector<std::string> learned;
    for (const PR* p : rows)
        if (auto found = Formats::detectPattern(p->commentPreview, p->number)) learned.push_back(std::move(*found));
    Effects effects;
    auto voted = Formats::votePattern(learned, repo.detectedPattern, shortName(repo.name));
    if (voted && *voted != repo.detectedPattern) {
        repo.detectedPattern = std::move(*voted);
        effects = writeRepos();
    }
    for (PR* p : rows) p->resolvePreview(repo);
    return effects;
}

Effects Model::finishAnswer(Effects effects) {
    append(effects, startNext());
    if (!isRefreshing()) flash.reset();
    return effects;
}

Effects Model::startNext() {
    // With checks on, one query fetches every queued repository at once.
    if (checksOn()) return startBatch();
    // Children need the login shell's search path to find gh at all.
    if (!pathResolved || fetchInFlight) return {};
    const auto next = std::find_if(repos.begin(), repos.end(),
                                   [](const Repo& r) { return r.state == RepoState::queued; });
    if (next == repos.end()) return {};
    next->state = RepoState::loading;
    fetchInFlight = true;
    return {effect::FetchPrs{next->name, path}};
}

void Model::requeueAll() {
    for (auto& r : repos) {
        // A loading repository's answer is still on the way; queuing it again
        // would fetch it twice.
        if (r.state != RepoState::loading) r.state = RepoState::queued;
        r.failed = false;
    }
}

Effects Model::refresh() {
    Effects effects;
    if (pathResolved) effects.push_back(effect::GhPreflight{path});
    if (repos.empty()) {
        flash = std::string(Flash::noRepos);
        return effects;
    }
    // While the rate limit is waited out, the repositories keep their rows
    // and state; the wait's end refreshes them.
    if (rateLimitedUntil) return effects;
    requeueAll();
    append(effects, startNext());
    return effects;
}

Effects Model::prsFetched(const std::string& output, bool ok) {
    fetchInFlight = false;
    Formats::PrOutput answer = Formats::parsePrOutput(output);

    Effects effects;
    // An answer for a repository removed while it ran matches nothing and is
    // dropped whole.
    std::vector<Repo*> copies;
    for (auto& r : repos) {
        if (r.name != answer.slug) continue;
        copies.push_back(&r);
        // No later copy goes before one that is loading: the rest of a long
        // list need not be read.
        if (r.state == RepoState::loading) break;
    }
    if (Repo* repo = answerCopy(copies)) {
        std::erase_if(prs, [&](const PR& p) { return p.repoId == repo->id; });
        // No reserve of the exact size here: it would move every row of every
        // repository on each answer, where growing by doubling moves each
        // row a few times over a whole refresh.
        const std::size_t first = prs.size();
        for (auto& row : answer.rows) {
            const std::int64_t id = prId(repo->id, row.number);
            prs.push_back(answerRow(std::move(row), *repo, id));
        }
        std::vector<PR*> added;
        added.reserve(answer.rows.size());
        for (std::size_t i = first; i < prs.size(); ++i) added.push_back(&prs[i]);
        effects = takeRows(*repo, added);

        repo->state = RepoState::ok;
        repo->failed = !ok;
        repo->count = static_cast<std::int64_t>(answer.rows.size());
    }
    return finishAnswer(std::move(effects));
}

Effects Model::prsSpawnFailed() {
    fetchInFlight = false;
    // The old rows stay: a program that could not be started says nothing
    // about the pull requests themselves.
    for (auto& r : repos) {
        if (r.state == RepoState::loading) {
            r.state = RepoState::ok;
            r.failed = true;
        }
    }
    return finishAnswer({});
}

}  // namespace velmar
