// The lists the screens show, as rows for DiffListModel: the pull request
// list (headings and rows, with everything each delegate draws or says) and
// the browser tiles; and the preview menu, which is the same for every row.
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
std::vector<DiffListModel::Row> prRows(const Model& model);
/// The rows of `groups`, in their order: the list as a drag previews it.
std::vector<DiffListModel::Row> prRows(const Model& model, const std::vector<RepoGroup>& groups);

/// Roles of the browser tiles: "browserId", "name", "initials", "isDefault"
/// (the system-default entry), "selected", "iconSource" (an image URL, or empty
/// when the tile shows initials or the globe).
QList<QByteArray> browserRoles();
std::vector<DiffListModel::Row> browserRows(const Model& model, BrowserIcons& icons);

/// The preview menu as maps of "kind" ("open", "copy", "separator"),
/// "title" and "message": the message the item sends, less the row's "id".
QVariantList previewMenu(const Model& model);

}  // namespace PanelLists
}  // namespace velmar::ui
