// The batched query and its readers. The query text is fixed by the number of
// repositories alone; every slug and the login travel as -f variables, so no
// name can change what is asked. The readers never fail: a value of a type or
// an enumeration they do not know is left out, and a repository they cannot
// read counts as failed on its own.
#include "Graphql.h"

#include <algorithm>

#include "Formats.h"
#include "Json.h"
#include "Text.h"

namespace velmar::Graphql {

Extras parseExtras(std::string_view text) {
    Extras extras;
    for (const std::string& line : Formats::lines(text)) {
        const auto tab = line.find('\t');
        const std::string key = text::trimWhitespace(std::string_view(line).substr(0, tab));
        const std::string value =
            tab == std::string::npos ? std::string()
                                     : text::trimWhitespace(std::string_view(line).substr(tab + 1));
        const bool on = value == "1";
        if (key == "checks") extras.checks = on;
        else if (key == "yours") extras.yours = on;
        else if (key == "notify") extras.notify = on;
        else if (key == "notify_new") extras.notifyNew = on;
        else if (key == "notify_checks") extras.notifyChecks = on;
        else if (key == "notify_review") extras.notifyReview = on;
        else if (key == "tray") extras.tray = on;
    }
    return extras;
}

std::string serializeExtras(const Extras& extras) {
    std::string text = std::string("checks\t") + (extras.checks ? "1" : "0") + "\n";
    if (extras.yours) text += std::string("yours\t") + (*extras.yours ? "1" : "0") + "\n";
    const auto line = [&](std::string_view key, const std::optional<bool>& value) {
        if (value) text.append(key).append("\t").append(*value ? "1" : "0").append("\n");
    };
    line("notify", extras.notify);
    line("notify_new", extras.notifyNew);
    line("notify_checks", extras.notifyChecks);
    line("notify_review", extras.notifyReview);
    line("tray", extras.tray);
    return text;
}

namespace {

// The fields of a pull request row; the same for the watched repositories and
// the review search, so both kinds of row carry the same states.
constexpr std::string_view prFields =
    "fragment P on PullRequest { id number title url headRefName headRefOid isDraft updatedAt "
    "author { login } reviewDecision mergeable statusCheckRollup { state } }";

// Newest first, like `gh pr list`.
constexpr std::string_view repoFields =
    "fragment R on Repository { pullRequests(states: OPEN, first: 50, "
    "orderBy: {field: CREATED_AT, direction: DESC}) { nodes { ...P } } "
    "deployments(last: 30) { nodes { environment state commitOid ref { name } "
    "latestStatus { state environmentUrl } } } }";

std::pair<std::string, std::string> splitSlug(std::string_view slug) {
    if (hostOf(slug)) slug.remove_prefix(slug.find('/') + 1);
    const auto slash = slug.find('/');
    if (slash == std::string_view::npos) return {std::string(slug), std::string()};
    return {std::string(slug.substr(0, slash)), std::string(slug.substr(slash + 1))};
}

const Json* member(const Json& object, const char* key) {
    if (!object.is_object()) return nullptr;
    auto it = object.find(key);
    if (it == object.end() || it->is_null()) return nullptr;
    return &*it;
}

std::string stringAt(const Json& object, const char* key) {
    const Json* v = member(object, key);
    return v && v->is_string() ? v->get<std::string>() : std::string();
}

std::optional<std::int64_t> integerAt(const Json& object, const char* key) {
    const Json* v = member(object, key);
    if (!v || !v->is_number_integer()) return std::nullopt;
    return v->get<std::int64_t>();
}

std::string nestedString(const Json& object, const char* outer, const char* inner) {
    const Json* v = member(object, outer);
    return v ? stringAt(*v, inner) : std::string();
}

std::optional<ChecksState> checksOf(std::string_view s) {
    if (s == "SUCCESS") return ChecksState::passing;
    if (s == "FAILURE" || s == "ERROR") return ChecksState::failing;
    if (s == "PENDING" || s == "EXPECTED") return ChecksState::running;
    return std::nullopt;
}

std::optional<ReviewState> reviewOf(std::string_view s) {
    if (s == "APPROVED") return ReviewState::approved;
    if (s == "CHANGES_REQUESTED") return ReviewState::changesRequested;
    if (s == "REVIEW_REQUIRED") return ReviewState::reviewRequired;
    return std::nullopt;
}

// Deployment and deployment-status states in one table: the status is read
// first, the deployment's own state only when it has none.
std::optional<DeployState> deployOf(std::string_view s) {
    if (s == "SUCCESS" || s == "ACTIVE") return DeployState::ready;
    if (s == "PENDING" || s == "QUEUED" || s == "IN_PROGRESS" || s == "WAITING")
        return DeployState::building;
    if (s == "FAILURE" || s == "ERROR") return DeployState::failed;
    if (s == "INACTIVE" || s == "DESTROYED" || s == "ABANDONED") return DeployState::inactive;
    return std::nullopt;
}

std::optional<PullRequest> readPullRequest(const Json& node) {
    const auto number = integerAt(node, "number");
    if (!number) return std::nullopt;
    PullRequest pr;
    pr.nodeId = stringAt(node, "id");
    pr.number = *number;
    pr.title = stringAt(node, "title");
    pr.author = nestedString(node, "author", "login");
    pr.branch = stringAt(node, "headRefName");
    pr.headOid = stringAt(node, "headRefOid");
    const Json* draft = member(node, "isDraft");
    pr.isDraft = draft && draft->is_boolean() && draft->get<bool>();
    pr.url = text::trimWhitespace(stringAt(node, "url"));
    pr.updatedAt = stringAt(node, "updatedAt");
    pr.checks = checksOf(nestedString(node, "statusCheckRollup", "state"));
    pr.review = reviewOf(stringAt(node, "reviewDecision"));
    pr.conflicts = stringAt(node, "mergeable") == "CONFLICTING";
    pr.repo = nestedString(node, "repository", "nameWithOwner");
    return pr;
}

const Json* nodesOf(const Json& object, const char* connection) {
    const Json* c = member(object, connection);
    const Json* nodes = c ? member(*c, "nodes") : nullptr;
    return nodes && nodes->is_array() ? nodes : nullptr;
}

std::vector<PullRequest> readPullRequests(const Json* nodes) {
    std::vector<PullRequest> prs;
    if (!nodes) return prs;
    for (const Json& node : *nodes)
        if (auto pr = readPullRequest(node)) prs.push_back(std::move(*pr));
    return prs;
}

std::optional<RepoAnswer> readRepo(const Json& repo) {
    if (!repo.is_object()) return std::nullopt;
    RepoAnswer answer;
    answer.prs = readPullRequests(nodesOf(repo, "pullRequests"));
    if (const Json* nodes = nodesOf(repo, "deployments")) {
        for (const Json& node : *nodes) {
            if (!node.is_object()) continue;
            Deployment d;
            d.environment = stringAt(node, "environment");
            d.commitOid = stringAt(node, "commitOid");
            d.ref = nestedString(node, "ref", "name");
            const Json* status = member(node, "latestStatus");
            d.state = deployOf(status ? stringAt(*status, "state") : std::string());
            if (!d.state) d.state = deployOf(stringAt(node, "state"));
            if (status) d.url = text::trimWhitespace(stringAt(*status, "environmentUrl"));
            answer.deployments.push_back(std::move(d));
        }
    }
    return answer;
}

}  // namespace

std::optional<std::string> hostOf(std::string_view slug) {
    const auto first = slug.find('/');
    if (first == std::string_view::npos || first == 0) return std::nullopt;
    const auto second = slug.find('/', first + 1);
    if (second == std::string_view::npos || second == first + 1 || second + 1 == slug.size() ||
        slug.find('/', second + 1) != std::string_view::npos)
        return std::nullopt;
    return std::string(slug.substr(0, first));
}

std::string batchQuery(std::size_t repoCount, bool withReview, bool withYours) {
    std::string variables;
    std::string body;
    for (std::size_t i = 0; i < repoCount; ++i) {
        const std::string n = std::to_string(i);
        if (!variables.empty()) variables += ", ";
        variables += "$o" + n + ": String!, $n" + n + ": String!";
        body += " r" + n + ": repository(owner: $o" + n + ", name: $n" + n + ") { ...R }";
    }
    // Both searches may return any repository's pull requests, so they name it.
    const auto search = [&](const char* alias, const char* variable) {
        if (!variables.empty()) variables += ", ";
        variables += std::string("$") + variable + ": String!";
        body += std::string(" ") + alias + ": search(query: $" + variable +
                ", type: ISSUE, first: 50) { nodes { ... on PullRequest "
                "{ ...P repository { nameWithOwner } } } }";
    };
    if (withReview) search("review", "q");
    if (withYours) search("yours", "a");
    std::string query = "query Batch";
    if (!variables.empty()) query += "(" + variables + ")";
    query += " { viewer { login } rateLimit { limit cost remaining resetAt }" + body + " }";
    // GraphQL refuses a fragment that nothing uses.
    if (repoCount > 0 || withReview || withYours) {
        query += ' ';
        query += prFields;
    }
    if (repoCount > 0) {
        query += ' ';
        query += repoFields;
    }
    return query;
}

std::string reviewSearch(std::string_view login) {
    return "is:pr is:open archived:false review-requested:" + std::string(login);
}

std::string yoursSearch(std::string_view login) {
    return "is:open is:pr author:" + std::string(login);
}

std::vector<std::string> batchArguments(const std::vector<std::string>& repos,
                                        const std::optional<std::string>& viewer, bool withYours) {
    const bool withReview = viewer && !viewer->empty();
    withYours = withYours && withReview;
    std::vector<std::string> args{"api", "graphql", "-f",
                                  "query=" + batchQuery(repos.size(), withReview, withYours)};
    for (std::size_t i = 0; i < repos.size(); ++i) {
        auto [owner, name] = splitSlug(repos[i]);
        args.insert(args.end(), {"-f", "o" + std::to_string(i) + "=" + owner, "-f",
                                 "n" + std::to_string(i) + "=" + name});
    }
    if (withReview) args.insert(args.end(), {"-f", "q=" + reviewSearch(*viewer)});
    if (withYours) args.insert(args.end(), {"-f", "a=" + yoursSearch(*viewer)});
    return args;
}

BatchAnswer parseBatch(std::string_view output, std::size_t repoCount) {
    BatchAnswer answer;
    answer.repos.resize(repoCount);
    const auto parsed = parseJson(output);
    if (!parsed || !parsed->is_object()) return answer;
    const Json& root = *parsed;
    answer.readable = true;

    if (const Json* errors = member(root, "errors"); errors && errors->is_array())
        for (const Json& e : *errors)
            if (stringAt(e, "type") == "RATE_LIMITED") answer.rateLimited = true;

    const Json* data = member(root, "data");
    if (!data || !data->is_object()) return answer;
    if (std::string login = nestedString(*data, "viewer", "login"); !login.empty())
        answer.viewer = std::move(login);
    if (const Json* rate = member(*data, "rateLimit"); rate && rate->is_object()) {
        RateLimit r;
        r.limit = integerAt(*rate, "limit").value_or(0);
        r.cost = integerAt(*rate, "cost").value_or(0);
        r.remaining = integerAt(*rate, "remaining").value_or(0);
        r.resetAt = stringAt(*rate, "resetAt");
        answer.rateLimit = std::move(r);
    }
    // A missing or null alias is that repository's failure; GitHub names it
    // in an error, but the null alone is enough to know.
    for (std::size_t i = 0; i < repoCount; ++i)
        if (const Json* repo = member(*data, ("r" + std::to_string(i)).c_str()))
            answer.repos[i] = readRepo(*repo);
    if (const Json* review = member(*data, "review"))
        answer.review = readPullRequests(member(*review, "nodes"));
    if (const Json* yours = member(*data, "yours"))
        answer.yours = readPullRequests(member(*yours, "nodes"));
    return answer;
}

std::optional<DeploymentMatch> matchDeployment(const std::vector<Deployment>& deployments,
                                               std::string_view headOid, std::string_view branch) {
    // `last: 30` gives the newest last.
    if (!headOid.empty())
        for (auto d = deployments.rbegin(); d != deployments.rend(); ++d)
            if (d->commitOid == headOid) return DeploymentMatch{*d, false};
    if (!branch.empty())
        for (auto d = deployments.rbegin(); d != deployments.rend(); ++d)
            if (d->ref == branch) return DeploymentMatch{*d, true};
    return std::nullopt;
}

std::string commentsQuery(std::size_t idCount) {
    std::string variables;
    std::string body;
    for (std::size_t i = 0; i < idCount; ++i) {
        const std::string n = std::to_string(i);
        if (!variables.empty()) variables += ", ";
        variables += "$i" + n + ": ID!";
        body += " c" + n + ": node(id: $i" + n +
                ") { ... on PullRequest { id comments(first: 100) { nodes { author { login } "
                "body } } } }";
    }
    return "query Comments(" + variables + ") {" + body + " }";
}

std::vector<std::string> commentsArguments(const std::vector<std::string>& ids) {
    std::vector<std::string> args{"api", "graphql", "-f", "query=" + commentsQuery(ids.size())};
    for (std::size_t i = 0; i < ids.size(); ++i)
        args.insert(args.end(), {"-f", "i" + std::to_string(i) + "=" + ids[i]});
    return args;
}

std::map<std::string, std::string> parseComments(std::string_view output) {
    std::map<std::string, std::string> previews;
    const auto parsed = parseJson(output);
    if (!parsed) return previews;
    const Json* data = member(*parsed, "data");
    if (!data || !data->is_object()) return previews;
    for (const auto& [alias, node] : data->items()) {
        const std::string id = stringAt(node, "id");
        if (id.empty()) continue;
        // The deploy bots only; a comment without an author counts as the
        // empty login. The last body holding a link wins.
        std::vector<std::string> bodies;
        if (const Json* nodes = nodesOf(node, "comments")) {
            for (const Json& c : *nodes) {
                const std::string login = nestedString(c, "author", "login");
                if (login.rfind("railway", 0) == 0 || login.rfind("vercel", 0) == 0 ||
                    login.rfind("netlify", 0) == 0)
                    bodies.push_back(stringAt(c, "body"));
            }
        }
        std::string link;
        for (auto body = bodies.rbegin(); body != bodies.rend() && link.empty(); ++body) {
            // Bodies were joined with U+001E before; a body holding one splits.
            const auto pieces = text::splitCharacters(*body, U'\u001E', false);
            for (auto p = pieces.rbegin(); p != pieces.rend(); ++p)
                if (auto found = Formats::previewFromComment(*p)) {
                    link = *found;
                    break;
                }
        }
        previews[id] = std::move(link);
    }
    return previews;
}

}  // namespace velmar::Graphql
