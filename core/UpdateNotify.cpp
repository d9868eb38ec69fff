// Desktop notifications and the tray icon. Both read what the batched query
// fetches, so they do something only while checks are on; their switches are
// kept in the extras file. What to announce is the announcer's; this file
// turns its events into notifications, remembers the ones still up for their
// actions, and words what the tray icon shows.
#include <algorithm>

#include "Graphql.h"
#include "Model.h"

namespace velmar {

namespace {

SeenPr seenOf(const PR& pr) { return {pr.repo, pr.number, pr.author, pr.checks}; }

std::string plural(std::int64_t n, std::string_view one, std::string_view many) {
    return std::to_string(n) + " " + std::string(n == 1 ? one : many);
}

}  // namespace

Effects Model::writeExtras() const {
    return write(ConfigFile::extras,
                 Graphql::serializeExtras({checksOn(), yours, notify, notifyNew, notifyChecks, notifyReview, tray}));
}

Effects Model::setNotify(bool on) {
    if (on == notify.value_or(false) || (on && !checksOn())) return {};
    notify = on;
    // All kinds on the first time; later the user's choice stays.
    if (on && !notifyNew && !notifyChecks && !notifyReview) notifyNew = notifyChecks = notifyReview = true;
    // Turned on again, the next answer is a new baseline.
    seen.reset();
    notices.reset();
    return writeExtras();
}

Effects Model::setNotifyKind(NotifyKind kind, bool on) {
    if (!notifyOn()) return {};
    std::optional<bool>& slot = kind == NotifyKind::newPrs   ? notifyNew
                                : kind == NotifyKind::checks ? notifyChecks
                                                             : notifyReview;
    if (slot == on) return {};
    slot = on;
    return writeExtras();
}

Effects Model::setTray(bool on) {
    if (on == tray.value_or(false) || (on && !checksOn())) return {};
    tray = on;
    return writeExtras();
}

Effects Model::announce(const std::vector<std::string>& answered,
                        const std::vector<std::string>& failed, bool reviewListed) {
    if (!notifyOn()) return {};
    Seen now;
    now.repos = answered;
    now.failed = failed;
    for (const auto& p : prs)
        if (std::find(answered.begin(), answered.end(), p.repo) != answered.end())
            now.prs.push_back(seenOf(p));
    if (reviewListed && reviewPrs) {
        now.review.emplace();
        for (const auto& p : *reviewPrs) now.review->push_back(seenOf(p));
    }
    if (!seen) {
        seen = Announce::merge({}, now);
        return {};
    }
    const auto events = Announce::compare(
        *seen, now, viewer.value_or(std::string()),
        {notifyNew.value_or(false), notifyChecks.value_or(false), notifyReview.value_or(false)});
    seen = Announce::merge(std::move(*seen), now);
    if (events.empty()) return {};

    const auto rowOf = [&](const Announce::Event& e) -> const PR* {
        for (const auto& p : prs)
            if (p.number == e.number && p.repo == e.repo) return &p;
        if (reviewPrs)
            for (const auto& p : *reviewPrs)
                if (p.number == e.number && p.repo == e.repo) return &p;
        return nullptr;
    };
    if (!notices) notices.emplace();
    const auto remember = [&](Notice notice) {
        std::erase_if(*notices, [&](const Notice& n) { return n.key == notice.key; });
        notices->push_back(std::move(notice));
        if (notices->size() > Announce::maxLiveNotices) notices->erase(notices->begin());
    };

    Effects effects;
    if (events.size() > Announce::maxSingleNotifications) {
        std::string body;
        for (const auto& e : events) body += (body.empty() ? "" : "\n") + Announce::summary(e);
        remember({std::string(Announce::summaryKey), {}, {}});
        effects.push_back(effect::Notify{std::string(Announce::summaryKey),
                                         Announce::summaryOfMany(events.size()), body, {}, {}});
        return effects;
    }
    for (const auto& e : events) {
        const PR* row = rowOf(e);
        Notice notice{Announce::key(e.repo, e.number), row ? row->url : std::string(),
                      row ? row->preview : std::string()};
        effects.push_back(effect::Notify{notice.key, Announce::summary(e), row ? row->title : std::string(),
                                         notice.url, notice.preview});
        remember(std::move(notice));
    }
    return effects;
}

Effects Model::notificationAction(const std::string& key, const std::string& action) {
    if (!notices) return {};
    const auto it = std::find_if(notices->begin(), notices->end(),
                                 [&](const Notice& n) { return n.key == key; });
    if (it == notices->end()) return {};
    // Opened as a click on the row would open it.
    if (action == "default" && !it->url.empty()) return {effect::OpenURL{it->url, selectedApp()}};
    if (action == "preview" && !it->preview.empty())
        return {effect::OpenURL{it->preview, launcherApp(std::nullopt)}};
    return {};
}

void Model::notificationClosed(const std::string& key) {
    if (!notices) return;
    std::erase_if(*notices, [&](const Notice& n) { return n.key == key; });
    if (notices->empty()) notices.reset();
}

std::int64_t Model::reviewWaiting() const {
    return checksOn() && reviewPrs ? static_cast<std::int64_t>(reviewPrs->size()) : 0;
}

std::int64_t Model::myChecksFailing() const {
    if (!checksOn() || !viewer) return 0;
    return std::count_if(prs.begin(), prs.end(), [&](const PR& p) {
        return p.author == *viewer && p.checks == ChecksState::failing;
    });
}

std::int64_t Model::myAttentionCount() const {
    if (!checksOn() || !viewer) return 0;
    if (yourPrs) return std::count_if(yourPrs->begin(), yourPrs->end(), isBlocked);
    return myChecksFailing();
}

std::string Model::trayTooltip() const {
    const std::int64_t waiting = reviewWaiting();
    const std::int64_t marked = myAttentionCount();
    if (!waiting && !marked) return "Nothing waits for you";
    std::string text;
    if (waiting)
        text = plural(waiting, "pull request waits", "pull requests wait") + " for your review";
    if (marked) {
        if (!text.empty()) text += "\n";
        text += yourPrs ? plural(marked, "of your pull requests is blocked", "of your pull requests are blocked")
                        : "Checks failed on " + std::to_string(marked) + " of your pull requests";
    }
    return text;
}

}  // namespace velmar
