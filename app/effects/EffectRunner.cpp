// The effect runner: one handler per Effect case. Files go through one serial
// queue, programs through Subprocess, and every result comes back by `post`,
// a queued call on the main thread.
#include "EffectRunner.h"

#include "DesktopNotifications.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <exception>
#include <thread>
#include <type_traits>

#include "CommandLines.h"
#include "Env.h"
#include "Graphql.h"
#include "FileStore.h"
#include "Links.h"
#include "OneShot.h"

namespace velmar {

// What background work needs to hand a result back. Work holds this, never
// the runner, so a result finishing after the runner is gone is dropped.
struct EffectRunner::Shared {
    QPointer<EffectRunner> runner;  // read on the main thread only
    QPointer<QObject> receiver;     // read on the main thread only
    Deliver deliver;
};

namespace {

constexpr const char* shell = "/bin/sh";

template <class> inline constexpr bool alwaysFalse = false;

}  // namespace

// Posting to the application object keeps replies first in, first out, and
// makes each its own main-thread task, after the `perform` that caused it.
void EffectRunner::post(const std::shared_ptr<const Shared>& shared, Msg msg) {
    QCoreApplication* app = QCoreApplication::instance();
    if (app == nullptr)
        return;
    QMetaObject::invokeMethod(
        app,
        [shared, msg = std::move(msg)] {
            if (shared->runner.isNull() || shared->receiver.isNull())
                return;
            shared->deliver(msg);
        },
        Qt::QueuedConnection);
}

EffectRunner::EffectRunner(QObject* receiver, Deliver deliver, QObject* parent)
    : EffectRunner(receiver, std::move(deliver), Limits{}, parent) {}

EffectRunner::EffectRunner(QObject* receiver, Deliver deliver, Limits limits, QObject* parent)
    : QObject(parent), limits_(limits), files_(std::make_unique<FileStore::SerialQueue>()) {
    auto shared = std::make_shared<Shared>();
    shared->runner = this;
    shared->receiver = receiver;
    shared->deliver = std::move(deliver);
    shared_ = std::move(shared);
}

EffectRunner::~EffectRunner() = default;

void EffectRunner::reply(Msg msg) { post(shared_, std::move(msg)); }

bool EffectRunner::finishFiles(std::chrono::steady_clock::time_point deadline,
                               const std::function<bool()>& giveUp) {
    return files_->finish(deadline, giveUp);
}

void EffectRunner::perform(const Effect& effect) {
    std::visit(
        [this](const auto& e) {
            using E = std::decay_t<decltype(e)>;
            if constexpr (std::is_same_v<E, effect::ReadFile>) readFile(e);
            else if constexpr (std::is_same_v<E, effect::WriteFile>) writeFile(e);
            else if constexpr (std::is_same_v<E, effect::FetchPrs>) fetchPrs(e);
            else if constexpr (std::is_same_v<E, effect::FetchSuggestions>) fetchSuggestions(e);
            else if constexpr (std::is_same_v<E, effect::GhPreflight>) ghPreflight(e);
            else if constexpr (std::is_same_v<E, effect::BrewProbe>) brewProbe(e);
            else if constexpr (std::is_same_v<E, effect::OpenURL>) openURL(e);
            else if constexpr (std::is_same_v<E, effect::CopyToClipboard>) copyToClipboard(e);
            else if constexpr (std::is_same_v<E, effect::ResolveHome>) resolveHome();
            else if constexpr (std::is_same_v<E, effect::ResolvePath>) resolvePath();
            else if constexpr (std::is_same_v<E, effect::DetectBrowsers>) detectBrowsers();
            else if constexpr (std::is_same_v<E, effect::FetchBatch>) fetchBatch(e);
            else if constexpr (std::is_same_v<E, effect::FetchComments>) fetchComments(e);
            else if constexpr (std::is_same_v<E, effect::WaitUntil>) waitUntil(e);
            else if constexpr (std::is_same_v<E, effect::Notify>) notify(e);
            else static_assert(alwaysFalse<E>, "an Effect case without a handler");
        },
        effect);
}

// ---- Files ----

void EffectRunner::readFile(const effect::ReadFile& e) {
    files_->post([shared = shared_, file = e.file, path = e.path] {
        post(shared, msg::FileRead{file, FileStore::readText(path)});
    });
}

void EffectRunner::writeFile(const effect::WriteFile& e) {
    files_->post([shared = shared_, file = e.file, path = e.path, contents = e.contents] {
        // The core reads an unusable file as no file and would write over it;
        // what the user had is kept first.
        if (FileStore::keepUnreadable(path)) {
            const QString name = QString::fromStdString(velmar::fileName(file));
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [shared, name] {
                    if (!shared->runner.isNull())
                        emit shared->runner->unreadableKept(name);
                },
                Qt::QueuedConnection);
        }
        post(shared, msg::FileWritten{file, FileStore::writeTextAtomically(path, contents)});
    });
}

