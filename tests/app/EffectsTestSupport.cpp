// Test helpers shared by the effect tests.
#include "EffectsTestSupport.h"

#include <sys/stat.h>

#include <QCoreApplication>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace velmar::testing {

void writeFile(const std::string& path, const std::string& contents, bool executable) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << contents;
    if (executable)
        ::chmod(path.c_str(), 0755);
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

bool waitUntil(const std::function<bool()>& done, double seconds) {
    return QTest::qWaitFor(done, static_cast<int>(seconds * 1000));
}

std::string Scratch::path(const std::string& name) const {
    const std::string root = dir.path().toStdString();
    return name.empty() ? root : root + "/" + name;
}

std::string Scratch::stub(const std::string& name, const std::string& body) {
    writeFile(path("bin/" + name), "#!/bin/sh\n" + body + "\n", true);
    return path("bin");
}

RunnerHarness::RunnerHarness(EffectRunner::Limits limits)
    : runner(std::make_unique<EffectRunner>(
          &receiver, [this](Msg msg) { received.push_back(std::move(msg)); }, limits)) {}

RunnerHarness::~RunnerHarness() = default;

std::vector<Msg> RunnerHarness::perform(const Effect& effect, std::size_t count, double seconds) {
    const std::size_t before = received.size();
    runner->perform(effect);
    waitUntil([&] { return received.size() >= before + count; }, seconds);
    return {received.begin() + static_cast<std::ptrdiff_t>(before), received.end()};
}

bool FakeGitHub::start(const std::string& fixtureJson, std::string& why, int delayMs) {
    for (const char* tool : {"/usr/bin/gh", "/usr/bin/python3", "/usr/bin/openssl"}) {
        if (!std::filesystem::exists(tool)) {
            why = std::string(tool) + " is not installed";
            return false;
        }
    }
    writeFile(scratch_.path("fixture.json"), fixtureJson);
    std::filesystem::create_directories(scratch_.path("gh-config"));
    server_.setProgram("/usr/bin/python3");
    server_.setArguments({QStringLiteral(VELMAR_FAKE_GITHUB), "--dir",
                          QString::fromStdString(scratch_.path()), "--fixture",
                          QString::fromStdString(scratch_.path("fixture.json")), "--delay-ms",
                          QString::number(delayMs)});
    server_.start();
    if (!waitUntil([&] { return server_.canReadLine() || server_.state() == QProcess::NotRunning; },
                   60) ||
        !server_.canReadLine()) {
        why = "the fake GitHub server did not start";
        return false;
    }
    const QByteArray line = server_.readLine().trimmed();
    port_ = line.startsWith("PORT ") ? line.mid(5).toInt() : 0;
    if (port_ == 0)
        why = "the fake GitHub server printed no port";
    return port_ != 0;
}

FakeGitHub::~FakeGitHub() {
    if (server_.state() != QProcess::NotRunning) {
        server_.kill();
        server_.waitForFinished(5000);
    }
}

void FakeGitHub::exportEnvironment(const std::string& token) const {
    qputenv("GH_HOST", QByteArray("localhost:") + QByteArray::number(port_));
    qputenv("GH_ENTERPRISE_TOKEN", QByteArray::fromStdString(token));
    qputenv("SSL_CERT_FILE", QByteArray::fromStdString(scratch_.path("cert.pem")));
    qputenv("GH_CONFIG_DIR", QByteArray::fromStdString(scratch_.path("gh-config")));
    qputenv("XDG_CACHE_HOME", QByteArray::fromStdString(scratch_.path("cache")));
    qputenv("GH_NO_UPDATE_NOTIFIER", "1");
    qputenv("GH_PROMPT_DISABLED", "1");
    qunsetenv("GITHUB_TOKEN");
    qunsetenv("GH_TOKEN");
}

std::vector<std::string> FakeGitHub::requests() const {
    std::vector<std::string> lines;
    std::ifstream in(scratch_.path("requests.jsonl"));
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

}  // namespace velmar::testing
