// The screens' one window onto the core's Model: values derived from the Model as
// properties, each notified only when its own value changed; the lists as
// models updated by difference; and `send`, the one way back into the core.
// Holds no state of its own beyond the last values it told.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <functional>
#include <vector>

class QTimer;

#include "BrowserIcons.h"
#include "DiffListModel.h"
#include "RepoDragTracker.h"
#include "Model.h"
#include "Msg.h"
#include "PanelValues.h"
#include "PanelWords.h"

namespace velmar::ui {

class PanelModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shell hands the panel its model.")
    // One line per derived value: its property, its getter and its own change signal.
    VELMAR_PANEL_VALUES(VELMAR_PANEL_PROPERTY)
    Q_PROPERTY(QString footerText READ footerText NOTIFY footerTextChanged)
    Q_PROPERTY(QString ghLoginCommand READ ghLoginCommand CONSTANT)
    Q_PROPERTY(QString brewInstallCommand READ brewInstallCommand CONSTANT)
    /// The screens' fixed words.
    Q_PROPERTY(velmar::ui::PanelWords* words READ words CONSTANT)
    /// The pull request list's headings and rows (roles: PanelLists::PrRoles).
    Q_PROPERTY(velmar::ui::DiffListModel* rows READ rows CONSTANT)
    /// The browser tiles (roles: PanelLists::BrowserRoles).
    Q_PROPERTY(velmar::ui::DiffListModel* browsers READ browsers CONSTANT)
    /// Dragging of the list's groups by their headings, after a hold of 0.3 s.
    Q_PROPERTY(velmar::ui::RepoDragTracker* listDrag READ listDrag CONSTANT)
    /// Dragging of the settings screen's watched repositories, lifted by
    /// moving; a row's trailing strip (its info button) does not start one.
    Q_PROPERTY(velmar::ui::RepoDragTracker* manageDrag READ manageDrag CONSTANT)

    // ---- The settings screen ----
    /// The byte caps of the slug and pattern fields.
    Q_PROPERTY(int slugCapacity READ slugCapacity CONSTANT)
    Q_PROPERTY(int patternCapacity READ patternCapacity CONSTANT)
    /// The watch list (roles: PanelLists::RepoRoles).
    Q_PROPERTY(velmar::ui::DiffListModel* watchedRepos READ watchedRepos CONSTANT)
    /// The filtered suggestions (roles: PanelLists::SuggestionRoles).
    Q_PROPERTY(velmar::ui::DiffListModel* suggestions READ suggestions CONSTANT)
    /// Every known browser with its switch (roles: PanelLists::BrowserSwitchRoles).
    Q_PROPERTY(velmar::ui::DiffListModel* browserSwitches READ browserSwitches CONSTANT)
public:
    /// How the screens' messages reach the core.
    using Send = std::function<void(const Msg&)>;

    /// Shows `model` and sends through `send`; later models arrive by `show`.
    PanelModel(const Model& model, Send send, BrowserIcons& icons, QObject* parent = nullptr);

    /// Shows `model`: derives every property and list again and notifies
    /// only what changed.
    void show(const Model& model);

    /// A notice of the shell's own, when one is showing, else the core's text.
    QString footerText() const { return notice_.isEmpty() ? now_.footerText : notice_; }
    Q_SIGNAL void footerTextChanged();
    /// Shows `text` in the footer for `seconds`, over the core's own text.
    void showNotice(const QString& text, double seconds = 15);
    QString ghLoginCommand() const;
    QString brewInstallCommand() const;
    PanelWords* words() { return &words_; }
    DiffListModel* rows() { return &rows_; }
    DiffListModel* browsers() { return &browsers_; }
    RepoDragTracker* listDrag() { return &listDrag_; }
    RepoDragTracker* manageDrag() { return &manageDrag_; }
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
    using Values = PanelValues;
    static Values derive(const Model& model, bool trayFound = false);
    /// Whether a system tray is on the desktop; the shell follows it.
    void setTrayFound(bool found);

private:
    void updateLists(const Model& model);

    Send send_;
    BrowserIcons& icons_;
    std::vector<std::int64_t> repoOrder_;  // the watch list's ids, for moveRepoBy
    Values now_;
    bool trayFound_ = false;
    QString notice_;
    QTimer* noticeTimer_ = nullptr;
    PanelWords words_;
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
