// The values the panel derives from a Model and shows as properties, listed
// once. Each becomes a field of `PanelValues`, and in `PanelModel` a property
// with a getter and a change signal of its own that fires only when that
// value changed, so a binding re-evaluates only for what it reads.
#pragma once

#include <QString>
#include <QVariant>
#include <QVariantList>
#include <QVariantMap>

// X(type, name, signal)
#define VELMAR_PANEL_VALUES(X)                                                   \
    X(bool, onSettings, onSettingsChanged)                                       \
    X(bool, showsOnboarding, showsOnboardingChanged)                             \
    X(bool, settingsLoaded, settingsLoadedChanged)                               \
    X(bool, autoRefresh, autoRefreshChanged)                                     \
    X(bool, checksOn, checksOnChanged)                                           \
    /* The "Show my pull requests" switch as stored; it acts only with checks on. */ \
    X(bool, yoursOn, yoursOnChanged)                                             \
    X(bool, reposLoaded, reposLoadedChanged)                                     \
    X(bool, hasRepos, hasReposChanged)                                           \
    /* "Settings" on the settings screen outside onboarding, else "Velmar". */   \
    X(QString, windowTitle, windowTitleChanged)                                  \
    /* The gh status, one of four: not yet known, not found, signed out, signed in. */ \
    X(bool, ghChecking, ghCheckingChanged)                                       \
    X(bool, ghMissing, ghMissingChanged)                                         \
    X(bool, ghSignedOut, ghSignedOutChanged)                                     \
    X(bool, ghSignedIn, ghSignedInChanged)                                       \
    /* gh answers at all: signed in or signed out. */                            \
    X(bool, ghInstalled, ghInstalledChanged)                                     \
    X(bool, showsGhBanner, showsGhBannerChanged)                                 \
    /* Homebrew is known to be there; false while unknown. */                    \
    X(bool, brewInstalled, brewInstalledChanged)                                 \
    /* The preview button's menu (PanelLists::previewMenu). */                   \
    X(QVariantList, previewMenu, previewMenuChanged)                             \
    /* The "gh installed" and "Signed in to GitHub" labels as {state, text},     \
       state being "good", "bad", "checking" or "pending". */                    \
    X(QVariantMap, ghInstalledStatus, ghInstalledStatusChanged)                  \
    X(QVariantMap, ghSignedInStatus, ghSignedInStatusChanged)                    \
    X(QString, ghFooter, ghFooterChanged)                                        \
    /* "open" or "manual". */                                                    \
    X(QString, browserMode, browserModeChanged)                                  \
    X(QString, browserFooter, browserFooterChanged)                              \
    /* "dark", "light" or "system". */                                           \
    X(QString, appearance, appearanceChanged)                                    \
    X(QString, autoFooter, autoFooterChanged)                                    \
    X(bool, addOpen, addOpenChanged)                                             \
    X(QString, addText, addTextChanged)                                          \
    X(bool, canSubmitAdd, canSubmitAddChanged)                                   \
    /* The id of the repository whose pattern is being edited; undefined when none. */ \
    X(QVariant, editingRepo, editingRepoChanged)                                 \
    X(QString, editText, editTextChanged)

namespace velmar::ui {

struct PanelValues {
#define VELMAR_PANEL_FIELD(type, name, signal) type name{};
    VELMAR_PANEL_VALUES(VELMAR_PANEL_FIELD)
#undef VELMAR_PANEL_FIELD
    /// The core's footer text; the panel may show a notice of its own over it.
    QString footerText;
    bool operator==(const PanelValues&) const = default;
};

}  // namespace velmar::ui

// In `PanelModel`: the property, its getter, and its signal.
#define VELMAR_PANEL_PROPERTY(type, name, signal)      \
    Q_PROPERTY(type name READ name NOTIFY signal)      \
public:                                                \
    type name() const { return now_.name; }            \
    Q_SIGNAL void signal();                            \
                                                       \
private:
