// Text from outside (titles, logins) drawn as plain text in its own
// direction run, and a QML engine that cannot reach the network.
#include <gtest/gtest.h>

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExpression>
#include <QQuickItem>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include "ScreenHarness.h"
#include "PanelView.h"

namespace velmar::testing {
namespace {

TEST(outside_text, titles_and_authors_keep_their_direction_marks_to_themselves) {
    ScreenHarness h;
    Model m = readyModel();
    m.repos = {repo(1, "acme/web", RepoState::ok, 2)};
    const std::string override_ = "Fix \u202Egol\u202C", embedded = "\u202Bbob";
    m.prs = {pr(1, 7, override_), pr(1, 8, "Plain")};
    m.prs[0].author = embedded;
    h.show(m, 520);
    struct Row {
        std::string accessibleName;
        std::string drawn;
    };
    const std::vector<Row> rows{
        {override_, "\u2068" + override_ + "\u2069"},
        {embedded, "\u2068" + embedded + "\u2069"},
        {"Plain", "\u2068Plain\u2069"},
    };
    for (const Row& row : rows) {
        // The text itself, not the row that bears the title as its name too.
        QAccessibleInterface* item = h.find(QString::fromStdString(row.accessibleName), QAccessible::StaticText);
        ASSERT_NE(item, nullptr) << row.accessibleName;
        EXPECT_EQ(item->object()->property("text").toString().toStdString(), row.drawn);
        EXPECT_EQ(item->object()->property("textFormat").toInt(), 0) << "Text.PlainText";
    }
}

TEST(outside_text, the_shared_tooltip_never_reads_markup) {
    ScreenHarness h;
    Model m = readyModel();
    m.repos = {repo(1, "acme/web", RepoState::ok, 1)};
    m.prs = {pr(1, 7, "Title")};
    m.prs[0].author = "<img src=http://127.0.0.1:9/x>";
    h.show(m, 300);  // narrow: the author goes into the row's tooltip
    QObject* root = h.view().rootObject();
    QQmlExpression format(qmlContext(root), root, QStringLiteral("ToolTip.toolTip.contentItem.textFormat"));
    EXPECT_EQ(format.evaluate().toInt(), 0) << "Text.PlainText";
}

TEST(outside_text, the_engine_refuses_every_network_request) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    int connections = 0;
    QObject::connect(&server, &QTcpServer::newConnection, [&] {
        while (QTcpSocket* socket = server.nextPendingConnection()) {
            ++connections;
            socket->close();
        }
    });
    const QString base = QStringLiteral("http://127.0.0.1:%1/").arg(server.serverPort());
    struct Row {
        const char* what;
        QString qml;
    };
    const std::vector<Row> rows{
        {"an image", "import QtQuick\nImage { source: '" + base + "a.png' }"},
        {"a component", "import QtQuick\nLoader { source: '" + base + "c.qml' }"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        QQmlEngine engine;
        ui::refuseNetwork(engine);
        QQmlComponent component(&engine);
        component.setData(row.qml.toUtf8(), QUrl(QStringLiteral("qrc:/test.qml")));
        std::unique_ptr<QObject> object(component.create());
        ASSERT_NE(object, nullptr) << component.errorString().toStdString();
        // Image.Error and Loader.Error are both 3: the request was answered.
        QTRY_VERIFY_WITH_TIMEOUT(object->property("status").toInt() == 3, 5000);
        EXPECT_EQ(connections, 0);
    }
}

}  // namespace
}  // namespace velmar::testing