// ---- gh and the shell ----

void EffectRunner::runCommand(std::vector<std::string> arguments,
                              const std::optional<std::string>& path, bool captureStdout,
                              Answer answer, Msg stuck,
                              std::shared_ptr<std::atomic<bool>> busy) {
    if (busy && busy->exchange(true))
        return;  // the one still running will answer
    auto shot = std::make_shared<OneShot>();
    // Free again only when the child has really gone, not when the watchdog
    // answered for it.
    Subprocess::run(shell, arguments, path, captureStdout, limits_.command,
                    [shot, shared = shared_, answer, busy](std::optional<Subprocess::Result> result) {
                        if (busy)
                            busy->store(false);
                        if (shot->claim())
                            post(shared, answer(result));
                    });
    OneShot::watchdog(shot, limits_.command + limits_.commandGrace,
                      [shared = shared_, stuck = std::move(stuck)] { post(shared, stuck); });
}

void EffectRunner::fetchPrs(const effect::FetchPrs& e) {
    runCommand({"-c", std::string(CommandLines::pullRequests), std::string(CommandLines::scriptName),
                e.repo},
               e.path, true,
               [](const std::optional<Subprocess::Result>& result) -> Msg {
                   if (!result)
                       return msg::PrsSpawnFailed{};
                   return msg::PrsFetched{result->stdout, result->status == 0};
               },
               // What a failed gh run prints: the slug line alone.
               msg::PrsFetched{e.repo + "\n", false});
}

namespace {

// gh on `host` with its arguments as positional parameters: nothing of a
// host, a slug, a login or a node id is ever part of the script text.
std::vector<std::string> ghArguments(std::string_view script, const std::optional<std::string>& host,
                                     const std::vector<std::string>& args) {
    std::vector<std::string> out{"-c", std::string(script), std::string(CommandLines::scriptName),
                                 host.value_or(std::string())};
    out.insert(out.end(), args.begin(), args.end());
    return out;
}

}  // namespace

// gh prints the raw JSON and exits 1 when the answer holds any error; the
// output is read whatever the status, so one missing repository fails alone.
void EffectRunner::fetchBatch(const effect::FetchBatch& e) {
    runCommand(ghArguments(CommandLines::ghBatch, e.host,
                           Graphql::batchArguments(e.repos, e.viewer, e.yours.value_or(false))),
               e.path, true,
               [repos = e.repos](const std::optional<Subprocess::Result>& result) -> Msg {
                   if (!result)
                       return msg::BatchFetched{repos, std::string(), false};
                   std::optional<std::int64_t> http;
                   if (result->status == CommandLines::batchBadGateway) http = 502;
                   if (result->status == CommandLines::batchGatewayTimeout) http = 504;
                   return msg::BatchFetched{repos, result->stdout, result->status == 0, http};
               },
               msg::BatchFetched{e.repos, std::string(), false});
}

void EffectRunner::fetchComments(const effect::FetchComments& e) {
    runCommand(ghArguments(CommandLines::ghOnHost, e.host, Graphql::commentsArguments(e.ids)), e.path, true,
               [](const std::optional<Subprocess::Result>& result) -> Msg {
                   if (!result)
                       return msg::CommentsFetched{std::string(), false};
                   return msg::CommentsFetched{result->stdout, result->status == 0};
               },
               msg::CommentsFetched{std::string(), false});
}

