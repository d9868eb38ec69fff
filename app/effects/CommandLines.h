// The command lines the effect runner hands to /bin/sh, stored literally.
// Values such as a repository slug travel as positional parameters and are
// never spliced into the text, so no slug can change what the shell runs.
#pragma once

#include <string_view>

namespace velmar::CommandLines {

/// Prints the slug ($1) on the first line, then one line per open pull
/// request with seven tab-separated columns; the last is base64 of the deploy
/// bots' comment bodies joined with U+001E. The escapes \n and \u001e are for
/// printf and jq to read.
inline constexpr std::string_view pullRequests =
    R"SCRIPT(printf "%s\n" "$1"; gh pr list --repo "$1" --state open --limit 50 --json number,title,author,headRefName,isDraft,url,comments --jq '.[] | [.number, .title, .author.login, .headRefName, (.isDraft|tostring), .url, ([.comments[] | select((.author.login // "") | test("^(railway|vercel|netlify)")) | .body] | join("\u001e") | @base64)] | @tsv')SCRIPT";

/// gh with the positional parameters after the first as its arguments: the
/// batched query and the comments, whose slugs, login and ids are all separate
/// arguments. The first is the host to ask (GH_HOST), empty for gh's own.
inline constexpr std::string_view ghOnHost =
    R"SCRIPT(h=$1; shift; if [ -n "$h" ]; then GH_HOST=$h; export GH_HOST; fi; gh "$@")SCRIPT";

/// The same for the batched query, which also tells a query GitHub's server
/// gave up on (gh says "HTTP 502" or "HTTP 504" on standard error) by its
/// exit status; standard output is gh's alone.
inline constexpr std::string_view ghBatch =
    R"SCRIPT(h=$1; shift; if [ -n "$h" ]; then GH_HOST=$h; export GH_HOST; fi; exec 3>&1; e=$(gh "$@" 2>&1 >&3 3>&-); s=$?; exec 3>&-; case $e in *"HTTP 502"*) exit 102;; *"HTTP 504"*) exit 104;; esac; exit $s)SCRIPT";
/// The exit statuses of `ghBatch` for HTTP 502 and 504.
inline constexpr int batchBadGateway = 102;
inline constexpr int batchGatewayTimeout = 104;

/// The zeroth parameter of the pull-request script.
inline constexpr std::string_view scriptName = "sh";

/// Repositories the user owns, one slug per line.
inline constexpr std::string_view ownedRepos =
    "gh repo list --limit 100 --json nameWithOwner --jq '.[].nameWithOwner'";

/// Repositories shared with the user, one slug per line.
inline constexpr std::string_view sharedRepos =
    "gh api --method GET user/repos -f affiliation=collaborator,organization_member -f per_page=100 --jq '.[].full_name'";

inline constexpr std::string_view ghAuthStatus = "gh auth status";
inline constexpr std::string_view brewLookup = "command -v brew";

/// Run by the login shell: its PATH between two markers.
inline constexpr std::string_view printPath = R"(printf "__VELMAR_PATH__%s__VELMAR_END__" "$PATH")";
inline constexpr std::string_view pathStart = "__VELMAR_PATH__";
inline constexpr std::string_view pathEnd = "__VELMAR_END__";

}  // namespace velmar::CommandLines
