// A check that stays on in every build: a broken property is a crash the
// fuzzer keeps as an artifact.
#pragma once

#include <cstdio>
#include <cstdlib>

#define FUZZ_CHECK(condition)                                                         \
    do {                                                                              \
        if (!(condition)) {                                                           \
            std::fprintf(stderr, "%s:%d: property failed: %s\n", __FILE__, __LINE__, \
                         #condition);                                                 \
            std::abort();                                                             \
        }                                                                             \
    } while (0)
