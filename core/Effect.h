// What the core asks the shell to do. Effects are plain values; the order of a
// step's list of effects is part of each operation's contract.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Records.h"

namespace velmar {

namespace effect {
struct ReadFile {
    ConfigFile file;
    std::string path;
    bool operator==(const ReadFile&) const = default;
};
struct WriteFile {
    ConfigFile file;
    std::string path;
    std::string contents;
    bool operator==(const WriteFile&) const = default;
};
struct FetchPrs {
    std::string repo;
    std::optional<std::string> path;
    bool operator==(const FetchPrs&) const = default;
};
struct FetchSuggestions {
    SuggestionSource source;
    std::optional<std::string> path;
    bool operator==(const FetchSuggestions&) const = default;
};
struct GhPreflight {
    std::optional<std::string> path;
    bool operator==(const GhPreflight&) const = default;
};
struct BrewProbe {
    std::optional<std::string> path;
    bool operator==(const BrewProbe&) const = default;
};
struct OpenURL {
    std::string url;
    std::string app;  // empty: the system's default handler
    bool operator==(const OpenURL&) const = default;
};
struct CopyToClipboard {
    std::string text;
    bool operator==(const CopyToClipboard&) const = default;
};
struct ResolveHome {
    bool operator==(const ResolveHome&) const = default;
};
struct ResolvePath {
    bool operator==(const ResolvePath&) const = default;
};
struct DetectBrowsers {
    bool operator==(const DetectBrowsers&) const = default;
};
// ---- Checks, reviews and deployments (only while switched on) ----
/// One query for all these repositories; with the viewer's login it also
/// asks for the pull requests that wait for the viewer's review, and with
/// `yours` too for the viewer's own.
struct FetchBatch {
    std::vector<std::string> repos;
    std::optional<std::string> viewer;
    std::optional<std::string> path;
    /// Present (and true) only while "Yours" is asked for.
    std::optional<bool> yours;
    /// The Enterprise host all `repos` name; absent for gh's own host.
    std::optional<std::string> host;
    bool operator==(const FetchBatch&) const = default;
};
/// The deploy bots' comments of these pull requests, by node id.
struct FetchComments {
    std::vector<std::string> ids;
    std::optional<std::string> path;
    /// The host the pull requests live on, as for `FetchBatch`.
    std::optional<std::string> host;
    bool operator==(const FetchComments&) const = default;
};
/// Answer `rateWaitOver` once the time (ISO 8601, UTC) has come.
struct WaitUntil {
    std::string until;
    bool operator==(const WaitUntil&) const = default;
};
/// Show a desktop notification; one with the `key` of a notification still
/// up takes its place. Empty links offer no action.
struct Notify {
    std::string key;
    std::string summary;
    std::string body;
    std::string url;
    std::string preview;
    bool operator==(const Notify&) const = default;
};
}  // namespace effect

/// The 11 cases of the plain panel, then those of the extras, in the order of
/// their JSON names.
using Effect = std::variant<effect::ReadFile, effect::WriteFile, effect::FetchPrs,
                            effect::FetchSuggestions, effect::GhPreflight, effect::BrewProbe,
                            effect::OpenURL, effect::CopyToClipboard, effect::ResolveHome,
                            effect::ResolvePath, effect::DetectBrowsers, effect::FetchBatch,
                            effect::FetchComments, effect::WaitUntil, effect::Notify>;

using Effects = std::vector<Effect>;

/// Adds `more` after what `to` holds, keeping the order of both.
inline void append(Effects& to, Effects&& more) {
    for (auto& e : more) to.push_back(std::move(e));
}

/// The "effect" text of a case, e.g. "fetch_prs".
std::string_view effectName(const Effect&);

}  // namespace velmar
