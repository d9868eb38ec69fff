// The screens' one window onto the Store: values derived from the Model as
// properties, each notified only when its own value changed; the lists as
// models updated by difference; and `send`, the one way back into the core.
// Holds no state of its own beyond the last values it told.
#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include "BrowserIcons.h"
#include "DiffListModel.h"
#include "RepoDragTracker.h"
#include "RepoGroup.h"
#include "Store.h"

namespace velmar::ui {

class PanelModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool onSettings READ onSettings NOTIFY screenChanged)
    Q_PROPERTY(bool showsOnboarding READ showsOnboarding NOTIFY showsOnboardingChanged)
    Q_PROPERTY(bool settingsLoaded READ settingsLoaded NOTIFY settingsLoadedChanged)
    Q_PROPERTY(bool autoRefresh READ autoRefresh NOTIFY autoRefreshChanged)
    Q_PROPERTY(bool reposLoaded READ reposLoaded NOTIFY reposLoadedChanged)
    Q_PROPERTY(bool hasRepos READ hasRepos NOTIFY hasReposChanged)
    Q_PROPERTY(QString footerText READ footerText NOTIFY footerTextChanged)
    /// "Settings" on the settings screen outside onboarding, else "Velmar".
    Q_PROPERTY(QString windowTitle READ windowTitle NOTIFY windowTitleChanged)
    /// The gh status as its JSON text: "unknown", "ok", "missing", "logged_out".
    Q_PROPERTY(QString gh READ gh NOTIFY ghChanged)
    /// gh answers at all: signed in or signed out.
    Q_PROPERTY(bool ghInstalled READ ghInstalled NOTIFY ghChanged)
    Q_PROPERTY(bool showsGhBanner READ showsGhBanner NOTIFY ghChanged)
    /// Homebrew is known to be there; false while unknown.
    Q_PROPERTY(bool brewInstalled READ brewInstalled NOTIFY brewInstalledChanged)
    Q_PROPERTY(QString ghLoginCommand READ ghLoginCommand CONSTANT)
    Q_PROPERTY(QString brewInstallCommand READ brewInstallCommand CONSTANT)
    /// The pull request list's headings and rows (roles: PanelLists::prRoles).
    Q_PROPERTY(velmar::ui::DiffListModel* rows READ rows CONSTANT)
    /// The browser tiles (roles: PanelLists::browserRoles).
    Q_PROPERTY(velmar::ui::DiffListModel* browsers READ browsers CONSTANT)
    /// The preview button's menu (PanelLists::previewMenu).
    Q_PROPERTY(QVariantList previewMenu READ previewMenu NOTIFY previewMenuChanged)
    /// Dragging of the list's groups by their headings, after a hold of 0.3 s.
    Q_PROPERTY(velmar::ui::RepoDragTracker* listDrag READ listDrag CONSTANT)
public:
    PanelModel(Store& store, BrowserIcons& icons, QObject* parent = nullptr);

    bool onSettings() const { return now_.onSettings; }
    bool showsOnboarding() const { return now_.showsOnboarding; }
    bool settingsLoaded() const { return now_.settingsLoaded; }
    bool autoRefresh() const { return now_.autoRefresh; }
    bool reposLoaded() const { return now_.reposLoaded; }
    bool hasRepos() const { return now_.hasRepos; }
    QString footerText() const { return now_.footerText; }
    QString windowTitle() const { return now_.windowTitle; }
    QString gh() const { return now_.gh; }
    bool ghInstalled() const { return now_.ghInstalled; }
    bool showsGhBanner() const { return now_.showsGhBanner; }
    bool brewInstalled() const { return now_.brewInstalled; }
    QString ghLoginCommand() const;
    QString brewInstallCommand() const;
    DiffListModel* rows() { return &rows_; }
    DiffListModel* browsers() { return &browsers_; }
    QVariantList previewMenu() const { return now_.previewMenu; }
    RepoDragTracker* listDrag() { return &listDrag_; }

    /// Sends the message `message` in its JSON form ({"msg": "open_pr",
    /// "id": 12}), read by the core's own decoder. Returns false, and sends
    /// nothing, when it does not decode.
    Q_INVOKABLE bool send(const QVariantMap& message);

    /// Moves the repository `id` by `delta` places in the watch list (the
    /// keyboard's Move Up and Move Down); the core holds the index to the
    /// list's ends. Sends nothing for an unknown id.
    Q_INVOKABLE bool moveRepoBy(const QVariant& id, int delta);

    /// The values the properties show for `model`.
    struct Values {
        bool onSettings = false;
        bool showsOnboarding = false;
        bool settingsLoaded = false;
        bool autoRefresh = false;
        bool reposLoaded = false;
        bool hasRepos = false;
        QString footerText;
        QString windowTitle;
        QString gh;
        bool ghInstalled = false;
        bool showsGhBanner = false;
        bool brewInstalled = false;
        QVariantList previewMenu;
        bool operator==(const Values&) const = default;
    };
    static Values derive(const Model& model);

signals:
    void screenChanged();
    void showsOnboardingChanged();
    void settingsLoadedChanged();
    void autoRefreshChanged();
    void reposLoadedChanged();
    void hasReposChanged();
    void footerTextChanged();
    void windowTitleChanged();
    void ghChanged();
    void brewInstalledChanged();
    void previewMenuChanged();

private:
    void modelChanged();

    Store& store_;
    BrowserIcons& icons_;
    Values now_;
    DiffListModel rows_;
    DiffListModel browsers_;
    RepoDragTracker listDrag_;
};

}  // namespace velmar::ui
