// Desktop notifications against a fake notification server and a fake portal
// on a private bus: the exact calls by what the server can do, a pull
// request's later notification replacing its earlier one, actions and closings
// coming back as messages, and servers that are missing, slow or talk nonsense.
#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QJsonArray>
#include <QJsonObject>

#include "DesktopNotifications.h"
#include "Json.h"
#include "Posted.h"
#include "PrivateBus.h"

using namespace velmar;

namespace {

struct FakeServer : FakeService {
    FakeServer(const QString& address, const QStringList& args)
        : FakeService(VELMAR_FAKE_NOTIFICATIONS, address, args) {}
};

const effect::Notify kNote{"acme/web#2", "acme/web #2 \u00b7 checks failed", "Fix <b> & more",
                           "https://github.com/acme/web/pull/2", "https://web-2.example.com"};

QJsonObject call(int replaces, const char* body, QStringList actions) {
    return QJsonObject{
        {"app", "Velmar"},
        {"replaces", replaces},
        {"icon", "velmar"},
        {"summary", "acme/web #2 \u00b7 checks failed"},
        {"body", body},
        {"actions", QJsonArray::fromStringList(actions)},
        {"hints", QJsonObject{{"desktop-entry", "velmar"}, {"urgency", QJsonObject{{"byte", 1}}}}},
        {"timeout", -1},
        {"call", "Notify"},
    };
}

struct Client {
    std::vector<Msg> delivered;
    DesktopNotifications notifications;
    explicit Client(const QDBusConnection& bus,
                    DesktopNotifications::Route route = DesktopNotifications::Route::server)
        : notifications(bus, [this](Msg m) { delivered.push_back(std::move(m)); }, route) {}
};

// The desktop portal's fake, which also answers the colour scheme ("0").
struct FakePortal : FakeService {
    explicit FakePortal(const QString& address, QStringList args = {})
        : FakeService(VELMAR_FAKE_PORTAL, address, args << "0") {}
};

QJsonObject portalCall(const char* id, const char* summary, QJsonArray buttons) {
    QJsonObject notification{{"title", summary}, {"body", "Fix <b> & more"}, {"priority", "normal"}};
    if (!buttons.isEmpty()) {
        notification.insert("default-action", "default");
        notification.insert("buttons", buttons);
    }
    return QJsonObject{{"call", "AddNotification"}, {"id", id}, {"notification", notification}};
}

QJsonObject button(const char* label, const char* action) {
    return QJsonObject{{"label", label}, {"action", action}};
}

class NotificationsTest : public ::testing::Test {
protected:
    PrivateBus bus;
};

TEST_F(NotificationsTest, notify_calls_follow_the_servers_capabilities) {
    const QStringList both{"default", "Open pull request", "preview", "Open preview"};
    struct Row {
        const char* name;
        const char* caps;
        effect::Notify note;
        QJsonObject expected;
    };
    effect::Notify noPreview = kNote;
    noPreview.preview.clear();
    effect::Notify summary{"summary", "acme/web #2 \u00b7 checks failed", "a\nb", "", ""};
    const std::vector<Row> rows = {
        {"actions and markup", "actions,body,body-markup", kNote, call(0, "Fix &lt;b&gt; &amp; more", both)},
        {"no markup", "actions,body", kNote, call(0, "Fix <b> & more", both)},
        {"no actions", "body", kNote, call(0, "Fix <b> & more", {})},
        {"no preview", "actions", noPreview, call(0, "Fix <b> & more", {"default", "Open pull request"})},
        {"a summary has nothing to open", "actions", summary, call(0, "a\nb", {})},
    };
    for (const Row& row : rows) {
        FakeServer server(bus.address, {"--caps", row.caps});
        Client client(bus.connect());
        client.notifications.show(row.note);
        EXPECT_EQ(server.nextCall(), row.expected) << row.name;
    }
}

TEST_F(NotificationsTest, a_later_note_of_a_key_waits_for_the_id_it_replaces) {
    FakeServer server(bus.address, {"--delay", "0.3"});
    Client client(bus.connect());
    client.notifications.show(kNote);
    effect::Notify later = kNote;
    later.summary = "acme/web #2 \u00b7 checks passed";
    client.notifications.show(later);
    EXPECT_EQ(server.nextCall()["replaces"].toInt(-1), 0);
    const QJsonObject second = server.nextCall();
    EXPECT_EQ(second["replaces"].toInt(-1), 1);
    EXPECT_EQ(second["summary"], "acme/web #2 \u00b7 checks passed");
}

TEST_F(NotificationsTest, actions_and_closings_of_ours_come_back_and_a_closed_one_is_forgotten) {
    FakeServer server(bus.address, {});
    Client client(bus.connect());
    effect::Notify other = kNote;
    other.key = "acme/web#3";
    client.notifications.show(kNote);
    client.notifications.show(other);
    EXPECT_EQ(server.nextCall()["replaces"].toInt(-1), 0);
    EXPECT_EQ(server.nextCall()["replaces"].toInt(-1), 0);

    server.send("action 2 preview");
    server.send("action 99 default");  // not ours
    server.send("close 1");
    ASSERT_TRUE(QTest::qWaitFor([&] { return client.delivered.size() >= 2; }, 5000));
    EXPECT_EQ(client.delivered, (std::vector<Msg>{msg::NotificationAction{"acme/web#3", "preview"},
                                                   msg::NotificationClosed{"acme/web#2"}}));
    client.notifications.show(kNote);
    client.notifications.show(other);
    EXPECT_EQ(server.nextCall()["replaces"].toInt(-1), 0) << "closed: a new one";
    EXPECT_EQ(server.nextCall()["replaces"].toInt(-1), 2) << "still up: replaced";
}

TEST_F(NotificationsTest, a_missing_slow_or_garbled_server_never_blocks_or_fails) {
    {
        // No server at all: nothing shown, nothing delivered.
        QDBusConnection connection = bus.connect();
        Client client(connection);
        QElapsedTimer timer;
        timer.start();
        client.notifications.show(kNote);
        EXPECT_LT(timer.elapsed(), 200);
        // A round trip on the same connection, then what it posted: the
        // question to the missing server has come back unanswered.
        connection.interface()->isServiceRegistered(QStringLiteral("org.freedesktop.Notifications"));
        ASSERT_TRUE(velmar::testing::handlePosted());
        EXPECT_TRUE(client.delivered.empty());
        // A server that comes later gets the next one.
        FakeServer server(bus.address, {});
        client.notifications.show(kNote);
        EXPECT_EQ(server.nextCall()["summary"], "acme/web #2 \u00b7 checks failed");
    }
    for (const char* fault : {"--silent", "--garbage"}) {
        FakeServer server(bus.address, {fault});
        Client client(bus.connect());
        QElapsedTimer timer;
        timer.start();
        client.notifications.show(kNote);
        EXPECT_LT(timer.elapsed(), 200) << fault;
        EXPECT_EQ(server.nextCall()["replaces"].toInt(-1), 0) << fault;
        if (std::string(fault) == "--garbage") {
            // No id was learned, so the next is a new one, not a replacement of id 0's.
            client.notifications.show(kNote);
            EXPECT_EQ(server.nextCall()["replaces"].toInt(-1), 0) << fault;
        }
    }
}

// Inside a sandbox the portal carries them: the same calls in its words, a
// key's later note under the same id, its actions back by key.
TEST_F(NotificationsTest, in_a_sandbox_the_portal_shows_replaces_and_answers_them) {
    QTemporaryDir root;
    EXPECT_EQ(DesktopNotifications::routeFor(root.filePath(".flatpak-info")), DesktopNotifications::Route::server);
    QFile marker(root.filePath(".flatpak-info"));
    ASSERT_TRUE(marker.open(QIODevice::WriteOnly));
    EXPECT_EQ(DesktopNotifications::routeFor(marker.fileName()), DesktopNotifications::Route::portal);

    const QJsonArray both{button("Open pull request", "default"), button("Open preview", "preview")};
    effect::Notify noPreview = kNote;
    noPreview.preview.clear();
    effect::Notify later = kNote;
    later.summary = "acme/web #2 \u00b7 checks passed";
    effect::Notify summary{"summary", "3 pull requests need you", "Fix <b> & more", "", ""};
    const std::vector<std::pair<effect::Notify, QJsonObject>> rows = {
        {kNote, portalCall("acme/web#2", "acme/web #2 \u00b7 checks failed", both)},
        {later, portalCall("acme/web#2", "acme/web #2 \u00b7 checks passed", both)},
        {noPreview, portalCall("acme/web#2", "acme/web #2 \u00b7 checks failed", {button("Open pull request", "default")})},
        {summary, portalCall("summary", "3 pull requests need you", {})},
    };
    FakePortal portal(bus.address);
    Client client(bus.connect(), DesktopNotifications::Route::portal);
    for (const auto& [note, expected] : rows) {
        client.notifications.show(note);
        EXPECT_EQ(portal.nextCall(), expected) << note.summary;
    }

    // Signals keep their order: once ours is in, the stranger's was dropped.
    portal.send("action acme/web#9 default");
    portal.send("action acme/web#2 preview");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !client.delivered.empty(); }, 5000));
    EXPECT_EQ(client.delivered, (std::vector<Msg>{msg::NotificationAction{"acme/web#2", "preview"}}));
}

TEST_F(NotificationsTest, a_missing_or_silent_portal_never_blocks) {
    for (const bool present : {false, true}) {
        std::optional<FakePortal> portal;
        if (present) portal.emplace(bus.address, QStringList{"--silent"});
        Client client(bus.connect(), DesktopNotifications::Route::portal);
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 3; ++i) client.notifications.show(kNote);
        EXPECT_LT(timer.elapsed(), 200) << present;
        if (portal) EXPECT_EQ(portal->nextCall()["id"], "acme/web#2");
        EXPECT_TRUE(client.delivered.empty());
    }
}

}  // namespace
