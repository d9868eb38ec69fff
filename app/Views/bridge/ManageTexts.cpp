// The settings screen's words for each state of the model.
#include "ManageTexts.h"

namespace velmar::ui::ManageTexts {

namespace {

QString q(std::string_view s) { return QString::fromUtf8(s.data(), qsizetype(s.size())); }
bool installed(GhStatus gh) { return gh == GhStatus::ok || gh == GhStatus::loggedOut; }
const QString checking = QStringLiteral("checking");

}  // namespace

Status ghInstalled(GhStatus gh) {
    if (gh == GhStatus::unknown) return {checking, QStringLiteral("Checking...")};
    if (installed(gh)) return {QStringLiteral("good"), QStringLiteral("Installed")};
    return {QStringLiteral("bad"), QStringLiteral("Not installed")};
}

Status ghSignedIn(GhStatus gh) {
    if (gh == GhStatus::unknown) return {checking, QStringLiteral("Checking...")};
    if (gh == GhStatus::ok) return {QStringLiteral("good"), QStringLiteral("Signed in")};
    if (installed(gh)) return {QStringLiteral("bad"), QStringLiteral("Signed out")};
    return {QStringLiteral("pending"), QStringLiteral("\u2014")};
}

QString ghFooter(GhStatus gh) {
    QString text = QStringLiteral("Velmar reads everything through the GitHub CLI and never asks for a token.");
    if (gh != GhStatus::unknown && gh != GhStatus::ok) text += QStringLiteral(" Re-checking every few seconds.");
    return text;
}

QString browserFooter(BrowserMode mode) {
    return mode == BrowserMode::manual
               ? QStringLiteral("The picker shows the browsers you switch on here.")
               : QStringLiteral("The picker shows the browsers that are open right now, and updates as "
                                "they open and close.");
}

QString autoFooter(bool autoRefresh) {
    return autoRefresh ? QStringLiteral("Automatically checking for updates every minute.")
                       : QStringLiteral("Loading updates on demand only.");
}

namespace {
const QString needsChecks = QStringLiteral("Needs \u201cChecks, reviews and deployments\u201d on.");
}  // namespace

QString notifyCaption(const Model& model) {
    if (!model.checksOn()) return needsChecks;
    return QStringLiteral("Only what changed since the last refresh. More than three at once come as one.");
}

QString trayCaption(bool checksOn, bool trayFound) {
    if (!checksOn) return needsChecks;
    if (!trayFound) return QStringLiteral("No system tray found. GNOME needs its AppIndicator extension.");
    return QStringLiteral("Counts the pull requests waiting for your review. GNOME needs its AppIndicator extension.");
}

QString patternKind(const Repo& repo) {
    if (!repo.pattern.empty()) return QStringLiteral("own");
    if (!repo.detectedPattern.empty()) return QStringLiteral("detected");
    return QStringLiteral("none");
}

QString patternText(const Repo& repo) {
    if (!repo.pattern.empty()) return q(repo.pattern);
    if (!repo.detectedPattern.empty()) return q(repo.detectedPattern);
    return QStringLiteral("No preview URL");
}

QString breakableName(const std::string& name) {
    QString out = q(name);
    out.replace(QLatin1Char('/'), QStringLiteral("/\u200B"));
    return out;
}

QString editorPlaceholder(const Repo& repo) {
    return repo.detectedPattern.empty() ? q(Constants::examplePattern) : q(repo.detectedPattern);
}

QString editorHint(const Repo& repo) {
    return repo.detectedPattern.empty()
               ? QStringLiteral("A link from a PR's own Railway, Vercel or Netlify comment is used first, "
                                "when it has one.")
               : QStringLiteral("A link from a PR's own Railway, Vercel or Netlify comment is used first. "
                                "Leave this empty to use the detected pattern for the rest.");
}

QString placeholdersLine() { return QStringLiteral("Placeholders: ") + q(Constants::placeholderHint); }

}  // namespace velmar::ui::ManageTexts
