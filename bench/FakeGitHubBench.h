// What the benchmarks against the tests' fake GitHub share: the server
// started with a fixture (or a message saying why not), and the median.
#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "EffectsTestSupport.h"

namespace velmar::bench {

/// Starts `server` with `fixture` and points gh at it; says why on failure.
inline bool startFakeGitHub(testing::FakeGitHub& server, const std::string& fixture, const char* bench) {
    std::string why;
    if (!server.start(fixture, why)) {
        std::fprintf(stderr, "%s: %s\n", bench, why.c_str());
        return false;
    }
    server.exportEnvironment("t");
    return true;
}

inline double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

}  // namespace velmar::bench
