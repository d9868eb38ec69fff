// Projection of the model onto the rows of the screens' lists.
#include "PanelLists.h"

#include <QString>
#include <QUrl>
#include <QVariantMap>

#include <algorithm>
#include <variant>

#include "BrowserIcons.h"
#include "Text.h"
#include "PanelWords.h"
#include "Words.h"

namespace velmar::ui::PanelLists {

namespace {

// Lambdas as one visitor, one per alternative of a variant.
template <class... Cases>
struct overloaded : Cases... {
    using Cases::operator()...;
};

// The image URL of a browser's icon, or empty when it has none.
QString iconSource(BrowserIcons& icons, const std::string& app) {
    return icons.has(app) ? QStringLiteral("image://browser/") + QString::fromLatin1(QUrl::toPercentEncoding(qtText(app)))
                          : QString();
}

}  // namespace

std::vector<DiffListModel::Row> prRows(const Model& model, const std::vector<ListRow>& rows) {
    std::vector<DiffListModel::Row> out;
    out.reserve(rows.size());
    const auto isHeader = [](const ListRow& row) { return row.isHeader(); };
    int groupIndex = 0;
    // A row before the first heading belongs to no group and is not shown.
    for (auto heading = std::find_if(rows.begin(), rows.end(), isHeader); heading != rows.end(); ++groupIndex) {
        const auto end = std::find_if(std::next(heading), rows.end(), isHeader);
        const Repo& repo = std::get<Repo>(heading->item);
        const QVariant repoId = qint64(repo.id);
        const bool yours = repo.id == yoursGroupId;
        const std::int64_t blocked = yours ? model.yoursBlocked() : 0;
        // The group's run of rows sizes its number column: "#" and one "0" per
        // digit of its longest number (one when it has none), so titles line up.
        int prCount = 0;
        std::size_t digits = 1;
        for (auto row = std::next(heading); row != end; ++row)
            if (const PR* pr = std::get_if<PR>(&row->item)) {
                ++prCount;
                digits = std::max(digits, std::to_string(pr->number).size());
            }
        const QString numberTemplate = QStringLiteral("#") + QString(qsizetype(digits), QLatin1Char('0'));
        out.push_back(makeRow<PrRoles>(qtText(heading->id()),
                              {{PrRole::kind, QStringLiteral("header")},
                               {PrRole::repoId, repoId},
                               {PrRole::groupIndex, groupIndex},
                               {PrRole::name, qtText(repo.name)},
                               {PrRole::spinning, repo.state != RepoState::ok},
                               {PrRole::failed, repo.failed},
                               {PrRole::count, qint64(repo.count)},
                               {PrRole::countLabel, qtText(Words::countLabel(repo.count))},
                               {PrRole::loadingLabel, qtText(Words::loadingLabel(repo.name))},
                               {PrRole::groupRows, prCount},
                               {PrRole::blocked, qint64(blocked)},
                               {PrRole::blockedLabel, qtText(Words::blockedLabel(blocked))},
                               {PrRole::headingLabel,
                                qtText(yours ? Words::yoursHeading(repo.count, blocked) : repo.name)}}));
        int rowInGroup = 0;
        for (auto row = std::next(heading); row != end; ++row) {
            if (const auto* more = std::get_if<MoreRow>(&row->item)) {
                out.push_back(makeRow<PrRoles>(qtText(row->id()),
                                      {{PrRole::kind, QStringLiteral("more")},
                                       {PrRole::repoId, repoId},
                                       {PrRole::groupIndex, groupIndex},
                                       {PrRole::rowInGroup, prCount},
                                       {PrRole::moreText, qtText(Words::moreLabel(more->more))}}));
                continue;
            }
            const PR& pr = std::get<PR>(row->item);
            out.push_back(makeRow<PrRoles>(qtText(row->id()),
                {{PrRole::kind, QStringLiteral("pr")},
                 {PrRole::repoId, repoId},
                 {PrRole::groupIndex, groupIndex},
                 {PrRole::prId, qint64(pr.id)},
                 {PrRole::number, qint64(pr.number)},
                 {PrRole::numberText, QStringLiteral("#%1").arg(pr.number)},
                 {PrRole::numberTemplate, numberTemplate},
                 {PrRole::title, qtText(text::trimWhitespaceAndNewlines(pr.title))},
                 {PrRole::author, qtText(pr.author)},
                 {PrRole::authorTooltip, qtText(Words::authorTooltip(pr.author))},
                 {PrRole::isDraft, pr.isDraft},
                 {PrRole::hovered, model.hoveredPr == pr.id},
                 {PrRole::hasPreview, !pr.preview.empty()},
                 {PrRole::previewTooltip, qtText(Words::previewTooltip(pr.previewSource))},
                 {PrRole::openLabel, qtText(Words::openPrLabel(pr.number))},
                 {PrRole::previewLabel, qtText(Words::openPreviewLabel(pr.number))},
                 {PrRole::rowInGroup, rowInGroup++},
                 {PrRole::checks, pr.checks ? qtText(jsonText(*pr.checks)) : QString()},
                 {PrRole::checksLabel, qtText(Words::checksLabel(pr.checks))},
                 {PrRole::review, pr.review ? qtText(jsonText(*pr.review)) : QString()},
                 {PrRole::reviewLabel, qtText(Words::reviewLabel(pr.review))},
                 {PrRole::conflicts, pr.conflicts.value_or(false)},
                 {PrRole::deploy, pr.deploy ? qtText(jsonText(*pr.deploy)) : QString()},
                 {PrRole::deployLabel, qtText(Words::deployLabel(pr))},
                 {PrRole::repoLabel, yours ? qtText(pr.repo) : QString()}}));
        }
        heading = end;
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
                               {BrowserRole::name, qtText(b.name)},
                               {BrowserRole::initials, qtText(b.initials)},
                               {BrowserRole::isDefault, b.isSystemDefault()},
                               {BrowserRole::selected, selected != nullptr && selected->id == b.id},
                               {BrowserRole::iconSource, icon}}));
    }
    return out;
}

