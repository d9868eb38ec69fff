// Checks, reviews and deployments: one batched query per refresh instead of
// one process per repository. The queue's guarantees are those of the plain
// fetch: `fetchInFlight` keeps refreshes from overlapping (it stays set while
// comment bodies are still asked for), the order of the list is the user's,
// and a repository's failure never stops the others.
#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "Formats.h"
#include "Graphql.h"
#include "Model.h"

namespace velmar {

namespace {

// A search result may come from any repository, watched or not, and the same
// pull request may also stand in its own group: its id must differ from the
// group row's and stay stable, so it is derived from the slug. The rows of
// "Yours" lie below those of the review group, so one pull request in both
// searches still has two ids.
std::int64_t searchRowId(std::int64_t groupId, std::string_view slug, std::int64_t number) {
    std::uint64_t hash = 1469598103934665603u;  // FNV-1a
    for (unsigned char c : slug) {
        hash ^= c;
        hash *= 1099511628211u;
    }
    const std::int64_t below = groupId == yoursGroupId ? 100000000000000 : 0;
    return -below - static_cast<std::int64_t>((hash % 1000000000u) * 100000u +
                                              static_cast<std::uint64_t>(number % 100000));
}

/// The plain fetch's row with what checks add.
PR makeRow(const Graphql::PullRequest& row, const Repo& repo, std::int64_t id) {
    PR pr = answerRow(row, repo, id);
    pr.checks = row.checks;
    pr.review = row.review;
    pr.conflicts = row.conflicts;
    pr.nodeId = row.nodeId;
    pr.headOid = row.headOid;
    pr.updatedAt = row.updatedAt;
    return pr;
}

void attachDeployment(PR& pr, const std::vector<Graphql::Deployment>& deployments) {
    auto match = Graphql::matchDeployment(deployments, pr.headOid.value_or(std::string()), pr.branch);
    if (!match) return;
    pr.deploy = match->deployment.state;
    pr.deployOlder = match->older;
    if (!match->deployment.url.empty()) pr.deployUrl = match->deployment.url;
}

/// The watched repositories by slug, each slug's copies in the order of the
/// list (a hand-edited file may name one twice). Built once per answer, so an
/// answer costs the same for each repository however long the list is.
class ReposBySlug {
public:
    explicit ReposBySlug(std::vector<Repo>& repos) {
        index_.reserve(repos.size());
        for (auto& r : repos) index_[r.name].push_back(&r);
    }
    /// The copy that is loading, else the first; null when none is watched.
    Repo* find(std::string_view slug) const {
        const auto it = index_.find(slug);
        return it == index_.end() ? nullptr : answerCopy(it->second);
    }

private:
    std::unordered_map<std::string_view, std::vector<Repo*>> index_;
};

/// The next query for comment bodies, if any ids wait.
Effects nextComments(Model& m) {
    if (!m.commentsQueue || m.commentsQueue->empty()) {
        m.commentsQueue.reset();
        m.commentsHost.reset();
        return {};
    }
    auto& queue = *m.commentsQueue;
    const auto take = std::min(queue.size(), Constants::maxNodesPerQuery);
    std::vector<std::string> ids(queue.begin(), queue.begin() + static_cast<std::ptrdiff_t>(take));
    queue.erase(queue.begin(), queue.begin() + static_cast<std::ptrdiff_t>(take));
    const auto host = m.commentsHost;
    if (queue.empty()) m.commentsQueue.reset(), m.commentsHost.reset();
    m.fetchInFlight = true;
    return {effect::FetchComments{std::move(ids), m.path, host}};
}

/// The rows of a search's answer under the group `groupId`. A pull request of
/// a watched repository shares the comment link and deployment its own group's
/// row already has, and resolves its preview by that repository's patterns.
std::vector<PR> searchRows(const Model& m, const std::vector<Graphql::PullRequest>& rows,
                           std::int64_t groupId) {
    std::vector<PR> out;
    for (const auto& row : rows) {
        Repo owner;
        owner.id = groupId;
        owner.name = row.repo;
        for (const auto& r : m.repos)
            if (r.name == row.repo) owner = r;
        PR pr = makeRow(row, owner, searchRowId(groupId, row.repo, row.number));
        pr.repoId = groupId;
        if (owner.id != groupId)
            if (const PR* same = m.pr(prId(owner.id, row.number)))
                pr.commentPreview = same->commentPreview, pr.deploy = same->deploy,
                pr.deployOlder = same->deployOlder, pr.deployUrl = same->deployUrl;
        pr.resolvePreview(owner);
        out.push_back(std::move(pr));
    }
    return out;
}

/// After the comments came in: a search row takes the preview its watched
/// repository's row now has.
void sharePreviews(const Model& m, std::optional<std::vector<PR>>& rows) {
    if (!rows) return;
    for (auto& p : *rows) {
        const PR* same = nullptr;
        for (const auto& r : m.repos)
            if (r.name == p.repo) same = m.pr(prId(r.id, p.number));
        if (same) {
            p.commentPreview = same->commentPreview;
            p.preview = same->preview;
            p.previewSource = same->previewSource;
        }
    }
}

}  // namespace

Effects Model::setChecks(bool on) {
    // Only a change is written, so the file is created only when the switch
    // is first turned on. Off is kept as absent, as before any file existed.
    if (on == checksOn()) return {};
    checks = on ? std::optional<bool>(true) : std::nullopt;
    Effects effects = writeExtras();
    // Whatever was seen before is no baseline for the first answer after.
    seen.reset();
    if (!on) {
        // Back to the plain panel: nothing of the extras stays in the rows.
        viewer.reset();
        reviewPrs.reset();
        yourPrs.reset();
        rateLimitedUntil.reset();
        batchCount.reset();
        commentsQueue.reset();
        commentsHost.reset();
        batchLimit.reset();
        for (auto& p : prs) {
            p.checks.reset();
            p.review.reset();
            p.conflicts.reset();
            p.deploy.reset();
            p.deployOlder.reset();
            p.deployUrl.reset();
            p.nodeId.reset();
            p.headOid.reset();
            p.updatedAt.reset();
            if (const Repo* r = repo(p.repoId)) p.resolvePreview(*r);
        }
    }
    if (repos.empty()) return effects;
    requeueAll();
    append(effects, startNext());
    return effects;
}

Effects Model::setYours(bool on) {
    // Greyed out while the parent switch is off.
    if (!checksOn() || on == yours.value_or(true)) return {};
    yours = on;
    Effects effects = writeExtras();
    if (!on) {
        yourPrs.reset();
        return effects;
    }
    // The group shows up with the next answer: ask now rather than in a minute.
    if (repos.empty() || fetchInFlight || rateLimitedUntil) return effects;
    requeueAll();
    append(effects, startNext());
    return effects;
}

std::int64_t Model::yoursBlocked() const {
    if (!yourPrs) return 0;
    return std::count_if(yourPrs->begin(), yourPrs->end(), isBlocked);
}

Effects Model::startBatch() {
    if (!pathResolved || fetchInFlight || rateLimitedUntil) return {};
    // One call per host, one host after the other in the order of the list:
    // the first queued repository decides the host, and the queued ones on
    // the same host come along, up to the limit once GitHub gave up on more.
    const auto first = std::find_if(repos.begin(), repos.end(),
                                    [](const Repo& r) { return r.state == RepoState::queued; });
    if (first == repos.end()) return {};
    const auto host = Graphql::hostOf(first->name);
    const std::size_t limit =
        batchLimit ? static_cast<std::size_t>(std::max<std::int64_t>(*batchLimit, 1)) : repos.size();
    std::vector<std::string> names;
    for (auto r = first; r != repos.end() && names.size() < limit; ++r) {
        if (r->state != RepoState::queued || Graphql::hostOf(r->name) != host) continue;
        r->state = RepoState::loading;
        names.push_back(r->name);
    }
    fetchInFlight = true;
    // The login and its searches are gh's own host's: another host's pull
    // requests waiting for review are not asked for.
    const std::optional<bool> withYours =
        !host && yoursOn() && viewer ? std::optional<bool>(true) : std::nullopt;
    return {effect::FetchBatch{std::move(names), host ? std::nullopt : viewer, path, withYours, host}};
}

Effects Model::batchFetched(const std::vector<std::string>& slugs, const std::string& output,
                            std::optional<std::int64_t> http) {
    fetchInFlight = false;
    if (!checksOn()) {
        // Switched off while the query ran: the plain fetch takes over.
        for (auto& r : repos)
            if (r.state == RepoState::loading) r.state = RepoState::queued;
        return finishAnswer({});
    }
    const ReposBySlug named(repos);
    const bool gaveUp = http && (*http == 502 || *http == 504);
    if (gaveUp && slugs.size() > Constants::reposPerSplitQuery) {
        // GitHub's server gave up on a query this large: the same
        // repositories go again, a few to a call, from now on.
        for (const auto& slug : slugs)
            if (Repo* r = named.find(slug); r && r->state == RepoState::loading) r->state = RepoState::queued;
        batchLimit = static_cast<std::int64_t>(Constants::reposPerSplitQuery);
        return finishAnswer({});
    }

    const Graphql::BatchAnswer answer = Graphql::parseBatch(output, slugs.size());
    const std::optional<std::string> host = slugs.empty() ? std::nullopt : Graphql::hostOf(slugs.front());
    Effects effects;

    if (gaveUp || !answer.readable ||
        (answer.rateLimited && std::none_of(answer.repos.begin(), answer.repos.end(),
                                            [](const auto& r) { return r.has_value(); }))) {
        // Nothing usable came back: the old rows stay, as when gh cannot be
        // run at all. A refusal for the rate limit is no repository's fault.
        for (const auto& slug : slugs)
            if (Repo* r = named.find(slug); r && r->state == RepoState::loading) {
                r->state = RepoState::ok;
                r->failed = !answer.rateLimited || gaveUp;
            }
        if (answer.rateLimited && !gaveUp) {
            rateLimitedUntil = answer.rateLimit ? answer.rateLimit->resetAt : std::string();
            effects.push_back(effect::WaitUntil{*rateLimitedUntil});
        }
        return finishAnswer(std::move(effects));
    }

    // The login and the review search belong to gh's own host.
    if (!host && answer.viewer) viewer = answer.viewer;
    // A refresh may take several calls (hosts, a split): they all count as
    // the same refresh for the comments.
    const std::int64_t refreshesDone = batchCount.value_or(0);
    const bool allComments = refreshesDone % Constants::fullCommentsEvery == 0;

    // The repositories this answer is for, each answer's entry beside it.
    std::vector<std::pair<Repo*, std::size_t>> answered;
    std::unordered_set<std::int64_t> replaced;
    // What the announcer compares: the repositories answered and those that failed.
    std::vector<std::string> answeredSlugs, failedSlugs;
    for (std::size_t i = 0; i < slugs.size(); ++i) {
        Repo* repo = named.find(slugs[i]);
        if (!repo) continue;  // removed while the query ran
        // A slug listed twice in one call fills its second copy next time.
        if (repo->state == RepoState::loading) repo->state = RepoState::ok;
        answered.emplace_back(repo, i);
        replaced.insert(repo->id);
    }
    // Their old rows leave the list in one pass, kept aside to compare.
    const auto kept = std::stable_partition(prs.begin(), prs.end(),
                                            [&](const PR& p) { return !replaced.count(p.repoId); });
    std::vector<PR> old(std::make_move_iterator(kept), std::make_move_iterator(prs.end()));
    prs.erase(kept, prs.end());
    std::unordered_map<std::int64_t, const PR*> before;
    before.reserve(old.size());
    for (const auto& p : old) before.emplace(p.id, &p);

    std::vector<std::string> needComments;
    for (const auto& [repo, i] : answered) {
        repo->state = RepoState::ok;
        if (!answer.repos[i]) {
            repo->failed = true;
            repo->count = 0;
            failedSlugs.push_back(slugs[i]);
            continue;
        }
        answeredSlugs.push_back(slugs[i]);
        const auto& got = *answer.repos[i];
        for (const auto& row : got.prs) {
            PR pr = makeRow(row, *repo, prId(repo->id, row.number));
            const auto was = before.find(pr.id);
            const bool changed = was == before.end() || was->second->updatedAt != pr.updatedAt ||
                                 was->second->headOid != pr.headOid;
            // Until its comments are in again, a row keeps the link it had.
            if (was != before.end()) pr.commentPreview = was->second->commentPreview;
            if ((changed || allComments) && !row.nodeId.empty()) needComments.push_back(row.nodeId);
            attachDeployment(pr, got.deployments);
            pr.resolvePreview(*repo);
            prs.push_back(std::move(pr));
        }
        repo->failed = false;
        repo->count = static_cast<std::int64_t>(got.prs.size());
    }

    // Another host's answer leaves the searches' groups as they are.
    if (!host) {
        if (answer.review) {
            reviewPrs = searchRows(*this, *answer.review, reviewGroupId);
        } else if (!viewer) {
            reviewPrs.reset();
        }
        if (answer.yours && yoursOn()) {
            std::vector<PR> mine = searchRows(*this, *answer.yours, yoursGroupId);
            orderYours(mine);
            yourPrs = std::move(mine);
        } else if (!viewer || !yoursOn()) {
            yourPrs.reset();
        }
    }

    append(effects, announce(answeredSlugs, failedSlugs, answer.review.has_value()));

    if (answer.rateLimit && answer.rateLimit->limit > 0 &&
        answer.rateLimit->remaining * 10 < answer.rateLimit->limit) {
        // Under a tenth left: the next refresh waits for the reset rather than
        // eat what the user's other tools need.
        rateLimitedUntil = answer.rateLimit->resetAt;
        effects.push_back(effect::WaitUntil{*rateLimitedUntil});
    }

    if (std::none_of(repos.begin(), repos.end(), [](const Repo& r) {
            return r.state == RepoState::queued || r.state == RepoState::loading;
        }))
        batchCount = refreshesDone + 1;

    if (!needComments.empty()) {
        commentsQueue = std::move(needComments);
        commentsHost = host;
        append(effects, nextComments(*this));
        return effects;
    }
    return finishAnswer(std::move(effects));
}

Effects Model::commentsFetched(const std::string& output) {
    fetchInFlight = false;
    Effects effects;
    if (checksOn()) {
        const auto previews = Graphql::parseComments(output);
        std::unordered_map<std::int64_t, std::vector<PR*>> touched;
        for (auto& p : prs) {
            if (!p.nodeId) continue;
            const auto found = previews.find(*p.nodeId);
            if (found == previews.end()) continue;  // not answered: the old link stays
            p.commentPreview = found->second;
            touched[p.repoId];
        }
        if (!touched.empty()) {
            for (auto& p : prs)
                if (const auto group = touched.find(p.repoId); group != touched.end())
                    group->second.push_back(&p);
            for (auto& r : repos) {
                const auto group = touched.find(r.id);
                if (group == touched.end()) continue;
                append(effects, takeRows(r, group->second));
            }
        }
        sharePreviews(*this, reviewPrs);
        sharePreviews(*this, yourPrs);
        append(effects, nextComments(*this));
        if (fetchInFlight) return effects;
    } else {
        commentsQueue.reset();
        commentsHost.reset();
    }
    return finishAnswer(std::move(effects));
}

Effects Model::rateWaitOver() {
    if (!rateLimitedUntil) return {};
    rateLimitedUntil.reset();
    if (repos.empty()) return {};
    requeueAll();
    return startNext();
}

bool isBlocked(const PR& pr) {
    return pr.checks == ChecksState::failing || pr.review == ReviewState::changesRequested ||
           pr.conflicts.value_or(false);
}

void orderYours(std::vector<PR>& prs) {
    const auto part = [](const PR& p) { return isBlocked(p) ? 0 : p.checks == ChecksState::running ? 1 : 2; };
    const auto updated = [](const PR& p) -> const std::string& {
        static const std::string none;
        return p.updatedAt ? *p.updatedAt : none;
    };
    // GitHub's times are ISO 8601 in UTC, so their text sorts as the time does.
    std::stable_sort(prs.begin(), prs.end(), [&](const PR& a, const PR& b) {
        if (part(a) != part(b)) return part(a) < part(b);
        if (updated(a) != updated(b)) return updated(a) > updated(b);
        if (a.repo != b.repo) return a.repo < b.repo;
        return a.number > b.number;
    });
}

std::string Model::rateLimitText() const {
    if (!rateLimitedUntil) return {};
    const std::string& at = *rateLimitedUntil;
    // "2026-11-24T09:41:07Z": the hour and minute, in UTC.
    if (at.size() >= 16 && at[10] == 'T' && at[13] == ':')
        return "GitHub's hourly limit is used up; refreshing waits until " + at.substr(11, 5) +
               " UTC";
    return "GitHub's hourly limit is used up; refreshing waits until it resets";
}

std::vector<ListRow> Model::extrasRows() const {
    std::vector<ListRow> rows;
    std::size_t budget = Constants::maxExtrasRows;

    // Every group keeps its heading; pull request rows share one budget, and
    // a group that could not show them all ends with how many more there are.
    const auto group = [&](const Repo& heading, const std::vector<const PR*>& members) {
        rows.push_back(ListRow{heading});
        const std::size_t shown = std::min({members.size(), Constants::maxPrsPerRepo, budget});
        for (std::size_t i = 0; i < shown; ++i) rows.push_back(ListRow{*members[i]});
        budget -= shown;
        if (shown < members.size())
            rows.push_back(ListRow{MoreRow{heading.id, static_cast<std::int64_t>(members.size() - shown)}});
    };

    // The two searches come first, each only when it found something.
    const auto searchGroup = [&](const std::optional<std::vector<PR>>& found, std::int64_t id,
                                 std::string_view name) {
        if (!found || found->empty()) return;
        Repo heading;
        heading.id = id;
        heading.name = std::string(name);
        heading.state = RepoState::ok;
        heading.count = static_cast<std::int64_t>(found->size());
        std::vector<const PR*> members;
        for (const auto& p : *found) members.push_back(&p);
        group(heading, members);
    };
    searchGroup(reviewPrs, reviewGroupId, Constants::reviewGroupName);
    searchGroup(yourPrs, yoursGroupId, Constants::yoursGroupName);

    std::unordered_map<std::int64_t, std::vector<const PR*>> byRepo;
    for (const auto& p : prs) byRepo[p.repoId].push_back(&p);
    for (const auto& r : repos) group(r, byRepo[r.id]);
    return rows;
}

}  // namespace velmar
