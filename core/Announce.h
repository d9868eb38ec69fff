// What is worth a desktop notification: the comparison of two consecutive
// batched answers, and the texts of what it finds. Pure; the model keeps what
// it saw of the answers so far (`Seen`) and the notifications still up.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Records.h"

namespace velmar {

/// One pull request as an answer showed it.
struct SeenPr {
    std::string repo;
    std::int64_t number = 0;
    std::string author;
    std::optional<ChecksState> checks;
    bool operator==(const SeenPr&) const = default;
};

/// What the announcer remembers of the answers so far, or what one answer
/// holds. A repository is in `repos` or `failed` by the last answer that asked
/// for it, so an answer for one new repository leaves the others as they were.
struct Seen {
    std::vector<std::string> repos;   // answered in full
    std::vector<std::string> failed;  // asked for, but failed
    std::vector<SeenPr> prs;          // of `repos`
    /// The pull requests waiting for the viewer's review; absent while the
    /// viewer, and so the list, is unknown.
    std::optional<std::vector<SeenPr>> review;
    bool operator==(const Seen&) const = default;
};

/// A notification that is still up, by its key; what its actions open.
struct Notice {
    std::string key;
    std::string url;
    std::string preview;
    bool operator==(const Notice&) const = default;
};

namespace Announce {

enum class Kind { opened, checksPassed, checksFailed, reviewRequested };

struct Event {
    Kind kind = Kind::opened;
    std::string repo;
    std::int64_t number = 0;
    bool operator==(const Event&) const = default;
};

/// Which kinds are switched on.
struct Switches {
    bool newPrs = true;
    bool checks = true;
    bool review = true;
};

/// More events than this from one answer become one summary.
inline constexpr std::size_t maxSingleNotifications = 3;
/// Notifications remembered for their actions; the oldest go first.
inline constexpr std::size_t maxLiveNotices = 32;
inline constexpr std::string_view summaryKey = "summary";

/// The events of `answer` against `before`, at most one per pull request, in
/// the answer's order. Nothing comes from a repository that either answer
/// failed or that `before` never saw whole; review requests only when both
/// know the review list. The viewer's own new pull requests are no news, and
/// only the viewer's pull requests report their checks.
std::vector<Event> compare(const Seen& before, const Seen& answer, std::string_view viewer,
                           Switches switches);

/// `before` with what `answer` asked for replaced by what it holds.
Seen merge(Seen before, const Seen& answer);

/// "owner/repo#123", a pull request's key among notifications.
std::string key(std::string_view repo, std::int64_t number);
/// "owner/repo #123 · checks failed".
std::string summary(const Event& event);
/// "5 pull requests need you".
std::string summaryOfMany(std::size_t count);

}  // namespace Announce
}  // namespace velmar
