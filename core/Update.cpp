// The step function and the dispatch of every message. `Model::apply` is one
// exhaustive visit over `Msg`: each case either delegates to a named operation
// (fetch queue, repositories, browsers, persistence) or does its small row
// here. A message whose guard fails changes nothing and gives no effects.
#include <utility>

#include "Formats.h"
#include "Graphql.h"
#include "Model.h"
#include "Text.h"

namespace velmar {

namespace {

std::string repoWebAddress(const Repo& repo) {
    return std::string(Constants::repoWebBase) + repo.name;
}

/// One handler per case of `Msg`, with no catch-all, so a new case fails to
/// compile until it is given its row.
struct Dispatch {
    Model& m;

    /// Every copy tells the user what went to the clipboard.
    Effects copy(std::string text, std::string_view flash) const {
        m.flash = std::string(flash);
        return {effect::CopyToClipboard{std::move(text)}};
    }

    // ---- Boot and resolution ----

    Effects operator()(const msg::Boot&) const {
        return {effect::ResolveHome{}, effect::ResolvePath{}, effect::DetectBrowsers{}};
    }

    Effects operator()(const msg::WindowRestored& msg) const {
        m.lastFrame = msg.frame;
        return {};
    }

    Effects operator()(const msg::HomeResolved& msg) const {
        m.home = msg.home;
        // The window file is the shell's own business at start-up.
        return {effect::ReadFile{ConfigFile::repos, configPath(ConfigFile::repos, msg.home)},
                effect::ReadFile{ConfigFile::browsers, configPath(ConfigFile::browsers, msg.home)},
                effect::ReadFile{ConfigFile::settings, configPath(ConfigFile::settings, msg.home)}};
    }

    Effects operator()(const msg::PathResolved& msg) const {
        // An empty answer means no usable search path: children then run with
        // the inherited environment.
        m.path = msg.path.empty() ? std::nullopt : std::optional<std::string>(msg.path);
        m.pathResolved = true;
        Effects effects{effect::GhPreflight{m.path}, effect::BrewProbe{m.path},
                        effect::FetchSuggestions{SuggestionSource::owned, m.path},
                        effect::FetchSuggestions{SuggestionSource::shared, m.path}};
        // Without the repos file the queue is not known yet; its arrival starts it.
        if (m.reposLoaded) append(effects, m.startNext());
        return effects;
    }

    // ---- Results of outside work ----

    Effects operator()(const msg::BrowsersDetected& msg) const {
        m.browsersDetectedFrom(msg.browsers);
        return {};
    }

    Effects operator()(const msg::BrowsersDetectFailed&) const { return {}; }

    Effects operator()(const msg::FileRead& msg) const {
        return m.fileRead(msg.file, msg.contents.value_or(std::string()));
    }

    Effects operator()(const msg::FileWritten& msg) const {
        if (msg.ok) return {};
        switch (msg.file) {
            case ConfigFile::repos: m.flash = std::string(Flash::couldNotSaveRepos); break;
            case ConfigFile::browsers: m.flash = std::string(Flash::couldNotSaveBrowsers); break;
            // The window frame counts as a setting for the user.
            case ConfigFile::settings:
            case ConfigFile::extras:
            case ConfigFile::window: m.flash = std::string(Flash::couldNotSaveSettings); break;
        }
        return {};
    }

    Effects operator()(const msg::PrsFetched& msg) const { return m.prsFetched(msg.output, msg.ok); }

    Effects operator()(const msg::PrsSpawnFailed&) const { return m.prsSpawnFailed(); }

    Effects operator()(const msg::SuggestionsFetched& msg) const {
        // A failed listing keeps the suggestions we already have.
        if (msg.ok) m.mergeSuggestions(msg.source, Formats::parseSlugList(msg.output));
        return {};
    }

    Effects operator()(const msg::OpenFailed&) const {
        m.flash = std::string(Flash::couldNotOpen);
        return {};
    }

    // ---- gh state and onboarding ----

    Effects operator()(const msg::GhChecked& msg) const {
        const bool wasUnusable = m.gh == GhStatus::missing || m.gh == GhStatus::loggedOut;
        m.gh = msg.exit == 0     ? GhStatus::ok
               : msg.exit == 127 ? GhStatus::missing
                                 : GhStatus::loggedOut;
        // The manage screen shows the gh guidance; once the user has fixed gh
        // there, the list should fill without a manual refresh.
        if (wasUnusable && msg.exit == 0 && !m.showsOnboarding() && m.screen == Screen::manage)
            return m.refresh();
        return {};
    }

    Effects operator()(const msg::BrewProbed& msg) const {
        m.brewInstalled = msg.installed;
        return {};
    }

