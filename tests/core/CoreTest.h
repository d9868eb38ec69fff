// What the core's tests share: a model ready to fetch, GitHub's batched
// answers built from small pieces, the writes of the stored files, and the
// list's rows in one line.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "Json.h"
#include "Model.h"

namespace velmar::test {

inline const std::string kHome = "/home/u", kPath = "/usr/bin";

/// A file under tests/data, byte for byte.
inline std::string testData(const std::string& path) {
    std::ifstream in(std::string(VELMAR_TEST_DATA) + "/" + path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// Home and path known, the files in, `slugs` watched and queued, nothing
/// fetched yet; checks on unless `checks` is false.
inline Model watching(const std::vector<std::string>& slugs, bool checks = true) {
    Model m;
    m.home = kHome;
    m.path = kPath;
    m.pathResolved = m.reposLoaded = m.settingsLoaded = true;
    if (checks) m.checks = true;
    for (const auto& s : slugs) m.repos.push_back(Repo{m.nextRepoId++, s, "", RepoState::queued, 0, false, ""});
    return m;
}

/// "o/r<from>" up to "o/r<to - 1>".
inline std::vector<std::string> slugs(int from, int to) {
    std::vector<std::string> out;
    for (int i = from; i < to; ++i) out.push_back("o/r" + std::to_string(i));
    return out;
}

/// The write of a stored file under `kHome`.
inline Effect written(ConfigFile file, std::string contents) {
    return effect::WriteFile{file, configPath(file, kHome), std::move(contents)};
}

inline PR row(std::int64_t repoId, std::int64_t number) {
    return PR{.id = prId(repoId, number), .repoId = repoId, .number = number};
}

// ---- GitHub's batched answer ----

/// An open pull request of acme/web as the batched query gives it: by ana,
/// approved, checks passing; `changes` replaces any of its fields.
inline Json prNode(int number, const Json& changes = Json::object()) {
    const std::string n = std::to_string(number);
    Json node{{"id", "PR_" + n},
              {"number", number},
              {"title", "Title " + n},
              {"url", "https://github.com/acme/web/pull/" + n},
              {"headRefName", "feat/" + n},
              {"headRefOid", "a1"},
              {"isDraft", false},
              {"updatedAt", "2026-01-01T00:00:00Z"},
              {"author", {{"login", "ana"}}},
              {"reviewDecision", "APPROVED"},
              {"mergeable", "MERGEABLE"},
              {"statusCheckRollup", {{"state", "SUCCESS"}}}};
    node.update(changes);
    return node;
}

inline Json repoNode(Json prs, Json deployments = Json::array()) {
    return Json{{"pullRequests", {{"nodes", std::move(prs)}}}, {"deployments", {{"nodes", std::move(deployments)}}}};
}

inline Json rate(int remaining = 4990) {
    return Json{{"limit", 5000}, {"cost", 1}, {"remaining", remaining}, {"resetAt", "2026-11-24T09:41:07Z"}};
}

inline std::string answer(Json data, Json errors = nullptr) {
    Json root{{"data", std::move(data)}};
    if (!errors.is_null()) root["errors"] = std::move(errors);
    return root.dump();
}

/// An answer with no pull requests for each of `count` aliases, `failing` null.
inline std::string emptyAnswer(std::size_t count, std::optional<std::size_t> failing = std::nullopt) {
    Json data{{"rateLimit", rate()}};
    for (std::size_t i = 0; i < count; ++i)
        data["r" + std::to_string(i)] = i == failing ? Json(nullptr) : repoNode(Json::array());
    return answer(data);
}

// ---- The list ----

/// The rows as "repo-1:40+5 repo-2:0": each heading with the rows under it,
/// and "+N" for a row that says N more.
inline std::string shape(const std::vector<ListRow>& rows) {
    std::string out;
    int under = -1;
    const auto close = [&] {
        if (under >= 0) out += ":" + std::to_string(under);
    };
    for (const auto& r : rows) {
        if (const auto* more = std::get_if<MoreRow>(&r.item)) {
            out += ":" + std::to_string(under) + "+" + std::to_string(more->more);
            under = -1;
        } else if (r.isHeader()) {
            close();
            out += (out.empty() ? "" : " ") + r.id();
            under = 0;
        } else {
            ++under;
        }
    }
    close();
    return out;
}

}  // namespace velmar::test
