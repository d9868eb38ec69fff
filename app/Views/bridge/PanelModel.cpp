// Derivation of the panel's properties and lists, the change notifications,
// and the way back from QML into the core.
#include "PanelModel.h"

#include <QTimer>
#include <algorithm>
#include <unordered_map>

#include <QJsonDocument>
#include <QJsonObject>

#include "Json.h"
#include "PanelLists.h"
#include "Records.h"
#include "Theme.h"

namespace velmar::ui {

PanelModel::PanelModel(const Model& model, Send send, BrowserIcons& icons, QObject* parent)
    : QObject(parent),
      send_(std::move(send)),
      icons_(icons),
      now_(derive(model)),
      words_(this),
      rows_(roleNames<PanelLists::PrRoles>(), this),
      browsers_(roleNames<PanelLists::BrowserRoles>(), this),
      listDrag_(0.3, 0),
      manageDrag_(std::nullopt, metrics::trailingStrip),
      watchedRepos_(roleNames<PanelLists::RepoRoles>(), this),
      suggestions_(roleNames<PanelLists::SuggestionRoles>(), this),
      browserSwitches_(roleNames<PanelLists::BrowserSwitchRoles>(), this) {
    // Both lists end a drag the same way: one move to the target index,
    // which counts the groups shown, a prefix of the watch list.
    for (RepoDragTracker* drag : {&listDrag_, &manageDrag_})
        drag->setOnDrop([this](reorder::Id id, int target) { send_(msg::MoveRepo{id, target}); });
    updateLists(model);
}

namespace {

QVariantMap statusMap(const Words::Status& status) {
    return {{QStringLiteral("state"), qtText(status.state)}, {QStringLiteral("text"), qtText(status.text)}};
}

}  // namespace

PanelModel::Values PanelModel::derive(const Model& model, bool trayFound) {
    Values v;
    v.onSettings = model.screen == Screen::manage;
    v.showsOnboarding = model.showsOnboarding();
    v.settingsLoaded = model.settingsLoaded;
    v.autoRefresh = model.autoRefresh;
    v.checksOn = model.checksOn();
    v.yoursOn = model.yours.value_or(true);
    QVariantList kinds;
    const auto kind = [&](NotifyKind k, std::string_view title, const std::optional<bool>& on) {
        kinds.append(QVariantMap{{QStringLiteral("kind"), qtText(jsonText(k))},
                                 {QStringLiteral("title"), qtText(title)},
                                 {QStringLiteral("on"), on.value_or(false)}});
    };
    kind(NotifyKind::newPrs, Words::notifyNewPrs, model.notifyNew);
    kind(NotifyKind::checks, Words::notifyChecks, model.notifyChecks);
    kind(NotifyKind::review, Words::notifyReview, model.notifyReview);
    v.attention = {{QStringLiteral("usable"), v.checksOn},
                   {QStringLiteral("notify"), model.notify.value_or(false)},
                   {QStringLiteral("kinds"), kinds},
                   {QStringLiteral("tray"), model.tray.value_or(false)},
                   {QStringLiteral("notifyCaption"), qtText(Words::notifyCaption(v.checksOn))},
                   {QStringLiteral("trayCaption"), qtText(Words::trayCaption(v.checksOn, trayFound))}};
    v.reposLoaded = model.reposLoaded;
    v.hasRepos = !model.repos.empty();
    v.footerText = QString::fromStdString(model.footerText());
    v.windowTitle = qtText(!v.showsOnboarding && v.onSettings ? Words::settings : Words::appName);
    v.ghChecking = model.gh == GhStatus::unknown;
    v.ghMissing = model.gh == GhStatus::missing;
    v.ghSignedOut = model.gh == GhStatus::loggedOut;
    v.ghSignedIn = model.gh == GhStatus::ok;
    v.ghInstalled = model.gh == GhStatus::ok || model.gh == GhStatus::loggedOut;
    v.showsGhBanner = model.showsGhBanner();
    v.brewInstalled = model.brewInstalled.value_or(false);
    v.previewMenu = PanelLists::previewMenu(model);
    v.ghInstalledStatus = statusMap(Words::ghInstalled(model.gh));
    v.ghSignedInStatus = statusMap(Words::ghSignedIn(model.gh));
    v.ghFooter = qtText(Words::ghFooter(model.gh));
    v.browserMode = QString::fromUtf8(jsonText(model.browserMode));
    v.browserFooter = qtText(Words::browserFooter(model.browserMode));
    v.appearance = QString::fromUtf8(jsonText(model.appearance));
    v.autoFooter = qtText(Words::autoFooter(model.autoRefresh));
    v.addOpen = model.addOpen;
    v.addText = QString::fromStdString(model.addText);
    v.canSubmitAdd = model.canSubmitAdd();
    if (model.editingRepo) v.editingRepo = qint64(*model.editingRepo);
    v.editText = QString::fromStdString(model.editText);
    return v;
}

void PanelModel::updateLists(const Model& model) {
    // The trackers learn the new order before the rows move, so the rows
    // glide, and lay them out after, so nothing jumps.
    const std::vector<ListRow> listed = model.listRows();
    std::vector<reorder::Id> groupIds, repoIds;
    for (const ListRow& row : listed)
        if (const Repo* repo = std::get_if<Repo>(&row.item)) groupIds.push_back(repo->id);
    for (const Repo& repo : model.repos) repoIds.push_back(repo.id);
    listDrag_.setEnabled(model.screen == Screen::list && !model.showsOnboarding());
    listDrag_.setIds(std::move(groupIds));
    manageDrag_.setEnabled(model.screen == Screen::manage && !model.showsOnboarding());
    repoOrder_ = repoIds;
    manageDrag_.setIds(std::move(repoIds));

    rows_.update(PanelLists::prRows(model, listed));
    listDrag_.rowsFollowed();
    browsers_.update(PanelLists::browserRows(model, icons_));
    const auto sameRows = [](const Repo& a, const Repo& b) {
        return a.id == b.id && a.name == b.name && a.pattern == b.pattern && a.detectedPattern == b.detectedPattern;
    };
    // The watched list is drawn only on the settings screen: while the list is
    // shown it waits, so a first refresh of a long watch list, which learns a
    // pattern per answer, does not rebuild it per answer.
    if (model.screen == Screen::manage
        && !std::equal(model.repos.begin(), model.repos.end(), watchedShown_.begin(), watchedShown_.end(), sameRows)) {
        // Only a repository that changed is made into a row again.
        std::unordered_map<std::int64_t, std::size_t> shownAt;
        shownAt.reserve(watchedShown_.size());
        for (std::size_t i = 0; i < watchedShown_.size(); ++i) shownAt.emplace(watchedShown_[i].id, i);
        std::vector<DiffListModel::Row> rows;
        rows.reserve(model.repos.size());
        for (const Repo& repo : model.repos) {
            const auto at = shownAt.find(repo.id);
            rows.push_back(at != shownAt.end() && sameRows(watchedShown_[at->second], repo)
                               ? watchedRows_[at->second]
                               : PanelLists::repoRow(repo));
        }
        watchedRows_ = rows;  // the values are shared, not copied
        watchedRepos_.update(std::move(rows));
        watchedShown_ = model.repos;
    }
    manageDrag_.rowsFollowed();
    // Suggestions show only in the add popover; filtering them against a long
    // watch list on every answer while it is closed would be work for nobody.
    suggestions_.update(model.addOpen ? PanelLists::suggestionRows(model) : std::vector<DiffListModel::Row>{});
    browserSwitches_.update(PanelLists::browserSwitchRows(model, icons_));
}

void PanelModel::showNotice(const QString& text, double seconds) {
    if (noticeTimer_ == nullptr) {
        noticeTimer_ = new QTimer(this);
        noticeTimer_->setSingleShot(true);
        connect(noticeTimer_, &QTimer::timeout, this, [this] {
            notice_.clear();
            emit footerTextChanged();
        });
    }
    notice_ = text;
    noticeTimer_->start(int(seconds * 1000));
    emit footerTextChanged();
}

void PanelModel::setTrayFound(bool found) {
    if (found == trayFound_) return;
    trayFound_ = found;
    now_.attention[QStringLiteral("trayCaption")] = qtText(Words::trayCaption(now_.checksOn, found));
    emit attentionChanged();
}

void PanelModel::show(const Model& model) {
    const Values before = now_;
    now_ = derive(model, trayFound_);
    updateLists(model);
#define VELMAR_NOTIFY_CHANGE(type, name, signal) \
    if (before.name != now_.name) emit signal();
    VELMAR_PANEL_VALUES(VELMAR_NOTIFY_CHANGE)
#undef VELMAR_NOTIFY_CHANGE
    if (before.footerText != now_.footerText && notice_.isEmpty()) emit footerTextChanged();
}

bool PanelModel::moveRepoBy(const QVariant& id, int delta) {
    bool ok = false;
    const qint64 key = id.toLongLong(&ok);
    const auto it = std::find(repoOrder_.begin(), repoOrder_.end(), key);
    if (!ok || it == repoOrder_.end()) return false;
    send_(msg::MoveRepo{key, std::int64_t(it - repoOrder_.begin()) + delta});
    return true;
}

QString PanelModel::ghLoginCommand() const { return QString::fromUtf8(Constants::ghLoginCommand); }
int PanelModel::slugCapacity() const { return int(Constants::slugCapacity); }
int PanelModel::patternCapacity() const { return int(Constants::patternCapacity); }
QString PanelModel::brewInstallCommand() const {
    return QString::fromUtf8(Constants::brewInstallCommand);
}

bool PanelModel::send(const QVariantMap& message) {
    const QByteArray json = QJsonDocument(QJsonObject::fromVariantMap(message)).toJson(QJsonDocument::Compact);
    DecodeResult decoded = decodeMsg(std::string_view(json.constData(), std::size_t(json.size())));
    Msg* msg = std::get_if<Msg>(&decoded);
    if (msg == nullptr) {
        // A screen that sends what the core cannot read is a fault of the
        // screen: say so loudly, since nothing else will.
        qWarning("velmar: undecodable message from the screens: %s", json.constData());
        return false;
    }
    send_(*msg);
    return true;
}

}  // namespace velmar::ui
