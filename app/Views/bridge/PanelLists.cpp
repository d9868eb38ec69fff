// Projection of the model onto the rows of the screens' lists.
#include "PanelLists.h"

#include <QString>
#include <QUrl>
#include <QVariantMap>

#include <variant>

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

// Lambdas as one visitor, one per alternative of a variant.
template <class... Cases>
struct overloaded : Cases... {
    using Cases::operator()...;
};

// The image URL of a browser's icon, or empty when it has none.
QString iconSource(BrowserIcons& icons, const std::string& app) {
    return icons.has(app) ? QStringLiteral("image://browser/") + QString::fromLatin1(QUrl::toPercentEncoding(q(app)))
                          : QString();
}

}  // namespace

std::vector<DiffListModel::Row> prRows(const Model& model, const std::vector<RepoGroup>& groups) {
    std::vector<DiffListModel::Row> out;
    int groupIndex = 0;
    for (const RepoGroup& group : groups) {
        const Repo& repo = group.repo;
        const QVariant repoId = qint64(repo.id);
        const bool yours = repo.id == yoursGroupId;
        const std::int64_t blocked = yours ? model.yoursBlocked() : 0;
        out.push_back(makeRow<PrRoles>(q(ListRow{repo}.id()),
                              {{PrRole::kind, QStringLiteral("header")},
                               {PrRole::repoId, repoId},
                               {PrRole::groupIndex, groupIndex},
                               {PrRole::name, q(repo.name)},
                               {PrRole::spinning, repo.state != RepoState::ok},
                               {PrRole::failed, repo.failed},
                               {PrRole::count, qint64(repo.count)},
                               {PrRole::countLabel, QStringLiteral("%1 open").arg(repo.count)},
                               {PrRole::loadingLabel, QStringLiteral("Loading ") + q(repo.name)},
                               {PrRole::groupRows, int(group.prs.size())},
                               {PrRole::blocked, qint64(blocked)},
                               {PrRole::blockedLabel, q(blockedLabel(blocked))},
                               {PrRole::headingLabel, q(yours ? yoursHeading(repo.count, blocked) : repo.name)}}));
        const QString numberTemplate = q(group.numberTemplate());
        for (std::size_t k = 0; k < group.prs.size(); ++k) {
            const PR& pr = group.prs[k];
            out.push_back(makeRow<PrRoles>(q(ListRow{pr}.id()),
                {{PrRole::kind, QStringLiteral("pr")},
                 {PrRole::repoId, repoId},
                 {PrRole::groupIndex, groupIndex},
                 {PrRole::prId, qint64(pr.id)},
                 {PrRole::number, qint64(pr.number)},
                 {PrRole::numberText, QStringLiteral("#%1").arg(pr.number)},
                 {PrRole::numberTemplate, numberTemplate},
                 {PrRole::title, q(text::trimWhitespaceAndNewlines(pr.title))},
                 {PrRole::author, q(pr.author)},
                 {PrRole::authorTooltip, QStringLiteral("by ") + isolated(pr.author)},
                 {PrRole::isDraft, pr.isDraft},
                 {PrRole::hovered, model.hoveredPr == pr.id},
                 {PrRole::hasPreview, !pr.preview.empty()},
                 {PrRole::previewTooltip, q(previewTooltip(pr.previewSource))},
                 {PrRole::openLabel, q(openPrLabel(pr.number))},
                 {PrRole::previewLabel, q(openPreviewLabel(pr.number))},
                 {PrRole::rowInGroup, int(k)},
                 {PrRole::checks, pr.checks ? q(std::string(jsonText(*pr.checks))) : QString()},
                 {PrRole::checksLabel, q(checksLabel(pr.checks))},
                 {PrRole::review, pr.review ? q(std::string(jsonText(*pr.review))) : QString()},
                 {PrRole::reviewLabel, q(reviewLabel(pr.review))},
                 {PrRole::conflicts, pr.conflicts.value_or(false)},
                 {PrRole::deploy, pr.deploy ? q(std::string(jsonText(*pr.deploy))) : QString()},
                 {PrRole::deployLabel, q(deployLabel(pr))},
                 {PrRole::repoLabel, yours ? q(pr.repo) : QString()}}));
        }
        if (group.more > 0)
            out.push_back(makeRow<PrRoles>(q(ListRow{MoreRow{repo.id, group.more}}.id()),
                                  {{PrRole::kind, QStringLiteral("more")},
                                   {PrRole::repoId, repoId},
                                   {PrRole::groupIndex, groupIndex},
                                   {PrRole::rowInGroup, int(group.prs.size())},
                                   {PrRole::moreText, q(moreLabel(group.more))}}));
        ++groupIndex;
    }
    return out;
}

