// Temporary placeholders so the library links while this area is written.
// This file is deleted when Update.cpp, UpdatePersistence.cpp, UpdateFetch.cpp
// and UpdateRepos.cpp land.
#include "Model.h"
namespace velmar {
Effects Model::apply(const Msg&) { return {}; }
std::pair<Model, Effects> update(const Model& m, const Msg& msg) { Model c = m; auto e = c.apply(msg); return {std::move(c), std::move(e)}; }
Effects Model::fileRead(ConfigFile, const std::string&) { return {}; }
Effects Model::write(ConfigFile, std::string) const { return {}; }
Effects Model::writeSettings() const { return {}; }
Effects Model::finishOnboarding() { return {}; }
Effects Model::refresh() { return {}; }
void Model::requeueAll() {}
Effects Model::startNext() { return {}; }
Effects Model::prsFetched(const std::string&, bool) { return {}; }
Effects Model::prsSpawnFailed() { return {}; }
Effects Model::addRepo(const std::string&) { return {}; }
Effects Model::removeRepo(std::int64_t) { return {}; }
Effects Model::moveRepo(std::int64_t, std::int64_t) { return {}; }
Effects Model::savePattern() { return {}; }
void Model::mergeSuggestions(SuggestionSource, const std::vector<std::string>&) {}
}  // namespace velmar
