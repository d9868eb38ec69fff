// The watch list and the suggestions: adding, removing, reordering and
// setting a repository's preview pattern, each saved whole to the repos file,
// and merging the two suggestion listings so owned entries come first.
#include <algorithm>
#include <unordered_set>
#include <utility>

#include "Formats.h"
#include "Model.h"
#include "Text.h"

namespace velmar {

Effects Model::addRepo(const std::string& slug) {
    if (slug.empty()) return {};
    // Already watched: adding it again is no error and needs no message.
    const bool watched = std::any_of(repos.begin(), repos.end(),
                                     [&](const Repo& r) { return r.name == slug; });
    if (watched) return {};

    Repo r;
    r.id = nextRepoId++;
    r.name = slug;
    r.state = RepoState::queued;
    repos.push_back(std::move(r));

    Effects effects = writeRepos();
    append(effects, startNext());
    return effects;
}

Effects Model::removeRepo(std::int64_t id) {
    const auto it = std::find_if(repos.begin(), repos.end(),
                                 [id](const Repo& r) { return r.id == id; });
    if (it == repos.end()) return {};

    if (hoveredPr) {
        const PR* hovered = pr(*hoveredPr);
        if (hovered && hovered->repoId == id) hoveredPr.reset();
    }
    if (editingRepo == id) {
        editingRepo.reset();
        editText.clear();
    }
    // A fetch still running for it is left to finish; its answer then matches
    // no repository and is dropped.
    repos.erase(it);
    std::erase_if(prs, [id](const PR& p) { return p.repoId == id; });
    return writeRepos();
}

Effects Model::moveRepo(std::int64_t id, std::int64_t toIndex) {
    const auto it = std::find_if(repos.begin(), repos.end(),
                                 [id](const Repo& r) { return r.id == id; });
    if (it == repos.end()) return {};

    const auto from = static_cast<std::int64_t>(it - repos.begin());
    const auto last = static_cast<std::int64_t>(repos.size()) - 1;
    const std::int64_t target = std::clamp<std::int64_t>(toIndex, 0, last);
    if (target == from) return {};

    // The target counts positions in the list without the moved repository.
    Repo moved = std::move(*it);
    repos.erase(it);
    repos.insert(repos.begin() + target, std::move(moved));
    return writeRepos();
}

Effects Model::savePattern() {
    const auto it = editingRepo ? std::find_if(repos.begin(), repos.end(),
                                               [&](const Repo& r) { return r.id == *editingRepo; })
                                : repos.end();
    if (it == repos.end()) {
        editingRepo.reset();
        editText.clear();
        return {};
    }

    Repo& repo = *it;
    // Blanks alone are how the user removes a pattern.
    repo.pattern = text::trimWhitespaceAndNewlines(editText);
    // The list follows at once from what is already known; no fetch needed.
    for (auto& p : prs)
        if (p.repoId == repo.id) p.resolvePreview(repo);
    editingRepo.reset();
    editText.clear();
    // Written even when unchanged: the user pressed save and expects it kept.
    return writeRepos();
}

void Model::mergeSuggestions(SuggestionSource source, const std::vector<std::string>& names) {
    std::vector<Suggestion> merged;
    merged.reserve(suggestions.size() + names.size());
    if (source == SuggestionSource::owned) {
        const std::unordered_set<std::string_view> owned(names.begin(), names.end());
        for (const auto& n : names) merged.push_back({n, true});
        for (auto& s : suggestions)
            if (!s.mine && !owned.count(s.name)) merged.push_back(std::move(s));
    } else {
        // An owned entry always wins over the same name from the shared listing.
        std::unordered_set<std::string> owned;
        for (auto& s : suggestions) {
            if (!s.mine) continue;
            owned.insert(s.name);
            merged.push_back(std::move(s));
        }
        for (const auto& n : names)
            if (!owned.count(n)) merged.push_back({n, false});
    }
    suggestions = std::move(merged);
}

Effects Model::writeRepos() const {
    return write(ConfigFile::repos, Formats::serializeRepos(repos));
}

}  // namespace velmar
