// The desktop integration in-process: the portal reader against a fake portal
// on a private session bus, and the one-instance guard's folders and keys.
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "PortalSettings.h"
#include "PrivateBus.h"
#include "SingleInstance.h"

using namespace velmar;

namespace {

struct FakePortal : FakeService {
    FakePortal(const QString& address, const QStringList& args)
        : FakeService(VELMAR_FAKE_PORTAL, address, args) {}
};

// Processes events until `done` holds, for five seconds at most.
template <typename F> bool eventually(F done) { return QTest::qWaitFor(done, 5000); }

QVariant wrapped(const QVariant& value, int layers) {
    QVariant out = value;
    for (int i = 0; i < layers; ++i) out = QVariant::fromValue(QDBusVariant(out));
    return out;
}

}  // namespace

// ---- Portal values ----

TEST(portal_values, scheme_and_contrast_read_only_small_unsigned_numbers) {
    struct Row {
        const char* name;
        QVariant value;
        PortalScheme scheme;
        bool contrast;
    };
    const std::vector<Row> rows = {
        {"uint 1", QVariant(1u), PortalScheme::dark, true},
        {"uint 2", QVariant(2u), PortalScheme::light, false},
        {"uint 0", QVariant(0u), PortalScheme::noPreference, false},
        {"unknown number", QVariant(7u), PortalScheme::noPreference, false},
        {"int 1 from a sloppy portal", QVariant(1), PortalScheme::dark, true},
        {"negative", QVariant(-1), PortalScheme::noPreference, false},
        {"one variant (ReadOne)", wrapped(QVariant(1u), 1), PortalScheme::dark, true},
        {"two variants (Read)", wrapped(QVariant(2u), 2), PortalScheme::light, false},
        {"string", QVariant(QStringLiteral("1")), PortalScheme::noPreference, false},
        {"double", QVariant(1.0), PortalScheme::noPreference, false},
        {"empty", QVariant(), PortalScheme::noPreference, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parsePortalScheme(row.value), row.scheme) << row.name;
        EXPECT_EQ(parsePortalContrast(row.value), row.contrast) << row.name;
    }
}

// ---- The portal on a bus ----

class PortalTest : public ::testing::Test {
protected:
    PrivateBus bus;
};

TEST_F(PortalTest, first_answers_arrive_later_and_count_whatever_the_portal_speaks) {
    struct Row {
        const char* name;
        QStringList args;
        PortalScheme scheme;
        bool contrast;
    };
    // The contrast answer comes after the scheme's, so once it is in, so is the scheme.
    const std::vector<Row> rows = {
        {"ReadOne", {"1", "1"}, PortalScheme::dark, true},
        {"Read on an old portal", {"--old", "2", "1"}, PortalScheme::light, true},
        {"slow portal", {"--delay", "1.5", "1", "1"}, PortalScheme::dark, true},
        {"no preference", {"0", "1"}, PortalScheme::noPreference, true},
        {"garbage scheme", {"dark", "1"}, PortalScheme::noPreference, true},
    };
    for (const Row& row : rows) {
        FakePortal portal(bus.address, row.args);
        PortalSettings settings(bus.connect());
        EXPECT_EQ(settings.scheme(), PortalScheme::noPreference) << row.name << ": must not wait";
        EXPECT_FALSE(settings.highContrast()) << row.name;
        EXPECT_TRUE(eventually([&] { return settings.highContrast() == row.contrast; }))
            << row.name;
        EXPECT_EQ(settings.scheme(), row.scheme) << row.name;
    }
}

TEST_F(PortalTest, changes_are_followed_live) {
    FakePortal portal(bus.address, {"1"});
    PortalSettings settings(bus.connect());
    EXPECT_TRUE(eventually([&] { return settings.scheme() == PortalScheme::dark; }));
    portal.send("color-scheme 2");
    EXPECT_TRUE(eventually([&] { return settings.scheme() == PortalScheme::light; }));
    portal.send("contrast 1");
    EXPECT_TRUE(eventually([&] { return settings.highContrast() == true; }));
    portal.send("color-scheme junk");
    EXPECT_TRUE(eventually([&] { return settings.scheme() == PortalScheme::noPreference; }));
    portal.send("contrast 0");
    EXPECT_TRUE(eventually([&] { return settings.highContrast() == false; }));
}

TEST_F(PortalTest, a_portal_that_appears_later_is_read) {
    PortalSettings settings(bus.connect());
    FakePortal portal(bus.address, {"1", "1"});
    EXPECT_TRUE(eventually([&] { return settings.scheme() == PortalScheme::dark; }));
    EXPECT_TRUE(eventually([&] { return settings.highContrast() == true; }));
}

// ---- One instance ----

TEST(single_instance, the_key_names_the_folder_not_its_spelling) {
    QTemporaryDir dir;
    const QString home = dir.filePath("home");
    ASSERT_TRUE(QDir().mkpath(home) && QFile::link(home, dir.filePath("link")));
    const QString key = SingleInstance::keyFor(home);
    for (const QString& same : {home + "/", dir.path() + "/x/../home", dir.filePath("link")})
        EXPECT_EQ(SingleInstance::keyFor(same), key) << same.toStdString();
    for (const QString& other : {dir.filePath("homes"), dir.path(), QString("/nonexistent/home")})
        EXPECT_NE(SingleInstance::keyFor(other), key) << other.toStdString();
}

TEST(single_instance, an_unusable_runtime_folder_means_running_alone) {
    QTemporaryDir dir;
    QFile file(dir.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    // /proc stands for a read-only folder: even root cannot create files there.
    for (const QString& folder : {dir.filePath("missing"), file.fileName(), QString("/proc")}) {
        SingleInstance instance(folder, dir.path());
        EXPECT_EQ(instance.claim(), SingleInstance::Role::alone) << folder.toStdString();
    }
}

TEST(single_instance, a_primary_that_ends_cleanly_leaves_the_folder_free) {
    QTemporaryDir runtime;
    for (int run = 0; run < 2; ++run) {
        SingleInstance instance(runtime.path(), "/home/someone");
        EXPECT_EQ(instance.claim(), SingleInstance::Role::primary) << run;
        EXPECT_TRUE(QFile::exists(instance.socketPath()));
    }
}
