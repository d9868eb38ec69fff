// The lists the screens show, as rows for DiffListModel: the pull request
// list (headings and rows, with everything each delegate draws or says), the
// browser tiles, and the settings screen's repositories, suggestions and
// browser switches; and the preview menu, which is the same for every row.
#pragma once

#include <QList>
#include <QVariantList>
#include <vector>

#include "DiffListModel.h"
#include "Roles.h"
#include "Model.h"

namespace velmar::ui {

class BrowserIcons;

namespace PanelLists {

/// Roles of the pull request list. Every row has `kind` ("header", "pr" or
/// "more"), `repoId` and `groupIndex` (the group's place in the list, for the
/// divider above every group but the first).
/// Headings: `name`, `spinning` (queued or loading), `failed`, `count`,
/// `countLabel` ("3 open"), `loadingLabel` ("Loading acme/web"), `groupRows`
/// (how many pull request rows follow it).
/// Pull requests: `prId`, `number`, `numberText` ("#12"), `numberTemplate`,
/// `title` (trimmed), `author`, `authorTooltip` ("by ana"), `isDraft`,
/// `hovered`, `hasPreview`, `previewTooltip`, `openLabel`, `previewLabel`,
/// `rowInGroup` (0 for the first row under its heading), and the checks,
/// review and deployment markers, empty while those are switched off.
/// The row that ends a capped group: `rowInGroup`, `moreText`.
/// "Yours" only: the heading's `blocked` count, `blockedLabel` ("2 blocked") and
/// `headingLabel` (what it reads as: "Yours, 5 open, 2 blocked"; a repository's
/// name elsewhere), and each row's `repoLabel` ("owner/repo"), since the group
/// mixes repositories.
#define VELMAR_PR_ROLES(X)                                                                   \
    X(kind) X(repoId) X(groupIndex) X(name) X(spinning) X(failed) X(count) X(countLabel)     \
    X(loadingLabel) X(prId) X(number) X(numberText) X(numberTemplate) X(title) X(author)    \
    X(authorTooltip) X(isDraft) X(hovered) X(hasPreview) X(previewTooltip) X(openLabel)     \
    X(previewLabel) X(groupRows) X(rowInGroup) X(checks) X(checksLabel) X(review)           \
    X(reviewLabel) X(conflicts) X(deploy) X(deployLabel) X(moreText) X(blocked)             \
    X(blockedLabel) X(headingLabel) X(repoLabel)
VELMAR_ROLE_TABLE(PrRole, PrRoles, VELMAR_PR_ROLES)
/// The rows of the list `rows` (Model::listRows), in one walk: a heading
/// opens a group, and its pull requests and "more" row follow it.
std::vector<DiffListModel::Row> prRows(const Model& model, const std::vector<ListRow>& rows);

/// Roles of the browser tiles: `isDefault` marks the system-default entry;
/// `iconSource` is an image URL, or empty when the tile shows initials or the globe.
#define VELMAR_BROWSER_ROLES(X) X(browserId) X(name) X(initials) X(isDefault) X(selected) X(iconSource)
VELMAR_ROLE_TABLE(BrowserRole, BrowserRoles, VELMAR_BROWSER_ROLES)
std::vector<DiffListModel::Row> browserRows(const Model& model, BrowserIcons& icons);

/// Roles of the settings screen's repositories, in the order of the watch
/// list: `breakableName` has zero-width spaces after the slashes,
/// `patternKind` is "own", "detected" or "none", `editLabel` "Edit acme/web",
/// `removeTooltip` "Stop watching acme/web".
#define VELMAR_REPO_ROLES(X)                                                              \
    X(repoId) X(name) X(breakableName) X(patternKind) X(patternText) X(editLabel)         \
    X(removeTooltip) X(editorPlaceholder) X(editorHint)
VELMAR_ROLE_TABLE(RepoRole, RepoRoles, VELMAR_REPO_ROLES)
/// The row of one watched repository; it depends on its id, name and patterns only.
DiffListModel::Row repoRow(const Repo& repo);

/// Roles of the add popover's suggestions, as the filter leaves them: `label`
/// is "Add acme/web" or "Add acme/web, shared".
#define VELMAR_SUGGESTION_ROLES(X) X(name) X(mine) X(label)
VELMAR_ROLE_TABLE(SuggestionRole, SuggestionRoles, VELMAR_SUGGESTION_ROLES)
std::vector<DiffListModel::Row> suggestionRows(const Model& model);

/// Roles of the settings screen's browser switches, one per known browser
/// whether offered or not.
#define VELMAR_BROWSER_SWITCH_ROLES(X) X(browserId) X(name) X(initials) X(isDefault) X(iconSource) X(shown)
VELMAR_ROLE_TABLE(BrowserSwitchRole, BrowserSwitchRoles, VELMAR_BROWSER_SWITCH_ROLES)
std::vector<DiffListModel::Row> browserSwitchRows(const Model& model, BrowserIcons& icons);

/// The preview menu as maps of "kind" ("open", "copy", "separator"),
/// "title" and "message": the message the item sends, less the row's "id".
QVariantList previewMenu(const Model& model);

}  // namespace PanelLists
}  // namespace velmar::ui
