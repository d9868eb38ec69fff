// The vocabulary of the core: value records, enumerations and the two tables
// of fixed values. Everything here is a plain value with whole-value equality.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmar {

enum class Screen { list, manage };
enum class Appearance { dark, light, system };
enum class BrowserMode { open, manual };
enum class GhStatus { unknown, ok, missing, loggedOut };
enum class RepoState { queued, loading, ok };
enum class PreviewSource { comment, pattern, detected, deployment };
enum class SuggestionSource { owned, shared };
enum class ConfigFile { repos, browsers, settings, window, extras };
/// The state of a head commit's checks, as one marker before the title.
enum class ChecksState { passing, failing, running };
/// The pull request's review decision.
enum class ReviewState { approved, changesRequested, reviewRequired };
/// The state of the deployment that belongs to a pull request.
enum class DeployState { ready, building, failed, inactive };
/// What a desktop notification may be about; each has a switch of its own.
enum class NotifyKind { newPrs, checks, review };

inline constexpr std::array<Appearance, 3> allAppearances{Appearance::dark, Appearance::light,
                                                          Appearance::system};
inline constexpr std::array<ConfigFile, 4> allConfigFiles{ConfigFile::repos, ConfigFile::browsers,
                                                          ConfigFile::settings, ConfigFile::window};

/// The JSON text of each case ("logged_out" for GhStatus::loggedOut).
std::string_view jsonText(Screen);
std::string_view jsonText(Appearance);
std::string_view jsonText(BrowserMode);
std::string_view jsonText(GhStatus);
std::string_view jsonText(RepoState);
std::string_view jsonText(PreviewSource);
std::string_view jsonText(SuggestionSource);
std::string_view jsonText(ConfigFile);
std::string_view jsonText(ChecksState);
std::string_view jsonText(ReviewState);
std::string_view jsonText(DeployState);
std::string_view jsonText(NotifyKind);

/// Reverse of jsonText; absent for any other text (exact, case-sensitive).
template <typename E> std::optional<E> fromJsonText(std::string_view text);

/// "repos.tsv" and so on.
std::string fileName(ConfigFile);
/// home + "/.config/velmar/" + fileName, joined with no normalisation.
std::string configPath(ConfigFile, std::string_view home);

struct WindowFrame {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    bool operator==(const WindowFrame&) const = default;

    static constexpr double defaultWidth = 620;
    static constexpr double defaultHeight = 760;
    static constexpr double minimumWidth = 200;
    static constexpr double minimumHeight = 320;
};

struct Repo {
    std::int64_t id = 0;
    std::string name;
    std::string pattern;
    RepoState state = RepoState::queued;
    std::int64_t count = 0;
    bool failed = false;
    std::string detectedPattern;
    bool operator==(const Repo&) const = default;

    struct ResolvedPreview {
        std::string url;
        std::optional<PreviewSource> source;
        bool operator==(const ResolvedPreview&) const = default;
    };
    /// Comment link first, then the typed pattern, then the learned one.
    /// A deployment's own address comes after the bot's comment.
    ResolvedPreview resolvePreview(std::int64_t number, std::string_view branch,
                                   std::string_view comment,
                                   std::string_view deployment = {}) const;
};

struct PR {
    std::int64_t id = 0;
    std::int64_t repoId = 0;
    std::string repo;
    std::int64_t number = 0;
    std::string title;
    std::string author;
    std::string branch;
    bool isDraft = false;
    std::string url;
    std::string preview;
    std::optional<PreviewSource> previewSource;
    std::string commentPreview;
    // Known only while checks are switched on; absent otherwise, so the
    // record reads exactly as before when they are off.
    std::optional<ChecksState> checks;
    std::optional<ReviewState> review;
    std::optional<bool> conflicts;
    std::optional<DeployState> deploy;
    /// The deployment was matched by branch, not by the head commit.
    std::optional<bool> deployOlder;
    std::optional<std::string> deployUrl;
    std::optional<std::string> nodeId;
    std::optional<std::string> headOid;
    std::optional<std::string> updatedAt;
    bool operator==(const PR&) const = default;

