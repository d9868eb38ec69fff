// Every event that enters the core: user actions, timers and the results of
// outside work. Messages say what happened; `update` decides what it means.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "Records.h"

namespace velmar {

namespace msg {
#define VELMAR_EMPTY_MSG(Name) \
    struct Name {              \
        bool operator==(const Name&) const = default; \
    }

VELMAR_EMPTY_MSG(Boot);
struct WindowRestored {
    std::optional<WindowFrame> frame;
    bool operator==(const WindowRestored&) const = default;
};
struct HomeResolved {
    std::string home;
    bool operator==(const HomeResolved&) const = default;
};
struct PathResolved {
    std::string path;
    bool operator==(const PathResolved&) const = default;
};
struct BrowsersDetected {
    std::vector<DetectedBrowser> browsers;
    bool operator==(const BrowsersDetected&) const = default;
};
VELMAR_EMPTY_MSG(BrowsersDetectFailed);
struct FileRead {
    ConfigFile file;
    std::optional<std::string> contents;
    bool operator==(const FileRead&) const = default;
};
struct FileWritten {
    ConfigFile file;
    bool ok = false;
    bool operator==(const FileWritten&) const = default;
};
struct PrsFetched {
    std::string output;
    bool ok = false;
    bool operator==(const PrsFetched&) const = default;
};
VELMAR_EMPTY_MSG(PrsSpawnFailed);
struct SuggestionsFetched {
    SuggestionSource source;
    std::string output;
    bool ok = false;
    bool operator==(const SuggestionsFetched&) const = default;
};
struct GhChecked {
    std::int32_t exit = 0;
    bool operator==(const GhChecked&) const = default;
};
struct BrewProbed {
    bool installed = false;
    bool operator==(const BrewProbed&) const = default;
};
VELMAR_EMPTY_MSG(OpenFailed);
VELMAR_EMPTY_MSG(AutoTick);
VELMAR_EMPTY_MSG(DetectTick);
VELMAR_EMPTY_MSG(OnboardingTick);
VELMAR_EMPTY_MSG(Refresh);
struct SetAuto {
    bool on = false;
    bool operator==(const SetAuto&) const = default;
};
struct SetAppearance {
    Appearance appearance;
    bool operator==(const SetAppearance&) const = default;
};
struct Navigate {
    Screen screen;
    bool operator==(const Navigate&) const = default;
};
struct OpenPr {
    std::int64_t id = 0;
    bool operator==(const OpenPr&) const = default;
};
struct CopyPrLink {
    std::int64_t id = 0;
    bool operator==(const CopyPrLink&) const = default;
};
struct OpenPreview {
    std::int64_t id = 0;
    std::optional<std::int64_t> browser;
    bool operator==(const OpenPreview&) const = default;
};
struct CopyPreview {
    std::int64_t id = 0;
    bool operator==(const CopyPreview&) const = default;
};
struct HoverPr {
    std::int64_t id = 0;
    bool operator==(const HoverPr&) const = default;
};
struct UnhoverPr {
    std::int64_t id = 0;
    bool operator==(const UnhoverPr&) const = default;
};
struct SelectBrowser {
    std::int64_t id = 0;
    bool operator==(const SelectBrowser&) const = default;
};
struct SetBrowserMode {
    BrowserMode mode;
    bool operator==(const SetBrowserMode&) const = default;
};
struct ToggleBrowserShown {
    std::int64_t id = 0;
    bool operator==(const ToggleBrowserShown&) const = default;
};
VELMAR_EMPTY_MSG(OpenAdd);
VELMAR_EMPTY_MSG(CloseAdd);
struct AddText {
    std::string text;
    bool operator==(const AddText&) const = default;
};
VELMAR_EMPTY_MSG(SubmitAdd);
struct PickSuggestion {
    std::string name;
    bool operator==(const PickSuggestion&) const = default;
};
struct EditPattern {
    std::int64_t repoId = 0;  // JSON key "repo_id"
    bool operator==(const EditPattern&) const = default;
};
struct EditText {
    std::string text;
    bool operator==(const EditText&) const = default;
};
VELMAR_EMPTY_MSG(SavePattern);
VELMAR_EMPTY_MSG(CancelEdit);
struct RemoveRepo {
    std::int64_t id = 0;
    bool operator==(const RemoveRepo&) const = default;
};
struct MoveRepo {
    std::int64_t id = 0;
    std::int64_t toIndex = 0;  // JSON key "index"
    bool operator==(const MoveRepo&) const = default;
};
struct CopyRepoName {
    std::int64_t id = 0;
    bool operator==(const CopyRepoName&) const = default;
};
struct OpenRepo {
    std::int64_t id = 0;
    bool operator==(const OpenRepo&) const = default;
};
struct CopyRepoLink {
    std::int64_t id = 0;
    bool operator==(const CopyRepoLink&) const = default;
};
VELMAR_EMPTY_MSG(OnboardingContinue);
VELMAR_EMPTY_MSG(OnboardingSkip);
VELMAR_EMPTY_MSG(OpenInstallPage);
struct CopyCommand {
    std::string command;
    bool operator==(const CopyCommand&) const = default;
};
struct WindowMoved {
    WindowFrame frame;
    bool operator==(const WindowMoved&) const = default;
};

// ---- Checks, reviews and deployments (only while switched on) ----
struct SetChecks {
    bool on = false;
    bool operator==(const SetChecks&) const = default;
};
/// The answer to the batched query; `repos` are the slugs it asked for, in
/// the order of its aliases.
struct BatchFetched {
    std::vector<std::string> repos;
    std::string output;
    bool ok = false;
    /// The HTTP status gh reported when GitHub's server gave up on the query
    /// (502 or 504); absent otherwise.
    std::optional<std::int64_t> http;
    bool operator==(const BatchFetched&) const = default;
};
struct CommentsFetched {
    std::string output;
    bool ok = false;
    bool operator==(const CommentsFetched&) const = default;
};
VELMAR_EMPTY_MSG(RateWaitOver);
struct OpenRepoPulls {
    std::int64_t id = 0;
    bool operator==(const OpenRepoPulls&) const = default;
};
struct SetYours {
    bool on = false;
    bool operator==(const SetYours&) const = default;
};

// ---- Notifications and the tray icon ----
struct SetNotify {
    bool on = false;
    bool operator==(const SetNotify&) const = default;
};
struct SetNotifyKind {
    NotifyKind kind = NotifyKind::newPrs;
    bool on = false;
    bool operator==(const SetNotifyKind&) const = default;
};
struct SetTray {
    bool on = false;
    bool operator==(const SetTray&) const = default;
};
/// The user chose an action ("default", "preview") of a notification.
struct NotificationAction {
    std::string key;
    std::string action;
    bool operator==(const NotificationAction&) const = default;
};
struct NotificationClosed {
    std::string key;
    bool operator==(const NotificationClosed&) const = default;
};

#undef VELMAR_EMPTY_MSG
}  // namespace msg

/// The 49 cases of the plain panel, then those of the extras, in the order in
/// which the decoder tries their names.
using Msg = std::variant<
    msg::Boot, msg::WindowRestored, msg::HomeResolved, msg::PathResolved, msg::BrowsersDetected,
    msg::BrowsersDetectFailed, msg::FileRead, msg::FileWritten, msg::PrsFetched,
    msg::PrsSpawnFailed, msg::SuggestionsFetched, msg::GhChecked, msg::BrewProbed,
    msg::OpenFailed, msg::AutoTick, msg::DetectTick, msg::OnboardingTick, msg::Refresh,
    msg::SetAuto, msg::SetAppearance, msg::Navigate, msg::OpenPr, msg::CopyPrLink,
    msg::OpenPreview, msg::CopyPreview, msg::HoverPr, msg::UnhoverPr, msg::SelectBrowser,
    msg::SetBrowserMode, msg::ToggleBrowserShown, msg::OpenAdd, msg::CloseAdd, msg::AddText,
    msg::SubmitAdd, msg::PickSuggestion, msg::EditPattern, msg::EditText, msg::SavePattern,
    msg::CancelEdit, msg::RemoveRepo, msg::MoveRepo, msg::CopyRepoName, msg::OpenRepo,
    msg::CopyRepoLink, msg::OnboardingContinue, msg::OnboardingSkip, msg::OpenInstallPage,
    msg::CopyCommand, msg::WindowMoved, msg::SetChecks, msg::BatchFetched, msg::CommentsFetched,
    msg::RateWaitOver, msg::OpenRepoPulls, msg::SetYours, msg::SetNotify, msg::SetNotifyKind,
    msg::SetTray, msg::NotificationAction, msg::NotificationClosed>;

static_assert(std::variant_size_v<Msg> == 60);

/// The "msg" text of a case, e.g. "toggle_browser_shown".
std::string_view msgName(const Msg&);

}  // namespace velmar
