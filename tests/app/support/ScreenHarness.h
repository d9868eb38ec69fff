// The panel's screens in-process, offscreen, showing a model the test
// chooses and recording every message instead of running the core; and lookups through the accessibility interface, as a screen reader
// would see the panel.
#pragma once

#include <QAccessible>
#include <QQuickView>
#include <optional>
#include <ostream>
#include <vector>

#include "Model.h"
#include "BrowserIcons.h"
#include "PanelModel.h"
#include "Posted.h"
#include "Theme.h"

/// QStrings in test failures as their text.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace velmar::testing {

class ScreenHarness {
public:
    ScreenHarness();

    /// Shows the panel with `model`, `width` points wide, in `scheme`.
    void show(const Model& model, int width = 520, bool dark = true);
    /// Replaces the model, as a step of the core would.
    void setModel(const Model& model);

    /// Waits until the window has come to rest: no frame drawn for three
    /// frame periods, so every slide, glide and spring has ended. False if it
    /// is still moving after five seconds.
    bool settle();
    /// Waits for the next frame: whatever a change left to lay out or to
    /// create (a list's delegates, a popup) is in place by then.
    bool drawn();
    /// Waits until at least `count` messages were sent and a frame more was
    /// drawn, so whatever the same input sends after them is in too; then
    /// takes them all.
    std::vector<std::string> waitSent(std::size_t count = 1);

    /// Messages sent since the last call, as compact JSON, and forgets them.
    std::vector<std::string> takeSent();
    /// How many messages wait to be taken.
    std::size_t sentCount() const { return sent_.size(); }

    /// The first accessible element named `name` (depth first, in the order
    /// of the tree), or null.
    QAccessibleInterface* find(const QString& name) const;
    /// The first element named `name` in `role`, or null.
    QAccessibleInterface* find(const QString& name, QAccessible::Role role) const;
    /// All names in the tree, for messages.
    QStringList names() const;
    /// Presses `name` through its accessibility action; false if there is no
    /// such element or it has no Press action.
    bool press(const QString& name) const;
    /// Right click on the centre of `name`'s element.
    void rightClick(const QString& name);
    /// The item behind the element named `name`, or null.
    QQuickItem* item(const QString& name) const;
    /// The name of the focused item as a screen reader reads it.
    QString focusedName();
    /// Waits until the item named `name` has the focus.
    bool waitFocus(const QString& name);
    /// The names Tab visits from the window's start until it comes round again.
    QStringList tabWalk();

    /// Messages go through the core's own step too (their effects are
    /// dropped), for tests that need the model to follow, as after a drop.
    void runCore(bool on) { runCore_ = on; }

    QQuickView& view() { return view_; }
    const Model& model() const { return model_; }
    ui::PanelModel& panel() { return panel_; }

private:
    void sent(const Msg& msg);

    Model model_;
    bool runCore_ = false;
    std::vector<Msg> sent_;
    ui::Theme theme_;
    ui::BrowserIcons icons_;
    ui::PanelModel panel_;
    QQuickView view_;
    bool loaded_ = false;
};

/// The first accessible element of `window` named `name` (depth first,
/// shown elements only), or null.
QAccessibleInterface* findAccessible(QWindow& window, const QString& name);
/// Presses the element through its accessibility Press action; false when
/// there is no such element or it has no Press action.
bool pressAccessible(QWindow& window, const QString& name);

/// A model as after start-up: onboarded, every file read, gh signed in.
Model readyModel();
Repo repo(std::int64_t id, const std::string& name, RepoState state = RepoState::ok, std::int64_t count = 0);
PR pr(std::int64_t repoId, std::int64_t number, const std::string& title, const std::string& preview = "",
      std::optional<PreviewSource> source = std::nullopt);

}  // namespace velmar::testing