    Effects operator()(const msg::OnboardingTick&) const {
        if (!(m.showsOnboarding() || m.screen == Screen::manage)) return {};
        if (m.gh == GhStatus::ok || !m.pathResolved) return {};
        return {effect::GhPreflight{m.path}, effect::BrewProbe{m.path}};
    }

    Effects operator()(const msg::OnboardingContinue&) const {
        if (m.gh != GhStatus::ok) return {};
        return m.finishOnboarding();
    }

    Effects operator()(const msg::OnboardingSkip&) const { return m.finishOnboarding(); }

    Effects operator()(const msg::OpenInstallPage&) const {
        return {effect::OpenURL{std::string(Constants::ghInstallURL), m.selectedApp()}};
    }

    // ---- Settings and navigation ----

    Effects operator()(const msg::SetAuto& msg) const {
        m.autoRefresh = msg.on;
        return m.writeSettings();
    }

    Effects operator()(const msg::SetAppearance& msg) const {
        m.appearance = msg.appearance;
        return m.writeSettings();
    }

    Effects operator()(const msg::Navigate& msg) const {
        m.screen = msg.screen;
        m.userNavigated = true;
        m.flash.reset();
        m.addOpen = false;
        m.addText.clear();
        m.editingRepo.reset();
        m.editText.clear();
        return m.writeSettings();
    }

    // ---- Opening and copying ----

    Effects operator()(const msg::OpenPr& msg) const {
        const PR* pr = m.pr(msg.id);
        if (!pr) return {};
        return {effect::OpenURL{pr->url, m.selectedApp()}};
    }

    Effects operator()(const msg::CopyPrLink& msg) const {
        const PR* pr = m.pr(msg.id);
        if (!pr) return {};
        return copy(pr->url, Flash::copiedLink);
    }

    Effects operator()(const msg::OpenPreview& msg) const {
        const PR* pr = m.pr(msg.id);
        if (!pr || pr->preview.empty()) return {};
        return {effect::OpenURL{pr->preview, m.launcherApp(msg.browser)}};
    }

    Effects operator()(const msg::CopyPreview& msg) const {
        const PR* pr = m.pr(msg.id);
        if (!pr || pr->preview.empty()) return {};
        return copy(pr->preview, Flash::copiedLink);
    }

    Effects operator()(const msg::OpenRepo& msg) const {
        const Repo* repo = m.repo(msg.id);
        if (!repo) return {};
        return {effect::OpenURL{repoWebAddress(*repo), m.selectedApp()}};
    }

    Effects operator()(const msg::CopyRepoLink& msg) const {
        const Repo* repo = m.repo(msg.id);
        if (!repo) return {};
        return copy(repoWebAddress(*repo), Flash::copiedLink);
    }

    Effects operator()(const msg::CopyRepoName& msg) const {
        const Repo* repo = m.repo(msg.id);
        if (!repo) return {};
        return copy(repo->name, Flash::copiedRepoName);
    }

    Effects operator()(const msg::CopyCommand& msg) const {
        return copy(msg.command, Flash::copiedCommand);
    }

    // ---- Hover ----

    Effects operator()(const msg::HoverPr& msg) const {
        m.hoveredPr = msg.id;
        return {};
    }

    Effects operator()(const msg::UnhoverPr& msg) const {
        // The pointer may already have entered the next row; its hover stays.
        if (m.hoveredPr == msg.id) m.hoveredPr.reset();
        return {};
    }

    // ---- Browsers ----

    Effects operator()(const msg::SelectBrowser& msg) const { return m.selectBrowser(msg.id); }
    Effects operator()(const msg::SetBrowserMode& msg) const { return m.setBrowserMode(msg.mode); }
    Effects operator()(const msg::ToggleBrowserShown& msg) const {
        return m.toggleBrowserShown(msg.id);
    }

    // ---- The add popover ----

    Effects operator()(const msg::OpenAdd&) const {
        m.addOpen = true;
        m.addText.clear();
        m.flash.reset();
        return {};
    }

    Effects operator()(const msg::CloseAdd&) const {
        m.addOpen = false;
        m.addText.clear();
        return {};
    }

    Effects operator()(const msg::AddText& msg) const {
        // Over the limit the text is refused whole, never cut.
        if (msg.text.size() <= Constants::slugCapacity) m.addText = msg.text;
        return {};
    }

    Effects operator()(const msg::SubmitAdd&) const {
        if (!m.canSubmitAdd()) {
            m.flash = std::string(Flash::enterSlug);
            return {};
        }
        std::string slug = text::trimWhitespaceAndNewlines(m.addText);
        m.addOpen = false;
        m.addText.clear();
        return m.addRepo(slug);
    }

