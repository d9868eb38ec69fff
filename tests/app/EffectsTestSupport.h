// Helpers for the effect tests: scratch folders with stub programs, a runner
// whose replies are collected, waiting with a deadline, and the fake GitHub
// server run as a child of the test.
#pragma once

#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "EffectRunner.h"
#include "Msg.h"

namespace velmar::testing {

/// Writes `contents` to `path` (creating folders); executable when asked.
void writeFile(const std::string& path, const std::string& contents, bool executable = false);
std::string readFile(const std::string& path);

/// Processes events until `done` holds or `seconds` pass; the result of `done`.
bool waitUntil(const std::function<bool()>& done, double seconds = 30);

/// A scratch folder that lives as long as the object.
struct Scratch {
    QTemporaryDir dir;
    std::string path(const std::string& name = "") const;
    /// A "#!/bin/sh" script named `name` in the folder's "bin"; returns the folder.
    std::string stub(const std::string& name, const std::string& body);
};

/// An EffectRunner whose replies are collected in order.
struct RunnerHarness {
    explicit RunnerHarness(EffectRunner::Limits limits = {});
    ~RunnerHarness();
    QObject receiver;
    std::vector<Msg> received;
    std::unique_ptr<EffectRunner> runner;

    /// Performs `effect` and waits for `count` more replies; the new ones.
    std::vector<Msg> perform(const Effect& effect, std::size_t count = 1, double seconds = 30);
};

/// The fake GitHub server and the environment that points gh at it.
class FakeGitHub {
public:
    /// False (with the reason in `why`) when python3, openssl or gh is missing.
    bool start(const std::string& fixtureJson, std::string& why, int delayMs = 0);
    ~FakeGitHub();
    /// Points gh at the server (token as given) through this process's environment.
    void exportEnvironment(const std::string& token) const;
    /// The JSON lines of the requests seen so far.
    std::vector<std::string> requests() const;
    int port() const { return port_; }

private:
    Scratch scratch_;
    QProcess server_;
    int port_ = 0;
};

}  // namespace velmar::testing
