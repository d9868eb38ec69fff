// Carries out the core's effects and hands every result back as a Msg on the
// main thread. The only place where the core touches the outside world.
#pragma once

#include <QObject>
#include <QString>
#include <QPointer>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Effect.h"
#include "Msg.h"
#include "Subprocess.h"

namespace velmar {

namespace FileStore {
class SerialQueue;
}
class DesktopNotifications;

class EffectRunner : public QObject {
    Q_OBJECT
public:
    /// `deliver` is called on the main thread, one queued task per result,
    /// and only while `receiver` lives.
    using Deliver = std::function<void(Msg)>;

    /// Time limits on children. A gh that never ends would otherwise hold the
    /// fetch queue forever, so every /bin/sh child is bounded too.
    struct Limits {
        /// Seconds before SIGTERM reaches a /bin/sh child.
        double command = 30.0;
        /// Further seconds after which the effect is answered as a failed run
        /// even if something still holds the child's output open.
        double commandGrace = 2.0;
        /// Seconds before SIGTERM reaches the login shell asked for PATH.
        double loginShell = 10.0;
        /// Seconds after which the search path is answered as unresolved.
        double pathWatchdog = 11.0;
    };

    EffectRunner(QObject* receiver, Deliver deliver, QObject* parent = nullptr);
    EffectRunner(QObject* receiver, Deliver deliver, Limits limits, QObject* parent = nullptr);
    ~EffectRunner() override;

    /// Main thread only; starts the work and returns without waiting.
    void perform(const Effect& effect);

    /// For quitting: lets the file jobs already queued run until `deadline` or
    /// until `giveUp` holds, then takes no more. True when all of them ran.
    bool finishFiles(std::chrono::steady_clock::time_point deadline,
                     const std::function<bool()>& giveUp);

    /// Callable from any thread: queues `msg` for the main thread, behind
    /// every reply queued before it; never delivers synchronously.
    void reply(Msg msg);

    /// The text between the first path marker and the end marker after it;
    /// empty when either is missing, nothing lies between, or it has no "/".
    static std::string extractPath(std::string_view output);

signals:
    /// A save found its file unusable and kept it beside as
    /// "<fileName>.unreadable" before replacing it. Main thread.
    void unreadableKept(const QString& fileName);

private:
    struct Shared;
    /// Queues `msg` for `deliver` on the main thread, if runner and receiver live then.
    static void post(const std::shared_ptr<const Shared>& shared, Msg msg);

    void readFile(const effect::ReadFile& e);
    void writeFile(const effect::WriteFile& e);
    void fetchPrs(const effect::FetchPrs& e);
    void fetchSuggestions(const effect::FetchSuggestions& e);
    void ghPreflight(const effect::GhPreflight& e);
    void brewProbe(const effect::BrewProbe& e);
    void openURL(const effect::OpenURL& e);
    void copyToClipboard(const effect::CopyToClipboard& e);
    void resolveHome();
    void resolvePath();
    void detectBrowsers();
    void fetchBatch(const effect::FetchBatch& e);
    void fetchComments(const effect::FetchComments& e);
    void waitUntil(const effect::WaitUntil& e);
    void notify(const effect::Notify& e);

    using Answer = std::function<Msg(const std::optional<Subprocess::Result>&)>;
    /// Runs /bin/sh with `arguments` under the command limits; `answer` turns
    /// the outcome into the reply, `stuck` is the reply when none came in time.
    void runCommand(std::vector<std::string> arguments, const std::optional<std::string>& path,
                    bool captureStdout, Answer answer, Msg stuck,
                    std::shared_ptr<std::atomic<bool>> busy = nullptr);

    std::shared_ptr<const Shared> shared_;
    Limits limits_;
    std::unique_ptr<FileStore::SerialQueue> files_;
    // Made on the first notification: with notifications off, the session
    // bus is never asked for them.
    std::unique_ptr<DesktopNotifications> notifications_;
    // Set while a check of that kind runs: the first-run screen asks again
    // every few seconds, and a gh that hangs must not pile up behind it.
    std::shared_ptr<std::atomic<bool>> preflightBusy_ = std::make_shared<std::atomic<bool>>(false);
    std::shared_ptr<std::atomic<bool>> brewBusy_ = std::make_shared<std::atomic<bool>>(false);
};

}  // namespace velmar
