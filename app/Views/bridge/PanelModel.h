// The screens' one window onto the core's Model: values derived from the Model as
// properties, each notified only when its own value changed; the lists as
// models updated by difference; and `send`, the one way back into the core.
// Holds no state of its own beyond the last values it told.
#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <functional>
#include <vector>

class QTimer;

#include "BrowserIcons.h"
#include "DiffListModel.h"
#include "RepoDragTracker.h"
#include "RepoGroup.h"
#include "ManageTexts.h"
#include "Model.h"
#include "Msg.h"

namespace velmar::ui {

class PanelModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool onSettings READ onSettings NOTIFY screenChanged)
    Q_PROPERTY(bool showsOnboarding READ showsOnboarding NOTIFY showsOnboardingChanged)
    Q_PROPERTY(bool settingsLoaded READ settingsLoaded NOTIFY settingsLoadedChanged)
    Q_PROPERTY(bool autoRefresh READ autoRefresh NOTIFY autoRefreshChanged)
    Q_PROPERTY(bool checksOn READ checksOn NOTIFY checksOnChanged)
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
    /// Dragging of the settings screen's watched repositories, lifted by
    /// moving; the trailing 34 points of a row (its info button) do not start one.
    Q_PROPERTY(velmar::ui::RepoDragTracker* manageDrag READ manageDrag CONSTANT)

    // ---- The settings screen ----
    /// The "gh installed" and "Signed in to GitHub" labels as {state, text},
    /// state being "good", "bad", "checking" or "pending".
    Q_PROPERTY(QVariantMap ghInstalledStatus READ ghInstalledStatus NOTIFY ghChanged)
    Q_PROPERTY(QVariantMap ghSignedInStatus READ ghSignedInStatus NOTIFY ghChanged)
    Q_PROPERTY(QString ghFooter READ ghFooter NOTIFY ghChanged)
    /// "open" or "manual".
    Q_PROPERTY(QString browserMode READ browserMode NOTIFY browserModeChanged)
    Q_PROPERTY(QString browserFooter READ browserFooter NOTIFY browserModeChanged)
    /// "dark", "light" or "system".
    Q_PROPERTY(QString appearance READ appearance NOTIFY appearanceChanged)
    Q_PROPERTY(QString autoFooter READ autoFooter NOTIFY autoRefreshChanged)
    Q_PROPERTY(bool addOpen READ addOpen NOTIFY addOpenChanged)
    Q_PROPERTY(QString addText READ addText NOTIFY addTextChanged)
    Q_PROPERTY(bool canSubmitAdd READ canSubmitAdd NOTIFY canSubmitAddChanged)
    /// The id of the repository whose pattern is being edited; undefined when none.
    Q_PROPERTY(QVariant editingRepo READ editingRepo NOTIFY editingRepoChanged)
    Q_PROPERTY(QString editText READ editText NOTIFY editTextChanged)
    Q_PROPERTY(QString placeholdersLine READ placeholdersLine CONSTANT)
    /// The byte caps of the slug and pattern fields.
    Q_PROPERTY(int slugCapacity READ slugCapacity CONSTANT)
    Q_PROPERTY(int patternCapacity READ patternCapacity CONSTANT)
    /// The watch list (roles: PanelLists::repoRoles).
    Q_PROPERTY(velmar::ui::DiffListModel* watchedRepos READ watchedRepos CONSTANT)
    /// The filtered suggestions (roles: PanelLists::suggestionRoles).
    Q_PROPERTY(velmar::ui::DiffListModel* suggestions READ suggestions CONSTANT)
    /// Every known browser with its switch (roles: PanelLists::browserSwitchRoles).
    Q_PROPERTY(velmar::ui::DiffListModel* browserSwitches READ browserSwitches CONSTANT)