    Effects operator()(const msg::PickSuggestion& msg) const {
        // The popover stays open so that several suggestions can be picked.
        m.addText.clear();
        return m.addRepo(text::trimWhitespaceAndNewlines(msg.name));
    }

    // ---- The pattern editor ----

    Effects operator()(const msg::EditPattern& msg) const {
        const Repo* repo = m.repo(msg.repoId);
        if (!repo) return {};
        m.editText = repo->pattern;
        m.editingRepo = msg.repoId;
        return {};
    }

    Effects operator()(const msg::EditText& msg) const {
        if (msg.text.size() <= Constants::patternCapacity) m.editText = msg.text;
        return {};
    }

    Effects operator()(const msg::SavePattern&) const { return m.savePattern(); }

    Effects operator()(const msg::CancelEdit&) const {
        m.editingRepo.reset();
        m.editText.clear();
        return {};
    }

    // ---- Repositories ----

    Effects operator()(const msg::RemoveRepo& msg) const { return m.removeRepo(msg.id); }
    Effects operator()(const msg::MoveRepo& msg) const { return m.moveRepo(msg.id, msg.toIndex); }

    // ---- Timers and refresh ----

    Effects operator()(const msg::Refresh&) const { return m.refresh(); }

    Effects operator()(const msg::AutoTick&) const {
        // A tick during any fetching is dropped, not queued; so is one while
        // the rate limit is being waited out.
        if (!m.autoRefresh || m.repos.empty() || m.fetchInFlight || m.rateLimitedUntil) return {};
        for (const auto& r : m.repos)
            if (r.state != RepoState::ok) return {};
        m.requeueAll();
        return m.startNext();
    }

    Effects operator()(const msg::DetectTick&) const {
        // In manual mode the picker does not follow what is running.
        if (m.browserMode != BrowserMode::open) return {};
        return {effect::DetectBrowsers{}};
    }

    // ---- Checks, reviews and deployments ----

    Effects operator()(const msg::SetChecks& msg) const { return m.setChecks(msg.on); }
    Effects operator()(const msg::SetYours& msg) const { return m.setYours(msg.on); }
    Effects operator()(const msg::BatchFetched& msg) const {
        return m.batchFetched(msg.repos, msg.output, msg.http);
    }
    Effects operator()(const msg::CommentsFetched& msg) const {
        return m.commentsFetched(msg.output);
    }
    Effects operator()(const msg::RateWaitOver&) const { return m.rateWaitOver(); }
    Effects operator()(const msg::OpenRepoPulls& msg) const {
        // The review group's rows come from anywhere: its "more" row opens
        // the viewer's review requests.
        if (msg.id == reviewGroupId)
            return {effect::OpenURL{std::string(Constants::repoWebBase) + "pulls/review-requested",
                                    m.selectedApp()}};
        if (msg.id == yoursGroupId)
            return {effect::OpenURL{std::string(Constants::repoWebBase) + "pulls", m.selectedApp()}};
        const Repo* repo = m.repo(msg.id);
        if (!repo) return {};
        // A repository on another host ("HOST/OWNER/REPO") is at that host.
        const std::string address =
            Graphql::hostOf(repo->name) ? "https://" + repo->name : repoWebAddress(*repo);
        return {effect::OpenURL{address + "/pulls", m.selectedApp()}};
    }

    // ---- Notifications and the tray icon ----

    Effects operator()(const msg::SetNotify& msg) const { return m.setNotify(msg.on); }
    Effects operator()(const msg::SetNotifyKind& msg) const {
        return m.setNotifyKind(msg.kind, msg.on);
    }
    Effects operator()(const msg::SetTray& msg) const { return m.setTray(msg.on); }
    Effects operator()(const msg::NotificationAction& msg) const {
        return m.notificationAction(msg.key, msg.action);
    }
    Effects operator()(const msg::NotificationClosed& msg) const {
        m.notificationClosed(msg.key);
        return {};
    }

    // ---- The window ----

    Effects operator()(const msg::WindowMoved& msg) const {
        // An unchanged frame (also the one just restored) is not written back.
        if (m.lastFrame == msg.frame) return {};
        m.lastFrame = msg.frame;
        return m.write(ConfigFile::window, Formats::serializeWindow(msg.frame));
    }
};

}  // namespace

Effects Model::apply(const Msg& msg) { return std::visit(Dispatch{*this}, msg); }

std::pair<Model, Effects> update(const Model& model, const Msg& msg) {
    Model next = model;
    Effects effects = next.apply(msg);
    return {std::move(next), std::move(effects)};
}

}  // namespace velmar
