// Every word the screens show or say, in one place: the fixed ones as one
// table, and functions for those that depend on the model's values. Plain
// C++, free of Qt, so they read and test like the core; `PanelWords` hands
// the table to QML.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Model.h"

/// The fixed words, X(name, text). A "%1" is filled by the screen with
/// something that is not a word (a command, set in the fixed-pitch face).
#define VELMAR_WORDS(X)                                                                                          \
    X(appName, "Velmar")                                                                                         \
    X(gh, "gh")                                                                                                  \
    /* The header. */                                                                                            \
    X(refresh, "Refresh")                                                                                        \
    X(settings, "Settings")                                                                                      \
    X(backToPullRequests, "Back to pull requests")                                                               \
    X(autoTitle, "Auto")                                                                                         \
    X(autoTooltip, "Refresh automatically every minute")                                                         \
    /* The list. */                                                                                              \
    X(openLinksIn, "Open links in")                                                                              \
    X(pullRequests, "Pull requests")                                                                             \
    X(openOnGitHub, "Open on GitHub")                                                                            \
    X(copyRepoLink, "Copy Link")                                                                                 \
    X(copyPrLink, "Copy link")                                                                                   \
    X(openPullsOnGitHub, "Open the pull requests on GitHub")                                                     \
    X(failed, "failed")                                                                                          \
    X(draft, "draft")                                                                                            \
    X(draftTooltip, "Draft")                                                                                     \
    X(conflicts, "Conflicts")                                                                                    \
    X(approved, "Approved")                                                                                      \
    X(changesRequested, "Changes requested")                                                                     \
    X(reviewRequired, "Review required")                                                                         \
    X(movesByKeys, "Alt+Up or Alt+Down moves it")                                                                \
    X(noReposWatched, "No repos watched yet.")                                                                   \
    X(emptyListHint, "Add the repositories you care about to see their open pull requests here.")                \
    X(addRepos, "Add repos")                                                                                     \
    /* gh missing or signed out. */                                                                              \
    X(ghMissingTitle, "The GitHub CLI isn't installed")                                                          \
    X(ghSignedOutTitle, "You're signed out of the GitHub CLI")                                                   \
    X(ghMissingDetail, "Velmar reads your pull requests through %1, and has no other way in.")                   \
    X(ghSignedOutDetail, "Run %1 in a terminal, then hit Refresh.")                                              \
    X(installInstructions, "Install instructions")                                                               \
    X(installGuide, "Install guide")                                                                             \
    X(otherWaysToInstall, "Other ways to install")                                                               \
    X(copy, "Copy")                                                                                              \
    X(copyCommand, "Copy command")                                                                               \
    /* The first-run screen. */                                                                                  \
    X(welcome, "Welcome to Velmar")                                                                              \
    X(welcomeDetail, "Velmar shows the open pull requests across the repositories you watch, with one-click "    \
                     "links to each PR and its preview deployment. It reads everything through the GitHub CLI "  \
                     "you already use, and never asks for a token.")                                             \
    X(ghInstalledStep, "The GitHub CLI (%1) is installed")                                                       \
    X(signedInStep, "You're signed in to GitHub")                                                                \
    X(done, "Done")                                                                                              \
    X(notDone, "Not done")                                                                                       \
    X(checking, "Checking...")                                                                                   \
    X(rechecking, "Re-checking every few seconds.")                                                              \
    X(skipForNow, "Skip for now")                                                                                \
    X(continueOn, "Continue")                                                                                    \
    /* The settings screen. */                                                                                   \
    X(githubCli, "GitHub CLI")                                                                                   \
    X(ghInstalledRow, "%1 installed")                                                                            \
    X(signedInToGitHub, "Signed in to GitHub")                                                                   \
    X(repositories, "Repositories")                                                                              \
    X(addARepo, "Add a repo")                                                                                    \
    X(nothingWatched, "Nothing watched yet.")                                                                    \
    X(detected, "Detected")                                                                                      \
    X(detectedTooltip, "Learned from deploy-bot comments (Railway, Netlify) on this repo's PRs")                 \
    X(editPreviewUrl, "Edit preview URL")                                                                        \
    X(editPreviewUrlMenu, "Edit Preview URL\u2026")                                                              \
    X(copyName, "Copy Name")                                                                                     \
    X(remove, "Remove")                                                                                          \
    X(previewUrl, "Preview URL")                                                                                 \
    X(previewUrlPattern, "Preview URL pattern")                                                                  \
    X(cancel, "Cancel")                                                                                          \
    X(save, "Save")                                                                                              \
    X(repositorySlug, "Repository slug")                                                                         \
    X(slugPlaceholder, "owner/repo")                                                                             \
    X(add, "Add")                                                                                                \
    X(suggestionsIntro, "Yours, plus repos you have access to (type above to filter):")                          \
    X(suggestions, "Suggestions")                                                                                \
    X(noMatchingRepos, "No matching repos.")                                                                     \
    X(shared, "shared")                                                                                          \
    X(browsers, "Browsers")                                                                                      \
    X(showInPicker, "Show in picker")                                                                            \
    X(openBrowsers, "Open Browsers")                                                                             \
    X(chosenBrowsers, "Chosen Browsers")                                                                         \
    X(general, "General")                                                                                        \
    X(appearance, "Appearance")                                                                                  \
    X(dark, "Dark")                                                                                              \
    X(light, "Light")                                                                                            \
    X(refreshAutomatically, "Refresh automatically")                                                             \
    X(extras, "Extras")                                                                                          \
    X(extrasFooter, "One GitHub query a minute for all repositories. Shows CI, review and deployment state, "   \
                    "the pull requests waiting for your review, and your own.")                                  \
    X(checksSwitch, "Checks, reviews and deployments")                                                           \
    X(showMyPrs, "Show my pull requests")                                                                        \
    X(yoursNeedsChecks, "Needs checks, reviews and deployments")                                                 \
    X(notifications, "Notifications")                                                                            \
    X(notifyNewPrs, "New pull requests")                                                                         \
    X(notifyChecks, "Checks finished on my pull requests")                                                       \
    X(notifyReview, "Review requested from me")                                                                  \
    X(trayIcon, "Icon in the system tray")

