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

}  // namespace velmar::ui
