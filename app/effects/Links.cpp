// Links, clipboard and browser detection on a Linux desktop. Launching a
// browser is judged by whether its program starts, never by its exit status:
// a browser started cold keeps running for as long as the user browses.
#include "Links.h"

#include <dirent.h>
#include <unistd.h>

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>
#include <algorithm>
#include <cctype>
#include <fstream>
#include <memory>

#include "BrowserTable.h"
#include "DesktopEntry.h"
#include "Env.h"
#include "Subprocess.h"

namespace velmar::Links {
namespace {

// Starts `program` (a path) with `arguments`; whether it started.
bool launch(const std::string& program, const std::vector<std::string>& arguments) {
    // A failed start is answered on this thread before run returns; a
    // browser's later exit, on a worker thread, changes nothing.
    auto started = std::make_shared<bool>(true);
    Subprocess::run(program, arguments, std::nullopt, false, std::nullopt,
                    [started](std::optional<Subprocess::Result> result) {
                        if (!result)
                            *started = false;
                    });
    return *started;
}

// For a name outside the table: the name itself, and the usual lower-case
// hyphenated form ("Pale Moon" -> "pale-moon").
std::vector<std::string> guessedNames(const std::string& app) {
    std::string lowered;
    for (char c : app)
        lowered += c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    std::vector<std::string> names{app};
    if (lowered != app)
        names.push_back(lowered);
    return names;
}

bool openWithBrowser(const std::string& url, const std::string& app) {
    std::vector<std::string> executables;
    std::vector<std::string> ids;
    if (const LinuxBrowser* row = findLinuxBrowser(app)) {
        executables.assign(row->executables.begin(), row->executables.end());
        ids.assign(row->desktopIds.begin(), row->desktopIds.end());
    } else {
        executables = guessedNames(app);
        for (const auto& name : executables)
            ids.push_back(name + ".desktop");
    }
    const std::vector<std::string_view> idViews(ids.begin(), ids.end());
    const auto dirs = DesktopEntry::applicationDirs();
    const std::string searchPath = Env::variable("PATH");
    if (const auto entry = DesktopEntry::find(dirs, idViews)) {
        const auto args = DesktopEntry::commandLine(entry->exec, url);
        if (!args)
            return false;
        const auto program = DesktopEntry::locate(args->front(), searchPath);
        return program && launch(*program, std::vector<std::string>(args->begin() + 1, args->end()));
    }
    for (const auto& name : executables)
        if (const auto program = DesktopEntry::locate(name, searchPath))
            return launch(*program, {url});
    return false;
}

std::string lastComponent(std::string path) {
    // A replaced binary reads "/usr/lib/firefox/firefox (deleted)".
    constexpr std::string_view deleted = " (deleted)";
    if (path.size() > deleted.size() && path.ends_with(deleted))
        path.resize(path.size() - deleted.size());
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

bool isWebAddress(const std::string& url) {
    const QUrl parsed(QString::fromStdString(url), QUrl::StrictMode);
    // QUrl lower-cases the scheme, so "HTTPS:" counts too.
    return parsed.isValid() && (parsed.scheme() == u"http" || parsed.scheme() == u"https") &&
           !parsed.host().isEmpty();
}

void openURL(const std::string& url, const std::string& app, std::function<void()> failed) {
    // Addresses come from gh's output, which anyone can put text into: only
    // web pages are opened, never "javascript:", "file:", a share or an
    // application's private scheme.
    const QUrl parsed(QString::fromStdString(url), QUrl::StrictMode);
    if (!isWebAddress(url)) {
        failed();
        return;
    }
    if (app.empty()) {
        if (!QDesktopServices::openUrl(parsed))
            failed();
        return;
    }
    if (!openWithBrowser(url, app))
        failed();
}

void copyToClipboard(const std::string& text) {
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
        return;
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

std::set<std::string> runningExecutables(const std::string& procRoot) {
    std::set<std::string> names;
    DIR* dir = ::opendir(procRoot.c_str());
    if (dir == nullptr)
        return names;
    while (const dirent* item = ::readdir(dir)) {
        const std::string pid = item->d_name;
        if (pid.empty() || !std::all_of(pid.begin(), pid.end(),
                                        [](char c) { return c >= '0' && c <= '9'; }))
            continue;
        const std::string base = procRoot + "/" + pid;
        char target[4096];
        const ssize_t n = ::readlink((base + "/exe").c_str(), target, sizeof target - 1);
        if (n > 0) {
            names.insert(lastComponent(std::string(target, static_cast<std::size_t>(n))));
            continue;
        }
        // Another user's process, or a kernel thread: the short name is all we get.
        std::ifstream comm(base + "/comm");
        std::string name;
        if (std::getline(comm, name) && !name.empty())
            names.insert(name);
    }
    ::closedir(dir);
    return names;
}

std::vector<DetectedBrowser> detectBrowsers(const std::set<std::string>& running,
                                            std::span<const std::string> applicationDirs) {
    std::vector<DetectedBrowser> found;
    for (const auto& row : linuxBrowsers()) {
        const bool isRunning = std::any_of(row.executables.begin(), row.executables.end(),
                                           [&](std::string_view exe) {
                                               return running.count(std::string(exe)) > 0;
                                           });
        if (isRunning)
            found.push_back({std::string(row.app), true});
        else if (DesktopEntry::find(applicationDirs, row.desktopIds))
            found.push_back({std::string(row.app), false});
    }
    return found;
}

std::vector<DetectedBrowser> detectBrowsers() {
    const auto dirs = DesktopEntry::applicationDirs();
    return detectBrowsers(runningExecutables(), dirs);
}

}  // namespace velmar::Links
