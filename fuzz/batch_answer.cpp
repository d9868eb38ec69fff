// Feeds arbitrary bytes to the readers of the batched query's answers (the
// repositories, the comments by node id) and of the extras file. The first
// byte picks how many repositories were asked for; the rest is gh's output.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Check.h"
#include "Formats.h"
#include "Graphql.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t repos = data[0] % 32;
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);

    const auto answer = velmar::Graphql::parseBatch(text, repos);
    FUZZ_CHECK(answer.repos.size() == repos);
    if (!answer.readable) FUZZ_CHECK(!answer.viewer && !answer.review && !answer.rateLimit);
    for (const auto& repo : answer.repos) {
        if (!repo) continue;
        for (const auto& pr : repo->prs) {
            const auto match = velmar::Graphql::matchDeployment(repo->deployments, pr.headOid, pr.branch);
            if (match) FUZZ_CHECK(match->older ? match->deployment.ref == pr.branch
                                               : match->deployment.commitOid == pr.headOid);
        }
    }

    for (const auto& [id, link] : velmar::Graphql::parseComments(text))
        FUZZ_CHECK(!id.empty() && (link.empty() || velmar::Formats::isWebURL(link)));

    velmar::Graphql::parseExtras(text);
    if (const auto host = velmar::Graphql::hostOf(text)) {
        FUZZ_CHECK(!host->empty() && host->find('/') == std::string::npos);
        FUZZ_CHECK(text.substr(0, host->size()) == *host);
    }
    return 0;
}
