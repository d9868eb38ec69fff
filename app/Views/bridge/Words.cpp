// The words that depend on the model's values.
#include "Words.h"

namespace velmar::ui::Words {

namespace {

std::string joined(std::initializer_list<std::string_view> parts) {
    std::string out;
    for (std::string_view part : parts) out += part;
    return out;
}

bool installed(GhStatus gh) { return gh == GhStatus::ok || gh == GhStatus::loggedOut; }

constexpr std::string_view needsChecks = "Needs \u201cChecks, reviews and deployments\u201d on.";

}  // namespace

std::string countLabel(std::int64_t count) { return std::to_string(count) + " open"; }

std::string loadingLabel(std::string_view name) { return joined({"Loading ", name}); }

std::string authorTooltip(std::string_view author) { return joined({"by \u2068", author, "\u2069"}); }

std::string previewTooltip(std::optional<PreviewSource> source) {
    if (source == PreviewSource::comment) return "Open preview (link from the PR's deploy comment)";
    if (source == PreviewSource::detected) return "Open preview (detected pattern)";
    if (source == PreviewSource::deployment) return "Open preview (from the deployment)";
    return "Open preview";
}

std::string openPrLabel(std::int64_t number) { return "Open pull request #" + std::to_string(number); }

std::string openPreviewLabel(std::int64_t number) { return "Open preview for #" + std::to_string(number); }

std::string_view checksLabel(std::optional<ChecksState> checks) {
    if (!checks) return {};
    switch (*checks) {
        case ChecksState::passing: return "Checks passing";
        case ChecksState::failing: return "Checks failing";
        case ChecksState::running: return "Checks running";
    }
    return {};
}

std::string_view reviewLabel(std::optional<ReviewState> review) {
    if (!review) return {};
    switch (*review) {
        case ReviewState::approved: return approved;
        case ReviewState::changesRequested: return changesRequested;
        case ReviewState::reviewRequired: return reviewRequired;
    }
    return {};
}

std::string deployLabel(const PR& pr) {
    if (!pr.deploy) return {};
    return joined({"Deployment ", jsonText(*pr.deploy), pr.deployOlder.value_or(false) ? ", older commit" : ""});
}

std::string moreLabel(std::int64_t more) { return std::to_string(more) + " more on GitHub"; }

std::string blockedLabel(std::int64_t blocked) {
    return blocked > 0 ? std::to_string(blocked) + " blocked" : std::string();
}

std::string yoursHeading(std::int64_t open, std::int64_t blocked) {
    std::string text = joined({Constants::yoursGroupName, ", ", countLabel(open)});
    if (blocked > 0) text += ", " + blockedLabel(blocked);
    return text;
}

Status ghInstalled(GhStatus gh) {
    if (gh == GhStatus::unknown) return {"checking", checking};
    if (installed(gh)) return {"good", "Installed"};
    return {"bad", "Not installed"};
}

Status ghSignedIn(GhStatus gh) {
    if (gh == GhStatus::unknown) return {"checking", checking};
    if (gh == GhStatus::ok) return {"good", "Signed in"};
    if (installed(gh)) return {"bad", "Signed out"};
    return {"pending", "\u2014"};
}

std::string ghFooter(GhStatus gh) {
    std::string text = "Velmar reads everything through the GitHub CLI and never asks for a token.";
    if (gh != GhStatus::unknown && gh != GhStatus::ok) text = joined({text, " ", rechecking});
    return text;
}

std::string_view browserFooter(BrowserMode mode) {
    return mode == BrowserMode::manual
               ? "The picker shows the browsers you switch on here."
               : "The picker shows the browsers that are open right now, and updates as they open and close.";
}

std::string_view autoFooter(bool autoRefresh) {
    return autoRefresh ? "Automatically checking for updates every minute." : "Loading updates on demand only.";
}

std::string_view notifyCaption(bool checksOn) {
    return checksOn ? "Only what changed since the last refresh. More than three at once come as one." : needsChecks;
}

std::string_view trayCaption(bool checksOn, bool trayFound) {
    if (!checksOn) return needsChecks;
    if (!trayFound) return "No system tray found. GNOME needs its AppIndicator extension.";
    return "Counts the pull requests waiting for your review. GNOME needs its AppIndicator extension.";
}

std::string editLabel(std::string_view name) { return joined({"Edit ", name}); }

std::string removeTooltip(std::string_view name) { return joined({"Stop watching ", name}); }

std::string suggestionLabel(std::string_view name, bool mine) {
    return joined({"Add ", name, mine ? "" : ", shared"});
}

std::string_view patternText(const Repo& repo) {
    if (!repo.pattern.empty()) return repo.pattern;
    if (!repo.detectedPattern.empty()) return repo.detectedPattern;
    return "No preview URL";
}

std::string_view editorPlaceholder(const Repo& repo) {
    return repo.detectedPattern.empty() ? Constants::examplePattern : std::string_view(repo.detectedPattern);
}

std::string_view editorHint(const Repo& repo) {
    return repo.detectedPattern.empty()
               ? "A link from a PR's own Railway, Vercel or Netlify comment is used first, when it has one."
               : "A link from a PR's own Railway, Vercel or Netlify comment is used first. "
                 "Leave this empty to use the detected pattern for the rest.";
}

std::string placeholdersLine() { return joined({"Placeholders: ", Constants::placeholderHint}); }

}  // namespace velmar::ui::Words
