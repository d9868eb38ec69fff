// Projection of the model onto the rows of the screens' lists.
#include "PanelLists.h"

#include <QString>
#include <QUrl>
#include <QVariantMap>

#include "BrowserIcons.h"
#include "ManageTexts.h"
#include "RepoGroup.h"
#include "Text.h"

namespace velmar::ui::PanelLists {

namespace {

QString q(const std::string& s) { return QString::fromStdString(s); }

// Text written by others (a title, a login) between first-strong isolates:
// any direction marks inside end with it, so a right-to-left override cannot
// turn the rest of the row around.
QString isolated(const std::string& s) {
    return QChar(0x2068) + q(s) + QChar(0x2069);
}

// The values of one row, in the order of `roles`; roles a row does not set
// stay null, so a heading and a pull request can share one list.
DiffListModel::Row makeRow(const QList<QByteArray>& roles, QString key, const QVariantMap& values) {
    DiffListModel::Row row{std::move(key), {}};
    row.values.reserve(roles.size());
    for (const QByteArray& role : roles) row.values.append(values.value(QString::fromLatin1(role)));
    return row;
}

// The image URL of a browser's icon, or empty when it has none.
QString iconSource(BrowserIcons& icons, const std::string& app) {
    return icons.has(app) ? QStringLiteral("image://browser/") + QString::fromLatin1(QUrl::toPercentEncoding(q(app)))
                          : QString();
}

}  // namespace

QList<QByteArray> prRoles() {
    return {"kind",        "repoId",   "groupIndex",     "name",       "spinning",
            "failed",      "count",    "countLabel",     "loadingLabel", "prId",
            "number",      "numberText", "numberTemplate", "title",    "author",
            "authorTooltip", "isDraft", "hovered",       "hasPreview", "previewTooltip",
            "openLabel",   "previewLabel", "groupRows", "rowInGroup",
            // Checks, reviews and deployments; empty while switched off.
            "checks", "checksLabel", "review", "reviewLabel", "conflicts", "deploy", "deployLabel",
            "moreText"};
}

std::vector<DiffListModel::Row> prRows(const Model& model, const std::vector<RepoGroup>& groups) {
    static const QList<QByteArray> roles = prRoles();
    std::vector<DiffListModel::Row> out;
    int groupIndex = 0;
    for (const RepoGroup& group : groups) {
        const Repo& repo = group.repo;
        const QVariant repoId = qint64(repo.id);
        out.push_back(makeRow(roles, q(ListRow{repo}.id()),
                              {{"kind", QStringLiteral("header")},
                               {"repoId", repoId},
                               {"groupIndex", groupIndex},
                               {"name", q(repo.name)},
                               {"spinning", repo.state != RepoState::ok},
                               {"failed", repo.failed},
                               {"count", qint64(repo.count)},
                               {"countLabel", QStringLiteral("%1 open").arg(repo.count)},
                               {"loadingLabel", QStringLiteral("Loading ") + q(repo.name)},
                               {"groupRows", int(group.prs.size())}}));
        const QString numberTemplate = q(group.numberTemplate());
        for (std::size_t k = 0; k < group.prs.size(); ++k) {
            const PR& pr = group.prs[k];
            out.push_back(makeRow(
                roles, q(ListRow{pr}.id()),
                {{"kind", QStringLiteral("pr")},
                 {"repoId", repoId},
                 {"groupIndex", groupIndex},
                 {"prId", qint64(pr.id)},
                 {"number", qint64(pr.number)},
                 {"numberText", QStringLiteral("#%1").arg(pr.number)},
                 {"numberTemplate", numberTemplate},
                 {"title", q(text::trimWhitespaceAndNewlines(pr.title))},
                 {"author", q(pr.author)},
                 {"authorTooltip", QStringLiteral("by ") + isolated(pr.author)},
                 {"isDraft", pr.isDraft},
                 {"hovered", model.hoveredPr == pr.id},
                 {"hasPreview", !pr.preview.empty()},
                 {"previewTooltip", q(previewTooltip(pr.previewSource))},
                 {"openLabel", q(openPrLabel(pr.number))},
                 {"previewLabel", q(openPreviewLabel(pr.number))},
                 {"rowInGroup", int(k)},
                 {"checks", pr.checks ? q(std::string(jsonText(*pr.checks))) : QString()},
                 {"checksLabel", q(checksLabel(pr.checks))},
                 {"review", pr.review ? q(std::string(jsonText(*pr.review))) : QString()},
                 {"reviewLabel", q(reviewLabel(pr.review))},
                 {"conflicts", pr.conflicts.value_or(false)},
                 {"deploy", pr.deploy ? q(std::string(jsonText(*pr.deploy))) : QString()},
                 {"deployLabel", q(deployLabel(pr))}}));
        }
        if (group.more > 0)
            out.push_back(makeRow(roles, q(ListRow{MoreRow{repo.id, group.more}}.id()),
                                  {{"kind", QStringLiteral("more")},
                                   {"repoId", repoId},
                                   {"groupIndex", groupIndex},
                                   {"rowInGroup", int(group.prs.size())},
                                   {"moreText", q(moreLabel(group.more))}}));
        ++groupIndex;
    }
    return out;
}

QList<QByteArray> browserRoles() {
    return {"browserId", "name", "initials", "isDefault", "selected", "iconSource"};
}

std::vector<DiffListModel::Row> browserRows(const Model& model, BrowserIcons& icons) {
    static const QList<QByteArray> roles = browserRoles();
    const Browser* selected = model.selectedBrowserEntry();
    std::vector<DiffListModel::Row> out;
    for (const Browser& b : model.visibleBrowsers()) {
        const QString icon = iconSource(icons, b.app);
        out.push_back(makeRow(roles, QString::number(b.id),
                              {{"browserId", qint64(b.id)},
                               {"name", q(b.name)},
                               {"initials", q(b.initials)},
                               {"isDefault", b.isSystemDefault()},
                               {"selected", selected != nullptr && selected->id == b.id},
                               {"iconSource", icon}}));
    }
    return out;
}

QList<QByteArray> repoRoles() {
    return {"repoId",   "name",          "breakableName",     "patternKind", "patternText",
            "editLabel", "removeTooltip", "editorPlaceholder", "editorHint"};
}

DiffListModel::Row repoRow(const Repo& repo) {
    static const QList<QByteArray> roles = repoRoles();
    const QString name = q(repo.name);
    return makeRow(roles, QString::number(repo.id),
                   {{"repoId", qint64(repo.id)},
                    {"name", name},
                    {"breakableName", ManageTexts::breakableName(repo.name)},
                    {"patternKind", ManageTexts::patternKind(repo)},
                    {"patternText", ManageTexts::patternText(repo)},
                    {"editLabel", QStringLiteral("Edit ") + name},
                    {"removeTooltip", QStringLiteral("Stop watching ") + name},
                    {"editorPlaceholder", ManageTexts::editorPlaceholder(repo)},
                    {"editorHint", ManageTexts::editorHint(repo)}});
}

QList<QByteArray> suggestionRoles() { return {"name", "mine", "label"}; }

std::vector<DiffListModel::Row> suggestionRows(const Model& model) {
    static const QList<QByteArray> roles = suggestionRoles();
    const std::vector<Suggestion> suggestions = model.filteredSuggestions();
    std::vector<DiffListModel::Row> out;
    out.reserve(suggestions.size());
    for (const Suggestion& s : suggestions) {
        const QString name = q(s.name);
        const QString label = QStringLiteral("Add ") + name + (s.mine ? QString() : QStringLiteral(", shared"));
        out.push_back(makeRow(roles, name, {{"name", name}, {"mine", s.mine}, {"label", label}}));
    }
    return out;
}

QList<QByteArray> browserSwitchRoles() {
    return {"browserId", "name", "initials", "isDefault", "iconSource", "shown"};
}

std::vector<DiffListModel::Row> browserSwitchRows(const Model& model, BrowserIcons& icons) {
    static const QList<QByteArray> roles = browserSwitchRoles();
    std::vector<DiffListModel::Row> out;
    out.reserve(model.browsers.size());
    for (const Browser& b : model.browsers) {
        out.push_back(makeRow(roles, QString::number(b.id),
                              {{"browserId", qint64(b.id)},
                               {"name", q(b.name)},
                               {"initials", q(b.initials)},
                               {"isDefault", b.isSystemDefault()},
                               {"iconSource", iconSource(icons, b.app)},
                               {"shown", b.shown}}));
    }
    return out;
}

QVariantList previewMenu(const Model& model) {
    QVariantList items;
    // The menu does not depend on the row it is offered for; each item holds
    // its message, which the row completes with its own "id".
    for (const PreviewMenuItem& item : model.previewMenu()) {
        if (const auto* open = std::get_if<menu::Open>(&item)) {
            QVariantMap message{{"msg", QStringLiteral("open_preview")}};
            if (open->browser) message.insert("browser", qint64(*open->browser));
            items.append(QVariantMap{{"kind", QStringLiteral("open")},
                                     {"title", q(open->title)},
                                     {"message", message}});
        } else if (const auto* copy = std::get_if<menu::Copy>(&item)) {
            items.append(QVariantMap{{"kind", QStringLiteral("copy")},
                                     {"title", q(copy->title)},
                                     {"message", QVariantMap{{"msg", QStringLiteral("copy_preview")}}}});
        } else {
            items.append(QVariantMap{{"kind", QStringLiteral("separator")}});
        }
    }
    return items;
}

}  // namespace velmar::ui::PanelLists
