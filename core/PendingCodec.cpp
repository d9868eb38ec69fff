// Temporary placeholders so the library links while this area is written.
// This file is deleted when Json.cpp and Headless.cpp land.
#include "Headless.h"
#include "Json.h"
namespace velmar {
Json toJson(const Model&) { return {}; }
Json toJson(const Repo&) { return {}; }
Json toJson(const PR&) { return {}; }
Json toJson(const Browser&) { return {}; }
Json toJson(const DetectedBrowser&) { return {}; }
Json toJson(const Suggestion&) { return {}; }
Json toJson(const WindowFrame&) { return {}; }
Json toJson(const Msg&) { return {}; }
Json toJson(const Effect&) { return {}; }
std::string describe(const DecodeError&) { return {}; }
DecodeResult decodeMsg(std::string_view) { return DecodeError{}; }
DecodeResult decodeMsg(const Json&) { return DecodeError{}; }
std::string dumpCompact(const Json& j) { return j.dump(); }
std::string_view msgName(const Msg&) { return {}; }
std::string_view effectName(const Effect&) { return {}; }
namespace Headless {
std::vector<std::string> run(const std::vector<std::string>&) { return {}; }
}
}  // namespace velmar