void EffectRunner::waitUntil(const effect::WaitUntil& e) {
    // An unreadable time waits a minute, the pace of the automatic refresh.
    const QDateTime at = QDateTime::fromString(QString::fromStdString(e.until), Qt::ISODate);
    qint64 ms = at.isValid() ? QDateTime::currentDateTimeUtc().msecsTo(at) : 60'000;
    ms = std::clamp<qint64>(ms, 0, 2 * 60 * 60 * 1000);
    QTimer::singleShot(std::chrono::milliseconds(ms), this,
                       [shared = shared_] { post(shared, msg::RateWaitOver{}); });
}

void EffectRunner::notify(const effect::Notify& e) {
    if (!notifications_)
        notifications_ = std::make_unique<DesktopNotifications>(
            QDBusConnection::sessionBus(), [shared = shared_](Msg msg) { post(shared, std::move(msg)); },
            DesktopNotifications::routeFor(QStringLiteral("/.flatpak-info")));
    notifications_->show(e);
}

void EffectRunner::fetchSuggestions(const effect::FetchSuggestions& e) {
    const std::string_view line =
        e.source == SuggestionSource::owned ? CommandLines::ownedRepos : CommandLines::sharedRepos;
    runCommand({"-c", std::string(line)}, e.path, true,
               [source = e.source](const std::optional<Subprocess::Result>& result) -> Msg {
                   if (!result)
                       return msg::SuggestionsFetched{source, "", false};
                   return msg::SuggestionsFetched{source, result->stdout, result->status == 0};
               },
               msg::SuggestionsFetched{e.source, "", false});
}

void EffectRunner::ghPreflight(const effect::GhPreflight& e) {
    runCommand({"-c", std::string(CommandLines::ghAuthStatus)}, e.path, false,
               [](const std::optional<Subprocess::Result>& result) -> Msg {
                   return msg::GhChecked{result ? result->status : 127};
               },
               // As if the time limit's SIGTERM had ended it.
               msg::GhChecked{15}, preflightBusy_);
}

void EffectRunner::brewProbe(const effect::BrewProbe& e) {
    runCommand({"-c", std::string(CommandLines::brewLookup)}, e.path, false,
               [](const std::optional<Subprocess::Result>& result) -> Msg {
                   return msg::BrewProbed{result.has_value() && result->status == 0};
               },
               msg::BrewProbed{false}, brewBusy_);
}

void EffectRunner::resolvePath() {
    auto shot = std::make_shared<OneShot>();
    Subprocess::run(Env::loginShell(), {"-l", "-i", "-c", std::string(CommandLines::printPath)},
                    std::nullopt, true, limits_.loginShell,
                    [shot, shared = shared_](std::optional<Subprocess::Result> result) {
                        // The status is not looked at: a shell that printed the
                        // markers and then failed still told us its PATH.
                        if (shot->claim())
                            post(shared, msg::PathResolved{extractPath(result ? result->stdout : "")});
                    });
    OneShot::watchdog(shot, limits_.pathWatchdog,
                      [shared = shared_] { post(shared, msg::PathResolved{""}); });
}

std::string EffectRunner::extractPath(std::string_view output) {
    const auto start = output.find(CommandLines::pathStart);
    if (start == std::string_view::npos)
        return {};
    const auto valueStart = start + CommandLines::pathStart.size();
    const auto end = output.find(CommandLines::pathEnd, valueStart);
    if (end == std::string_view::npos)
        return {};
    const std::string_view value = output.substr(valueStart, end - valueStart);
    if (value.empty() || value.find('/') == std::string_view::npos)
        return {};
    return std::string(value);
}

// ---- Home, desktop ----

void EffectRunner::resolveHome() { reply(msg::HomeResolved{Env::home()}); }

void EffectRunner::openURL(const effect::OpenURL& e) {
    Links::openURL(e.url, e.app, [shared = shared_] { post(shared, msg::OpenFailed{}); });
}

void EffectRunner::copyToClipboard(const effect::CopyToClipboard& e) {
    Links::copyToClipboard(e.text);
}

void EffectRunner::detectBrowsers() {
    std::thread([shared = shared_] {
        // Detection has no failure of its own to report: what cannot be read
        // is simply not found. Should anything still throw, no answer goes
        // back, and the next poll asks again.
        try {
            post(shared, msg::BrowsersDetected{Links::detectBrowsers()});
        } catch (const std::exception&) {
        }
    }).detach();
}

}  // namespace velmar
