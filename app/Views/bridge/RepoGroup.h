// How the pull request list groups and labels its rows: plain functions of
// the core's values, kept free of Qt so they read and test like the core.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Model.h"

namespace velmar::ui {

/// A repository heading and the pull requests listed under it.
struct RepoGroup {
    Repo repo;
    std::vector<PR> prs;
    /// Pull requests of the group left out by the row cap (checks on only).
    std::int64_t more = 0;
    bool operator==(const RepoGroup&) const = default;

    std::int64_t id() const { return repo.id; }

    /// Walks `rows` in order: a heading opens a group, a pull request joins
    /// the group last opened (one before any heading has nowhere to go).
    static std::vector<RepoGroup> make(const std::vector<ListRow>& rows);

    /// "#" and one "0" per digit of the group's longest number (one when the
    /// group is empty): it reserves the number column, so titles line up.
    std::string numberTemplate() const;
};

/// The preview button's tooltip for where the link came from.
std::string previewTooltip(std::optional<PreviewSource> source);

/// "Open pull request #12" and "Open preview for #12".
std::string openPrLabel(std::int64_t number);
std::string openPreviewLabel(std::int64_t number);

/// Texts of the checks, review and deployment markers; empty when absent.
std::string checksLabel(std::optional<ChecksState> checks);
std::string reviewLabel(std::optional<ReviewState> review);
/// "Deployment ready", with ", older commit" when matched by branch only.
std::string deployLabel(const PR& pr);
/// "3 more on GitHub".
std::string moreLabel(std::int64_t more);
/// "2 blocked", empty for none.
std::string blockedLabel(std::int64_t blocked);
/// What the screen reader says for the "Yours" heading: "Yours, 5 open, 2 blocked".
std::string yoursHeading(std::int64_t open, std::int64_t blocked);

}  // namespace velmar::ui
