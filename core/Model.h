// The whole application state and the operations of `update` on it. Every
// operation changes the model in place and returns its effects in order; the
// definitions live in files by subject (Update*, Derived).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "Announce.h"
#include "Effect.h"
#include "Msg.h"
#include "Records.h"

namespace velmar {

/// One entry of a preview menu.
namespace menu {
struct Open {
    std::string title;
    std::optional<std::int64_t> browser;  // absent: the selected browser
    bool operator==(const Open&) const = default;
};
struct Copy {
    std::string title;
    bool operator==(const Copy&) const = default;
};
struct Separator {
    bool operator==(const Separator&) const = default;
};
}  // namespace menu
using PreviewMenuItem = std::variant<menu::Open, menu::Copy, menu::Separator>;

/// The last row of a group whose pull requests did not all fit: how many
/// more there are on GitHub. Listed only while checks are on.
struct MoreRow {
    std::int64_t repoId = 0;
    std::int64_t more = 0;
    bool operator==(const MoreRow&) const = default;
};

/// One row of the pull-request list: a repository header or a pull request.
struct ListRow {
    std::variant<Repo, PR, MoreRow> item;
    bool operator==(const ListRow&) const = default;

    bool isHeader() const { return std::holds_alternative<Repo>(item); }
    /// "repo-<Repo.id>", "pr-<PR.id>" or "more-<Repo.id>".
    std::string id() const;
};

/// The heading of the "Needs your review" group stands on this repository id,
/// which no watched repository has (ids start at 1).
inline constexpr std::int64_t reviewGroupId = 0;
/// The same for the viewer's own pull requests, "Yours".
inline constexpr std::int64_t yoursGroupId = -1;

/// One of the viewer's pull requests waits on its author: its checks failed,
/// a reviewer asked for changes, or it conflicts with its base.
bool isBlocked(const PR& pr);
/// Sorts the viewer's pull requests: the blocked ones, then those whose
/// checks still run, then the rest; each part newest update first. Equal
/// times fall back to the repository, then the higher number, so a refresh
/// that changed nothing never moves a row.
void orderYours(std::vector<PR>& prs);

struct Model {
    Screen screen = Screen::list;
    std::vector<Repo> repos;
    std::vector<PR> prs;
    std::vector<Browser> browsers;
    std::vector<Suggestion> suggestions;
    std::int64_t nextRepoId = 1;
    std::int64_t nextBrowserId = 1;
    std::optional<std::int64_t> selectedBrowser;
    std::optional<std::string> browserPref;
    BrowserMode browserMode = BrowserMode::open;
    bool manualConfigured = false;
    std::vector<std::string> storedShown;
    bool browsersDetected = false;
    bool autoRefresh = false;  // JSON key "auto" (`auto` is a C++ keyword)
    Appearance appearance = Appearance::dark;
    GhStatus gh = GhStatus::unknown;
    std::optional<bool> brewInstalled;
    bool onboarded = false;
    bool settingsLoaded = false;
    bool reposLoaded = false;
    bool browsersLoaded = false;
    bool userNavigated = false;
    std::optional<std::int64_t> hoveredPr;
    bool addOpen = false;
    std::string addText;
    std::optional<std::int64_t> editingRepo;
    std::string editText;
    std::optional<std::string> home;
    std::optional<std::string> path;
    bool pathResolved = false;
    bool fetchInFlight = false;
    std::optional<WindowFrame> lastFrame;
    std::optional<std::string> flash = std::string(Flash::loading);
    // ---- Checks, reviews and deployments. All absent while the extras file
    // is absent, so the model reads exactly as without them. ----
    /// Present (and true) only while switched on.
    std::optional<bool> checks;
    std::optional<std::string> viewer;
    std::optional<std::vector<PR>> reviewPrs;
    /// The "yours" switch as the extras file holds it; absent counts as on.
    std::optional<bool> yours;
    /// The viewer's open pull requests in every repository, in `orderYours`'s order.
    std::optional<std::vector<PR>> yourPrs;
    /// resetAt of GitHub's rate limit while refreshing waits for it.
    std::optional<std::string> rateLimitedUntil;
    std::optional<std::int64_t> batchCount;
    /// Node ids whose comments are still to be asked for, after the query in flight.
    std::optional<std::vector<std::string>> commentsQueue;
    /// The Enterprise host of the ids in `commentsQueue`, when not gh's own.
    std::optional<std::string> commentsHost;
    /// Most repositories in one query, once GitHub gave up on a larger one.
    std::optional<std::int64_t> batchLimit;
    // ---- Notifications and the tray icon: usable while checks are on, and
    // absent until first switched on. ----
    std::optional<bool> notify;
    /// The kinds of notification; all set when notifications are first turned on.
    std::optional<bool> notifyNew;
    std::optional<bool> notifyChecks;
    std::optional<bool> notifyReview;
    std::optional<bool> tray;
    /// What the answers so far showed; absent: the next answer is the baseline.
    std::optional<Seen> seen;
    /// The notifications still up, oldest first.
    std::optional<std::vector<Notice>> notices;

    bool operator==(const Model&) const = default;

    // ---- The step (Update.cpp) ----
    /// Changes the model by the case of `msg`; returns the effects in order.
    Effects apply(const Msg& msg);

    // ---- Persistence and boot (UpdatePersistence.cpp) ----
    Effects fileRead(ConfigFile file, const std::string& contents);
    /// The one way to save: no effect while `home` is unknown.
    Effects write(ConfigFile file, std::string contents) const;
    Effects writeSettings() const;
    Effects finishOnboarding();

