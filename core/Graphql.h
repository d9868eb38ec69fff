// The one batched GitHub query that replaces a process per repository when
// checks are switched on: its command line, the reader of its answer, the
// query for comment bodies by node id, and the extras file. All pure.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Formats.h"
#include "Records.h"

namespace velmar::Graphql {

// ---- The extras file ----

struct Extras {
    bool checks = false;
    /// The viewer's own pull requests; absent while the file has no such
    /// line, which counts as on, so the first "checks" on brings them too.
    std::optional<bool> yours;
    // Absent until first switched; written only when present, so a file
    // that only ever held "checks" stays as it was.
    std::optional<bool> notify;
    std::optional<bool> notifyNew;
    std::optional<bool> notifyChecks;
    std::optional<bool> notifyReview;
    std::optional<bool> tray;
    bool operator==(const Extras&) const = default;
};
/// Keys "checks", "yours", "notify", "notify_new", "notify_checks",
/// "notify_review" and "tray": "1" is on, any other value off; the last line wins.
Extras parseExtras(std::string_view text);
std::string serializeExtras(const Extras& extras);

// ---- The batched query ----

/// The host a slug names: "HOST/OWNER/REPO" (three parts, none empty) is a
/// repository on that host, as gh reads `--repo`; every other slug is on gh's
/// own host (absent).
std::optional<std::string> hostOf(std::string_view slug);

/// The text of the query for `repoCount` repositories (aliases r0, r1, ...),
/// with the search for review requests when `withReview` and the one for the
/// viewer's own open pull requests when `withYours`. Slugs never appear in it:
/// they are the variables o0/n0, o1/n1, ..., q and a.
std::string batchQuery(std::size_t repoCount, bool withReview, bool withYours = false);
/// The search text of the pull requests that wait for `login`'s review.
std::string reviewSearch(std::string_view login);
/// The search text of `login`'s own open pull requests.
std::string yoursSearch(std::string_view login);
/// Arguments after "gh": api graphql, the query and every slug as -f values.
/// Both searches need the viewer's login; without it neither is asked.
/// Every repository of one call is on one host, which is not part of the
/// arguments: gh is pointed at it by its environment (GH_HOST), which also
/// takes a host with a port.
std::vector<std::string> batchArguments(const std::vector<std::string>& repos,
                                        const std::optional<std::string>& viewer,
                                        bool withYours = false);

struct Deployment {
    std::string environment;
    std::string commitOid;
    std::string ref;
    std::optional<DeployState> state;
    std::string url;
    bool operator==(const Deployment&) const = default;
};

/// A pull request as the batched query gives it: the row a plain fetch reads,
/// whose comment link comes later by a query of its own, and what checks add.
struct PullRequest : Formats::PrRow {
    std::string nodeId;
    std::string headOid;
    std::string updatedAt;
    std::optional<ChecksState> checks;
    std::optional<ReviewState> review;
    bool conflicts = false;
    std::string repo;  // nameWithOwner, filled for the searches only
    bool operator==(const PullRequest&) const = default;
};

struct RepoAnswer {
    std::vector<PullRequest> prs;
    std::vector<Deployment> deployments;
    bool operator==(const RepoAnswer&) const = default;
};

struct RateLimit {
    std::int64_t limit = 0;
    std::int64_t cost = 0;
    std::int64_t remaining = 0;
    std::string resetAt;
    bool operator==(const RateLimit&) const = default;
};

struct BatchAnswer {
    /// False when the output is no JSON object at all: nothing in it counts.
    bool readable = false;
    /// One entry per alias; absent when the repository failed.
    std::vector<std::optional<RepoAnswer>> repos;
    std::optional<std::string> viewer;
    std::optional<std::vector<PullRequest>> review;
    std::optional<std::vector<PullRequest>> yours;
    std::optional<RateLimit> rateLimit;
    /// GitHub refused the query for the rate limit.
    bool rateLimited = false;
    bool operator==(const BatchAnswer&) const = default;
};

/// Reads gh's raw JSON, whatever its exit status: a repository whose alias is
/// null or missing failed on its own, the others still count.
BatchAnswer parseBatch(std::string_view output, std::size_t repoCount);

/// The deployment that belongs to a pull request: the newest one of its head
/// commit, else the newest of its branch (`older` true).
struct DeploymentMatch {
    Deployment deployment;
    bool older = false;
    bool operator==(const DeploymentMatch&) const = default;
};
std::optional<DeploymentMatch> matchDeployment(const std::vector<Deployment>& deployments,
                                               std::string_view headOid, std::string_view branch);

// ---- Comment bodies by node id ----

std::string commentsQuery(std::size_t idCount);
std::vector<std::string> commentsArguments(const std::vector<std::string>& ids);
/// For each pull request in the answer, its preview link from the deploy
/// bots' comments (empty when none has one), resolved exactly as the rows of
/// `gh pr list` are.
std::map<std::string, std::string> parseComments(std::string_view output);

}  // namespace velmar::Graphql