namespace velmar::ui::Words {

#define VELMAR_WORD_CONSTANT(name, text) inline constexpr std::string_view name = text;
VELMAR_WORDS(VELMAR_WORD_CONSTANT)
#undef VELMAR_WORD_CONSTANT

// ---- The list ----

/// "3 open" and "Loading acme/web", what a heading's count and spinner say.
std::string countLabel(std::int64_t count);
std::string loadingLabel(std::string_view name);
/// "by ana", the author isolated, so that direction marks in it end with it.
std::string authorTooltip(std::string_view author);
/// The preview button's tooltip for where the link came from.
std::string previewTooltip(std::optional<PreviewSource> source);
/// "Open pull request #12" and "Open preview for #12".
std::string openPrLabel(std::int64_t number);
std::string openPreviewLabel(std::int64_t number);
/// Texts of the checks, review and deployment markers; empty when absent.
std::string_view checksLabel(std::optional<ChecksState> checks);
std::string_view reviewLabel(std::optional<ReviewState> review);
/// "Deployment ready", with ", older commit" when matched by branch only.
std::string deployLabel(const PR& pr);
/// "3 more on GitHub".
std::string moreLabel(std::int64_t more);
/// "2 blocked", empty for none.
std::string blockedLabel(std::int64_t blocked);
/// What the screen reader says for the "Yours" heading: "Yours, 5 open, 2 blocked".
std::string yoursHeading(std::int64_t open, std::int64_t blocked);

// ---- The settings screen ----

/// A gh status label: `state` is "good", "bad", "checking" or "pending".
struct Status {
    std::string_view state;
    std::string_view text;
    bool operator==(const Status&) const = default;
};
/// "gh installed": checking while unknown, good once gh answers at all.
Status ghInstalled(GhStatus gh);
/// "Signed in to GitHub": pending (a dash) while gh is not installed.
Status ghSignedIn(GhStatus gh);
/// The footer of the GitHub section; it promises re-checks while they run.
std::string ghFooter(GhStatus gh);
std::string_view browserFooter(BrowserMode mode);
/// The footer of the general section, shown once the settings are read.
std::string_view autoFooter(bool autoRefresh);
/// The captions under the notifications and tray switches; the tray's says
/// whether a tray was found.
std::string_view notifyCaption(bool checksOn);
std::string_view trayCaption(bool checksOn, bool trayFound);

/// "Edit acme/web" and "Stop watching acme/web", a watched repository's.
std::string editLabel(std::string_view name);
std::string removeTooltip(std::string_view name);
/// "Add acme/web", with ", shared" for a repository the user does not own.
std::string suggestionLabel(std::string_view name, bool mine);
/// The pattern a repository's line shows; "No preview URL" when there is none.
std::string_view patternText(const Repo& repo);
/// The editor's placeholder: the learned pattern, else the example.
std::string_view editorPlaceholder(const Repo& repo);
/// The editor's second hint, which depends on whether a pattern was learned.
std::string_view editorHint(const Repo& repo);
/// "Placeholders: {number} {branch} ...".
std::string placeholdersLine();

}  // namespace velmar::ui::Words
