// Derivation of the panel's properties and lists, the change notifications,
// and the way back from QML into the Store.
#include "PanelModel.h"

#include <QJsonDocument>
#include <QJsonObject>

#include "Json.h"
#include "PanelLists.h"
#include "Records.h"

#include <algorithm>

namespace velmar::ui {

PanelModel::PanelModel(Store& store, BrowserIcons& icons, QObject* parent)
    : QObject(parent),
      store_(store),
      icons_(icons),
      now_(derive(store.model())),
      rows_(PanelLists::prRoles(), this),
      browsers_(PanelLists::browserRoles(), this),
      listDrag_(0.3, 0) {
    listDrag_.setOnDrop([this](reorder::Id id, int target) { store_.send(msg::MoveRepo{id, target}); });
    modelChanged();
    connect(&store_, &Store::changed, this, &PanelModel::modelChanged);
}

PanelModel::Values PanelModel::derive(const Model& model) {
    Values v;
    v.onSettings = model.screen == Screen::manage;
    v.showsOnboarding = model.showsOnboarding();
    v.settingsLoaded = model.settingsLoaded;
    v.autoRefresh = model.autoRefresh;
    v.reposLoaded = model.reposLoaded;
    v.hasRepos = !model.repos.empty();
    v.footerText = QString::fromStdString(model.footerText());
    v.windowTitle = !v.showsOnboarding && v.onSettings ? QStringLiteral("Settings")
                                                       : QStringLiteral("Velmar");
    v.gh = QString::fromUtf8(jsonText(model.gh));
    v.ghInstalled = model.gh == GhStatus::ok || model.gh == GhStatus::loggedOut;
    v.showsGhBanner = model.showsGhBanner();
    v.brewInstalled = model.brewInstalled.value_or(false);
    v.previewMenu = PanelLists::previewMenu(model);
    return v;
}

void PanelModel::modelChanged() {
    const Model& model = store_.model();
    const Values before = now_;
    now_ = derive(model);
    std::vector<RepoGroup> groups = RepoGroup::make(model.listRows());
    std::vector<reorder::Id> ids;
    for (const RepoGroup& group : groups) ids.push_back(group.id());
    listDrag_.setEnabled(model.screen == Screen::list && !now_.showsOnboarding);
    listDrag_.setIds(std::move(ids));
    rows_.update(PanelLists::prRows(model, groups));
    listDrag_.rowsFollowed();
    browsers_.update(PanelLists::browserRows(model, icons_));
    if (before.onSettings != now_.onSettings) emit screenChanged();
    if (before.showsOnboarding != now_.showsOnboarding) emit showsOnboardingChanged();
    if (before.settingsLoaded != now_.settingsLoaded) emit settingsLoadedChanged();
    if (before.autoRefresh != now_.autoRefresh) emit autoRefreshChanged();
    if (before.reposLoaded != now_.reposLoaded) emit reposLoadedChanged();
    if (before.hasRepos != now_.hasRepos) emit hasReposChanged();
    if (before.footerText != now_.footerText) emit footerTextChanged();
    if (before.windowTitle != now_.windowTitle) emit windowTitleChanged();
    if (before.gh != now_.gh || before.showsGhBanner != now_.showsGhBanner) emit ghChanged();
    if (before.brewInstalled != now_.brewInstalled) emit brewInstalledChanged();
    if (before.previewMenu != now_.previewMenu) emit previewMenuChanged();
}

bool PanelModel::moveRepoBy(const QVariant& id, int delta) {
    bool ok = false;
    const qint64 key = id.toLongLong(&ok);
    const std::vector<Repo>& repos = store_.model().repos;
    const auto it = std::find_if(repos.begin(), repos.end(), [&](const Repo& r) { return r.id == key; });
    if (!ok || it == repos.end()) return false;
    store_.send(msg::MoveRepo{key, std::int64_t(it - repos.begin()) + delta});
    return true;
}

QString PanelModel::ghLoginCommand() const { return QString::fromUtf8(Constants::ghLoginCommand); }
QString PanelModel::brewInstallCommand() const {
    return QString::fromUtf8(Constants::brewInstallCommand);
}

bool PanelModel::send(const QVariantMap& message) {
    const QByteArray json = QJsonDocument(QJsonObject::fromVariantMap(message)).toJson(QJsonDocument::Compact);
    DecodeResult decoded = decodeMsg(std::string_view(json.constData(), std::size_t(json.size())));
    Msg* msg = std::get_if<Msg>(&decoded);
    if (msg == nullptr) return false;
    store_.send(*msg);
    return true;
}

}  // namespace velmar::ui