std::vector<DiffListModel::Row> browserRows(const Model& model, BrowserIcons& icons) {
    const Browser* selected = model.selectedBrowserEntry();
    std::vector<DiffListModel::Row> out;
    for (const Browser& b : model.visibleBrowsers()) {
        const QString icon = iconSource(icons, b.app);
        out.push_back(makeRow<BrowserRoles>(QString::number(b.id),
                              {{BrowserRole::browserId, qint64(b.id)},
                               {BrowserRole::name, q(b.name)},
                               {BrowserRole::initials, q(b.initials)},
                               {BrowserRole::isDefault, b.isSystemDefault()},
                               {BrowserRole::selected, selected != nullptr && selected->id == b.id},
                               {BrowserRole::iconSource, icon}}));
    }
    return out;
}

DiffListModel::Row repoRow(const Repo& repo) {
    const QString name = q(repo.name);
    return makeRow<RepoRoles>(QString::number(repo.id),
                              {{RepoRole::repoId, qint64(repo.id)},
                               {RepoRole::name, name},
                               {RepoRole::breakableName, ManageTexts::breakableName(repo.name)},
                               {RepoRole::patternKind, ManageTexts::patternKind(repo)},
                               {RepoRole::patternText, ManageTexts::patternText(repo)},
                               {RepoRole::editLabel, QStringLiteral("Edit ") + name},
                               {RepoRole::removeTooltip, QStringLiteral("Stop watching ") + name},
                               {RepoRole::editorPlaceholder, ManageTexts::editorPlaceholder(repo)},
                               {RepoRole::editorHint, ManageTexts::editorHint(repo)}});
}

std::vector<DiffListModel::Row> suggestionRows(const Model& model) {
    const std::vector<Suggestion> suggestions = model.filteredSuggestions();
    std::vector<DiffListModel::Row> out;
    out.reserve(suggestions.size());
    for (const Suggestion& s : suggestions) {
        const QString name = q(s.name);
        const QString label = QStringLiteral("Add ") + name + (s.mine ? QString() : QStringLiteral(", shared"));
        out.push_back(makeRow<SuggestionRoles>(
            name, {{SuggestionRole::name, name}, {SuggestionRole::mine, s.mine}, {SuggestionRole::label, label}}));
    }
    return out;
}

std::vector<DiffListModel::Row> browserSwitchRows(const Model& model, BrowserIcons& icons) {
    std::vector<DiffListModel::Row> out;
    out.reserve(model.browsers.size());
    for (const Browser& b : model.browsers) {
        out.push_back(makeRow<BrowserSwitchRoles>(QString::number(b.id),
                              {{BrowserSwitchRole::browserId, qint64(b.id)},
                               {BrowserSwitchRole::name, q(b.name)},
                               {BrowserSwitchRole::initials, q(b.initials)},
                               {BrowserSwitchRole::isDefault, b.isSystemDefault()},
                               {BrowserSwitchRole::iconSource, iconSource(icons, b.app)},
                               {BrowserSwitchRole::shown, b.shown}}));
    }
    return out;
}

QVariantList previewMenu(const Model& model) {
    // One case per kind of item, so a new kind does not compile until it is
    // drawn. The menu does not depend on the row it is offered for; each
    // item holds its message, which the row completes with its own "id".
    const auto entry = [](const PreviewMenuItem& item) -> QVariantMap {
        return std::visit(
            overloaded{
                [](const menu::Open& open) {
                    QVariantMap message{{"msg", QStringLiteral("open_preview")}};
                    if (open.browser) message.insert("browser", qint64(*open.browser));
                    return QVariantMap{{"kind", QStringLiteral("open")}, {"title", q(open.title)}, {"message", message}};
                },
                [](const menu::Copy& copy) {
                    return QVariantMap{{"kind", QStringLiteral("copy")},
                                       {"title", q(copy.title)},
                                       {"message", QVariantMap{{"msg", QStringLiteral("copy_preview")}}}};
                },
                [](const menu::Separator&) { return QVariantMap{{"kind", QStringLiteral("separator")}}; },
            },
            item);
    };
    QVariantList items;
    for (const PreviewMenuItem& item : model.previewMenu()) items.append(entry(item));
    return items;
}

}  // namespace velmar::ui::PanelLists