public:
    /// How the screens' messages reach the core.
    using Send = std::function<void(const Msg&)>;

    /// Shows `model` and sends through `send`; later models arrive by `show`.
    PanelModel(const Model& model, Send send, BrowserIcons& icons, QObject* parent = nullptr);

    /// Shows `model`: derives every property and list again and notifies
    /// only what changed.
    void show(const Model& model);


    bool onSettings() const { return now_.onSettings; }
    bool showsOnboarding() const { return now_.showsOnboarding; }
    bool settingsLoaded() const { return now_.settingsLoaded; }
    bool autoRefresh() const { return now_.autoRefresh; }
    bool checksOn() const { return now_.checksOn; }
    bool reposLoaded() const { return now_.reposLoaded; }
    bool hasRepos() const { return now_.hasRepos; }
    /// A notice of the shell's own, when one is showing, else the core's text.
    QString footerText() const { return notice_.isEmpty() ? now_.footerText : notice_; }
    /// Shows `text` in the footer for `seconds`, over the core's own text.
    void showNotice(const QString& text, double seconds = 15);
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
    RepoDragTracker* manageDrag() { return &manageDrag_; }
    QVariantMap ghInstalledStatus() const { return statusMap(now_.ghInstalledStatus); }
    QVariantMap ghSignedInStatus() const { return statusMap(now_.ghSignedInStatus); }
    QString ghFooter() const { return now_.ghFooter; }
    QString browserMode() const { return now_.browserMode; }
    QString browserFooter() const { return now_.browserFooter; }
    QString appearance() const { return now_.appearance; }
    QString autoFooter() const { return now_.autoFooter; }
    bool addOpen() const { return now_.addOpen; }
    QString addText() const { return now_.addText; }
    bool canSubmitAdd() const { return now_.canSubmitAdd; }
    QVariant editingRepo() const { return now_.editingRepo; }
    QString editText() const { return now_.editText; }
    QString placeholdersLine() const { return ManageTexts::placeholdersLine(); }
    int slugCapacity() const;
    int patternCapacity() const;
    DiffListModel* watchedRepos() { return &watchedRepos_; }
    DiffListModel* suggestions() { return &suggestions_; }
    DiffListModel* browserSwitches() { return &browserSwitches_; }

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
        bool checksOn = false;
        bool reposLoaded = false;
        bool hasRepos = false;
        QString footerText;
        QString windowTitle;
        QString gh;
        bool ghInstalled = false;
        bool showsGhBanner = false;
        bool brewInstalled = false;
        QVariantList previewMenu;
        ManageTexts::Status ghInstalledStatus;
        ManageTexts::Status ghSignedInStatus;
        QString ghFooter;
        QString browserMode;
        QString browserFooter;
        QString appearance;
        QString autoFooter;
        bool addOpen = false;
        QString addText;
        bool canSubmitAdd = false;
        QVariant editingRepo;
        QString editText;
        bool operator==(const Values&) const = default;
    };
    static Values derive(const Model& model);

signals:
    void screenChanged();
    void showsOnboardingChanged();
    void settingsLoadedChanged();
    void autoRefreshChanged();
    void checksOnChanged();
    void reposLoadedChanged();
    void hasReposChanged();
    void footerTextChanged();
    void windowTitleChanged();
    void ghChanged();
    void brewInstalledChanged();
    void previewMenuChanged();
    void browserModeChanged();
    void appearanceChanged();
    void addOpenChanged();
    void addTextChanged();
    void canSubmitAddChanged();
    void editingRepoChanged();
    void editTextChanged();

private:
    void updateLists(const Model& model);
    static QVariantMap statusMap(const ManageTexts::Status& status);

    Send send_;
    BrowserIcons& icons_;
    std::vector<std::int64_t> repoOrder_;  // the watch list's ids, for moveRepoBy
    Values now_;
    QString notice_;
    QTimer* noticeTimer_ = nullptr;
    DiffListModel rows_;
    DiffListModel browsers_;
    RepoDragTracker listDrag_;
    RepoDragTracker manageDrag_;
    DiffListModel watchedRepos_;
    /// What the settings rows were last made of, and those rows: an answer
    /// changes a repository's state, at most its learned pattern, and a long
    /// watch list is not made into rows again for that.
    std::vector<Repo> watchedShown_;
    std::vector<DiffListModel::Row> watchedRows_;
    DiffListModel suggestions_;
    DiffListModel browserSwitches_;
};

}  // namespace velmar::ui
