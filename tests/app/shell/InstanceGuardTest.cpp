// The one-panel guard against other local users: the fallback folder is ours
// alone, the lock file is private whatever the umask, a listener of another
// user is neither trusted nor told anything, and idle clients are dropped.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QLocalSocket>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "EffectsTestSupport.h"
#include "SingleInstance.h"

using namespace velmar;

namespace {

// The sockets need an event loop; this binary has no application otherwise.
void ensureApplication() {
    static int argc = 1;
    static char name[] = "shell_tests";
    static char* argv[] = {name, nullptr};
    if (QCoreApplication::instance() == nullptr) static QCoreApplication app(argc, argv);
}

mode_t modeOf(const QString& path) {
    struct stat info {};
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & 07777 : 0;
}

TEST(instance_guard, without_a_runtime_folder_the_fallback_is_ours_alone) {
    ensureApplication();
    const QString name = QStringLiteral("velmar-%1").arg(::getuid());
    struct Row {
        const char* what;
        std::function<void(const QString& folder, const QString& base)> prepare;
        bool usable;
    };
    const std::vector<Row> rows{
        {"made afresh", [](const QString&, const QString&) {}, true},
        {"already ours", [](const QString& f, const QString&) { ::mkdir(QFile::encodeName(f), 0700); }, true},
        {"open to all", [](const QString& f, const QString&) {
             ::mkdir(QFile::encodeName(f), 0700);
             ::chmod(QFile::encodeName(f), 0777);
         }, false},
        {"a link to a private folder", [](const QString& f, const QString& base) {
             ::mkdir(QFile::encodeName(base + "/elsewhere"), 0700);
             ::symlink(QFile::encodeName(base + "/elsewhere"), QFile::encodeName(f));
         }, false},
        {"a plain file", [](const QString& f, const QString&) {
             QFile file(f);
             file.open(QIODevice::WriteOnly);
         }, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        QTemporaryDir tmp;
        velmar::testing::EnvGuard env({{"XDG_RUNTIME_DIR", std::nullopt}, {"TMPDIR", tmp.path().toStdString()}});
        const QString folder = tmp.filePath(name);
        row.prepare(folder, tmp.path());
        const QString chosen = SingleInstance::defaultRuntimeFolder();
        EXPECT_EQ(chosen, row.usable ? folder : QString());
        if (row.usable) EXPECT_EQ(modeOf(folder), 0700u);
        // An unusable folder means no guard at all, never a shared name.
        if (!row.usable) EXPECT_EQ(SingleInstance(chosen, tmp.path()).claim(), SingleInstance::Role::alone);
    }
}

TEST(instance_guard, the_lock_file_is_private_whatever_the_umask) {
    ensureApplication();
    for (mode_t mask : {mode_t(0), mode_t(022), mode_t(077)}) {
        SCOPED_TRACE(mask);
        QTemporaryDir runtime, home;
        const mode_t old = ::umask(mask);
        SingleInstance guard(runtime.path(), home.path());
        const auto role = guard.claim();
        ::umask(old);
        ASSERT_EQ(role, SingleInstance::Role::primary);
        const QStringList locks = QDir(runtime.path()).entryList({"*.lock"}, QDir::Files);
        ASSERT_EQ(locks.size(), 1);
        EXPECT_EQ(modeOf(runtime.filePath(locks[0])), 0600u);
    }
}

TEST(instance_guard, a_listener_of_another_user_is_not_asked) {
    if (::getuid() != 0) GTEST_SKIP() << "needs root to listen as another user";
    ensureApplication();
    QTemporaryDir runtime, home;
    ::chmod(QFile::encodeName(runtime.path()), 0777);
    SingleInstance probe(runtime.path(), home.path());
    const QString heard = runtime.filePath("heard");
    // Binds and listens as "nobody", then writes down whatever a client says.
    QProcess other;
    other.start("python3", {"-c", R"(
import os, socket, sys
s = socket.socket(socket.AF_UNIX)
os.setgid(65534); os.setuid(65534)
s.bind(sys.argv[1]); s.listen(4)
print("listening", flush=True)
c, _ = s.accept()
c.settimeout(3)
try: data = c.recv(4096)
except Exception: data = b""
open(sys.argv[2], "wb").write(data)
)", probe.socketPath(), heard});
    ASSERT_TRUE(other.waitForReadyRead(10000)) << other.readAllStandardError().toStdString();
    EXPECT_EQ(probe.claim(QStringLiteral("secret-token")), SingleInstance::Role::primary);
    ASSERT_TRUE(other.waitForFinished(10000));
    QFile file(heard);
    EXPECT_TRUE(!file.open(QIODevice::ReadOnly) || !file.readAll().contains("secret-token"));
}

TEST(instance_guard, idle_clients_are_dropped_and_only_a_few_are_served_at_once) {
    ensureApplication();
    QTemporaryDir runtime, home;
    SingleInstance guard(runtime.path(), home.path());
    ASSERT_EQ(guard.claim(), SingleInstance::Role::primary);
    std::vector<std::unique_ptr<QLocalSocket>> clients;
    for (int i = 0; i < 8; ++i) {
        clients.push_back(std::make_unique<QLocalSocket>());
        clients.back()->connectToServer(guard.socketPath());
        ASSERT_TRUE(clients.back()->waitForConnected(2000));
    }
    const auto open = [&] {
        int n = 0;
        for (const auto& c : clients) n += c->state() == QLocalSocket::ConnectedState ? 1 : 0;
        return n;
    };
    // The ones past the limit go at once, the rest once they have said nothing for a while.
    EXPECT_TRUE(QTest::qWaitFor([&] { return open() <= 4; }, 2000)) << open();
    EXPECT_GE(open(), 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return open() == 0; }, 8000)) << open();
    // A start after them is still answered.
    QSignalSpy activations(&guard, &SingleInstance::activationRequested);
    QLocalSocket late;
    late.connectToServer(guard.socketPath());
    ASSERT_TRUE(late.waitForConnected(2000));
    late.write("activate t\n");
    EXPECT_TRUE(activations.wait(5000));
}

}  // namespace