    // ---- Fetch queue (UpdateFetch.cpp) ----
    Effects refresh();
    void requeueAll();
    Effects startNext();
    Effects prsFetched(const std::string& output, bool ok);
    Effects prsSpawnFailed();
    /// Learns `repo`'s pattern from the comment links of `rows`, its pull
    /// requests just answered, then resolves their previews by it, so a
    /// pattern learned from one row already serves the others. Gives the
    /// repos file's write when the pattern changed.
    Effects takeRows(Repo& repo, const std::vector<PR*>& rows);
    /// What every answer ends with: the next fetch, and the flash (usually
    /// "Loading...") gone once the last repository is in.
    Effects finishAnswer(Effects effects);

    // ---- Checks, reviews and deployments (UpdateExtras.cpp) ----
    bool checksOn() const { return checks.value_or(false); }
    Effects setChecks(bool on);
    /// "Yours" is asked for: both switches on.
    bool yoursOn() const { return checksOn() && yours.value_or(true); }
    Effects setYours(bool on);
    std::int64_t yoursBlocked() const;
    Effects startBatch();
    Effects batchFetched(const std::vector<std::string>& slugs, const std::string& output,
                         std::optional<std::int64_t> http = std::nullopt);
    Effects commentsFetched(const std::string& output);
    Effects rateWaitOver();
    /// The text after the counts while refreshing waits for the rate limit.
    std::string rateLimitText() const;
    std::vector<ListRow> extrasRows() const;

    // ---- Notifications and the tray icon (UpdateNotify.cpp) ----
    bool notifyOn() const { return checksOn() && notify.value_or(false); }
    bool trayOn() const { return checksOn() && tray.value_or(false); }
    /// The write of the extras file with every switch it holds.
    Effects writeExtras() const;
    Effects setNotify(bool on);
    Effects setNotifyKind(NotifyKind kind, bool on);
    Effects setTray(bool on);
    /// The notifications of one batched answer: `answered` and `failed` are
    /// the slugs it asked for; the rows are already in. Sets the baseline
    /// when there is none.
    Effects announce(const std::vector<std::string>& answered,
                     const std::vector<std::string>& failed, bool reviewListed);
    Effects notificationAction(const std::string& key, const std::string& action);
    void notificationClosed(const std::string& key);
    /// Pull requests waiting for the viewer's review.
    std::int64_t reviewWaiting() const;
    /// The viewer's own pull requests whose checks fail.
    std::int64_t myChecksFailing() const;
    /// What the tray's red mark counts: with the group "Yours" shown, the
    /// viewer's blocked pull requests there (failing checks, changes
    /// requested, conflicts); without it, those of `myChecksFailing`.
    std::int64_t myAttentionCount() const;
    /// The tray icon's tooltip: the waiting reviews and the red mark in words.
    std::string trayTooltip() const;

    // ---- Repositories and suggestions (UpdateRepos.cpp) ----
    Effects addRepo(const std::string& slug);
    Effects removeRepo(std::int64_t id);
    Effects moveRepo(std::int64_t id, std::int64_t toIndex);
    Effects savePattern();
    void mergeSuggestions(SuggestionSource source, const std::vector<std::string>& names);
    /// The write of the repos file with the current list.
    Effects writeRepos() const;

    // ---- Browsers (UpdateBrowsers.cpp) ----
    void browsersDetectedFrom(const std::vector<DetectedBrowser>& list);
    void resolveSelection();
    Effects selectBrowser(std::int64_t id);
    Effects setBrowserMode(BrowserMode mode);
    Effects toggleBrowserShown(std::int64_t id);
    /// The write of the browsers file with the current preferences.
    Effects writeBrowsers() const;

    // ---- Derived views (Derived.cpp); pure functions of the model ----
    bool showsOnboarding() const;
    bool showsGhBanner() const;
    bool isRefreshing() const;
    std::string statusLine() const;
    std::string footerText() const;
    const PR* pr(std::int64_t id) const;
    const Repo* repo(std::int64_t id) const;
    const Browser* browser(std::int64_t id) const;
    std::vector<ListRow> listRows() const;
    std::vector<Browser> visibleBrowsers() const;
    const Browser* selectedBrowserEntry() const;
    std::vector<std::string> shownKeys() const;
    std::vector<PreviewMenuItem> previewMenu() const;
    std::string launcherApp(std::optional<std::int64_t> browserId) const;
    /// The `app` of the selected browser, or empty.
    std::string selectedApp() const;
    bool canSubmitAdd() const;
    std::vector<Suggestion> filteredSuggestions() const;
};

/// A pull request's id: stable across fetches, so hover and menus survive a
/// refresh. Wraps instead of overflowing for a number near the top of the
/// 64-bit range.
std::int64_t prId(std::int64_t repoId, std::int64_t number);

namespace Formats {
struct PrRow;
}
/// `repo`'s pull request as an answer lists it, under `id`; its preview is
/// still to be resolved.
PR answerRow(Formats::PrRow row, const Repo& repo, std::int64_t id);
/// Of the copies of one slug, in the order of the list, the one its answer is
/// for: the copy that is loading, else the first; null when there is none. A
/// hand-edited file may list one name twice, and the copy that is loading
/// would otherwise wait forever.
Repo* answerCopy(const std::vector<Repo*>& copies);

/// The core's single step: copies the model, applies the message to the copy.
std::pair<Model, Effects> update(const Model& model, const Msg& msg);

}  // namespace velmar
