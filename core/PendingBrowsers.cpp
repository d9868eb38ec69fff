// Temporary placeholders so the library links while this area is written.
// This file is deleted when UpdateBrowsers.cpp, Derived.cpp and
// WindowPlacement.cpp land.
#include "Model.h"
#include "WindowPlacement.h"
namespace velmar {
std::string ListRow::id() const { return {}; }
void Model::browsersDetectedFrom(const std::vector<DetectedBrowser>&) {}
void Model::resolveSelection() {}
Effects Model::selectBrowser(std::int64_t) { return {}; }
Effects Model::setBrowserMode(BrowserMode) { return {}; }
Effects Model::toggleBrowserShown(std::int64_t) { return {}; }
Effects Model::writeBrowsers() const { return {}; }
bool Model::showsOnboarding() const { return false; }
bool Model::showsGhBanner() const { return false; }
bool Model::isRefreshing() const { return false; }
std::string Model::statusLine() const { return {}; }
std::string Model::footerText() const { return {}; }
const PR* Model::pr(std::int64_t) const { return nullptr; }
const Repo* Model::repo(std::int64_t) const { return nullptr; }
std::vector<Repo> Model::orderedRepos() const { return {}; }
std::vector<ListRow> Model::listRows() const { return {}; }
std::vector<Browser> Model::visibleBrowsers() const { return {}; }
const Browser* Model::selectedBrowserEntry() const { return nullptr; }
std::vector<std::string> Model::shownKeys() const { return {}; }
std::vector<PreviewMenuItem> Model::previewMenu(const PR&) const { return {}; }
std::string Model::launcherApp(std::optional<std::int64_t>) const { return {}; }
std::string Model::selectedApp() const { return {}; }
bool Model::canSubmitAdd() const { return false; }
std::vector<Suggestion> Model::filteredSuggestions() const { return {}; }
namespace WindowPlacement {
WindowFrame restore(const WindowFrame& f, const std::vector<Rect>&, double) { return f; }
}
}  // namespace velmar
