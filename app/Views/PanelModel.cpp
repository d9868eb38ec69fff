// Derivation of the panel's properties and the change notifications.
#include "PanelModel.h"

#include "Records.h"

namespace velmar::ui {

PanelModel::PanelModel(Store& store, QObject* parent)
    : QObject(parent), store_(store), now_(derive(store.model())) {
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
    return v;
}

void PanelModel::modelChanged() {
    const Values before = now_;
    now_ = derive(store_.model());
    if (before.onSettings != now_.onSettings) emit screenChanged();
    if (before.showsOnboarding != now_.showsOnboarding) emit showsOnboardingChanged();
    if (before.settingsLoaded != now_.settingsLoaded) emit settingsLoadedChanged();
    if (before.autoRefresh != now_.autoRefresh) emit autoRefreshChanged();
    if (before.reposLoaded != now_.reposLoaded) emit reposLoadedChanged();
    if (before.hasRepos != now_.hasRepos) emit hasReposChanged();
    if (before.footerText != now_.footerText) emit footerTextChanged();
    if (before.windowTitle != now_.windowTitle) emit windowTitleChanged();
}

void PanelModel::refresh() { store_.send(msg::Refresh{}); }

void PanelModel::navigate(const QString& screen) {
    if (auto s = fromJsonText<Screen>(screen.toStdString())) store_.send(msg::Navigate{*s});
}

void PanelModel::setAuto(bool on) { store_.send(msg::SetAuto{on}); }

}  // namespace velmar::ui
