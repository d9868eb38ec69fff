// What the settings screen says about a Model: the gh status labels, the
// section footers and the texts of a watched repository's row and editor.
// Pure functions, so the screen only lays them out.
#pragma once

#include <QString>

#include "Model.h"

namespace velmar::ui::ManageTexts {

/// A status label: "state" is "good", "bad", "checking" or "pending".
struct Status {
    QString state;
    QString text;
    bool operator==(const Status&) const = default;
};

/// "gh installed": checking while unknown, good once gh answers at all.
Status ghInstalled(GhStatus gh);
/// "Signed in to GitHub": pending (a dash) while gh is not installed.
Status ghSignedIn(GhStatus gh);
/// The footer of the GitHub section; it promises re-checks while they run.
QString ghFooter(GhStatus gh);
QString browserFooter(BrowserMode mode);
/// The footer of the general section, shown once the settings are read.
QString autoFooter(bool autoRefresh);

/// The captions under the notifications and tray switches; the tray's says
/// whether a tray was found (`trayFound`).
QString notifyCaption(const Model& model);
QString trayCaption(bool checksOn, bool trayFound);

/// How a repository's pattern line reads: "own" (its typed pattern),
/// "detected" (the learned one, marked) or "none".
QString patternKind(const Repo& repo);
/// The pattern the line shows; "No preview URL" when there is none.
QString patternText(const Repo& repo);
/// The slug with a zero-width space after every "/", so that a narrow row
/// breaks a long slug at its slashes.
QString breakableName(const std::string& name);
/// The editor's placeholder: the learned pattern, else the example.
QString editorPlaceholder(const Repo& repo);
/// The editor's second hint, which depends on whether a pattern was learned.
QString editorHint(const Repo& repo);
/// "Placeholders: {number} {branch} ...".
QString placeholdersLine();

}  // namespace velmar::ui::ManageTexts
