// A session bus of the tests' own, and a fake desktop service on it, for the
// tests of what the panel asks of the desktop over D-Bus.
#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace velmar {

// Without service files, so nothing real is started on it.
struct PrivateBus {
    QTemporaryDir dir;
    QProcess daemon;
    QString address;

    PrivateBus() {
        QFile config(dir.filePath("bus.conf"));
        EXPECT_TRUE(config.open(QIODevice::WriteOnly));
        config.write(("<busconfig><type>session</type><listen>unix:dir=" + dir.path().toUtf8() +
                      "</listen><policy context=\"default\"><allow send_destination=\"*\" "
                      "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/>"
                      "</policy></busconfig>"));
        config.close();
        daemon.start("dbus-daemon",
                     {"--nofork", "--print-address=1", "--config-file=" + config.fileName()});
        EXPECT_TRUE(daemon.waitForReadyRead(5000)) << "dbus-daemon did not start";
        address = QString::fromUtf8(daemon.readLine().trimmed());
    }
    ~PrivateBus() {
        daemon.kill();
        daemon.waitForFinished();
    }
    // Connection names are process-wide: a name reused would mean an old bus.
    QDBusConnection connect() {
        static int connections = 0;
        return QDBusConnection::connectToBus(address, "test-" + QString::number(++connections));
    }
};

// A Python fake of a desktop service on the private bus: it says "ready" once
// it owns its name, prints what it is asked, and takes commands on its input
// until that ends. Debian's python3-dbus and python3-gi belong to the system
// interpreter.
struct FakeService {
    QProcess process;

    FakeService(const char* script, const QString& address, const QStringList& args) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("DBUS_SESSION_BUS_ADDRESS", address);
        process.setProcessEnvironment(env);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start("/usr/bin/python3", QStringList{script} + args);
        EXPECT_TRUE(waitForLine("ready")) << script << " did not start";
    }
    ~FakeService() {
        process.closeWriteChannel();
        if (!process.waitForFinished(3000)) process.kill();
    }
    /// The next line it prints that is not blank; empty after five seconds
    /// of silence. Events are processed meanwhile, so the other end of the
    /// bus keeps going.
    QByteArray nextLine() {
        for (;;) {
            if (!QTest::qWaitFor([&] { return process.canReadLine(); }, 5000)) return {};
            // "ready" may have been read before its line ended, leaving a bare newline.
            if (QByteArray line = process.readLine().trimmed(); !line.isEmpty()) return line;
        }
    }
    /// The next line as a JSON object: a call the service was asked; empty
    /// when none came.
    QJsonObject nextCall() { return QJsonDocument::fromJson(nextLine()).object(); }
    bool waitForLine(const QByteArray& wanted) {
        while (process.canReadLine() || process.waitForReadyRead(5000))
            if (process.readLine().trimmed() == wanted) return true;
        return false;
    }
    void send(const QByteArray& line) { process.write(line + '\n'); }
};

}  // namespace velmar
