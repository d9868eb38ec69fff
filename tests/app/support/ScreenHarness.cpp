// The in-process screen harness.
#include "ScreenHarness.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTest>
#include <functional>

#include "Json.h"
#include "PanelView.h"

namespace velmar::testing {

namespace {

void walk(QAccessibleInterface* node, const std::function<bool(QAccessibleInterface*)>& visit) {
    // What is not shown is not there for a reader either.
    if (node == nullptr || !node->isValid() || node->state().invisible) return;
    if (visit(node)) return;
    for (int i = 0; i < node->childCount(); ++i) walk(node->child(i), visit);
}

// Firefox has an icon; every other browser falls back to its initials.
std::optional<QImage> fakeIcon(const std::string& app) {
    if (app != "Firefox") return std::nullopt;
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(Qt::red);
    return image;
}

}  // namespace

ScreenHarness::ScreenHarness()
    : theme_(std::nullopt),
      icons_(fakeIcon),
      panel_(model_, [this](const Msg& msg) { sent(msg); }, icons_) {
    // A binding that fails, a type that is missing, a null that QML had to
    // swallow: each is a fault of a screen, so each fails the test it shows in.
    QObject::connect(view_.engine(), &QQmlEngine::warnings, [](const QList<QQmlError>& warnings) {
        for (const QQmlError& warning : warnings) ADD_FAILURE() << "QML: " << warning.toString().toStdString();
    });
}

void ScreenHarness::sent(const Msg& msg) {
    sent_.push_back(msg);
    if (runCore_) setModel(update(model_, msg).first);
}

void ScreenHarness::setModel(const Model& model) {
    model_ = model;
    panel_.show(model_);
}

void ScreenHarness::show(const Model& model, int width, bool dark) {
    setModel(model);
    theme_.setDark(dark);
    if (!loaded_) {
        const QStringList errors = ui::loadPanel(view_, panel_, theme_, icons_);
        EXPECT_TRUE(errors.isEmpty()) << errors.join('\n').toStdString();
        loaded_ = true;
    }
    view_.resize(width, 600);
    view_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_));
    // Laid out once a frame is drawn: polishing comes before every frame.
    // (A loading group's spinner keeps drawing, so this cannot wait for rest.)
    EXPECT_TRUE(drawn());
}

bool ScreenHarness::drawn() {
    QSignalSpy swapped(&view_, &QQuickWindow::frameSwapped);
    view_.update();
    return swapped.wait(5000);
}

std::vector<std::string> ScreenHarness::waitSent(std::size_t count) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return sent_.size() >= count; }, 5000)) << sent_.size() << " sent";
    drawn();
    return takeSent();
}

bool ScreenHarness::settle() {
    QElapsedTimer sinceFrame;
    sinceFrame.start();
    const QMetaObject::Connection counting =
        QObject::connect(&view_, &QQuickWindow::frameSwapped, [&] { sinceFrame.restart(); });
    // A pending polish or update draws at least once more: wait for it too.
    view_.update();
    const bool still = QTest::qWaitFor([&] { return sinceFrame.elapsed() > 50; }, 5000);
    QObject::disconnect(counting);
    return still;
}

std::vector<std::string> ScreenHarness::takeSent() {
    std::vector<std::string> out;
    for (const Msg& msg : sent_) out.push_back(dumpCompact(toJson(msg)));
    sent_.clear();
    return out;
}

QAccessibleInterface* findAccessible(QWindow& window, const QString& name) {
    QAccessibleInterface* found = nullptr;
    walk(QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface* node) {
        if (found == nullptr && node->text(QAccessible::Name) == name) found = node;
        return found != nullptr;
    });
    return found;
}

bool pressAccessible(QWindow& window, const QString& name) {
    QAccessibleInterface* node = findAccessible(window, name);
    if (node == nullptr || node->actionInterface() == nullptr) return false;
    const QString action = QAccessibleActionInterface::pressAction();
    if (!node->actionInterface()->actionNames().contains(action)) return false;
    node->actionInterface()->doAction(action);
    return true;
}

QAccessibleInterface* ScreenHarness::find(const QString& name) const {
    return findAccessible(const_cast<QQuickView&>(view_), name);
}

QAccessibleInterface* ScreenHarness::find(const QString& name, QAccessible::Role role) const {
    QAccessibleInterface* found = nullptr;
    walk(QAccessible::queryAccessibleInterface(const_cast<QQuickView*>(&view_)), [&](QAccessibleInterface* node) {
        if (found == nullptr && node->role() == role && node->text(QAccessible::Name) == name) found = node;
        return found != nullptr;
    });
    return found;
}

QStringList ScreenHarness::names() const {
    QStringList out;
    walk(QAccessible::queryAccessibleInterface(const_cast<QQuickView*>(&view_)), [&](QAccessibleInterface* node) {
        const QString name = node->text(QAccessible::Name);
        if (!name.isEmpty()) out << name;
        return false;
    });
    return out;
}

bool ScreenHarness::press(const QString& name) const {
    return pressAccessible(const_cast<QQuickView&>(view_), name);
}

void ScreenHarness::rightClick(const QString& name) {
    QAccessibleInterface* node = find(name);
    ASSERT_NE(node, nullptr) << name.toStdString();
    const QPoint centre = view_.mapFromGlobal(node->rect().center());
    QTest::mouseClick(&view_, Qt::RightButton, {}, centre);
}

QQuickItem* ScreenHarness::item(const QString& name) const {
    QAccessibleInterface* node = find(name);
    return node == nullptr ? nullptr : qobject_cast<QQuickItem*>(node->object());
}

QString ScreenHarness::focusedName() {
    QQuickItem* item = view_.activeFocusItem();
    if (item == nullptr) return "(none)";
    QAccessibleInterface* node = QAccessible::queryAccessibleInterface(item);
    return node ? node->text(QAccessible::Name) : item->metaObject()->className();
}

bool ScreenHarness::waitFocus(const QString& name) {
    return QTest::qWaitFor([&] { return focusedName() == name; }, 2000);
}

QStringList ScreenHarness::tabWalk() {
    // Nothing keeps focus, down to the scopes that held it.
    for (QQuickItem* item = view_.activeFocusItem(); item != nullptr; item = item->parentItem())
        item->setFocus(false);
    view_.contentItem()->forceActiveFocus();
    QStringList names;
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(&view_, Qt::Key_Tab);
        const QString name = focusedName();
        if (!names.empty() && name == names.front()) break;
        names << name;
    }
    return names;
}

Model readyModel() {
    Model m;
    m.home = "/home/ana";
    m.settingsLoaded = m.reposLoaded = m.browsersLoaded = true;
    m.onboarded = true;
    m.gh = GhStatus::ok;
    m.flash.reset();
    return m;
}

Repo repo(std::int64_t id, const std::string& name, RepoState state, std::int64_t count) {
    Repo r;
    r.id = id;
    r.name = name;
    r.state = state;
    r.count = count;
    return r;
}

PR pr(std::int64_t repoId, std::int64_t number, const std::string& title, const std::string& preview,
      std::optional<PreviewSource> source) {
    PR p;
    p.id = repoId * 100000 + number;
    p.repoId = repoId;
    p.number = number;
    p.title = title;
    p.author = "ana";
    p.preview = preview;
    p.previewSource = source;
    return p;
}

}  // namespace velmar::testing
