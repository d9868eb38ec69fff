// Grouping of the list rows, the number column and the row labels.
#include "RepoGroup.h"

#include <algorithm>

namespace velmar::ui {

std::vector<RepoGroup> RepoGroup::make(const std::vector<ListRow>& rows) {
    std::vector<RepoGroup> groups;
    for (const ListRow& row : rows) {
        if (const Repo* repo = std::get_if<Repo>(&row.item))
            groups.push_back({*repo, {}});
        else if (groups.empty())
            continue;
        else if (const auto* more = std::get_if<MoreRow>(&row.item))
            groups.back().more = more->more;
        else
            groups.back().prs.push_back(std::get<PR>(row.item));
    }
    return groups;
}

std::string RepoGroup::numberTemplate() const {
    std::size_t digits = 1;
    for (const PR& pr : prs) digits = std::max(digits, std::to_string(pr.number).size());
    return "#" + std::string(digits, '0');
}

std::string previewTooltip(std::optional<PreviewSource> source) {
    if (source == PreviewSource::comment) return "Open preview (link from the PR's deploy comment)";
    if (source == PreviewSource::detected) return "Open preview (detected pattern)";
    if (source == PreviewSource::deployment) return "Open preview (from the deployment)";
    return "Open preview";
}

std::string openPrLabel(std::int64_t number) {
    return "Open pull request #" + std::to_string(number);
}

std::string openPreviewLabel(std::int64_t number) {
    return "Open preview for #" + std::to_string(number);
}

std::string checksLabel(std::optional<ChecksState> checks) {
    if (!checks) return {};
    switch (*checks) {
        case ChecksState::passing: return "Checks passing";
        case ChecksState::failing: return "Checks failing";
        case ChecksState::running: return "Checks running";
    }
    return {};
}

std::string reviewLabel(std::optional<ReviewState> review) {
    if (!review) return {};
    switch (*review) {
        case ReviewState::approved: return "Approved";
        case ReviewState::changesRequested: return "Changes requested";
        case ReviewState::reviewRequired: return "Review required";
    }
    return {};
}

std::string deployLabel(const PR& pr) {
    if (!pr.deploy) return {};
    std::string label = "Deployment " + std::string(jsonText(*pr.deploy));
    if (pr.deployOlder.value_or(false)) label += ", older commit";
    return label;
}

std::string moreLabel(std::int64_t more) { return std::to_string(more) + " more on GitHub"; }

std::string blockedLabel(std::int64_t blocked) {
    return blocked > 0 ? std::to_string(blocked) + " blocked" : std::string();
}

std::string yoursHeading(std::int64_t open, std::int64_t blocked) {
    std::string text = std::string(Constants::yoursGroupName) + ", " + std::to_string(open) + " open";
    if (blocked > 0) text += ", " + blockedLabel(blocked);
    return text;
}

}  // namespace velmar::ui
