// JSON texts of the enumerations, file names and the table of known browsers.
#include "Records.h"

namespace velmar {

namespace {
template <typename E, std::size_t N>
std::optional<E> lookup(const std::array<std::pair<E, std::string_view>, N>& table,
                        std::string_view text) {
    for (const auto& [value, name] : table)
        if (name == text) return value;
    return std::nullopt;
}
template <typename E, std::size_t N>
std::string_view nameOf(const std::array<std::pair<E, std::string_view>, N>& table, E value) {
    for (const auto& [v, name] : table)
        if (v == value) return name;
    return {};
}

constexpr std::array<std::pair<Screen, std::string_view>, 2> screens{
    {{Screen::list, "list"}, {Screen::manage, "manage"}}};
constexpr std::array<std::pair<Appearance, std::string_view>, 3> appearances{
    {{Appearance::dark, "dark"}, {Appearance::light, "light"}, {Appearance::system, "system"}}};
constexpr std::array<std::pair<BrowserMode, std::string_view>, 2> modes{
    {{BrowserMode::open, "open"}, {BrowserMode::manual, "manual"}}};
constexpr std::array<std::pair<GhStatus, std::string_view>, 4> ghStates{
    {{GhStatus::unknown, "unknown"},
     {GhStatus::ok, "ok"},
     {GhStatus::missing, "missing"},
     {GhStatus::loggedOut, "logged_out"}}};
constexpr std::array<std::pair<RepoState, std::string_view>, 3> repoStates{
    {{RepoState::queued, "queued"}, {RepoState::loading, "loading"}, {RepoState::ok, "ok"}}};
constexpr std::array<std::pair<PreviewSource, std::string_view>, 4> previewSources{
    {{PreviewSource::comment, "comment"},
     {PreviewSource::pattern, "pattern"},
     {PreviewSource::detected, "detected"},
     {PreviewSource::deployment, "deployment"}}};
constexpr std::array<std::pair<SuggestionSource, std::string_view>, 2> suggestionSources{
    {{SuggestionSource::owned, "owned"}, {SuggestionSource::shared, "shared"}}};
constexpr std::array<std::pair<ConfigFile, std::string_view>, 5> configFiles{
    {{ConfigFile::repos, "repos"},
     {ConfigFile::browsers, "browsers"},
     {ConfigFile::settings, "settings"},
     {ConfigFile::window, "window"},
     {ConfigFile::extras, "extras"}}};
constexpr std::array<std::pair<ChecksState, std::string_view>, 3> checksStates{
    {{ChecksState::passing, "passing"}, {ChecksState::failing, "failing"}, {ChecksState::running, "running"}}};
constexpr std::array<std::pair<ReviewState, std::string_view>, 3> reviewStates{
    {{ReviewState::approved, "approved"},
     {ReviewState::changesRequested, "changes_requested"},
     {ReviewState::reviewRequired, "review_required"}}};
constexpr std::array<std::pair<DeployState, std::string_view>, 4> deployStates{
    {{DeployState::ready, "ready"},
     {DeployState::building, "building"},
     {DeployState::failed, "failed"},
     {DeployState::inactive, "inactive"}}};
constexpr std::array<std::pair<NotifyKind, std::string_view>, 3> notifyKinds{
    {{NotifyKind::newPrs, "new_prs"}, {NotifyKind::checks, "checks"}, {NotifyKind::review, "review"}}};
}  // namespace

std::string_view jsonText(Screen v) { return nameOf(screens, v); }
std::string_view jsonText(Appearance v) { return nameOf(appearances, v); }
std::string_view jsonText(BrowserMode v) { return nameOf(modes, v); }
std::string_view jsonText(GhStatus v) { return nameOf(ghStates, v); }
std::string_view jsonText(RepoState v) { return nameOf(repoStates, v); }
std::string_view jsonText(PreviewSource v) { return nameOf(previewSources, v); }
std::string_view jsonText(SuggestionSource v) { return nameOf(suggestionSources, v); }
std::string_view jsonText(ConfigFile v) { return nameOf(configFiles, v); }
std::string_view jsonText(ChecksState v) { return nameOf(checksStates, v); }
std::string_view jsonText(ReviewState v) { return nameOf(reviewStates, v); }
std::string_view jsonText(DeployState v) { return nameOf(deployStates, v); }
std::string_view jsonText(NotifyKind v) { return nameOf(notifyKinds, v); }

template <> std::optional<Screen> fromJsonText<Screen>(std::string_view t) { return lookup(screens, t); }
template <> std::optional<Appearance> fromJsonText<Appearance>(std::string_view t) { return lookup(appearances, t); }
template <> std::optional<BrowserMode> fromJsonText<BrowserMode>(std::string_view t) { return lookup(modes, t); }
template <> std::optional<GhStatus> fromJsonText<GhStatus>(std::string_view t) { return lookup(ghStates, t); }
template <> std::optional<RepoState> fromJsonText<RepoState>(std::string_view t) { return lookup(repoStates, t); }
template <> std::optional<PreviewSource> fromJsonText<PreviewSource>(std::string_view t) { return lookup(previewSources, t); }
template <> std::optional<SuggestionSource> fromJsonText<SuggestionSource>(std::string_view t) { return lookup(suggestionSources, t); }
template <> std::optional<ConfigFile> fromJsonText<ConfigFile>(std::string_view t) { return lookup(configFiles, t); }
template <> std::optional<ChecksState> fromJsonText<ChecksState>(std::string_view t) { return lookup(checksStates, t); }
template <> std::optional<ReviewState> fromJsonText<ReviewState>(std::string_view t) { return lookup(reviewStates, t); }
template <> std::optional<DeployState> fromJsonText<DeployState>(std::string_view t) { return lookup(deployStates, t); }
template <> std::optional<NotifyKind> fromJsonText<NotifyKind>(std::string_view t) { return lookup(notifyKinds, t); }

std::string fileName(ConfigFile file) { return std::string(jsonText(file)) + ".tsv"; }

std::string configPath(ConfigFile file, std::string_view home) {
    return std::string(home) + "/.config/velmar/" + fileName(file);
}

}  // namespace velmar
