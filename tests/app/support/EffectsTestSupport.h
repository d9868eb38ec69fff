// Helpers for the effect tests: scratch folders with stub programs, a runner
// whose replies are collected, the environment put back after a test, and
// the fake GitHub server run as a child of the test.
#pragma once

#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "EffectRunner.h"
#include "Json.h"
#include "Msg.h"

namespace velmar::testing {

/// Writes `contents` to `path` (creating folders); executable when asked.
void writeFile(const std::string& path, const std::string& contents, bool executable = false);
std::string readFile(const std::string& path);
/// Processes events until `done` holds or `seconds` pass; the result of `done`.
bool waitUntil(const std::function<bool()>& done, double seconds = 30);
/// Waits until every child run with a time limit has been answered and every
/// reply already posted has been handled: after it, a reply that was going
/// to come has come.
bool drainReplies(double seconds = 30);

struct Scratch {
    QTemporaryDir dir;
    std::string path(const std::string& name = "") const {
        return dir.path().toStdString() + (name.empty() ? "" : "/" + name);
    }
    /// A "#!/bin/sh" script named `name` in the folder's "bin"; returns the folder.
    std::string stub(const std::string& name, const std::string& body) {
        writeFile(path("bin/" + name), "#!/bin/sh\n" + body + "\n", true);
        return path("bin");
    }
};

/// Sets environment variables (unsets them for nullopt) and puts the old values back.
struct EnvGuard {
    using Values = std::vector<std::pair<const char*, std::optional<std::string>>>;
    EnvGuard(std::initializer_list<Values::value_type> values) : EnvGuard(Values(values)) {}
    explicit EnvGuard(const Values& values);
    ~EnvGuard();
    std::vector<std::pair<const char*, QByteArray>> saved;
};

/// A home of the program's own in a scratch folder, `repos` its repos.tsv:
/// VELMAR_HOME points at it and the login shell is /bin/sh, with `more` of
/// the environment set, until the end of the scope.
struct ScratchHome {
    explicit ScratchHome(const std::string& repos, EnvGuard::Values more = {});
    /// A file of its configuration folder.
    std::string config(const std::string& name) const { return scratch.path(".config/velmar/" + name); }
    Scratch scratch;
    EnvGuard env;
};

/// An EffectRunner whose replies are collected in order.
struct RunnerHarness {
    QObject receiver;
    std::vector<Msg> received;
    std::unique_ptr<EffectRunner> runner;
    explicit RunnerHarness(EffectRunner::Limits limits = {})
        : runner(std::make_unique<EffectRunner>(&receiver, [this](Msg m) { received.push_back(std::move(m)); }, limits)) {}
    /// Performs `effect` and waits for `count` more replies; the new ones.
    std::vector<Msg> perform(const Effect& effect, std::size_t count = 1, double seconds = 30);
};

/// The fake GitHub server and the environment that points gh at it.
class FakeGitHub {
public:
    /// False (with the reason in `why`) when python3, openssl or gh is missing.
    bool start(const std::string& fixtureJson, std::string& why);
    ~FakeGitHub();
    /// Points gh at the server (token as given) through this process's environment.
    void exportEnvironment(const std::string& token) const;
    /// Replaces what the server answers from the next request on.
    void setFixture(const std::string& fixtureJson) const;
    /// Lines the server logged, one per comments query: the node ids asked for.
    std::string commentsLog() const;
    /// One line per batched query: the host it went to and how many repositories it asked for.
    std::string batchesLog() const;
    /// Lines the server logged, one per GraphQL request: its operation and its cost in points.
    std::string costsLog() const;
    int port() const { return port_; }

private:
    Scratch scratch_;
    QProcess server_;
    int port_ = 0;
};

}  // namespace velmar::testing