DiffListModel::Row repoRow(const Repo& repo) {
    const QString name = qtText(repo.name);
    // A zero-width space after every "/", so that a narrow row breaks a long
    // slug at its slashes.
    QString breakable = name;
    breakable.replace(QLatin1Char('/'), QStringLiteral("/\u200B"));
    // How the pattern line reads: its typed pattern, the learned one (marked), or none.
    const QString patternKind = !repo.pattern.empty()            ? QStringLiteral("own")
                                : !repo.detectedPattern.empty() ? QStringLiteral("detected")
                                                                : QStringLiteral("none");
    return makeRow<RepoRoles>(QString::number(repo.id),
                              {{RepoRole::repoId, qint64(repo.id)},
                               {RepoRole::name, name},
                               {RepoRole::breakableName, breakable},
                               {RepoRole::patternKind, patternKind},
                               {RepoRole::patternText, qtText(Words::patternText(repo))},
                               {RepoRole::editLabel, qtText(Words::editLabel(repo.name))},
                               {RepoRole::removeTooltip, qtText(Words::removeTooltip(repo.name))},
                               {RepoRole::editorPlaceholder, qtText(Words::editorPlaceholder(repo))},
                               {RepoRole::editorHint, qtText(Words::editorHint(repo))}});
}

std::vector<DiffListModel::Row> suggestionRows(const Model& model) {
    const std::vector<Suggestion> suggestions = model.filteredSuggestions();
    std::vector<DiffListModel::Row> out;
    out.reserve(suggestions.size());
    for (const Suggestion& s : suggestions) {
        const QString name = qtText(s.name);
        const QString label = qtText(Words::suggestionLabel(s.name, s.mine));
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
                               {BrowserSwitchRole::name, qtText(b.name)},
                               {BrowserSwitchRole::initials, qtText(b.initials)},
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
                    return QVariantMap{{"kind", QStringLiteral("open")}, {"title", qtText(open.title)}, {"message", message}};
                },
                [](const menu::Copy& copy) {
                    return QVariantMap{{"kind", QStringLiteral("copy")},
                                       {"title", qtText(copy.title)},
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