    /// Sets `preview` and `previewSource` by `repo`'s rules from the number,
    /// branch and comment link.
    void resolvePreview(const Repo& repo);
};

struct Browser {
    std::int64_t id = 0;
    std::string name;
    std::string app;  // empty: the system default handler
    std::string initials;
    bool running = false;
    bool shown = false;
    bool operator==(const Browser&) const = default;

    static constexpr std::string_view defaultKey = "@default";
    static constexpr std::string_view systemDefaultName = "System default";

    /// The stored name: `app`, or "@default" for the system-default entry.
    std::string key() const { return app.empty() ? std::string(defaultKey) : app; }
    bool isSystemDefault() const { return app.empty(); }
    /// Whether the picker offers it: running ones in `open`, ticked ones in `manual`.
    bool offeredIn(BrowserMode mode) const { return mode == BrowserMode::open ? running : shown; }
};

struct DetectedBrowser {
    std::string app;
    bool running = false;
    bool operator==(const DetectedBrowser&) const = default;
};

struct Suggestion {
    std::string name;
    bool mine = false;
    bool operator==(const Suggestion&) const = default;
};

namespace Constants {
inline constexpr std::size_t slugCapacity = 256;
inline constexpr std::size_t patternCapacity = 2048;
inline constexpr std::size_t maxRows = 50;
inline constexpr std::size_t maxPrsPerRepo = 40;
inline constexpr std::size_t maxSuggestionsPerSource = 40;
inline constexpr std::size_t maxMenuBrowsers = 5;
inline constexpr std::string_view examplePattern = "https://myapp-pr-{number}.example.com";
inline constexpr std::string_view placeholderHint = "{number} {branch} {owner} {name} {repo}";
inline constexpr std::string_view ghInstallURL = "https://cli.github.com/";
inline constexpr std::string_view ghLoginCommand = "gh auth login";
inline constexpr std::string_view brewInstallCommand = "brew install gh";
inline constexpr double autoRefreshInterval = 60.0;
inline constexpr double browserPollInterval = 5.0;
inline constexpr double onboardingInterval = 3.0;
/// Base web address of the GitHub site; a slug appended gives a repository page.
inline constexpr std::string_view repoWebBase = "https://github.com/";
/// With checks on: pull request rows listed across all groups, and the rows
/// of one query per repository.
inline constexpr std::size_t maxExtrasRows = 50;
inline constexpr std::size_t prsPerQuery = 50;
/// Every this many refreshes the comments of all pull requests are asked
/// for again, so a comment on an otherwise unchanged pull request shows up.
inline constexpr std::int64_t fullCommentsEvery = 10;
/// At most this many node ids in one query for comments.
inline constexpr std::size_t maxNodesPerQuery = 100;
/// Repositories in one batched query once GitHub gave up on a larger one
/// (HTTP 502 or 504).
inline constexpr std::size_t reposPerSplitQuery = 10;
inline constexpr std::string_view reviewGroupName = "Needs your review";
inline constexpr std::string_view yoursGroupName = "Yours";
}  // namespace Constants

namespace Flash {
inline constexpr std::string_view loading = "Loading...";
inline constexpr std::string_view noRepos = "No repos yet";
inline constexpr std::string_view enterSlug = "Enter an owner/repo slug";
inline constexpr std::string_view copiedLink = "Copied link to clipboard";
inline constexpr std::string_view copiedCommand = "Copied command to clipboard";
inline constexpr std::string_view copiedRepoName = "Copied repo name to clipboard";
inline constexpr std::string_view couldNotOpen = "Could not open link";
inline constexpr std::string_view couldNotSaveRepos = "Could not save watch list";
inline constexpr std::string_view couldNotSaveBrowsers = "Could not save browser settings";
inline constexpr std::string_view couldNotSaveSettings = "Could not save settings";
inline constexpr std::string_view couldNotSaveExtras = "Could not save extras";
}  // namespace Flash

}  // namespace velmar
