// Grouping of the list rows, the number column and the row labels.
#include "RepoGroup.h"

#include <algorithm>

namespace velmar::ui {

std::vector<RepoGroup> RepoGroup::make(const std::vector<ListRow>& rows) {
    std::vector<RepoGroup> groups;
    for (const ListRow& row : rows) {
        if (const Repo* repo = std::get_if<Repo>(&row.item))
            groups.push_back({*repo, {}});
        else if (!groups.empty())
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
    return "Open preview";
}

std::string openPrLabel(std::int64_t number) {
    return "Open pull request #" + std::to_string(number);
}

std::string openPreviewLabel(std::int64_t number) {
    return "Open preview for #" + std::to_string(number);
}

}  // namespace velmar::ui
