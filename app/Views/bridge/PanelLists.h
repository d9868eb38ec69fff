// The lists the screens show, as rows for DiffListModel: the pull request
// list (headings and rows, with everything each delegate draws or says), the
// browser tiles, and the settings screen's repositories, suggestions and
// browser switches; and the preview menu, which is the same for every row.
#pragma once

#include <QList>
#include <QVariantList>
#include <vector>

#include "DiffListModel.h"
#include "Model.h"

namespace velmar::ui {

class BrowserIcons;
struct RepoGroup;

namespace PanelLists {

/// Roles of the pull request list. Every row has "kind" ("header" or "pr"),
/// "repoId" and "groupIndex" (the group's place in the list, for the divider
/// above every group but the first).
/// Headings: "name", "spinning" (queued or loading), "failed", "count",
/// "countLabel" ("3 open"), "loadingLabel" ("Loading acme/web"), "groupRows"
/// (how many pull request rows follow it).
/// Pull requests: "prId", "number", "numberText" ("#12"), "numberTemplate",
/// "title" (trimmed), "author", "authorTooltip" ("by ana"), "isDraft",
/// "hovered", "hasPreview", "previewTooltip", "openLabel", "previewLabel",
/// "rowInGroup" (0 for the first row under its heading).
QList<QByteArray> prRoles();
/// The rows of `groups`, in their order: the list as a drag previews it.
std::vector<DiffListModel::Row> prRows(const Model& model, const std::vector<RepoGroup>& groups);

/// Roles of the browser tiles: "browserId", "name", "initials", "isDefault"
/// (the system-default entry), "selected", "iconSource" (an image URL, or empty
/// when the tile shows initials or the globe).
QList<QByteArray> browserRoles();
std::vector<DiffListModel::Row> browserRows(const Model& model, BrowserIcons& icons);

/// Roles of the settings screen's repositories, in the order of the watch
/// list: "repoId", "name", "breakableName" (zero-width spaces after the
/// slashes), "patternKind" ("own", "detected", "none"), "patternText",
/// "editLabel" ("Edit acme/web"), "removeTooltip" ("Stop watching acme/web"),
/// "editorPlaceholder", "editorHint".
QList<QByteArray> repoRoles();
/// The row of one watched repository; it depends on its id, name and patterns only.
DiffListModel::Row repoRow(const Repo& repo);

/// Roles of the add popover's suggestions, as the filter leaves them:
/// "name", "mine", "label" ("Add acme/web" or "Add acme/web, shared").
QList<QByteArray> suggestionRoles();
std::vector<DiffListModel::Row> suggestionRows(const Model& model);

/// Roles of the settings screen's browser switches, one per known browser
/// whether offered or not: "browserId", "name", "initials", "isDefault",
/// "iconSource", "shown".
QList<QByteArray> browserSwitchRoles();
std::vector<DiffListModel::Row> browserSwitchRows(const Model& model, BrowserIcons& icons);

/// The preview menu as maps of "kind" ("open", "copy", "separator"),
/// "title" and "message": the message the item sends, less the row's "id".
QVariantList previewMenu(const Model& model);

}  // namespace PanelLists
}  // namespace velmar::ui
