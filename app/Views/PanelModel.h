// The screens' one window onto the Store: values derived from the Model as
// properties, each notified only when its own value changed, and the ways to
// send a Msg back. Holds no state of its own beyond the last values it told.
#pragma once

#include <QObject>
#include <QString>

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
public:
    explicit PanelModel(Store& store, QObject* parent = nullptr);

    bool onSettings() const { return now_.onSettings; }
    bool showsOnboarding() const { return now_.showsOnboarding; }
    bool settingsLoaded() const { return now_.settingsLoaded; }
    bool autoRefresh() const { return now_.autoRefresh; }
    bool reposLoaded() const { return now_.reposLoaded; }
    bool hasRepos() const { return now_.hasRepos; }
    QString footerText() const { return now_.footerText; }
    QString windowTitle() const { return now_.windowTitle; }

    Q_INVOKABLE void refresh();
    /// `screen` is "list" or "manage"; anything else sends nothing.
    Q_INVOKABLE void navigate(const QString& screen);
    Q_INVOKABLE void setAuto(bool on);

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

private:
    void modelChanged();

    Store& store_;
    Values now_;
};

}  // namespace velmar::ui
