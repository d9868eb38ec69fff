// Test helpers shared by the effect tests.
#include "EffectsTestSupport.h"

#include <sys/stat.h>

#include <QTest>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "Posted.h"
#include "Subprocess.h"

namespace velmar::testing {

void writeFile(const std::string& path, const std::string& contents, bool executable) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << contents;
    if (executable)
        ::chmod(path.c_str(), 0755);
}

std::string readFile(const std::string& path) {
    return (std::ostringstream() << std::ifstream(path, std::ios::binary).rdbuf()).str();
}

bool waitUntil(const std::function<bool()>& done, double seconds) {
    return QTest::qWaitFor(done, static_cast<int>(seconds * 1000));
}

bool drainReplies(double seconds) {
    // Replies are posted to the application, behind the run that answered.
    return waitUntil([] { return Subprocess::liveCount() == 0; }, seconds) &&
           handlePosted(static_cast<int>(seconds * 1000));
}

EnvGuard::EnvGuard(const Values& values) {
    for (const auto& [name, value] : values) {
        saved.emplace_back(name, qgetenv(name));
        if (value) qputenv(name, QByteArray::fromStdString(*value));
        else qunsetenv(name);
    }
}

EnvGuard::~EnvGuard() {
    for (const auto& [name, value] : saved) {
        if (value.isNull()) qunsetenv(name);
        else qputenv(name, value);
    }
}

namespace {
EnvGuard::Values withHome(const Scratch& scratch, EnvGuard::Values more) {
    more.insert(more.begin(), {{"VELMAR_HOME", scratch.path()}, {"SHELL", "/bin/sh"}});
    return more;
}
}  // namespace

ScratchHome::ScratchHome(const std::string& repos, EnvGuard::Values more) : env(withHome(scratch, std::move(more))) {
    writeFile(config("repos.tsv"), repos);
}

std::vector<Msg> RunnerHarness::perform(const Effect& effect, std::size_t count, double seconds) {
    const std::size_t before = received.size();
    runner->perform(effect);
    waitUntil([&] { return received.size() >= before + count; }, seconds);
    return {received.begin() + static_cast<std::ptrdiff_t>(before), received.end()};
}

bool FakeGitHub::start(const std::string& fixtureJson, std::string& why) {
    for (const char* tool : {"/usr/bin/gh", "/usr/bin/python3", "/usr/bin/openssl"})
        if (!std::filesystem::exists(tool))
            return why = std::string(tool) + " is not installed", false;
    writeFile(scratch_.path("fixture.json"), fixtureJson);
    std::filesystem::create_directories(scratch_.path("gh-config"));
    server_.start("/usr/bin/python3", {VELMAR_FAKE_GITHUB, QString::fromStdString(scratch_.path())});
    waitUntil([&] { return server_.canReadLine() || server_.state() == QProcess::NotRunning; }, 60);
    const QByteArray line = server_.readLine().trimmed();
    port_ = line.startsWith("PORT ") ? line.mid(5).toInt() : 0;
    why = "the fake GitHub server printed no port";
    return port_ != 0;
}

FakeGitHub::~FakeGitHub() {
    server_.kill();
    server_.waitForFinished(5000);
}

void FakeGitHub::setFixture(const std::string& fixtureJson) const {
    writeFile(scratch_.path("fixture.json"), fixtureJson);
}

std::string FakeGitHub::commentsLog() const {
    return std::filesystem::exists(scratch_.path("comments.log")) ? readFile(scratch_.path("comments.log"))
                                                                  : std::string();
}

std::string FakeGitHub::batchesLog() const {
    return std::filesystem::exists(scratch_.path("batches.log")) ? readFile(scratch_.path("batches.log"))
                                                                 : std::string();
}

std::string FakeGitHub::costsLog() const {
    return std::filesystem::exists(scratch_.path("costs.log")) ? readFile(scratch_.path("costs.log")) : std::string();
}

void FakeGitHub::exportEnvironment(const std::string& token) const {
    qunsetenv("GITHUB_TOKEN");
    qunsetenv("GH_TOKEN");
    for (const auto& [name, value] : std::vector<std::pair<const char*, std::string>>{
             {"GH_HOST", "localhost:" + std::to_string(port_)}, {"GH_ENTERPRISE_TOKEN", token},
             {"SSL_CERT_FILE", scratch_.path("cert.pem")}, {"GH_CONFIG_DIR", scratch_.path("gh-config")},
             {"XDG_CACHE_HOME", scratch_.path("cache")}, {"GH_NO_UPDATE_NOTIFIER", "1"}, {"GH_PROMPT_DISABLED", "1"}})
        qputenv(name, QByteArray::fromStdString(value));
}

}  // namespace velmar::testing
